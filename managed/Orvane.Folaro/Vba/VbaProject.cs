using System;

namespace Orvane.Folaro.Vba;

/// <summary>A VBA project: its modules and references.</summary>
public interface IVbaProject
{
    string Name { get; set; }

    IVbaModuleCollection Modules { get; }

    IVbaReferenceCollection References { get; }

    /// <summary>The project as a vbaProject.bin compound file.</summary>
    byte[] ToBinary();
}

/// <summary>
/// A VBA project. One read from a package keeps its binary as it is and can be written back;
/// reading its modules and writing a new project's binary need the compound-file codec, which
/// is not built yet.
/// </summary>
public sealed class VbaProject : IVbaProject
{
    private readonly byte[]? _binary;
    private string _name = "VBAProject";

    internal VbaProject()
    {
        Modules = new VbaModuleCollection();
        References = new VbaReferenceCollection();
    }

    internal VbaProject(byte[] binary) : this()
    {
        _binary = binary;
    }

    public string Name
    {
        get => _binary == null ? _name : throw Unparsed("Name");
        set
        {
            ArgumentException.ThrowIfNullOrEmpty(value);
            if (_binary != null)
                throw Unparsed("Name");
            _name = value;
        }
    }

    public IVbaModuleCollection Modules { get; }

    public IVbaReferenceCollection References { get; }

    public byte[] ToBinary() =>
        _binary != null
            ? (byte[])_binary.Clone()
            : throw new NotSupportedException("VbaProject.ToBinary: writing a new vbaProject.bin is not supported yet");

    internal bool HasBinary => _binary != null;

    private static NotSupportedException Unparsed(string member) =>
        new($"VbaProject.{member}: reading the contents of a stored VBA project is not supported yet");
}
