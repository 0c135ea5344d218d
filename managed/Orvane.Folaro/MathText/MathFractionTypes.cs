namespace Orvane.Folaro.MathText;

/// <summary>How a fraction is drawn.</summary>
public enum MathFractionTypes
{
    Bar,
    Skewed,
    Linear,
    NoBar,
}
