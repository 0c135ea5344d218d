using System;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

public enum LineDashStyle
{
    NotDefined = -1,
    Solid, Dot, Dash, LargeDash, DashDot, LargeDashDot, LargeDashDotDot, SystemDash, SystemDot, SystemDashDot, SystemDashDotDot,
    /// <summary>A dash pattern of its own (read only).</summary>
    Custom,
}

/// <summary>A line drawn as one stroke or as several parallel ones.</summary>
public enum LineStyle
{
    NotDefined = -1,
    Single, ThinThin, ThinThick, ThickThin, ThickBetweenThin,
}

public enum LineCapStyle
{
    NotDefined = -1,
    Round, Square, Flat,
}

public enum LineJoinStyle
{
    NotDefined = -1,
    Round, Bevel, Miter,
}

public enum LineArrowheadStyle
{
    NotDefined = -1,
    None, Triangle, Stealth, Diamond, Oval, Open,
}

public enum LineArrowheadWidth
{
    NotDefined = -1,
    Narrow, Medium, Wide,
}

public enum LineArrowheadLength
{
    NotDefined = -1,
    Short, Medium, Long,
}

/// <summary>The outline of a shape (a view over a:ln): width in points, dashes, ends and its fill.</summary>
public interface ILineFormat
{
    /// <summary>The width in points; NaN when inherited.</summary>
    float Width { get; set; }

    LineDashStyle DashStyle { get; set; }

    LineStyle Style { get; set; }

    LineCapStyle CapStyle { get; set; }

    LineJoinStyle JoinStyle { get; set; }

    LineArrowheadStyle BeginArrowheadStyle { get; set; }
    LineArrowheadWidth BeginArrowheadWidth { get; set; }
    LineArrowheadLength BeginArrowheadLength { get; set; }
    LineArrowheadStyle EndArrowheadStyle { get; set; }
    LineArrowheadWidth EndArrowheadWidth { get; set; }
    LineArrowheadLength EndArrowheadLength { get; set; }

    /// <summary>The line's fill: no fill, solid, gradient or pattern.</summary>
    IFillFormat FillFormat { get; }

    /// <summary>
    /// The outline actually drawn: each property from this line, else (for a shape) from the
    /// placeholders it inherits from, else from the theme line style its shape style refers to.
    /// </summary>
    ILineFormatEffectiveData GetEffective();
}

public sealed class LineFormat : ILineFormat
{
    private readonly ElementSlot _line;
    private readonly FormatContext _context;

    internal LineFormat(ElementSlot line, FormatContext context)
    {
        _line = line;
        _context = context;
    }

    public float Width
    {
        get => AttributeAccess.Long(_line(false), "w") is long w ? Emu.ToPoints(w) : float.NaN;
        set
        {
            if (float.IsNaN(value))
            {
                if (_line(false) is { } l)
                    AttributeAccess.SetAttr(l, "w", null);
                return;
            }
            if (!(value >= 0 && value <= 1584))
                throw new ArgumentOutOfRangeException(nameof(value), value, "LineFormat.Width must be between 0 and 1584 points (NaN to inherit)");
            AttributeAccess.SetAttr(Line(), "w", AttributeAccess.Text(Emu.FromPoints(value)));
        }
    }

    public LineDashStyle DashStyle
    {
        get
        {
            var l = _line(false);
            if (l == null)
                return LineDashStyle.NotDefined;
            if (l.GetFirstChild<A.CustomDash>() != null)
                return LineDashStyle.Custom;
            return l.GetFirstChild<A.PresetDash>() is { } d ? FormatTokens.LineDashes.Member(AttributeAccess.Attr(d, "val") ?? "solid", LineDashStyle.NotDefined) : LineDashStyle.NotDefined;
        }
        set
        {
            if (value == LineDashStyle.Custom || !Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "LineFormat.DashStyle must be a preset dash style or NotDefined");
            if (value == LineDashStyle.NotDefined)
            {
                if (_line(false) is { } l)
                    SchemaOrder.Replace(l, new[] { "prstDash", "custDash" }, null, SchemaOrder.Line);
                return;
            }
            SchemaOrder.Replace(Line(), new[] { "prstDash", "custDash" }, new A.PresetDash { Val = new A.PresetLineDashValues(FormatTokens.LineDashes.Token(value)) }, SchemaOrder.Line);
        }
    }

    public LineStyle Style
    {
        get => FormatTokens.LineCompounds.Member(_line(false) is { } l ? AttributeAccess.Attr(l, "cmpd") : null, LineStyle.NotDefined);
        set => SetAttr("cmpd", value, LineStyle.NotDefined, FormatTokens.LineCompounds, nameof(Style));
    }

    public LineCapStyle CapStyle
    {
        get => FormatTokens.LineCaps.Member(_line(false) is { } l ? AttributeAccess.Attr(l, "cap") : null, LineCapStyle.NotDefined);
        set => SetAttr("cap", value, LineCapStyle.NotDefined, FormatTokens.LineCaps, nameof(CapStyle));
    }

    public LineJoinStyle JoinStyle
    {
        get => _line(false) is { } l && SchemaOrder.FirstOf(l, FormatTokens.LineJoins.Tokens) is { } j ? FormatTokens.LineJoins.Member(j.LocalName, LineJoinStyle.NotDefined) : LineJoinStyle.NotDefined;
        set
        {
            if (!Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "LineFormat.JoinStyle: unknown join style");
            if (value == LineJoinStyle.NotDefined)
            {
                if (_line(false) is { } l)
                    SchemaOrder.Replace(l, FormatTokens.LineJoins.Tokens, null, SchemaOrder.Line);
                return;
            }
            OpenXmlElement made = value switch { LineJoinStyle.Round => new A.Round(), LineJoinStyle.Bevel => new A.LineJoinBevel(), _ => new A.Miter { Limit = 800000 } };
            SchemaOrder.Replace(Line(), FormatTokens.LineJoins.Tokens, made, SchemaOrder.Line);
        }
    }

    public LineArrowheadStyle BeginArrowheadStyle { get => EndAttr<A.HeadEnd, LineArrowheadStyle>("type", LineArrowheadStyle.NotDefined, FormatTokens.LineEndTypes); set => SetEndAttr<A.HeadEnd, LineArrowheadStyle>("type", value, LineArrowheadStyle.NotDefined, FormatTokens.LineEndTypes, nameof(BeginArrowheadStyle)); }
    public LineArrowheadWidth BeginArrowheadWidth { get => EndAttr<A.HeadEnd, LineArrowheadWidth>("w", LineArrowheadWidth.NotDefined, FormatTokens.LineEndWidths); set => SetEndAttr<A.HeadEnd, LineArrowheadWidth>("w", value, LineArrowheadWidth.NotDefined, FormatTokens.LineEndWidths, nameof(BeginArrowheadWidth)); }
    public LineArrowheadLength BeginArrowheadLength { get => EndAttr<A.HeadEnd, LineArrowheadLength>("len", LineArrowheadLength.NotDefined, FormatTokens.LineEndLengths); set => SetEndAttr<A.HeadEnd, LineArrowheadLength>("len", value, LineArrowheadLength.NotDefined, FormatTokens.LineEndLengths, nameof(BeginArrowheadLength)); }
    public LineArrowheadStyle EndArrowheadStyle { get => EndAttr<A.TailEnd, LineArrowheadStyle>("type", LineArrowheadStyle.NotDefined, FormatTokens.LineEndTypes); set => SetEndAttr<A.TailEnd, LineArrowheadStyle>("type", value, LineArrowheadStyle.NotDefined, FormatTokens.LineEndTypes, nameof(EndArrowheadStyle)); }
    public LineArrowheadWidth EndArrowheadWidth { get => EndAttr<A.TailEnd, LineArrowheadWidth>("w", LineArrowheadWidth.NotDefined, FormatTokens.LineEndWidths); set => SetEndAttr<A.TailEnd, LineArrowheadWidth>("w", value, LineArrowheadWidth.NotDefined, FormatTokens.LineEndWidths, nameof(EndArrowheadWidth)); }
    public LineArrowheadLength EndArrowheadLength { get => EndAttr<A.TailEnd, LineArrowheadLength>("len", LineArrowheadLength.NotDefined, FormatTokens.LineEndLengths); set => SetEndAttr<A.TailEnd, LineArrowheadLength>("len", value, LineArrowheadLength.NotDefined, FormatTokens.LineEndLengths, nameof(EndArrowheadLength)); }

    public IFillFormat FillFormat => new FillFormat(create => _line(create), SchemaOrder.Line, SchemaOrder.LineFills, _context);

    /// <summary>Where the effective line comes from when this one leaves a property unset, or null.</summary>
    internal Func<EffectiveFormats.Source>? Inheritance { get; init; }

    internal OpenXmlElement? Element => _line(false);

    internal FormatContext Context => _context;

    public ILineFormatEffectiveData GetEffective() => EffectiveFormats.Line(this);

    public override string ToString() => $"LineFormat [{Width} pt, {DashStyle}]";

    private OpenXmlElement Line() => _line(true) ?? throw new PptxEditException($"{_context.Where}: there is no place for a line");

    private void SetAttr<TEnum>(string name, TEnum value, TEnum notDefined, EnumTokens<TEnum> tokens, string member) where TEnum : struct, Enum
    {
        if (tokens.TokenOrNull(value, notDefined, $"LineFormat.{member}") is not { } token)
        {
            if (_line(false) is { } l)
                AttributeAccess.SetAttr(l, name, null);
            return;
        }
        AttributeAccess.SetAttr(Line(), name, token);
    }

    private TEnum EndAttr<TEnd, TEnum>(string name, TEnum notDefined, EnumTokens<TEnum> tokens) where TEnd : OpenXmlElement where TEnum : struct, Enum =>
        _line(false)?.GetFirstChild<TEnd>() is { } e ? tokens.Member(AttributeAccess.Attr(e, name), notDefined) : notDefined;

    private void SetEndAttr<TEnd, TEnum>(string name, TEnum value, TEnum notDefined, EnumTokens<TEnum> tokens, string member)
        where TEnd : OpenXmlElement, new() where TEnum : struct, Enum
    {
        if (tokens.TokenOrNull(value, notDefined, $"LineFormat.{member}") is not { } token)
        {
            if (_line(false)?.GetFirstChild<TEnd>() is { } e)
                AttributeAccess.SetAttr(e, name, null);
            return;
        }
        var line = Line();
        var made = line.GetFirstChild<TEnd>() ?? SchemaOrder.Insert(line, new TEnd(), SchemaOrder.Line);
        AttributeAccess.SetAttr(made, name, token);
    }
}
