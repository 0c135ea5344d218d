// Interop proxy of Stream: what _StreamWrapper calls. Entries report every
// exception through the error bridge.
using System;
using System.Runtime.CompilerServices;
using System.IO;
using System.Runtime.InteropServices;

namespace Orvane.WrpGen.Interop
{
    /// <summary>Interop proxy of Stream.</summary>
    public static unsafe class SiApiStream
    {
        private static Stream Self(IntPtr handle) => Handles.Self<Stream>(handle);

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static byte CanRead(IntPtr handle)
        {
            try { return Self(handle).CanRead ? (byte)1 : (byte)0; }
            catch (Exception e) { EntryErrors.Report(e); return 0; }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static byte CanSeek(IntPtr handle)
        {
            try { return Self(handle).CanSeek ? (byte)1 : (byte)0; }
            catch (Exception e) { EntryErrors.Report(e); return 0; }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static byte CanWrite(IntPtr handle)
        {
            try { return Self(handle).CanWrite ? (byte)1 : (byte)0; }
            catch (Exception e) { EntryErrors.Report(e); return 0; }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static long Length(IntPtr handle)
        {
            try { return Self(handle).Length; }
            catch (Exception e) { EntryErrors.Report(e); return -1; }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static long Position(IntPtr handle)
        {
            try { return Self(handle).Position; }
            catch (Exception e) { EntryErrors.Report(e); return -1; }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void Close(IntPtr handle)
        {
            try { Self(handle).Close(); }
            catch (Exception e) { EntryErrors.Report(e); }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void Flush(IntPtr handle)
        {
            try { Self(handle).Flush(); }
            catch (Exception e) { EntryErrors.Report(e); }
        }

        /// <summary>Bytes read into the native buffer, 0 at the end of the stream.</summary>
        [UnmanagedCallersOnly]
        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int Read(IntPtr handle, byte* buffer, int count)
        {
            try
            {
                if (count < 0)
                    throw new ArgumentOutOfRangeException(nameof(count), "Non-negative number required.");
                return Self(handle).Read(new Span<byte>(buffer, count));
            }
            catch (Exception e) { EntryErrors.Report(e); return 0; }
        }

        /// <summary>The new position; whence 0, 1, 2 are SeekOrigin Begin, Current, End.</summary>
        [UnmanagedCallersOnly]
        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static long Seek(IntPtr handle, long offset, int whence)
        {
            try { return Self(handle).Seek(offset, (SeekOrigin)whence); }
            catch (Exception e) { EntryErrors.Report(e); return -1; }
        }

        /// <summary>
        /// truncate(): flag 1 (no size given) cuts at the current position.
        /// Returns the new length; the position stays where it was, as with
        /// Python's truncate.
        /// </summary>
        [UnmanagedCallersOnly]
        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static long SetLength(IntPtr handle, int flag, long length)
        {
            try
            {
                Stream stream = Self(handle);
                long position = stream.CanSeek ? stream.Position : -1;
                long newLength = flag != 0 ? position : length;
                if (newLength < 0)
                    throw new ArgumentOutOfRangeException(nameof(length), "Non-negative number required.");
                stream.SetLength(newLength);
                if (position >= 0 && stream.Position != position)
                    stream.Position = position;
                return newLength;
            }
            catch (Exception e) { EntryErrors.Report(e); return -1; }
        }

        /// <summary>Writes all <paramref name="count"/> bytes; returns the count.</summary>
        [UnmanagedCallersOnly]
        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int Write(IntPtr handle, byte* buffer, int count)
        {
            try
            {
                if (count < 0)
                    throw new ArgumentOutOfRangeException(nameof(count), "Non-negative number required.");
                Self(handle).Write(new ReadOnlySpan<byte>(buffer, count));
                return count;
            }
            catch (Exception e) { EntryErrors.Report(e); return 0; }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static byte IsAssignableTo(IntPtr handle)
        {
            try { return Handles.Target(handle) is Stream ? (byte)1 : (byte)0; }
            catch (Exception e) { EntryErrors.Report(e); return 0; }
        }
    }
}
