using System;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using A = DocumentFormat.OpenXml.Drawing;
using M = DocumentFormat.OpenXml.Office2021.PowerPoint.Comment;
using P = DocumentFormat.OpenXml.Presentation;
using P15 = DocumentFormat.OpenXml.Office2013.PowerPoint;

namespace Orvane.Folaro;

// The two comment forms of a package. Classic: authors in commentAuthors.xml (numeric ids),
// one comments part per slide, replies marked by a threading extension naming the parent's
// author id and index. Threaded: authors in authors.xml (GUID ids), one part per slide with
// replies nested in their parent. Both are read; new comments are written in the classic form
// (a reply to a threaded comment is necessarily threaded).
internal static class CommentStore
{
    internal const string ThreadingUri = "{C676402C-5697-4E1C-873F-D02D1690AC5C}";

    // --- authors ---------------------------------------------------------------------

    internal static List<CommentAuthor> Authors(Presentation owner)
    {
        var result = new List<CommentAuthor>();
        var modern = ModernAuthors(owner).ToList();
        foreach (var legacy in LegacyAuthors(owner))
        {
            var twin = modern.FirstOrDefault(m => m.Name?.Value == legacy.Name?.Value);
            if (twin != null)
                modern.Remove(twin);
            var view = owner.ElementView(legacy, () => new CommentAuthor(owner, legacy, twin));
            if (twin != null)
                owner.AliasElementView(twin, view);
            result.Add(view);
        }
        foreach (var m in modern)
            result.Add(owner.ElementView(m, () => new CommentAuthor(owner, null, m)));
        return result;
    }

    internal static IEnumerable<P.CommentAuthor> LegacyAuthors(Presentation owner) => LegacyAuthors(owner.PresentationPart);

    internal static IEnumerable<P.CommentAuthor> LegacyAuthors(PresentationPart pres) =>
        pres.CommentAuthorsPart?.CommentAuthorList?.Elements<P.CommentAuthor>() ?? Enumerable.Empty<P.CommentAuthor>();

    internal static IEnumerable<M.Author> ModernAuthors(Presentation owner) =>
        owner.PresentationPart.GetPartsOfType<PowerPointAuthorsPart>()
            .SelectMany(p => p.AuthorList?.Elements<M.Author>() ?? Enumerable.Empty<M.Author>());

    internal static CommentAuthor AuthorOf(Presentation owner, OpenXmlElement comment)
    {
        var authors = Authors(owner);
        CommentAuthor? found = comment switch
        {
            P.Comment c => authors.FirstOrDefault(a => a.Legacy?.Id?.Value == c.AuthorId?.Value),
            M.Comment c => authors.FirstOrDefault(a => SameGuid(a.Modern?.Id?.Value, c.AuthorId?.Value)),
            M.CommentReply r => authors.FirstOrDefault(a => SameGuid(a.Modern?.Id?.Value, r.AuthorId?.Value)),
            _ => null,
        };
        return found ?? throw new PptxReadException($"{owner.Origin}: a comment names an author that is not in the author list");
    }

    private static bool SameGuid(string? a, string? b) => a != null && b != null && string.Equals(a, b, StringComparison.OrdinalIgnoreCase);

    internal static P.CommentAuthor NewLegacyAuthor(Presentation owner, string name, string initials) =>
        NewLegacyAuthor(owner.PresentationPart, name, initials);

    internal static P.CommentAuthor NewLegacyAuthor(PresentationPart pres, string name, string initials)
    {
        var part = pres.CommentAuthorsPart ?? pres.AddNewPart<CommentAuthorsPart>();
        part.CommentAuthorList ??= new P.CommentAuthorList();
        var list = part.CommentAuthorList;
        var authors = list.Elements<P.CommentAuthor>().ToList();
        uint id = authors.Count == 0 ? 0 : authors.Max(a => a.Id?.Value ?? 0) + 1;
        // Colour indices cycle through the eight the format's readers know.
        var element = new P.CommentAuthor { Id = id, Name = name, Initials = initials, LastIndex = 0, ColorIndex = id % 8 };
        list.AppendChild(element);
        return element;
    }

    internal static M.Author NewModernAuthor(Presentation owner, string name, string initials)
    {
        var pres = owner.PresentationPart;
        var part = pres.GetPartsOfType<PowerPointAuthorsPart>().FirstOrDefault() ?? pres.AddNewPart<PowerPointAuthorsPart>();
        part.AuthorList ??= new M.AuthorList();
        var element = new M.Author { Id = NewGuid(), Name = name, Initials = initials, UserId = name, ProviderId = "None" };
        part.AuthorList.AppendChild(element);
        return element;
    }

    internal static string NewGuid() => "{" + Guid.NewGuid().ToString().ToUpperInvariant() + "}";

    internal static void RemoveAuthor(CommentAuthor author)
    {
        foreach (var comment in AllComments(author.Owner).Where(c => ReferenceEquals(c.Author, author)).ToList())
            if (comment.Element.Parent != null)
                comment.Remove();
        author.Legacy?.Remove();
        author.Modern?.Remove();
    }

    // --- comments --------------------------------------------------------------------

    /// <summary>Every comment of every slide, in deck order.</summary>
    internal static List<Comment> AllComments(Presentation owner) =>
        owner.SlideList.Cast<Slide>().SelectMany(SlideComments).ToList();

    /// <summary>The classic comments of a slide in part order, then each threaded comment followed by its replies.</summary>
    internal static List<Comment> SlideComments(Slide slide)
    {
        var result = new List<Comment>();
        var owner = slide.Owner;
        foreach (var part in slide.Part.GetPartsOfType<SlideCommentsPart>())
            foreach (var c in part.CommentList?.Elements<P.Comment>() ?? Enumerable.Empty<P.Comment>())
                result.Add(View(slide, c));
        foreach (var part in slide.Part.GetPartsOfType<PowerPointCommentPart>())
        {
            foreach (var c in part.CommentList?.Elements<M.Comment>() ?? Enumerable.Empty<M.Comment>())
            {
                result.Add(View(slide, c));
                foreach (var reply in c.GetFirstChild<M.CommentReplyList>()?.Elements<M.CommentReply>() ?? Enumerable.Empty<M.CommentReply>())
                    result.Add(View(slide, reply));
            }
        }
        return result;
    }

    internal static Comment View(Slide slide, OpenXmlElement element) =>
        slide.Owner.ElementView(element, () => new Comment(slide, element));

    internal static Comment AddLegacy(CommentAuthor author, Slide slide, string text, long x8, long y8, DateTime created, P.Comment? parent)
    {
        var legacyAuthor = author.EnsureLegacy();
        uint authorId = legacyAuthor.Id?.Value ?? 0;
        uint index = NextLegacyIndex(author.Owner.PresentationPart, legacyAuthor);
        var part = slide.Part.GetPartsOfType<SlideCommentsPart>().FirstOrDefault() ?? slide.Part.AddNewPart<SlideCommentsPart>();
        part.CommentList ??= new P.CommentList();
        var element = new P.Comment
        {
            AuthorId = authorId,
            Index = index,
            DateTime = created,
            Position = new P.Position { X = x8, Y = y8 },
            Text = new P.Text(text),
        };
        if (parent != null)
        {
            element.CommentExtensionList = new P.CommentExtensionList(
                new P.CommentExtension(
                    new P15.ThreadingInfo(new P15.ParentCommentIdentifier { AuthorId = parent.AuthorId?.Value ?? 0, Index = parent.Index?.Value ?? 0 })
                    {
                        TimeZoneBias = 0,
                    })
                { Uri = ThreadingUri });
        }
        part.CommentList.AppendChild(element);
        return View(slide, element);
    }

    /// <summary>
    /// An index new for the author across the deck, which a classic comment needs; the author's
    /// lastIdx records the highest used and is moved on.
    /// </summary>
    internal static uint NextLegacyIndex(PresentationPart pres, P.CommentAuthor author)
    {
        uint used = LegacyAuthorIndices(pres, author.Id?.Value ?? 0).DefaultIfEmpty(0u).Max();
        uint index = Math.Max(used, author.LastIndex?.Value ?? 0) + 1;
        author.LastIndex = index;
        return index;
    }

    private static IEnumerable<uint> LegacyAuthorIndices(PresentationPart pres, uint authorId) =>
        pres.SlideParts.SelectMany(s => s.GetPartsOfType<SlideCommentsPart>())
            .SelectMany(p => p.CommentList?.Elements<P.Comment>() ?? Enumerable.Empty<P.Comment>())
            .Where(c => c.AuthorId?.Value == authorId)
            .Select(c => c.Index?.Value ?? 0);

    internal static Comment AddModernReply(CommentAuthor author, Slide slide, M.Comment parent, string text, DateTime created)
    {
        var authorId = author.EnsureModern().Id?.Value;
        var list = parent.GetFirstChild<M.CommentReplyList>();
        if (list == null)
        {
            list = new M.CommentReplyList();
            // Replies come before the parent's own text body.
            var body = parent.GetFirstChild<M.TextBodyType>();
            if (body != null)
                parent.InsertBefore(list, body);
            else
                parent.AppendChild(list);
        }
        var reply = new M.CommentReply { Id = NewGuid(), AuthorId = authorId, Created = created };
        reply.AppendChild(ModernBody(text));
        list.AppendChild(reply);
        return View(slide, reply);
    }

    internal static M.TextBodyType ModernBody(string text)
    {
        var body = new M.TextBodyType(new A.BodyProperties(), new A.ListStyle());
        foreach (var line in SplitLines(text))
            body.AppendChild(new A.Paragraph(new A.Run(new A.Text(line))));
        return body;
    }

    internal static string[] SplitLines(string text) => text.Replace("\r\n", "\n").Split('\n', '\r', '\v');

    /// <summary>Classic replies mark their parent with a threading extension.</summary>
    internal static P15.ParentCommentIdentifier? LegacyParentMark(P.Comment comment) =>
        comment.CommentExtensionList?.Descendants<P15.ParentCommentIdentifier>().FirstOrDefault();

    internal static bool IsLegacyReplyOf(P.Comment reply, P.Comment parent) =>
        LegacyParentMark(reply) is { } mark && mark.AuthorId?.Value == parent.AuthorId?.Value && mark.Index?.Value == parent.Index?.Value;

    /// <summary>Drops comment parts that no longer hold a comment.</summary>
    internal static void DropEmptyParts(Slide slide)
    {
        foreach (var part in slide.Part.GetPartsOfType<SlideCommentsPart>().ToList())
            if (part.CommentList != null && !part.CommentList.Elements<P.Comment>().Any())
                slide.Part.DeletePart(part);
        foreach (var part in slide.Part.GetPartsOfType<PowerPointCommentPart>().ToList())
            if (part.CommentList != null && !part.CommentList.Elements<M.Comment>().Any())
                slide.Part.DeletePart(part);
    }
}
