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
    private readonly VbaItemList<IVbaReference> _references = new(nameof(VbaReferenceCollection), "reference");

    internal VbaReferenceCollection()
    {
    }

    public int Count => _references.Count;

    public IVbaReference this[int index] => _references.At(index);

    public void Add(IVbaReference value)
    {
        ArgumentNullException.ThrowIfNull(value);
        _references.Add(value);
    }

    public void Remove(IVbaReference value) => _references.Remove(value);

    public IEnumerator<IVbaReference> GetEnumerator() => _references.GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IVbaReference> IVbaReferenceCollection.AsIEnumerable => this;
}
