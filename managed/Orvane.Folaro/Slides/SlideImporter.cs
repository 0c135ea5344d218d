using System.Collections.Generic;
using System.IO;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

// Copies a slide from another presentation. The slide's layout is matched against the
// target's layouts (same layout and master content, same theme) and reused when one is equal;
// otherwise the source master comes along with all its layouts and its theme. Pictures, charts,
// embedded objects and other parts the slide uses are copied with it (the SDK copies a part of
// another package with its own children), pictures and media only when the target does not
// already hold the same bytes; the notes page is copied onto the target's notes
// master, which is brought along if the target has none.
internal static class SlideImporter
{
    internal static SlidePart Import(PresentationPart target, SlidePart source)
    {
        var layout = LayoutFor(target, source.SlideLayoutPart
            ?? throw new PptxEditException($"part '{source.Uri}': the slide to clone has no layout"));
        var media = DocumentState.Of(target).Media;
        var copy = target.AddNewPart<SlidePart>();
        copy.Slide = (P.Slide)source.Slide.CloneNode(true);
        foreach (var pair in source.Parts.ToList())
        {
            switch (pair.OpenXmlPart)
            {
                case SlideLayoutPart:
                    copy.AddPart(layout, pair.RelationshipId);
                    break;
                case NotesSlidePart notes:
                    ImportNotes(target, notes, copy, pair.RelationshipId, media);
                    break;
                case ImagePart image:
                    media.ImportImage(copy, image, pair.RelationshipId);
                    break;
                case SlidePart:
                    // A jump to another slide of the source deck has nowhere to point here.
                    DropLinks(copy.Slide, pair.RelationshipId);
                    break;
                case SlideCommentsPart comments:
                    CommentCopier.Copy(comments, copy, pair.RelationshipId);
                    break;
                case PowerPointCommentPart:
                    // Threaded comments name their slide and authors by ids of the source deck.
                    break;
                default:
                    CopyPart(copy, pair.OpenXmlPart, pair.RelationshipId);
                    break;
            }
        }
        CopyLinks(source, copy, media);
        return copy;
    }

    // A part of the other package is copied from its stream, with its children: edits still
    // held in their loaded XML are written there first.
    private static T CopyPart<T>(OpenXmlPartContainer into, T part, string? relId = null) where T : OpenXmlPart
    {
        FlushLoaded(part);
        return relId == null ? into.AddPart(part) : into.AddPart(part, relId);
    }

    private static void FlushLoaded(OpenXmlPart part, HashSet<OpenXmlPart>? seen = null)
    {
        seen ??= new HashSet<OpenXmlPart>();
        if (!seen.Add(part))
            return;
        if (part.IsRootElementLoaded)
            part.RootElement!.Save();
        foreach (var child in part.Parts)
            FlushLoaded(child.OpenXmlPart, seen);
    }

    private static SlideLayoutPart LayoutFor(PresentationPart target, SlideLayoutPart sourceLayout)
    {
        var sourceMaster = sourceLayout.SlideMasterPart
            ?? throw new PptxEditException($"part '{sourceLayout.Uri}': the layout has no master");
        foreach (var master in target.SlideMasterParts)
        {
            if (!SameMaster(master, sourceMaster))
                continue;
            var layout = master.SlideLayoutParts.FirstOrDefault(l => Same(l.SlideLayout, sourceLayout.SlideLayout));
            if (layout != null)
                return layout;
        }
        var imported = ImportMaster(target, sourceMaster);
        var relId = sourceMaster.GetIdOfPart(sourceLayout);
        return (SlideLayoutPart)imported.GetPartById(relId);
    }

    private static bool SameMaster(SlideMasterPart a, SlideMasterPart b) =>
        Same(a.SlideMaster.CommonSlideData, b.SlideMaster.CommonSlideData) &&
        Same(a.SlideMaster.ColorMap, b.SlideMaster.ColorMap) &&
        Same(a.SlideMaster.TextStyles, b.SlideMaster.TextStyles) &&
        Same(a.ThemePart?.Theme, b.ThemePart?.Theme);

    private static bool Same(OpenXmlElement? a, OpenXmlElement? b) => (a?.OuterXml ?? "") == (b?.OuterXml ?? "");

    private static SlideMasterPart ImportMaster(PresentationPart target, SlideMasterPart source)
    {
        var master = CopyPart(target, source);
        var root = target.Presentation;
        uint next = SlideParts.NewLayoutId(target);
        root.SlideMasterIdList ??= new P.SlideMasterIdList();
        root.SlideMasterIdList.AppendChild(new P.SlideMasterId { Id = next++, RelationshipId = target.GetIdOfPart(master) });
        foreach (var entry in master.SlideMaster.SlideLayoutIdList?.Elements<P.SlideLayoutId>() ?? Enumerable.Empty<P.SlideLayoutId>())
            entry.Id = next++;
        return master;
    }

    private static void ImportNotes(PresentationPart target, NotesSlidePart source, SlidePart newSlide, string relId, MediaStore media)
    {
        var notesMaster = target.NotesMasterPart;
        if (notesMaster == null && source.NotesMasterPart is { } sourceMaster)
        {
            notesMaster = CopyPart(target, sourceMaster);
            target.Presentation.NotesMasterIdList = new P.NotesMasterIdList(new P.NotesMasterId { Id = target.GetIdOfPart(notesMaster) });
        }
        var copy = newSlide.AddNewPart<NotesSlidePart>(relId);
        copy.NotesSlide = (P.NotesSlide)source.NotesSlide.CloneNode(true);
        foreach (var pair in source.Parts.ToList())
        {
            switch (pair.OpenXmlPart)
            {
                case NotesMasterPart:
                    if (notesMaster != null)
                        copy.AddPart(notesMaster, pair.RelationshipId);
                    break;
                case SlidePart:
                    copy.AddPart(newSlide, pair.RelationshipId);
                    break;
                case ImagePart image:
                    media.ImportImage(copy, image, pair.RelationshipId);
                    break;
                default:
                    CopyPart(copy, pair.OpenXmlPart, pair.RelationshipId);
                    break;
            }
        }
        CopyLinks(source, copy, media);
    }

    private static void DropLinks(OpenXmlElement root, string relId)
    {
        const string R = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
        foreach (var link in root.Descendants().Where(e => e.LocalName is "hlinkClick" or "hlinkHover").ToList())
        {
            if (link.GetAttributes().Any(a => a.NamespaceUri == R && a.LocalName == "id" && a.Value == relId))
                link.Remove();
        }
    }

    // Hyperlinks and external targets keep their ids; media referenced by data-part
    // relationships are copied into the target package unless it holds the same bytes.
    private static void CopyLinks(OpenXmlPart source, OpenXmlPart target, MediaStore media)
    {
        foreach (var link in source.HyperlinkRelationships)
            target.AddHyperlinkRelationship(link.Uri, link.IsExternal, link.Id);
        foreach (var ext in source.ExternalRelationships)
            target.AddExternalRelationship(ext.RelationshipType, ext.Uri, ext.Id);
        if (target is not SlidePart slide)
            return;
        foreach (var reference in source.DataPartReferenceRelationships)
        {
            var data = media.ImportMedia(reference.DataPart);
            switch (reference)
            {
                case AudioReferenceRelationship:
                    slide.AddAudioReferenceRelationship(data, reference.Id);
                    break;
                case VideoReferenceRelationship:
                    slide.AddVideoReferenceRelationship(data, reference.Id);
                    break;
                default:
                    slide.AddMediaReferenceRelationship(data, reference.Id);
                    break;
            }
        }
    }
}
