namespace Orvane.Folaro;

/// <summary>The preset slide sizes; <see cref="Custom"/> for any other.</summary>
public enum SlideSizeType
{
    OnScreen,
    LetterPaper,
    A4Paper,
    Slide35mm,
    Overhead,
    Banner,
    Custom,
    Ledger,
    A3Paper,
    B4IsoPaper,
    B5IsoPaper,
    OnScreen16x9,
    OnScreen16x10,
    Widescreen,
}
