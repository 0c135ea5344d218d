using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using P = DocumentFormat.OpenXml.Presentation;
using P15 = DocumentFormat.OpenXml.Office2013.PowerPoint;

namespace Orvane.Folaro;

// Copies a slide's classic comments onto a copy of the slide, in the same deck or another.
// The copies get indices new for their authors (replies follow their parents' new ones);
// in another deck the authors are found by name and initials, or added to its author list.
internal static class CommentCopier
{
    internal static void Copy(SlideCommentsPart source, SlidePart target, string relId)
    {
        var sourcePres = ((PresentationDocument)source.OpenXmlPackage).PresentationPart!;
        var targetPres = ((PresentationDocument)target.OpenXmlPackage).PresentationPart!;
        var list = (P.CommentList?)source.CommentList?.CloneNode(true) ?? new P.CommentList();
        // Attached before renumbering, so that the deck-wide index search sees the copies too.
        target.AddNewPart<SlideCommentsPart>(relId).CommentList = list;
        var sourceAuthors = CommentStore.LegacyAuthors(sourcePres).ToList();
        var renumbered = new Dictionary<(uint, uint), (uint Author, uint Index)>();
        foreach (var comment in list.Elements<P.Comment>())
        {
            var key = (comment.AuthorId?.Value ?? 0, comment.Index?.Value ?? 0);
            var author = sourceAuthors.FirstOrDefault(a => a.Id?.Value == key.Item1);
            if (author == null)
                continue;  // a comment of an unlisted author is kept as it is
            if (sourcePres != targetPres)
                author = AuthorIn(targetPres, author);
            comment.AuthorId = author.Id?.Value ?? 0;
            comment.Index = CommentStore.NextLegacyIndex(targetPres, author);
            renumbered[key] = (comment.AuthorId.Value, comment.Index.Value);
        }
        foreach (var mark in list.Descendants<P15.ParentCommentIdentifier>())
        {
            if (renumbered.TryGetValue((mark.AuthorId?.Value ?? 0, mark.Index?.Value ?? 0), out var parent))
            {
                mark.AuthorId = parent.Author;
                mark.Index = parent.Index;
            }
        }
    }

    // The author of the same name and initials in the target deck, added when it has none.
    private static P.CommentAuthor AuthorIn(PresentationPart target, P.CommentAuthor source)
    {
        string name = source.Name?.Value ?? "", initials = source.Initials?.Value ?? "";
        return CommentStore.LegacyAuthors(target).FirstOrDefault(a => a.Name?.Value == name && a.Initials?.Value == initials)
            ?? CommentStore.NewLegacyAuthor(target, name, initials);
    }
}
