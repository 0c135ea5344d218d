namespace Orvane.Folaro;

/// <summary>A shape on a slide, layout or master. Positions and sizes are in points.</summary>
public interface IShape : ISlideComponent, IHyperlinkContainer
{
    /// <summary>The shape's id, unique within its slide.</summary>
    uint UniqueId { get; }

    string Name { get; set; }

    /// <summary>The alternative text (description) of the shape.</summary>
    string AlternativeText { get; set; }

    bool Hidden { get; set; }

    /// <summary>True for a placeholder shape, whose position and size may come from its layout or master.</summary>
    bool IsPlaceholder { get; }

    float X { get; set; }
    float Y { get; set; }
    float Width { get; set; }
    float Height { get; set; }

    /// <summary>Clockwise rotation in degrees.</summary>
    float Rotation { get; set; }

    /// <summary>Position, size, flips and rotation at once. Setting applies all of them (a NotDefined flip keeps the current one).</summary>
    IShapeFrame Frame { get; set; }

    /// <summary>The placeholder this shape is, or null.</summary>
    IPlaceholder? Placeholder { get; }

    /// <summary>The shape's own fill (a group's fill for a group shape).</summary>
    IFillFormat FillFormat { get; }

    /// <summary>The shape's outline. Shapes without one (groups, tables, ink) raise PptxEditException when it is written.</summary>
    ILineFormat LineFormat { get; }

    /// <summary>The shape's effects (outer shadow, glow, soft edge).</summary>
    Effects.IEffectFormat EffectFormat { get; }

    /// <summary>The number of connection sites of the shape's geometry, where connectors can attach (0 for shapes without geometry).</summary>
    int ConnectionSiteCount { get; }

    /// <summary>The shape's place in the z-order of its collection (0 is at the back).</summary>
    int ZOrderPosition { get; }

    ISlideComponent AsISlideComponent { get; }

    IHyperlinkContainer AsIHyperlinkContainer { get; }
}
