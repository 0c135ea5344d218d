using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;
using Orvane.Marel;
using A = DocumentFormat.OpenXml.Drawing;
using M = DocumentFormat.OpenXml.Office2021.PowerPoint.Comment;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>
/// A view over one comment: a classic p:cm, a threaded p188:cm, or a threaded p188:reply.
/// Classic positions are stored in eighths of a point, threaded ones in EMU.
/// </summary>
public sealed class Comment : IComment
{
    internal Comment(Slide slide, OpenXmlElement element)
    {
        SlideView = slide;
        Element = element;
    }

    public string Text
    {
        get => Element switch
        {
            P.Comment c => c.Text?.Text ?? string.Empty,
            _ => string.Join("\n", Body()?.Elements<A.Paragraph>().Select(p => string.Concat(p.Descendants<A.Text>().Select(t => t.Text))) ?? Array.Empty<string>()),
        };
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            CheckLive();
            if (Element is P.Comment c)
            {
                c.Text = new P.Text(value);
                return;
            }
            var old = Body();
            var made = CommentStore.ModernBody(value);
            if (old != null)
                old.InsertBeforeSelf(made);
            else
                Element.AppendChild(made);
            old?.Remove();
        }
    }

    public ICommentAuthor Author => CommentStore.AuthorOf(SlideView.Owner, Element);

    public ISlide Slide => SlideView;

    public PointF Position
    {
        get
        {
            switch (Element)
            {
                case P.Comment c:
                    return new PointF((c.Position?.X?.Value ?? 0) / 8f, (c.Position?.Y?.Value ?? 0) / 8f);
                case M.CommentReply:
                    return ParentComment?.Position ?? default;
                default:
                    var pos = Element.GetFirstChild<M.Point2DType>();
                    return pos == null ? default : new PointF(Emu.ToPoints(pos.X?.Value ?? 0), Emu.ToPoints(pos.Y?.Value ?? 0));
            }
        }
        set
        {
            CheckLive();
            CheckPosition(value, "Comment.Position");
            switch (Element)
            {
                case P.Comment c:
                    c.Position = new P.Position { X = Eighths(value.X), Y = Eighths(value.Y) };
                    break;
                case M.CommentReply:
                    throw new PptxEditException($"{SlideView.Where}: a threaded reply takes the position of the comment it answers");
                default:
                    var pos = Element.GetFirstChild<M.Point2DType>();
                    if (pos == null)
                    {
                        pos = new M.Point2DType();
                        // After the anchor lists, before the replies and the text.
                        var next = Element.ChildElements.FirstOrDefault(e => e is M.CommentReplyList or M.TextBodyType);
                        if (next != null)
                            Element.InsertBefore(pos, next);
                        else
                            Element.AppendChild(pos);
                    }
                    pos.X = Emu.FromPoints(value.X);
                    pos.Y = Emu.FromPoints(value.Y);
                    break;
            }
        }
    }

    public DateTime CreatedTime
    {
        get => Element switch
        {
            P.Comment c => c.DateTime?.Value ?? default,
            M.Comment c => c.Created?.Value ?? default,
            M.CommentReply r => r.Created?.Value ?? default,
            _ => default,
        };
        set
        {
            CheckLive();
            switch (Element)
            {
                case P.Comment c:
                    c.DateTime = value;
                    break;
                case M.Comment c:
                    c.Created = value;
                    break;
                case M.CommentReply r:
                    r.Created = value;
                    break;
            }
        }
    }

    public IComment? ParentComment
    {
        get
        {
            switch (Element)
            {
                case M.CommentReply reply:
                    return reply.Ancestors<M.Comment>().FirstOrDefault() is { } top ? CommentStore.View(SlideView, top) : null;
                case P.Comment c when CommentStore.LegacyParentMark(c) is { } mark:
                    var parent = c.Parent?.Elements<P.Comment>().FirstOrDefault(p =>
                        p.AuthorId?.Value == mark.AuthorId?.Value && p.Index?.Value == mark.Index?.Value);
                    return parent == null ? null : CommentStore.View(SlideView, parent);
                default:
                    return null;
            }
        }
    }

    public bool IsThreaded => Element is not P.Comment;

    public IComment[] GetReplies() => Replies().Cast<IComment>().ToArray();

    public IComment AddReply(ICommentAuthor author, string text, DateTime createdTime)
    {
        ArgumentNullException.ThrowIfNull(text);
        CheckLive();
        if (author is not CommentAuthor own || !own.IsIn(SlideView.Owner))
            throw new ArgumentException("Comment.AddReply: the author is not in this comment's presentation", nameof(author));
        return Element switch
        {
            P.Comment c => CommentStore.AddLegacy(own, SlideView, text, c.Position?.X?.Value ?? 0, c.Position?.Y?.Value ?? 0, createdTime, c),
            M.Comment c => CommentStore.AddModernReply(own, SlideView, c, text, createdTime),
            // A threaded reply to a reply joins the thread of the comment that started it.
            _ => CommentStore.AddModernReply(own, SlideView, Element.Ancestors<M.Comment>().First(), text, createdTime),
        };
    }

    public void Remove()
    {
        CheckLive();
        foreach (var reply in Replies())
            if (reply.Element.Parent != null)
                reply.Remove();
        var list = Element.Parent;
        Element.Remove();
        if (list is M.CommentReplyList && !list.HasChildren)
            list.Remove();
        CommentStore.DropEmptyParts(SlideView);
    }

    public override string ToString() => $"Comment by '{Author.Name}' on slide {SlideView.SlideNumber}";

    internal Slide SlideView { get; }

    internal OpenXmlElement Element { get; }

    internal bool IsLive => Element.Parent != null;

    internal static void CheckPosition(PointF value, string member)
    {
        if (!float.IsFinite(value.X) || !float.IsFinite(value.Y))
            throw new ArgumentOutOfRangeException(nameof(value), value, $"{member} must be a finite point");
    }

    internal static long Eighths(float points) => (long)Math.Round(points * 8.0, MidpointRounding.AwayFromZero);

    private List<Comment> Replies() => Element switch
    {
        P.Comment c => c.Parent?.Elements<P.Comment>().Where(r => CommentStore.IsLegacyReplyOf(r, c)).Select(r => CommentStore.View(SlideView, r)).ToList()
                       ?? new List<Comment>(),
        M.Comment c => c.GetFirstChild<M.CommentReplyList>()?.Elements<M.CommentReply>().Select(r => CommentStore.View(SlideView, r)).ToList()
                       ?? new List<Comment>(),
        _ => new List<Comment>(),
    };

    private M.TextBodyType? Body() => Element.GetFirstChild<M.TextBodyType>();

    private void CheckLive()
    {
        if (!IsLive)
            throw new PptxEditException($"{SlideView.Where}: the comment has been removed");
    }
}

/// <summary>The comments and replies of one author on every slide, in deck order.</summary>
public sealed class CommentCollection : ICommentCollection
{
    private readonly CommentAuthor _author;

    internal CommentCollection(CommentAuthor author)
    {
        _author = author;
    }

    public int Count => Items().Count;

    public IComment this[int index]
    {
        get
        {
            var items = Items();
            Indexes.Check(index, items.Count, "CommentCollection[index]");
            return items[index];
        }
    }

    public IComment AddComment(string text, ISlide slide, PointF position, DateTime createdTime)
    {
        ArgumentNullException.ThrowIfNull(text);
        ArgumentNullException.ThrowIfNull(slide);
        if (!_author.IsIn(_author.Owner))
            throw new PptxEditException($"{_author.Owner.Origin}: the comment author '{_author.Name}' has been removed");
        if (slide is not Slide own || !ReferenceEquals(own.Owner, _author.Owner) || own.Entry == null)
            throw new ArgumentException("CommentCollection.AddComment: the slide must be a slide of the author's presentation", nameof(slide));
        Comment.CheckPosition(position, "CommentCollection.AddComment: position");
        return CommentStore.AddLegacy(_author, own, text, Comment.Eighths(position.X), Comment.Eighths(position.Y), createdTime, null);
    }

    public void Remove(IComment comment)
    {
        if (comment is not Comment own || !own.IsLive || !ReferenceEquals(own.Author, _author))
            throw new ArgumentException("CommentCollection.Remove: the comment is not one of this author's", nameof(comment));
        own.Remove();
    }

    public void RemoveAt(int index) => Remove(this[index]);

    public int IndexOf(IComment comment) => Items().FindIndex(c => ReferenceEquals(c, comment));

    public void Clear()
    {
        foreach (var comment in Items())
            if (comment.IsLive)
                comment.Remove();
    }

    public IEnumerator<IComment> GetEnumerator() => Items().Cast<IComment>().GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IComment> ICommentCollection.AsIEnumerable => this;

    private List<Comment> Items() =>
        CommentStore.AllComments(_author.Owner).Where(c => ReferenceEquals(c.Author, _author)).ToList();
}
