namespace Orvane.Folaro.Export.Web;

/// <summary>Options of a web export that writes a page with its resources beside it.</summary>
public interface IWebDocumentOptions
{
    /// <summary>Pictures inlined into the page (true) or written as separate files (false).</summary>
    bool EmbedImages { get; set; }

    /// <summary>The folder the page and its resources are written to.</summary>
    string OutputPath { get; set; }
}

public sealed class WebDocumentOptions : IWebDocumentOptions
{
    public WebDocumentOptions()
    {
    }

    public bool EmbedImages { get; set; } = true;

    public string OutputPath { get; set; } = string.Empty;
}
