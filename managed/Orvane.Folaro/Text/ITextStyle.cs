namespace Orvane.Folaro;

/// <summary>Text formatting defaults per outline level (1 to 9).</summary>
public interface ITextStyle
{
    /// <summary>The default font height of a level in points; NaN when the level does not set it.</summary>
    float GetFontHeight(int level);
    void SetFontHeight(int level, float points);
    /// <summary>The default Latin font of a level; empty when the level does not set it.</summary>
    string GetLatinFont(int level);
    void SetLatinFont(int level, string fontName);
}
