// The interop proxies of the list-like collections. Every entry is called
// from native code through a bound function pointer and forwards to the
// guarded body in SiApiEntries, typed by what the proxy casts its target to.
// Status results: 0 ok, 1 empty (Pop), 2 index out of range, -1 failure with
// a Python error pending.
using System;
using System.Collections;
using System.Runtime.CompilerServices;
using System.Runtime.InteropServices;
using static System.Runtime.CompilerServices.MethodImplOptions;

namespace Orvane.WrpGen.Interop
{
    /// <summary>Interop proxy of ICollection: length, membership and counting; views over Python lists and iterables.</summary>
    public static unsafe class SiApiCntCollection
    {
        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int SqLength(IntPtr handle) => SiApiEntries.SqLength<ICollection>(handle);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int SqContains(IntPtr handle, VariantArg* value) => SiApiEntries.SqContains<ICollection>(handle, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int CountOf(IntPtr handle, VariantArg* value) => SiApiEntries.CountOf<ICollection>(handle, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPyList(IntPtr list) => SiApiEntries.Create(&SiApiEntries.ListView, list);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPyIterable(IntPtr iterable) => SiApiEntries.Create(&SiApiEntries.IterableView, iterable);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static byte IsAssignableTo(IntPtr handle) => SiApiEntries.IsAssignableTo<ICollection>(handle);
    }

    /// <summary>Interop proxy of IList: the Python list protocol on any managed list.</summary>
    public static unsafe class SiApiCntList
    {
        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int SqGetItem(IntPtr handle, int index, IntPtr* result) => SiApiEntries.SqGetItem<IList>(handle, index, result);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static IntPtr SqGetItemNoCheck(IntPtr handle, int index) => SiApiEntries.SqGetItemNoCheck<IList>(handle, index);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int SqSetItem(IntPtr handle, int index, VariantArg* value) => SiApiEntries.SqSetItem<IList>(handle, index, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void SqSetItemNoCheck(IntPtr handle, int index, VariantArg* value) => SiApiEntries.SqSetItemNoCheck<IList>(handle, index, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void Add(IntPtr handle, VariantArg* value) => SiApiEntries.Add<IList>(handle, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void Insert(IntPtr handle, int index, VariantArg* value) => SiApiEntries.Insert<IList>(handle, index, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static byte Remove(IntPtr handle, VariantArg* value) => SiApiEntries.Remove<IList>(handle, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int RemoveAt(IntPtr handle, int index) => SiApiEntries.RemoveAt<IList>(handle, index);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int Pop(IntPtr handle, int hasIndex, int index, IntPtr* result) => SiApiEntries.Pop<IList>(handle, hasIndex, index, result);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void Clear(IntPtr handle) => SiApiEntries.Clear<IList>(handle);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int SqInplaceConcat(IntPtr handle, IntPtr other) => SiApiEntries.SqInplaceConcat<IList>(handle, other);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void SqInplaceRepeat(IntPtr handle, int count) => SiApiEntries.SqInplaceRepeat<IList>(handle, count);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int MpSetItems(IntPtr handle, IntPtr source, int start, int length, int step) =>
            SiApiEntries.MpSetItems<IList>(handle, source, start, length, step);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void MpRemoveItems(IntPtr handle, int start, int length, int step) =>
            SiApiEntries.MpRemoveItems<IList>(handle, start, length, step);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void Reverse(IntPtr handle) => SiApiEntries.Reverse<IList>(handle);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void Sort(IntPtr handle, int reverse) => SiApiEntries.Sort<IList>(handle, reverse);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int IndexBy(IntPtr handle, int hasStart, int start, int hasStop, int stop, VariantArg* value) =>
            SiApiEntries.IndexBy<IList>(handle, hasStart, start, hasStop, stop, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int SqContains(IntPtr handle, VariantArg* value) => SiApiEntries.SqContains<IList>(handle, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int CountOf(IntPtr handle, VariantArg* value) => SiApiEntries.CountOf<IList>(handle, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPyList(IntPtr list) => SiApiEntries.Create(&SiApiEntries.ListView, list);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPySequence(IntPtr sequence) => SiApiEntries.Create(&SiApiEntries.SequenceView, sequence);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static byte IsAssignableTo(IntPtr handle) => SiApiEntries.IsAssignableTo<IList>(handle);
    }

    /// <summary>Interop proxy of Array (fixed size; the unchecked setter is exported as SqSetItemNoChek).</summary>
    public static unsafe class SiApiArray
    {
        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int SqLength(IntPtr handle) => SiApiEntries.SqLength<Array>(handle);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int SqContains(IntPtr handle, VariantArg* value) => SiApiEntries.SqContains<Array>(handle, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int SqGetItem(IntPtr handle, int index, IntPtr* result) => SiApiEntries.SqGetItem<Array>(handle, index, result);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static IntPtr SqGetItemNoCheck(IntPtr handle, int index) => SiApiEntries.SqGetItemNoCheck<Array>(handle, index);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int SqSetItem(IntPtr handle, int index, VariantArg* value) => SiApiEntries.SqSetItem<Array>(handle, index, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void SqSetItemNoChek(IntPtr handle, int index, VariantArg* value) => SiApiEntries.SqSetItemNoCheck<Array>(handle, index, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int MpSetItems(IntPtr handle, IntPtr source, int start, int length, int step) =>
            SiApiEntries.MpSetItems<Array>(handle, source, start, length, step);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void Reverse(IntPtr handle) => SiApiEntries.Reverse<Array>(handle);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void Sort(IntPtr handle, int reverse) => SiApiEntries.Sort<Array>(handle, reverse);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int IndexBy(IntPtr handle, int hasStart, int start, int hasStop, int stop, VariantArg* value) =>
            SiApiEntries.IndexBy<Array>(handle, hasStart, start, hasStop, stop, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int CountOf(IntPtr handle, VariantArg* value) => SiApiEntries.CountOf<Array>(handle, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPyList(IntPtr list) => SiApiEntries.Create(&SiApiEntries.ListView, list);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPySequence(IntPtr sequence) => SiApiEntries.Create(&SiApiEntries.SequenceView, sequence);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static byte IsAssignableTo(IntPtr handle) => SiApiEntries.IsAssignableTo<Array>(handle);
    }

    /// <summary>Interop proxy of ArrayList (the unchecked setter is exported as SqSetItemNoChek).</summary>
    public static unsafe class SiApiArrayList
    {
        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int SqLength(IntPtr handle) => SiApiEntries.SqLength<ArrayList>(handle);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void Add(IntPtr handle, VariantArg* value) => SiApiEntries.Add<ArrayList>(handle, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static byte Remove(IntPtr handle, VariantArg* value) => SiApiEntries.Remove<ArrayList>(handle, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void Clear(IntPtr handle) => SiApiEntries.Clear<ArrayList>(handle);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int SqContains(IntPtr handle, VariantArg* value) => SiApiEntries.SqContains<ArrayList>(handle, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int SqGetItem(IntPtr handle, int index, IntPtr* result) => SiApiEntries.SqGetItem<ArrayList>(handle, index, result);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static IntPtr SqGetItemNoCheck(IntPtr handle, int index) => SiApiEntries.SqGetItemNoCheck<ArrayList>(handle, index);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int SqSetItem(IntPtr handle, int index, VariantArg* value) => SiApiEntries.SqSetItem<ArrayList>(handle, index, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void SqSetItemNoChek(IntPtr handle, int index, VariantArg* value) => SiApiEntries.SqSetItemNoCheck<ArrayList>(handle, index, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void Insert(IntPtr handle, int index, VariantArg* value) => SiApiEntries.Insert<ArrayList>(handle, index, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int RemoveAt(IntPtr handle, int index) => SiApiEntries.RemoveAt<ArrayList>(handle, index);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int Pop(IntPtr handle, int hasIndex, int index, IntPtr* result) => SiApiEntries.Pop<ArrayList>(handle, hasIndex, index, result);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int SqInplaceConcat(IntPtr handle, IntPtr other) => SiApiEntries.SqInplaceConcat<ArrayList>(handle, other);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void SqInplaceRepeat(IntPtr handle, int count) => SiApiEntries.SqInplaceRepeat<ArrayList>(handle, count);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int MpSetItems(IntPtr handle, IntPtr source, int start, int length, int step) =>
            SiApiEntries.MpSetItems<ArrayList>(handle, source, start, length, step);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void MpRemoveItems(IntPtr handle, int start, int length, int step) =>
            SiApiEntries.MpRemoveItems<ArrayList>(handle, start, length, step);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void Reverse(IntPtr handle) => SiApiEntries.Reverse<ArrayList>(handle);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void Sort(IntPtr handle, int reverse) => SiApiEntries.Sort<ArrayList>(handle, reverse);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int IndexBy(IntPtr handle, int hasStart, int start, int hasStop, int stop, VariantArg* value) =>
            SiApiEntries.IndexBy<ArrayList>(handle, hasStart, start, hasStop, stop, value);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static int CountOf(IntPtr handle, VariantArg* value) => SiApiEntries.CountOf<ArrayList>(handle, value);

        /// <summary>Grows the capacity to hold <paramref name="additional"/> more items (never shrinks).</summary>
        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static void EnsureCapacity(IntPtr handle, int additional)
        {
            try
            {
                var self = Handles.Self<ArrayList>(handle);
                long wanted = (long)self.Count + Math.Max(additional, 0);
                if (wanted > self.Capacity && wanted <= int.MaxValue)
                    self.Capacity = (int)wanted;
            }
            catch (Exception e) { EntryErrors.Report(e); }
        }

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPyList(IntPtr list) => SiApiEntries.Create(&SiApiEntries.ListView, list);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPySequence(IntPtr sequence) => SiApiEntries.Create(&SiApiEntries.SequenceView, sequence);

        [UnmanagedCallersOnly, MethodImpl(AggressiveOptimization)]
        public static byte IsAssignableTo(IntPtr handle) => SiApiEntries.IsAssignableTo<ArrayList>(handle);
    }
}
