using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro.Theme;

/// <summary>Line styles of a theme, in reference order (index 1 first).</summary>
public interface ILineFormatCollection : IEnumerable<ILineFormat>
{
    int Count { get; }

    ILineFormat this[int index] { get; }

    IEnumerable<ILineFormat> AsIEnumerable { get; }
}

public sealed class LineFormatCollection : ILineFormatCollection
{
    private readonly Func<OpenXmlElement?> _list;
    private readonly FormatContext _context;

    internal LineFormatCollection(Func<OpenXmlElement?> list, FormatContext context)
    {
        _list = list;
        _context = context;
    }

    public int Count => Items().Count;

    public ILineFormat this[int index]
    {
        get
        {
            var items = Items();
            Indexes.Check(index, items.Count, "LineFormatCollection[index]");
            return View(items[index], index);
        }
    }

    IEnumerable<ILineFormat> ILineFormatCollection.AsIEnumerable => this;

    public IEnumerator<ILineFormat> GetEnumerator() => Items().Select(View).GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    private ILineFormat View(OpenXmlElement line, int index) =>
        new LineFormat(_ => line, new FormatContext(_context.Part, $"{_context.Where}, line style {index + 1}"));

    private List<OpenXmlElement> Items() =>
        _list() is { } list ? list.ChildElements.Where(c => c.LocalName == "ln").ToList() : new List<OpenXmlElement>();
}
