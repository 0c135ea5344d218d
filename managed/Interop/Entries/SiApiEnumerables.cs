// Interop proxies of IEnumerable, IEnumerator, CollectionBase and
// ReadOnlyCollectionBase. Entries report every exception through the error
// bridge; the shared ones forward to the guarded bodies in SiApiEntries.
using System;
using System.Collections;
using System.Runtime.CompilerServices;
using System.Runtime.InteropServices;
using static System.Runtime.CompilerServices.MethodImplOptions;

namespace Orvane.WrpGen.Interop
{
    /// <summary>Interop proxy of IEnumerable: enumerators for Python iteration; views over Python iterables.</summary>
    public static unsafe class SiApiEnumerable
    {
        /// <summary>0 with the enumerator written to <paramref name="result"/>; -1 on failure.</summary>
        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int GetEnumerator(IntPtr handle, PyObjectOutArg* result)
        {
            try
            {
                IEnumerator enumerator = Handles.Self<IEnumerable>(handle).GetEnumerator();
                Handles.WriteOut(result, enumerator);
                return 0;
            }
            catch (Exception e) { EntryErrors.Report(e); return -1; }
        }

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPyIterable(IntPtr iterable) => SiApiEntries.Create(&SiApiEntries.IterableView, iterable);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static byte IsAssignableTo(IntPtr handle) => SiApiEntries.IsAssignableTo<IEnumerable>(handle);
    }

    /// <summary>Interop proxy of IEnumerator: one step of a managed enumeration.</summary>
    public static unsafe class SiApiEnumerator
    {
        /// <summary>0 with a new reference to the element in <paramref name="result"/>, 1 at the end, -1 on failure.</summary>
        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int MoveNext(IntPtr handle, IntPtr* result)
        {
            try
            {
                IEnumerator enumerator = Handles.Self<IEnumerator>(handle);
                if (!enumerator.MoveNext())
                    return 1;
                *result = Variants.ToPyChecked(enumerator.Current);
                return 0;
            }
            catch (Exception e) { EntryErrors.Report(e); return -1; }
        }

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static byte IsAssignableTo(IntPtr handle) => SiApiEntries.IsAssignableTo<IEnumerator>(handle);
    }

    /// <summary>
    /// Interop proxy of CollectionBase. A Python list or sequence becomes a
    /// new collection holding its items (CollectionBase keeps its own storage).
    /// </summary>
    public static unsafe class SiApiCollectionBase
    {
        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static byte IsAssignableTo(IntPtr handle) => SiApiEntries.IsAssignableTo<CollectionBase>(handle);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPyList(IntPtr list) => SiApiEntries.Create(&CopyOfList, list);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPySequence(IntPtr sequence) => SiApiEntries.Create(&CopyOfSequence, sequence);

        private static object CopyOfList(IntPtr list) => new PyItemsCollection(new PyListView(list));
        private static object CopyOfSequence(IntPtr sequence) => new PyItemsCollection(new PySequenceView(sequence));
    }

    /// <summary>Interop proxy of ReadOnlyCollectionBase; Python items are copied as for CollectionBase.</summary>
    public static unsafe class SiApiReadOnlyCollectionBase
    {
        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static byte IsAssignableTo(IntPtr handle) => SiApiEntries.IsAssignableTo<ReadOnlyCollectionBase>(handle);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPyList(IntPtr list) => SiApiEntries.Create(&CopyOfList, list);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPySequence(IntPtr sequence) => SiApiEntries.Create(&CopyOfSequence, sequence);

        private static object CopyOfList(IntPtr list) => new PyItemsReadOnlyCollection(new PyListView(list));
        private static object CopyOfSequence(IntPtr sequence) => new PyItemsReadOnlyCollection(new PySequenceView(sequence));
    }
}
