using System;
using System.Collections.Generic;
using System.Globalization;
using System.Linq;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

// Where shapes are on the slide through their transforms and the groups that hold them:
// mapping points between a shape's box, its container and the slide, keeping a group's box
// around its children, and routing connectors to the sites they are attached to. EMU throughout.
internal static class ShapePlacement
{
    internal readonly record struct Box(double X, double Y, double Cx, double Cy, double Rot, bool FlipH, bool FlipV);

    private readonly record struct GroupMap(Box Outer, double ChX, double ChY, double ChCx, double ChCy)
    {
        internal double Sx => ChCx == 0 ? 1 : Outer.Cx / ChCx;
        internal double Sy => ChCy == 0 ? 1 : Outer.Cy / ChCy;
    }

    /// <summary>The transform written on a shape element, null when it has none with a position.</summary>
    internal static Box? Read(OpenXmlElement shape)
    {
        var xfrm = Shape.TransformElement(shape, create: false);
        if (xfrm == null)
            return null;
        var off = xfrm.GetFirstChild<A.Offset>();
        var ext = xfrm.GetFirstChild<A.Extents>();
        if (off == null && ext == null)
            return null;
        return new Box(AttributeAccess.Long(off, "x") ?? 0, AttributeAccess.Long(off, "y") ?? 0, AttributeAccess.Long(ext, "cx") ?? 0, AttributeAccess.Long(ext, "cy") ?? 0,
            (AttributeAccess.Long(xfrm, "rot") ?? 0) / 60000.0, IsSet(xfrm, "flipH"), IsSet(xfrm, "flipV"));
    }

    private static bool IsSet(OpenXmlElement e, string name) => AttributeAccess.Attr(e, name) is "1" or "true";

    /// <summary>Writes position, size, rotation and flips on a shape's transform (which must exist).</summary>
    internal static void Write(OpenXmlElement xfrm, Box box)
    {
        var off = xfrm.GetFirstChild<A.Offset>() ?? xfrm.PrependChild(new A.Offset());
        var ext = xfrm.GetFirstChild<A.Extents>() ?? off.InsertAfterSelf(new A.Extents());
        AttributeAccess.SetAttr(off, "x", AttributeAccess.Text((long)Math.Round(box.X)));
        AttributeAccess.SetAttr(off, "y", AttributeAccess.Text((long)Math.Round(box.Y)));
        AttributeAccess.SetAttr(ext, "cx", AttributeAccess.Text(Math.Max(0, (long)Math.Round(box.Cx))));
        AttributeAccess.SetAttr(ext, "cy", AttributeAccess.Text(Math.Max(0, (long)Math.Round(box.Cy))));
        double deg = box.Rot % 360.0;
        if (deg < 0)
            deg += 360.0;
        long rot = (long)Math.Round(deg * 60000.0) % 21600000;
        AttributeAccess.SetAttr(xfrm, "rot", rot == 0 ? null : AttributeAccess.Text(rot));
        AttributeAccess.SetAttr(xfrm, "flipH", box.FlipH ? "1" : null);
        AttributeAccess.SetAttr(xfrm, "flipV", box.FlipV ? "1" : null);
    }

    // --- points ----------------------------------------------------------------------------

    /// <summary>A point of a box's own space (0..cx, 0..cy) in the space the box is placed in: flips, then rotation about the centre.</summary>
    internal static (double X, double Y) Place(Box box, double px, double py)
    {
        double cx = box.X + box.Cx / 2, cy = box.Y + box.Cy / 2;
        double dx = px - box.Cx / 2, dy = py - box.Cy / 2;
        if (box.FlipH)
            dx = -dx;
        if (box.FlipV)
            dy = -dy;
        double a = box.Rot * Math.PI / 180.0, cos = Math.Cos(a), sin = Math.Sin(a);
        return (cx + dx * cos - dy * sin, cy + dx * sin + dy * cos);
    }

    /// <summary>The inverse of <see cref="Place"/>: a point of the outer space in the box's own space.</summary>
    private static (double X, double Y) Unplace(Box box, double x, double y)
    {
        double cx = box.X + box.Cx / 2, cy = box.Y + box.Cy / 2;
        double a = -box.Rot * Math.PI / 180.0, cos = Math.Cos(a), sin = Math.Sin(a);
        double dx = (x - cx) * cos - (y - cy) * sin, dy = (x - cx) * sin + (y - cy) * cos;
        if (box.FlipH)
            dx = -dx;
        if (box.FlipV)
            dy = -dy;
        return (dx + box.Cx / 2, dy + box.Cy / 2);
    }

    // The groups that hold a shape, innermost first.
    private static List<GroupMap> Groups(OpenXmlElement shape)
    {
        var result = new List<GroupMap>();
        for (var e = shape.Parent; e != null; e = e.Parent)
            if (e is P.GroupShape && MapOf(e) is { } map)
                result.Add(map);
        return result;
    }

    private static GroupMap? MapOf(OpenXmlElement group)
    {
        var xfrm = group.GetFirstChild<P.GroupShapeProperties>()?.TransformGroup;
        if (xfrm == null || Read(group) is not { } outer)
            return null;
        return new GroupMap(outer, xfrm.ChildOffset?.X?.Value ?? 0, xfrm.ChildOffset?.Y?.Value ?? 0, xfrm.ChildExtents?.Cx?.Value ?? 0, xfrm.ChildExtents?.Cy?.Value ?? 0);
    }

    /// <summary>A point of a shape's box on the slide, through every group that holds the shape.</summary>
    internal static (double X, double Y) ToSlide(OpenXmlElement shape, Box box, double px, double py)
    {
        var p = Place(box, px, py);
        foreach (var g in Groups(shape))
            p = Place(g.Outer, (p.X - g.ChX) * g.Sx, (p.Y - g.ChY) * g.Sy);
        return p;
    }

    /// <summary>A point of the slide in the space of the shape's container (its innermost group's child space, or the slide).</summary>
    internal static (double X, double Y) FromSlide(OpenXmlElement shape, double x, double y)
    {
        var p = (X: x, Y: y);
        var groups = Groups(shape);
        for (int i = groups.Count - 1; i >= 0; i--)
        {
            var g = groups[i];
            var local = Unplace(g.Outer, p.X, p.Y);
            p = (g.ChX + local.X / g.Sx, g.ChY + local.Y / g.Sy);
        }
        return p;
    }

    // --- groups ----------------------------------------------------------------------------

    /// <summary>The shape elements of a group or tree (the chosen branch of alternate content).</summary>
    internal static IEnumerable<OpenXmlElement> Members(OpenXmlElement container)
    {
        foreach (var child in container.ChildElements)
        {
            if (child is AlternateContent)
            {
                foreach (var branch in child.ChildElements)
                    if (branch.FirstChild != null)
                    {
                        yield return branch.FirstChild;
                        break;
                    }
            }
            else if (child.LocalName is "sp" or "pic" or "cxnSp" or "grpSp" or "graphicFrame" or "contentPart")
                yield return child;
        }
    }

    /// <summary>
    /// Sets a group's child box to the union of its children's boxes and moves its outer box to
    /// match, so no child moves on the slide; then does the same for the groups around it.
    /// </summary>
    internal static void FitGroup(OpenXmlElement group)
    {
        for (var g = group as P.GroupShape; g != null; g = g.Parent as P.GroupShape)
        {
            var xfrm = g.GetFirstChild<P.GroupShapeProperties>()?.TransformGroup;
            if (xfrm == null || MapOf(g) is not { } map)
                return;
            double x0 = double.MaxValue, y0 = double.MaxValue, x1 = double.MinValue, y1 = double.MinValue;
            foreach (var member in Members(g))
            {
                if (Read(member) is not { } b)
                    continue;
                x0 = Math.Min(x0, b.X);
                y0 = Math.Min(y0, b.Y);
                x1 = Math.Max(x1, b.X + b.Cx);
                y1 = Math.Max(y1, b.Y + b.Cy);
            }
            if (x0 == double.MaxValue)
                x0 = y0 = x1 = y1 = 0;
            var outer = map.Outer with
            {
                X = map.Outer.X + (x0 - map.ChX) * map.Sx,
                Y = map.Outer.Y + (y0 - map.ChY) * map.Sy,
                Cx = (x1 - x0) * map.Sx,
                Cy = (y1 - y0) * map.Sy,
            };
            Write(xfrm, outer);
            xfrm.ChildOffset = new A.ChildOffset { X = (long)Math.Round(x0), Y = (long)Math.Round(y0) };
            xfrm.ChildExtents = new A.ChildExtents { Cx = (long)Math.Round(x1 - x0), Cy = (long)Math.Round(y1 - y0) };
        }
    }

    /// <summary>A member's box in the group's parent space (the group's scale, flips and rotation applied to it).</summary>
    internal static Box OutOfGroup(OpenXmlElement group, Box child)
    {
        if (MapOf(group) is not { } g)
            return child;
        double cx = child.Cx * g.Sx, cy = child.Cy * g.Sy;
        var center = Place(g.Outer, (child.X + child.Cx / 2 - g.ChX) * g.Sx, (child.Y + child.Cy / 2 - g.ChY) * g.Sy);
        double rot = child.Rot;
        bool flipH = child.FlipH, flipV = child.FlipV;
        // Mirroring a rotated box mirrors its rotation too.
        if (g.Outer.FlipH)
        {
            flipH = !flipH;
            rot = -rot;
        }
        if (g.Outer.FlipV)
        {
            flipV = !flipV;
            rot = -rot;
        }
        return new Box(center.X - cx / 2, center.Y - cy / 2, cx, cy, rot + g.Outer.Rot, flipH, flipV);
    }

    // --- connectors ------------------------------------------------------------------------

    /// <summary>After a shape moved through the API: refits the group around it and reroutes the connectors attached to it.</summary>
    internal static void AfterMove(Shape shape)
    {
        var element = shape.Element;
        if (element.Parent is P.GroupShape group)
            FitGroup(group);
        var tree = shape.SlideView.ShapeTree;
        if (tree == null || element is P.ConnectionShape)
            return;
        HashSet<uint>? ids = null;
        foreach (var connector in AllShapes(tree).OfType<P.ConnectionShape>())
        {
            var nv = connector.NonVisualConnectionShapeProperties?.NonVisualConnectorShapeDrawingProperties;
            if (nv?.StartConnection == null && nv?.EndConnection == null)
                continue;
            ids ??= element.Descendants<P.NonVisualDrawingProperties>().Select(p => p.Id?.Value ?? 0).Concat(IdOf(element)).ToHashSet();
            if (ids.Contains(nv!.StartConnection?.Id?.Value ?? 0) || ids.Contains(nv.EndConnection?.Id?.Value ?? 0))
                Reroute(shape.SlideView, connector);
        }
    }

    // By name: ink (content parts) keeps its cNvPr in another namespace.
    private static IEnumerable<uint> IdOf(OpenXmlElement element)
    {
        var cNvPr = element.ChildElements.FirstOrDefault(c => c.LocalName.StartsWith("nv", StringComparison.Ordinal))?.ChildElements.FirstOrDefault(c => c.LocalName == "cNvPr");
        if (cNvPr != null && uint.TryParse(AttributeAccess.Attr(cNvPr, "id"), NumberStyles.Integer, CultureInfo.InvariantCulture, out var id))
            yield return id;
    }

    /// <summary>The shape element with this id on the slide (groups and their members included), or null.</summary>
    internal static OpenXmlCompositeElement? FindById(BaseSlide slide, uint id)
    {
        var tree = slide.ShapeTree;
        if (tree == null || id == 0)
            return null;
        foreach (var shape in AllShapes(tree))
            if (IdOf(shape).FirstOrDefault() == id && shape is OpenXmlCompositeElement found)
                return found;
        return null;
    }

    // Every shape element of a tree, group members included: a walk over shapes, not their text and properties.
    private static IEnumerable<OpenXmlElement> AllShapes(OpenXmlElement container)
    {
        foreach (var member in Members(container))
        {
            yield return member;
            if (member is P.GroupShape)
                foreach (var inner in AllShapes(member))
                    yield return inner;
        }
    }

    /// <summary>Where a connection site of a shape is on the slide; the shape's centre for a site it does not have.</summary>
    internal static (double X, double Y) SiteOnSlide(BaseSlide slide, OpenXmlCompositeElement shape, uint index)
    {
        var view = new ShapeCollection(slide).ViewOf(shape) as Shape;
        var own = Read(shape);
        var emu = view?.EmuBox ?? default;
        var box = new Box(emu.X, emu.Y, emu.Cx, emu.Cy, own?.Rot ?? 0, own?.FlipH ?? false, own?.FlipV ?? false);
        double px = box.Cx / 2, py = box.Cy / 2;
        if (GeometryEngine.DefinitionOf(shape, out var adjust) is { } definition)
        {
            var sites = GeometryEngine.Sites(definition, GeometryEngine.Guides(definition, box.Cx, box.Cy, adjust));
            if (index < sites.Count)
                (px, py) = (sites[(int)index].X, sites[(int)index].Y);
        }
        return ToSlide(shape, box, px, py);
    }

    /// <summary>
    /// Moves a connector so its start sits on the site it is attached to at its start and its end
    /// on its end's site (an unattached end stays where it is): a box from one to the other,
    /// flipped to run the right way, without rotation.
    /// </summary>
    internal static void Reroute(BaseSlide slide, OpenXmlCompositeElement connector)
    {
        var nv = (connector as P.ConnectionShape)?.NonVisualConnectionShapeProperties?.NonVisualConnectorShapeDrawingProperties;
        var spPr = connector.GetFirstChild<P.ShapeProperties>();
        if (nv == null || spPr == null)
            return;
        var current = Read(connector) ?? default;
        var start = ToSlide(connector, current, 0, 0);
        var end = ToSlide(connector, current, current.Cx, current.Cy);
        if (nv.StartConnection is { } st && FindById(slide, st.Id?.Value ?? 0) is { } a)
            start = SiteOnSlide(slide, a, st.Index?.Value ?? 0);
        if (nv.EndConnection is { } en && FindById(slide, en.Id?.Value ?? 0) is { } b)
            end = SiteOnSlide(slide, b, en.Index?.Value ?? 0);
        var s = FromSlide(connector, start.X, start.Y);
        var e = FromSlide(connector, end.X, end.Y);
        var xfrm = spPr.Transform2D ?? SchemaOrder.Insert(spPr, new A.Transform2D(), SchemaOrder.ShapeProperties);
        Write(xfrm, new Box(Math.Min(s.X, e.X), Math.Min(s.Y, e.Y), Math.Abs(e.X - s.X), Math.Abs(e.Y - s.Y), 0, e.X < s.X, e.Y < s.Y));
        if (connector.Parent is P.GroupShape group)
            FitGroup(group);
    }
}
