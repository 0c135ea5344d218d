using System;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Theme;

/// <summary>The heading (major) and body (minor) fonts of a theme, for Latin, East Asian and complex-script text.</summary>
public interface IFontScheme
{
    string Name { get; set; }

    /// <summary>The Latin typeface of headings.</summary>
    string MajorLatinFont { get; set; }

    /// <summary>The Latin typeface of body text.</summary>
    string MinorLatinFont { get; set; }

    /// <summary>The East Asian typeface of headings; empty when the theme leaves it to the application.</summary>
    string MajorEastAsianFont { get; set; }

    string MinorEastAsianFont { get; set; }

    /// <summary>The complex-script typeface of headings; empty when the theme leaves it to the application.</summary>
    string MajorComplexScriptFont { get; set; }

    string MinorComplexScriptFont { get; set; }
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

    public string MajorLatinFont { get => Get(_element.MajorFont, "latin"); set => Set(_element.MajorFont, "latin", value); }
    public string MinorLatinFont { get => Get(_element.MinorFont, "latin"); set => Set(_element.MinorFont, "latin", value); }
    public string MajorEastAsianFont { get => Get(_element.MajorFont, "ea"); set => Set(_element.MajorFont, "ea", value); }
    public string MinorEastAsianFont { get => Get(_element.MinorFont, "ea"); set => Set(_element.MinorFont, "ea", value); }
    public string MajorComplexScriptFont { get => Get(_element.MajorFont, "cs"); set => Set(_element.MajorFont, "cs", value); }
    public string MinorComplexScriptFont { get => Get(_element.MinorFont, "cs"); set => Set(_element.MinorFont, "cs", value); }

    public override string ToString() => $"FontScheme '{Name}' ({MajorLatinFont} / {MinorLatinFont})";

    private static string Get(A.FontCollectionType? fonts, string script) =>
        fonts != null && SchemaOrder.First(fonts, script) is { } f ? AttributeAccess.Attr(f, "typeface") ?? string.Empty : string.Empty;

    // latin, ea and cs are required and come first, in that order; an empty typeface lets the application choose.
    private static void Set(A.FontCollectionType? fonts, string script, string value)
    {
        ArgumentNullException.ThrowIfNull(value);
        if (fonts == null)
            throw new PptxEditException("FontScheme: the theme has no major or minor font list");
        if (SchemaOrder.First(fonts, script) is { } font)
        {
            AttributeAccess.SetAttr(font, "typeface", value);
            return;
        }
        OpenXmlElement made = script switch
        {
            "latin" => new A.LatinFont { Typeface = value },
            "ea" => new A.EastAsianFont { Typeface = value },
            _ => new A.ComplexScriptFont { Typeface = value },
        };
        SchemaOrder.Insert(fonts, made, new[] { "latin", "ea", "cs", "font", "extLst" });
    }
}
