namespace Orvane.Folaro.SlideShow;

/// <summary>The kind of a slide transition.</summary>
public enum TransitionType
{
    None,
    Blinds,
    Checker,
    Circle,
    Comb,
    Cover,
    Cut,
    Diamond,
    Dissolve,
    Fade,
    Newsflash,
    Plus,
    Pull,
    Push,
    Random,
    RandomBar,
    Split,
    Strips,
    Wedge,
    Wheel,
    Wipe,
    Zoom,
    Other,
}
