using System;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Theme;

/// <summary>The heading (major) and body (minor) fonts of a theme.</summary>
public interface IFontScheme
{
    string Name { get; set; }

    /// <summary>The Latin typeface of headings.</summary>
    string MajorLatinFont { get; set; }

    /// <summary>The Latin typeface of body text.</summary>
    string MinorLatinFont { get; set; }
}

public sealed class FontScheme : IFontScheme
{
    private readonly A.FontScheme _element;

    internal FontScheme(A.FontScheme element)
    {
        _element = element;
    }

    public string Name
    {
        get => _element.Name?.Value ?? string.Empty;
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            _element.Name = value;
        }
    }

    public string MajorLatinFont
    {
        get => _element.MajorFont?.LatinFont?.Typeface?.Value ?? string.Empty;
        set => SetLatin(_element.MajorFont, value);
    }

    public string MinorLatinFont
    {
        get => _element.MinorFont?.LatinFont?.Typeface?.Value ?? string.Empty;
        set => SetLatin(_element.MinorFont, value);
    }

    private static void SetLatin(A.FontCollectionType? fonts, string value)
    {
        ArgumentNullException.ThrowIfNull(value);
        if (fonts == null)
            throw new PptxEditException("FontScheme: the theme has no major or minor font list");
        if (fonts.LatinFont is { } latin)
            latin.Typeface = value;
        else
            fonts.PrependChild(new A.LatinFont { Typeface = value });
    }
}
