using System;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using Orvane.Folaro.Theme;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

// Where the text of one shape inherits its formatting from, nearest first: the shape's own
// list style, its layout placeholder's, its master placeholder's, the master's text style for
// the placeholder's kind (title, body or other), then the presentation's default text style.
// Shapes that are not placeholders skip straight from their own list style to the default.
internal sealed class TextInheritance
{
    private readonly OpenXmlElement? _shape;
    private readonly OpenXmlPart? _part;
    private readonly List<OpenXmlElement> _placeholders;
    private readonly string? _masterStyle;

    private TextInheritance(OpenXmlElement? shape, OpenXmlPart? part)
    {
        _shape = shape;
        _part = part;
        _placeholders = shape is P.Shape && part != null ? Shape.InheritedPlaceholders(shape, part) : new List<OpenXmlElement>();
        var ph = shape is P.Shape ? Shape.PlaceholderOf(shape) : null;
        if (ph != null)
        {
            var type = ph.Type?.Value ?? P.PlaceholderValues.Object;
            _masterStyle = type == P.PlaceholderValues.Title || type == P.PlaceholderValues.CenteredTitle ? "titleStyle"
                : type == P.PlaceholderValues.DateAndTime || type == P.PlaceholderValues.Footer || type == P.PlaceholderValues.SlideNumber || type == P.PlaceholderValues.Header ? "otherStyle"
                : "bodyStyle";
        }
        else if (shape is A.TableCell)
        {
            // Text in table cells takes the master's style for other text.
            _masterStyle = "otherStyle";
        }
    }

    /// <summary>The inheritance of the text of <paramref name="shape"/> (a p:sp, or null for text outside shapes) in <paramref name="part"/>.</summary>
    internal static TextInheritance Of(OpenXmlElement? shape, OpenXmlPart? part) => new(shape, part);

    /// <summary>The shape that holds a paragraph (a:p in p:txBody in p:sp).</summary>
    internal static OpenXmlElement? ShapeOf(OpenXmlElement paragraph) => paragraph.Parent?.Parent;

    internal OpenXmlPart? Part => _part;

    internal ThemeColors? Colors => ThemeColors.Of(_part);

    /// <summary>The a:bodyPr elements of the inherited placeholders (after the shape's own).</summary>
    internal IEnumerable<OpenXmlElement> InheritedBodyProperties() =>
        _placeholders.Select(Body).Where(b => b != null).Select(b => b!.GetFirstChild<A.BodyProperties>()).Where(b => b != null)!;

    /// <summary>The paragraph properties of outline level <paramref name="level"/> (0 to 8), nearest first.</summary>
    internal List<OpenXmlElement> LevelProperties(int level) => LevelProperties(level, out _);

    /// <summary>As <see cref="LevelProperties(int)"/>; <paramref name="defaultsFrom"/> is where the presentation's default text style begins.</summary>
    internal List<OpenXmlElement> LevelProperties(int level, out int defaultsFrom)
    {
        string name = $"lvl{Math.Clamp(level, 0, 8) + 1}pPr";
        var result = new List<OpenXmlElement>();
        void From(OpenXmlElement? listStyle, bool withDefault = false)
        {
            if (listStyle == null)
                return;
            if (SchemaOrder.First(listStyle, name) is { } lvl)
                result.Add(lvl);
            if (withDefault && listStyle.GetFirstChild<A.DefaultParagraphProperties>() is { } def)
                result.Add(def);
        }
        if (_shape != null && Body(_shape) is { } own)
            From(own.GetFirstChild<A.ListStyle>());
        foreach (var ph in _placeholders)
            if (Body(ph) is { } body)
                From(body.GetFirstChild<A.ListStyle>());
        if (_masterStyle != null)
        {
            var styles = MasterRoot()?.GetFirstChild<P.TextStyles>();
            From(styles == null ? null : SchemaOrder.First(styles, _masterStyle));
            if (MasterRoot() is P.NotesMaster notes)
                From(notes.NotesStyle);
        }
        defaultsFrom = result.Count;
        var presentation = (_part?.OpenXmlPackage as PresentationDocument)?.PresentationPart?.Presentation;
        From(presentation?.DefaultTextStyle, withDefault: true);
        return result;
    }

    /// <summary>
    /// The shape style's font reference as character properties: its colour as a solid fill and
    /// its theme fonts. It ranks above the presentation's default text style, which is why a new
    /// shape's text is light on its accent fill although the default text colour is dark.
    /// </summary>
    internal OpenXmlElement? StyleRunProperties()
    {
        if (FontReference is not { } fontRef)
            return null;
        var made = new A.RunProperties();
        if (SchemaOrder.FirstOf(fontRef, ColorMath.ColorElements) is { } color)
            made.AppendChild(new A.SolidFill(color.CloneNode(true)));
        string? prefix = AttributeAccess.Attr(fontRef, "idx") switch { "major" => "+mj", "minor" => "+mn", _ => null };
        if (prefix != null)
        {
            made.AppendChild(new A.LatinFont { Typeface = prefix + "-lt" });
            made.AppendChild(new A.EastAsianFont { Typeface = prefix + "-ea" });
            made.AppendChild(new A.ComplexScriptFont { Typeface = prefix + "-cs" });
        }
        return made;
    }

    /// <summary>The shape style's font reference (a:fontRef), which gives text a theme font and a colour.</summary>
    internal OpenXmlElement? FontReference =>
        _shape?.GetFirstChild<P.ShapeStyle>()?.GetFirstChild<A.FontReference>();

    /// <summary>A typeface with theme references ("+mj-lt", "+mn-ea", ...) replaced by the theme's fonts.</summary>
    internal string Font(string typeface)
    {
        if (typeface.Length < 6 || typeface[0] != '+' || typeface[3] != '-')
            return typeface;
        bool major = typeface.StartsWith("+mj", StringComparison.Ordinal);
        string script = typeface[4..] switch { "lt" => "latin", "ea" => "ea", "cs" => "cs", _ => string.Empty };
        return script.Length == 0 ? typeface : ThemeFont(major, script);
    }

    /// <summary>The theme's major (headings) or minor (body) font for a script: "latin", "ea" or "cs".</summary>
    internal string ThemeFont(bool major, string script)
    {
        var fonts = ThemeChain.FontScheme(_part);
        OpenXmlElement? set = major ? fonts?.MajorFont : fonts?.MinorFont;
        var font = set == null ? null : SchemaOrder.First(set, script);
        return font == null ? string.Empty : AttributeAccess.Attr(font, "typeface") ?? string.Empty;
    }

    // By name: a shape's text body and a table cell's are different classes.
    private static OpenXmlElement? Body(OpenXmlElement shape) => shape.ChildElements.FirstOrDefault(c => c.LocalName == "txBody");

    private OpenXmlPart? MasterPart() => _part switch
    {
        SlidePart s => s.SlideLayoutPart?.SlideMasterPart,
        SlideLayoutPart l => l.SlideMasterPart,
        SlideMasterPart m => m,
        NotesSlidePart n => n.NotesMasterPart,
        NotesMasterPart nm => nm,
        _ => null,
    };

    private OpenXmlElement? MasterRoot() => MasterPart()?.RootElement;
}
