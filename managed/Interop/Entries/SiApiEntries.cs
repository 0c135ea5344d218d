// The bodies behind the entries of the fixed SiApi proxies (SiApiLists.cs,
// SiApiEnumerables.cs). Native code binds one exported method per (proxy,
// entry); each forwards here with TSelf, the type its proxy casts the handle
// to, so a wrong target fails with that proxy's own cast error. Every body
// reports its exception through EntryErrors (a Python error already pending
// stays as it is) and returns the entry's failure result.
using System;
using System.Collections;
using System.Runtime.CompilerServices;

namespace Orvane.WrpGen.Interop
{
    internal static unsafe class SiApiEntries
    {
        // Compiled fully optimised on first call like the entries themselves: tiered
        // code would run these bodies unoptimised until the runtime promotes them.
        private const MethodImplOptions Optimized = MethodImplOptions.AggressiveOptimization;

        [MethodImpl(Optimized)]
        public static int SqLength<TSelf>(IntPtr handle) where TSelf : class, ICollection
        {
            try { return Handles.Self<TSelf>(handle).Count; }
            catch (Exception e) { EntryErrors.Report(e); return -1; }
        }

        [MethodImpl(Optimized)]
        public static int SqContains<TSelf>(IntPtr handle, VariantArg* value) where TSelf : class, ICollection
        {
            try
            {
                var self = Handles.Self<TSelf>(handle);
                return ListOperations.Contains(self, Elements.FromArg(self, value)) ? 1 : 0;
            }
            catch (Exception e) { EntryErrors.Report(e); return 0; }
        }

        [MethodImpl(Optimized)]
        public static int CountOf<TSelf>(IntPtr handle, VariantArg* value) where TSelf : class, ICollection
        {
            try
            {
                var self = Handles.Self<TSelf>(handle);
                return ListOperations.CountOf(self, Elements.FromArg(self, value));
            }
            catch (Exception e) { EntryErrors.Report(e); return 0; }
        }

        [MethodImpl(Optimized)]
        public static int SqGetItem<TSelf>(IntPtr handle, int index, IntPtr* result) where TSelf : class, IList
        {
            try { return ListOperations.GetItem(Handles.Self<TSelf>(handle), index, result); }
            catch (Exception e) { EntryErrors.Report(e); return ListOperations.Failed; }
        }

        [MethodImpl(Optimized)]
        public static IntPtr SqGetItemNoCheck<TSelf>(IntPtr handle, int index) where TSelf : class, IList
        {
            try { return Variants.ToPyChecked(Handles.Self<TSelf>(handle)[index]); }
            catch (Exception e) { EntryErrors.Report(e); return IntPtr.Zero; }
        }

        [MethodImpl(Optimized)]
        public static int SqSetItem<TSelf>(IntPtr handle, int index, VariantArg* value) where TSelf : class, IList
        {
            try { return ListOperations.SetItem(Handles.Self<TSelf>(handle), index, value); }
            catch (Exception e) { EntryErrors.Report(e); return ListOperations.Failed; }
        }

        [MethodImpl(Optimized)]
        public static void SqSetItemNoCheck<TSelf>(IntPtr handle, int index, VariantArg* value) where TSelf : class, IList
        {
            try
            {
                var self = Handles.Self<TSelf>(handle);
                self[index] = Elements.FromArg(self, value);
            }
            catch (Exception e) { EntryErrors.Report(e); }
        }

        [MethodImpl(Optimized)]
        public static void Add<TSelf>(IntPtr handle, VariantArg* value) where TSelf : class, IList
        {
            try
            {
                var self = Handles.Self<TSelf>(handle);
                self.Add(Elements.FromArg(self, value));
            }
            catch (Exception e) { EntryErrors.Report(e); }
        }

        [MethodImpl(Optimized)]
        public static void Insert<TSelf>(IntPtr handle, int index, VariantArg* value) where TSelf : class, IList
        {
            try
            {
                var self = Handles.Self<TSelf>(handle);
                self.Insert(index, Elements.FromArg(self, value));
            }
            catch (Exception e) { EntryErrors.Report(e); }
        }

        [MethodImpl(Optimized)]
        public static byte Remove<TSelf>(IntPtr handle, VariantArg* value) where TSelf : class, IList
        {
            try { return ListOperations.Remove(Handles.Self<TSelf>(handle), value) ? (byte)1 : (byte)0; }
            catch (Exception e) { EntryErrors.Report(e); return 0; }
        }

        [MethodImpl(Optimized)]
        public static int RemoveAt<TSelf>(IntPtr handle, int index) where TSelf : class, IList
        {
            try { return ListOperations.RemoveAt(Handles.Self<TSelf>(handle), index); }
            catch (Exception e) { EntryErrors.Report(e); return ListOperations.Failed; }
        }

        [MethodImpl(Optimized)]
        public static int Pop<TSelf>(IntPtr handle, int hasIndex, int index, IntPtr* result) where TSelf : class, IList
        {
            try { return ListOperations.Pop(Handles.Self<TSelf>(handle), hasIndex != 0, index, result); }
            catch (Exception e) { EntryErrors.Report(e); return ListOperations.Failed; }
        }

        [MethodImpl(Optimized)]
        public static void Clear<TSelf>(IntPtr handle) where TSelf : class, IList
        {
            try { Handles.Self<TSelf>(handle).Clear(); }
            catch (Exception e) { EntryErrors.Report(e); }
        }

        [MethodImpl(Optimized)]
        public static int SqInplaceConcat<TSelf>(IntPtr handle, IntPtr other) where TSelf : class, IList
        {
            try { return ListOperations.InplaceConcat(Handles.Self<TSelf>(handle), Handles.Target(other)); }
            catch (Exception e) { EntryErrors.Report(e); return 0; }
        }

        [MethodImpl(Optimized)]
        public static void SqInplaceRepeat<TSelf>(IntPtr handle, int count) where TSelf : class, IList
        {
            try { ListOperations.InplaceRepeat(Handles.Self<TSelf>(handle), count); }
            catch (Exception e) { EntryErrors.Report(e); }
        }

        [MethodImpl(Optimized)]
        public static int MpSetItems<TSelf>(IntPtr handle, IntPtr source, int start, int length, int step) where TSelf : class, IList
        {
            try { return ListOperations.SetItems(Handles.Self<TSelf>(handle), Handles.Target(source), start, length, step); }
            catch (Exception e) { EntryErrors.Report(e); return 0; }
        }

        [MethodImpl(Optimized)]
        public static void MpRemoveItems<TSelf>(IntPtr handle, int start, int length, int step) where TSelf : class, IList
        {
            try { ListOperations.RemoveItems(Handles.Self<TSelf>(handle), start, length, step); }
            catch (Exception e) { EntryErrors.Report(e); }
        }

        [MethodImpl(Optimized)]
        public static void Reverse<TSelf>(IntPtr handle) where TSelf : class, IList
        {
            try { ListOperations.Reverse(Handles.Self<TSelf>(handle)); }
            catch (Exception e) { EntryErrors.Report(e); }
        }

        [MethodImpl(Optimized)]
        public static void Sort<TSelf>(IntPtr handle, int reverse) where TSelf : class, IList
        {
            try { ListOperations.Sort(Handles.Self<TSelf>(handle), reverse != 0); }
            catch (Exception e) { EntryErrors.Report(e); }
        }

        [MethodImpl(Optimized)]
        public static int IndexBy<TSelf>(IntPtr handle, int hasStart, int start, int hasStop, int stop, VariantArg* value)
            where TSelf : class, IList
        {
            try { return ListOperations.IndexBy(Handles.Self<TSelf>(handle), hasStart != 0, start, hasStop != 0, stop, value); }
            catch (Exception e) { EntryErrors.Report(e); return -1; }
        }

        /// <summary>1 when the object behind the handle is a <typeparamref name="T"/>; a null handle gives 0.</summary>
        [MethodImpl(Optimized)]
        public static byte IsAssignableTo<T>(IntPtr handle) where T : class
        {
            try { return Handles.Target(handle) is T ? (byte)1 : (byte)0; }
            catch (Exception e) { EntryErrors.Report(e); return 0; }
        }

        /// <summary>A new handle to what <paramref name="make"/> builds over a Python object; 0 on failure.</summary>
        [MethodImpl(Optimized)]
        public static IntPtr Create(delegate*<IntPtr, object> make, IntPtr source)
        {
            try { return Handles.Alloc(make(source)); }
            catch (Exception e) { EntryErrors.Report(e); return IntPtr.Zero; }
        }

        // Factories for Create: live views over the Python object (no copy).
        public static object ListView(IntPtr list) => new PyListView(list);
        public static object SequenceView(IntPtr sequence) => new PySequenceView(sequence);
        public static object IterableView(IntPtr iterable) => new PyIterableView(iterable);
    }
}
