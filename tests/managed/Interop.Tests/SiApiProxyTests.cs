using System;
using System.Collections;
using System.Collections.Generic;
using System.IO;
using Orvane.WrpGen.Interop;
using Xunit;

namespace Orvane.Interop.Tests
{
    // The SiApi entries called as native code calls them, through function
    // pointers, over real managed collections and streams.
    public unsafe class SiApiProxyTests
    {
        public SiApiProxyTests() => FakePython.Install();

        private static object? Result(IntPtr obj) => FakePython.Value(obj);

        [Fact]
        public void ListItemsReadWriteAndReportRanges()
        {
            var list = new List<int> { 10, 20, 30 };
            IntPtr h = Handles.Alloc(list);
            IntPtr item;
            Assert.Equal(0, ((delegate* unmanaged<IntPtr, int, IntPtr*, int>)&SiApiCntList.SqGetItem)(h, 2, &item));
            Assert.Equal(30, Result(item));
            Assert.Equal(2, ((delegate* unmanaged<IntPtr, int, IntPtr*, int>)&SiApiCntList.SqGetItem)(h, 3, &item));
            Assert.Equal(2, ((delegate* unmanaged<IntPtr, int, IntPtr*, int>)&SiApiCntList.SqGetItem)(h, -1, &item));

            VariantArg v = FakePython.Arg(99);
            Assert.Equal(0, ((delegate* unmanaged<IntPtr, int, VariantArg*, int>)&SiApiCntList.SqSetItem)(h, 1, &v));
            Assert.Equal(new[] { 10, 99, 30 }, list);
            Assert.Equal(2, ((delegate* unmanaged<IntPtr, int, VariantArg*, int>)&SiApiCntList.SqSetItem)(h, 3, &v));

            // The unchecked reader leaves the range check to the list itself.
            IntPtr none = ((delegate* unmanaged<IntPtr, int, IntPtr>)&SiApiCntList.SqGetItemNoCheck)(h, 7);
            Assert.Equal(IntPtr.Zero, none);
            Assert.StartsWith("System.ArgumentOutOfRangeException", Assert.Single(FakePython.ReportedErrors));
            Handles.Free(h);
        }

        [Fact]
        public void ElementsAreCoercedOrRefusedAsTheCollectionDecides()
        {
            var longs = new List<long>();
            IntPtr h = Handles.Alloc(longs);
            VariantArg small = FakePython.Arg(5);
            ((delegate* unmanaged<IntPtr, VariantArg*, void>)&SiApiCntList.Add)(h, &small);
            Assert.Equal(new[] { 5L }, longs);
            Assert.Equal(1, ((delegate* unmanaged<IntPtr, VariantArg*, int>)&SiApiCntList.SqContains)(h, &small));

            VariantArg text = FakePython.Arg("five");
            ((delegate* unmanaged<IntPtr, VariantArg*, void>)&SiApiCntList.Add)(h, &text);
            Assert.Single(longs);
            Assert.StartsWith("System.ArgumentException", Assert.Single(FakePython.ReportedErrors));
            Handles.Free(h);
        }

        [Fact]
        public void PopRemoveIndexCountFollowPython()
        {
            var list = new List<int> { 1, 2, 3, 2, 5 };
            IntPtr h = Handles.Alloc(list);
            IntPtr item;
            var pop = (delegate* unmanaged<IntPtr, int, int, IntPtr*, int>)&SiApiCntList.Pop;
            Assert.Equal(0, pop(h, 0, 0, &item));
            Assert.Equal(5, Result(item));
            Assert.Equal(0, pop(h, 1, -4, &item));
            Assert.Equal(1, Result(item));
            Assert.Equal(2, pop(h, 1, 9, &item));
            Assert.Equal(new[] { 2, 3, 2 }, list);

            VariantArg two = FakePython.Arg(2), seven = FakePython.Arg(7);
            var indexBy = (delegate* unmanaged<IntPtr, int, int, int, int, VariantArg*, int>)&SiApiCntList.IndexBy;
            Assert.Equal(0, indexBy(h, 0, 0, 0, 0, &two));
            Assert.Equal(2, indexBy(h, 1, 1, 0, 0, &two));
            Assert.Equal(2, indexBy(h, 1, -1, 1, 3, &two));
            Assert.Equal(-1, indexBy(h, 1, 1, 1, 2, &two));
            Assert.Equal(2, ((delegate* unmanaged<IntPtr, VariantArg*, int>)&SiApiCntList.CountOf)(h, &two));

            var remove = (delegate* unmanaged<IntPtr, VariantArg*, byte>)&SiApiCntList.Remove;
            Assert.Equal(1, remove(h, &two));
            Assert.Equal(0, remove(h, &seven));
            Assert.Equal(new[] { 3, 2 }, list);
            Assert.Equal(2, ((delegate* unmanaged<IntPtr, int, int>)&SiApiCntList.RemoveAt)(h, 2));
            ((delegate* unmanaged<IntPtr, void>)&SiApiCntList.Clear)(h);
            Assert.Equal(1, pop(h, 0, 0, &item));
            Assert.Empty(FakePython.ReportedErrors);
            Handles.Free(h);
        }

        [Fact]
        public void SlicesRepetitionConcatenationAndOrder()
        {
            var list = new List<int> { 0, 1, 2, 3, 4 };
            IntPtr h = Handles.Alloc(list);
            // del x[::2] arrives as (4, 3, -2).
            ((delegate* unmanaged<IntPtr, int, int, int, void>)&SiApiCntList.MpRemoveItems)(h, 4, 3, -2);
            Assert.Equal(new[] { 1, 3 }, list);

            Assert.Equal(1, ((delegate* unmanaged<IntPtr, IntPtr, int>)&SiApiCntList.SqInplaceConcat)(h, h));
            Assert.Equal(new[] { 1, 3, 1, 3 }, list);
            ((delegate* unmanaged<IntPtr, int, void>)&SiApiCntList.SqInplaceRepeat)(h, 2);
            Assert.Equal(8, list.Count);

            IntPtr source = Handles.Alloc(new ArrayList { 7L, 8L });
            Assert.Equal(1, ((delegate* unmanaged<IntPtr, IntPtr, int, int, int, int>)&SiApiCntList.MpSetItems)(h, source, 0, 2, 3));
            Assert.Equal(new[] { 7, 3, 1, 8, 1, 3, 1, 3 }, list);
            Assert.Equal(0, ((delegate* unmanaged<IntPtr, IntPtr, int, int, int, int>)&SiApiCntList.MpSetItems)(h, source, 0, 3, 1));

            ((delegate* unmanaged<IntPtr, int, void>)&SiApiCntList.Sort)(h, 1);
            Assert.Equal(new[] { 8, 7, 3, 3, 3, 1, 1, 1 }, list);
            ((delegate* unmanaged<IntPtr, void>)&SiApiCntList.Reverse)(h);
            Assert.Equal(new[] { 1, 1, 1, 3, 3, 3, 7, 8 }, list);
            Handles.Free(source);
            Handles.Free(h);
        }

        [Fact]
        public void ArraysAndArrayLists()
        {
            int[] array = { 3, 1, 2 };
            IntPtr a = Handles.Alloc(array);
            Assert.Equal(3, ((delegate* unmanaged<IntPtr, int>)&SiApiArray.SqLength)(a));
            ((delegate* unmanaged<IntPtr, int, void>)&SiApiArray.Sort)(a, 0);
            Assert.Equal(new[] { 1, 2, 3 }, array);
            VariantArg v = FakePython.Arg(9);
            ((delegate* unmanaged<IntPtr, int, VariantArg*, void>)&SiApiArray.SqSetItemNoChek)(a, 0, &v);
            Assert.Equal(9, array[0]);
            ((delegate* unmanaged<IntPtr, int, VariantArg*, void>)&SiApiArray.SqSetItemNoChek)(a, 3, &v);
            Assert.StartsWith("System.IndexOutOfRangeException", Assert.Single(FakePython.ReportedErrors));
            Assert.Equal(1, ((delegate* unmanaged<IntPtr, byte>)&SiApiArray.IsAssignableTo)(a));

            var arrayList = new ArrayList { "b", "a" };
            IntPtr l = Handles.Alloc(arrayList);
            ((delegate* unmanaged<IntPtr, int, void>)&SiApiArrayList.EnsureCapacity)(l, 100);
            Assert.True(arrayList.Capacity >= 102);
            ((delegate* unmanaged<IntPtr, int, void>)&SiApiArrayList.Sort)(l, 0);
            Assert.Equal(new object[] { "a", "b" }, arrayList.ToArray());
            Assert.Equal(0, ((delegate* unmanaged<IntPtr, byte>)&SiApiArrayList.IsAssignableTo)(a));
            Assert.Equal(1, ((delegate* unmanaged<IntPtr, byte>)&SiApiCntList.IsAssignableTo)(a));
            Handles.Free(a);
            Handles.Free(l);
        }

        // Each proxy casts its target to its own type, and every entry gives its
        // own failure result with the error reported once.
        [Fact]
        public void WrongTargetsAndNullHandlesFailWithEachEntrysResult()
        {
            IntPtr array = Handles.Alloc(new[] { 1, 2, 3 });
            IntPtr list = Handles.Alloc(new List<int> { 1, 2 });
            string Reported()
            {
                string error = Assert.Single(FakePython.ReportedErrors);
                FakePython.ReportedErrors.Clear();
                return error;
            }

            Assert.Equal(3, ((delegate* unmanaged<IntPtr, int>)&SiApiCntCollection.SqLength)(array));
            Assert.Equal(-1, ((delegate* unmanaged<IntPtr, int>)&SiApiArrayList.SqLength)(array));
            Assert.StartsWith("System.InvalidCastException", Reported());
            Assert.Equal(-1, ((delegate* unmanaged<IntPtr, int>)&SiApiArray.SqLength)(list));
            Assert.StartsWith("System.InvalidCastException", Reported());
            IntPtr item = (IntPtr)1;
            Assert.Equal(-1, ((delegate* unmanaged<IntPtr, int, IntPtr*, int>)&SiApiArray.SqGetItem)(list, 0, &item));
            Assert.StartsWith("System.InvalidCastException", Reported());
            Assert.Equal(0, ((delegate* unmanaged<IntPtr, int, IntPtr*, int>)&SiApiCntList.SqGetItem)(array, 0, &item));
            Assert.Equal(1, Result(item));
            Assert.Empty(FakePython.ReportedErrors);

            VariantArg one = FakePython.Arg(1);
            IntPtr none = IntPtr.Zero;
            Assert.Equal(IntPtr.Zero, ((delegate* unmanaged<IntPtr, int, IntPtr>)&SiApiArrayList.SqGetItemNoCheck)(none, 0));
            Assert.StartsWith("System.NullReferenceException", Reported());
            Assert.Equal(-1, ((delegate* unmanaged<IntPtr, int, VariantArg*, int>)&SiApiArrayList.SqSetItem)(none, 0, &one));
            Assert.StartsWith("System.NullReferenceException", Reported());
            Assert.Equal(0, ((delegate* unmanaged<IntPtr, VariantArg*, int>)&SiApiArray.SqContains)(none, &one));
            Assert.StartsWith("System.NullReferenceException", Reported());
            Assert.Equal(0, ((delegate* unmanaged<IntPtr, VariantArg*, int>)&SiApiCntCollection.CountOf)(none, &one));
            Assert.StartsWith("System.NullReferenceException", Reported());
            Assert.Equal(0, ((delegate* unmanaged<IntPtr, VariantArg*, byte>)&SiApiArrayList.Remove)(none, &one));
            Assert.StartsWith("System.NullReferenceException", Reported());
            var indexBy = (delegate* unmanaged<IntPtr, int, int, int, int, VariantArg*, int>)&SiApiArray.IndexBy;
            Assert.Equal(-1, indexBy(none, 0, 0, 0, 0, &one));
            Assert.StartsWith("System.NullReferenceException", Reported());
            Assert.Equal(-1, ((delegate* unmanaged<IntPtr, int, int>)&SiApiArrayList.RemoveAt)(none, 0));
            Assert.StartsWith("System.NullReferenceException", Reported());

            // Type tests never fail: a null handle is simply not of the type.
            Assert.Equal(0, ((delegate* unmanaged<IntPtr, byte>)&SiApiEnumerable.IsAssignableTo)(none));
            Assert.Equal(1, ((delegate* unmanaged<IntPtr, byte>)&SiApiEnumerable.IsAssignableTo)(list));
            Assert.Equal(0, ((delegate* unmanaged<IntPtr, byte>)&SiApiArray.IsAssignableTo)(list));
            Assert.Empty(FakePython.ReportedErrors);
            Handles.Free(array);
            Handles.Free(list);
        }

        [Fact]
        public void EnumerationAndCollectionBases()
        {
            IntPtr h = Handles.Alloc(new List<int> { 4, 5 });
            PyObjectOutArg e = default;
            Assert.Equal(0, ((delegate* unmanaged<IntPtr, PyObjectOutArg*, int>)&SiApiEnumerable.GetEnumerator)(h, &e));
            var moveNext = (delegate* unmanaged<IntPtr, IntPtr*, int>)&SiApiEnumerator.MoveNext;
            IntPtr item;
            Assert.Equal(0, moveNext(e.Handle, &item));
            Assert.Equal(4, Result(item));
            Assert.Equal(0, moveNext(e.Handle, &item));
            Assert.Equal(1, moveNext(e.Handle, &item));
            Assert.Equal(1, ((delegate* unmanaged<IntPtr, byte>)&SiApiEnumerator.IsAssignableTo)(e.Handle));
            Handles.Free(e.Handle);

            Assert.Equal(2, ((delegate* unmanaged<IntPtr, int>)&SiApiCntCollection.SqLength)(h));
            IntPtr broken = Handles.Alloc(new MiscountedCollection());
            Assert.Equal(0, ((delegate* unmanaged<IntPtr, PyObjectOutArg*, int>)&SiApiEnumerable.GetEnumerator)(broken, &e));
            Assert.Equal(-1, moveNext(e.Handle, &item));
            Assert.StartsWith("System.InvalidOperationException: broken", Assert.Single(FakePython.ReportedErrors));
            Handles.Free(e.Handle);

            IntPtr bases = Handles.Alloc(new Names());
            Assert.Equal(1, ((delegate* unmanaged<IntPtr, byte>)&SiApiCollectionBase.IsAssignableTo)(bases));
            Assert.Equal(0, ((delegate* unmanaged<IntPtr, byte>)&SiApiReadOnlyCollectionBase.IsAssignableTo)(bases));
            Handles.Free(bases);
            Handles.Free(broken);
            Handles.Free(h);
        }

        private sealed class Names : CollectionBase { }

        private sealed class MiscountedCollection : IEnumerable
        {
            public IEnumerator GetEnumerator()
            {
                throw new InvalidOperationException("broken");
#pragma warning disable CS0162
                yield break;
#pragma warning restore CS0162
            }
        }

        [Fact]
        public void StreamEntriesOverAMemoryStream()
        {
            var memory = new MemoryStream();
            IntPtr h = Handles.Alloc(memory);
            byte[] data = { 1, 2, 3, 4, 5 };
            fixed (byte* p = data)
                Assert.Equal(5, ((delegate* unmanaged<IntPtr, byte*, int, int>)&SiApiStream.Write)(h, p, 5));
            Assert.Equal(5, ((delegate* unmanaged<IntPtr, long>)&SiApiStream.Position)(h));
            Assert.Equal(1, ((delegate* unmanaged<IntPtr, long, int, long>)&SiApiStream.Seek)(h, -4, 2));
            byte[] back = new byte[8];
            fixed (byte* p = back)
                Assert.Equal(4, ((delegate* unmanaged<IntPtr, byte*, int, int>)&SiApiStream.Read)(h, p, 8));
            Assert.Equal(new byte[] { 2, 3, 4, 5 }, back[..4]);

            var setLength = (delegate* unmanaged<IntPtr, int, long, long>)&SiApiStream.SetLength;
            ((delegate* unmanaged<IntPtr, long, int, long>)&SiApiStream.Seek)(h, 3, 0);
            Assert.Equal(3, setLength(h, 1, 0));
            Assert.Equal(3, memory.Length);
            Assert.Equal(10, setLength(h, 0, 10));
            Assert.Equal(3, memory.Position);
            Assert.Equal(-1, ((delegate* unmanaged<IntPtr, long, int, long>)&SiApiStream.Seek)(h, -1, 0));
            Assert.StartsWith("System.IO.IOException", Assert.Single(FakePython.ReportedErrors));

            ((delegate* unmanaged<IntPtr, void>)&SiApiStream.Close)(h);
            Assert.Equal(0, ((delegate* unmanaged<IntPtr, byte>)&SiApiStream.CanRead)(h));
            Assert.Equal(1, ((delegate* unmanaged<IntPtr, byte>)&SiApiStream.IsAssignableTo)(h));
            Handles.Free(h);
        }
    }
}
