using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro.Theme;

/// <summary>The effect styles of a theme, in reference order.</summary>
public interface IEffectStyleCollection : IEnumerable<IEffectStyle>
{
    int Count { get; }

    IEffectStyle this[int index] { get; }

    IEnumerable<IEffectStyle> AsIEnumerable { get; }
}

public sealed class EffectStyleCollection : IEffectStyleCollection
{
    private readonly Func<OpenXmlElement?> _list;

    internal EffectStyleCollection(Func<OpenXmlElement?> list)
    {
        _list = list;
    }

    public int Count => Items().Count;

    public IEffectStyle this[int index]
    {
        get
        {
            var items = Items();
            Indexes.Check(index, items.Count, "EffectStyleCollection[index]");
            return new EffectStyle(items[index]);
        }
    }

    IEnumerable<IEffectStyle> IEffectStyleCollection.AsIEnumerable => this;

    public IEnumerator<IEffectStyle> GetEnumerator() => Items().Select(e => (IEffectStyle)new EffectStyle(e)).GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    private List<OpenXmlElement> Items() =>
        _list() is { } list ? list.ChildElements.Where(c => c.LocalName == "effectStyle").ToList() : new List<OpenXmlElement>();
}
