using System;
using System.Collections.Generic;
using System.Globalization;
using System.Linq;
using System.Xml.Linq;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

// Evaluates a geometry (a preset of the embedded definitions, or a shape's a:custGeom) for a
// given size and adjust values: its guides, connection sites and paths. Lengths are in the
// shape's EMU, angles in 1/60,000 degree, as the guide formulas use them.
internal static class GeometryEngine
{
    internal readonly record struct Site(double X, double Y, double Angle);

    internal sealed record Segment(PathCommand Command, double[] Values);

    internal sealed record PathDef(double Width, double Height, string Fill, bool Stroke, List<Segment> Segments);

    private static readonly Lazy<Dictionary<string, XElement>> Presets = new(() =>
    {
        using var stream = typeof(GeometryEngine).Assembly.GetManifestResourceStream("Orvane.Folaro.presetShapeDefinitions.xml")
            ?? throw new InvalidOperationException("the preset geometry resource is missing from the assembly");
        return XDocument.Load(stream).Root!.Elements().ToDictionary(e => e.Name.LocalName, StringComparer.Ordinal);
    });

    /// <summary>The geometry definition of a shape element: its custom geometry, else its preset's definition; null for none.</summary>
    internal static XElement? DefinitionOf(OpenXmlElement shape, out Dictionary<string, double> adjust)
    {
        adjust = new Dictionary<string, double>(StringComparer.Ordinal);
        var spPr = shape.GetFirstChild<P.ShapeProperties>();
        if (spPr == null)
            return null;
        XElement? definition = null;
        OpenXmlElement? avLst = null;
        foreach (var child in spPr.ChildElements)
        {
            if (child is A.CustomGeometry)
            {
                definition = XElement.Parse(child.OuterXml);
                break;
            }
            if (child is A.PresetGeometry)
            {
                var name = AttributeAccess.Attr(child, "prst");
                if (name != null && Presets.Value.TryGetValue(name, out var preset))
                    definition = preset;
                avLst = child.GetFirstChild<A.AdjustValueList>();
                break;
            }
        }
        if (avLst != null)
            foreach (var gd in avLst.Elements<A.ShapeGuide>())
                if (AttributeAccess.Attr(gd, "name") is { } n && ParseVal(AttributeAccess.Attr(gd, "fmla")) is double v)
                    adjust[n] = v;
        return definition;
    }

    /// <summary>The guide values of a geometry for a shape of <paramref name="w"/> by <paramref name="h"/> EMU.</summary>
    internal static Dictionary<string, double> Guides(XElement definition, double w, double h, IReadOnlyDictionary<string, double> adjust)
    {
        double ss = Math.Min(w, h), ls = Math.Max(w, h);
        var g = new Dictionary<string, double>(StringComparer.Ordinal)
        {
            ["w"] = w,
            ["h"] = h,
            ["l"] = 0,
            ["t"] = 0,
            ["r"] = w,
            ["b"] = h,
            ["hc"] = w / 2,
            ["vc"] = h / 2,
            ["ss"] = ss,
            ["ls"] = ls,
            ["wd2"] = w / 2,
            ["wd3"] = w / 3,
            ["wd4"] = w / 4,
            ["wd5"] = w / 5,
            ["wd6"] = w / 6,
            ["wd8"] = w / 8,
            ["wd10"] = w / 10,
            ["wd12"] = w / 12,
            ["wd32"] = w / 32,
            ["hd2"] = h / 2,
            ["hd3"] = h / 3,
            ["hd4"] = h / 4,
            ["hd5"] = h / 5,
            ["hd6"] = h / 6,
            ["hd8"] = h / 8,
            ["hd10"] = h / 10,
            ["hd12"] = h / 12,
            ["hd32"] = h / 32,
            ["ssd2"] = ss / 2,
            ["ssd4"] = ss / 4,
            ["ssd6"] = ss / 6,
            ["ssd8"] = ss / 8,
            ["ssd16"] = ss / 16,
            ["ssd32"] = ss / 32,
            ["cd2"] = 10800000,
            ["cd4"] = 5400000,
            ["cd8"] = 2700000,
            ["3cd4"] = 16200000,
            ["3cd8"] = 8100000,
            ["5cd8"] = 13500000,
            ["7cd8"] = 18900000,
        };
        foreach (var gd in Children(definition, "avLst"))
        {
            var name = (string?)gd.Attribute("name");
            if (name == null)
                continue;
            g[name] = adjust.TryGetValue(name, out var v) ? v : Formula((string?)gd.Attribute("fmla"), g);
        }
        foreach (var gd in Children(definition, "gdLst"))
            if ((string?)gd.Attribute("name") is { } name)
                g[name] = Formula((string?)gd.Attribute("fmla"), g);
        return g;
    }

    /// <summary>The connection sites of a geometry, in the shape's box (before flips and rotation).</summary>
    internal static List<Site> Sites(XElement definition, Dictionary<string, double> guides) =>
        Children(definition, "cxnLst").Select(cxn =>
        {
            var pos = cxn.Elements().FirstOrDefault(e => e.Name.LocalName == "pos");
            return new Site(Value((string?)pos?.Attribute("x"), guides), Value((string?)pos?.Attribute("y"), guides), Value((string?)cxn.Attribute("ang"), guides));
        }).ToList();

    internal static int SiteCount(XElement definition) => Children(definition, "cxnLst").Count();

    /// <summary>The paths of a geometry, their coordinates in each path's own space (w/h, or the shape's when 0).</summary>
    internal static List<PathDef> Paths(XElement definition, Dictionary<string, double> guides)
    {
        var result = new List<PathDef>();
        foreach (var path in Children(definition, "pathLst"))
        {
            var segments = new List<Segment>();
            foreach (var step in path.Elements())
            {
                var pts = step.Elements().Where(e => e.Name.LocalName == "pt")
                    .SelectMany(p => new[] { Value((string?)p.Attribute("x"), guides), Value((string?)p.Attribute("y"), guides) }).ToArray();
                switch (step.Name.LocalName)
                {
                    case "moveTo": segments.Add(new Segment(PathCommand.MoveTo, pts)); break;
                    case "lnTo": segments.Add(new Segment(PathCommand.LineTo, pts)); break;
                    case "cubicBezTo": segments.Add(new Segment(PathCommand.CubicBezierTo, pts)); break;
                    case "quadBezTo": segments.Add(new Segment(PathCommand.QuadraticBezierTo, pts)); break;
                    case "close": segments.Add(new Segment(PathCommand.Close, Array.Empty<double>())); break;
                    case "arcTo":
                        segments.Add(new Segment(PathCommand.ArcTo, new[]
                        {
                            Value((string?)step.Attribute("wR"), guides), Value((string?)step.Attribute("hR"), guides),
                            Value((string?)step.Attribute("stAng"), guides), Value((string?)step.Attribute("swAng"), guides),
                        }));
                        break;
                }
            }
            result.Add(new PathDef(
                Number((string?)path.Attribute("w")) ?? 0, Number((string?)path.Attribute("h")) ?? 0,
                (string?)path.Attribute("fill") ?? "norm", (string?)path.Attribute("stroke") is not ("0" or "false"), segments));
        }
        return result;
    }

    private static IEnumerable<XElement> Children(XElement definition, string list) =>
        definition.Elements().FirstOrDefault(e => e.Name.LocalName == list)?.Elements() ?? Enumerable.Empty<XElement>();

    private static double? ParseVal(string? formula) =>
        formula != null && formula.StartsWith("val ", StringComparison.Ordinal) ? Number(formula[4..].Trim()) : null;

    private static double? Number(string? text) =>
        double.TryParse(text, NumberStyles.Float, CultureInfo.InvariantCulture, out var v) ? v : null;

    // A guide name or a literal number; an unknown name counts as 0.
    private static double Value(string? token, Dictionary<string, double> guides) =>
        token == null ? 0 : Number(token) ?? (guides.TryGetValue(token, out var v) ? v : 0);

    private const double AngleUnit = 60000.0 * 180.0 / Math.PI;

    /// <summary>Evaluates one guide formula ("*/ w adj 100000", "sin wd2 a", ...).</summary>
    internal static double Formula(string? formula, Dictionary<string, double> g)
    {
        if (string.IsNullOrWhiteSpace(formula))
            return 0;
        var parts = formula.Split(' ', StringSplitOptions.RemoveEmptyEntries);
        double A(int i) => i < parts.Length ? Value(parts[i], g) : 0;
        double x = A(1), y = A(2), z = A(3);
        return parts[0] switch
        {
            "val" => x,
            "*/" => z == 0 ? 0 : x * y / z,
            "+-" => x + y - z,
            "+/" => z == 0 ? 0 : (x + y) / z,
            "?:" => x > 0 ? y : z,
            "abs" => Math.Abs(x),
            "at2" => Math.Atan2(y, x) * AngleUnit,
            "cat2" => x * Math.Cos(Math.Atan2(z, y)),
            "sat2" => x * Math.Sin(Math.Atan2(z, y)),
            "cos" => x * Math.Cos(y / AngleUnit),
            "sin" => x * Math.Sin(y / AngleUnit),
            "tan" => x * Math.Tan(y / AngleUnit),
            "max" => Math.Max(x, y),
            "min" => Math.Min(x, y),
            "mod" => Math.Sqrt(x * x + y * y + z * z),
            "pin" => y < x ? x : y > z ? z : y,
            "sqrt" => x > 0 ? Math.Sqrt(x) : 0,
            _ => 0,
        };
    }
}
