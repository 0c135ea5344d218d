using System;
using System.Globalization;
using Orvane.Folaro.Internal;
using Orvane.Marel;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Effects;

/// <summary>A soft coloured halo around a shape.</summary>
public interface IGlow
{
    /// <summary>The glow's radius in points.</summary>
    double Radius { get; set; }

    /// <summary>The glow's colour when given as an RGB value; empty for a theme or other colour.</summary>
    Color Color { get; }
}

/// <summary>A view over an a:glow element.</summary>
public sealed class Glow : IGlow
{
    private readonly A.Glow _element;

    internal Glow(A.Glow element)
    {
        _element = element;
    }

    public double Radius
    {
        get => Emu.ToPoints(_element.Radius?.Value ?? 0);
        set
        {
            if (value < 0 || double.IsNaN(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "Glow.Radius must not be negative");
            _element.Radius = Emu.FromPoints((float)value);
        }
    }

    public Color Color
    {
        get
        {
            var hex = _element.RgbColorModelHex?.Val?.Value;
            return hex != null && int.TryParse(hex, NumberStyles.HexNumber, CultureInfo.InvariantCulture, out var rgb)
                ? Color.FromArgb(unchecked((int)0xFF000000) | rgb)
                : Color.Empty;
        }
    }
}
