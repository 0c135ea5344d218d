
namespace Orvane.Folaro.Theme;

/// <summary>The theme as a master, layout or slide uses it.</summary>

public interface IThemeEffectiveData
{
    IColorSchemeEffectiveData ColorScheme { get; }

    IFontSchemeEffectiveData FontScheme { get; }

    /// <summary>The format scheme in force (a view of the theme's or the override's; null when there is none).</summary>
    IFormatScheme? FormatScheme { get; }
}

public sealed class ThemeEffectiveData : IThemeEffectiveData
{
    private ThemeEffectiveData(IColorSchemeEffectiveData colors, IFontSchemeEffectiveData fonts, IFormatScheme? format)
    {
        ColorScheme = colors;
        FontScheme = fonts;
        FormatScheme = format;
    }

    public IColorSchemeEffectiveData ColorScheme { get; }

    public IFontSchemeEffectiveData FontScheme { get; }

    public IFormatScheme? FormatScheme { get; }

    public override string ToString() => $"ThemeEffectiveData [{ColorScheme}, {FontScheme}]";

    internal static ThemeEffectiveData Of(BaseSlide slide)
    {
        var part = slide.PartBase;
        var colors = new ColorSchemeEffectiveData(ThemeChain.ColorScheme(part), ThemeColors.Of(part));
        var fonts = new FontSchemeEffectiveData(ThemeChain.FontScheme(part));
        var format = ThemeChain.FormatScheme(part);
        IFormatScheme? formatView = format != null && EffectiveFormats.PartOf(format) is { } owner ? new FormatScheme(format, owner, slide.Where) : null;
        return new ThemeEffectiveData(colors, fonts, formatView);
    }
}
