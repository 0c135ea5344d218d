using System;
using System.Globalization;
using DocumentFormat.OpenXml;
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
}

public sealed class ColorScheme : IColorScheme
{
    private readonly MasterTheme _theme;
    private readonly A.ColorScheme _element;

    internal ColorScheme(MasterTheme theme, A.ColorScheme element)
    {
        _theme = theme;
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

    // A slot holds an sRGB value or a system colour with its last known value; anything else reads as empty.
    private static Color Read(OpenXmlCompositeElement? slot)
    {
        string? hex = slot?.FirstChild switch
        {
            A.RgbColorModelHex rgb => rgb.Val?.Value,
            A.SystemColor sys => sys.LastColor?.Value,
            _ => null,
        };
        if (hex == null || hex.Length != 6 || !int.TryParse(hex, NumberStyles.HexNumber, CultureInfo.InvariantCulture, out var value))
            return Color.Empty;
        return Color.FromArgb(unchecked((int)0xFF000000) | value);
    }

    private void Write(OpenXmlCompositeElement? slot, Color color)
    {
        if (slot == null)
            throw new PptxEditException($"part '{_theme.Part.Uri}': the colour scheme '{Name}' lacks a colour slot");
        if (color.IsEmpty)
            throw new ArgumentException("ColorScheme: a theme colour cannot be empty", nameof(color));
        slot.RemoveAllChildren();
        slot.AppendChild(new A.RgbColorModelHex { Val = $"{color.R:X2}{color.G:X2}{color.B:X2}" });
    }
}
