using System;
using Orvane.Marel;

namespace Orvane.Folaro;

/// <summary>
/// A fill as drawn, after inheritance and the theme: colours are resolved (empty where a
/// part of the fill does not apply), the settings of kinds other than <see cref="FillType"/> hold their defaults.
/// </summary>

public interface IFillFormatEffectiveData
{
    /// <summary>The kind of fill drawn; NoFill when nothing fills the shape.</summary>
    FillType FillType { get; }

    Color SolidFillColor { get; }

    GradientShape GradientShape { get; }

    /// <summary>The angle of a linear gradient in degrees; NaN for other shapes.</summary>
    float LinearGradientAngle { get; }

    /// <summary>The gradient's stops, by position, with their resolved colours.</summary>
    IGradientStopEffectiveData[] GradientStops { get; }

    PatternStyle PatternStyle { get; }

    Color PatternForeColor { get; }

    Color PatternBackColor { get; }

    PictureFillMode PictureFillMode { get; }

    /// <summary>The picture's bytes; empty when there is no picture (or it is linked).</summary>
    byte[] ImageData { get; }
}

public sealed class FillFormatEffectiveData : IFillFormatEffectiveData
{
    internal FillFormatEffectiveData()
    {
    }

    public FillType FillType { get; internal set; } = FillType.NoFill;

    public Color SolidFillColor { get; internal set; }

    public GradientShape GradientShape { get; internal set; } = GradientShape.NotDefined;

    public float LinearGradientAngle { get; internal set; } = float.NaN;

    public IGradientStopEffectiveData[] GradientStops { get; internal set; } = Array.Empty<IGradientStopEffectiveData>();

    public PatternStyle PatternStyle { get; internal set; } = PatternStyle.NotDefined;

    public Color PatternForeColor { get; internal set; }

    public Color PatternBackColor { get; internal set; }

    public PictureFillMode PictureFillMode { get; internal set; } = PictureFillMode.NotDefined;

    public byte[] ImageData { get; internal set; } = Array.Empty<byte>();

    public override string ToString() => FillType == FillType.Solid ? $"FillFormatEffectiveData [Solid {SolidFillColor}]" : $"FillFormatEffectiveData [{FillType}]";
}
