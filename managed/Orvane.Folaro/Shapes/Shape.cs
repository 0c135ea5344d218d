using System;
using System.Globalization;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>The base of every shape: a view over one shape element of a shape tree.</summary>
public abstract class Shape : IShape
{
    private protected Shape(BaseSlide slide, OpenXmlCompositeElement element)
    {
        SlideView = slide;
        Element = element;
    }

    public uint UniqueId => uint.TryParse(NvAttr("id"), NumberStyles.Integer, CultureInfo.InvariantCulture, out var id) ? id : 0;

    public string Name
    {
        get => NvAttr("name") ?? string.Empty;
        set => SetNvAttr("name", value ?? throw new ArgumentNullException(nameof(value)));
    }

    public string AlternativeText
    {
        get => NvAttr("descr") ?? string.Empty;
        set => SetNvAttr("descr", string.IsNullOrEmpty(value) ? null : value);
    }

    public bool Hidden
    {
        get => NvAttr("hidden") is "1" or "true";
        set => SetNvAttr("hidden", value ? "1" : null);
    }

    public bool IsPlaceholder => PlaceholderOf(Element) != null;

    public float X { get => Emu.ToPoints(Box().X); set => SetBox(x: value); }
    public float Y { get => Emu.ToPoints(Box().Y); set => SetBox(y: value); }
    public float Width { get => Emu.ToPoints(Box().Cx); set => SetBox(cx: value); }
    public float Height { get => Emu.ToPoints(Box().Cy); set => SetBox(cy: value); }

    public float Rotation
    {
        get => TransformElement(Element, create: false) is { } xfrm && long.TryParse(Attr(xfrm, "rot"), NumberStyles.Integer, CultureInfo.InvariantCulture, out var rot)
            ? (float)(rot / 60000.0)
            : 0f;
        set
        {
            if (!float.IsFinite(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "Shape.Rotation must be finite");
            // Stored normalised to [0, 360) in 1/60,000 degree.
            double degrees = value % 360.0;
            if (degrees < 0)
                degrees += 360.0;
            long rot = (long)Math.Round(degrees * 60000.0, MidpointRounding.AwayFromZero) % 21600000;
            SetXfrmAttr("rot", rot == 0 ? null : rot.ToString(CultureInfo.InvariantCulture));
        }
    }

    public IShapeFrame Frame
    {
        get
        {
            var xfrm = TransformElement(Element, create: false);
            return new ShapeFrame(X, Y, Width, Height, Flag(xfrm, "flipH"), Flag(xfrm, "flipV"), Rotation, EffectiveFrame());
        }
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            SetBox(value.X, value.Y, value.Width, value.Height);
            Rotation = value.Rotation;
            if (value.FlipH != NullableBool.NotDefined)
                SetXfrmAttr("flipH", value.FlipH == NullableBool.True ? "1" : null);
            if (value.FlipV != NullableBool.NotDefined)
                SetXfrmAttr("flipV", value.FlipV == NullableBool.True ? "1" : null);
        }
    }

    /// <summary>The number of connection sites of the shape's geometry (0 for shapes without one).</summary>
    public int ConnectionSiteCount => GeometryEngine.DefinitionOf(Element, out _) is { } definition ? GeometryEngine.SiteCount(definition) : 0;

    public Effects.IEffectFormat EffectFormat => new Effects.EffectFormat(
        ShapePropertiesSlot, Element is P.GroupShape ? SchemaOrder.GroupShapeProperties : SchemaOrder.ShapeProperties, Context);

    public IPlaceholder? Placeholder => PlaceholderOf(Element) is { } ph ? new Placeholder(ph) : null;

    public int ZOrderPosition => Container.IndexOf(this);

    public IFillFormat FillFormat => new FillFormat(
        ShapePropertiesSlot, Element is P.GroupShape ? SchemaOrder.GroupShapeProperties : SchemaOrder.ShapeProperties, SchemaOrder.Fills, Context)
    {
        Inheritance = () => new EffectiveFormats.Source(Element, SlideView.PartBase),
    };

    public ILineFormat LineFormat => new LineFormat(create =>
    {
        if (ShapePropertiesSlot(false) is not P.ShapeProperties spPr)
            return null;
        return spPr.GetFirstChild<A.Outline>() ?? (create ? SchemaOrder.Insert(spPr, new A.Outline(), SchemaOrder.ShapeProperties) : null);
    }, Context)
    {
        Inheritance = () => new EffectiveFormats.Source(Element, SlideView.PartBase),
    };

    public IHyperlink? HyperlinkClick
    {
        get => HyperlinkStore.Read(NonVisual, "hlinkClick", SlideView.PartBase, SlideView.Owner);
        set => HyperlinkStore.Write(_ => NonVisual, "hlinkClick", value, SlideView.PartBase, HyperlinkStore.NonVisualOrder, $"{SlideView.Where}, shape '{Name}', HyperlinkClick");
    }

    public IHyperlink? HyperlinkMouseOver
    {
        get => HyperlinkStore.Read(NonVisual, "hlinkHover", SlideView.PartBase, SlideView.Owner);
        set => HyperlinkStore.Write(_ => NonVisual, "hlinkHover", value, SlideView.PartBase, HyperlinkStore.NonVisualOrder, $"{SlideView.Where}, shape '{Name}', HyperlinkMouseOver");
    }

    public IBaseSlide Slide => SlideView;

    public IPresentation Presentation => SlideView.Owner;

    ISlideComponent IShape.AsISlideComponent => this;

    IHyperlinkContainer IShape.AsIHyperlinkContainer => this;

    IPresentationComponent ISlideComponent.AsIPresentationComponent => this;

    internal BaseSlide SlideView { get; }

    internal OpenXmlCompositeElement Element { get; }

    /// <summary>The part and place of this shape, for the formats that view its elements.</summary>
    internal FormatContext Context => new(SlideView.PartBase, () => $"{SlideView.Where}, shape '{Name}'") { Owner = SlideView.Owner };

    // spPr (or a group's grpSpPr); shapes without one (graphic frames, ink) have none to make.
    private OpenXmlElement? ShapePropertiesSlot(bool create) =>
        Element.ChildElements.FirstOrDefault(c => c.LocalName is "spPr" or "grpSpPr");

    /// <summary>The collection that holds the shape: its group's, else its slide's.</summary>
    internal ShapeCollection Container =>
        Element.Parent is P.GroupShape g
            ? new ShapeCollection(SlideView, g)
            : Element.Parent?.Parent?.Parent is P.GroupShape ag
                ? new ShapeCollection(SlideView, ag)
                : new ShapeCollection(SlideView);

    private static NullableBool Flag(OpenXmlElement? xfrm, string name) =>
        xfrm != null && Attr(xfrm, name) is "1" or "true" ? NullableBool.True : NullableBool.False;

    private void SetXfrmAttr(string name, string? value)
    {
        if (value == null && TransformElement(Element, create: false) == null)
            return;
        if (TransformElement(Element, create: false) == null)
            SetBox();
        var xfrm = TransformElement(Element, create: true)
            ?? throw new PptxEditException($"{SlideView.Where}: shape '{Name}' has no transform to rotate or flip");
        if (value == null)
            xfrm.RemoveAttribute(name, string.Empty);
        else
            xfrm.SetAttribute(new OpenXmlAttribute(name, string.Empty, value));
        ShapePlacement.AfterMove(this);
    }

    public override string ToString() => $"{GetType().Name} '{Name}'";

    // --- non-visual properties: <p:nvXxPr><p:cNvPr .../></p:nvXxPr> ---------------------

    // By name: ink (content parts) keeps its cNvPr in another namespace.
    private OpenXmlElement? NonVisual =>
        Element.ChildElements.FirstOrDefault(c => c.LocalName.StartsWith("nv", StringComparison.Ordinal))
            ?.ChildElements.FirstOrDefault(c => c.LocalName == "cNvPr");

    private string? NvAttr(string name) => NonVisual is { } nv ? Attr(nv, name) : null;

    private void SetNvAttr(string name, string? value)
    {
        var nv = NonVisual ?? throw new PptxEditException($"{SlideView.Where}: the shape has no non-visual properties");
        if (value == null)
            nv.RemoveAttribute(name, string.Empty);
        else
            nv.SetAttribute(new OpenXmlAttribute(name, string.Empty, value));
    }

    private static string? Attr(OpenXmlElement element, string name, string ns = "")
    {
        foreach (var a in element.GetAttributes())
            if (a.LocalName == name && a.NamespaceUri == ns)
                return a.Value;
        return null;
    }

    // --- position and size ------------------------------------------------------------

    internal readonly record struct Rect(long X, long Y, long Cx, long Cy);

    /// <summary>The position and size in EMU, inherited for a placeholder without its own.</summary>
    internal Rect EmuBox => Box();

    // The shape's own transform, else that of the placeholder it inherits from.
    private Rect Box() => EffectiveTransform() is { } xfrm ? OwnTransform(xfrm.Shape) ?? default : default;

    // The shape whose transform places this one (itself, or the nearest inherited placeholder
    // with a position), and that transform; null when none has one.
    private (OpenXmlElement Shape, OpenXmlElement? Xfrm)? EffectiveTransform()
    {
        if (OwnTransform(Element) != null)
            return (Element, TransformElement(Element, create: false));
        if (PlaceholderOf(Element) == null)
            return null;
        foreach (var match in InheritedPlaceholders(Element, SlideView.PartBase))
            if (OwnTransform(match) != null)
                return (match, TransformElement(match, create: false));
        return null;
    }

    private ShapeFrameEffectiveData EffectiveFrame()
    {
        var source = EffectiveTransform();
        var box = source is { } s ? OwnTransform(s.Shape) ?? default : default;
        var xfrm = source?.Xfrm;
        double rot = xfrm != null && long.TryParse(Attr(xfrm, "rot"), NumberStyles.Integer, CultureInfo.InvariantCulture, out var r) ? r / 60000.0 : 0;
        return new ShapeFrameEffectiveData(Emu.ToPoints(box.X), Emu.ToPoints(box.Y), Emu.ToPoints(box.Cx), Emu.ToPoints(box.Cy), (float)rot,
            Flag(xfrm, "flipH") == NullableBool.True, Flag(xfrm, "flipV") == NullableBool.True);
    }

    private void SetBox(float? x = null, float? y = null, float? cx = null, float? cy = null)
    {
        var current = Box();
        var xfrm = TransformElement(Element, create: true)
            ?? throw new PptxEditException($"{SlideView.Where}: shape '{Name}' has no place for a position");
        long nx = x is float fx ? Emu.FromPoints(fx) : current.X;
        long ny = y is float fy ? Emu.FromPoints(fy) : current.Y;
        long ncx = cx is float fcx ? NonNegative(fcx, nameof(Width)) : current.Cx;
        long ncy = cy is float fcy ? NonNegative(fcy, nameof(Height)) : current.Cy;
        Child(xfrm, () => new A.Offset(), prepend: true).SetAttributes(new[]
        {
            new OpenXmlAttribute("x", string.Empty, nx.ToString(CultureInfo.InvariantCulture)),
            new OpenXmlAttribute("y", string.Empty, ny.ToString(CultureInfo.InvariantCulture)),
        });
        Child(xfrm, () => new A.Extents(), prepend: false).SetAttributes(new[]
        {
            new OpenXmlAttribute("cx", string.Empty, ncx.ToString(CultureInfo.InvariantCulture)),
            new OpenXmlAttribute("cy", string.Empty, ncy.ToString(CultureInfo.InvariantCulture)),
        });
        ShapePlacement.AfterMove(this);
    }

    private long NonNegative(float points, string what) =>
        points >= 0 && !float.IsNaN(points)
            ? Emu.FromPoints(points)
            : throw new ArgumentOutOfRangeException(what, points, $"Shape.{what} must not be negative");

    private static OpenXmlElement Child<T>(OpenXmlElement parent, Func<T> create, bool prepend) where T : OpenXmlElement
    {
        var found = parent.GetFirstChild<T>();
        if (found != null)
            return found;
        var made = create();
        if (prepend)
            parent.PrependChild(made);
        else
        {
            var off = parent.GetFirstChild<A.Offset>();
            if (off != null)
                parent.InsertAfter(made, off);
            else
                parent.PrependChild(made);
        }
        return made;
    }

    private static Rect? OwnTransform(OpenXmlElement shape)
    {
        var xfrm = TransformElement(shape, create: false);
        if (xfrm == null)
            return null;
        var off = xfrm.GetFirstChild<A.Offset>();
        var ext = xfrm.GetFirstChild<A.Extents>();
        if (off == null && ext == null)
            return null;
        return new Rect(Long(off, "x"), Long(off, "y"), Long(ext, "cx"), Long(ext, "cy"));
    }

    private static long Long(OpenXmlElement? element, string name) =>
        element != null && long.TryParse(Attr(element, name), NumberStyles.Integer, CultureInfo.InvariantCulture, out var v) ? v : 0;

    // spPr/xfrm, grpSpPr/xfrm, or a direct xfrm child (graphic frames, content parts); by name,
    // as each of these holders has its own transform class.
    internal static OpenXmlElement? TransformElement(OpenXmlElement shape, bool create)
    {
        foreach (var child in shape.ChildElements)
        {
            if (child.LocalName == "xfrm")
                return child;
            if (child.LocalName is "spPr" or "grpSpPr")
            {
                var inner = child.ChildElements.FirstOrDefault(c => c.LocalName == "xfrm");
                if (inner != null || !create)
                    return inner;
                OpenXmlElement made = child.LocalName == "grpSpPr" ? new A.TransformGroup() : new A.Transform2D();
                child.PrependChild(made);
                return made;
            }
        }
        return null;
    }

    // --- placeholder inheritance -------------------------------------------------------

    internal static P.PlaceholderShape? PlaceholderOf(OpenXmlElement shape) =>
        shape.ChildElements.FirstOrDefault(c => c.LocalName.StartsWith("nv", StringComparison.Ordinal))
            ?.ChildElements.OfType<P.ApplicationNonVisualDrawingProperties>().FirstOrDefault()?.PlaceholderShape;

    /// <summary>
    /// The placeholders a placeholder shape of <paramref name="part"/> inherits from, nearest
    /// first: a slide's layout placeholder (matched by index) then its master's (matched by kind).
    /// </summary>
    internal static System.Collections.Generic.List<OpenXmlElement> InheritedPlaceholders(OpenXmlElement shape, OpenXmlPart part)
    {
        var result = new System.Collections.Generic.List<OpenXmlElement>();
        var ph = PlaceholderOf(shape);
        bool first = true;
        foreach (var tree in InheritedTrees(part))
        {
            if (ph == null)
                break;
            var match = FindPlaceholder(tree, ph, byTypeOnly: !(first && part is SlidePart));
            first = false;
            if (match == null)
                continue;
            result.Add(match);
            ph = PlaceholderOf(match) ?? ph;
        }
        return result;
    }

    // The layout's tree then the master's, for a slide; the master's for a layout.
    private static System.Collections.Generic.IEnumerable<P.ShapeTree> InheritedTrees(OpenXmlPart? part)
    {
        while (true)
        {
            part = part switch
            {
                SlidePart s => s.SlideLayoutPart,
                SlideLayoutPart l => l.SlideMasterPart,
                _ => null,
            };
            if (part?.RootElement?.GetFirstChild<P.CommonSlideData>()?.ShapeTree is not { } tree)
                yield break;
            yield return tree;
        }
    }

    private static OpenXmlElement? FindPlaceholder(P.ShapeTree tree, P.PlaceholderShape ph, bool byTypeOnly)
    {
        var type = ph.Type?.Value ?? P.PlaceholderValues.Object;
        uint idx = ph.Index?.Value ?? 0;
        OpenXmlElement? byType = null;
        foreach (var shape in tree.ChildElements)
        {
            if (PlaceholderOf(shape) is not { } other)
                continue;
            var otherType = other.Type?.Value ?? P.PlaceholderValues.Object;
            if (!byTypeOnly && idx != 0 && (other.Index?.Value ?? 0) == idx)
                return shape;
            if (byType == null && SameKind(type, otherType))
                byType = shape;
        }
        return byType;
    }

    private static bool SameKind(P.PlaceholderValues a, P.PlaceholderValues b) => Kind(a) == Kind(b);

    // Title kinds inherit from the title, content kinds from the body.
    private static string Kind(P.PlaceholderValues type)
    {
        if (type == P.PlaceholderValues.Title || type == P.PlaceholderValues.CenteredTitle)
            return "title";
        if (type == P.PlaceholderValues.DateAndTime)
            return "dt";
        if (type == P.PlaceholderValues.Footer)
            return "ftr";
        if (type == P.PlaceholderValues.SlideNumber)
            return "sldNum";
        if (type == P.PlaceholderValues.Header)
            return "hdr";
        return "body";
    }
}
