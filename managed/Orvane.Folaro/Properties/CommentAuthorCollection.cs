using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>A view over one p:cmAuthor element.</summary>
public sealed class CommentAuthor : ICommentAuthor
{
    internal CommentAuthor(P.CommentAuthor element)
    {
        Element = element;
    }

    public string Name
    {
        get => Element.Name?.Value ?? string.Empty;
        set => Element.Name = value ?? throw new ArgumentNullException(nameof(value));
    }

    public string Initials
    {
        get => Element.Initials?.Value ?? string.Empty;
        set => Element.Initials = value ?? throw new ArgumentNullException(nameof(value));
    }

    internal P.CommentAuthor Element { get; }
}

/// <summary>The comment authors part (commentAuthors.xml) as a collection; the part is made on the first add.</summary>
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
            if (index < 0 || index >= items.Count)
                throw new ArgumentOutOfRangeException(nameof(index), index, $"CommentAuthorCollection[index]: index must be in [0, {items.Count})");
            return items[index];
        }
    }

    public ICommentAuthor AddAuthor(string name, string initials)
    {
        ArgumentNullException.ThrowIfNull(name);
        ArgumentNullException.ThrowIfNull(initials);
        var pres = _owner.PresentationPart;
        var part = pres.CommentAuthorsPart ?? pres.AddNewPart<CommentAuthorsPart>();
        part.CommentAuthorList ??= new P.CommentAuthorList();
        var list = part.CommentAuthorList;
        var authors = list.Elements<P.CommentAuthor>().ToList();
        uint id = authors.Count == 0 ? 0 : authors.Max(a => a.Id?.Value ?? 0) + 1;
        // Color indices cycle through the eight the format's readers know.
        var element = new P.CommentAuthor { Id = id, Name = name, Initials = initials, LastIndex = 0, ColorIndex = id % 8 };
        list.AppendChild(element);
        return View(element);
    }

    public void Remove(ICommentAuthor author)
    {
        if (author is not CommentAuthor own || !Items().Contains(own))
            throw new ArgumentException("CommentAuthorCollection.Remove: the author is not in this presentation", nameof(author));
        own.Element.Remove();
    }

    public void RemoveAt(int index) => Remove(this[index]);

    public int IndexOf(ICommentAuthor author) => Items().FindIndex(a => ReferenceEquals(a, author));

    public IEnumerator<ICommentAuthor> GetEnumerator() => Items().GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<ICommentAuthor> ICommentAuthorCollection.AsIEnumerable => this;

    private List<CommentAuthor> Items() =>
        _owner.PresentationPart.CommentAuthorsPart?.CommentAuthorList?.Elements<P.CommentAuthor>().Select(View).ToList()
        ?? new List<CommentAuthor>();

    private CommentAuthor View(P.CommentAuthor element) => _owner.ElementView(element, () => new CommentAuthor(element));
}
