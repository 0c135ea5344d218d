using System;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

/// <summary>Where text sits vertically in its frame.</summary>
public enum TextAnchorType
{
    NotDefined = -1,
    Top, Center, Bottom, Justified, Distributed,
}

/// <summary>The direction text runs in its frame.</summary>
public enum TextVerticalType
{
    NotDefined = -1,
    Horizontal, Vertical, Vertical270, WordArtVertical, EastAsianVertical, MongolianVertical, WordArtVerticalRightToLeft,
}

/// <summary>How text that does not fit is handled: not at all, shrunk on overflow, or the shape resized to fit.</summary>
public enum TextAutofitType
{
    NotDefined = -1,
    None, Normal, Shape,
}

/// <summary>The layout of a text frame (a view over a:bodyPr): margins in points, wrapping, anchoring, direction, autofit and columns.</summary>
public interface ITextFrameFormat
{
    /// <summary>The inner margins in points; NaN when inherited.</summary>
    float MarginLeft { get; set; }
    float MarginRight { get; set; }
    float MarginTop { get; set; }
    float MarginBottom { get; set; }

    NullableBool WrapText { get; set; }

    TextAnchorType AnchoringType { get; set; }

    /// <summary>Centres the block of text horizontally in the frame.</summary>
    NullableBool CenterText { get; set; }

    TextVerticalType TextVerticalType { get; set; }

    TextAutofitType AutofitType { get; set; }

    /// <summary>The number of columns, 1 to 16; 0 when inherited.</summary>
    int ColumnCount { get; set; }

    /// <summary>The space between columns in points; NaN when inherited.</summary>
    float ColumnSpacing { get; set; }

    /// <summary>The layout actually used: the frame's own, else its layout's and master's placeholder's, else the defaults.</summary>
    ITextFrameFormatEffectiveData GetEffective();
}

public sealed class TextFrameFormat : ITextFrameFormat
{

    private readonly ElementSlot _bodyPr;
    private readonly FormatContext _context;
    private readonly Func<TextInheritance>? _inheritance;

    internal TextFrameFormat(ElementSlot bodyPr, FormatContext context, Func<TextInheritance>? inheritance)
    {
        _bodyPr = bodyPr;
        _context = context;
        _inheritance = inheritance;
    }

    public float MarginLeft { get => Length("lIns"); set => SetLength("lIns", value, nameof(MarginLeft)); }
    public float MarginRight { get => Length("rIns"); set => SetLength("rIns", value, nameof(MarginRight)); }
    public float MarginTop { get => Length("tIns"); set => SetLength("tIns", value, nameof(MarginTop)); }
    public float MarginBottom { get => Length("bIns"); set => SetLength("bIns", value, nameof(MarginBottom)); }

    public NullableBool WrapText
    {
        get => Attr("wrap") switch { "square" => NullableBool.True, "none" => NullableBool.False, _ => NullableBool.NotDefined };
        set => SetAttr("wrap", value switch { NullableBool.True => "square", NullableBool.False => "none", _ => null });
    }

    public TextAnchorType AnchoringType
    {
        get => TextTokens.Anchors.Member(Attr("anchor"), TextAnchorType.NotDefined);
        set => SetAttr("anchor", TextTokens.Anchors.TokenOrNull(value, TextAnchorType.NotDefined, "TextFrameFormat." + nameof(AnchoringType)));
    }

    public NullableBool CenterText
    {
        get => Flag("anchorCtr");
        set => SetAttr("anchorCtr", value switch { NullableBool.True => "1", NullableBool.False => "0", _ => null });
    }

    public TextVerticalType TextVerticalType
    {
        get => TextTokens.Verticals.Member(Attr("vert"), TextVerticalType.NotDefined);
        set => SetAttr("vert", TextTokens.Verticals.TokenOrNull(value, TextVerticalType.NotDefined, "TextFrameFormat." + nameof(TextVerticalType)));
    }

    public TextAutofitType AutofitType
    {
        get => _bodyPr(false) is { } b && SchemaOrder.FirstOf(b, TextTokens.Autofits.Tokens) is { } a ? TextTokens.Autofits.Member(a.LocalName, TextAutofitType.NotDefined) : TextAutofitType.NotDefined;
        set
        {
            var autofits = TextTokens.Autofits;
            string? name = autofits.TokenOrNull(value, TextAutofitType.NotDefined, "TextFrameFormat." + nameof(AutofitType));
            if (name == null)
            {
                if (_bodyPr(false) is { } b)
                    SchemaOrder.Replace(b, autofits.Tokens, null, SchemaOrder.BodyProperties);
                return;
            }
            var body = Body();
            if (SchemaOrder.FirstOf(body, autofits.Tokens)?.LocalName == name)
                return;
            OpenXmlElement made = value switch { TextAutofitType.None => new A.NoAutoFit(), TextAutofitType.Normal => new A.NormalAutoFit(), _ => new A.ShapeAutoFit() };
            SchemaOrder.Replace(body, autofits.Tokens, made, SchemaOrder.BodyProperties);
        }
    }

    public int ColumnCount
    {
        get => (int)(AttributeAccess.Long(_bodyPr(false), "numCol") ?? 0);
        set
        {
            if (value < 0 || value > 16)
                throw new ArgumentOutOfRangeException(nameof(value), value, "TextFrameFormat.ColumnCount must be between 1 and 16 (0 to inherit)");
            SetAttr("numCol", value == 0 ? null : AttributeAccess.Text(value));
        }
    }

    public float ColumnSpacing { get => Length("spcCol"); set => SetLength("spcCol", value, nameof(ColumnSpacing)); }

    public ITextFrameFormatEffectiveData GetEffective()
    {
        var chain = new System.Collections.Generic.List<OpenXmlElement>();
        if (_bodyPr(false) is { } own)
            chain.Add(own);
        if (_inheritance != null)
            chain.AddRange(_inheritance().InheritedBodyProperties());
        float Length(string name, long fallback) => Emu.ToPoints(Inherited.Long(chain, name) ?? fallback);
        var autofit = Inherited.Child(chain, TextTokens.Autofits.Tokens);
        return new TextFrameFormatEffectiveData
        {
            // The format's defaults: 0.1 inch left and right, 0.05 inch top and bottom.
            MarginLeft = Length("lIns", 91440),
            MarginRight = Length("rIns", 91440),
            MarginTop = Length("tIns", 45720),
            MarginBottom = Length("bIns", 45720),
            WrapText = Inherited.Attr(chain, "wrap") != "none",
            AnchoringType = TextTokens.Anchors.Member(Inherited.Attr(chain, "anchor"), TextAnchorType.Top),
            CenterText = Inherited.Flag(chain, "anchorCtr", false),
            TextVerticalType = TextTokens.Verticals.Member(Inherited.Attr(chain, "vert"), TextVerticalType.Horizontal),
            AutofitType = autofit == null ? TextAutofitType.None : TextTokens.Autofits.Member(autofit.LocalName, TextAutofitType.NotDefined),
            ColumnCount = (int)(Inherited.Long(chain, "numCol") ?? 1),
            ColumnSpacing = Length("spcCol", 0),
        };
    }

    public override string ToString() => $"TextFrameFormat [{AnchoringType}, wrap {WrapText}, autofit {AutofitType}]";

    private OpenXmlElement Body() => _bodyPr(true) ?? throw new PptxEditException($"{_context.Where}: there is no text body to format");

    private string? Attr(string name) => _bodyPr(false) is { } b ? AttributeAccess.Attr(b, name) : null;

    private NullableBool Flag(string name) => Attr(name) switch { "1" or "true" => NullableBool.True, "0" or "false" => NullableBool.False, _ => NullableBool.NotDefined };

    private void SetAttr(string name, string? value)
    {
        if (value == null)
        {
            if (_bodyPr(false) is { } b)
                AttributeAccess.SetAttr(b, name, null);
            return;
        }
        AttributeAccess.SetAttr(Body(), name, value);
    }

    private float Length(string name) => AttributeAccess.Long(_bodyPr(false), name) is long v ? Emu.ToPoints(v) : float.NaN;

    private void SetLength(string name, float points, string member)
    {
        if (float.IsNaN(points))
        {
            SetAttr(name, null);
            return;
        }
        if (!(points >= 0 && points < 1e6))
            throw new ArgumentOutOfRangeException(nameof(points), points, $"TextFrameFormat.{member} must not be negative (NaN to inherit)");
        SetAttr(name, AttributeAccess.Text(Emu.FromPoints(points)));
    }
}
