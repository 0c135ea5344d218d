using System;
using System.Collections.Generic;
using Orvane.Marel;

namespace Orvane.Folaro;

/// <summary>
/// A person who writes comments. An author known to both the classic comment list and the
/// threaded-comment list under the same name is one author.
/// </summary>
public interface ICommentAuthor
{
    string Name { get; set; }
    string Initials { get; set; }

    /// <summary>The author's comments and replies on every slide.</summary>
    ICommentCollection Comments { get; }
}

/// <summary>The authors of the comments of a presentation.</summary>
public interface ICommentAuthorCollection : IEnumerable<ICommentAuthor>
{
    int Count { get; }
    ICommentAuthor this[int index] { get; }
    ICommentAuthor AddAuthor(string name, string initials);

    /// <summary>The first author of that name, or null.</summary>
    ICommentAuthor? FindByName(string name);

    /// <summary>Removes the author with all of their comments (and the replies to those).</summary>
    void Remove(ICommentAuthor author);
    void RemoveAt(int index);
    int IndexOf(ICommentAuthor author);

    /// <summary>Removes every author and every comment.</summary>
    void Clear();

    IEnumerable<ICommentAuthor> AsIEnumerable { get; }
}

/// <summary>A comment on a slide, or a reply to one.</summary>
public interface IComment
{
    string Text { get; set; }

    ICommentAuthor Author { get; }

    ISlide Slide { get; }

    /// <summary>Where the comment is pinned on the slide, in points from the top-left corner.</summary>
    PointF Position { get; set; }

    DateTime CreatedTime { get; set; }

    /// <summary>The comment this one replies to, or null for a comment that starts a thread.</summary>
    IComment? ParentComment { get; }

    /// <summary>True for a threaded (modern) comment, false for a classic one.</summary>
    bool IsThreaded { get; }

    /// <summary>The replies to this comment, oldest first.</summary>
    IComment[] GetReplies();

    /// <summary>Adds a reply to this comment, written at the same place on the same slide.</summary>
    IComment AddReply(ICommentAuthor author, string text, DateTime createdTime);

    /// <summary>Removes the comment and every reply below it.</summary>
    void Remove();
}

/// <summary>The comments of one author, slide by slide in deck order.</summary>
public interface ICommentCollection : IEnumerable<IComment>
{
    int Count { get; }
    IComment this[int index] { get; }

    /// <summary>Adds a comment (in the classic form) on a slide of this author's presentation.</summary>
    IComment AddComment(string text, ISlide slide, PointF position, DateTime createdTime);

    void Remove(IComment comment);
    void RemoveAt(int index);
    int IndexOf(IComment comment);
    void Clear();

    IEnumerable<IComment> AsIEnumerable { get; }
}
