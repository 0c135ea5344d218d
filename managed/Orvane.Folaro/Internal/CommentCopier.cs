using System;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using P = DocumentFormat.OpenXml.Presentation;
using P15 = DocumentFormat.OpenXml.Office2013.PowerPoint;

namespace Orvane.Folaro.Internal;

// Copies a slide's classic comments onto a copy of the slide, in the same deck or another.
// A classic comment is known by its author's id and an index new for that author across the
// deck: the copies get fresh indices and replies follow their parents' new ones. In another
// deck the authors are found by name and initials, or added to its author list.
internal static class CommentCopier
{
    internal static void Copy(SlideCommentsPart source, SlidePart target, string relId)
    {
        var sourcePres = ((PresentationDocument)source.OpenXmlPackage).PresentationPart!;
        var targetPres = ((PresentationDocument)target.OpenXmlPackage).PresentationPart!;
        var list = (P.CommentList?)source.CommentList?.CloneNode(true) ?? new P.CommentList();
        var sourceAuthors = Authors(sourcePres);
        var used = targetPres.SlideParts.SelectMany(s => s.GetPartsOfType<SlideCommentsPart>())
            .SelectMany(p => p.CommentList?.Elements<P.Comment>() ?? Enumerable.Empty<P.Comment>())
            .GroupBy(c => c.AuthorId?.Value ?? 0)
            .ToDictionary(g => g.Key, g => g.Max(c => c.Index?.Value ?? 0));
        var renumbered = new Dictionary<(uint, uint), (uint Author, uint Index)>();
        foreach (var comment in list.Elements<P.Comment>())
        {
            uint oldAuthor = comment.AuthorId?.Value ?? 0;
            var author = sourcePres == targetPres
                ? sourceAuthors.GetValueOrDefault(oldAuthor)
                : AuthorIn(targetPres, sourceAuthors.GetValueOrDefault(oldAuthor));
            uint authorId = author?.Id?.Value ?? oldAuthor;
            uint index = Math.Max(used.GetValueOrDefault(authorId), author?.LastIndex?.Value ?? 0) + 1;
            renumbered[(oldAuthor, comment.Index?.Value ?? 0)] = (authorId, index);
            comment.AuthorId = authorId;
            comment.Index = index;
            used[authorId] = index;
            if (author != null)
                author.LastIndex = index;
        }
        foreach (var mark in list.Descendants<P15.ParentCommentIdentifier>())
        {
            if (renumbered.TryGetValue((mark.AuthorId?.Value ?? 0, mark.Index?.Value ?? 0), out var parent))
            {
                mark.AuthorId = parent.Author;
                mark.Index = parent.Index;
            }
        }
        target.AddNewPart<SlideCommentsPart>(relId).CommentList = list;
    }

    private static Dictionary<uint, P.CommentAuthor> Authors(PresentationPart pres) =>
        pres.CommentAuthorsPart?.CommentAuthorList?.Elements<P.CommentAuthor>()
            .Where(a => a.Id?.Value != null)
            .GroupBy(a => a.Id!.Value)
            .ToDictionary(g => g.Key, g => g.First()) ?? new Dictionary<uint, P.CommentAuthor>();

    // The author of the same name and initials in the target deck, added when it has none.
    private static P.CommentAuthor? AuthorIn(PresentationPart target, P.CommentAuthor? source)
    {
        if (source == null)
            return null;
        string name = source.Name?.Value ?? "", initials = source.Initials?.Value ?? "";
        return Authors(target).Values.FirstOrDefault(a => a.Name?.Value == name && a.Initials?.Value == initials)
            ?? CommentStore.NewLegacyAuthor(target, name, initials);
    }
}
