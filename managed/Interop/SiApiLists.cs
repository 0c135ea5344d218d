// The interop proxies of the list-like collections. Every entry is called
// from native code through a bound function pointer and reports every
// exception through the error bridge (a Python error already pending from a
// failed conversion stays as it is). Status results: 0 ok, 1 empty (Pop),
// 2 index out of range, -1 failure with a Python error pending.
using System;
using System.Runtime.CompilerServices;
using System.Collections;
using System.Runtime.InteropServices;

namespace Orvane.WrpGen.Interop
{
    /// <summary>Interop proxy of ICollection: length, membership and counting; views over Python lists and iterables.</summary>
    public static unsafe class SiApiCntCollection
    {
        private static ICollection Self(IntPtr handle) => Handles.Self<ICollection>(handle);

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int SqLength(IntPtr handle)
        {
            try
            {
                return Self(handle).Count;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return -1;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int SqContains(IntPtr handle, VariantArg* value)
        {
            try
            {
                var self = Self(handle); return ListOperations.Contains(self, Elements.FromArg(self, value)) ? 1 : 0;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int CountOf(IntPtr handle, VariantArg* value)
        {
            try
            {
                var self = Self(handle); return ListOperations.CountOf(self, Elements.FromArg(self, value));
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
                return Handles.Alloc(new PyListView(list));
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return IntPtr.Zero;
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
                return Handles.Target(handle) is ICollection ? (byte)1 : (byte)0;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }
    }

    /// <summary>Interop proxy of IList: the Python list protocol on any managed list.</summary>
    public static unsafe class SiApiCntList
    {
        private static IList Self(IntPtr handle) => Handles.Self<IList>(handle);

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int SqGetItem(IntPtr handle, int index, IntPtr* result)
        {
            try
            {
                return ListOperations.GetItem(Self(handle), index, result);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return ListOperations.Failed;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static IntPtr SqGetItemNoCheck(IntPtr handle, int index)
        {
            try
            {
                return Variants.ToPyChecked(Self(handle)[index]);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return IntPtr.Zero;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int SqSetItem(IntPtr handle, int index, VariantArg* value)
        {
            try
            {
                return ListOperations.SetItem(Self(handle), index, value);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return ListOperations.Failed;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void SqSetItemNoCheck(IntPtr handle, int index, VariantArg* value)
        {
            try
            {
                var self = Self(handle); self[index] = Elements.FromArg(self, value);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void Add(IntPtr handle, VariantArg* value)
        {
            try
            {
                var self = Self(handle); self.Add(Elements.FromArg(self, value));
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void Insert(IntPtr handle, int index, VariantArg* value)
        {
            try
            {
                var self = Self(handle); self.Insert(index, Elements.FromArg(self, value));
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static byte Remove(IntPtr handle, VariantArg* value)
        {
            try
            {
                return ListOperations.Remove(Self(handle), value) ? (byte)1 : (byte)0;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int RemoveAt(IntPtr handle, int index)
        {
            try
            {
                return ListOperations.RemoveAt(Self(handle), index);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return ListOperations.Failed;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int Pop(IntPtr handle, int hasIndex, int index, IntPtr* result)
        {
            try
            {
                return ListOperations.Pop(Self(handle), hasIndex != 0, index, result);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return ListOperations.Failed;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void Clear(IntPtr handle)
        {
            try
            {
                Self(handle).Clear();
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int SqInplaceConcat(IntPtr handle, IntPtr other)
        {
            try
            {
                return ListOperations.InplaceConcat(Self(handle), Handles.Target(other));
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void SqInplaceRepeat(IntPtr handle, int count)
        {
            try
            {
                ListOperations.InplaceRepeat(Self(handle), count);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int MpSetItems(IntPtr handle, IntPtr source, int start, int length, int step)
        {
            try
            {
                return ListOperations.SetItems(Self(handle), Handles.Target(source), start, length, step);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void MpRemoveItems(IntPtr handle, int start, int length, int step)
        {
            try
            {
                ListOperations.RemoveItems(Self(handle), start, length, step);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void Reverse(IntPtr handle)
        {
            try
            {
                ListOperations.Reverse(Self(handle));
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void Sort(IntPtr handle, int reverse)
        {
            try
            {
                ListOperations.Sort(Self(handle), reverse != 0);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int IndexBy(IntPtr handle, int hasStart, int start, int hasStop, int stop, VariantArg* value)
        {
            try
            {
                return ListOperations.IndexBy(Self(handle), hasStart != 0, start, hasStop != 0, stop, value);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return -1;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int SqContains(IntPtr handle, VariantArg* value)
        {
            try
            {
                var self = Self(handle); return ListOperations.Contains(self, Elements.FromArg(self, value)) ? 1 : 0;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int CountOf(IntPtr handle, VariantArg* value)
        {
            try
            {
                var self = Self(handle); return ListOperations.CountOf(self, Elements.FromArg(self, value));
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
                return Handles.Alloc(new PyListView(list));
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
                return Handles.Alloc(new PySequenceView(sequence));
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
                return Handles.Target(handle) is IList ? (byte)1 : (byte)0;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }
    }

    /// <summary>Interop proxy of Array (fixed size; the unchecked setter is exported as SqSetItemNoChek).</summary>
    public static unsafe class SiApiArray
    {
        private static IList Self(IntPtr handle) => Handles.Self<Array>(handle);

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int SqLength(IntPtr handle)
        {
            try
            {
                return Self(handle).Count;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return -1;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int SqContains(IntPtr handle, VariantArg* value)
        {
            try
            {
                var self = Self(handle); return ListOperations.Contains(self, Elements.FromArg(self, value)) ? 1 : 0;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int SqGetItem(IntPtr handle, int index, IntPtr* result)
        {
            try
            {
                return ListOperations.GetItem(Self(handle), index, result);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return ListOperations.Failed;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static IntPtr SqGetItemNoCheck(IntPtr handle, int index)
        {
            try
            {
                return Variants.ToPyChecked(Self(handle)[index]);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return IntPtr.Zero;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int SqSetItem(IntPtr handle, int index, VariantArg* value)
        {
            try
            {
                return ListOperations.SetItem(Self(handle), index, value);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return ListOperations.Failed;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void SqSetItemNoChek(IntPtr handle, int index, VariantArg* value)
        {
            try
            {
                var self = Self(handle); self[index] = Elements.FromArg(self, value);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int MpSetItems(IntPtr handle, IntPtr source, int start, int length, int step)
        {
            try
            {
                return ListOperations.SetItems(Self(handle), Handles.Target(source), start, length, step);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void Reverse(IntPtr handle)
        {
            try
            {
                ListOperations.Reverse(Self(handle));
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void Sort(IntPtr handle, int reverse)
        {
            try
            {
                ListOperations.Sort(Self(handle), reverse != 0);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int IndexBy(IntPtr handle, int hasStart, int start, int hasStop, int stop, VariantArg* value)
        {
            try
            {
                return ListOperations.IndexBy(Self(handle), hasStart != 0, start, hasStop != 0, stop, value);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return -1;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int CountOf(IntPtr handle, VariantArg* value)
        {
            try
            {
                var self = Self(handle); return ListOperations.CountOf(self, Elements.FromArg(self, value));
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
                return Handles.Alloc(new PyListView(list));
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
                return Handles.Alloc(new PySequenceView(sequence));
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
                return Handles.Target(handle) is Array ? (byte)1 : (byte)0;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }
    }

    /// <summary>Interop proxy of ArrayList (the unchecked setter is exported as SqSetItemNoChek).</summary>
    public static unsafe class SiApiArrayList
    {
        private static ArrayList Self(IntPtr handle) => Handles.Self<ArrayList>(handle);

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int SqLength(IntPtr handle)
        {
            try
            {
                return Self(handle).Count;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return -1;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void Add(IntPtr handle, VariantArg* value)
        {
            try
            {
                var self = Self(handle); self.Add(Elements.FromArg(self, value));
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static byte Remove(IntPtr handle, VariantArg* value)
        {
            try
            {
                return ListOperations.Remove(Self(handle), value) ? (byte)1 : (byte)0;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void Clear(IntPtr handle)
        {
            try
            {
                Self(handle).Clear();
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int SqContains(IntPtr handle, VariantArg* value)
        {
            try
            {
                var self = Self(handle); return ListOperations.Contains(self, Elements.FromArg(self, value)) ? 1 : 0;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int SqGetItem(IntPtr handle, int index, IntPtr* result)
        {
            try
            {
                return ListOperations.GetItem(Self(handle), index, result);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return ListOperations.Failed;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static IntPtr SqGetItemNoCheck(IntPtr handle, int index)
        {
            try
            {
                return Variants.ToPyChecked(Self(handle)[index]);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return IntPtr.Zero;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int SqSetItem(IntPtr handle, int index, VariantArg* value)
        {
            try
            {
                return ListOperations.SetItem(Self(handle), index, value);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return ListOperations.Failed;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void SqSetItemNoChek(IntPtr handle, int index, VariantArg* value)
        {
            try
            {
                var self = Self(handle); self[index] = Elements.FromArg(self, value);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void Insert(IntPtr handle, int index, VariantArg* value)
        {
            try
            {
                var self = Self(handle); self.Insert(index, Elements.FromArg(self, value));
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int RemoveAt(IntPtr handle, int index)
        {
            try
            {
                return ListOperations.RemoveAt(Self(handle), index);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return ListOperations.Failed;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int Pop(IntPtr handle, int hasIndex, int index, IntPtr* result)
        {
            try
            {
                return ListOperations.Pop(Self(handle), hasIndex != 0, index, result);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return ListOperations.Failed;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int SqInplaceConcat(IntPtr handle, IntPtr other)
        {
            try
            {
                return ListOperations.InplaceConcat(Self(handle), Handles.Target(other));
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void SqInplaceRepeat(IntPtr handle, int count)
        {
            try
            {
                ListOperations.InplaceRepeat(Self(handle), count);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int MpSetItems(IntPtr handle, IntPtr source, int start, int length, int step)
        {
            try
            {
                return ListOperations.SetItems(Self(handle), Handles.Target(source), start, length, step);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void MpRemoveItems(IntPtr handle, int start, int length, int step)
        {
            try
            {
                ListOperations.RemoveItems(Self(handle), start, length, step);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void Reverse(IntPtr handle)
        {
            try
            {
                ListOperations.Reverse(Self(handle));
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void Sort(IntPtr handle, int reverse)
        {
            try
            {
                ListOperations.Sort(Self(handle), reverse != 0);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int IndexBy(IntPtr handle, int hasStart, int start, int hasStop, int stop, VariantArg* value)
        {
            try
            {
                return ListOperations.IndexBy(Self(handle), hasStart != 0, start, hasStop != 0, stop, value);
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return -1;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int CountOf(IntPtr handle, VariantArg* value)
        {
            try
            {
                var self = Self(handle); return ListOperations.CountOf(self, Elements.FromArg(self, value));
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void EnsureCapacity(IntPtr handle, int additional)
        {
            try
            {
                var self = Self(handle); long wanted = (long)self.Count + Math.Max(additional, 0); if (wanted > self.Capacity && wanted <= int.MaxValue) self.Capacity = (int)wanted;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static IntPtr CreateInstanceFromPyList(IntPtr list)
        {
            try
            {
                return Handles.Alloc(new PyListView(list));
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
                return Handles.Alloc(new PySequenceView(sequence));
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
                return Handles.Target(handle) is ArrayList ? (byte)1 : (byte)0;
            }
            catch (Exception e)
            {
                EntryErrors.Report(e);
                return 0;
            }
        }
    }
}
