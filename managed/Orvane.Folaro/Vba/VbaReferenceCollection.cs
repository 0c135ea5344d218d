using System;
using System.Collections;
using System.Collections.Generic;

namespace Orvane.Folaro.Vba;

public interface IVbaReferenceCollection : IEnumerable<IVbaReference>
{
    int Count { get; }

    IVbaReference this[int index] { get; }

    void Add(IVbaReference value);

    void Remove(IVbaReference value);

    IEnumerable<IVbaReference> AsIEnumerable { get; }
}

public sealed class VbaReferenceCollection : IVbaReferenceCollection
{
    private readonly List<IVbaReference> _items = new();

    internal VbaReferenceCollection()
    {
    }

    public int Count => _items.Count;

    public IVbaReference this[int index] => Indexes.At(_items, index, "VbaReferenceCollection[index]");

    public void Add(IVbaReference value)
    {
        ArgumentNullException.ThrowIfNull(value);
        _items.Add(value);
    }

    public void Remove(IVbaReference value)
    {
        if (!_items.Remove(value))
            throw new ArgumentException("VbaReferenceCollection.Remove: the reference is not in this project", nameof(value));
    }

    public IEnumerator<IVbaReference> GetEnumerator() => _items.GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IVbaReference> IVbaReferenceCollection.AsIEnumerable => this;
}
