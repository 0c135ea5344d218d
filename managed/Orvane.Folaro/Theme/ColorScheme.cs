using System;
using DocumentFormat.OpenXml;
using Orvane.Folaro;
using Orvane.Marel;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Theme;

/// <summary>The twelve colours of a theme.</summary>
public interface IColorScheme
{
    string Name { get; set; }
    Color Dark1 { get; set; }
    Color Light1 { get; set; }
    Color Dark2 { get; set; }
    Color Light2 { get; set; }
    Color Accent1 { get; set; }
    Color Accent2 { get; set; }
    Color Accent3 { get; set; }
    Color Accent4 { get; set; }
    Color Accent5 { get; set; }
    Color Accent6 { get; set; }
    Color Hyperlink { get; set; }
    Color FollowedHyperlink { get; set; }

    /// <summary>The colour of a slot by name; Background1/Text1/Background2/Text2 name Light1/Dark1/Light2/Dark2.</summary>
    Color GetColor(SchemeColor slot);

    void SetColor(SchemeColor slot, Color color);
}

public sealed class ColorScheme : IColorScheme
{
    private readonly A.ColorScheme _element;
    private readonly string _where;

    internal ColorScheme(A.ColorScheme element, string where)
    {
        _element = element;
        _where = where;
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

    public Color Dark1 { get => Read(_element.Dark1Color); set => Write(_element.Dark1Color, value); }
    public Color Light1 { get => Read(_element.Light1Color); set => Write(_element.Light1Color, value); }
    public Color Dark2 { get => Read(_element.Dark2Color); set => Write(_element.Dark2Color, value); }
    public Color Light2 { get => Read(_element.Light2Color); set => Write(_element.Light2Color, value); }
    public Color Accent1 { get => Read(_element.Accent1Color); set => Write(_element.Accent1Color, value); }
    public Color Accent2 { get => Read(_element.Accent2Color); set => Write(_element.Accent2Color, value); }
    public Color Accent3 { get => Read(_element.Accent3Color); set => Write(_element.Accent3Color, value); }
    public Color Accent4 { get => Read(_element.Accent4Color); set => Write(_element.Accent4Color, value); }
    public Color Accent5 { get => Read(_element.Accent5Color); set => Write(_element.Accent5Color, value); }
    public Color Accent6 { get => Read(_element.Accent6Color); set => Write(_element.Accent6Color, value); }
    public Color Hyperlink { get => Read(_element.Hyperlink); set => Write(_element.Hyperlink, value); }
    public Color FollowedHyperlink { get => Read(_element.FollowedHyperlinkColor); set => Write(_element.FollowedHyperlinkColor, value); }

    /// <summary>The colour of a scheme slot (Dark1 ... FollowedHyperlink); role names (Background1, Text1, ...) read through the default colour map.</summary>
    public Color GetColor(SchemeColor slot) => Read(Slot(slot));

    public void SetColor(SchemeColor slot, Color color) => Write(Slot(slot), color);

    public override string ToString() => $"ColorScheme '{Name}'";

    private OpenXmlCompositeElement? Slot(SchemeColor slot) => slot switch
    {
        SchemeColor.Dark1 or SchemeColor.Text1 => _element.Dark1Color,
        SchemeColor.Light1 or SchemeColor.Background1 => _element.Light1Color,
        SchemeColor.Dark2 or SchemeColor.Text2 => _element.Dark2Color,
        SchemeColor.Light2 or SchemeColor.Background2 => _element.Light2Color,
        SchemeColor.Accent1 => _element.Accent1Color,
        SchemeColor.Accent2 => _element.Accent2Color,
        SchemeColor.Accent3 => _element.Accent3Color,
        SchemeColor.Accent4 => _element.Accent4Color,
        SchemeColor.Accent5 => _element.Accent5Color,
        SchemeColor.Accent6 => _element.Accent6Color,
        SchemeColor.Hyperlink => _element.Hyperlink,
        SchemeColor.FollowedHyperlink => _element.FollowedHyperlinkColor,
        _ => throw new ArgumentOutOfRangeException(nameof(slot), slot, "ColorScheme: not a colour of the scheme"),
    };

    // A slot holds one colour element (sRGB, or a system colour with its last known value); none reads as empty.
    private static Color Read(OpenXmlCompositeElement? slot) =>
        slot != null && SchemaOrder.FirstOf(slot, ColorMath.ColorElements) is { } color ? ColorMath.Resolve(color, null) : Color.Empty;

    private void Write(OpenXmlCompositeElement? slot, Color color)
    {
        if (slot == null)
            throw new PptxEditException($"{_where}: the colour scheme '{Name}' lacks a colour slot");
        if (color.IsEmpty)
            throw new ArgumentException("ColorScheme: a theme colour cannot be empty", nameof(color));
        slot.RemoveAllChildren();
        slot.AppendChild(new A.RgbColorModelHex { Val = $"{color.R:X2}{color.G:X2}{color.B:X2}" });
    }
}
