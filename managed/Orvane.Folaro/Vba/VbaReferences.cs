using System;

namespace Orvane.Folaro.Vba;

/// <summary>A reference of a VBA project to a library.</summary>
public interface IVbaReference
{
    string Name { get; set; }
}

/// <summary>A reference to an OLE type library, named by its LIBID string.</summary>
public interface IVbaReferenceOleTypeLib : IVbaReference
{
    string Libid { get; set; }

    IVbaReference AsIVbaReference { get; }
}

public sealed class VbaReferenceOleTypeLib : IVbaReferenceOleTypeLib
{
    private string _name;
    private string _libid;

    internal VbaReferenceOleTypeLib(string name, string libid)
    {
        _name = name;
        _libid = libid;
    }

    public string Name
    {
        get => _name;
        set
        {
            ArgumentException.ThrowIfNullOrEmpty(value);
            _name = value;
        }
    }

    public string Libid
    {
        get => _libid;
        set
        {
            ArgumentException.ThrowIfNullOrEmpty(value);
            _libid = value;
        }
    }

    IVbaReference IVbaReferenceOleTypeLib.AsIVbaReference => this;
}
