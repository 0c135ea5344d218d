namespace Orvane.Folaro;

/// <summary>Footers, slide numbers and dates of all slides at once.</summary>
public interface IPresentationHeaderFooterManager
{
    void SetAllFootersText(string text);
    void SetAllFootersVisibility(bool isVisible);
    void SetAllSlideNumbersVisibility(bool isVisible);
    void SetAllDateTimesVisibility(bool isVisible);
    void SetAllDateTimesText(string dateTimeText);
}
