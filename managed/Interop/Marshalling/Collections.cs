using System;
using System.Collections;
using System.IO;

namespace Orvane.WrpGen.Interop
{
    /// <summary>
    /// What generated proxies call for collection, enumerable and stream
    /// parameters and results. Parameters arrive as the {kind, value} record
    /// that the native converters fill: kind 0 a managed handle (0 for null),
    /// kind 1 the Python object itself (a list, an iterable, an iterator, a
    /// file object), kind 2 a Python sequence with a length. Views hold a
    /// reference to their Python object of their own.
    /// </summary>
    public static unsafe class Collections
    {
        private static object? Target(VariantArg* arg) => arg == null ? null : Handles.Target(arg->Value);

        private static Exception BadKind(VariantArg* arg, string what) =>
            new ArgumentException($"unexpected argument kind {arg->Type} for {what}");

        /// <summary>IList: kind 1 a list view, kind 2 a read-only sequence view.</summary>
        public static IList? ListFromArg(VariantArg* arg)
        {
            if (arg == null || arg->Value == IntPtr.Zero)
                return null;
            return arg->Type switch
            {
                0 => (IList?)Target(arg),
                1 => new PyListView(arg->Value),
                2 => new PySequenceView(arg->Value),
                _ => throw BadKind(arg, "IList"),
            };
        }

        /// <summary>ICollection: kind 1 a sized iterable view (a list becomes a list view).</summary>
        public static ICollection? CollectionFromArg(VariantArg* arg)
        {
            if (arg == null || arg->Value == IntPtr.Zero)
                return null;
            return arg->Type switch
            {
                0 => (ICollection?)Target(arg),
                1 => new PyIterableView(arg->Value),
                2 => new PySequenceView(arg->Value),
                _ => throw BadKind(arg, "ICollection"),
            };
        }

        /// <summary>IEnumerable: kind 1 an iterable view.</summary>
        public static IEnumerable? EnumerableFromArg(VariantArg* arg)
        {
            if (arg == null || arg->Value == IntPtr.Zero)
                return null;
            return arg->Type switch
            {
                0 => (IEnumerable?)Target(arg),
                1 or 2 => new PyIterableView(arg->Value),
                _ => throw BadKind(arg, "IEnumerable"),
            };
        }

        /// <summary>IEnumerator: kind 1 a view over the Python iterator.</summary>
        public static IEnumerator? EnumeratorFromArg(VariantArg* arg)
        {
            if (arg == null || arg->Value == IntPtr.Zero)
                return null;
            return arg->Type switch
            {
                0 => (IEnumerator?)Target(arg),
                1 => new PyIteratorEnumerator(arg->Value),
                _ => throw BadKind(arg, "IEnumerator"),
            };
        }

        /// <summary>Array: kinds 1 and 2 give a new object[] holding the Python items (a copy).</summary>
        public static Array? ArrayFromArg(VariantArg* arg) => ArrayFromArg<object?>(arg);

        /// <summary>T[]: kinds 1 and 2 give a new T[] of the Python items, converted like list elements.</summary>
        public static T[]? ArrayFromArg<T>(VariantArg* arg)
        {
            if (arg == null || arg->Value == IntPtr.Zero)
                return null;
            if (arg->Type == 0)
                return (T[]?)Target(arg);
            IList source = ListFromArg(arg)!;
            var result = new T[source.Count];
            for (int i = 0; i < result.Length; i++)
                result[i] = (T)Elements.Coerce(source[i], typeof(T))!;
            return result;
        }

        /// <summary>ArrayList: kinds 1 and 2 give a new ArrayList of the Python items (a copy).</summary>
        public static ArrayList? ArrayListFromArg(VariantArg* arg)
        {
            if (arg == null || arg->Value == IntPtr.Zero)
                return null;
            if (arg->Type == 0)
                return (ArrayList?)Target(arg);
            return new ArrayList(ListFromArg(arg)!);
        }

        /// <summary>CollectionBase: kinds 1 and 2 give a new collection of the Python items (a copy).</summary>
        public static CollectionBase? CollectionBaseFromArg(VariantArg* arg)
        {
            if (arg == null || arg->Value == IntPtr.Zero)
                return null;
            if (arg->Type == 0)
                return (CollectionBase?)Target(arg);
            return new PyItemsCollection(ListFromArg(arg)!);
        }

        /// <summary>ReadOnlyCollectionBase: kinds 1 and 2 give a new read-only collection of the Python items.</summary>
        public static ReadOnlyCollectionBase? ReadOnlyCollectionBaseFromArg(VariantArg* arg)
        {
            if (arg == null || arg->Value == IntPtr.Zero)
                return null;
            if (arg->Type == 0)
                return (ReadOnlyCollectionBase?)Target(arg);
            return new PyItemsReadOnlyCollection(ListFromArg(arg)!);
        }

        /// <summary>Stream: kind 1 a stream over the Python file object (the caller keeps ownership of the file).</summary>
        public static Stream? StreamFromArg(VariantArg* arg)
        {
            if (arg == null || arg->Value == IntPtr.Zero)
                return null;
            return arg->Type switch
            {
                0 => (Stream?)Target(arg),
                1 => new PyFileStream(arg->Value),
                _ => throw BadKind(arg, "Stream"),
            };
        }

        /// <summary>
        /// Writes a collection, enumerable, enumerator or stream result: a view
        /// over a Python object gives that object back (kind 1), anything else
        /// a new handle with its type key (kind 0; null gives a null handle).
        /// </summary>
        public static void WriteResult(PyCollectionArg* result, object? value)
        {
            if (value is IPyObjectView view)
            {
                result->Kind = 1;
                result->Value = view.PyObject;
                result->TypeKey = IntPtr.Zero;
                return;
            }
            result->Kind = 0;
            if (value is null)
            {
                result->Value = IntPtr.Zero;
                result->TypeKey = IntPtr.Zero;
                return;
            }
            result->Value = Handles.Alloc(value);
            result->TypeKey = Handles.TypeKey(value);
        }

        /// <summary>The same for Stream results.</summary>
        public static void WriteStreamResult(PyCollectionArg* result, Stream? value) => WriteResult(result, value);
    }

    internal sealed class PyItemsCollection : CollectionBase
    {
        public PyItemsCollection(IList items)
        {
            foreach (object? item in items)
                InnerList.Add(item);
        }
    }

    internal sealed class PyItemsReadOnlyCollection : ReadOnlyCollectionBase
    {
        public PyItemsReadOnlyCollection(IList items)
        {
            foreach (object? item in items)
                InnerList.Add(item);
        }
    }
}
