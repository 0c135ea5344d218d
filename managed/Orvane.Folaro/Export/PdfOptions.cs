using System;

namespace Orvane.Folaro.Export;

public interface IPdfOptions : ISaveOptions
{
    PdfCompliance Compliance { get; set; }
    PdfTextCompression TextCompression { get; set; }
    /// <summary>JPEG quality of embedded pictures, 0 to 100.</summary>
    byte JpegQuality { get; set; }
    bool EmbedFullFonts { get; set; }
    bool ShowHiddenSlides { get; set; }
    /// <summary>Pictures are downsampled to this resolution (dots per inch).</summary>
    float SufficientResolution { get; set; }
    /// <summary>The password that opens the PDF; empty for none.</summary>
    string Password { get; set; }

    ISaveOptions AsISaveOptions { get; }
}

public sealed class PdfOptions : SaveOptions, IPdfOptions
{
    private byte _jpegQuality = 100;
    private float _resolution = 96f;

    public PdfOptions()
    {
    }

    public PdfCompliance Compliance { get; set; } = PdfCompliance.Pdf17;
    public PdfTextCompression TextCompression { get; set; } = PdfTextCompression.Flate;

    public byte JpegQuality
    {
        get => _jpegQuality;
        set => _jpegQuality = value <= 100 ? value : throw new ArgumentOutOfRangeException(nameof(value), value, "PdfOptions.JpegQuality must be at most 100");
    }

    public bool EmbedFullFonts { get; set; }
    public bool ShowHiddenSlides { get; set; }

    public float SufficientResolution
    {
        get => _resolution;
        set => _resolution = value > 0f ? value : throw new ArgumentOutOfRangeException(nameof(value), value, "PdfOptions.SufficientResolution must be positive");
    }

    public string Password { get; set; } = string.Empty;

    ISaveOptions IPdfOptions.AsISaveOptions => this;
}
