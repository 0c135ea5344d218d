using System;
using System.Collections;
using System.Collections.Generic;
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
    private readonly ThemeStyleList<IFillFormat> _styles;

    internal FillFormatCollection(Func<OpenXmlElement?> list, FormatContext context, string what)
    {
        _styles = new(list, c => Array.IndexOf(SchemaOrder.Fills, c.LocalName) >= 0,
            (fill, index) => FillFormat.Fixed(fill, new FormatContext(context.Part, $"{context.Where}, {what} {index + 1}")),
            nameof(FillFormatCollection));
    }

    public int Count => _styles.Count;

    public IFillFormat this[int index] => _styles.At(index);

    IEnumerable<IFillFormat> IFillFormatCollection.AsIEnumerable => this;

    public IEnumerator<IFillFormat> GetEnumerator() => _styles.GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();
}
