using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using M = DocumentFormat.OpenXml.Office2021.PowerPoint.Comment;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>
/// A view over an author's p:cmAuthor entry (commentAuthors.xml), their p188:author entry
/// (authors.xml, threaded comments), or both when the two carry the same name.
/// </summary>
public sealed class CommentAuthor : ICommentAuthor
{
    internal CommentAuthor(Presentation owner, P.CommentAuthor? legacy, M.Author? modern)
    {
        Owner = owner;
        Legacy = legacy;
        Modern = modern;
    }

    public string Name
    {
        get => Legacy?.Name?.Value ?? Modern?.Name?.Value ?? string.Empty;
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            if (Legacy != null)
                Legacy.Name = value;
            if (Modern != null)
                Modern.Name = value;
        }
    }

    public string Initials
    {
        get => Legacy?.Initials?.Value ?? Modern?.Initials?.Value ?? string.Empty;
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            if (Legacy != null)
                Legacy.Initials = value;
            if (Modern != null)
                Modern.Initials = value;
        }
    }

    public ICommentCollection Comments => new CommentCollection(this);

    public override string ToString() => $"CommentAuthor '{Name}'";

    internal Presentation Owner { get; }

    internal P.CommentAuthor? Legacy { get; private set; }

    internal M.Author? Modern { get; private set; }

    internal bool IsIn(Presentation owner) =>
        ReferenceEquals(owner, Owner) && (Legacy?.Parent != null || Modern?.Parent != null);

    /// <summary>The classic author entry, made on first use for an author known only from threaded comments.</summary>
    internal P.CommentAuthor EnsureLegacy()
    {
        if (Legacy != null)
            return Legacy;
        Legacy = CommentStore.NewLegacyAuthor(Owner, Name, Initials);
        Owner.AliasElementView(Legacy, this);
        return Legacy;
    }

    /// <summary>The threaded-comment author entry, made on first use for a classic author.</summary>
    internal M.Author EnsureModern()
    {
        if (Modern != null)
            return Modern;
        Modern = CommentStore.NewModernAuthor(Owner, Name, Initials);
        Owner.AliasElementView(Modern, this);
        return Modern;
    }
}

/// <summary>
/// The comment authors of the presentation: the classic list first, then authors known only
/// from threaded comments. Parts are made on the first add.
/// </summary>
public sealed class CommentAuthorCollection : ICommentAuthorCollection
{
    private readonly Presentation _owner;

    internal CommentAuthorCollection(Presentation owner)
    {
        _owner = owner;
    }

    public int Count => Items().Count;

    public ICommentAuthor this[int index]
    {
        get
        {
            var items = Items();
            Indexes.Check(index, items.Count, "CommentAuthorCollection[index]");
            return items[index];
        }
    }

    public ICommentAuthor AddAuthor(string name, string initials)
    {
        ArgumentNullException.ThrowIfNull(name);
        ArgumentNullException.ThrowIfNull(initials);
        var element = CommentStore.NewLegacyAuthor(_owner, name, initials);
        return _owner.ElementView(element, () => new CommentAuthor(_owner, element, null));
    }

    public ICommentAuthor? FindByName(string name)
    {
        ArgumentNullException.ThrowIfNull(name);
        return Items().FirstOrDefault(a => a.Name == name);
    }

    public void Remove(ICommentAuthor author)
    {
        if (author is not CommentAuthor own || !own.IsIn(_owner))
            throw new ArgumentException("CommentAuthorCollection.Remove: the author is not in this presentation", nameof(author));
        CommentStore.RemoveAuthor(own);
    }

    public void RemoveAt(int index) => Remove(this[index]);

    public int IndexOf(ICommentAuthor author) => Items().FindIndex(a => ReferenceEquals(a, author));

    public void Clear()
    {
        foreach (var author in Items())
            CommentStore.RemoveAuthor(author);
    }

    public IEnumerator<ICommentAuthor> GetEnumerator() => Items().Cast<ICommentAuthor>().GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<ICommentAuthor> ICommentAuthorCollection.AsIEnumerable => this;

    private List<CommentAuthor> Items() => CommentStore.Authors(_owner);
}
