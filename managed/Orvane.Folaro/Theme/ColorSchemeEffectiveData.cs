using System;
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
    private static readonly string[] Names =
        { "bg1", "tx1", "bg2", "tx2", "accent1", "accent2", "accent3", "accent4", "accent5", "accent6", "hlink", "folHlink", "phClr", "dk1", "lt1", "dk2", "lt2" };

    private readonly Color[] _colors = new Color[Names.Length];

    internal ColorSchemeEffectiveData(A.ColorScheme? scheme, ThemeColors? colors)
    {
        Name = scheme?.Name?.Value ?? string.Empty;
        for (int i = 0; i < Names.Length; i++)
            _colors[i] = Names[i] == "phClr" ? Color.Empty : ColorMath.Resolve(new A.SchemeColor { Val = new A.SchemeColorValues(Names[i]) }, colors);
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
        if (color < 0 || (int)color >= Names.Length || color == SchemeColor.StyleColor)
            throw new ArgumentOutOfRangeException(nameof(color), color, "ColorSchemeEffectiveData.GetColor: not a theme colour");
        return _colors[(int)color];
    }

    public override string ToString() => $"ColorSchemeEffectiveData '{Name}'";
}
