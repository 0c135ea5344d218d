using System;
using System.Collections.Generic;
using System.Linq;
using Orvane.Marel;

namespace Orvane.Folaro;

/// <summary>One drawing command of a geometry path.</summary>
public enum PathCommand
{
    MoveTo,
    LineTo,
    ArcTo,
    Close,
    CubicBezierTo,
    QuadraticBezierTo,
}

/// <summary>How a path is filled: not at all, with the shape's fill, or with a lighter or darker shade of it.</summary>
public enum PathFillModeType
{
    None,
    Normal,
    Lighten,
    LightenLess,
    Darken,
    DarkenLess,
}

/// <summary>
/// One command of a path with its values: x, y for MoveTo and LineTo; control points then the
/// end point for the Bézier curves; width, height, start angle and sweep angle for ArcTo; none
/// for Close. Lengths in points, angles in degrees.
/// </summary>
public interface IPathSegment
{
    PathCommand PathCommand { get; }

    float[] PathPoints { get; }
}

public sealed class PathSegment : IPathSegment
{
    private readonly float[] _points;

    internal PathSegment(PathCommand command, float[] points)
    {
        PathCommand = command;
        _points = points;
    }

    public PathCommand PathCommand { get; }

    /// <summary>A copy of the segment's values.</summary>
    public float[] PathPoints => (float[])_points.Clone();

    public override string ToString() => $"{PathCommand}({string.Join(", ", _points)})";
}

/// <summary>A figure of a freeform geometry, in points relative to the shape's top-left corner.</summary>
public interface IGeometryPath
{
    /// <summary>The path's commands in order.</summary>
    IPathSegment[] PathData { get; }

    PathFillModeType FillMode { get; set; }

    /// <summary>Whether the path is outlined with the shape's line.</summary>
    bool Stroke { get; set; }

    void MoveTo(PointF point);

    void MoveTo(float x, float y);

    void LineTo(PointF point);

    void LineTo(float x, float y);

    /// <summary>A cubic Bézier curve from the current point through two control points to the end point.</summary>
    void CubicBezierTo(PointF point1, PointF point2, PointF point3);

    void CubicBezierTo(float x1, float y1, float x2, float y2, float x3, float y3);

    /// <summary>A quadratic Bézier curve from the current point through a control point to the end point.</summary>
    void QuadraticBezierTo(PointF point1, PointF point2);

    void QuadraticBezierTo(float x1, float y1, float x2, float y2);

    /// <summary>
    /// An arc of the ellipse of this width and height that passes through the current point at
    /// <paramref name="startAngle"/>, swept clockwise by <paramref name="sweepAngle"/> degrees (negative: counter-clockwise).
    /// </summary>
    void ArcTo(float width, float height, float startAngle, float sweepAngle);

    /// <summary>Closes the current figure with a line back to its start.</summary>
    void CloseFigure();

    /// <summary>Removes every command.</summary>
    void Clear();
}

public sealed class GeometryPath : IGeometryPath
{
    private readonly List<PathSegment> _segments = new();
    private PathFillModeType _fillMode = PathFillModeType.Normal;

    public GeometryPath()
    {
    }

    public IPathSegment[] PathData => _segments.ToArray<IPathSegment>();

    public PathFillModeType FillMode
    {
        get => _fillMode;
        set => _fillMode = Enum.IsDefined(value) ? value : throw new ArgumentOutOfRangeException(nameof(value), value, "GeometryPath.FillMode must be a fill mode");
    }

    public bool Stroke { get; set; } = true;

    public void MoveTo(PointF point) => MoveTo(point.X, point.Y);

    public void MoveTo(float x, float y) => Add(PathCommand.MoveTo, nameof(MoveTo), x, y);

    public void LineTo(PointF point) => LineTo(point.X, point.Y);

    public void LineTo(float x, float y) => Add(PathCommand.LineTo, nameof(LineTo), x, y);

    public void CubicBezierTo(PointF point1, PointF point2, PointF point3) =>
        CubicBezierTo(point1.X, point1.Y, point2.X, point2.Y, point3.X, point3.Y);

    public void CubicBezierTo(float x1, float y1, float x2, float y2, float x3, float y3) =>
        Add(PathCommand.CubicBezierTo, nameof(CubicBezierTo), x1, y1, x2, y2, x3, y3);

    public void QuadraticBezierTo(PointF point1, PointF point2) => QuadraticBezierTo(point1.X, point1.Y, point2.X, point2.Y);

    public void QuadraticBezierTo(float x1, float y1, float x2, float y2) =>
        Add(PathCommand.QuadraticBezierTo, nameof(QuadraticBezierTo), x1, y1, x2, y2);

    public void ArcTo(float width, float height, float startAngle, float sweepAngle)
    {
        if (!(width >= 0) || !(height >= 0))
            throw new ArgumentOutOfRangeException(nameof(width), "GeometryPath.ArcTo: the width and height must not be negative");
        Add(PathCommand.ArcTo, nameof(ArcTo), width, height, startAngle, sweepAngle);
    }

    public void CloseFigure()
    {
        if (_segments.Count == 0)
            throw new InvalidOperationException("GeometryPath.CloseFigure: the path has no figure to close");
        _segments.Add(new PathSegment(PathCommand.Close, Array.Empty<float>()));
    }

    public void Clear() => _segments.Clear();

    internal void Append(PathCommand command, float[] values) => _segments.Add(new PathSegment(command, values));

    private void Add(PathCommand command, string member, params float[] values)
    {
        foreach (var v in values)
            if (!float.IsFinite(v))
                throw new ArgumentOutOfRangeException(member, v, $"GeometryPath.{member}: the values must be finite");
        _segments.Add(new PathSegment(command, values));
    }

    public override string ToString() => $"GeometryPath({_segments.Count} segments, fill={FillMode}, stroke={Stroke})";
}
