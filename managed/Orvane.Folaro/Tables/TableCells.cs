using System;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

// New table markup, and the moves of text and format between cells that merging, splitting
// and removing rows or columns need.
internal static class TableCells
{
    internal const string TableUri = "http://schemas.openxmlformats.org/drawingml/2006/table";

    // Medium Style 2 - Accent 1 with a header row and banded rows, as editors start a table.
    internal const string DefaultStyleId = "{5C22544A-7EE6-4342-B048-85BDC9FD1C3A}";

    internal static P.GraphicFrame Frame(uint id, string name, long[] widths, long[] heights)
    {
        var table = new A.Table(
            new A.TableProperties(new A.TableStyleId(DefaultStyleId)) { FirstRow = true, BandRow = true },
            new A.TableGrid(widths.Select(w => new A.GridColumn { Width = w })));
        foreach (var h in heights)
        {
            var row = new A.TableRow { Height = h };
            for (int c = 0; c < widths.Length; c++)
                row.AppendChild(NewCell());
            table.AppendChild(row);
        }
        return new P.GraphicFrame(
            new P.NonVisualGraphicFrameProperties(
                new P.NonVisualDrawingProperties { Id = id, Name = name },
                new P.NonVisualGraphicFrameDrawingProperties(new A.GraphicFrameLocks { NoGrouping = true }),
                new P.ApplicationNonVisualDrawingProperties()),
            new P.Transform(new A.Offset { X = 0, Y = 0 }, new A.Extents { Cx = 0, Cy = 0 }),
            new A.Graphic(new A.GraphicData(table) { Uri = TableUri }));
    }

    internal static A.TableCell NewCell() =>
        new(new A.TextBody(new A.BodyProperties(), new A.ListStyle(), new A.Paragraph(new A.EndParagraphRunProperties { Language = "en-US" })),
            new A.TableCellProperties());

    /// <summary>The a:tbl of a graphic frame, or null when it holds something else.</summary>
    internal static OpenXmlElement? TableOf(OpenXmlElement frame)
    {
        var graphic = frame.GetFirstChild<A.Graphic>();
        var data = graphic?.GetFirstChild<A.GraphicData>();
        return data?.GetFirstChild<A.Table>();
    }

    internal static OpenXmlElement? Body(OpenXmlElement cell) => cell.GetFirstChild<A.TextBody>();

    /// <summary>The cell's text body, made (empty, one paragraph) when missing.</summary>
    internal static OpenXmlElement EnsureBody(OpenXmlElement cell)
    {
        if (Body(cell) is { } body)
            return body;
        var made = new A.TextBody(new A.BodyProperties(), new A.ListStyle(), new A.Paragraph(new A.EndParagraphRunProperties { Language = "en-US" }));
        cell.PrependChild(made);
        return made;
    }

    internal static OpenXmlElement? Properties(OpenXmlElement cell) => cell.GetFirstChild<A.TableCellProperties>();

    /// <summary>The cell's a:tcPr, made after its text body when missing.</summary>
    internal static OpenXmlElement EnsureProperties(OpenXmlElement cell)
    {
        if (Properties(cell) is { } props)
            return props;
        var made = new A.TableCellProperties();
        if (Body(cell) is { } body)
            cell.InsertAfter(made, body);
        else
            cell.PrependChild(made);
        return made;
    }

    // By name: any text leaf, math text included.
    internal static bool HasText(OpenXmlElement cell) =>
        Body(cell) is { } body && body.Descendants().Any(e => e.LocalName == "t" && !string.IsNullOrEmpty(e.InnerText));

    /// <summary>Empties a cell's text, keeping the format of its first paragraph and its end-of-paragraph properties.</summary>
    internal static void ResetText(OpenXmlElement cell)
    {
        var body = EnsureBody(cell);
        var paragraphs = body.Elements<A.Paragraph>().ToList();
        var p = new A.Paragraph();
        if (paragraphs.FirstOrDefault() is { } first && first.GetFirstChild<A.ParagraphProperties>() is { } pPr)
            p.AppendChild(pPr.CloneNode(true));
        var end = paragraphs.Select(x => x.GetFirstChild<A.EndParagraphRunProperties>()).LastOrDefault(x => x != null);
        p.AppendChild(end?.CloneNode(true) ?? new A.EndParagraphRunProperties { Language = "en-US" });
        foreach (var old in paragraphs)
            old.Remove();
        body.AppendChild(p);
    }

    /// <summary>Moves the paragraphs of <paramref name="from"/> (when it has text) after those of <paramref name="to"/>, leaving it empty.</summary>
    internal static void AppendText(OpenXmlElement from, OpenXmlElement to)
    {
        if (!HasText(from))
            return;
        var target = EnsureBody(to);
        if (!HasText(to))
            foreach (var p in target.Elements<A.Paragraph>().ToList())
                p.Remove();
        foreach (var p in Body(from)!.Elements<A.Paragraph>())
            target.AppendChild(p.CloneNode(true));
        ResetText(from);
    }

    /// <summary>Gives <paramref name="to"/> the text and format of <paramref name="from"/> (whose place it takes).</summary>
    internal static void MoveContent(OpenXmlElement from, OpenXmlElement to)
    {
        Replace(to, "txBody", Body(from));
        Replace(to, "tcPr", Properties(from));
    }

    /// <summary>Gives <paramref name="to"/> a copy of the cell format (a:tcPr) of <paramref name="from"/>.</summary>
    internal static void CopyFormat(OpenXmlElement from, OpenXmlElement to) => Replace(to, "tcPr", Properties(from));

    private static void Replace(OpenXmlElement cell, string name, OpenXmlElement? source)
    {
        if (source == null)
            return;
        var copy = source.CloneNode(true);
        if (SchemaOrder.First(cell, name) is { } old)
        {
            cell.ReplaceChild(copy, old);
            return;
        }
        if (name == "txBody")
            cell.PrependChild(copy);
        else if (Body(cell) is { } body)
            cell.InsertAfter(copy, body);
        else
            cell.PrependChild(copy);
    }

    /// <summary>A copy of a cell for a new row or column: its format, its text only when <paramref name="keepText"/>, no merge.</summary>
    internal static OpenXmlElement CopyCell(OpenXmlElement cell, bool keepText)
    {
        var copy = cell.CloneNode(true);
        foreach (var name in new[] { "rowSpan", "gridSpan", "hMerge", "vMerge", "id" })
            copy.RemoveAttribute(name, string.Empty);
        if (!keepText)
            ResetText(copy);
        return copy;
    }

    /// <summary>A copy of a row (or grid column) without the editor's identifying extension.</summary>
    internal static OpenXmlElement CopyLine(OpenXmlElement line, Func<OpenXmlElement, OpenXmlElement> cellFor)
    {
        var copy = line.CloneNode(false);
        foreach (var child in line.ChildElements)
        {
            if (child is A.ExtensionList)
                continue;
            copy.AppendChild(child is A.TableCell ? cellFor(child) : child.CloneNode(true));
        }
        return copy;
    }

    /// <summary>Checks and converts lengths in points (each above zero and finite) to EMU.</summary>
    internal static long[] Lengths(double[] points, string name, string member)
    {
        ArgumentNullException.ThrowIfNull(points, name);
        if (points.Length == 0)
            throw new ArgumentException($"{member}: {name} must hold at least one length", name);
        var result = new long[points.Length];
        for (int i = 0; i < points.Length; i++)
            result[i] = Length(points[i], name, member);
        return result;
    }

    internal static long Length(double points, string name, string member) =>
        points > 0 && points <= 100_000 && !double.IsNaN(points)
            ? (long)Math.Round(points * Emu.PerPoint, MidpointRounding.AwayFromZero)
            : throw new ArgumentOutOfRangeException(name, points, $"{member}: {name} must be above 0 and at most 100,000 points");

    internal static double Points(long emu) => emu / (double)Emu.PerPoint;

    internal static IEnumerable<OpenXmlElement> Paragraphs(OpenXmlElement body) => body.Elements<A.Paragraph>();
}
