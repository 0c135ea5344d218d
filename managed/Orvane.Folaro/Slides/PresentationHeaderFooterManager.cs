using System;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>
/// Footers, slide numbers and dates of all slides. A slide shows one of them when it has the
/// matching placeholder; showing adds it (copied from the slide's layout), hiding removes it.
/// </summary>
public sealed class PresentationHeaderFooterManager : IPresentationHeaderFooterManager
{
    private readonly Presentation _owner;

    internal PresentationHeaderFooterManager(Presentation owner)
    {
        _owner = owner;
    }

    public void SetAllFootersText(string text)
    {
        ArgumentNullException.ThrowIfNull(text);
        foreach (var slide in Slides())
            SetText(slide, P.PlaceholderValues.Footer, text);
    }

    public void SetAllFootersVisibility(bool isVisible) => SetVisibility(P.PlaceholderValues.Footer, isVisible);

    public void SetAllSlideNumbersVisibility(bool isVisible) => SetVisibility(P.PlaceholderValues.SlideNumber, isVisible);

    public void SetAllDateTimesVisibility(bool isVisible) => SetVisibility(P.PlaceholderValues.DateAndTime, isVisible);

    /// <summary>Shows this fixed text in the date placeholders (of the slides that show one).</summary>
    public void SetAllDateTimesText(string dateTimeText)
    {
        ArgumentNullException.ThrowIfNull(dateTimeText);
        foreach (var slide in Slides())
            SetText(slide, P.PlaceholderValues.DateAndTime, dateTimeText);
    }

    private System.Collections.Generic.IEnumerable<Slide> Slides() => _owner.SlideList.Cast<Slide>();

    private void SetVisibility(P.PlaceholderValues type, bool visible)
    {
        foreach (var slide in Slides())
            SetVisibility(slide, type, visible);
    }

    /// <summary>The text of the slide's placeholder of this kind, or null when the slide has none.</summary>
    internal static string? TextOf(Slide slide, P.PlaceholderValues type) =>
        Find(slide, type) is { } shape
            ? string.Join("\n", shape.TextBody?.Elements<A.Paragraph>().Select(p => string.Concat(p.Descendants<A.Text>().Select(t => t.Text))) ?? Array.Empty<string>())
            : null;

    internal static bool IsVisible(Slide slide, P.PlaceholderValues type) => Find(slide, type) != null;

    internal static void SetText(Slide slide, P.PlaceholderValues type, string text)
    {
        if (Find(slide, type) is { } shape)
            SetText(shape, new A.Run(new A.RunProperties { Language = "en-US" }, new A.Text(text)));
    }

    internal static void SetVisibility(Slide slide, P.PlaceholderValues type, bool visible)
    {
        var existing = Find(slide, type);
        if (!visible)
        {
            existing?.Remove();
            return;
        }
        if (existing != null)
            return;
        var template = slide.Part.SlideLayoutPart is { } layout ? Find(layout.SlideLayout.CommonSlideData?.ShapeTree, type) : null;
        if (template == null)
            return;
        var tree = slide.Part.Slide.CommonSlideData?.ShapeTree;
        if (tree == null)
            return;
        var copy = new P.Shape(
            (P.NonVisualShapeProperties)template.NonVisualShapeProperties!.CloneNode(true),
            new P.ShapeProperties(),
            (P.TextBody?)template.TextBody?.CloneNode(true) ?? new P.TextBody(new A.BodyProperties(), new A.ListStyle(), new A.Paragraph()));
        copy.NonVisualShapeProperties!.NonVisualDrawingProperties!.Id = NextId(tree);
        // The slide's own copy carries no prompt text; a slide number keeps its field.
        if (type != P.PlaceholderValues.SlideNumber)
            SetText(copy, null);
        var last = tree.ChildElements.LastOrDefault(c => c is not P.ExtensionListWithModification);
        if (last != null)
            tree.InsertAfter(copy, last);
        else
            tree.AppendChild(copy);
    }

    private static P.Shape? Find(Slide slide, P.PlaceholderValues type) => Find(slide.Part.Slide.CommonSlideData?.ShapeTree, type);

    private static P.Shape? Find(P.ShapeTree? tree, P.PlaceholderValues type) =>
        tree?.Elements<P.Shape>().FirstOrDefault(s =>
            s.NonVisualShapeProperties?.ApplicationNonVisualDrawingProperties?.PlaceholderShape?.Type?.Value == type);

    private static uint NextId(P.ShapeTree tree) =>
        tree.Descendants<P.NonVisualDrawingProperties>().Select(p => p.Id?.Value ?? 0).DefaultIfEmpty(1u).Max() + 1;

    // One paragraph holding the run, or an empty paragraph.
    private static void SetText(P.Shape shape, OpenXmlElement? run)
    {
        shape.TextBody ??= new P.TextBody(new A.BodyProperties(), new A.ListStyle());
        foreach (var p in shape.TextBody.Elements<A.Paragraph>().ToList())
            p.Remove();
        var paragraph = new A.Paragraph();
        if (run != null)
            paragraph.AppendChild(run);
        paragraph.AppendChild(new A.EndParagraphRunProperties { Language = "en-US" });
        shape.TextBody.AppendChild(paragraph);
    }
}
