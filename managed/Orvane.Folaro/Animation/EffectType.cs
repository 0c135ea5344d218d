namespace Orvane.Folaro.Animation;

/// <summary>The kind of an animation effect.</summary>
public enum EffectType
{
    Appear,
    Blinds,
    Bounce,
    Checkerboard,
    Dissolve,
    Fade,
    Fly,
    Float,
    Grow,
    GrowAndTurn,
    Pulse,
    RandomBars,
    Spin,
    Split,
    Swivel,
    Teeter,
    Wheel,
    Wipe,
    Zoom,
    PathCustom,
}
