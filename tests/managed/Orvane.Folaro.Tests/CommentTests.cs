using System;
using System.IO;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using Orvane.Marel;
using Xunit;
using A = DocumentFormat.OpenXml.Drawing;
using M = DocumentFormat.OpenXml.Office2021.PowerPoint.Comment;

namespace Orvane.Folaro.Tests;

public class CommentTests
{
    private static readonly DateTime When = new(2026, 3, 4, 10, 30, 0);

    private static IPresentation Reload(IPresentation pres) => new Presentation(new MemoryStream(TestFiles.SaveToBytes(pres)));

    private static IPresentation DeckWithSlides(int count)
    {
        IPresentation pres = new Presentation();
        for (int i = 0; i < count; i++)
            pres.Slides.AddEmptySlide(pres.LayoutSlides[0]);
        return pres;
    }

    [Fact]
    public void CommentsAndRepliesAreWrittenAndReadBack()
    {
        using var pres = DeckWithSlides(2);
        var ana = pres.CommentAuthors.AddAuthor("Ana Lima", "AL");
        var bo = pres.CommentAuthors.AddAuthor("Bo Berg", "BB");
        var first = ana.Comments.AddComment("Check the title", pres.Slides[1], new PointF(100.5f, 40f), When);
        var reply = first.AddReply(bo, "Done", When.AddMinutes(5));
        ana.Comments.AddComment("Intro", pres.Slides[0], new PointF(10f, 10f), When);
        Assert.Same(first, reply.ParentComment);
        Assert.Equal(new[] { "Intro", "Check the title" }, ana.Comments.Select(c => c.Text));
        Assert.Equal(new[] { "Done" }, bo.Comments.Select(c => c.Text));

        using var back = Reload(pres);
        var slide = back.Slides[1];
        var all = slide.GetSlideComments(null);
        Assert.Equal(new[] { "Check the title", "Done" }, all.Select(c => c.Text));
        var backBo = back.CommentAuthors.FindByName("Bo Berg")!;
        Assert.Equal(new[] { "Done" }, slide.GetSlideComments(backBo).Select(c => c.Text));
        Assert.Same(all[0], all[1].ParentComment);
        Assert.Same(all[1], Assert.Single(all[0].GetReplies()));
        Assert.Null(all[0].ParentComment);
        Assert.Equal("Ana Lima", all[0].Author.Name);
        Assert.Same(slide, all[0].Slide);
        Assert.Equal(new PointF(100.5f, 40f), all[0].Position);
        Assert.Equal(all[0].Position, all[1].Position);
        Assert.Equal(When, all[0].CreatedTime);
        Assert.Equal(When.AddMinutes(5), all[1].CreatedTime);
        Assert.False(all[0].IsThreaded);
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(back));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void IndicesStayUniquePerAuthorAcrossSlidesAndRemovals()
    {
        using var pres = DeckWithSlides(2);
        var ana = pres.CommentAuthors.AddAuthor("Ana", "A");
        ana.Comments.AddComment("a", pres.Slides[0], default, When);
        var b = ana.Comments.AddComment("b", pres.Slides[1], default, When);
        b.Remove();
        var c = ana.Comments.AddComment("c", pres.Slides[1], default, When);
        var d = c.AddReply(ana, "d", When);
        // A reply found again after reload must still point at c, not at the removed b.
        using var back = Reload(pres);
        var comments = back.Slides[1].GetSlideComments(null);
        Assert.Equal(new[] { "c", "d" }, comments.Select(x => x.Text));
        Assert.Same(comments[0], comments[1].ParentComment);
        Assert.Equal(3, back.CommentAuthors[0].Comments.Count);
    }

    [Fact]
    public void RemovingACommentTakesItsRepliesAndEmptyPartsWithIt()
    {
        using var pres = DeckWithSlides(1);
        var ana = pres.CommentAuthors.AddAuthor("Ana", "A");
        var bo = pres.CommentAuthors.AddAuthor("Bo", "B");
        var top = ana.Comments.AddComment("top", pres.Slides[0], default, When);
        var r1 = top.AddReply(bo, "r1", When);
        r1.AddReply(ana, "r2", When);
        Assert.Equal(3, pres.Slides[0].GetSlideComments(null).Length);
        ana.Comments.Remove(top);
        Assert.Empty(pres.Slides[0].GetSlideComments(null));
        Assert.Equal(0, bo.Comments.Count);
        Assert.Throws<PptxEditException>(() => top.Text = "again");
        Assert.Throws<ArgumentException>(() => ana.Comments.Remove(top));
        var names = TestFiles.PartNames(TestFiles.SaveToBytes(pres));
        Assert.DoesNotContain(names, n => n.StartsWith("ppt/comments/", StringComparison.Ordinal));
    }

    [Fact]
    public void RemovingAnAuthorRemovesTheirComments()
    {
        using var pres = DeckWithSlides(1);
        var ana = pres.CommentAuthors.AddAuthor("Ana", "A");
        var bo = pres.CommentAuthors.AddAuthor("Bo", "B");
        ana.Comments.AddComment("by ana", pres.Slides[0], default, When);
        bo.Comments.AddComment("by bo", pres.Slides[0], default, When);
        pres.CommentAuthors.Remove(ana);
        Assert.Equal(new[] { "by bo" }, pres.Slides[0].GetSlideComments(null).Select(c => c.Text));
        Assert.Throws<PptxEditException>(() => ana.Comments.AddComment("x", pres.Slides[0], default, When));
        pres.CommentAuthors.Clear();
        Assert.Equal(0, pres.CommentAuthors.Count);
        Assert.Empty(pres.Slides[0].GetSlideComments(null));
    }

    [Fact]
    public void BadArgumentsAreRejected()
    {
        using var pres = DeckWithSlides(1);
        using var other = DeckWithSlides(1);
        var ana = pres.CommentAuthors.AddAuthor("Ana", "A");
        var stranger = other.CommentAuthors.AddAuthor("Cy", "C");
        Assert.Throws<ArgumentException>(() => ana.Comments.AddComment("x", other.Slides[0], default, When));
        Assert.Throws<ArgumentNullException>(() => ana.Comments.AddComment(null!, pres.Slides[0], default, When));
        Assert.Throws<ArgumentOutOfRangeException>(() => ana.Comments.AddComment("x", pres.Slides[0], new PointF(float.NaN, 0), When));
        var c = ana.Comments.AddComment("x", pres.Slides[0], default, When);
        Assert.Throws<ArgumentException>(() => c.AddReply(stranger, "y", When));
        Assert.Throws<ArgumentOutOfRangeException>(() => ana.Comments[1]);
    }

    [Fact]
    public void ClassicCommentsOfACorpusDeckAreRead()
    {
        // commentAuthors.xml has one author; each of the first two slides has one comment.
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("poi/45545_Comment.pptx"));
        var author = Assert.Single(pres.CommentAuthors);
        Assert.Equal("XPVMWARE01", author.Name);
        Assert.Equal("X", author.Initials);
        Assert.Equal(new[] { "testdoc", "test phrase" }, author.Comments.Select(c => c.Text));
        var first = Assert.Single(pres.Slides[0].GetSlideComments(author));
        Assert.Equal(new PointF(434f, 194.75f), first.Position);
        Assert.Equal(new DateTime(2007, 10, 23, 9, 14, 49, 723), first.CreatedTime);
        // A new comment takes the next index after lastIdx="2".
        var added = author.Comments.AddComment("new", pres.Slides[0], default, When);
        using var back = Reload(pres);
        Assert.Equal(new[] { "testdoc", "new" }, back.Slides[0].GetSlideComments(null).Select(c => c.Text));
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(back));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    // A deck with a threaded comment by Ana answered by Bo, written straight through the SDK.
    internal static byte[] ThreadedCommentDeck()
    {
        byte[] plain;
        using (var pres = DeckWithSlides(1))
            plain = TestFiles.SaveToBytes(pres);
        var stream = new MemoryStream();
        stream.Write(plain);
        using (var doc = PresentationDocument.Open(stream, true))
        {
            var part = doc.PresentationPart!;
            var authors = part.AddNewPart<PowerPointAuthorsPart>();
            const string ana = "{11111111-1111-4111-8111-111111111111}";
            const string bo = "{22222222-2222-4222-8222-222222222222}";
            authors.AuthorList = new M.AuthorList(
                new M.Author { Id = ana, Name = "Ana", Initials = "A", UserId = "Ana", ProviderId = "None" },
                new M.Author { Id = bo, Name = "Bo", Initials = "B", UserId = "Bo", ProviderId = "None" });
            var comments = part.SlideParts.First().AddNewPart<PowerPointCommentPart>();
            static M.TextBodyType Body(string text) => new(new A.BodyProperties(), new A.Paragraph(new A.Run(new A.Text(text))));
            comments.CommentList = new M.CommentList(
                new M.Comment(
                    new M.Point2DType { X = 127000, Y = 254000 },
                    new M.CommentReplyList(new M.CommentReply(Body("Agreed")) { Id = "{33333333-3333-4333-8333-333333333333}", AuthorId = bo, Created = When.AddHours(1) }),
                    Body("Check this"))
                { Id = "{44444444-4444-4444-8444-444444444444}", AuthorId = ana, Created = When });
        }
        return stream.ToArray();
    }

    [Fact]
    public void ThreadedCommentsAreReadAndAnsweredInTheirOwnForm()
    {
        using IPresentation pres = new Presentation(new MemoryStream(ThreadedCommentDeck()));
        Assert.Equal(new[] { "Ana", "Bo" }, pres.CommentAuthors.Select(a => a.Name));
        var comments = pres.Slides[0].GetSlideComments(null);
        Assert.Equal(new[] { "Check this", "Agreed" }, comments.Select(c => c.Text));
        Assert.True(comments[0].IsThreaded);
        Assert.Equal(new PointF(10f, 20f), comments[0].Position);
        Assert.Equal(comments[0].Position, comments[1].Position);
        Assert.Same(comments[0], comments[1].ParentComment);
        Assert.Equal("Bo", comments[1].Author.Name);
        Assert.Equal(When.AddHours(1), comments[1].CreatedTime);

        // A classic author answering a threaded comment becomes a threaded author of the same name.
        var cy = pres.CommentAuthors.AddAuthor("Cy", "C");
        comments[1].AddReply(cy, "Me too", When);
        comments[0].Text = "Check this\nand that";
        // New top-level comments are classic, even from a threaded author.
        var ana = pres.CommentAuthors.FindByName("Ana")!;
        ana.Comments.AddComment("classic", pres.Slides[0], default, When);
        using var back = Reload(pres);
        var again = back.Slides[0].GetSlideComments(null);
        Assert.Equal(new[] { "classic", "Check this\nand that", "Agreed", "Me too" }, again.Select(c => c.Text));
        // Authors of the classic list come first (Cy, then Ana who now has a classic comment), then threaded-only ones.
        Assert.Equal(new[] { "Cy", "Ana", "Bo" }, back.CommentAuthors.Select(a => a.Name));
        var backAna = back.CommentAuthors.FindByName("Ana")!;
        Assert.Equal(new[] { "classic", "Check this\nand that" }, backAna.Comments.Select(c => c.Text));
        Assert.Same(again[1], again[3].ParentComment);

        again[1].Remove();
        Assert.Equal(new[] { "classic" }, back.Slides[0].GetSlideComments(null).Select(c => c.Text));
        // Only the classic comments part is left on the slide.
        var names = TestFiles.PartNames(TestFiles.SaveToBytes(back));
        Assert.Single(names, n => n.StartsWith("ppt/comments/", StringComparison.Ordinal));
    }
}
