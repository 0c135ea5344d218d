using System;
using System.Globalization;
using DocumentFormat.OpenXml;
using Orvane.Marel;

namespace Orvane.Folaro.Theme;

// Turns a DrawingML colour element (srgbClr, scrgbClr, hslClr, sysClr, schemeClr, prstClr)
// and its transforms into an ARGB colour. Scheme colours resolve through the theme colours
// a ThemeColors gives; transforms apply in document order.
internal static class ColorMath
{
    internal static readonly string[] ColorElements = { "scrgbClr", "srgbClr", "hslClr", "sysClr", "schemeClr", "prstClr" };

    // The colour of a colour element, or Empty when it cannot be resolved (phClr with nothing to stand for, no theme).
    internal static Color Resolve(OpenXmlElement color, ThemeColors? theme, Color placeholder = default)
    {
        var rgba = Base(color, theme, placeholder);
        if (rgba == null)
            return Color.Empty;
        var c = rgba.Value;
        foreach (var op in color.ChildElements)
            c = Apply(c, op.LocalName, Value(op));
        return c.ToColor();
    }

    private static Rgba? Base(OpenXmlElement color, ThemeColors? theme, Color placeholder)
    {
        switch (color.LocalName)
        {
            case "srgbClr":
                return Hex(AttributeAccess.Attr(color, "val"));
            case "sysClr":
                return Hex(AttributeAccess.Attr(color, "lastClr")) ?? SystemDefault(AttributeAccess.Attr(color, "val"));
            case "scrgbClr":
                return Rgba.FromLinear(Pct(color, "r"), Pct(color, "g"), Pct(color, "b"));
            case "hslClr":
                return Rgba.FromHsl(Pct(color, "hue") * 100000 / 60000.0 / 360.0, Pct(color, "sat"), Pct(color, "lum"));
            case "prstClr":
                return Preset(AttributeAccess.Attr(color, "val"));
            case "schemeClr":
                var val = AttributeAccess.Attr(color, "val");
                if (val == "phClr")
                    return placeholder.IsEmpty ? null : Rgba.From(placeholder);
                var slot = theme?.Slot(val);
                if (slot == null)
                    return null;
                var resolved = Resolve(slot, null);
                return resolved.IsEmpty ? null : Rgba.From(resolved);
            default:
                return null;
        }
    }

    private static double Pct(OpenXmlElement e, string name) => (AttributeAccess.Long(e, name) ?? 0) / 100000.0;

    private static double? Value(OpenXmlElement op) => AttributeAccess.Long(op, "val") is long v ? v : null;

    internal static Rgba? Hex(string? hex)
    {
        if (hex == null || hex.Length != 6 || !int.TryParse(hex, NumberStyles.HexNumber, CultureInfo.InvariantCulture, out var v))
            return null;
        return new Rgba(((v >> 16) & 255) / 255.0, ((v >> 8) & 255) / 255.0, (v & 255) / 255.0, 1);
    }

    internal static Rgba? Preset(string? name)
    {
        if (string.IsNullOrEmpty(name))
            return null;
        // The preset names are the web colour names, some with short prefixes.
        string full = name.StartsWith("dk", StringComparison.Ordinal) ? "dark" + name[2..]
            : name.StartsWith("lt", StringComparison.Ordinal) ? "light" + name[2..]
            : name.StartsWith("med", StringComparison.Ordinal) && !name.StartsWith("medium", StringComparison.Ordinal) ? "medium" + name[3..]
            : name;
        try
        {
            return Rgba.From(Color.FromName(full));
        }
        catch (ArgumentException)
        {
            return null;
        }
    }

    // Windows defaults for a system colour saved without its last value.
    private static Rgba? SystemDefault(string? name) => name switch
    {
        "window" or "btnHighlight" or "highlightText" or "captionText" or "menu" => new Rgba(1, 1, 1, 1),
        "windowText" or "btnText" or "menuText" or "infoText" or "windowFrame" => new Rgba(0, 0, 0, 1),
        "highlight" => Hex("0078D7"),
        "hotLight" => Hex("0066CC"),
        "btnFace" or "menuBar" or "3dLight" => Hex("F0F0F0"),
        "grayText" or "btnShadow" => Hex("A0A0A0"),
        _ => null,
    };

    private static Rgba Apply(Rgba c, string op, double? raw)
    {
        double v = (raw ?? 0) / 100000.0;
        switch (op)
        {
            case "alpha": return c with { A = Clamp(v) };
            case "alphaOff": return c with { A = Clamp(c.A + v) };
            case "alphaMod": return c with { A = Clamp(c.A * v) };
            case "tint":
                {
                    // A tint mixes with white and a shade with black, in linear light.
                    var (r, g, b) = c.Linear();
                    return Rgba.FromLinear(1 - (1 - r) * v, 1 - (1 - g) * v, 1 - (1 - b) * v, c.A);
                }
            case "shade":
                {
                    var (r, g, b) = c.Linear();
                    return Rgba.FromLinear(r * v, g * v, b * v, c.A);
                }
            case "comp":
                {
                    var (h, s, l) = c.Hsl();
                    return Rgba.FromHsl((h + 0.5) % 1.0, s, l, c.A);
                }
            case "inv": return new Rgba(1 - c.R, 1 - c.G, 1 - c.B, c.A);
            case "gray":
                {
                    double y = 0.3 * c.R + 0.59 * c.G + 0.11 * c.B;
                    return new Rgba(y, y, y, c.A);
                }
            case "gamma":
                {
                    var (r, g, b) = c.Linear();
                    return new Rgba(r, g, b, c.A);
                }
            case "invGamma":
                return Rgba.FromLinear(c.R, c.G, c.B, c.A);
        }
        if (op.StartsWith("hue", StringComparison.Ordinal) || op.StartsWith("sat", StringComparison.Ordinal) || op.StartsWith("lum", StringComparison.Ordinal))
        {
            var (h, s, l) = c.Hsl();
            double deg = (raw ?? 0) / 60000.0 / 360.0;
            switch (op)
            {
                case "hue": h = deg; break;
                case "hueOff": h += deg; break;
                case "hueMod": h *= v; break;
                case "sat": s = v; break;
                case "satOff": s += v; break;
                case "satMod": s *= v; break;
                case "lum": l = v; break;
                case "lumOff": l += v; break;
                case "lumMod": l *= v; break;
                default: return c;
            }
            h %= 1.0;
            if (h < 0)
                h += 1.0;
            return Rgba.FromHsl(h, Clamp(s), Clamp(l), c.A);
        }
        if (op.StartsWith("red", StringComparison.Ordinal) || op.StartsWith("green", StringComparison.Ordinal) || op.StartsWith("blue", StringComparison.Ordinal))
        {
            var (r, g, b) = c.Linear();
            double Change(double x, string suffix) => suffix switch { "" => v, "Off" => x + v, "Mod" => x * v, _ => x };
            if (op.StartsWith("red", StringComparison.Ordinal))
                r = Clamp(Change(r, op[3..]));
            else if (op.StartsWith("green", StringComparison.Ordinal))
                g = Clamp(Change(g, op[5..]));
            else
                b = Clamp(Change(b, op[4..]));
            return Rgba.FromLinear(r, g, b, c.A);
        }
        return c;
    }

    private static double Clamp(double x) => x < 0 ? 0 : x > 1 ? 1 : x;

    // A colour with components in 0..1, sRGB-encoded.
    internal readonly record struct Rgba(double R, double G, double B, double A)
    {
        internal static Rgba From(Color c) => new(c.R / 255.0, c.G / 255.0, c.B / 255.0, c.A / 255.0);

        internal Color ToColor() => Color.FromArgb(Byte(A), Byte(R), Byte(G), Byte(B));

        private static int Byte(double x) => (int)Math.Round(Clamp(x) * 255.0, MidpointRounding.AwayFromZero);

        internal (double R, double G, double B) Linear() => (ToLinear(R), ToLinear(G), ToLinear(B));

        internal static Rgba FromLinear(double r, double g, double b, double a = 1) => new(ToSrgb(r), ToSrgb(g), ToSrgb(b), a);

        private static double ToLinear(double c) => c <= 0.04045 ? c / 12.92 : Math.Pow((c + 0.055) / 1.055, 2.4);

        private static double ToSrgb(double c)
        {
            c = Clamp(c);
            return c <= 0.0031308 ? c * 12.92 : 1.055 * Math.Pow(c, 1 / 2.4) - 0.055;
        }

        // Hue as a fraction of a turn, saturation and lightness in 0..1.
        internal (double H, double S, double L) Hsl()
        {
            double max = Math.Max(R, Math.Max(G, B)), min = Math.Min(R, Math.Min(G, B));
            double l = (max + min) / 2, d = max - min;
            if (d < 1e-12)
                return (0, 0, l);
            double s = l <= 0.5 ? d / (max + min) : d / (2 - max - min);
            double h = max == R ? (G - B) / d + (G < B ? 6 : 0) : max == G ? (B - R) / d + 2 : (R - G) / d + 4;
            return (h / 6, s, l);
        }

        internal static Rgba FromHsl(double h, double s, double l, double a = 1)
        {
            if (s <= 0)
                return new Rgba(l, l, l, a);
            double q = l < 0.5 ? l * (1 + s) : l + s - l * s, p = 2 * l - q;
            return new Rgba(Hue(p, q, h + 1.0 / 3), Hue(p, q, h), Hue(p, q, h - 1.0 / 3), a);
        }

        private static double Hue(double p, double q, double t)
        {
            if (t < 0) t += 1;
            if (t > 1) t -= 1;
            if (t < 1.0 / 6) return p + (q - p) * 6 * t;
            if (t < 0.5) return q;
            if (t < 2.0 / 3) return p + (q - p) * (2.0 / 3 - t) * 6;
            return p;
        }
    }
}
