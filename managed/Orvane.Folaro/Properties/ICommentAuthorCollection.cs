using System.Collections.Generic;

namespace Orvane.Folaro;

public interface ICommentAuthor
{
    string Name { get; set; }
    string Initials { get; set; }
}

/// <summary>The authors of the comments of a presentation.</summary>
public interface ICommentAuthorCollection : IEnumerable<ICommentAuthor>
{
    int Count { get; }
    ICommentAuthor this[int index] { get; }
    ICommentAuthor AddAuthor(string name, string initials);
    void Remove(ICommentAuthor author);
    void RemoveAt(int index);
    int IndexOf(ICommentAuthor author);

    IEnumerable<ICommentAuthor> AsIEnumerable { get; }
}
