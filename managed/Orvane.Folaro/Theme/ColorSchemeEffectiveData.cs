using System;
using System.Collections.Generic;
using Orvane.Marel;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Theme;

/// <summary>The twelve theme colours in force, and the four role colours the colour map gives.</summary>
public interface IColorSchemeEffectiveData
{
    string Name { get; }
    Color Dark1 { get; }
    Color Light1 { get; }
    Color Dark2 { get; }
    Color Light2 { get; }
    Color Accent1 { get; }
    Color Accent2 { get; }
    Color Accent3 { get; }
    Color Accent4 { get; }
    Color Accent5 { get; }
    Color Accent6 { get; }
    Color Hyperlink { get; }
    Color FollowedHyperlink { get; }

    /// <summary>The background colour (bg1) after the colour map.</summary>
    Color Background1 { get; }
    Color Text1 { get; }
    Color Background2 { get; }
    Color Text2 { get; }

    /// <summary>Any scheme colour, roles through the colour map.</summary>
    Color GetColor(SchemeColor color);
}

public sealed class ColorSchemeEffectiveData : IColorSchemeEffectiveData
{
    // Every scheme colour but the style colour (phClr), which only has a value inside a style reference.
    private readonly Dictionary<SchemeColor, Color> _colors = new();

    internal ColorSchemeEffectiveData(A.ColorScheme? scheme, ThemeColors? colors)
    {
        Name = scheme?.Name?.Value ?? string.Empty;
        foreach (var (color, token) in FormatTokens.SchemeColors.Pairs)
            if (color != SchemeColor.StyleColor)
                _colors[color] = ColorMath.Resolve(new A.SchemeColor { Val = new A.SchemeColorValues(token) }, colors);
    }

    public string Name { get; }
    public Color Dark1 => GetColor(SchemeColor.Dark1);
    public Color Light1 => GetColor(SchemeColor.Light1);
    public Color Dark2 => GetColor(SchemeColor.Dark2);
    public Color Light2 => GetColor(SchemeColor.Light2);
    public Color Accent1 => GetColor(SchemeColor.Accent1);
    public Color Accent2 => GetColor(SchemeColor.Accent2);
    public Color Accent3 => GetColor(SchemeColor.Accent3);
    public Color Accent4 => GetColor(SchemeColor.Accent4);
    public Color Accent5 => GetColor(SchemeColor.Accent5);
    public Color Accent6 => GetColor(SchemeColor.Accent6);
    public Color Hyperlink => GetColor(SchemeColor.Hyperlink);
    public Color FollowedHyperlink => GetColor(SchemeColor.FollowedHyperlink);
    public Color Background1 => GetColor(SchemeColor.Background1);
    public Color Text1 => GetColor(SchemeColor.Text1);
    public Color Background2 => GetColor(SchemeColor.Background2);
    public Color Text2 => GetColor(SchemeColor.Text2);

    public Color GetColor(SchemeColor color)
    {
        return _colors.TryGetValue(color, out var value)
            ? value
            : throw new ArgumentOutOfRangeException(nameof(color), color, "ColorSchemeEffectiveData.GetColor: not a theme colour");
    }

    public override string ToString() => $"ColorSchemeEffectiveData '{Name}'";
}
