using System;
using System.Collections.Generic;
using System.IO;
using System.Runtime.InteropServices;
using Orvane.WrpGen.Interop;
using Xunit;

// The callback tables are process-wide: tests that install them must not overlap.
[assembly: CollectionBehavior(DisableTestParallelization = true)]

namespace Orvane.Interop.Tests
{
    /// <summary>
    /// A stand-in for the native runtime: "Python objects" are GCHandles of
    /// managed values, and the callback tables the interop uses are filled
    /// with functions over them. Errors "raised in Python" are kept as text
    /// until the catch-and-clear callback takes them.
    /// </summary>
    public static unsafe class FakePython
    {
        public static readonly object NoneValue = new();
        public static string? PendingError;
        public static readonly List<string> ReportedErrors = new();

        private static IntPtr** s_tables;
        private static IntPtr s_none;

        public static IntPtr New(object value) => GCHandle.ToIntPtr(GCHandle.Alloc(value));
        public static object? Value(IntPtr obj) => obj == IntPtr.Zero ? null : GCHandle.FromIntPtr(obj).Target;

        /// <summary>A variant record for a value as the native classification would tag it.</summary>
        public static VariantArg Arg(object? value) => value switch
        {
            null => new VariantArg { Type = 0 },
            int or long => new VariantArg { Type = 5, Value = New(value) },
            string => new VariantArg { Type = 2, Value = New(value) },
            double => new VariantArg { Type = 6, Value = New(value) },
            _ => throw new ArgumentException("no fake tag for " + value.GetType()),
        };

        public static void Install()
        {
            PendingError = null;
            ReportedErrors.Clear();
            if (s_tables == null)
                Allocate();
            ExchangeHost.StaticTables = s_tables;
            ExchangeHost.ExceptionCallback = &OnException;
            ExchangeHost.PyUnraisableStrBuilder = &BuildString;
            ExchangeHost.PyStrBuilder = &BuildString;
            ExchangeHost.CatchAndClearErrorCallback = &CatchAndClear;
        }

        private static void Allocate()
        {
            int[] sizes = { 11, 13, 4, 4, 1, 11, 11, 3, 12 };
            s_tables = (IntPtr**)NativeMemory.AllocZeroed((nuint)(sizeof(IntPtr*) * sizes.Length));
            for (int t = 0; t < sizes.Length; t++)
                s_tables[t] = (IntPtr*)NativeMemory.AllocZeroed((nuint)(sizeof(IntPtr) * sizes[t]));
            s_none = New(NoneValue);

            IntPtr* read = s_tables[ExchangeHost.ReadTable];
            read[0] = (IntPtr)(delegate* unmanaged<IntPtr, PyStringArg*, int>)&ReadString;
            read[2] = (IntPtr)(delegate* unmanaged<IntPtr, long*, int>)&ReadVersLong;
            read[3] = (IntPtr)(delegate* unmanaged<IntPtr, double*, int>)&ReadDouble;
            IntPtr* write = s_tables[ExchangeHost.WriteTable];
            write[0] = (IntPtr)(delegate* unmanaged<IntPtr, IntPtr, IntPtr>)&WriteTpo;
            write[2] = (IntPtr)(delegate* unmanaged<int, IntPtr>)&WriteInt;
            write[4] = (IntPtr)(delegate* unmanaged<long, IntPtr>)&WriteLong;
            IntPtr* objApi = s_tables[ExchangeHost.ObjApiTable];
            objApi[0] = (IntPtr)(delegate* unmanaged<IntPtr, void>)&NoOp;
            objApi[1] = (IntPtr)(delegate* unmanaged<IntPtr, void>)&NoOp;
            objApi[2] = (IntPtr)(delegate* unmanaged<IntPtr>)&None;
            IntPtr* rawio = s_tables[ExchangeHost.RawIoTable];
            rawio[0] = (IntPtr)(delegate* unmanaged<IntPtr, byte*, int, int>)&RawWrite;
            rawio[2] = (IntPtr)(delegate* unmanaged<IntPtr, byte*, int, int>)&RawRead;
            rawio[4] = (IntPtr)(delegate* unmanaged<IntPtr, long, int, long>)&RawSeek;
            rawio[5] = (IntPtr)(delegate* unmanaged<IntPtr, int>)&RawFlush;
            rawio[6] = (IntPtr)(delegate* unmanaged<IntPtr, void>)&RawClose;
            rawio[11] = (IntPtr)(delegate* unmanaged<IntPtr, long>)&RawLength;
        }

        [UnmanagedCallersOnly] private static void NoOp(IntPtr obj) { }
        [UnmanagedCallersOnly] private static IntPtr None() => s_none;
        [UnmanagedCallersOnly] private static IntPtr WriteInt(int value) => New(value);
        [UnmanagedCallersOnly] private static IntPtr WriteLong(long value) => New(value);
        [UnmanagedCallersOnly] private static IntPtr WriteTpo(IntPtr handle, IntPtr key) => New(Handles.Target(handle)!);
        [UnmanagedCallersOnly] private static IntPtr BuildString(char* units, int count) => New(new string(units, 0, count));

        [UnmanagedCallersOnly]
        private static void OnException(IntPtr type, IntPtr message) =>
            ReportedErrors.Add($"{Value(type)}: {Value(message)}");

        [UnmanagedCallersOnly]
        private static int CatchAndClear(IntPtr* holder, PyStringArg* text)
        {
            if (PendingError is null)
                return -1;
            string error = PendingError;
            PendingError = null;
            GCHandle pinned = GCHandle.Alloc(error, GCHandleType.Pinned);
            *holder = IntPtr.Zero;  // the pinned text lives for the test process
            text->Length = error.Length;
            text->CharSize = 2;
            text->Data = (void*)pinned.AddrOfPinnedObject();
            return 0;
        }

        [UnmanagedCallersOnly]
        private static int ReadString(IntPtr obj, PyStringArg* text)
        {
            string value = (string)Value(obj)!;
            GCHandle pinned = GCHandle.Alloc(value, GCHandleType.Pinned);
            text->Length = value.Length;
            text->CharSize = 2;
            text->Data = (void*)pinned.AddrOfPinnedObject();
            return 1;
        }

        [UnmanagedCallersOnly]
        private static int ReadVersLong(IntPtr obj, long* value)
        {
            object boxed = Value(obj)!;
            *value = Convert.ToInt64(boxed);
            return boxed is int ? 1 : 2;
        }

        [UnmanagedCallersOnly]
        private static int ReadDouble(IntPtr obj, double* value)
        {
            *value = (double)Value(obj)!;
            return 1;
        }

        // ---- a fake Python file: a MemoryStream that can be told to fail ----

        public sealed class FakeFile
        {
            public readonly MemoryStream Data = new();
            public int FailWriteAfter = int.MaxValue;  // bytes accepted before write raises
            public int MaxChunk = int.MaxValue;        // bytes accepted per write call
            public bool Closed, Flushed;
        }

        private static FakeFile File(IntPtr obj) => (FakeFile)Value(obj)!;

        [UnmanagedCallersOnly]
        private static int RawWrite(IntPtr obj, byte* data, int count)
        {
            FakeFile file = File(obj);
            int room = file.FailWriteAfter - (int)file.Data.Length;
            if (room <= 0)
            {
                PendingError = "OSError: disk full\n";
                return -1;
            }
            int n = Math.Min(Math.Min(count, room), file.MaxChunk);
            file.Data.Write(new ReadOnlySpan<byte>(data, n));
            return n;
        }

        [UnmanagedCallersOnly]
        private static int RawRead(IntPtr obj, byte* data, int count) =>
            File(obj).Data.Read(new Span<byte>(data, count));

        [UnmanagedCallersOnly]
        private static long RawSeek(IntPtr obj, long offset, int whence) =>
            File(obj).Data.Seek(offset, (SeekOrigin)whence);

        [UnmanagedCallersOnly]
        private static int RawFlush(IntPtr obj)
        {
            File(obj).Flushed = true;
            return 0;
        }

        [UnmanagedCallersOnly]
        private static void RawClose(IntPtr obj) => File(obj).Closed = true;

        [UnmanagedCallersOnly]
        private static long RawLength(IntPtr obj) => File(obj).Closed ? -3 : File(obj).Data.Length;
    }
}
