using System;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

// Reading and writing the hyperlink elements of a holder (a shape's p:cNvPr, a run's a:rPr):
// a:hlinkClick and a:hlinkHover / a:hlinkMouseOver with their relationships — external
// hyperlink relationships for addresses, slide relationships for slide jumps, none (r:id="")
// for show actions. A relationship goes when no element of the part uses it any more.
internal static class HyperlinkStore
{
    private const string R = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

    internal static readonly string[] NonVisualOrder = { "hlinkClick", "hlinkHover", "extLst" };

    internal static readonly string[] LinkNames = { "hlinkClick", "hlinkHover", "hlinkMouseOver" };

    internal static IHyperlink? Read(OpenXmlElement? holder, string name, OpenXmlPart? part, Presentation? owner)
    {
        if (holder == null || part == null || SchemaOrder.First(holder, name) is not { } link)
            return null;
        return Hyperlink.View(link, part, owner);
    }

    internal static void Write(Func<bool, OpenXmlElement?> holder, string name, IHyperlink? value, OpenXmlPart? part, string[] order, string member)
    {
        if (value == null)
        {
            if (holder(false) is { } h && SchemaOrder.First(h, name) is { } old)
                Unlink(old, part);
            return;
        }
        if (part == null)
            throw new PptxEditException($"{member}: there is no part to hold a hyperlink");
        // Everything that can be refused is checked before the document changes.
        string? action = Hyperlink.ActionText(value.ActionType, member);
        Uri? uri = null;
        SlidePart? slidePart = null;
        if (value.ActionType == HyperlinkActionType.Hyperlink)
        {
            if (string.IsNullOrEmpty(value.ExternalUrl) || !Uri.TryCreate(value.ExternalUrl, UriKind.RelativeOrAbsolute, out uri))
                throw new ArgumentException($"{member}: '{value.ExternalUrl}' is not a valid address", nameof(value));
        }
        else if (value.ActionType == HyperlinkActionType.JumpSpecificSlide)
            slidePart = TargetPart(part, value.TargetSlide, member);
        var target = holder(true) ?? throw new PptxEditException($"{member}: there is no place for a hyperlink");
        // Read what to copy before the old element goes: the value may be a view of it.
        string tooltip = value.Tooltip, frame = value.TargetFrame;
        bool history = value.History, highlight = value.HighlightClick;
        string id = uri != null ? part.AddHyperlinkRelationship(uri, uri.IsAbsoluteUri).Id
            : slidePart != null ? SlideRelationship(part, slidePart)
            : string.Empty;
        if (SchemaOrder.First(target, name) is { } existing)
            Unlink(existing, part, keep: id);
        OpenXmlElement made = name switch
        {
            "hlinkClick" => new A.HyperlinkOnClick(),
            "hlinkHover" => new A.HyperlinkOnHover(),
            _ => new A.HyperlinkOnMouseOver(),
        };
        made.SetAttribute(new OpenXmlAttribute("r", "id", R, id));
        AttributeAccess.SetAttr(made, "action", action);
        AttributeAccess.SetAttr(made, "tgtFrame", frame.Length > 0 ? frame : null);
        AttributeAccess.SetAttr(made, "tooltip", tooltip.Length > 0 ? tooltip : null);
        AttributeAccess.SetAttr(made, "history", history ? null : "0");
        AttributeAccess.SetAttr(made, "highlightClick", highlight ? "1" : null);
        SchemaOrder.Insert(target, made, order);
    }

    // The part of a jump's target: a slide still in the same presentation.
    private static SlidePart TargetPart(OpenXmlPart part, ISlide? slide, string member)
    {
        if (slide is not Slide target)
            throw new ArgumentException($"{member}: a slide jump needs a target slide", nameof(slide));
        if (!ReferenceEquals(target.Part.OpenXmlPackage, part.OpenXmlPackage))
            throw new ArgumentException($"{member}: the target slide belongs to another presentation", nameof(slide));
        if (target.Owner.SlideList.All(s => !ReferenceEquals(s, target)))
            throw new ArgumentException($"{member}: the target slide has been removed from its presentation", nameof(slide));
        return target.Part;
    }

    // The relationship from the part to the target slide's part, made when there is none.
    private static string SlideRelationship(OpenXmlPart part, SlidePart slidePart)
    {
        foreach (var pair in part.Parts)
            if (ReferenceEquals(pair.OpenXmlPart, slidePart))
                return pair.RelationshipId;
        return part.CreateRelationshipToPart(slidePart);
    }

    /// <summary>Removes a link element, and its relationship when nothing else in the part uses it.</summary>
    internal static void Unlink(OpenXmlElement link, OpenXmlPart? part, string? keep = null)
    {
        string? id = Hyperlink.RelationshipId(link);
        var root = link.Ancestors().LastOrDefault();
        link.Remove();
        if (part != null && root != null && !string.IsNullOrEmpty(id) && id != keep)
            DropIfUnused(part, root, new[] { id });
    }

    internal static void DropIfUnused(OpenXmlPart part, OpenXmlElement root, IEnumerable<string> ids)
    {
        var candidates = new HashSet<string>(ids.Where(i => !string.IsNullOrEmpty(i)));
        if (candidates.Count == 0)
            return;
        foreach (var e in root.Descendants())
            foreach (var a in e.GetAttributes())
                if (a.NamespaceUri == R && a.Value != null)
                    candidates.Remove(a.Value);
        foreach (var id in candidates)
        {
            if (part.HyperlinkRelationships.FirstOrDefault(h => h.Id == id) is { } rel)
                part.DeleteReferenceRelationship(rel);
            else if (part.Parts.FirstOrDefault(p => p.RelationshipId == id).OpenXmlPart is SlidePart)
                // The slide is still referenced by the presentation, so only the relationship goes.
                part.DeletePart(id);
        }
    }

    /// <summary>Removes every hyperlink of a part's XML with the relationships only they used; the count removed.</summary>
    internal static int RemoveAll(OpenXmlPart part)
    {
        var root = part.RootElement;
        if (root == null)
            return 0;
        var links = root.Descendants().Where(e => Array.IndexOf(LinkNames, e.LocalName) >= 0 && e.NamespaceUri == "http://schemas.openxmlformats.org/drawingml/2006/main").ToList();
        var ids = links.Select(Hyperlink.RelationshipId).Where(i => i != null).Cast<string>().ToList();
        foreach (var link in links)
            link.Remove();
        DropIfUnused(part, root, ids);
        return links.Count;
    }
}
