using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro.Theme;

/// <summary>Fill styles of a theme: read-only as a list; a style's colours and settings can be edited in place.</summary>
public interface IFillFormatCollection : IEnumerable<IFillFormat>
{
    int Count { get; }

    IFillFormat this[int index] { get; }

    IEnumerable<IFillFormat> AsIEnumerable { get; }
}

public sealed class FillFormatCollection : IFillFormatCollection
{
    private readonly Func<OpenXmlElement?> _list;
    private readonly FormatContext _context;
    private readonly string _what;

    internal FillFormatCollection(Func<OpenXmlElement?> list, FormatContext context, string what)
    {
        _list = list;
        _context = context;
        _what = what;
    }

    public int Count => Items().Count;

    public IFillFormat this[int index]
    {
        get
        {
            var items = Items();
            Indexes.Check(index, items.Count, "FillFormatCollection[index]");
            return View(items[index], index);
        }
    }

    IEnumerable<IFillFormat> IFillFormatCollection.AsIEnumerable => this;

    public IEnumerator<IFillFormat> GetEnumerator() => Items().Select(View).GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    private IFillFormat View(OpenXmlElement fill, int index) =>
        FillFormat.Fixed(fill, new FormatContext(_context.Part, $"{_context.Where}, {_what} {index + 1}"));

    private List<OpenXmlElement> Items() =>
        _list() is { } list ? list.ChildElements.Where(c => Array.IndexOf(SchemaOrder.Fills, c.LocalName) >= 0).ToList() : new List<OpenXmlElement>();
}
