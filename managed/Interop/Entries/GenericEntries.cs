using System;
using System.Collections;
using System.Collections.Generic;

namespace Orvane.WrpGen.Interop
{
    /// <summary>
    /// The work behind the entries of the generated typed proxies
    /// (Orvane.WrpGen.Generic.*_&lt;ID8&gt;). Each generated class supplies its
    /// element type's reader (native storage to T) and writer (T into an
    /// object out record) and wraps every call in the usual entry error
    /// handling. Status results: 0 ok, 1 empty (Pop) or end (MoveNext),
    /// 2 index out of range.
    /// </summary>
    public static unsafe class GenericEntries<T>
    {
        public static IList<T> List(IntPtr handle) => Handles.Self<IList<T>>(handle);
        public static ICollection<T> Collection(IntPtr handle) => Handles.Self<ICollection<T>>(handle);

        public static int GetItem(IntPtr handle, int index, PyObjectOutArg* result, delegate*<PyObjectOutArg*, T, void> write)
        {
            var list = List(handle);
            if ((uint)index >= (uint)list.Count)
                return 2;
            write(result, list[index]);
            return 0;
        }

        public static void GetItemNoCheck(IntPtr handle, int index, PyObjectOutArg* result, delegate*<PyObjectOutArg*, T, void> write) =>
            write(result, List(handle)[index]);

        public static int SetItem(IntPtr handle, int index, T value)
        {
            var list = List(handle);
            if ((uint)index >= (uint)list.Count)
                return 2;
            list[index] = value;
            return 0;
        }

        public static int IndexBy(IntPtr handle, int hasStart, int start, int hasStop, int stop, T value)
        {
            var list = List(handle);
            int count = list.Count;
            int from = hasStart != 0 ? Clamp(start, count) : 0;
            int to = hasStop != 0 ? Clamp(stop, count) : count;
            var comparer = EqualityComparer<T>.Default;
            for (int i = from; i < to; i++)
                if (comparer.Equals(list[i], value))
                    return i;
            return -1;
        }

        // A Python-style bound: negative counts from the end, then clipped to [0, count].
        private static int Clamp(int index, int count)
        {
            if (index < 0)
                index += count;
            return index < 0 ? 0 : index > count ? count : index;
        }

        public static int CountOf(IntPtr handle, T value)
        {
            int n = 0;
            var comparer = EqualityComparer<T>.Default;
            foreach (T item in Collection(handle))
                if (comparer.Equals(item, value))
                    n++;
            return n;
        }

        public static void Reverse(IntPtr handle)
        {
            var list = List(handle);
            for (int i = 0, j = list.Count - 1; i < j; i++, j--)
                (list[i], list[j]) = (list[j], list[i]);
        }

        public static void Sort(IntPtr handle, int reverse)
        {
            var list = List(handle);
            var items = new List<T>(list);
            items.Sort(Comparer<T>.Default);
            if (reverse != 0)
                items.Reverse();
            for (int i = 0; i < items.Count; i++)
                list[i] = items[i];
        }

        /// <summary>Slice assignment from another managed collection of the same element type; 0 declines.</summary>
        public static int MpSetItems(IntPtr handle, IntPtr source, int start, int sliceLength, int step)
        {
            if (Handles.Target(source) is not IEnumerable<T> items)
                return 0;
            var values = new List<T>(items);  // a snapshot: the source may be the list itself
            if (values.Count != sliceLength)
                return 0;
            var list = List(handle);
            for (int k = 0; k < sliceLength; k++)
                list[start + k * step] = values[k];
            return 1;
        }

        public static int RemoveAt(IntPtr handle, int index)
        {
            var list = List(handle);
            if ((uint)index >= (uint)list.Count)
                return 2;
            list.RemoveAt(index);
            return 0;
        }

        public static int Pop(IntPtr handle, int hasIndex, int index, PyObjectOutArg* result, delegate*<PyObjectOutArg*, T, void> write)
        {
            var list = List(handle);
            int count = list.Count;
            if (count == 0)
                return 1;
            if (hasIndex == 0)
                index = count - 1;
            else if (index < 0)
                index += count;
            if ((uint)index >= (uint)count)
                return 2;
            T item = list[index];
            list.RemoveAt(index);
            write(result, item);
            return 0;
        }

        /// <summary>x += y with y another managed collection of T; 0 declines.</summary>
        public static int InplaceConcat(IntPtr handle, IntPtr other)
        {
            if (Handles.Target(other) is not IEnumerable<T> items)
                return 0;
            var list = List(handle);
            foreach (T item in new List<T>(items))
                list.Add(item);
            return 1;
        }

        public static void InplaceRepeat(IntPtr handle, int times)
        {
            var list = List(handle);
            var items = new List<T>(list);
            if (times <= 0)
            {
                list.Clear();
                return;
            }
            for (int n = 1; n < times; n++)
                foreach (T item in items)
                    list.Add(item);
        }

        /// <summary>Removes slice positions start, start+step, ... (native code makes the step negative).</summary>
        public static void MpRemoveItems(IntPtr handle, int start, int sliceLength, int step)
        {
            var list = List(handle);
            for (int k = 0; k < sliceLength; k++)
                list.RemoveAt(start + k * step);
        }

        public static int GetEnumerator(IntPtr handle, PyObjectOutArg* result)
        {
            Handles.WriteOut(result, Handles.Self<IEnumerable<T>>(handle).GetEnumerator());
            return 0;
        }

        public static int MoveNext(IntPtr handle, PyObjectOutArg* result, delegate*<PyObjectOutArg*, T, void> write)
        {
            var enumerator = Handles.Self<IEnumerator<T>>(handle);
            if (!enumerator.MoveNext())
                return 1;
            write(result, enumerator.Current);
            return 0;
        }

        /// <summary>insert(i, x) as a Python list does it: a negative index counts from the end, both ends clamp.</summary>
        public static void Insert(IntPtr handle, int index, T value)
        {
            var list = List(handle);
            int count = list.Count;
            if (index < 0)
                index = Math.Max(0, index + count);
            list.Insert(Math.Min(index, count), value);
        }

        /// <summary>
        /// A list-typed result: a managed IList&lt;T&gt; as it is (a view over a
        /// Python list gives that list back), another collection of T as a copy.
        /// </summary>
        public static void WriteListResult(PyCollectionArg* result, object? value)
        {
            object? written = value switch
            {
                TypedList<T> typed when typed.Inner is IPyObjectView => typed.Inner,
                null or IList<T> => value,
                IEnumerable<T> items => new List<T>(items),
                _ => value,
            };
            Collections.WriteResult(result, written);
        }

        /// <summary>An element written as a finished Python object (primitive and string elements).</summary>
        public static void WriteObject(PyObjectOutArg* result, IntPtr obj)
        {
            if (obj == IntPtr.Zero)
                throw new PythonErrorPendingException();
            result->Handle = obj;
            result->TypeKey = IntPtr.Zero;
        }
    }

}
