namespace Orvane.Folaro.SlideShow;

public enum TransitionSpeed
{
    Fast,
    Medium,
    Slow,
}
