using System;
using System.Runtime.CompilerServices;

namespace Orvane.WrpGen.Interop
{
    /// <summary>
    /// Typed access to the native callback tables registered through
    /// <see cref="ExchangeHost"/>. Every call runs on the thread that called
    /// into managed code, which holds the GIL. Slot numbers are positions in
    /// the native tables (0-based here).
    /// </summary>
    internal static unsafe class PyCallbacks
    {
        [MethodImpl(MethodImplOptions.AggressiveInlining)]
        private static IntPtr Slot(int table, int index)
        {
            IntPtr** tables = ExchangeHost.StaticTables;
            IntPtr fn = tables == null ? IntPtr.Zero : tables[table][index];
            if (fn == IntPtr.Zero)
                throw new InvalidOperationException($"native callback {table}:{index} is not registered");
            return fn;
        }

        // ---- read table ----
        public static int ReadString(IntPtr obj, PyStringArg* text) =>
            ((delegate* unmanaged<IntPtr, PyStringArg*, int>)Slot(ExchangeHost.ReadTable, 0))(obj, text);
        public static int ReadBool(IntPtr obj) =>
            ((delegate* unmanaged<IntPtr, int>)Slot(ExchangeHost.ReadTable, 1))(obj);
        public static int ReadVersLong(IntPtr obj, long* value) =>
            ((delegate* unmanaged<IntPtr, long*, int>)Slot(ExchangeHost.ReadTable, 2))(obj, value);
        public static int ReadDouble(IntPtr obj, double* value) =>
            ((delegate* unmanaged<IntPtr, double*, int>)Slot(ExchangeHost.ReadTable, 3))(obj, value);

        // ---- write table (new references, 0 with a Python error pending) ----
        public static IntPtr WriteTpo(IntPtr handle, IntPtr typeKey) =>
            ((delegate* unmanaged<IntPtr, IntPtr, IntPtr>)Slot(ExchangeHost.WriteTable, 0))(handle, typeKey);
        public static IntPtr WriteBool(bool value) =>
            ((delegate* unmanaged<byte, IntPtr>)Slot(ExchangeHost.WriteTable, 1))(value ? (byte)1 : (byte)0);
        public static IntPtr WriteInt(int value) =>
            ((delegate* unmanaged<int, IntPtr>)Slot(ExchangeHost.WriteTable, 2))(value);
        public static IntPtr WriteUInt(uint value) =>
            ((delegate* unmanaged<uint, IntPtr>)Slot(ExchangeHost.WriteTable, 3))(value);
        public static IntPtr WriteLong(long value) =>
            ((delegate* unmanaged<long, IntPtr>)Slot(ExchangeHost.WriteTable, 4))(value);
        public static IntPtr WriteULong(ulong value) =>
            ((delegate* unmanaged<ulong, IntPtr>)Slot(ExchangeHost.WriteTable, 5))(value);
        public static IntPtr WriteDouble(double value) =>
            ((delegate* unmanaged<double, IntPtr>)Slot(ExchangeHost.WriteTable, 6))(value);
        public static IntPtr WriteChar(char value) =>
            ((delegate* unmanaged<ushort, IntPtr>)Slot(ExchangeHost.WriteTable, 12))(value);

        // ---- buffer table ----
        public static int SizeOfBuffer() =>
            ((delegate* unmanaged<int>)Slot(ExchangeHost.BufferTable, 0))();
        public static void CreateBuffer(void* view) =>
            ((delegate* unmanaged<void*, void>)Slot(ExchangeHost.BufferTable, 1))(view);
        public static int ReadBufferView(IntPtr obj, void* view, PyBytesArg* info) =>
            ((delegate* unmanaged<IntPtr, void*, PyBytesArg*, int>)Slot(ExchangeHost.BufferTable, 2))(obj, view, info);
        public static void ReleaseBuffer(void* view) =>
            ((delegate* unmanaged<void*, void>)Slot(ExchangeHost.BufferTable, 3))(view);

        // ---- iterator table ----
        public static int IterNext(IntPtr iterator, IntPtr* item, VariantArg* value) =>
            ((delegate* unmanaged<IntPtr, IntPtr*, VariantArg*, int>)Slot(ExchangeHost.IterTable, 0))(iterator, item, value);

        // ---- ucol ----
        public static int ListLength(IntPtr list) =>
            ((delegate* unmanaged<IntPtr, int>)Slot(ExchangeHost.UcolTable, 0))(list);
        public static int RemoveAt(IntPtr obj, int index) =>
            ((delegate* unmanaged<IntPtr, int, int>)Slot(ExchangeHost.UcolTable, 2))(obj, index);
        public static int Clear(IntPtr obj) =>
            ((delegate* unmanaged<IntPtr, int>)Slot(ExchangeHost.UcolTable, 3))(obj);
        public static int SequenceLength(IntPtr seq) =>
            ((delegate* unmanaged<IntPtr, int>)Slot(ExchangeHost.UcolTable, 4))(seq);
        public static IntPtr GetEnumerator(IntPtr obj) =>
            ((delegate* unmanaged<IntPtr, IntPtr>)Slot(ExchangeHost.UcolTable, 6))(obj);
        public static int ObjectLength(IntPtr obj) =>
            ((delegate* unmanaged<IntPtr, int>)Slot(ExchangeHost.UcolTable, 7))(obj);
        public static IntPtr* CreateFastList(int count, IntPtr* list) =>
            ((delegate* unmanaged<int, IntPtr*, IntPtr*>)Slot(ExchangeHost.UcolTable, 8))(count, list);

        // ---- olist (items handed over are consumed) ----
        public static int ListGetItem(IntPtr list, int index, VariantArg* value) =>
            ((delegate* unmanaged<IntPtr, int, VariantArg*, int>)Slot(ExchangeHost.OlistTable, 0))(list, index, value);
        public static int ListSetItem(IntPtr list, int index, IntPtr item) =>
            ((delegate* unmanaged<IntPtr, int, IntPtr, int>)Slot(ExchangeHost.OlistTable, 1))(list, index, item);
        public static int ListAdd(IntPtr list, IntPtr item) =>
            ((delegate* unmanaged<IntPtr, IntPtr, int>)Slot(ExchangeHost.OlistTable, 2))(list, item);
        public static int ListInsert(IntPtr list, int index, IntPtr item) =>
            ((delegate* unmanaged<IntPtr, int, IntPtr, int>)Slot(ExchangeHost.OlistTable, 3))(list, index, item);
        public static int ListRemove(IntPtr list, IntPtr item) =>
            ((delegate* unmanaged<IntPtr, IntPtr, int>)Slot(ExchangeHost.OlistTable, 4))(list, item);
        public static int ListContains(IntPtr list, IntPtr item) =>
            ((delegate* unmanaged<IntPtr, IntPtr, int>)Slot(ExchangeHost.OlistTable, 5))(list, item);
        public static int ListIndexOf(IntPtr list, IntPtr item) =>
            ((delegate* unmanaged<IntPtr, IntPtr, int>)Slot(ExchangeHost.OlistTable, 6))(list, item);
        public static int SetFastItem(IntPtr* items, int index, IntPtr item) =>
            ((delegate* unmanaged<IntPtr*, int, IntPtr, int>)Slot(ExchangeHost.OlistTable, 7))(items, index, item);
        public static IntPtr WriteClrIList(IntPtr handle) =>
            ((delegate* unmanaged<IntPtr, IntPtr>)Slot(ExchangeHost.OlistTable, 8))(handle);
        public static IntPtr WriteClrArrayList(IntPtr handle) =>
            ((delegate* unmanaged<IntPtr, IntPtr>)Slot(ExchangeHost.OlistTable, 9))(handle);
        public static IntPtr WriteClrArray(IntPtr handle) =>
            ((delegate* unmanaged<IntPtr, IntPtr>)Slot(ExchangeHost.OlistTable, 10))(handle);

        // ---- oseq ----
        public static int SeqGetItem(IntPtr seq, int index, VariantArg* value) =>
            ((delegate* unmanaged<IntPtr, int, VariantArg*, int>)Slot(ExchangeHost.OseqTable, 0))(seq, index, value);
        public static int SeqContains(IntPtr seq, IntPtr item) =>
            ((delegate* unmanaged<IntPtr, IntPtr, int>)Slot(ExchangeHost.OseqTable, 1))(seq, item);
        public static int SeqIndexOf(IntPtr seq, IntPtr item) =>
            ((delegate* unmanaged<IntPtr, IntPtr, int>)Slot(ExchangeHost.OseqTable, 2))(seq, item);

        // ---- raw I/O ----
        public static int RawWrite(IntPtr file, byte* data, int count) =>
            ((delegate* unmanaged<IntPtr, byte*, int, int>)Slot(ExchangeHost.RawIoTable, 0))(file, data, count);
        public static int RawWriteByte(IntPtr file, int value) =>
            ((delegate* unmanaged<IntPtr, int, int>)Slot(ExchangeHost.RawIoTable, 1))(file, value);
        public static int RawRead(IntPtr file, byte* data, int count) =>
            ((delegate* unmanaged<IntPtr, byte*, int, int>)Slot(ExchangeHost.RawIoTable, 2))(file, data, count);
        public static int RawReadByte(IntPtr file) =>
            ((delegate* unmanaged<IntPtr, int>)Slot(ExchangeHost.RawIoTable, 3))(file);
        public static long RawSeek(IntPtr file, long offset, int whence) =>
            ((delegate* unmanaged<IntPtr, long, int, long>)Slot(ExchangeHost.RawIoTable, 4))(file, offset, whence);
        public static int RawFlush(IntPtr file) =>
            ((delegate* unmanaged<IntPtr, int>)Slot(ExchangeHost.RawIoTable, 5))(file);
        public static void RawClose(IntPtr file) =>
            ((delegate* unmanaged<IntPtr, void>)Slot(ExchangeHost.RawIoTable, 6))(file);
        public static int RawReadable(IntPtr file) =>
            ((delegate* unmanaged<IntPtr, int>)Slot(ExchangeHost.RawIoTable, 7))(file);
        public static int RawWritable(IntPtr file) =>
            ((delegate* unmanaged<IntPtr, int>)Slot(ExchangeHost.RawIoTable, 8))(file);
        public static int RawSeekable(IntPtr file) =>
            ((delegate* unmanaged<IntPtr, int>)Slot(ExchangeHost.RawIoTable, 9))(file);
        public static long RawTell(IntPtr file) =>
            ((delegate* unmanaged<IntPtr, long>)Slot(ExchangeHost.RawIoTable, 10))(file);
        public static long RawLength(IntPtr file) =>
            ((delegate* unmanaged<IntPtr, long>)Slot(ExchangeHost.RawIoTable, 11))(file);
    }
}
