using System;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro.Theme;

// The styles of one list of a theme's format scheme (fills, lines or effects), in reference
// order: the children of the list that are styles, each seen through a view that knows its
// place. FillFormatCollection, LineFormatCollection and EffectStyleCollection are one each.
internal sealed class ThemeStyleList<T>
{
    private readonly Func<OpenXmlElement?> _list;
    private readonly Func<OpenXmlElement, bool> _isStyle;
    private readonly Func<OpenXmlElement, int, T> _view;
    private readonly string _collection;

    internal ThemeStyleList(Func<OpenXmlElement?> list, Func<OpenXmlElement, bool> isStyle, Func<OpenXmlElement, int, T> view, string collection)
    {
        _list = list;
        _isStyle = isStyle;
        _view = view;
        _collection = collection;
    }

    internal int Count => Items().Count;

    internal T At(int index)
    {
        var items = Items();
        Indexes.Check(index, items.Count, $"{_collection}[index]");
        return _view(items[index], index);
    }

    internal IEnumerator<T> GetEnumerator() => Items().Select(_view).GetEnumerator();

    private List<OpenXmlElement> Items() =>
        _list() is { } list ? list.ChildElements.Where(_isStyle).ToList() : new List<OpenXmlElement>();
}
