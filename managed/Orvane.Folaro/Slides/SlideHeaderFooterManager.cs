using System;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>The footer, slide number and date of one slide.</summary>
public interface ISlideHeaderFooterManager
{
    bool IsFooterVisible { get; }
    bool IsSlideNumberVisible { get; }
    bool IsDateTimeVisible { get; }

    /// <summary>The footer's text, or the empty string when the slide shows no footer.</summary>
    string FooterText { get; }

    /// <summary>The date placeholder's text (empty for an automatic date or when none is shown).</summary>
    string DateTimeText { get; }

    void SetFooterVisibility(bool isVisible);
    void SetSlideNumberVisibility(bool isVisible);
    void SetDateTimeVisibility(bool isVisible);

    /// <summary>Sets the footer's text; the footer must be shown for the text to appear.</summary>
    void SetFooterText(string text);
    void SetDateTimeText(string text);
}

/// <summary>
/// The slide's footer, number and date placeholders: showing one copies it from the layout,
/// hiding removes it from the slide.
/// </summary>
public sealed class SlideHeaderFooterManager : ISlideHeaderFooterManager
{
    private readonly Slide _slide;

    internal SlideHeaderFooterManager(Slide slide)
    {
        _slide = slide;
    }

    public bool IsFooterVisible => PresentationHeaderFooterManager.IsVisible(_slide, P.PlaceholderValues.Footer);

    public bool IsSlideNumberVisible => PresentationHeaderFooterManager.IsVisible(_slide, P.PlaceholderValues.SlideNumber);

    public bool IsDateTimeVisible => PresentationHeaderFooterManager.IsVisible(_slide, P.PlaceholderValues.DateAndTime);

    public string FooterText => PresentationHeaderFooterManager.TextOf(_slide, P.PlaceholderValues.Footer) ?? string.Empty;

    public string DateTimeText => PresentationHeaderFooterManager.TextOf(_slide, P.PlaceholderValues.DateAndTime) ?? string.Empty;

    public void SetFooterVisibility(bool isVisible) =>
        PresentationHeaderFooterManager.SetVisibility(_slide, P.PlaceholderValues.Footer, isVisible);

    public void SetSlideNumberVisibility(bool isVisible) =>
        PresentationHeaderFooterManager.SetVisibility(_slide, P.PlaceholderValues.SlideNumber, isVisible);

    public void SetDateTimeVisibility(bool isVisible) =>
        PresentationHeaderFooterManager.SetVisibility(_slide, P.PlaceholderValues.DateAndTime, isVisible);

    public void SetFooterText(string text)
    {
        ArgumentNullException.ThrowIfNull(text);
        PresentationHeaderFooterManager.SetText(_slide, P.PlaceholderValues.Footer, text);
    }

    public void SetDateTimeText(string text)
    {
        ArgumentNullException.ThrowIfNull(text);
        PresentationHeaderFooterManager.SetText(_slide, P.PlaceholderValues.DateAndTime, text);
    }
}
