using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

// Copies a slide within its own presentation. The copy keeps the relationship ids of the
// source, so every r:id in the cloned XML still points at the right target. Layout, media
// and other shared parts are referenced, not copied; notes slides, charts, the theme
// override and classic comments are copied, since those belong to exactly one slide and
// are edited through it. Threaded comments name their slide and carry ids of their own;
// the copy starts without them rather than share the source's.
internal static class SlideCloner
{
    internal static SlidePart CloneWithin(PresentationPart pres, SlidePart source)
    {
        var copy = pres.AddNewPart<SlidePart>();
        copy.Slide = (P.Slide)source.Slide.CloneNode(true);
        foreach (var pair in source.Parts.ToList())
        {
            switch (pair.OpenXmlPart)
            {
                case NotesSlidePart notes:
                    CloneNotes(notes, copy, pair.RelationshipId);
                    break;
                case ChartPart chart:
                    CopyDeep(chart, copy.AddNewPart<ChartPart>(pair.RelationshipId));
                    break;
                case ThemeOverridePart theme:
                    CopyDeep(theme, copy.AddNewPart<ThemeOverridePart>(pair.RelationshipId));
                    break;
                case SlideCommentsPart comments:
                    CommentCopier.Copy(comments, copy, pair.RelationshipId);
                    break;
                case PowerPointCommentPart:
                    break;
                default:
                    copy.AddPart(pair.OpenXmlPart, pair.RelationshipId);
                    break;
            }
        }
        CopyExternal(source, copy);
        return copy;
    }

    private static void CloneNotes(NotesSlidePart notes, SlidePart newSlide, string relId)
    {
        var copy = newSlide.AddNewPart<NotesSlidePart>(relId);
        copy.NotesSlide = (P.NotesSlide)notes.NotesSlide.CloneNode(true);
        foreach (var pair in notes.Parts.ToList())
        {
            // The notes slide points back at its slide: that link goes to the new slide.
            if (pair.OpenXmlPart is SlidePart)
                copy.AddPart(newSlide, pair.RelationshipId);
            else
                copy.AddPart(pair.OpenXmlPart, pair.RelationshipId);
        }
        CopyExternal(notes, copy);
    }

    // Byte copy of a part's content (saving its DOM first, if loaded), sharing its children.
    private static void CopyDeep(OpenXmlPart source, OpenXmlPart target)
    {
        if (source.IsRootElementLoaded)
            source.RootElement!.Save();
        using (var stream = source.GetStream())
            target.FeedData(stream);
        foreach (var pair in source.Parts.ToList())
        {
            if (pair.OpenXmlPart is EmbeddedPackagePart embedded)
            {
                var newEmbedded = ((ChartPart)target).AddEmbeddedPackagePart(embedded.ContentType);
                using var data = embedded.GetStream();
                newEmbedded.FeedData(data);
                // Keep the original id: the chart's externalData r:id names it.
                ((ChartPart)target).ChangeIdOfPart(newEmbedded, pair.RelationshipId);
            }
            else
            {
                target.AddPart(pair.OpenXmlPart, pair.RelationshipId);
            }
        }
        CopyExternal(source, target);
    }

    private static void CopyExternal(OpenXmlPart source, OpenXmlPart target)
    {
        foreach (var link in source.HyperlinkRelationships)
            target.AddHyperlinkRelationship(link.Uri, link.IsExternal, link.Id);
        foreach (var ext in source.ExternalRelationships)
            target.AddExternalRelationship(ext.RelationshipType, ext.Uri, ext.Id);
        foreach (var data in source.DataPartReferenceRelationships)
        {
            switch (data)
            {
                case AudioReferenceRelationship audio:
                    ((SlidePart)target).AddAudioReferenceRelationship((MediaDataPart)audio.DataPart, audio.Id);
                    break;
                case VideoReferenceRelationship video:
                    ((SlidePart)target).AddVideoReferenceRelationship((MediaDataPart)video.DataPart, video.Id);
                    break;
                case MediaReferenceRelationship media:
                    ((SlidePart)target).AddMediaReferenceRelationship((MediaDataPart)media.DataPart, media.Id);
                    break;
            }
        }
    }
}
