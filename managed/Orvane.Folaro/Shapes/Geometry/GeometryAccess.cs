using System.Linq;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

// The geometry in a shape's spPr: a preset (a:prstGeom) or a freeform one (a:custGeom).
internal static class GeometryAccess
{
    internal static OpenXmlElement? ShapeProperties(OpenXmlElement shape) =>
        shape.GetFirstChild<P.ShapeProperties>();

    internal static A.PresetGeometry? Preset(OpenXmlElement shape) => ShapeProperties(shape)?.GetFirstChild<A.PresetGeometry>();

    internal static ShapeType TypeOf(OpenXmlElement shape)
    {
        var spPr = ShapeProperties(shape);
        if (spPr?.GetFirstChild<A.CustomGeometry>() != null)
            return ShapeType.Custom;
        return PresetGeometries.TypeOf(spPr?.GetFirstChild<A.PresetGeometry>()?.Preset?.InnerText);
    }

    /// <summary>Replaces the geometry with a preset one with default adjustments.</summary>
    internal static void SetType(OpenXmlElement shape, ShapeType type, string where)
    {
        var spPr = ShapeProperties(shape) as OpenXmlCompositeElement
            ?? throw new PptxEditException($"{where}: the shape has no shape properties to hold a geometry");
        var made = new A.PresetGeometry(new A.AdjustValueList())
        {
            Preset = new EnumValue<A.ShapeTypeValues>(new A.ShapeTypeValues(PresetGeometries.PresetName(type))),
        };
        var old = spPr.ChildElements.FirstOrDefault(c => c is A.PresetGeometry or A.CustomGeometry);
        if (old != null)
        {
            old.InsertBeforeSelf(made);
            old.Remove();
        }
        else if (spPr.GetFirstChild<A.Transform2D>() is { } xfrm)
            xfrm.InsertAfterSelf(made);
        else
            spPr.PrependChild(made);
    }
}
