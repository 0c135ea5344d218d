using System;
using System.Linq;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

// Child order of the DrawingML property elements the model edits: a new child goes before
// the first existing one that the schema places after it, so edits keep documents valid.
internal static class SchemaOrder
{
    internal static readonly string[] Fills = { "noFill", "solidFill", "gradFill", "blipFill", "pattFill", "grpFill" };
    internal static readonly string[] LineFills = { "noFill", "solidFill", "gradFill", "pattFill" };

    internal static readonly string[] ShapeProperties =
        { "xfrm", "custGeom", "prstGeom", "noFill", "solidFill", "gradFill", "blipFill", "pattFill", "grpFill", "ln", "effectLst", "effectDag", "scene3d", "sp3d", "extLst" };

    internal static readonly string[] GroupShapeProperties =
        { "xfrm", "noFill", "solidFill", "gradFill", "blipFill", "pattFill", "grpFill", "effectLst", "effectDag", "scene3d", "extLst" };

    internal static readonly string[] RunProperties =
    {
        "ln", "noFill", "solidFill", "gradFill", "blipFill", "pattFill", "grpFill", "effectLst", "effectDag", "highlight",
        "uLnTx", "uLn", "uFillTx", "uFill", "latin", "ea", "cs", "sym", "hlinkClick", "hlinkMouseOver", "rtl", "extLst",
    };

    internal static readonly string[] Line =
        { "noFill", "solidFill", "gradFill", "pattFill", "prstDash", "custDash", "round", "bevel", "miter", "headEnd", "tailEnd", "extLst" };

    internal static readonly string[] ParagraphProperties =
    {
        "lnSpc", "spcBef", "spcAft", "buClrTx", "buClr", "buSzTx", "buSzPct", "buSzPts", "buFontTx", "buFont",
        "buNone", "buAutoNum", "buChar", "buBlip", "tabLst", "defRPr", "extLst",
    };

    internal static readonly string[] BodyProperties = { "prstTxWarp", "noAutofit", "normAutofit", "spAutoFit", "scene3d", "sp3d", "flatTx", "extLst" };

    internal static readonly string[] GradientFill = { "gsLst", "lin", "path", "tileRect" };

    internal static readonly string[] BlipFill = { "blip", "srcRect", "tile", "stretch" };

    internal static readonly string[] PatternFill = { "fgClr", "bgClr" };

    internal static OpenXmlElement? First(OpenXmlElement parent, string name)
    {
        foreach (var child in parent.ChildElements)
            if (child.LocalName == name)
                return child;
        return null;
    }

    internal static OpenXmlElement? FirstOf(OpenXmlElement parent, string[] names)
    {
        foreach (var child in parent.ChildElements)
            if (Array.IndexOf(names, child.LocalName) >= 0)
                return child;
        return null;
    }

    /// <summary>Inserts <paramref name="child"/> at its schema place among the children of <paramref name="parent"/>.</summary>
    internal static T Insert<T>(OpenXmlElement parent, T child, string[] order) where T : OpenXmlElement
    {
        int rank = Rank(order, child.LocalName);
        var after = parent.ChildElements.FirstOrDefault(c => Rank(order, c.LocalName) > rank);
        if (after != null)
            parent.InsertBefore(child, after);
        else
            parent.AppendChild(child);
        return child;
    }

    /// <summary>Removes every child named in <paramref name="group"/>, then inserts <paramref name="made"/> (when given) in their place.</summary>
    internal static void Replace(OpenXmlElement parent, string[] group, OpenXmlElement? made, string[] order)
    {
        foreach (var old in parent.ChildElements.Where(c => Array.IndexOf(group, c.LocalName) >= 0).ToList())
            old.Remove();
        if (made != null)
            Insert(parent, made, order);
    }

    /// <summary>The named child, made and inserted at its place when missing.</summary>
    internal static OpenXmlElement Ensure(OpenXmlElement parent, string name, Func<OpenXmlElement> create, string[] order) =>
        First(parent, name) ?? Insert(parent, create(), order);

    // Unknown children (foreign markup) count as coming last, after extLst.
    private static int Rank(string[] order, string name)
    {
        int i = Array.IndexOf(order, name);
        return i < 0 ? order.Length : i;
    }
}
