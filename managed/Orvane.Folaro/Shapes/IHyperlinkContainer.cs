namespace Orvane.Folaro;

/// <summary>An object that can carry a hyperlink followed on click.</summary>
public interface IHyperlinkContainer
{
    /// <summary>The click hyperlink, or null when there is none.</summary>
    IHyperlink? HyperlinkClick { get; }
}
