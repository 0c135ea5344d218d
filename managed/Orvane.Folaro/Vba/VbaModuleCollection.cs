using System;
using System.Collections;
using System.Collections.Generic;

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
    private readonly VbaItemList<VbaModule> _modules = new(nameof(VbaModuleCollection), "module");

    internal VbaModuleCollection()
    {
    }

    public int Count => _modules.Count;

    public IVbaModule this[int index] => _modules.At(index);

    public IVbaModule AddEmptyModule(string name)
    {
        ArgumentException.ThrowIfNullOrEmpty(name);
        if (_modules.Any(m => string.Equals(m.Name, name, StringComparison.OrdinalIgnoreCase)))
            throw new ArgumentException($"VbaModuleCollection.AddEmptyModule: a module named '{name}' already exists", nameof(name));
        return _modules.Add(new VbaModule(name));
    }

    public void Remove(IVbaModule value) => _modules.Remove(value as VbaModule);

    public IEnumerator<IVbaModule> GetEnumerator() => _modules.GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IVbaModule> IVbaModuleCollection.AsIEnumerable => this;
}
