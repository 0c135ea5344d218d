using System;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro.Effects;

// Reads and writes of effect attributes in EMU, 1/60,000 degree and 1/100,000 units.
internal static class EffectValues
{
    internal static OpenXmlElement Live(OpenXmlElement e, string what) =>
        e.Parent != null ? e : throw new PptxEditException($"{what}: the effect was disabled; enable it again and use the new one");

    internal static float Points(OpenXmlElement e, string name) => Emu.ToPoints(AttributeAccess.Long(e, name) ?? 0);

    internal static void SetPoints(OpenXmlElement e, string name, float value, string what)
    {
        if (!(value >= 0) || float.IsInfinity(value))
            throw new ArgumentOutOfRangeException(nameof(value), value, $"{what} must be finite and not negative");
        AttributeAccess.SetAttr(Live(e, what), name, AttributeAccess.Text(Emu.FromPoints(value)));
    }
}

/// <summary>A shadow cast outside the shape.</summary>
public interface IOuterShadow
{
    /// <summary>The blur radius in points.</summary>
    float BlurRadius { get; set; }

    /// <summary>The direction the shadow is cast in, degrees clockwise from the x axis, in [0, 360).</summary>
    float Direction { get; set; }

    /// <summary>How far the shadow is cast, in points.</summary>
    float Distance { get; set; }

    IColorFormat ShadowColor { get; }

    RectangleAlignment RectangleAlign { get; set; }

    /// <summary>Horizontal scale of the shadow (1 is 100 %).</summary>
    float ScaleHorizontal { get; set; }

    /// <summary>Vertical scale of the shadow (1 is 100 %).</summary>
    float ScaleVertical { get; set; }

    /// <summary>Horizontal skew in degrees, between -90 and 90 exclusive.</summary>
    float SkewHorizontal { get; set; }

    /// <summary>Vertical skew in degrees, between -90 and 90 exclusive.</summary>
    float SkewVertical { get; set; }

    bool RotateShadowWithShape { get; set; }
}

public sealed class OuterShadow : IOuterShadow
{
    private readonly OpenXmlElement _element;
    private readonly FormatContext _context;

    internal OuterShadow(OpenXmlElement element, FormatContext context)
    {
        _element = element;
        _context = context;
    }

    public float BlurRadius
    {
        get => EffectValues.Points(_element, "blurRad");
        set => EffectValues.SetPoints(_element, "blurRad", value, "OuterShadow.BlurRadius");
    }

    public float Direction
    {
        get => (AttributeAccess.Long(_element, "dir") ?? 0) / 60000f;
        set
        {
            if (!float.IsFinite(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "OuterShadow.Direction must be finite");
            double d = value % 360.0;
            if (d < 0)
                d += 360.0;
            AttributeAccess.SetAttr(Live, "dir", AttributeAccess.Text((long)Math.Round(d * 60000) % 21600000));
        }
    }

    public float Distance
    {
        get => EffectValues.Points(_element, "dist");
        set => EffectValues.SetPoints(_element, "dist", value, "OuterShadow.Distance");
    }

    public IColorFormat ShadowColor => new ColorFormat(_ => _element.Parent != null ? _element : null, _context);

    public RectangleAlignment RectangleAlign
    {
        get => FormatTokens.RectangleAlignments.Member(AttributeAccess.Attr(_element, "algn"), RectangleAlignment.Bottom);
        set
        {
            if (!FormatTokens.RectangleAlignments.Has(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "OuterShadow.RectangleAlign must be an alignment");
            AttributeAccess.SetAttr(Live, "algn", FormatTokens.RectangleAlignments.Token(value));
        }
    }

    public float ScaleHorizontal
    {
        get => Fraction("sx");
        set => SetFraction("sx", value, nameof(ScaleHorizontal));
    }

    public float ScaleVertical
    {
        get => Fraction("sy");
        set => SetFraction("sy", value, nameof(ScaleVertical));
    }

    public float SkewHorizontal
    {
        get => (AttributeAccess.Long(_element, "kx") ?? 0) / 60000f;
        set => SetSkew("kx", value, nameof(SkewHorizontal));
    }

    public float SkewVertical
    {
        get => (AttributeAccess.Long(_element, "ky") ?? 0) / 60000f;
        set => SetSkew("ky", value, nameof(SkewVertical));
    }

    public bool RotateShadowWithShape
    {
        get => AttributeAccess.Attr(_element, "rotWithShape") is not ("0" or "false");
        set => AttributeAccess.SetAttr(Live, "rotWithShape", value ? "1" : "0");
    }

    private OpenXmlElement Live => EffectValues.Live(_element, "OuterShadow");

    private float Fraction(string name) => (AttributeAccess.Long(_element, name) ?? 100000) / 100000f;

    private void SetFraction(string name, float value, string member)
    {
        if (!float.IsFinite(value) || Math.Abs(value) > 20000)
            throw new ArgumentOutOfRangeException(nameof(value), value, $"OuterShadow.{member} must be a finite fraction");
        AttributeAccess.SetAttr(Live, name, AttributeAccess.Text((long)Math.Round(value * 100000.0)));
    }

    private void SetSkew(string name, float value, string member)
    {
        if (!(value > -90 && value < 90))
            throw new ArgumentOutOfRangeException(nameof(value), value, $"OuterShadow.{member} must be between -90 and 90 degrees exclusive");
        AttributeAccess.SetAttr(Live, name, AttributeAccess.Text((long)Math.Round(value * 60000.0)));
    }
}

/// <summary>A soft coloured halo around a shape.</summary>
public interface IGlow
{
    /// <summary>The glow's radius in points.</summary>
    float Radius { get; set; }

    IColorFormat Color { get; }
}

/// <summary>A view over an a:glow element.</summary>
public sealed class Glow : IGlow
{
    private readonly OpenXmlElement _element;
    private readonly FormatContext _context;

    internal Glow(OpenXmlElement element, FormatContext context)
    {
        _element = element;
        _context = context;
    }

    public float Radius
    {
        get => EffectValues.Points(_element, "rad");
        set => EffectValues.SetPoints(_element, "rad", value, "Glow.Radius");
    }

    public IColorFormat Color => new ColorFormat(_ => _element.Parent != null ? _element : null, _context);
}

/// <summary>Edges faded into the background.</summary>
public interface ISoftEdge
{
    /// <summary>How far in from the edges the fade reaches, in points.</summary>
    float Radius { get; set; }
}

public sealed class SoftEdge : ISoftEdge
{
    private readonly OpenXmlElement _element;

    internal SoftEdge(OpenXmlElement element)
    {
        _element = element;
    }

    public float Radius
    {
        get => EffectValues.Points(_element, "rad");
        set => EffectValues.SetPoints(_element, "rad", value, "SoftEdge.Radius");
    }
}
