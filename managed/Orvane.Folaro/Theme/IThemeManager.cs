namespace Orvane.Folaro.Theme;

/// <summary>What every theme manager gives: the theme a master, layout or slide actually uses.</summary>
public interface IThemeManager
{
    /// <summary>
    /// The colour, font and format schemes in force: the slide's override, else its layout's,
    /// else the master theme; colours of roles (Text1, Background1, ...) through the colour map.
    /// </summary>
    IThemeEffectiveData GetEffective();
}
