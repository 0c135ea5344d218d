using System;
using System.Globalization;

namespace Orvane.Marel;

/// <summary>An ARGB colour, optionally carrying the name it was made from.</summary>
public readonly partial struct Color : IEquatable<Color>
{
    private readonly uint _argb;
    private readonly string? _name;
    private readonly bool _hasValue;

    private Color(uint argb, string? name)
    {
        _argb = argb;
        _name = name;
        _hasValue = true;
    }

    /// <summary>The empty colour: no value at all (not the same as transparent black).</summary>
    public static Color Empty => default;

    public byte A => (byte)(_argb >> 24);
    public byte R => (byte)(_argb >> 16);
    public byte G => (byte)(_argb >> 8);
    public byte B => (byte)_argb;

    public bool IsEmpty => !_hasValue;

    /// <summary>True for a colour made from a name (a static property or <see cref="FromName"/>).</summary>
    public bool IsNamedColor => _name != null;

    /// <summary>The colour's name, or its ARGB value as eight lower-case hex digits; "0" when empty.</summary>
    public string Name => _name ?? (_hasValue ? _argb.ToString("x8", CultureInfo.InvariantCulture) : "0");

    public int ToArgb() => unchecked((int)_argb);

    public static Color FromArgb(int argb) => new(unchecked((uint)argb), null);

    public static Color FromArgb(int red, int green, int blue) => FromArgb(255, red, green, blue);

    public static Color FromArgb(int alpha, int red, int green, int blue)
    {
        CheckByte(alpha, nameof(alpha));
        CheckByte(red, nameof(red));
        CheckByte(green, nameof(green));
        CheckByte(blue, nameof(blue));
        return new Color(((uint)alpha << 24) | ((uint)red << 16) | ((uint)green << 8) | (uint)blue, null);
    }

    /// <summary>The colour <paramref name="baseColor"/> with its alpha replaced.</summary>
    public static Color FromArgb(int alpha, Color baseColor) => FromArgb(alpha, baseColor.R, baseColor.G, baseColor.B);

    /// <summary>A named colour, looked up without regard to case ("red", "AliceBlue").</summary>
    public static Color FromName(string name)
    {
        ArgumentNullException.ThrowIfNull(name);
        if (!NamedColors.TryGet(name, out var canonical, out var argb))
            throw new ArgumentException($"Color.FromName: '{name}' is not a known colour name", nameof(name));
        return new Color(argb, canonical);
    }

    private static Color Named(string name)
    {
        NamedColors.TryGet(name, out var canonical, out var argb);
        return new Color(argb, canonical);
    }

    /// <summary>HSL lightness in 0..1.</summary>
    public float GetBrightness()
    {
        var (min, max) = MinMax();
        return (max + min) / 2f / 255f;
    }

    /// <summary>HSL saturation in 0..1.</summary>
    public float GetSaturation()
    {
        var (min, max) = MinMax();
        if (max == min)
            return 0f;
        float lo = min / 255f, hi = max / 255f;
        float l = (hi + lo) / 2f;
        return l <= 0.5f ? (hi - lo) / (hi + lo) : (hi - lo) / (2f - hi - lo);
    }

    /// <summary>Hue in degrees, 0..360.</summary>
    public float GetHue()
    {
        var (min, max) = MinMax();
        if (max == min)
            return 0f;
        float delta = max - min;
        float hue = max == R ? (G - B) / delta
                  : max == G ? 2f + (B - R) / delta
                  : 4f + (R - G) / delta;
        hue *= 60f;
        return hue < 0f ? hue + 360f : hue;
    }

    private (int Min, int Max) MinMax()
    {
        int min = Math.Min(R, Math.Min(G, B));
        int max = Math.Max(R, Math.Max(G, B));
        return (min, max);
    }

    private static void CheckByte(int value, string name)
    {
        if (value < 0 || value > 255)
            throw new ArgumentOutOfRangeException(name, value, $"Color.FromArgb: {name} must be between 0 and 255");
    }

    // Two colours are equal when value, name and emptiness all agree, as with the .NET drawing types.
    public bool Equals(Color other) =>
        _argb == other._argb && _hasValue == other._hasValue && string.Equals(_name, other._name, StringComparison.Ordinal);

    public override bool Equals(object? obj) => obj is Color other && Equals(other);

    public override int GetHashCode() => HashCode.Combine(_argb, _hasValue, _name);

    public static bool operator ==(Color left, Color right) => left.Equals(right);

    public static bool operator !=(Color left, Color right) => !left.Equals(right);

    public override string ToString()
    {
        if (IsEmpty)
            return "Color [Empty]";
        if (IsNamedColor)
            return $"Color [{_name}]";
        return $"Color [A={A}, R={R}, G={G}, B={B}]";
    }
}
