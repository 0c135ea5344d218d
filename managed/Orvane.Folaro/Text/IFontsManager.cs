namespace Orvane.Folaro;

/// <summary>The fonts a presentation uses and embeds.</summary>
public interface IFontsManager
{
    /// <summary>Uses <paramref name="destFontName"/> wherever <paramref name="sourceFontName"/> is used.</summary>
    void ReplaceFont(string sourceFontName, string destFontName);
    void AddEmbeddedFont(byte[] fontData);
    void RemoveEmbeddedFont(string fontName);
    bool IsEmbeddedFont(string fontName);
}
