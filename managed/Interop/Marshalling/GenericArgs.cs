using System;
using System.Collections;
using System.Collections.Generic;

namespace Orvane.WrpGen.Interop
{
    /// <summary>
    /// Typed parameters built from Python containers through the typed
    /// callback tables of one instantiation (each a one-slot table in the
    /// generic table list). A Python element of the wrong type leaves its
    /// converter's TypeError pending, and the call fails with it.
    /// </summary>
    public static unsafe class GenericArgs
    {
        private static IntPtr Slot(int table)
        {
            IntPtr** tables = ExchangeHost.GenericTables;
            IntPtr fn = tables == null || tables[table] == null ? IntPtr.Zero : tables[table][0];
            if (fn == IntPtr.Zero)
                throw new InvalidOperationException($"native generic callback table {table} is not registered");
            return fn;
        }

        /// <summary>T[]: a managed array as it is, or a new array of the Python list's or sequence's items.</summary>
        public static T[]? ArrayFromArg<T>(VariantArg* arg, int listTable, int sequenceTable, delegate*<void*, T> read)
        {
            if (arg == null || arg->Value == IntPtr.Zero)
                return null;
            if (arg->Type == 0)
            {
                object? target = Handles.Target(arg->Value);
                return target as T[] ?? new List<T>((IEnumerable<T>)target!).ToArray();
            }
            return arg->Type == 1
                ? ListItems(arg->Value, listTable, read)
                : SequenceItems(arg->Value, sequenceTable, read);
        }

        private static T[] ListItems<T>(IntPtr list, int table, delegate*<void*, T> read)
        {
            int count = PyCallbacks.ListLength(list);
            if (count < 0)
                throw new PythonErrorPendingException();
            var getItem = (delegate* unmanaged<IntPtr, int, void*, int>)Slot(table);
            var result = new T[count];
            byte* storage = stackalloc byte[32];
            for (int i = 0; i < count; i++)
            {
                new Span<byte>(storage, 32).Clear();
                if (getItem(list, i, storage) != 0)
                    throw new PythonErrorPendingException();
                result[i] = read(storage);
            }
            return result;
        }

        private static T[] SequenceItems<T>(IntPtr sequence, int table, delegate*<void*, T> read)
        {
            int count = PyCallbacks.SequenceLength(sequence);
            if (count < 0)
                throw new PythonErrorPendingException();
            var getItem = (delegate* unmanaged<IntPtr, int, void*, IntPtr*, int>)Slot(table);
            var result = new T[count];
            byte* storage = stackalloc byte[32];
            for (int i = 0; i < count; i++)
            {
                new Span<byte>(storage, 32).Clear();
                IntPtr keep = IntPtr.Zero;
                if (getItem(sequence, i, storage, &keep) != 0)
                    throw new PythonErrorPendingException();
                try
                {
                    result[i] = read(storage);
                }
                finally
                {
                    PyObjects.DecRef(keep);
                }
            }
            return result;
        }

        /// <summary>IEnumerable&lt;T&gt;: a managed enumerable as it is, or a typed view over a Python iterable.</summary>
        public static IEnumerable<T>? EnumerableFromArg<T>(VariantArg* arg, int iterTable, delegate*<void*, T> read)
        {
            if (arg == null || arg->Value == IntPtr.Zero)
                return null;
            if (arg->Type == 0)
                return (IEnumerable<T>?)Handles.Target(arg->Value);
            return new PyTypedIterable<T>(arg->Value, iterTable, read);
        }

        internal static IntPtr IterNextSlot(int table) => Slot(table);
    }
}
