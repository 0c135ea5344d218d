using System;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using Orvane.Folaro.Theme;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

public enum TextUnderlineType
{
    NotDefined = -1,
    None, Words, Single, Double, Heavy, Dotted, HeavyDotted, Dashed, HeavyDashed, LongDashed, HeavyLongDashed,
    DotDash, HeavyDotDash, DotDotDash, HeavyDotDotDash, Wavy, HeavyWavy, DoubleWavy,
}

public enum TextStrikethroughType
{
    NotDefined = -1,
    None, Single, Double,
}

public enum TextCapType
{
    NotDefined = -1,
    None, Small, All,
}

/// <summary>
/// The character formatting of a portion (a view over a:rPr, or a paragraph's default or end-mark
/// properties). Sizes are in points and NaN when inherited; font names are empty when inherited.
/// </summary>
public interface IPortionFormat
{
    float FontHeight { get; set; }

    NullableBool FontBold { get; set; }

    NullableBool FontItalic { get; set; }

    TextUnderlineType FontUnderline { get; set; }

    TextStrikethroughType StrikethroughType { get; set; }

    TextCapType TextCapType { get; set; }

    /// <summary>The Latin font; theme fonts read as "+mj-lt" (headings) and "+mn-lt" (body).</summary>
    string LatinFont { get; set; }

    string EastAsianFont { get; set; }

    string ComplexScriptFont { get; set; }

    /// <summary>The fill of the characters (their colour, for a solid fill).</summary>
    IFillFormat FillFormat { get; }

    /// <summary>The colour behind the characters; NotDefined when there is none.</summary>
    IColorFormat HighlightColor { get; }

    /// <summary>Removes the highlight.</summary>
    void ResetHighlightColor();

    /// <summary>Extra space between characters in points (negative to condense).</summary>
    float Spacing { get; set; }

    /// <summary>The smallest font size, in points, that is kerned (0 kerns every size).</summary>
    float Kerning { get; set; }

    /// <summary>The baseline shift as a fraction of the font size (0.3 superscript, -0.25 subscript).</summary>
    float Escapement { get; set; }

    /// <summary>The language tag of the text ("en-US"); empty when inherited.</summary>
    string LanguageId { get; set; }

    /// <summary>The hyperlink followed when the text is clicked, or null. Setting null removes it.</summary>
    IHyperlink? HyperlinkClick { get; set; }

    /// <summary>The hyperlink followed when the pointer rests on the text, or null.</summary>
    IHyperlink? HyperlinkMouseOver { get; set; }

    /// <summary>
    /// The formatting actually used: the portion's own, then the list styles of its shape, its
    /// layout and master placeholders, the master's text style and the presentation's default,
    /// then the shape's style and the theme.
    /// </summary>
    IPortionFormatEffectiveData GetEffective();
}

public sealed class PortionFormat : IPortionFormat
{
    private readonly ElementSlot _rPr;
    private readonly FormatContext _context;
    private readonly Func<(TextInheritance Inheritance, System.Collections.Generic.List<OpenXmlElement> Chain)>? _inherited;

    internal PortionFormat(ElementSlot rPr, FormatContext context,
        Func<(TextInheritance Inheritance, System.Collections.Generic.List<OpenXmlElement> Chain)>? inherited)
    {
        _rPr = rPr;
        _context = context;
        _inherited = inherited;
    }

    public float FontHeight
    {
        get => AttributeAccess.Long(_rPr(false), "sz") is long v ? v / 100f : float.NaN;
        set => SetNumber("sz", value, 1, 4000, 100, nameof(FontHeight));
    }

    public NullableBool FontBold { get => Flag("b"); set => SetFlag("b", value); }

    public NullableBool FontItalic { get => Flag("i"); set => SetFlag("i", value); }

    public TextUnderlineType FontUnderline
    {
        get => TextTokens.Underlines.Member(Attr("u"), TextUnderlineType.NotDefined);
        set => SetAttr("u", TextTokens.Underlines.TokenOrNull(value, TextUnderlineType.NotDefined, "PortionFormat." + nameof(FontUnderline)));
    }

    public TextStrikethroughType StrikethroughType
    {
        get => TextTokens.Strikes.Member(Attr("strike"), TextStrikethroughType.NotDefined);
        set => SetAttr("strike", TextTokens.Strikes.TokenOrNull(value, TextStrikethroughType.NotDefined, "PortionFormat." + nameof(StrikethroughType)));
    }

    public TextCapType TextCapType
    {
        get => TextTokens.Caps.Member(Attr("cap"), TextCapType.NotDefined);
        set => SetAttr("cap", TextTokens.Caps.TokenOrNull(value, TextCapType.NotDefined, "PortionFormat." + nameof(TextCapType)));
    }

    public string LatinFont { get => Font("latin"); set => SetFont("latin", value, () => new A.LatinFont()); }

    public string EastAsianFont { get => Font("ea"); set => SetFont("ea", value, () => new A.EastAsianFont()); }

    public string ComplexScriptFont { get => Font("cs"); set => SetFont("cs", value, () => new A.ComplexScriptFont()); }

    public IFillFormat FillFormat => new FillFormat(_rPr, SchemaOrder.RunProperties, SchemaOrder.Fills, _context);

    public IColorFormat HighlightColor => new ColorFormat(create =>
        _rPr(create) is { } r ? r.GetFirstChild<A.Highlight>() ?? (create ? SchemaOrder.Insert(r, new A.Highlight(), SchemaOrder.RunProperties) : null) : null, _context);

    public void ResetHighlightColor() => _rPr(false)?.GetFirstChild<A.Highlight>()?.Remove();

    public float Spacing
    {
        get => AttributeAccess.Long(_rPr(false), "spc") is long v ? v / 100f : float.NaN;
        set => SetNumber("spc", value, -4000, 4000, 100, nameof(Spacing));
    }

    public float Kerning
    {
        get => AttributeAccess.Long(_rPr(false), "kern") is long v ? v / 100f : float.NaN;
        set => SetNumber("kern", value, 0, 4000, 100, nameof(Kerning));
    }

    public float Escapement
    {
        get => AttributeAccess.Long(_rPr(false), "baseline") is long v ? v / 100000f : float.NaN;
        set => SetNumber("baseline", value, -1, 1, 100000, nameof(Escapement));
    }

    public string LanguageId
    {
        get => Attr("lang") ?? string.Empty;
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            SetAttr("lang", value.Length == 0 ? null : value);
        }
    }

    public IHyperlink? HyperlinkClick { get => Link("hlinkClick"); set => SetLink("hlinkClick", value); }

    public IHyperlink? HyperlinkMouseOver { get => Link("hlinkMouseOver"); set => SetLink("hlinkMouseOver", value); }

    public IPortionFormatEffectiveData GetEffective()
    {
        var chain = new System.Collections.Generic.List<OpenXmlElement>();
        if (_rPr(false) is { } own)
            chain.Add(own);
        TextInheritance? inheritance = null;
        if (_inherited != null)
        {
            var (found, rest) = _inherited();
            inheritance = found;
            chain.AddRange(rest);
        }
        var theme = inheritance?.Colors ?? _context.Theme;
        var fontRef = inheritance?.FontReference;
        string FontOf(string script)
        {
            var face = Inherited.Child(chain, script) is { } f ? AttributeAccess.Attr(f, "typeface") : null;
            if (face == null)
                return inheritance?.ThemeFont(fontRef != null && AttributeAccess.Attr(fontRef, "idx") == "major", script) ?? string.Empty;
            return inheritance?.Font(face) ?? face;
        }
        var fill = Inherited.Child(chain, SchemaOrder.Fills);
        FillType fillType;
        Orvane.Marel.Color color;
        if (fill != null)
        {
            fillType = fill.LocalName switch
            {
                "noFill" => FillType.NoFill,
                "solidFill" => FillType.Solid,
                "gradFill" => FillType.Gradient,
                "blipFill" => FillType.Picture,
                "pattFill" => FillType.Pattern,
                _ => FillType.Group,
            };
            color = fillType == FillType.Solid && SchemaOrder.FirstOf(fill, ColorMath.ColorElements) is { } c ? ColorMath.Resolve(c, theme) : default;
        }
        else
        {
            // Unfilled text takes the colour of the shape style's font reference, else the theme's text colour.
            fillType = FillType.Solid;
            var styleColor = fontRef == null ? null : SchemaOrder.FirstOf(fontRef, ColorMath.ColorElements);
            color = ColorMath.Resolve(styleColor ?? new A.SchemeColor { Val = A.SchemeColorValues.Text1 }, theme);
        }
        var highlight = Inherited.Child(chain, "highlight");
        var highlightColor = highlight != null && SchemaOrder.FirstOf(highlight, ColorMath.ColorElements) is { } h ? ColorMath.Resolve(h, theme) : default;
        return new PortionFormatEffectiveData
        {
            // Text that nothing sizes is 18 points.
            FontHeight = (Inherited.Long(chain, "sz") ?? 1800) / 100f,
            FontBold = Inherited.Flag(chain, "b", false),
            FontItalic = Inherited.Flag(chain, "i", false),
            FontUnderline = TextTokens.Underlines.Member(Inherited.Attr(chain, "u"), TextUnderlineType.None),
            StrikethroughType = TextTokens.Strikes.Member(Inherited.Attr(chain, "strike"), TextStrikethroughType.None),
            TextCapType = TextTokens.Caps.Member(Inherited.Attr(chain, "cap"), TextCapType.None),
            LatinFont = FontOf("latin"),
            EastAsianFont = FontOf("ea"),
            ComplexScriptFont = FontOf("cs"),
            FillType = fillType,
            SolidFillColor = color,
            HighlightColor = highlightColor,
            Spacing = (Inherited.Long(chain, "spc") ?? 0) / 100f,
            Kerning = Inherited.Long(chain, "kern") is long k ? k / 100f : float.NaN,
            Escapement = (Inherited.Long(chain, "baseline") ?? 0) / 100000f,
            LanguageId = Inherited.Attr(chain, "lang") ?? string.Empty,
        };
    }

    public override string ToString() => $"PortionFormat [{FontHeight} pt, bold {FontBold}, italic {FontItalic}]";

    private OpenXmlElement Properties() => _rPr(true) ?? throw new PptxEditException($"{_context.Where}: there is no text to format");

    private string? Attr(string name) => _rPr(false) is { } r ? AttributeAccess.Attr(r, name) : null;

    private void SetAttr(string name, string? value)
    {
        if (value == null)
        {
            if (_rPr(false) is { } r)
                AttributeAccess.SetAttr(r, name, null);
            return;
        }
        AttributeAccess.SetAttr(Properties(), name, value);
    }

    private NullableBool Flag(string name) => Attr(name) switch { "1" or "true" => NullableBool.True, "0" or "false" => NullableBool.False, _ => NullableBool.NotDefined };

    private void SetFlag(string name, NullableBool value)
    {
        if (!Enum.IsDefined(value))
            throw new ArgumentOutOfRangeException(nameof(value), value, "PortionFormat: unknown NullableBool value");
        SetAttr(name, value switch { NullableBool.True => "1", NullableBool.False => "0", _ => null });
    }

    private void SetNumber(string name, float value, float min, float max, double scale, string member)
    {
        if (float.IsNaN(value))
        {
            SetAttr(name, null);
            return;
        }
        if (!(value >= min && value <= max))
            throw new ArgumentOutOfRangeException(nameof(value), value, $"PortionFormat.{member} must be between {min} and {max} (NaN to inherit)");
        SetAttr(name, AttributeAccess.Text((long)Math.Round(value * scale)));
    }

    private string Font(string name) =>
        _rPr(false) is { } r && SchemaOrder.First(r, name) is { } f ? AttributeAccess.Attr(f, "typeface") ?? string.Empty : string.Empty;

    private void SetFont(string name, string value, Func<OpenXmlElement> make)
    {
        ArgumentNullException.ThrowIfNull(value);
        if (value.Length == 0)
        {
            (_rPr(false) is { } r ? SchemaOrder.First(r, name) : null)?.Remove();
            return;
        }
        var font = SchemaOrder.Ensure(Properties(), name, make, SchemaOrder.RunProperties);
        AttributeAccess.SetAttr(font, "typeface", value);
    }

    private IHyperlink? Link(string name) => HyperlinkStore.Read(_rPr(false), name, _context.Part, _context.Owner);

    private void SetLink(string name, IHyperlink? value) =>
        HyperlinkStore.Write(create => create ? Properties() : _rPr(false), name, value, _context.Part, SchemaOrder.RunProperties,
            $"{_context.Where}, PortionFormat.{(name == "hlinkClick" ? "HyperlinkClick" : "HyperlinkMouseOver")}");
}
