using System;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using Orvane.Folaro.Theme;
using Orvane.Marel;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

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

        private static OpenXmlElement? StyleOf(OpenXmlElement shape) => shape.GetFirstChild<P.ShapeStyle>();
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
            if (fill is A.GroupFill)
                return GroupFill(source.Shape, part);
            return new Found(fill, part, default);
        }
        if (source.Style()?.GetFirstChild<A.FillReference>() is { } fillRef)
            return StyleFill(fillRef, source.Part, theme);
        return default;
    }

    // A group fill is the fill of the group the shape is in (groups have no style of their own).
    private static Found GroupFill(OpenXmlElement shape, OpenXmlPart part)
    {
        for (var group = shape.Parent as P.GroupShape; group != null; group = group.Parent as P.GroupShape)
        {
            var props = group.GetFirstChild<P.GroupShapeProperties>();
            var fill = props == null ? null : SchemaOrder.FirstOf(props, SchemaOrder.Fills);
            if (fill != null && fill is not A.GroupFill)
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
        switch (fill)
        {
            case A.SolidFill:
                data.FillType = FillType.Solid;
                data.SolidFillColor = Resolve(fill);
                break;
            case A.GradientFill:
                {
                    data.FillType = FillType.Gradient;
                    var path = fill.GetFirstChild<A.PathGradientFill>();
                    data.GradientShape = path == null ? GradientShape.Linear
                        : AttributeAccess.Attr(path, "path") switch { "circle" => GradientShape.Radial, "rect" => GradientShape.Rectangle, _ => GradientShape.Path };
                    data.LinearGradientAngle = path != null ? float.NaN : (float)((AttributeAccess.Long(fill.GetFirstChild<A.LinearGradientFill>(), "ang") ?? 0) / 60000.0);
                    data.GradientStops = (fill.GetFirstChild<A.GradientStopList>()?.Elements<A.GradientStop>() ?? Enumerable.Empty<A.GradientStop>())
                        .Select(g => (IGradientStopEffectiveData)new GradientStopEffectiveData((AttributeAccess.Long(g, "pos") ?? 0) / 100000f, Resolve(g)))
                        .OrderBy(s => s.Position)
                        .ToArray();
                    break;
                }
            case A.PatternFill:
                data.FillType = FillType.Pattern;
                data.PatternStyle = FormatTokens.PatternStyles.Member(AttributeAccess.Attr(fill, "prst"), PatternStyle.Percent5);
                data.PatternForeColor = Resolve(fill.GetFirstChild<A.ForegroundColor>());
                data.PatternBackColor = Resolve(fill.GetFirstChild<A.BackgroundColor>());
                break;
            case A.BlipFill:
                data.FillType = FillType.Picture;
                data.PictureFillMode = fill.GetFirstChild<A.Tile>() != null ? PictureFillMode.Tile : PictureFillMode.Stretch;
                data.ImageData = fill.GetFirstChild<A.Blip>() is { } blip ? ImageParts.Read(found.Part, ImageParts.EmbedOf(blip)) : Array.Empty<byte>();
                break;
            default:
                // No fill anywhere, a group fill outside a group, or noFill.
                data.FillType = FillType.NoFill;
                break;
        }
        return data;
    }

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
                if (props.GetFirstChild<A.Outline>() is { } ln)
                    chain.Add((ln, part));
            if (source.Style()?.GetFirstChild<A.LineReference>() is { } lnRef)
            {
                placeholder = SchemaOrder.FirstOf(lnRef, ColorMath.ColorElements) is { } c ? ColorMath.Resolve(c, theme) : default;
                long idx = AttributeAccess.Long(lnRef, "idx") ?? 0;
                var lines = ThemeChain.FormatScheme(source.Part)?.LineStyleList?.Elements<A.Outline>().ToList();
                if (idx >= 1 && lines != null && idx <= lines.Count)
                    chain.Add((lines[(int)idx - 1], PartOf(lines[(int)idx - 1])));
            }
        }
        else if (format.Element is { } ownLine)
            chain.Add((ownLine, format.Context.Part));

        var elements = chain.Select(c => c.Line).ToList();
        var fill = chain.Select(c => SchemaOrder.FirstOf(c.Line, SchemaOrder.LineFills)).FirstOrDefault(f => f != null);
        var fillData = Build(new Found(fill, null, placeholder), theme);
        IEnumerable<OpenXmlElement> Ends<TEnd>() where TEnd : OpenXmlElement => elements.Select(e => e.GetFirstChild<TEnd>()).Where(e => e != null)!;
        var dash = Inherited.Child(elements, new[] { "prstDash", "custDash" });
        var join = Inherited.Child(elements, FormatTokens.LineJoins.Tokens);
        return new LineFormatEffectiveData
        {
            FillFormat = fillData,
            // Nothing sets a width: the thinnest line the device draws.
            Width = Inherited.Long(elements, "w") is long w ? Emu.ToPoints(w) : 0f,
            DashStyle = dash == null ? LineDashStyle.Solid
                : dash is A.CustomDash ? LineDashStyle.Custom
                : FormatTokens.LineDashes.Member(AttributeAccess.Attr(dash, "val"), LineDashStyle.Solid),
            Style = FormatTokens.LineCompounds.Member(Inherited.Attr(elements, "cmpd"), LineStyle.Single),
            CapStyle = FormatTokens.LineCaps.Member(Inherited.Attr(elements, "cap"), LineCapStyle.Flat),
            JoinStyle = join == null ? LineJoinStyle.Round : FormatTokens.LineJoins.Member(join.LocalName, LineJoinStyle.NotDefined),
            BeginArrowheadStyle = FormatTokens.LineEndTypes.Member(Inherited.Attr(Ends<A.HeadEnd>(), "type"), LineArrowheadStyle.None),
            BeginArrowheadWidth = FormatTokens.LineEndWidths.Member(Inherited.Attr(Ends<A.HeadEnd>(), "w"), LineArrowheadWidth.Medium),
            BeginArrowheadLength = FormatTokens.LineEndLengths.Member(Inherited.Attr(Ends<A.HeadEnd>(), "len"), LineArrowheadLength.Medium),
            EndArrowheadStyle = FormatTokens.LineEndTypes.Member(Inherited.Attr(Ends<A.TailEnd>(), "type"), LineArrowheadStyle.None),
            EndArrowheadWidth = FormatTokens.LineEndWidths.Member(Inherited.Attr(Ends<A.TailEnd>(), "w"), LineArrowheadWidth.Medium),
            EndArrowheadLength = FormatTokens.LineEndLengths.Member(Inherited.Attr(Ends<A.TailEnd>(), "len"), LineArrowheadLength.Medium),
        };
    }
}
