using System;
using System.Collections;

namespace Orvane.WrpGen.Interop
{
    /// <summary>
    /// A Python list seen as a managed <see cref="IList"/> (unsized-collection
    /// and list callback tables). Element reads convert Python values with the
    /// variant rules; writes convert managed values to Python objects.
    /// </summary>
    public sealed unsafe class PyListView : IList, IPyObjectView, IDisposable
    {
        private readonly PyObjectHandle _list;

        public PyListView(IntPtr list) => _list = new PyObjectHandle(list);

        public IntPtr PyObject => _list.Object;
        public void Dispose() => _list.Dispose();

        public int Count
        {
            get
            {
                int count = PyCallbacks.ListLength(PyObject);
                if (count < 0)
                    throw PyFailures.Error("can't read the length of the Python list");
                return count;
            }
        }

        public object? this[int index]
        {
            get
            {
                VariantArg value = default;
                int status = PyCallbacks.ListGetItem(PyObject, index, &value);
                if (status == -2)
                    throw PyFailures.OutOfRange(nameof(index));
                if (status != 0)
                    throw PyFailures.Error("can't read an item of the Python list");
                return Variants.FromArg(&value);
            }
            set
            {
                IntPtr item = Variants.ToPyForView(value);
                int status = PyCallbacks.ListSetItem(PyObject, index, item);  // item stolen
                if (status == -2)
                    throw PyFailures.OutOfRange(nameof(index));
                if (status != 0)
                    throw PyFailures.Error("can't set an item of the Python list");
            }
        }

        public int Add(object? value)
        {
            int size = PyCallbacks.ListAdd(PyObject, Variants.ToPyForView(value));
            if (size < 0)
                throw PyFailures.Error("can't append to the Python list");
            return size - 1;
        }

        public void Insert(int index, object? value)
        {
            if ((uint)index > (uint)Count)
                throw new ArgumentOutOfRangeException(nameof(index), "Index must be within the bounds of the List.");
            if (PyCallbacks.ListInsert(PyObject, index, Variants.ToPyForView(value)) != 0)
                throw PyFailures.Error("can't insert into the Python list");
        }

        public void Remove(object? value)
        {
            int index = IndexOf(value);
            if (index >= 0)
                RemoveAt(index);
        }

        public void RemoveAt(int index)
        {
            if ((uint)index >= (uint)Count)
                throw new ArgumentOutOfRangeException(nameof(index), "Index was out of range. Must be non-negative and less than the size of the collection.");
            int status = PyCallbacks.RemoveAt(PyObject, index);
            if (status == -2)
                throw PyFailures.OutOfRange(nameof(index));
            if (status != 0)
                throw PyFailures.Error("can't remove an item of the Python list");
        }

        public void Clear()
        {
            if (PyCallbacks.Clear(PyObject) != 0)
                throw PyFailures.Error("can't clear the Python list");
        }

        public bool Contains(object? value)
        {
            int found = PyCallbacks.ListContains(PyObject, Variants.ToPyForView(value));
            if (found < 0)
                throw PyFailures.Error("can't search the Python list");
            return found != 0;
        }

        public int IndexOf(object? value)
        {
            int position = PyCallbacks.ListIndexOf(PyObject, Variants.ToPyForView(value));
            if (position == -2)
                throw PyFailures.Error("can't search the Python list");
            return position;
        }

        public void CopyTo(Array array, int index) => ViewHelpers.CopyTo(this, array, index);
        public IEnumerator GetEnumerator() => new IndexedEnumerator(this);

        public bool IsFixedSize => false;
        public bool IsReadOnly => false;
        public bool IsSynchronized => false;
        public object SyncRoot => this;
    }

    /// <summary>
    /// Any Python sequence with a length seen as a read-only managed <see cref="IList"/>
    /// (unsized-collection and sequence callback tables).
    /// </summary>
    public sealed unsafe class PySequenceView : IList, IPyObjectView, IDisposable
    {
        private readonly PyObjectHandle _seq;

        public PySequenceView(IntPtr sequence) => _seq = new PyObjectHandle(sequence);

        public IntPtr PyObject => _seq.Object;
        public void Dispose() => _seq.Dispose();

        public int Count
        {
            get
            {
                int count = PyCallbacks.SequenceLength(PyObject);
                if (count < 0)
                    throw PyFailures.Error("can't read the length of the Python sequence");
                return count;
            }
        }

        public object? this[int index]
        {
            get
            {
                // The sequence itself would count a negative index from the end.
                if (index < 0)
                    throw new ArgumentOutOfRangeException(nameof(index), "Index was out of range. Must be non-negative and less than the size of the collection.");
                VariantArg value = default;
                int status = PyCallbacks.SeqGetItem(PyObject, index, &value);
                if (status == -2)
                    throw PyFailures.OutOfRange(nameof(index));
                if (status != 0)
                    throw PyFailures.Error("can't read an item of the Python sequence");
                return Variants.FromArg(&value);
            }
            set => throw ReadOnly();
        }

        public bool Contains(object? value)
        {
            int found = PyCallbacks.SeqContains(PyObject, Variants.ToPyForView(value));
            if (found < 0)
                throw PyFailures.Error("can't search the Python sequence");
            return found != 0;
        }

        public int IndexOf(object? value)
        {
            int position = PyCallbacks.SeqIndexOf(PyObject, Variants.ToPyForView(value));
            if (position == -2)
                throw PyFailures.Error("can't search the Python sequence");
            return position;
        }

        private static NotSupportedException ReadOnly() => new("Collection is read-only.");
        public int Add(object? value) => throw ReadOnly();
        public void Insert(int index, object? value) => throw ReadOnly();
        public void Remove(object? value) => throw ReadOnly();
        public void RemoveAt(int index) => throw ReadOnly();
        public void Clear() => throw ReadOnly();

        public void CopyTo(Array array, int index) => ViewHelpers.CopyTo(this, array, index);
        public IEnumerator GetEnumerator() => new IndexedEnumerator(this);

        public bool IsFixedSize => true;
        public bool IsReadOnly => true;
        public bool IsSynchronized => false;
        public object SyncRoot => this;
    }

    /// <summary>
    /// Any Python iterable seen as a managed collection: enumeration through
    /// the iterator protocol, <see cref="Count"/> through len() (which fails
    /// for iterables without a length, such as generators).
    /// </summary>
    public sealed class PyIterableView : ICollection, IPyObjectView, IDisposable
    {
        private readonly PyObjectHandle _obj;

        public PyIterableView(IntPtr iterable) => _obj = new PyObjectHandle(iterable);

        public IntPtr PyObject => _obj.Object;
        public void Dispose() => _obj.Dispose();

        public int Count
        {
            get
            {
                int count = PyCallbacks.ObjectLength(PyObject);
                if (count < 0)
                    throw PyFailures.Error("can't read the length of the Python object");
                return count;
            }
        }

        public IEnumerator GetEnumerator()
        {
            IntPtr iterator = PyCallbacks.GetEnumerator(PyObject);
            if (iterator == IntPtr.Zero)
                throw PyFailures.Error("the Python object gave no iterator");
            return new PyIteratorEnumerator(iterator, steal: true);
        }

        public void CopyTo(Array array, int index) => ViewHelpers.CopyTo(this, array, index);
        public bool IsSynchronized => false;
        public object SyncRoot => this;
    }

    /// <summary>A Python iterator seen as a managed <see cref="IEnumerator"/>.</summary>
    public sealed unsafe class PyIteratorEnumerator : IEnumerator, IPyObjectView, IDisposable
    {
        private readonly PyObjectHandle _iterator;
        private object? _current;

        public PyIteratorEnumerator(IntPtr iterator, bool steal = false) =>
            _iterator = new PyObjectHandle(iterator, steal);

        public IntPtr PyObject => _iterator.Object;
        public object? Current => _current;

        public bool MoveNext()
        {
            IntPtr item = IntPtr.Zero;
            VariantArg value = default;
            int status = PyCallbacks.IterNext(PyObject, &item, &value);
            if (status == 1)
            {
                _current = null;
                return false;
            }
            if (status != 0)
                throw PyFailures.Error("the Python iterator failed");
            try
            {
                _current = Variants.FromArg(&value);
            }
            finally
            {
                PyObjects.DecRef(item);
            }
            return true;
        }

        public void Reset() => throw new NotSupportedException("a Python iterator cannot be reset");
        public void Dispose() => _iterator.Dispose();
    }

    internal static class ViewHelpers
    {
        public static void CopyTo(ICollection source, Array array, int index)
        {
            if (array is null)
                throw new ArgumentNullException(nameof(array));
            if (index < 0)
                throw new ArgumentOutOfRangeException(nameof(index));
            foreach (object? item in source)
                array.SetValue(item, index++);
        }
    }

    /// <summary>Enumerates an IList by index, re-reading its count at every step.</summary>
    internal sealed class IndexedEnumerator : IEnumerator
    {
        private readonly IList _list;
        private int _index = -1;

        public IndexedEnumerator(IList list) => _list = list;

        public object? Current => _index >= 0 && _index < _list.Count ? _list[_index] : null;

        public bool MoveNext()
        {
            if (_index + 1 >= _list.Count)
                return false;
            _index++;
            return true;
        }

        public void Reset() => _index = -1;
    }
}
