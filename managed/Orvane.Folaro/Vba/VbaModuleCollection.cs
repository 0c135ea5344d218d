using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;

namespace Orvane.Folaro.Vba;

public interface IVbaModuleCollection : IEnumerable<IVbaModule>
{
    int Count { get; }

    IVbaModule this[int index] { get; }

    /// <summary>Adds an empty standard module; names are unique without regard to case.</summary>
    IVbaModule AddEmptyModule(string name);

    void Remove(IVbaModule value);

    IEnumerable<IVbaModule> AsIEnumerable { get; }
}

public sealed class VbaModuleCollection : IVbaModuleCollection
{
    private readonly List<VbaModule> _items = new();

    internal VbaModuleCollection()
    {
    }

    public int Count => _items.Count;

    public IVbaModule this[int index] => Indexes.At(_items, index, "VbaModuleCollection[index]");

    public IVbaModule AddEmptyModule(string name)
    {
        ArgumentException.ThrowIfNullOrEmpty(name);
        if (_items.Any(m => string.Equals(m.Name, name, StringComparison.OrdinalIgnoreCase)))
            throw new ArgumentException($"VbaModuleCollection.AddEmptyModule: a module named '{name}' already exists", nameof(name));
        var module = new VbaModule(name);
        _items.Add(module);
        return module;
    }

    public void Remove(IVbaModule value)
    {
        if (value is not VbaModule module || !_items.Remove(module))
            throw new ArgumentException("VbaModuleCollection.Remove: the module is not in this project", nameof(value));
    }

    public IEnumerator<IVbaModule> GetEnumerator() => _items.GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IVbaModule> IVbaModuleCollection.AsIEnumerable => this;
}
