using System;
using System.Collections;
using System.Collections.Generic;

namespace Orvane.WrpGen.Interop
{
    /// <summary>
    /// Generic collection parameters and results of generated proxies
    /// (IList&lt;T&gt;, List&lt;T&gt;, IReadOnlyList&lt;T&gt;, ICollection&lt;T&gt;,
    /// IEnumerable&lt;T&gt;, IEnumerator&lt;T&gt;). Parameters arrive as the
    /// {kind, value} record of the untyped converters; Python lists and
    /// sequences are seen through the untyped views with each element coerced
    /// to T, so that changes made by managed code reach the Python list.
    /// </summary>
    public static unsafe class TypedCollections
    {
        /// <summary>IList&lt;T&gt; (also for ICollection&lt;T&gt; and the read-only interfaces).</summary>
        public static TypedList<T>? ListFromArg<T>(VariantArg* arg)
        {
            if (arg == null || arg->Value == IntPtr.Zero)
                return null;
            if (arg->Type == 0)
            {
                object? target = Handles.Target(arg->Value);
                return target switch
                {
                    IList<T> typed => TypedList<T>.OverTyped(typed),
                    IList untyped => TypedList<T>.OverUntyped(untyped),
                    IEnumerable<T> items => TypedList<T>.OverTyped(new List<T>(items)),
                    _ => throw new InvalidCastException($"a {target?.GetType().FullName} is not a list of {typeof(T).FullName}"),
                };
            }
            return TypedList<T>.OverUntyped(Collections.ListFromArg(arg)!);
        }

        /// <summary>List&lt;T&gt; parameters: the managed list itself, or a new list of the Python items (a copy).</summary>
        public static List<T>? ListObjectFromArg<T>(VariantArg* arg)
        {
            if (arg == null || arg->Value == IntPtr.Zero)
                return null;
            if (arg->Type == 0)
                return (List<T>?)Handles.Target(arg->Value);
            return new List<T>(TypedList<T>.OverUntyped(Collections.ListFromArg(arg)!));
        }

        public static IEnumerable<T>? EnumerableFromArg<T>(VariantArg* arg)
        {
            IEnumerable? source = Collections.EnumerableFromArg(arg);
            return source switch
            {
                null => null,
                IEnumerable<T> typed when arg->Type == 0 => typed,
                _ => Coerced<T>(source),
            };
        }

        public static IEnumerator<T>? EnumeratorFromArg<T>(VariantArg* arg)
        {
            IEnumerator? source = Collections.EnumeratorFromArg(arg);
            return source switch
            {
                null => null,
                IEnumerator<T> typed => typed,
                _ => new TypedEnumerator<T>(source),
            };
        }

        private static IEnumerable<T> Coerced<T>(IEnumerable source)
        {
            foreach (object? item in source)
                yield return (T)Elements.Coerce(item, typeof(T))!;
        }

        /// <summary>
        /// Writes a generic collection result for the untyped wrappers: lists
        /// and collections must be seen through IList / ICollection, so one
        /// that implements only the generic interfaces travels in an adapter.
        /// A view over a Python object gives that object back.
        /// </summary>
        public static void WriteResult<T>(PyCollectionArg* result, object? value)
        {
            object? written = value switch
            {
                TypedList<T> typed => typed.Inner,
                IList or IEnumerator or null => value,
                IList<T> list => TypedList<T>.OverTyped(list),
                IReadOnlyList<T> list => new List<T>(list),
                ICollection<T> collection when value is not ICollection => new List<T>(collection),
                _ => value,
            };
            Collections.WriteResult(result, written);
        }
    }

    /// <summary>
    /// A typed list over an untyped list (a view over a Python list, an
    /// ArrayList...) or an untyped list over a typed one, whichever the
    /// receiver needs. Elements read from an untyped list are coerced to T.
    /// </summary>
    public sealed class TypedList<T> : IList<T>, IReadOnlyList<T>, IList
    {
        private readonly IList? _untyped;
        private readonly IList<T>? _typed;

        private TypedList(IList? untyped, IList<T>? typed) { _untyped = untyped; _typed = typed; }

        /// <summary>Typed access to an untyped list, elements coerced to T.</summary>
        public static TypedList<T> OverUntyped(IList untyped) => new(untyped, null);
        /// <summary>Untyped access to a typed list.</summary>
        public static TypedList<T> OverTyped(IList<T> typed) => new(null, typed);

        /// <summary>The list this one adapts.</summary>
        public object Inner => (object?)_untyped ?? _typed!;

        private static T Coerce(object? value) => (T)Elements.Coerce(value, typeof(T))!;

        public T this[int index]
        {
            get => _typed != null ? _typed[index] : Coerce(_untyped![index]);
            set { if (_typed != null) _typed[index] = value; else _untyped![index] = value; }
        }

        object? IList.this[int index]
        {
            get => this[index];
            set => this[index] = Coerce(value);
        }

        public int Count => _typed?.Count ?? _untyped!.Count;
        public bool IsReadOnly => _typed?.IsReadOnly ?? _untyped!.IsReadOnly;
        bool IList.IsFixedSize => _untyped?.IsFixedSize ?? _typed!.IsReadOnly;
        bool ICollection.IsSynchronized => false;
        object ICollection.SyncRoot => this;

        public void Add(T item) { if (_typed != null) _typed.Add(item); else _untyped!.Add(item); }
        int IList.Add(object? value) { Add(Coerce(value)); return Count - 1; }
        public void Clear() { if (_typed != null) _typed.Clear(); else _untyped!.Clear(); }
        public bool Contains(T item) => _typed?.Contains(item) ?? IndexOf(item) >= 0;
        bool IList.Contains(object? value) => value is T item ? Contains(item) : value == null && Contains(default!);

        public int IndexOf(T item)
        {
            if (_typed != null)
                return _typed.IndexOf(item);
            for (int i = 0; i < _untyped!.Count; i++)
                if (EqualityComparer<T>.Default.Equals(Coerce(_untyped[i]), item))
                    return i;
            return -1;
        }

        int IList.IndexOf(object? value) => value is T item ? IndexOf(item) : -1;
        public void Insert(int index, T item) { if (_typed != null) _typed.Insert(index, item); else _untyped!.Insert(index, item); }
        void IList.Insert(int index, object? value) => Insert(index, Coerce(value));

        public bool Remove(T item)
        {
            int index = IndexOf(item);
            if (index < 0)
                return false;
            RemoveAt(index);
            return true;
        }

        void IList.Remove(object? value) { if (value is T item) Remove(item); }
        public void RemoveAt(int index) { if (_typed != null) _typed.RemoveAt(index); else _untyped!.RemoveAt(index); }

        public void CopyTo(T[] array, int arrayIndex)
        {
            for (int i = 0; i < Count; i++)
                array[arrayIndex + i] = this[i];
        }

        void ICollection.CopyTo(Array array, int index)
        {
            for (int i = 0; i < Count; i++)
                array.SetValue(this[i], index + i);
        }

        public IEnumerator<T> GetEnumerator()
        {
            for (int i = 0; i < Count; i++)
                yield return this[i];
        }

        IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();
    }

    /// <summary>A typed enumerator over an untyped one (a view over a Python iterator).</summary>
    public sealed class TypedEnumerator<T> : IEnumerator<T>
    {
        private readonly IEnumerator _inner;

        public TypedEnumerator(IEnumerator inner) { _inner = inner; }

        public T Current => (T)Elements.Coerce(_inner.Current, typeof(T))!;
        object? IEnumerator.Current => Current;
        public bool MoveNext() => _inner.MoveNext();
        public void Reset() => _inner.Reset();
        public void Dispose() => (_inner as IDisposable)?.Dispose();
    }
}
