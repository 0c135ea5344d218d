namespace Orvane.Folaro.Export;

/// <summary>Options of rendering slides to images.</summary>
public interface IRenderingOptions : ISaveOptions
{
    /// <summary>How notes and comments are laid out beside the slide; null for the slide alone.</summary>
    INotesCommentsLayoutingOptions? SlidesLayoutOptions { get; set; }

    ISaveOptions AsISaveOptions { get; }
}

public sealed class RenderingOptions : SaveOptions, IRenderingOptions
{
    public RenderingOptions()
    {
    }

    public INotesCommentsLayoutingOptions? SlidesLayoutOptions { get; set; }

    ISaveOptions IRenderingOptions.AsISaveOptions => this;
}
