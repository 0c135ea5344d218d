using System;
using System.Collections;
using System.Collections.Generic;

namespace Orvane.WrpGen.Interop
{
    /// <summary>A Python iterable seen as IEnumerable&lt;T&gt;; each enumeration takes a new Python iterator.</summary>
    public sealed unsafe class PyTypedIterable<T> : IEnumerable<T>, IPyObjectView, IDisposable
    {
        private readonly PyObjectHandle _iterable;
        private readonly int _table;
        private readonly delegate*<void*, T> _read;

        public PyTypedIterable(IntPtr iterable, int table, delegate*<void*, T> read)
        {
            _iterable = new PyObjectHandle(iterable);
            _table = table;
            _read = read;
        }

        public IntPtr PyObject => _iterable.Object;
        public void Dispose() => _iterable.Dispose();

        public IEnumerator<T> GetEnumerator()
        {
            IntPtr iterator = PyCallbacks.GetEnumerator(PyObject);
            if (iterator == IntPtr.Zero)
                throw new PythonErrorPendingException();
            return new PyTypedIterator<T>(iterator, GenericArgs.IterNextSlot(_table), _read);
        }

        IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();
    }

    internal sealed unsafe class PyTypedIterator<T> : IEnumerator<T>
    {
        private readonly PyObjectHandle _iterator;
        private readonly delegate* unmanaged<IntPtr, void*, IntPtr*, int> _next;
        private readonly delegate*<void*, T> _read;
        private T _current = default!;

        public PyTypedIterator(IntPtr iterator, IntPtr next, delegate*<void*, T> read)
        {
            _iterator = new PyObjectHandle(iterator, true);
            _next = (delegate* unmanaged<IntPtr, void*, IntPtr*, int>)next;
            _read = read;
        }

        public T Current => _current;
        object? IEnumerator.Current => _current;

        public bool MoveNext()
        {
            byte* storage = stackalloc byte[32];
            new Span<byte>(storage, 32).Clear();
            IntPtr keep = IntPtr.Zero;
            int status = _next(_iterator.Object, storage, &keep);
            if (status == 1)
                return false;
            if (status != 0)
                throw new PythonErrorPendingException();
            try
            {
                _current = _read(storage);
            }
            finally
            {
                PyObjects.DecRef(keep);
            }
            return true;
        }

        public void Reset() => throw new NotSupportedException("a Python iterator cannot be reset");
        public void Dispose() => _iterator.Dispose();
    }
}
