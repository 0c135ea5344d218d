using System;
using System.Collections;
using System.Collections.Generic;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

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
    private readonly ThemeStyleList<ILineFormat> _styles;

    internal LineFormatCollection(Func<OpenXmlElement?> list, FormatContext context)
    {
        _styles = new(list, c => c is A.Outline,
            (line, index) => new LineFormat(_ => line, new FormatContext(context.Part, $"{context.Where}, line style {index + 1}")),
            nameof(LineFormatCollection));
    }

    public int Count => _styles.Count;

    public ILineFormat this[int index] => _styles.At(index);

    IEnumerable<ILineFormat> ILineFormatCollection.AsIEnumerable => this;

    public IEnumerator<ILineFormat> GetEnumerator() => _styles.GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();
}
