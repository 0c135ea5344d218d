// Interop proxies of IEnumerable, IEnumerator, CollectionBase and
// ReadOnlyCollectionBase. Entries report every exception through the error bridge.
using System;
using System.Runtime.CompilerServices;
using System.Collections;
using System.Runtime.InteropServices;

namespace Orvane.WrpGen.Interop
{
    /// <summary>Interop proxy of IEnumerable: enumerators for Python iteration; views over Python iterables.</summary>
    public static unsafe class SiApiEnumerable
    {
        /// <summary>0 with the enumerator written to <paramref name="result"/>; -1 on failure.</summary>
        [UnmanagedCallersOnly]
        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int GetEnumerator(IntPtr handle, PyObjectOutArg* result)
        {
            try
            {
                IEnumerator enumerator = Handles.Self<IEnumerable>(handle).GetEnumerator();
                Handles.WriteOut(result, enumerator);
                return 0;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return -1;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPyIterable(IntPtr iterable)
        {
            try
            {
                return Handles.Alloc(new PyIterableView(iterable));
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return IntPtr.Zero;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static byte IsAssignableTo(IntPtr handle)
        {
            try
            {
                return Handles.Target(handle) is IEnumerable ? (byte)1 : (byte)0;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }
    }

    /// <summary>Interop proxy of IEnumerator: one step of a managed enumeration.</summary>
    public static unsafe class SiApiEnumerator
    {
        /// <summary>0 with a new reference to the element in <paramref name="result"/>, 1 at the end, -1 on failure.</summary>
        [UnmanagedCallersOnly]
        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
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
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return -1;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static byte IsAssignableTo(IntPtr handle)
        {
            try
            {
                return Handles.Target(handle) is IEnumerator ? (byte)1 : (byte)0;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }
    }

    /// <summary>
    /// Interop proxy of CollectionBase. A Python list or sequence becomes a
    /// new collection holding its items (CollectionBase keeps its own storage).
    /// </summary>
    public static unsafe class SiApiCollectionBase
    {
        [UnmanagedCallersOnly]
        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static byte IsAssignableTo(IntPtr handle)
        {
            try
            {
                return Handles.Target(handle) is CollectionBase ? (byte)1 : (byte)0;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPyList(IntPtr list)
        {
            try
            {
                return Handles.Alloc(new PyItemsCollection(new PyListView(list)));
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return IntPtr.Zero;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPySequence(IntPtr sequence)
        {
            try
            {
                return Handles.Alloc(new PyItemsCollection(new PySequenceView(sequence)));
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return IntPtr.Zero;
            }
        }
    }

    /// <summary>Interop proxy of ReadOnlyCollectionBase; Python items are copied as for CollectionBase.</summary>
    public static unsafe class SiApiReadOnlyCollectionBase
    {
        [UnmanagedCallersOnly]
        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static byte IsAssignableTo(IntPtr handle)
        {
            try
            {
                return Handles.Target(handle) is ReadOnlyCollectionBase ? (byte)1 : (byte)0;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPyList(IntPtr list)
        {
            try
            {
                return Handles.Alloc(new PyItemsReadOnlyCollection(new PyListView(list)));
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return IntPtr.Zero;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPySequence(IntPtr sequence)
        {
            try
            {
                return Handles.Alloc(new PyItemsReadOnlyCollection(new PySequenceView(sequence)));
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return IntPtr.Zero;
            }
        }
    }
}
