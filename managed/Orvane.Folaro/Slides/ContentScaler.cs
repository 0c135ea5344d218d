using System;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

// Scales the top-level shapes of a shape tree by a factor and moves them by an offset (all
// in EMU). Children of groups live in their group's own coordinates and stay as they are.
internal static class ContentScaler
{
    internal static void Scale(P.ShapeTree tree, double factor, double dx, double dy)
    {
        foreach (var shape in tree.ChildElements)
        {
            foreach (var (off, ext) in Transforms(shape))
            {
                if (off != null)
                {
                    SetAttr(off, "x", Math.Round(Long(off, "x") * factor + dx));
                    SetAttr(off, "y", Math.Round(Long(off, "y") * factor + dy));
                }
                if (ext != null)
                {
                    SetAttr(ext, "cx", Math.Round(Long(ext, "cx") * factor));
                    SetAttr(ext, "cy", Math.Round(Long(ext, "cy") * factor));
                }
            }
        }
    }

    // The shape's own transform: spPr/xfrm, grpSpPr/xfrm, or p:xfrm of a graphic frame or content part.
    // By name: each of these holders has its own transform class.
    private static (OpenXmlElement? Off, OpenXmlElement? Ext)[] Transforms(OpenXmlElement shape)
    {
        foreach (var child in shape.ChildElements)
        {
            if (child.LocalName == "xfrm")
                return new[] { Corners(child) };
            if (child.LocalName is "spPr" or "grpSpPr")
            {
                foreach (var inner in child.ChildElements)
                    if (inner.LocalName == "xfrm")
                        return new[] { Corners(inner) };
            }
        }
        return Array.Empty<(OpenXmlElement?, OpenXmlElement?)>();
    }

    private static (OpenXmlElement? Off, OpenXmlElement? Ext) Corners(OpenXmlElement xfrm) => (xfrm.GetFirstChild<A.Offset>(), xfrm.GetFirstChild<A.Extents>());

    private static long Long(OpenXmlElement element, string name)
    {
        foreach (var attr in element.GetAttributes())
            if (attr.LocalName == name && attr.NamespaceUri.Length == 0 && long.TryParse(attr.Value, out var v))
                return v;
        return 0;
    }

    private static void SetAttr(OpenXmlElement element, string name, double value) =>
        element.SetAttribute(new OpenXmlAttribute(name, string.Empty, ((long)value).ToString(System.Globalization.CultureInfo.InvariantCulture)));
}
