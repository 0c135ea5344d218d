using System;
using System.Globalization;

namespace Orvane.Marel;

/// <summary>A width and a height in whole units (pixels, for images).</summary>
public readonly struct Size : IEquatable<Size>
{
    public Size(int width, int height)
    {
        Width = width;
        Height = height;
    }

    public static Size Empty => default;

    public int Width { get; }
    public int Height { get; }

    public bool IsEmpty => Width == 0 && Height == 0;

    public static Size Add(Size sz1, Size sz2) => new(sz1.Width + sz2.Width, sz1.Height + sz2.Height);

    public static Size Subtract(Size sz1, Size sz2) => new(sz1.Width - sz2.Width, sz1.Height - sz2.Height);

    /// <summary>Rounds each dimension up to the next whole unit.</summary>
    public static Size Ceiling(SizeF value) => new((int)MathF.Ceiling(value.Width), (int)MathF.Ceiling(value.Height));

    /// <summary>Rounds each dimension to the nearest whole unit.</summary>
    public static Size Round(SizeF value) =>
        new((int)MathF.Round(value.Width, MidpointRounding.AwayFromZero), (int)MathF.Round(value.Height, MidpointRounding.AwayFromZero));

    public static implicit operator SizeF(Size size) => new(size.Width, size.Height);

    public static Size operator +(Size sz1, Size sz2) => Add(sz1, sz2);

    public static Size operator -(Size sz1, Size sz2) => Subtract(sz1, sz2);

    public bool Equals(Size other) => Width == other.Width && Height == other.Height;

    public override bool Equals(object? obj) => obj is Size other && Equals(other);

    public override int GetHashCode() => HashCode.Combine(Width, Height);

    public static bool operator ==(Size left, Size right) => left.Equals(right);

    public static bool operator !=(Size left, Size right) => !left.Equals(right);

    public override string ToString() =>
        string.Create(CultureInfo.InvariantCulture, $"{{Width={Width}, Height={Height}}}");
}
