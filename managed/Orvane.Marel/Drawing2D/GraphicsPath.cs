using System;
using SkiaSharp;

namespace Orvane.Marel.Drawing2D;

// SKPath's own editing calls are marked obsolete in favour of SKPathBuilder, but the
// path here is edited in place and read back between edits, which they still do well.
#pragma warning disable CS0618

/// <summary>A sequence of figures made of lines and Bézier curves.</summary>
public sealed class GraphicsPath : IDisposable
{
    private SKPath? _path = new();
    // An open figure continues with the next line or curve; a closed or new one starts afresh.
    private bool _figureOpen;

    public GraphicsPath()
    {
    }

    public GraphicsPath(FillMode fillMode)
    {
        FillMode = fillMode;
    }

    public FillMode FillMode
    {
        get => Path.FillType == SKPathFillType.Winding ? FillMode.Winding : FillMode.Alternate;
        set => Path.FillType = value == FillMode.Winding ? SKPathFillType.Winding : SKPathFillType.EvenOdd;
    }

    /// <summary>The number of points that define the path (end and control points).</summary>
    public int PointCount => Path.PointCount;

    internal SKPath Path => _path ?? throw new ObjectDisposedException(nameof(GraphicsPath));

    public void AddLine(PointF pt1, PointF pt2) => AddLine(pt1.X, pt1.Y, pt2.X, pt2.Y);

    public void AddLine(float x1, float y1, float x2, float y2)
    {
        ContinueAt(x1, y1);
        Path.LineTo(x2, y2);
    }

    public void AddRectangle(RectangleF rect)
    {
        StartFigure();
        Path.AddRect(SKRect.Create(rect.X, rect.Y, rect.Width, rect.Height));
    }

    public void AddEllipse(RectangleF rect)
    {
        StartFigure();
        Path.AddOval(SKRect.Create(rect.X, rect.Y, rect.Width, rect.Height));
    }

    public void AddBezier(PointF pt1, PointF pt2, PointF pt3, PointF pt4) =>
        AddBezier(pt1.X, pt1.Y, pt2.X, pt2.Y, pt3.X, pt3.Y, pt4.X, pt4.Y);

    public void AddBezier(float x1, float y1, float x2, float y2, float x3, float y3, float x4, float y4)
    {
        ContinueAt(x1, y1);
        Path.CubicTo(x2, y2, x3, y3, x4, y4);
    }

    /// <summary>Closes the current figure with a line back to its start; the next segment starts a new figure.</summary>
    public void CloseFigure()
    {
        if (_figureOpen)
            Path.Close();
        _figureOpen = false;
    }

    /// <summary>Leaves the current figure open and starts a new one with the next segment.</summary>
    public void StartFigure() => _figureOpen = false;

    public void Reset()
    {
        Path.Reset();
        _figureOpen = false;
    }

    /// <summary>The bounds of all points of the path, control points included.</summary>
    public RectangleF GetBounds()
    {
        if (Path.PointCount == 0)
            return RectangleF.Empty;
        var b = Path.Bounds;
        return new RectangleF(b.Left, b.Top, b.Width, b.Height);
    }

    public void Dispose()
    {
        _path?.Dispose();
        _path = null;
    }

    private void ContinueAt(float x, float y)
    {
        if (!_figureOpen)
        {
            Path.MoveTo(x, y);
            _figureOpen = true;
            return;
        }
        // Joining the previous segment: a line only when the new start is elsewhere.
        var last = Path.LastPoint;
        if (last.X != x || last.Y != y)
            Path.LineTo(x, y);
    }
}
