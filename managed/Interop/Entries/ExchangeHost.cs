using System;
using System.Runtime.CompilerServices;
using System.Runtime.InteropServices;

namespace Orvane.WrpGen.Interop
{
    /// <summary>
    /// The native side's first partner: it registers the native callbacks and
    /// tables, names runtime types and frees handles and pending argument storage.
    /// Every entry is called through a bound function pointer.
    /// </summary>
    public static unsafe class ExchangeHost
    {
        // Callbacks into the native runtime, stored once at registration.
        internal static delegate* unmanaged<IntPtr, IntPtr, void> ExceptionCallback;
        internal static delegate* unmanaged<IntPtr*, PyStringArg*, int> CatchAndClearErrorCallback;
        internal static delegate* unmanaged<char*, int, IntPtr> U16BufferBuilder;
        internal static delegate* unmanaged<char*, int, IntPtr> PyStrBuilder;
        internal static delegate* unmanaged<char*, int, IntPtr> PyUnraisableStrBuilder;
        internal static delegate* unmanaged<byte*, int, IntPtr> PyBytesBuilder;

        /// <summary>The static callback tables, by position: read, write, buffer, object API,
        /// iterator, unsized collection, list, sequence, raw I/O.</summary>
        internal static IntPtr** StaticTables;
        /// <summary>The generic (typed) callback tables, in generation order.</summary>
        internal static IntPtr** GenericTables;

        internal const int ReadTable = 0, WriteTable = 1, BufferTable = 2, ObjApiTable = 3,
            IterTable = 4, UcolTable = 5, OlistTable = 6, OseqTable = 7, RawIoTable = 8;

        /// <summary>Full name of the runtime type behind a handle, as a malloc'd zero-terminated UTF-16 string.</summary>
        [UnmanagedCallersOnly]
        public static char* GetTypeName(IntPtr handle)
        {
            try
            {
                object? target = Handles.Target(handle);
                if (target is null)
                    return null;
                string name = target.GetType().FullName ?? target.GetType().Name;
                char* buffer = (char*)NativeMemory.Alloc((nuint)(name.Length + 1), sizeof(char));
                name.AsSpan().CopyTo(new Span<char>(buffer, name.Length));
                buffer[name.Length] = '\0';
                return buffer;
            }
            catch (Exception e)
            {
                ErrorBridge.Report(e);
                return null;
            }
        }

        [UnmanagedCallersOnly]
        public static void SetExceptionCallback(IntPtr fn) =>
            ExceptionCallback = (delegate* unmanaged<IntPtr, IntPtr, void>)fn;

        [UnmanagedCallersOnly]
        public static void SetCatchAndClearErrorCallback(IntPtr fn) =>
            CatchAndClearErrorCallback = (delegate* unmanaged<IntPtr*, PyStringArg*, int>)fn;

        [UnmanagedCallersOnly]
        public static void SetU16StrBuilderCallback(IntPtr fn) =>
            U16BufferBuilder = (delegate* unmanaged<char*, int, IntPtr>)fn;

        [UnmanagedCallersOnly]
        public static void SetPyStrBuilderCallback(IntPtr fn) =>
            PyStrBuilder = (delegate* unmanaged<char*, int, IntPtr>)fn;

        [UnmanagedCallersOnly]
        public static void SetPyUnraisableStrBuilderCallback(IntPtr fn) =>
            PyUnraisableStrBuilder = (delegate* unmanaged<char*, int, IntPtr>)fn;

        [UnmanagedCallersOnly]
        public static void SetPyBytesBuilderCallback(IntPtr fn) =>
            PyBytesBuilder = (delegate* unmanaged<byte*, int, IntPtr>)fn;

        [UnmanagedCallersOnly]
        public static void SetPyStaticCallbacks(IntPtr** tables) => StaticTables = tables;

        [UnmanagedCallersOnly]
        public static void SetPyGenericCallbacks(IntPtr** tables) => GenericTables = tables;

        /// <summary>
        /// Releases what managed code produced for variant records that native
        /// code did not take over: records tagged 1 hold a handle made here.
        /// </summary>
        [UnmanagedCallersOnly]
        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void FreePendingArgs(VariantArg* args, int count)
        {
            try
            {
                for (int i = 0; i < count; i++)
                {
                    if (args[i].Type == 1 && args[i].Value != IntPtr.Zero)
                    {
                        Handles.Free(args[i].Value);
                        args[i].Value = IntPtr.Zero;
                    }
                }
            }
            catch (Exception e)
            {
                ErrorBridge.Report(e);
            }
        }

        [UnmanagedCallersOnly]
        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void FreeInstance(IntPtr handle)
        {
            try
            {
                Handles.Free(handle);
            }
            catch (Exception e)
            {
                ErrorBridge.Report(e);
            }
        }
    }
}
