using Orvane.Marel;

namespace Orvane.Folaro;

/// <summary>An outline as drawn, after inheritance and the theme. Width is in points.</summary>
public interface ILineFormatEffectiveData
{
    /// <summary>The width in points; 0 when nothing sets one (the thinnest line).</summary>
    float Width { get; }

    LineDashStyle DashStyle { get; }

    LineStyle Style { get; }

    LineCapStyle CapStyle { get; }

    LineJoinStyle JoinStyle { get; }

    LineArrowheadStyle BeginArrowheadStyle { get; }
    LineArrowheadWidth BeginArrowheadWidth { get; }
    LineArrowheadLength BeginArrowheadLength { get; }
    LineArrowheadStyle EndArrowheadStyle { get; }
    LineArrowheadWidth EndArrowheadWidth { get; }
    LineArrowheadLength EndArrowheadLength { get; }

    /// <summary>The line's fill; NoFill when no line is drawn.</summary>
    IFillFormatEffectiveData FillFormat { get; }

    /// <summary>The colour of a solid line; empty for other fills.</summary>
    Color SolidFillColor { get; }
}

public sealed class LineFormatEffectiveData : ILineFormatEffectiveData
{
    internal LineFormatEffectiveData()
    {
    }

    public float Width { get; internal set; }
    public LineDashStyle DashStyle { get; internal set; }
    public LineStyle Style { get; internal set; }
    public LineCapStyle CapStyle { get; internal set; }
    public LineJoinStyle JoinStyle { get; internal set; }
    public LineArrowheadStyle BeginArrowheadStyle { get; internal set; }
    public LineArrowheadWidth BeginArrowheadWidth { get; internal set; }
    public LineArrowheadLength BeginArrowheadLength { get; internal set; }
    public LineArrowheadStyle EndArrowheadStyle { get; internal set; }
    public LineArrowheadWidth EndArrowheadWidth { get; internal set; }
    public LineArrowheadLength EndArrowheadLength { get; internal set; }

    public IFillFormatEffectiveData FillFormat { get; internal set; } = new FillFormatEffectiveData();

    public Color SolidFillColor => FillFormat.FillType == FillType.Solid ? FillFormat.SolidFillColor : Color.Empty;

    public override string ToString() => $"LineFormatEffectiveData [{Width} pt, {DashStyle}, {FillFormat}]";
}
