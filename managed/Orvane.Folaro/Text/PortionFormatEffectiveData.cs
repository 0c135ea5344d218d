using Orvane.Marel;

namespace Orvane.Folaro;

/// <summary>
/// The character formatting text actually has, after inheritance, the shape's style and the
/// theme: sizes in points, theme fonts replaced by the theme's font names, colours resolved.
/// </summary>
public interface IPortionFormatEffectiveData
{
    float FontHeight { get; }
    bool FontBold { get; }
    bool FontItalic { get; }
    TextUnderlineType FontUnderline { get; }
    TextStrikethroughType StrikethroughType { get; }
    TextCapType TextCapType { get; }
    string LatinFont { get; }
    string EastAsianFont { get; }
    string ComplexScriptFont { get; }
    FillType FillType { get; }
    /// <summary>The colour of a solid fill (the theme's text colour when nothing sets a fill); Empty for other fills.</summary>
    Color SolidFillColor { get; }
    /// <summary>The highlight colour; Empty when there is none.</summary>
    Color HighlightColor { get; }
    float Spacing { get; }
    /// <summary>The smallest kerned font size in points; NaN when the text is not kerned.</summary>
    float Kerning { get; }
    float Escapement { get; }
    string LanguageId { get; }
}

public sealed class PortionFormatEffectiveData : IPortionFormatEffectiveData
{
    internal PortionFormatEffectiveData()
    {
    }

    public float FontHeight { get; internal init; }
    public bool FontBold { get; internal init; }
    public bool FontItalic { get; internal init; }
    public TextUnderlineType FontUnderline { get; internal init; }
    public TextStrikethroughType StrikethroughType { get; internal init; }
    public TextCapType TextCapType { get; internal init; }
    public string LatinFont { get; internal init; } = string.Empty;
    public string EastAsianFont { get; internal init; } = string.Empty;
    public string ComplexScriptFont { get; internal init; } = string.Empty;
    public FillType FillType { get; internal init; }
    public Color SolidFillColor { get; internal init; }
    public Color HighlightColor { get; internal init; }
    public float Spacing { get; internal init; }
    public float Kerning { get; internal init; }
    public float Escapement { get; internal init; }
    public string LanguageId { get; internal init; } = string.Empty;

    public override string ToString() => $"PortionFormatEffectiveData [{LatinFont} {FontHeight} pt, {SolidFillColor}]";
}
