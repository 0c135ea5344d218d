using System;
using System.Globalization;

namespace Orvane.Marel;

/// <summary>A rectangle with float position and size; the operations return new values.</summary>
public readonly struct RectangleF : IEquatable<RectangleF>
{
    public RectangleF(float x, float y, float width, float height)
    {
        X = x;
        Y = y;
        Width = width;
        Height = height;
    }

    public RectangleF(PointF location, SizeF size) : this(location.X, location.Y, size.Width, size.Height)
    {
    }

    public static RectangleF Empty => default;

    public float X { get; }
    public float Y { get; }
    public float Width { get; }
    public float Height { get; }

    public float Left => X;
    public float Top => Y;
    public float Right => X + Width;
    public float Bottom => Y + Height;

    public PointF Location => new(X, Y);
    public SizeF Size => new(Width, Height);

    /// <summary>True when the rectangle has no area.</summary>
    public bool IsEmpty => Width <= 0f || Height <= 0f;

    public static RectangleF FromLTRB(float left, float top, float right, float bottom) =>
        new(left, top, right - left, bottom - top);

    public bool Contains(float x, float y) => X <= x && x < Right && Y <= y && y < Bottom;

    public bool Contains(PointF pt) => Contains(pt.X, pt.Y);

    public bool Contains(RectangleF rect) =>
        X <= rect.X && rect.Right <= Right && Y <= rect.Y && rect.Bottom <= Bottom;

    public bool IntersectsWith(RectangleF rect) =>
        rect.X < Right && X < rect.Right && rect.Y < Bottom && Y < rect.Bottom;

    /// <summary>This rectangle grown by <paramref name="x"/> on the left and right and <paramref name="y"/> on top and bottom.</summary>
    public RectangleF Inflate(float x, float y) => new(X - x, Y - y, Width + 2 * x, Height + 2 * y);

    public RectangleF Offset(float x, float y) => new(X + x, Y + y, Width, Height);

    /// <summary>The overlap of two rectangles, or <see cref="Empty"/> when they do not overlap.</summary>
    public static RectangleF Intersect(RectangleF a, RectangleF b)
    {
        float left = Math.Max(a.X, b.X), right = Math.Min(a.Right, b.Right);
        float top = Math.Max(a.Y, b.Y), bottom = Math.Min(a.Bottom, b.Bottom);
        return right >= left && bottom >= top ? FromLTRB(left, top, right, bottom) : Empty;
    }

    /// <summary>The smallest rectangle holding both.</summary>
    public static RectangleF Union(RectangleF a, RectangleF b) =>
        FromLTRB(Math.Min(a.X, b.X), Math.Min(a.Y, b.Y), Math.Max(a.Right, b.Right), Math.Max(a.Bottom, b.Bottom));

    public bool Equals(RectangleF other) =>
        X.Equals(other.X) && Y.Equals(other.Y) && Width.Equals(other.Width) && Height.Equals(other.Height);

    public override bool Equals(object? obj) => obj is RectangleF other && Equals(other);

    public override int GetHashCode() => HashCode.Combine(X, Y, Width, Height);

    public static bool operator ==(RectangleF left, RectangleF right) => left.Equals(right);

    public static bool operator !=(RectangleF left, RectangleF right) => !left.Equals(right);

    public override string ToString() =>
        string.Create(CultureInfo.InvariantCulture, $"{{X={X},Y={Y},Width={Width},Height={Height}}}");
}
