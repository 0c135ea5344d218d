using System;
using System.Globalization;
using DocumentFormat.OpenXml;
using Orvane.Folaro.Theme;
using Orvane.Marel;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

/// <summary>How a colour is stored.</summary>
public enum ColorType
{
    NotDefined = -1,
    RGB,
    RGBPercentage,
    HSL,
    Scheme,
    System,
    Preset,
}

/// <summary>A colour of the theme, named by its role (Background1, Text1, ...) or its slot (Dark1, Light1, ...).</summary>
public enum SchemeColor
{
    NotDefined = -1,
    Background1,
    Text1,
    Background2,
    Text2,
    Accent1,
    Accent2,
    Accent3,
    Accent4,
    Accent5,
    Accent6,
    Hyperlink,
    FollowedHyperlink,
    StyleColor,
    Dark1,
    Light1,
    Dark2,
    Light2,
}

/// <summary>
/// A colour: a stored value (RGB, HSL, preset, system or scheme) with its operations. A view
/// over the colour element inside its holder (a solid fill, a gradient stop, a highlight, ...).
/// </summary>
public interface IColorFormat
{
    ColorType ColorType { get; }

    /// <summary>The colour after the theme and the operations; Empty when not defined. Setting stores an RGB value (alpha too) and drops the operations.</summary>
    Color Color { get; set; }

    /// <summary>The scheme colour, or NotDefined when the colour is not a scheme colour. Setting drops the operations.</summary>
    SchemeColor SchemeColor { get; set; }

    /// <summary>The preset colour, or NotDefined.</summary>
    PresetColor PresetColor { get; set; }

    /// <summary>The system colour, or NotDefined.</summary>
    SystemColor SystemColor { get; set; }

    /// <summary>Stores an HSL colour: hue in degrees, saturation and luminance as 0–1 fractions.</summary>
    void SetHsl(float hue, float saturation, float luminance);

    /// <summary>The operations applied to the stored colour, in order.</summary>
    IColorOperationCollection ColorOperations { get; }
}

public sealed class ColorFormat : IColorFormat
{
    private readonly ElementSlot _holder;
    private readonly FormatContext _context;

    internal ColorFormat(ElementSlot holder, FormatContext context)
    {
        _holder = holder;
        _context = context;
    }

    public ColorType ColorType => Element(false) switch
    {
        A.RgbColorModelHex => ColorType.RGB,
        A.RgbColorModelPercentage => ColorType.RGBPercentage,
        A.HslColor => ColorType.HSL,
        A.SchemeColor => ColorType.Scheme,
        A.SystemColor => ColorType.System,
        A.PresetColor => ColorType.Preset,
        _ => ColorType.NotDefined,
    };

    public Color Color
    {
        get => Element(false) is { } e ? ColorMath.Resolve(e, _context.Theme) : Color.Empty;
        set
        {
            if (value.IsEmpty)
                throw new ArgumentException("ColorFormat.Color: the colour must not be empty", nameof(value));
            var made = new A.RgbColorModelHex { Val = $"{value.R:X2}{value.G:X2}{value.B:X2}" };
            if (value.A != 255)
                made.AppendChild(new A.Alpha { Val = (int)Math.Round(value.A / 255.0 * 100000) });
            Store(made);
        }
    }

    public SchemeColor SchemeColor
    {
        get => Element(false) is A.SchemeColor e ? FormatTokens.SchemeColors.Member(AttributeAccess.Attr(e, "val"), SchemeColor.NotDefined) : SchemeColor.NotDefined;
        set
        {
            if (value < 0 || !Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "ColorFormat.SchemeColor must be a scheme colour");
            Store(new A.SchemeColor { Val = new A.SchemeColorValues(FormatTokens.SchemeColors.Token(value)) });
        }
    }

    public PresetColor PresetColor
    {
        get => Element(false) is A.PresetColor e ? FormatTokens.PresetColors.Member(AttributeAccess.Attr(e, "val"), PresetColor.NotDefined) : PresetColor.NotDefined;
        set
        {
            if (value < 0 || !Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "ColorFormat.PresetColor must be a preset colour");
            Store(new A.PresetColor { Val = new A.PresetColorValues(FormatTokens.PresetColors.Token(value)) });
        }
    }

    public SystemColor SystemColor
    {
        get => Element(false) is A.SystemColor e ? FormatTokens.SystemColors.Member(AttributeAccess.Attr(e, "val"), SystemColor.NotDefined) : SystemColor.NotDefined;
        set
        {
            if (value < 0 || !Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "ColorFormat.SystemColor must be a system colour");
            Store(new A.SystemColor { Val = new A.SystemColorValues(FormatTokens.SystemColors.Token(value)) });
        }
    }

    public void SetHsl(float hue, float saturation, float luminance)
    {
        if (!float.IsFinite(hue))
            throw new ArgumentOutOfRangeException(nameof(hue), hue, "ColorFormat.SetHsl: hue must be finite");
        CheckFraction(saturation, nameof(saturation));
        CheckFraction(luminance, nameof(luminance));
        double h = hue % 360.0;
        if (h < 0)
            h += 360.0;
        Store(new A.HslColor
        {
            HueValue = (int)Math.Round(h * 60000) % 21600000,
            SatValue = (int)Math.Round(saturation * 100000.0),
            LumValue = (int)Math.Round(luminance * 100000.0),
        });
    }

    public IColorOperationCollection ColorOperations => new ColorOperationCollection(() => Element(false), _context);

    private static void CheckFraction(float value, string name)
    {
        if (!(value >= 0 && value <= 1))
            throw new ArgumentOutOfRangeException(name, value, $"ColorFormat.SetHsl: {name} must be between 0 and 1");
    }

    private OpenXmlElement? Element(bool create)
    {
        var holder = _holder(create);
        return holder == null ? null : SchemaOrder.FirstOf(holder, ColorMath.ColorElements);
    }

    // A holder has exactly one colour element, first.
    private void Store(OpenXmlElement made)
    {
        var holder = _holder(true) ?? throw new PptxEditException($"{_context.Where}: there is no place for a colour");
        var old = SchemaOrder.FirstOf(holder, ColorMath.ColorElements);
        if (old != null)
        {
            old.InsertBeforeSelf(made);
            old.Remove();
        }
        else
            holder.PrependChild(made);
    }

    public override string ToString() => ColorType == ColorType.NotDefined ? "ColorFormat [NotDefined]" : $"ColorFormat [{ColorType}: {Color}]";

    internal static string Format(double v) => v.ToString(CultureInfo.InvariantCulture);
}
