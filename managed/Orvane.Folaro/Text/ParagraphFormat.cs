using System;
using System.Linq;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

public enum TextAlignment
{
    NotDefined = -1,
    Left, Center, Right, Justify, JustifyLow, Distributed, ThaiDistributed,
}

/// <summary>
/// The formatting of a paragraph (a view over a:pPr). Lengths are in points and NaN when
/// inherited. Spacing is given either in points or in lines (1.0 = one line): each spacing has
/// both properties, the one not in use reads NaN, and setting one replaces the other.
/// </summary>
public interface IParagraphFormat
{
    TextAlignment Alignment { get; set; }

    /// <summary>The outline level, 0 to 8; -1 when inherited.</summary>
    short Depth { get; set; }

    /// <summary>The first line's indent relative to the left margin (negative for a hanging indent).</summary>
    float Indent { get; set; }

    float MarginLeft { get; set; }

    float MarginRight { get; set; }

    float SpaceBefore { get; set; }
    float SpaceBeforeLines { get; set; }
    float SpaceAfter { get; set; }
    float SpaceAfterLines { get; set; }

    /// <summary>The line spacing in points.</summary>
    float SpaceWithin { get; set; }

    /// <summary>The line spacing in lines (1.0 single, 1.5, 2.0 double).</summary>
    float SpaceWithinLines { get; set; }

    NullableBool RightToLeft { get; set; }

    IBulletFormat Bullet { get; }

    /// <summary>The default formatting of the paragraph's portions.</summary>
    IPortionFormat DefaultPortionFormat { get; }

    /// <summary>
    /// The formatting actually used: the paragraph's own, then its level in the list styles of
    /// its shape, layout and master placeholders, the master's text style and the presentation's default.
    /// </summary>
    IParagraphFormatEffectiveData GetEffective();
}

public sealed class ParagraphFormat : IParagraphFormat
{
    private readonly ElementSlot _pPr;
    private readonly FormatContext _context;
    private readonly Paragraph? _paragraph;

    internal ParagraphFormat(ElementSlot pPr, FormatContext context, Paragraph? paragraph)
    {
        _pPr = pPr;
        _context = context;
        _paragraph = paragraph;
    }

    public TextAlignment Alignment
    {
        get => TextTokens.Alignments.Member(Attr("algn"), TextAlignment.NotDefined);
        set
        {
            if (value != TextAlignment.NotDefined && !TextTokens.Alignments.Has(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "ParagraphFormat.Alignment: unknown alignment");
            SetAttr("algn", value == TextAlignment.NotDefined ? null : TextTokens.Alignments.Token(value));
        }
    }

    public short Depth
    {
        get => (short)(AttributeAccess.Long(_pPr(false), "lvl") ?? -1);
        set
        {
            if (value < -1 || value > 8)
                throw new ArgumentOutOfRangeException(nameof(value), value, "ParagraphFormat.Depth must be between 0 and 8 (-1 to inherit)");
            SetAttr("lvl", value < 0 ? null : AttributeAccess.Text(value));
        }
    }

    public float Indent { get => Length("indent"); set => SetLength("indent", value, nameof(Indent), -4032, 4032); }
    public float MarginLeft { get => Length("marL"); set => SetLength("marL", value, nameof(MarginLeft), 0, 4032); }
    public float MarginRight { get => Length("marR"); set => SetLength("marR", value, nameof(MarginRight), 0, 4032); }

    public float SpaceBefore { get => Points("spcBef"); set => SetPoints("spcBef", value, nameof(SpaceBefore)); }
    public float SpaceBeforeLines { get => Lines("spcBef"); set => SetLines("spcBef", value, nameof(SpaceBeforeLines)); }
    public float SpaceAfter { get => Points("spcAft"); set => SetPoints("spcAft", value, nameof(SpaceAfter)); }
    public float SpaceAfterLines { get => Lines("spcAft"); set => SetLines("spcAft", value, nameof(SpaceAfterLines)); }
    public float SpaceWithin { get => Points("lnSpc"); set => SetPoints("lnSpc", value, nameof(SpaceWithin)); }
    public float SpaceWithinLines { get => Lines("lnSpc"); set => SetLines("lnSpc", value, nameof(SpaceWithinLines)); }

    public NullableBool RightToLeft
    {
        get => Attr("rtl") switch { "1" or "true" => NullableBool.True, "0" or "false" => NullableBool.False, _ => NullableBool.NotDefined };
        set => SetAttr("rtl", value switch { NullableBool.True => "1", NullableBool.False => "0", _ => null });
    }

    public IBulletFormat Bullet => new BulletFormat(_pPr, _context);

    public IPortionFormat DefaultPortionFormat => new PortionFormat(
        create => _pPr(create) is { } p ? p.GetFirstChild<A.DefaultRunProperties>() ?? (create ? SchemaOrder.Insert(p, new A.DefaultRunProperties(), SchemaOrder.ParagraphProperties) : null) : null,
        _context,
        _paragraph == null ? null : () => Paragraph.InheritedRunProperties(_paragraph.Element, _context));

    public IParagraphFormatEffectiveData GetEffective()
    {
        var chain = new System.Collections.Generic.List<OpenXmlElement>();
        if (_pPr(false) is { } own)
            chain.Add(own);
        TextInheritance? inheritance = null;
        if (_paragraph != null)
        {
            var (found, rest) = Paragraph.InheritedParagraphProperties(_paragraph.Element, _context);
            inheritance = found;
            chain.AddRange(rest);
        }
        float Length(string name) => Emu.ToPoints(Inherited.Long(chain, name) ?? 0);
        (float Points, float Lines) Space(string name, float points, float lines)
        {
            var holder = Inherited.Child(chain, name);
            if (holder?.GetFirstChild<A.SpacingPoints>() is { } pts)
                return ((AttributeAccess.Long(pts, "val") ?? 0) / 100f, float.NaN);
            if (holder?.GetFirstChild<A.SpacingPercent>() is { } pct)
                return (float.NaN, (AttributeAccess.Long(pct, "val") ?? 0) / 100000f);
            return (points, lines);
        }
        var before = Space("spcBef", 0, float.NaN);
        var after = Space("spcAft", 0, float.NaN);
        var within = Space("lnSpc", float.NaN, 1);
        return new ParagraphFormatEffectiveData
        {
            Alignment = TextTokens.Alignments.Member(Inherited.Attr(chain, "algn"), TextAlignment.Left),
            Depth = (short)(AttributeAccess.Long(_pPr(false), "lvl") ?? 0),
            Indent = Length("indent"),
            MarginLeft = Length("marL"),
            MarginRight = Length("marR"),
            SpaceBefore = before.Points,
            SpaceBeforeLines = before.Lines,
            SpaceAfter = after.Points,
            SpaceAfterLines = after.Lines,
            SpaceWithin = within.Points,
            SpaceWithinLines = within.Lines,
            RightToLeft = Inherited.Flag(chain, "rtl", false),
            Bullet = BulletFormat.Effective(chain, inheritance, _context, TextOfFirstPortion),
        };
    }

    // The effective formatting of the paragraph's first portion (its end mark when it has none), which a bullet may follow.
    private IPortionFormatEffectiveData TextOfFirstPortion()
    {
        if (_paragraph == null)
            return DefaultPortionFormat.GetEffective();
        var first = _paragraph.Portions.FirstOrDefault();
        return first != null ? first.PortionFormat.GetEffective() : _paragraph.EndParagraphPortionFormat.GetEffective();
    }

    public override string ToString() => $"ParagraphFormat [{Alignment}, depth {Depth}]";

    private OpenXmlElement Properties() => _pPr(true) ?? throw new PptxEditException($"{_context.Where}: there is no paragraph to format");

    private string? Attr(string name) => _pPr(false) is { } p ? AttributeAccess.Attr(p, name) : null;

    private void SetAttr(string name, string? value)
    {
        if (value == null)
        {
            if (_pPr(false) is { } p)
                AttributeAccess.SetAttr(p, name, null);
            return;
        }
        AttributeAccess.SetAttr(Properties(), name, value);
    }

    private float Length(string name) => AttributeAccess.Long(_pPr(false), name) is long v ? Emu.ToPoints(v) : float.NaN;

    private void SetLength(string name, float points, string member, float min, float max)
    {
        if (float.IsNaN(points))
        {
            SetAttr(name, null);
            return;
        }
        if (!(points >= min && points <= max))
            throw new ArgumentOutOfRangeException(nameof(points), points, $"ParagraphFormat.{member} must be between {min} and {max} points (NaN to inherit)");
        SetAttr(name, AttributeAccess.Text(Emu.FromPoints(points)));
    }

    // a:spcBef / a:spcAft / a:lnSpc hold a:spcPts (1/100 pt) or a:spcPct (1/1000 %).
    private OpenXmlElement? Spacing(string name, string kind) =>
        _pPr(false) is { } p && SchemaOrder.First(p, name) is { } s ? SchemaOrder.First(s, kind) : null;

    private float Points(string name) => AttributeAccess.Long(Spacing(name, "spcPts"), "val") is long v ? v / 100f : float.NaN;

    private float Lines(string name) => AttributeAccess.Long(Spacing(name, "spcPct"), "val") is long v ? v / 100000f : float.NaN;

    private void SetPoints(string name, float points, string member)
    {
        if (float.IsNaN(points))
        {
            if (Spacing(name, "spcPts") != null)
                RemoveSpacing(name);
            return;
        }
        if (!(points >= 0 && points <= 1584))
            throw new ArgumentOutOfRangeException(nameof(points), points, $"ParagraphFormat.{member} must be between 0 and 1584 points (NaN to inherit)");
        Store(name, new A.SpacingPoints { Val = (int)Math.Round(points * 100) });
    }

    private void SetLines(string name, float lines, string member)
    {
        if (float.IsNaN(lines))
        {
            if (Spacing(name, "spcPct") != null)
                RemoveSpacing(name);
            return;
        }
        if (!(lines >= 0 && lines <= 132))
            throw new ArgumentOutOfRangeException(nameof(lines), lines, $"ParagraphFormat.{member} must be between 0 and 132 lines (NaN to inherit)");
        Store(name, new A.SpacingPercent { Val = (int)Math.Round(lines * 100000) });
    }

    private void RemoveSpacing(string name)
    {
        if (_pPr(false) is { } p)
            SchemaOrder.First(p, name)?.Remove();
    }

    private void Store(string name, OpenXmlElement value)
    {
        OpenXmlElement holder = name switch { "spcBef" => new A.SpaceBefore(value), "spcAft" => new A.SpaceAfter(value), _ => new A.LineSpacing(value) };
        SchemaOrder.Replace(Properties(), new[] { name }, holder, SchemaOrder.ParagraphProperties);
    }
}
