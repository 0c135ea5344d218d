using System;
using System.Globalization;

namespace Orvane.Marel;

/// <summary>A width and a height in float units.</summary>
public readonly struct SizeF : IEquatable<SizeF>
{
    public SizeF(float width, float height)
    {
        Width = width;
        Height = height;
    }

    public SizeF(PointF pt) : this(pt.X, pt.Y)
    {
    }

    public static SizeF Empty => default;

    public float Width { get; }
    public float Height { get; }

    public bool IsEmpty => Width == 0f && Height == 0f;

    public PointF ToPointF() => new(Width, Height);

    /// <summary>Truncates both dimensions toward zero.</summary>
    public Size ToSize() => new((int)Width, (int)Height);

    public static SizeF Add(SizeF sz1, SizeF sz2) => new(sz1.Width + sz2.Width, sz1.Height + sz2.Height);

    public static SizeF Subtract(SizeF sz1, SizeF sz2) => new(sz1.Width - sz2.Width, sz1.Height - sz2.Height);

    public static SizeF operator +(SizeF sz1, SizeF sz2) => Add(sz1, sz2);

    public static SizeF operator -(SizeF sz1, SizeF sz2) => Subtract(sz1, sz2);

    public bool Equals(SizeF other) => Width.Equals(other.Width) && Height.Equals(other.Height);

    public override bool Equals(object? obj) => obj is SizeF other && Equals(other);

    public override int GetHashCode() => HashCode.Combine(Width, Height);

    public static bool operator ==(SizeF left, SizeF right) => left.Equals(right);

    public static bool operator !=(SizeF left, SizeF right) => !left.Equals(right);

    public override string ToString() =>
        string.Create(CultureInfo.InvariantCulture, $"{{Width={Width}, Height={Height}}}");
}
