using System;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;
using P = DocumentFormat.OpenXml.Presentation;
using P14 = DocumentFormat.OpenXml.Office2010.PowerPoint;

namespace Orvane.Folaro;

// The section list, an extension of presentation.xml: sections in order, each naming its
// slides by slide id. Slides of one section are consecutive in the deck.
internal static class SectionList
{
    internal const string ExtensionUri = "{521415D9-36F7-43E2-AB2F-B90AF26B5E84}";
    private const string DefaultName = "Default Section";

    internal static P14.SectionList? Find(P.Presentation root) =>
        root.PresentationExtensionList?.Elements<P.PresentationExtension>()
            .Select(e => e.GetFirstChild<P14.SectionList>()).FirstOrDefault(l => l != null);

    internal static IEnumerable<uint> SlideIds(P14.Section section) =>
        section.SectionSlideIdList?.Elements<P14.SectionSlideIdListEntry>().Select(e => e.Id?.Value ?? 0) ?? Enumerable.Empty<uint>();

    // The list, made with one default section holding every slide when there is none.
    internal static P14.SectionList Ensure(P.Presentation root, IReadOnlyList<uint> slideIds)
    {
        if (Find(root) is { } existing)
            return existing;
        var list = new P14.SectionList();
        list.AddNamespaceDeclaration("p14", "http://schemas.microsoft.com/office/powerpoint/2010/main");
        var first = NewSection(DefaultName);
        foreach (var id in slideIds)
            first.SectionSlideIdList!.AppendChild(new P14.SectionSlideIdListEntry { Id = id });
        list.AppendChild(first);
        root.PresentationExtensionList ??= new P.PresentationExtensionList();
        root.PresentationExtensionList.AppendChild(new P.PresentationExtension(list) { Uri = ExtensionUri });
        return list;
    }

    internal static P14.Section NewSection(string name) =>
        new(new P14.SectionSlideIdList()) { Name = name, Id = "{" + Guid.NewGuid().ToString().ToUpperInvariant() + "}" };

    // Cuts the section holding the slide at that slide; the tail becomes a new section after it.
    internal static P14.Section Split(P14.SectionList list, string name, uint slideId)
    {
        var holder = list.Elements<P14.Section>().First(s => SlideIds(s).Contains(slideId));
        var made = NewSection(name);
        var entries = holder.SectionSlideIdList!.Elements<P14.SectionSlideIdListEntry>().ToList();
        int at = entries.FindIndex(e => e.Id?.Value == slideId);
        foreach (var entry in entries.Skip(at))
        {
            entry.Remove();
            made.SectionSlideIdList!.AppendChild(entry);
        }
        list.InsertAfter(made, holder);
        // A section left empty by the cut at its first slide makes way for the new one.
        if (at == 0)
            holder.Remove();
        return made;
    }

    internal static void Remove(P.Presentation root, P14.Section section, bool keepSlides)
    {
        var list = (P14.SectionList)section.Parent!;
        var sections = list.Elements<P14.Section>().ToList();
        int index = sections.IndexOf(section);
        if (keepSlides && sections.Count > 1)
        {
            var heir = index > 0 ? sections[index - 1] : sections[1];
            var moved = section.SectionSlideIdList?.Elements<P14.SectionSlideIdListEntry>().ToList() ?? new();
            foreach (var entry in moved)
                entry.Remove();
            if (index > 0)
                heir.SectionSlideIdList!.Append(moved);
            else
                foreach (var entry in Enumerable.Reverse(moved))
                    heir.SectionSlideIdList!.PrependChild(entry);
        }
        section.Remove();
        if (!list.Elements<P14.Section>().Any())
            DropList(root, list);
    }

    // A new or moved slide joins the section of the slide before it (the first section at the start).
    internal static void Place(P.Presentation root, uint slideId, uint? previousSlideId)
    {
        if (Find(root) is not { } list)
            return;
        RemoveSlide(list, slideId);
        var sections = list.Elements<P14.Section>().ToList();
        if (sections.Count == 0)
            return;
        var entry = new P14.SectionSlideIdListEntry { Id = slideId };
        if (previousSlideId is uint prev && sections.FirstOrDefault(s => SlideIds(s).Contains(prev)) is { } holder)
        {
            var after = holder.SectionSlideIdList!.Elements<P14.SectionSlideIdListEntry>().First(e => e.Id?.Value == prev);
            holder.SectionSlideIdList.InsertAfter(entry, after);
        }
        else
        {
            var first = sections[0];
            first.SectionSlideIdList ??= new P14.SectionSlideIdList();
            first.SectionSlideIdList.PrependChild(entry);
        }
    }

    internal static void RemoveSlide(P14.SectionList list, uint slideId)
    {
        foreach (var entry in list.Descendants<P14.SectionSlideIdListEntry>().Where(e => e.Id?.Value == slideId).ToList())
            entry.Remove();
    }

    private static void DropList(P.Presentation root, P14.SectionList list)
    {
        var ext = list.Parent;
        ext?.Remove();
        if (root.PresentationExtensionList is { } exts && !exts.HasChildren)
            exts.Remove();
    }
}
