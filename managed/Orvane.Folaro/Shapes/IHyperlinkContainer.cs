namespace Orvane.Folaro;

/// <summary>An object that can carry hyperlinks: a shape or a portion of text.</summary>
public interface IHyperlinkContainer
{
    /// <summary>The hyperlink followed on click, or null. Setting null removes it (and its relationship when unused).</summary>
    IHyperlink? HyperlinkClick { get; set; }

    /// <summary>The hyperlink followed when the pointer rests on the object, or null.</summary>
    IHyperlink? HyperlinkMouseOver { get; set; }
}
