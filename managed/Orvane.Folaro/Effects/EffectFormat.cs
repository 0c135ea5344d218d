using System;
using System.Linq;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Effects;

/// <summary>The visual effects of a shape (its a:effectLst): outer shadow, glow and soft edge.</summary>
public interface IEffectFormat
{
    /// <summary>True when the shape has no effect of its own.</summary>
    bool IsNoEffects { get; }

    /// <summary>The outer shadow, or null when there is none.</summary>
    IOuterShadow? OuterShadowEffect { get; }

    /// <summary>The glow, or null when there is none.</summary>
    IGlow? GlowEffect { get; }

    /// <summary>The soft edge, or null when there is none.</summary>
    ISoftEdge? SoftEdgeEffect { get; }

    /// <summary>Adds an outer shadow (4 pt blur, 3 pt away at 45°, black at 40 % opacity) unless there is one.</summary>
    void EnableOuterShadowEffect();

    void DisableOuterShadowEffect();

    /// <summary>Adds a glow (5 pt, accent 1 at 40 % opacity) unless there is one.</summary>
    void EnableGlowEffect();

    void DisableGlowEffect();

    /// <summary>Adds a soft edge (2.5 pt) unless there is one.</summary>
    void EnableSoftEdgeEffect();

    void DisableSoftEdgeEffect();
}

public sealed class EffectFormat : IEffectFormat
{
    // The effects of a list in schema order.
    private static readonly string[] Order = { "blur", "fillOverlay", "glow", "innerShdw", "outerShdw", "prstShdw", "reflection", "softEdge" };

    private readonly ElementSlot _properties;
    private readonly string[] _propertiesOrder;
    private readonly FormatContext _context;

    internal EffectFormat(ElementSlot properties, string[] propertiesOrder, FormatContext context)
    {
        _properties = properties;
        _propertiesOrder = propertiesOrder;
        _context = context;
    }

    public bool IsNoEffects =>
        _properties(false) is not { } props
        || (List(props) is not { } list || !list.HasChildren) && props.GetFirstChild<A.EffectDag>() == null;

    public IOuterShadow? OuterShadowEffect => Effect("outerShdw") is { } e ? new OuterShadow(e, _context) : null;

    public IGlow? GlowEffect => Effect("glow") is { } e ? new Glow(e, _context) : null;

    public ISoftEdge? SoftEdgeEffect => Effect("softEdge") is { } e ? new SoftEdge(e) : null;

    public void EnableOuterShadowEffect() => Enable("outerShdw", () => new A.OuterShadow(
        new A.PresetColor(new A.Alpha { Val = 40000 }) { Val = A.PresetColorValues.Black })
    {
        BlurRadius = 50800,
        Distance = 38100,
        Direction = 2700000,
        Alignment = A.RectangleAlignmentValues.TopLeft,
        RotateWithShape = false,
    });

    public void DisableOuterShadowEffect() => Disable("outerShdw");

    public void EnableGlowEffect() => Enable("glow", () => new A.Glow(
        new A.SchemeColor(new A.Alpha { Val = 40000 }) { Val = A.SchemeColorValues.Accent1 })
    {
        Radius = 63500,
    });

    public void DisableGlowEffect() => Disable("glow");

    public void EnableSoftEdgeEffect() => Enable("softEdge", () => new A.SoftEdge { Radius = 31750 });

    public void DisableSoftEdgeEffect() => Disable("softEdge");

    private static OpenXmlElement? List(OpenXmlElement props) => props.GetFirstChild<A.EffectList>();

    private OpenXmlElement? Effect(string name) =>
        _properties(false) is { } props && List(props) is { } list ? SchemaOrder.First(list, name) : null;

    private void Enable(string name, Func<OpenXmlElement> create)
    {
        var props = _properties(true) ?? throw new PptxEditException($"{_context.Where}: the shape has no shape properties to hold effects");
        if (props.GetFirstChild<A.EffectDag>() != null)
            throw new PptxEditException($"{_context.Where}: the shape's effects are an effect graph (a:effectDag), which cannot be edited as a list");
        var list = SchemaOrder.Ensure(props, "effectLst", () => new A.EffectList(), _propertiesOrder);
        if (SchemaOrder.First(list, name) == null)
            SchemaOrder.Insert(list, create(), Order);
    }

    // An emptied list stays: an empty a:effectLst says "no effects" where a theme style would add some.
    private void Disable(string name) => Effect(name)?.Remove();
}
