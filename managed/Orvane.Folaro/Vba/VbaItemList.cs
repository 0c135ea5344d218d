using System;
using System.Collections.Generic;

namespace Orvane.Folaro.Vba;

// The modules or the references of a VBA project: an ordered list in memory that refuses to
// remove what it does not hold. VbaModuleCollection and VbaReferenceCollection are one each.
internal sealed class VbaItemList<T> where T : class
{
    private readonly List<T> _items = new();
    private readonly string _collection;
    private readonly string _noun;

    internal VbaItemList(string collection, string noun)
    {
        _collection = collection;
        _noun = noun;
    }

    internal int Count => _items.Count;

    internal T At(int index) => Indexes.At(_items, index, $"{_collection}[index]");

    internal bool Any(Predicate<T> match) => _items.Exists(match);

    internal T Add(T item)
    {
        _items.Add(item);
        return item;
    }

    /// <summary>Removes <paramref name="item"/>; null or an item of another project raises <see cref="ArgumentException"/> on <c>value</c>.</summary>
    internal void Remove(T? item)
    {
        if (item == null || !_items.Remove(item))
            throw new ArgumentException($"{_collection}.Remove: the {_noun} is not in this project", "value");
    }

    internal IEnumerator<T> GetEnumerator() => _items.GetEnumerator();
}
