using System;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using P = DocumentFormat.OpenXml.Presentation;
using P14 = DocumentFormat.OpenXml.Office2010.PowerPoint;

namespace Orvane.Folaro;

// Adding and removing slides at the package level, keeping every list that names a slide
// (slide id list, custom shows, sections) consistent.
internal static class SlideParts
{
    internal const uint MinSlideId = 256;
    internal const uint MaxSlideId = 2147483647;

    internal static P.SlideIdList EnsureSlideIdList(P.Presentation root)
    {
        if (root.SlideIdList is { } list)
            return list;
        list = new P.SlideIdList();
        // The list goes right after the notes/handout master lists or the master list.
        OpenXmlElement? anchor = (OpenXmlElement?)root.HandoutMasterIdList ?? (OpenXmlElement?)root.NotesMasterIdList ?? root.SlideMasterIdList;
        if (anchor != null)
            root.InsertAfter(list, anchor);
        else
            root.PrependChild(list);
        return list;
    }

    internal static uint NewSlideId(P.Presentation root)
    {
        var used = new HashSet<uint>(root.SlideIdList?.Elements<P.SlideId>().Select(s => s.Id?.Value ?? 0) ?? Enumerable.Empty<uint>());
        uint next = used.Count == 0 ? MinSlideId : Math.Max(MinSlideId, used.Max() + 1);
        if (next <= MaxSlideId && next >= MinSlideId)
            return next;
        for (uint id = MinSlideId; id <= MaxSlideId; id++)
            if (!used.Contains(id))
                return id;
        throw new PptxEditException("No slide id is left to give to a new slide");
    }

    // Master and layout ids share one range (from 2^31) and must not repeat within the presentation.
    internal static uint NewLayoutId(PresentationPart pres)
    {
        var used = new List<uint>();
        used.AddRange(pres.Presentation.SlideMasterIdList?.Elements<P.SlideMasterId>().Select(m => m.Id?.Value ?? 0) ?? Enumerable.Empty<uint>());
        foreach (var master in pres.SlideMasterParts)
            used.AddRange(master.SlideMaster.SlideLayoutIdList?.Elements<P.SlideLayoutId>().Select(l => l.Id?.Value ?? 0) ?? Enumerable.Empty<uint>());
        uint next = used.Count == 0 ? PresentationTemplate.FirstMasterId : Math.Max(PresentationTemplate.FirstMasterId, used.Max() + 1);
        if (next < PresentationTemplate.FirstMasterId)
            throw new PptxEditException("No master or layout id is left to give to a new layout");
        return next;
    }

    internal static void Remove(PresentationPart pres, P.SlideId entry)
    {
        var root = pres.Presentation;
        string relId = entry.RelationshipId?.Value ?? "";
        uint id = entry.Id?.Value ?? 0;
        entry.Remove();
        if (root.CustomShowList is { } shows)
        {
            foreach (var sld in shows.Descendants<P.SlideListEntry>().Where(s => s.Id?.Value == relId).ToList())
                sld.Remove();
        }
        // Sections (an extension list of the presentation) name slides by id.
        foreach (var sectionSlide in root.Descendants<P14.SectionSlideIdListEntry>().ToList())
        {
            if (sectionSlide.GetAttributes().Any(a => a.LocalName == "id" && a.Value == id.ToString(System.Globalization.CultureInfo.InvariantCulture)))
                sectionSlide.Remove();
        }
        if (relId.Length > 0 && pres.TryGetPartById(relId, out var part))
            pres.DeletePart(part);
    }

    internal static void KeepOnly(PresentationPart pres, HashSet<int> keep)
    {
        var entries = pres.Presentation.SlideIdList?.Elements<P.SlideId>().ToList() ?? new List<P.SlideId>();
        for (int i = 0; i < entries.Count; i++)
            if (!keep.Contains(i))
                Remove(pres, entries[i]);
    }
}
