using System;
using System.Globalization;

namespace Orvane.Marel;

/// <summary>A point with float coordinates.</summary>
public readonly struct PointF : IEquatable<PointF>
{
    public PointF(float x, float y)
    {
        X = x;
        Y = y;
    }

    public static PointF Empty => default;

    public float X { get; }
    public float Y { get; }

    public bool IsEmpty => X == 0f && Y == 0f;

    public static PointF Add(PointF pt, SizeF sz) => new(pt.X + sz.Width, pt.Y + sz.Height);

    public static PointF Subtract(PointF pt, SizeF sz) => new(pt.X - sz.Width, pt.Y - sz.Height);

    public static PointF operator +(PointF pt, SizeF sz) => Add(pt, sz);

    public static PointF operator -(PointF pt, SizeF sz) => Subtract(pt, sz);

    public bool Equals(PointF other) => X.Equals(other.X) && Y.Equals(other.Y);

    public override bool Equals(object? obj) => obj is PointF other && Equals(other);

    public override int GetHashCode() => HashCode.Combine(X, Y);

    public static bool operator ==(PointF left, PointF right) => left.Equals(right);

    public static bool operator !=(PointF left, PointF right) => !left.Equals(right);

    public override string ToString() =>
        string.Create(CultureInfo.InvariantCulture, $"{{X={X}, Y={Y}}}");
}
