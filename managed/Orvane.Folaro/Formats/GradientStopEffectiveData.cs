using Orvane.Marel;

namespace Orvane.Folaro;

/// <summary>A gradient stop as drawn: its position (0–1) and resolved colour.</summary>
public interface IGradientStopEffectiveData
{
    float Position { get; }

    Color Color { get; }
}

public sealed class GradientStopEffectiveData : IGradientStopEffectiveData
{
    internal GradientStopEffectiveData(float position, Color color)
    {
        Position = position;
        Color = color;
    }

    public float Position { get; }

    public Color Color { get; }

    public override string ToString() => $"GradientStopEffectiveData [{Position}: {Color}]";
}
