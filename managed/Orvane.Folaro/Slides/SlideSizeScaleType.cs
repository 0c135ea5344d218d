namespace Orvane.Folaro;

/// <summary>What happens to existing content when the slide size changes.</summary>
public enum SlideSizeScaleType
{
    /// <summary>Content keeps its position and size.</summary>
    DoNotScale,
    /// <summary>Content is scaled down (or up) uniformly so that all of it fits the new size.</summary>
    EnsureFit,
    /// <summary>Content is scaled uniformly to fill the new size, which may crop it.</summary>
    Maximize,
}
