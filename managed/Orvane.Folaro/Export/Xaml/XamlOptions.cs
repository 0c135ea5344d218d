using Orvane.Folaro.Export;

namespace Orvane.Folaro.Export.Xaml;

/// <summary>Receives the files of a XAML export, one call per file.</summary>
public interface IXamlOutputSaver
{
    void Save(string path, byte[] data);
}

public interface IXamlOptions : ISaveOptions
{
    bool ExportHiddenSlides { get; set; }

    /// <summary>Where the files go; null to write them next to each other in the current folder.</summary>
    IXamlOutputSaver? OutputSaver { get; set; }

    ISaveOptions AsISaveOptions { get; }
}

public sealed class XamlOptions : SaveOptions, IXamlOptions
{
    public XamlOptions()
    {
    }

    public bool ExportHiddenSlides { get; set; }

    public IXamlOutputSaver? OutputSaver { get; set; }

    ISaveOptions IXamlOptions.AsISaveOptions => this;
}
