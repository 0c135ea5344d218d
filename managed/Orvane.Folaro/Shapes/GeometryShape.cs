using System;
using System.Collections.Generic;
using System.Globalization;
using System.Linq;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

/// <summary>A shape drawn from a geometry: a preset one, or a freeform one made of paths.</summary>
public interface IGeometryShape : IShape
{
    /// <summary>The outline of the shape as paths, in points from the shape's top-left corner: a preset's evaluated for the current size and adjustments.</summary>
    IGeometryPath[] GetGeometryPaths();

    /// <summary>Makes the shape a freeform of this one path (ShapeType becomes Custom).</summary>
    void SetGeometryPath(IGeometryPath geometryPath);

    /// <summary>Makes the shape a freeform of these paths (ShapeType becomes Custom).</summary>
    void SetGeometryPaths(IGeometryPath[] geometryPaths);
}

public abstract class GeometryShape : Shape, IGeometryShape
{
    // a:path/@fill
    internal static readonly EnumTokens<PathFillModeType> FillModes = new(
        (PathFillModeType.None, "none"),
        (PathFillModeType.Normal, "norm"),
        (PathFillModeType.Lighten, "lighten"),
        (PathFillModeType.LightenLess, "lightenLess"),
        (PathFillModeType.Darken, "darken"),
        (PathFillModeType.DarkenLess, "darkenLess"));

    private protected GeometryShape(BaseSlide slide, OpenXmlCompositeElement element) : base(slide, element)
    {
    }

    public IGeometryPath[] GetGeometryPaths()
    {
        if (GeometryEngine.DefinitionOf(Element, out var adjust) is not { } definition)
            return Array.Empty<IGeometryPath>();
        var box = EmuBox;
        var guides = GeometryEngine.Guides(definition, box.Cx, box.Cy, adjust);
        var result = new List<IGeometryPath>();
        foreach (var def in GeometryEngine.Paths(definition, guides))
        {
            // A path with its own width and height is scaled to the shape's box.
            double sx = (def.Width > 0 ? box.Cx / def.Width : 1) / Emu.PerPoint;
            double sy = (def.Height > 0 ? box.Cy / def.Height : 1) / Emu.PerPoint;
            var path = new GeometryPath
            {
                FillMode = FillModes.Member(def.Fill, PathFillModeType.None),
                Stroke = def.Stroke,
            };
            foreach (var seg in def.Segments)
            {
                var v = seg.Values;
                float[] values = seg.Command == PathCommand.ArcTo
                    ? new[] { (float)(v[0] * 2 * sx), (float)(v[1] * 2 * sy), (float)(v[2] / 60000.0), (float)(v[3] / 60000.0) }
                    : v.Select((value, i) => (float)(value * (i % 2 == 0 ? sx : sy))).ToArray();
                path.Append(seg.Command, values);
            }
            result.Add(path);
        }
        return result.ToArray();
    }

    public void SetGeometryPath(IGeometryPath geometryPath)
    {
        ArgumentNullException.ThrowIfNull(geometryPath);
        SetGeometryPaths(new[] { geometryPath });
    }

    public void SetGeometryPaths(IGeometryPath[] geometryPaths)
    {
        ArgumentNullException.ThrowIfNull(geometryPaths);
        if (geometryPaths.Length == 0)
            throw new ArgumentException($"{GetType().Name}.SetGeometryPaths: there must be at least one path", nameof(geometryPaths));
        if (Array.IndexOf(geometryPaths, null) is var nullAt and >= 0)
            throw new ArgumentNullException(nameof(geometryPaths), $"{GetType().Name}.SetGeometryPaths: geometryPaths[{nullAt}] is null");
        var spPr = GeometryAccess.ShapeProperties(Element)
            ?? throw new PptxEditException($"{SlideView.Where}: shape '{Name}' has no shape properties to hold a geometry");
        var box = EmuBox;
        var pathList = new A.PathList();
        foreach (var source in geometryPaths)
            pathList.AppendChild(PathElement(source, box.Cx, box.Cy));
        var made = new A.CustomGeometry(
            new A.AdjustValueList(), new A.ShapeGuideList(), new A.AdjustHandleList(), new A.ConnectionSiteList(),
            new A.Rectangle { Left = "l", Top = "t", Right = "r", Bottom = "b" }, pathList);
        SchemaOrder.Replace(spPr, new[] { "custGeom", "prstGeom" }, made, SchemaOrder.ShapeProperties);
    }

    // Coordinates in EMU in a path space the size of the shape, so the path scales with the shape.
    private static A.Path PathElement(IGeometryPath source, long cx, long cy)
    {
        var path = new A.Path();
        if (cx > 0)
            path.Width = cx;
        if (cy > 0)
            path.Height = cy;
        if (source.FillMode != PathFillModeType.Normal)
            path.Fill = new A.PathFillModeValues(FillModes.Token(source.FillMode));
        if (!source.Stroke)
            path.Stroke = false;
        foreach (var segment in source.PathData)
        {
            var v = segment.PathPoints;
            int needed = segment.PathCommand switch
            {
                PathCommand.MoveTo or PathCommand.LineTo => 2,
                PathCommand.CubicBezierTo => 6,
                PathCommand.QuadraticBezierTo or PathCommand.ArcTo => 4,
                _ => 0,
            };
            if (v.Length < needed)
                throw new ArgumentException($"GeometryShape.SetGeometryPaths: a {segment.PathCommand} segment needs {needed} values, not {v.Length}", nameof(source));
            OpenXmlElement step = segment.PathCommand switch
            {
                PathCommand.MoveTo => new A.MoveTo(Points(v, 1)),
                PathCommand.LineTo => new A.LineTo(Points(v, 1)),
                PathCommand.CubicBezierTo => new A.CubicBezierCurveTo(Points(v, 3)),
                PathCommand.QuadraticBezierTo => new A.QuadraticBezierCurveTo(Points(v, 2)),
                PathCommand.ArcTo => new A.ArcTo
                {
                    WidthRadius = Coordinate(v[0] / 2),
                    HeightRadius = Coordinate(v[1] / 2),
                    StartAngle = Angle(v[2]),
                    SwingAngle = Angle(v[3]),
                },
                _ => new A.CloseShapePath(),
            };
            path.AppendChild(step);
        }
        return path;
    }

    private static A.Point[] Points(float[] v, int count) =>
        Enumerable.Range(0, count).Select(i => new A.Point { X = Coordinate(v[2 * i]), Y = Coordinate(v[2 * i + 1]) }).ToArray();

    private static string Coordinate(float points) => Emu.FromPoints(points).ToString(CultureInfo.InvariantCulture);

    private static string Angle(float degrees) => ((long)Math.Round(degrees * 60000.0)).ToString(CultureInfo.InvariantCulture);
}
