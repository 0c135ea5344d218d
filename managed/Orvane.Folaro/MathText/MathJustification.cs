namespace Orvane.Folaro.MathText;

/// <summary>How a math paragraph is aligned.</summary>
public enum MathJustification
{
    NotDefined,
    LeftJustified,
    RightJustified,
    Centered,
    CenteredAsGroup,
}
