namespace Orvane.Folaro;

/// <summary>
/// The hyperlinks of a whole presentation: of its slides, then of each master and its layouts.
/// Each query gives the objects that carry links — shapes, and portions of text (in shapes and
/// table cells) — so a link is always seen with its owner.
/// </summary>
public interface IHyperlinkQueries
{
    /// <summary>The shapes and portions that have a click hyperlink.</summary>
    IHyperlinkContainer[] GetHyperlinkClicks();

    /// <summary>The shapes and portions that have a mouse-over hyperlink.</summary>
    IHyperlinkContainer[] GetHyperlinkMouseOvers();

    /// <summary>The shapes and portions that have a hyperlink of either kind.</summary>
    IHyperlinkContainer[] GetAnyHyperlinks();

    /// <summary>Removes every hyperlink of the presentation with the relationships only they used.</summary>
    void RemoveAllHyperlinks();
}
