using System;

namespace Orvane.Folaro.Vba;

/// <summary>A module of a VBA project: a name and its source code.</summary>
public interface IVbaModule
{
    string Name { get; }

    string SourceCode { get; set; }
}

public sealed class VbaModule : IVbaModule
{
    private string _source = string.Empty;

    internal VbaModule(string name)
    {
        Name = name;
    }

    public string Name { get; }

    public string SourceCode
    {
        get => _source;
        set => _source = value ?? throw new ArgumentNullException(nameof(value));
    }
}
