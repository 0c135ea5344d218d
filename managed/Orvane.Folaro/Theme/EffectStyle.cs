using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro.Theme;

/// <summary>An effect style of a theme: which effects it draws.</summary>
public interface IEffectStyle
{
    bool HasOuterShadow { get; }

    bool HasInnerShadow { get; }

    bool HasGlow { get; }

    bool HasSoftEdge { get; }

    bool HasReflection { get; }

    /// <summary>True when the style sets a 3-D scene or shape (camera, light, bevels).</summary>
    bool HasThreeDEffects { get; }
}

public sealed class EffectStyle : IEffectStyle
{
    private readonly OpenXmlElement _element;

    internal EffectStyle(OpenXmlElement element)
    {
        _element = element;
    }

    public bool HasOuterShadow => Has("outerShdw");
    public bool HasInnerShadow => Has("innerShdw");
    public bool HasGlow => Has("glow");
    public bool HasSoftEdge => Has("softEdge");
    public bool HasReflection => Has("reflection");
    public bool HasThreeDEffects => _element.ChildElements.Any(c => c.LocalName is "scene3d" or "sp3d");

    public override string ToString() => $"EffectStyle [{string.Join(", ", Effects().Select(e => e.LocalName))}]";

    // The effects of an effect list, or of an effect DAG's top level.
    private IEnumerable<OpenXmlElement> Effects() =>
        _element.ChildElements.Where(c => c.LocalName is "effectLst" or "effectDag").SelectMany(l => l.ChildElements);

    private bool Has(string name) => Effects().Any(e => e.LocalName == name);
}
