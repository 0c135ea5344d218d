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
    private static readonly string[] Dashes = { "solid", "dot", "dash", "lgDash", "dashDot", "lgDashDot", "lgDashDotDot", "sysDash", "sysDot", "sysDashDot", "sysDashDotDot" };
    private static readonly string[] Compounds = { "sng", "dbl", "thinThick", "thickThin", "tri" };
    private static readonly string[] Caps = { "rnd", "sq", "flat" };
    private static readonly string[] Joins = { "round", "bevel", "miter" };
    private static readonly string[] Heads = { "none", "triangle", "stealth", "diamond", "oval", "arrow" };
    private static readonly string[] Sizes = { "sm", "med", "lg" };

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
            if (SchemaOrder.First(l, "custDash") != null)
                return LineDashStyle.Custom;
            return SchemaOrder.First(l, "prstDash") is { } d ? (LineDashStyle)Array.IndexOf(Dashes, AttributeAccess.Attr(d, "val") ?? "solid") : LineDashStyle.NotDefined;
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
            SchemaOrder.Replace(Line(), new[] { "prstDash", "custDash" }, new A.PresetDash { Val = new A.PresetLineDashValues(Dashes[(int)value]) }, SchemaOrder.Line);
        }
    }

    public LineStyle Style
    {
        get => (LineStyle)Array.IndexOf(Compounds, _line(false) is { } l ? AttributeAccess.Attr(l, "cmpd") : null);
        set => SetAttr("cmpd", (int)value, Compounds, nameof(Style));
    }

    public LineCapStyle CapStyle
    {
        get => (LineCapStyle)Array.IndexOf(Caps, _line(false) is { } l ? AttributeAccess.Attr(l, "cap") : null);
        set => SetAttr("cap", (int)value, Caps, nameof(CapStyle));
    }

    public LineJoinStyle JoinStyle
    {
        get => _line(false) is { } l && SchemaOrder.FirstOf(l, Joins) is { } j ? (LineJoinStyle)Array.IndexOf(Joins, j.LocalName) : LineJoinStyle.NotDefined;
        set
        {
            if (!Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "LineFormat.JoinStyle: unknown join style");
            if (value == LineJoinStyle.NotDefined)
            {
                if (_line(false) is { } l)
                    SchemaOrder.Replace(l, Joins, null, SchemaOrder.Line);
                return;
            }
            OpenXmlElement made = value switch { LineJoinStyle.Round => new A.Round(), LineJoinStyle.Bevel => new A.LineJoinBevel(), _ => new A.Miter { Limit = 800000 } };
            SchemaOrder.Replace(Line(), Joins, made, SchemaOrder.Line);
        }
    }

    public LineArrowheadStyle BeginArrowheadStyle { get => (LineArrowheadStyle)EndAttr("headEnd", "type", Heads); set => SetEndAttr("headEnd", "type", (int)value, Heads, nameof(BeginArrowheadStyle)); }
    public LineArrowheadWidth BeginArrowheadWidth { get => (LineArrowheadWidth)EndAttr("headEnd", "w", Sizes); set => SetEndAttr("headEnd", "w", (int)value, Sizes, nameof(BeginArrowheadWidth)); }
    public LineArrowheadLength BeginArrowheadLength { get => (LineArrowheadLength)EndAttr("headEnd", "len", Sizes); set => SetEndAttr("headEnd", "len", (int)value, Sizes, nameof(BeginArrowheadLength)); }
    public LineArrowheadStyle EndArrowheadStyle { get => (LineArrowheadStyle)EndAttr("tailEnd", "type", Heads); set => SetEndAttr("tailEnd", "type", (int)value, Heads, nameof(EndArrowheadStyle)); }
    public LineArrowheadWidth EndArrowheadWidth { get => (LineArrowheadWidth)EndAttr("tailEnd", "w", Sizes); set => SetEndAttr("tailEnd", "w", (int)value, Sizes, nameof(EndArrowheadWidth)); }
    public LineArrowheadLength EndArrowheadLength { get => (LineArrowheadLength)EndAttr("tailEnd", "len", Sizes); set => SetEndAttr("tailEnd", "len", (int)value, Sizes, nameof(EndArrowheadLength)); }

    public IFillFormat FillFormat => new FillFormat(create => _line(create), SchemaOrder.Line, SchemaOrder.LineFills, _context);

    /// <summary>Where the effective line comes from when this one leaves a property unset, or null.</summary>
    internal Func<EffectiveFormats.Source>? Inheritance { get; init; }

    internal OpenXmlElement? Element => _line(false);

    internal FormatContext Context => _context;

    public ILineFormatEffectiveData GetEffective() => EffectiveFormats.Line(this);

    public override string ToString() => $"LineFormat [{Width} pt, {DashStyle}]";

    private OpenXmlElement Line() => _line(true) ?? throw new PptxEditException($"{_context.Where}: there is no place for a line");

    private void SetAttr(string name, int value, string[] names, string member)
    {
        if (value < -1 || value >= names.Length)
            throw new ArgumentOutOfRangeException(nameof(value), value, $"LineFormat.{member}: unknown value");
        if (value < 0)
        {
            if (_line(false) is { } l)
                AttributeAccess.SetAttr(l, name, null);
            return;
        }
        AttributeAccess.SetAttr(Line(), name, names[value]);
    }

    private int EndAttr(string end, string name, string[] names)
    {
        var e = _line(false) is { } l ? SchemaOrder.First(l, end) : null;
        return e == null ? -1 : Array.IndexOf(names, AttributeAccess.Attr(e, name));
    }

    private void SetEndAttr(string end, string name, int value, string[] names, string member)
    {
        if (value < -1 || value >= names.Length)
            throw new ArgumentOutOfRangeException(nameof(value), value, $"LineFormat.{member}: unknown value");
        if (value < 0)
        {
            if (_line(false) is { } l && SchemaOrder.First(l, end) is { } e)
                AttributeAccess.SetAttr(e, name, null);
            return;
        }
        var made = SchemaOrder.Ensure(Line(), end, () => end == "headEnd" ? new A.HeadEnd() : new A.TailEnd(), SchemaOrder.Line);
        AttributeAccess.SetAttr(made, name, names[value]);
    }
}
