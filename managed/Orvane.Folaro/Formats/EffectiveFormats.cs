using System;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using Orvane.Folaro.Theme;
using Orvane.Marel;

namespace Orvane.Folaro;

// Effective fills and outlines of shapes: the shape's own spPr, then the spPr of the
// placeholders it inherits from (layout, master), then the theme style its p:style refers to
// (fillRef/lnRef: 0 none, 1..999 the fill or line style lists, 1001.. the background fills),
// whose placeholder colour (phClr) is the reference's colour. Colours go through the colour
// map and theme of the slide the shape is on.
internal static class EffectiveFormats
{
    /// <summary>A shape seen from its part: what its fill and line inherit from.</summary>
    internal sealed class Source
    {
        internal Source(OpenXmlElement shape, OpenXmlPart part)
        {
            Shape = shape;
            Part = part;
        }

        internal OpenXmlElement Shape { get; }

        internal OpenXmlPart Part { get; }

        /// <summary>The shape's properties then those of its placeholders, each with its part.</summary>
        internal List<(OpenXmlElement Props, OpenXmlPart Part)> Properties()
        {
            var result = new List<(OpenXmlElement, OpenXmlPart)>();
            if (SpPr(Shape) is { } own)
                result.Add((own, Part));
            foreach (var ph in Folaro.Shape.InheritedPlaceholders(Shape, Part))
                if (SpPr(ph) is { } props && PartOf(ph) is { } part)
                    result.Add((props, part));
            return result;
        }

        /// <summary>The shape style (p:style) of the shape, else of the nearest placeholder with one.</summary>
        internal OpenXmlElement? Style()
        {
            if (StyleOf(Shape) is { } own)
                return own;
            foreach (var ph in Folaro.Shape.InheritedPlaceholders(Shape, Part))
                if (StyleOf(ph) is { } s)
                    return s;
            return null;
        }

        private static OpenXmlElement? SpPr(OpenXmlElement shape) => shape.ChildElements.FirstOrDefault(c => c.LocalName is "spPr" or "grpSpPr");

        private static OpenXmlElement? StyleOf(OpenXmlElement shape) => shape.ChildElements.FirstOrDefault(c => c.LocalName == "style");
    }

    internal static OpenXmlPart? PartOf(OpenXmlElement element) =>
        (element.Ancestors().LastOrDefault() ?? element) is OpenXmlPartRootElement root ? root.OpenXmlPart : null;

    // A fill element found for the effective value, with the part that holds it (for images) and the placeholder colour.
    private readonly record struct Found(OpenXmlElement? Fill, OpenXmlPart? Part, Color PlaceholderColor);

    internal static IFillFormatEffectiveData Fill(FillFormat format)
    {
        var theme = format.Context.Theme;
        var own = format.Fill(false);
        if (format.Inheritance is not { } inheritance)
            return Build(new Found(own, format.Context.Part, default), theme);
        var source = inheritance();
        theme = ThemeColors.Of(source.Part);
        return Build(ShapeFill(source, theme), theme);
    }

    private static Found ShapeFill(Source source, ThemeColors? theme)
    {
        foreach (var (props, part) in source.Properties())
        {
            if (SchemaOrder.FirstOf(props, SchemaOrder.Fills) is not { } fill)
                continue;
            if (fill.LocalName == "grpFill")
                return GroupFill(source.Shape, part);
            return new Found(fill, part, default);
        }
        if (source.Style() is { } style && SchemaOrder.First(style, "fillRef") is { } fillRef)
            return StyleFill(fillRef, source.Part, theme);
        return default;
    }

    // A group fill is the fill of the group the shape is in (groups have no style of their own).
    private static Found GroupFill(OpenXmlElement shape, OpenXmlPart part)
    {
        for (var group = shape.Parent; group != null && group.LocalName == "grpSp"; group = group.Parent)
        {
            var props = group.ChildElements.FirstOrDefault(c => c.LocalName == "grpSpPr");
            var fill = props == null ? null : SchemaOrder.FirstOf(props, SchemaOrder.Fills);
            if (fill != null && fill.LocalName != "grpFill")
                return new Found(fill, part, default);
            if (fill == null)
                break;
        }
        return default;
    }

    private static Found StyleFill(OpenXmlElement fillRef, OpenXmlPart part, ThemeColors? theme)
    {
        long idx = AttributeAccess.Long(fillRef, "idx") ?? 0;
        var placeholder = SchemaOrder.FirstOf(fillRef, ColorMath.ColorElements) is { } c ? ColorMath.Resolve(c, theme) : default;
        var scheme = ThemeChain.FormatScheme(part);
        if (idx <= 0 || scheme == null)
            return new Found(null, part, placeholder);
        OpenXmlElement? list = idx >= 1001 ? scheme.BackgroundFillStyleList : scheme.FillStyleList;
        long i = idx >= 1001 ? idx - 1001 : idx - 1;
        var fills = list?.ChildElements.Where(e => Array.IndexOf(SchemaOrder.Fills, e.LocalName) >= 0).ToList();
        var fill = fills != null && i < fills.Count ? fills[(int)i] : null;
        return new Found(fill, fill == null ? part : PartOf(fill), placeholder);
    }

    private static FillFormatEffectiveData Build(Found found, ThemeColors? theme)
    {
        var data = new FillFormatEffectiveData();
        var fill = found.Fill;
        Color Resolve(OpenXmlElement? holder) =>
            holder != null && SchemaOrder.FirstOf(holder, ColorMath.ColorElements) is { } c ? ColorMath.Resolve(c, theme, found.PlaceholderColor) : Color.Empty;
        switch (fill?.LocalName)
        {
            case "solidFill":
                data.FillType = FillType.Solid;
                data.SolidFillColor = Resolve(fill);
                break;
            case "gradFill":
            {
                data.FillType = FillType.Gradient;
                var path = SchemaOrder.First(fill, "path");
                data.GradientShape = path == null ? GradientShape.Linear
                    : AttributeAccess.Attr(path, "path") switch { "circle" => GradientShape.Radial, "rect" => GradientShape.Rectangle, _ => GradientShape.Path };
                data.LinearGradientAngle = path != null ? float.NaN : (float)((AttributeAccess.Long(SchemaOrder.First(fill, "lin"), "ang") ?? 0) / 60000.0);
                data.GradientStops = (SchemaOrder.First(fill, "gsLst")?.ChildElements.Where(g => g.LocalName == "gs") ?? Enumerable.Empty<OpenXmlElement>())
                    .Select(g => (IGradientStopEffectiveData)new GradientStopEffectiveData((AttributeAccess.Long(g, "pos") ?? 0) / 100000f, Resolve(g)))
                    .OrderBy(s => s.Position)
                    .ToArray();
                break;
            }
            case "pattFill":
                data.FillType = FillType.Pattern;
                data.PatternStyle = (PatternStyle)Inherited.Index(XmlValues.PatternStyle, AttributeAccess.Attr(fill, "prst"), 0);
                data.PatternForeColor = Resolve(SchemaOrder.First(fill, "fgClr"));
                data.PatternBackColor = Resolve(SchemaOrder.First(fill, "bgClr"));
                break;
            case "blipFill":
                data.FillType = FillType.Picture;
                data.PictureFillMode = SchemaOrder.First(fill, "tile") != null ? PictureFillMode.Tile : PictureFillMode.Stretch;
                data.ImageData = SchemaOrder.First(fill, "blip") is { } blip ? ImageParts.Read(found.Part, ImageParts.EmbedOf(blip)) : Array.Empty<byte>();
                break;
            default:
                // No fill anywhere, a group fill outside a group, or noFill.
                data.FillType = FillType.NoFill;
                break;
        }
        return data;
    }

    private static readonly string[] Dashes = { "solid", "dot", "dash", "lgDash", "dashDot", "lgDashDot", "lgDashDotDot", "sysDash", "sysDot", "sysDashDot", "sysDashDotDot" };
    private static readonly string[] Compounds = { "sng", "dbl", "thinThick", "thickThin", "tri" };
    private static readonly string[] Caps = { "rnd", "sq", "flat" };
    private static readonly string[] Joins = { "round", "bevel", "miter" };
    private static readonly string[] Heads = { "none", "triangle", "stealth", "diamond", "oval", "arrow" };
    private static readonly string[] Sizes = { "sm", "med", "lg" };

    internal static ILineFormatEffectiveData Line(LineFormat format)
    {
        // Lines nearest first, each with its part; the theme's line style comes last with the reference's colour.
        var chain = new List<(OpenXmlElement Line, OpenXmlPart? Part)>();
        var theme = format.Context.Theme;
        Color placeholder = default;
        if (format.Inheritance is { } inheritance)
        {
            var source = inheritance();
            theme = ThemeColors.Of(source.Part);
            foreach (var (props, part) in source.Properties())
                if (SchemaOrder.First(props, "ln") is { } ln)
                    chain.Add((ln, part));
            if (source.Style() is { } style && SchemaOrder.First(style, "lnRef") is { } lnRef)
            {
                placeholder = SchemaOrder.FirstOf(lnRef, ColorMath.ColorElements) is { } c ? ColorMath.Resolve(c, theme) : default;
                long idx = AttributeAccess.Long(lnRef, "idx") ?? 0;
                var lines = ThemeChain.FormatScheme(source.Part)?.LineStyleList?.ChildElements.Where(e => e.LocalName == "ln").ToList();
                if (idx >= 1 && lines != null && idx <= lines.Count)
                    chain.Add((lines[(int)idx - 1], PartOf(lines[(int)idx - 1])));
            }
        }
        else if (format.Element is { } ownLine)
            chain.Add((ownLine, format.Context.Part));

        var elements = chain.Select(c => c.Line).ToList();
        var fill = chain.Select(c => SchemaOrder.FirstOf(c.Line, SchemaOrder.LineFills)).FirstOrDefault(f => f != null);
        var fillData = Build(new Found(fill, null, placeholder), theme);
        IEnumerable<OpenXmlElement> Ends(string name) => elements.Select(e => SchemaOrder.First(e, name)).Where(e => e != null)!;
        var dash = Inherited.Child(elements, new[] { "prstDash", "custDash" });
        var join = Inherited.Child(elements, Joins);
        return new LineFormatEffectiveData
        {
            FillFormat = fillData,
            // Nothing sets a width: the thinnest line the device draws.
            Width = Inherited.Long(elements, "w") is long w ? Emu.ToPoints(w) : 0f,
            DashStyle = dash == null ? LineDashStyle.Solid
                : dash.LocalName == "custDash" ? LineDashStyle.Custom
                : (LineDashStyle)Inherited.Index(Dashes, AttributeAccess.Attr(dash, "val"), 0),
            Style = (LineStyle)Inherited.Index(Compounds, Inherited.Attr(elements, "cmpd"), 0),
            CapStyle = (LineCapStyle)Inherited.Index(Caps, Inherited.Attr(elements, "cap"), 2),
            JoinStyle = join == null ? LineJoinStyle.Round : (LineJoinStyle)Array.IndexOf(Joins, join.LocalName),
            BeginArrowheadStyle = (LineArrowheadStyle)Inherited.Index(Heads, Inherited.Attr(Ends("headEnd"), "type"), 0),
            BeginArrowheadWidth = (LineArrowheadWidth)Inherited.Index(Sizes, Inherited.Attr(Ends("headEnd"), "w"), 1),
            BeginArrowheadLength = (LineArrowheadLength)Inherited.Index(Sizes, Inherited.Attr(Ends("headEnd"), "len"), 1),
            EndArrowheadStyle = (LineArrowheadStyle)Inherited.Index(Heads, Inherited.Attr(Ends("tailEnd"), "type"), 0),
            EndArrowheadWidth = (LineArrowheadWidth)Inherited.Index(Sizes, Inherited.Attr(Ends("tailEnd"), "w"), 1),
            EndArrowheadLength = (LineArrowheadLength)Inherited.Index(Sizes, Inherited.Attr(Ends("tailEnd"), "len"), 1),
        };
    }
}
