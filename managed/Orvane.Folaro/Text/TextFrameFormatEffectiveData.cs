namespace Orvane.Folaro;

/// <summary>The layout a text frame actually has, after inheritance and defaults (margins in points).</summary>
public interface ITextFrameFormatEffectiveData
{
    float MarginLeft { get; }
    float MarginRight { get; }
    float MarginTop { get; }
    float MarginBottom { get; }
    bool WrapText { get; }
    TextAnchorType AnchoringType { get; }
    bool CenterText { get; }
    TextVerticalType TextVerticalType { get; }
    TextAutofitType AutofitType { get; }
    int ColumnCount { get; }
    float ColumnSpacing { get; }
}

public sealed class TextFrameFormatEffectiveData : ITextFrameFormatEffectiveData
{
    internal TextFrameFormatEffectiveData()
    {
    }

    public float MarginLeft { get; internal init; }
    public float MarginRight { get; internal init; }
    public float MarginTop { get; internal init; }
    public float MarginBottom { get; internal init; }
    public bool WrapText { get; internal init; }
    public TextAnchorType AnchoringType { get; internal init; }
    public bool CenterText { get; internal init; }
    public TextVerticalType TextVerticalType { get; internal init; }
    public TextAutofitType AutofitType { get; internal init; }
    public int ColumnCount { get; internal init; }
    public float ColumnSpacing { get; internal init; }

    public override string ToString() => $"TextFrameFormatEffectiveData [{AnchoringType}, wrap {WrapText}, autofit {AutofitType}]";
}
