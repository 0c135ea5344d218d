using System;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

public enum FillType
{
    NotDefined = -1,
    NoFill,
    Solid,
    Gradient,
    Pattern,
    Picture,
    Group,
}

/// <summary>
/// The fill of a shape, a line or text: a view over the fill element of its properties. Reading
/// a part of a fill of another type gives its defaults; writing one makes the fill that type.
/// </summary>
public interface IFillFormat
{
    /// <summary>The kind of fill; NotDefined when the fill is inherited. Setting a new kind makes a default fill of that kind.</summary>
    FillType FillType { get; set; }

    IColorFormat SolidFillColor { get; }

    IGradientFormat GradientFormat { get; }

    IPatternFormat PatternFormat { get; }

    IPictureFillFormat PictureFillFormat { get; }

    /// <summary>
    /// The fill actually drawn: this fill, else (for a shape) the fill of the placeholders it
    /// inherits from, else the theme fill style its shape style refers to; colours resolved
    /// through the slide's colour map and theme.
    /// </summary>
    IFillFormatEffectiveData GetEffective();
}

public sealed class FillFormat : IFillFormat
{
    private readonly ElementSlot _properties;
    private readonly string[] _order;
    private readonly string[] _kinds;

    internal FillFormat(ElementSlot properties, string[] order, string[] kinds, FormatContext context)
    {
        _properties = properties;
        _order = order;
        _kinds = kinds;
        Context = context;
    }

    internal FormatContext Context { get; }

    // A fill that is itself the viewed element (a theme's fill style): its settings can be
    // edited in place, but it cannot become another kind of fill.
    private OpenXmlElement? _fixed;

    internal static FillFormat Fixed(OpenXmlElement fill, FormatContext context) =>
        new(_ => fill.Parent, Array.Empty<string>(), SchemaOrder.Fills, context) { _fixed = fill };

    /// <summary>Where the effective fill comes from when this one is not set (the shape's inheritance), or null.</summary>
    internal Func<EffectiveFormats.Source>? Inheritance { get; init; }

    public IFillFormatEffectiveData GetEffective() => EffectiveFormats.Fill(this);

    public FillType FillType
    {
        get => Fill(false)?.LocalName switch
        {
            "noFill" => FillType.NoFill,
            "solidFill" => FillType.Solid,
            "gradFill" => FillType.Gradient,
            "pattFill" => FillType.Pattern,
            "blipFill" => FillType.Picture,
            "grpFill" => FillType.Group,
            _ => FillType.NotDefined,
        };
        set
        {
            if (!Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "FillFormat.FillType: unknown fill type");
            if (value == FillType)
                return;
            if (_fixed != null)
                Make(value);
            if (value == FillType.NotDefined)
            {
                if (_properties(false) is { } props)
                    SchemaOrder.Replace(props, _kinds, null, _order);
                return;
            }
            string name = NameOf(value);
            if (Array.IndexOf(_kinds, name) < 0)
                throw new ArgumentException($"FillFormat.FillType: {value} fill is not possible here ({Context.Where})", nameof(value));
            Make(value);
        }
    }

    public IColorFormat SolidFillColor => new ColorFormat(create => create ? Ensure(FillType.Solid) : Fill(false) as A.SolidFill, Context);

    public IGradientFormat GradientFormat => new GradientFormat(this);

    public IPatternFormat PatternFormat => new PatternFormat(this);

    public IPictureFillFormat PictureFillFormat => new PictureFillFormat(this);

    public override string ToString() => $"FillFormat [{FillType}]";

    internal OpenXmlElement? Fill(bool create) => _fixed ?? (_properties(create) is { } props ? SchemaOrder.FirstOf(props, _kinds) : null);

    /// <summary>The fill element of this kind, made (replacing another kind) when the fill is not of it.</summary>
    internal OpenXmlElement Ensure(FillType type)
    {
        var fill = Fill(false);
        if (fill != null && fill.LocalName == NameOf(type))
            return fill;
        if (Array.IndexOf(_kinds, NameOf(type)) < 0)
            throw new PptxEditException($"{Context.Where}: {type} fill is not possible here");
        return Make(type);
    }

    private OpenXmlElement Make(FillType type)
    {
        if (_fixed != null)
            throw new NotSupportedException($"FillFormat ({Context.Where}): changing the kind of a theme's fill style is not supported; edit the fill of its own kind");
        var props = _properties(true) ?? throw new PptxEditException($"{Context.Where}: there are no properties to hold a fill");
        OpenXmlElement made = type switch
        {
            FillType.NoFill => new A.NoFill(),
            FillType.Solid => new A.SolidFill(),
            // Two stops are the least a gradient has: the first accent to the background.
            FillType.Gradient => new A.GradientFill(
                new A.GradientStopList(
                    new A.GradientStop(new A.SchemeColor { Val = A.SchemeColorValues.Accent1 }) { Position = 0 },
                    new A.GradientStop(new A.SchemeColor { Val = A.SchemeColorValues.Background1 }) { Position = 100000 }),
                new A.LinearGradientFill { Angle = 0, Scaled = false })
            { RotateWithShape = true },
            FillType.Pattern => new A.PatternFill(
                new A.ForegroundColor(new A.SchemeColor { Val = A.SchemeColorValues.Accent1 }),
                new A.BackgroundColor(new A.SchemeColor { Val = A.SchemeColorValues.Background1 }))
            { Preset = A.PresetPatternValues.Percent5 },
            FillType.Picture => new A.BlipFill(new A.Blip(), new A.Stretch(new A.FillRectangle())) { RotateWithShape = true },
            _ => new A.GroupFill(),
        };
        SchemaOrder.Replace(props, _kinds, made, _order);
        return made;
    }

    private static string NameOf(FillType type) => type switch
    {
        FillType.NoFill => "noFill",
        FillType.Solid => "solidFill",
        FillType.Gradient => "gradFill",
        FillType.Pattern => "pattFill",
        FillType.Picture => "blipFill",
        FillType.Group => "grpFill",
        _ => string.Empty,
    };
}
