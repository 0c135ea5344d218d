namespace Orvane.Folaro.Export;

public interface ISVGOptions : ISaveOptions
{
    /// <summary>Text drawn as paths rather than as text elements.</summary>
    bool VectorizeText { get; set; }
    /// <summary>Whether the result looks exactly as the slide (true) or is simpler and editable (false).</summary>
    bool UseFrameSize { get; set; }
    int JpegQuality { get; set; }

    ISaveOptions AsISaveOptions { get; }
}

public sealed class SVGOptions : SaveOptions, ISVGOptions
{
    private int _jpegQuality = 95;

    public SVGOptions()
    {
    }

    /// <summary>New options with the default settings.</summary>
    public static ISVGOptions Default => new SVGOptions();

    /// <summary>New options for the simplest output: text kept as text.</summary>
    public static ISVGOptions Simple => new SVGOptions { VectorizeText = false, UseFrameSize = false };

    /// <summary>New options for output that looks exactly as the slide: text drawn as paths.</summary>
    public static ISVGOptions Wysiwyg => new SVGOptions { VectorizeText = true, UseFrameSize = true };

    public bool VectorizeText { get; set; }
    public bool UseFrameSize { get; set; }

    public int JpegQuality
    {
        get => _jpegQuality;
        set => _jpegQuality = value is >= 0 and <= 100 ? value : throw new System.ArgumentOutOfRangeException(nameof(value), value, "SVGOptions.JpegQuality must be between 0 and 100");
    }

    ISaveOptions ISVGOptions.AsISaveOptions => this;
}
