using System;
using System.Text;

namespace Orvane.WrpGen.Interop
{
    /// <summary>Strings across the boundary: read in place from a Python string, built as a Python str on the way out.</summary>
    public static unsafe class Strings
    {
        /// <summary>Decodes a Python string's storage (1, 2 or 4 bytes a character); null for None.</summary>
        [System.Runtime.CompilerServices.MethodImpl(System.Runtime.CompilerServices.MethodImplOptions.AggressiveInlining)]
        public static string? FromArg(PyStringArg* arg)
        {
            // Most arguments are short Latin-1 names and keys; that case is inlined into the entries.
            if (arg != null && arg->CharSize == 1 && (uint)(arg->Length - 1) < 32u)
                return WidenShort((byte*)arg->Data, arg->Length);
            return Decode(arg);
        }

        private static string? Decode(PyStringArg* arg)
        {
            if (arg == null || arg->Length < 0)
                return null;
            int length = arg->Length;
            if (length == 0)
                return string.Empty;
            switch (arg->CharSize)
            {
                case 1:
                    return length <= 32 ? WidenShort((byte*)arg->Data, length) : Encoding.Latin1.GetString((byte*)arg->Data, length);
                case 2:
                    return new string((char*)arg->Data, 0, length);
                case 4:
                    return FromUcs4((uint*)arg->Data, length);
                default:
                    throw new ArgumentException($"unknown character width {arg->CharSize}");
            }
        }

        // Most arguments are short names and keys, and programs pass the same ones again and
        // again: a small table of recent strings, picked by length and end characters, gives
        // back an equal string without allocating one. Strings are immutable and a table slot
        // is written whole, so threads may share it without a lock (a lost write only misses).
        private const int RecentSlots = 256;
        private const int RecentMaxLength = 16;
        private static readonly string?[] Recent = new string?[RecentSlots];

        // Compiled optimised at first use, like the entries that call it: its precompiled code
        // would run until the runtime's tiering gets round to it.
        [System.Runtime.CompilerServices.MethodImpl(System.Runtime.CompilerServices.MethodImplOptions.AggressiveOptimization)]
        private static string WidenShort(byte* data, int length)
        {
            if (length <= RecentMaxLength)
            {
                int slot = (length * 31 + data[0] * 7 + data[length - 1]) & (RecentSlots - 1);
                string? known = Recent[slot];
                if (known != null && SameLatin1(known, data, length))
                    return known;
                string made = Widen(data, length);
                Recent[slot] = made;
                return made;
            }
            return Widen(data, length);
        }

        [System.Runtime.CompilerServices.MethodImpl(System.Runtime.CompilerServices.MethodImplOptions.AggressiveInlining)]
        private static bool SameLatin1(string text, byte* data, int length)
        {
            if (text.Length != length)
                return false;
            for (int i = 0; i < length; i++)
                if (text[i] != data[i])
                    return false;
            return true;
        }

        // Widening in a plain loop costs less than setting up the encoder for short text.
        private static string Widen(byte* data, int length)
        {
            string text = new string('\0', length);
            fixed (char* target = text)
            {
                for (int i = 0; i < length; i++)
                    target[i] = (char)data[i];
            }
            return text;
        }

        // UCS-4 may hold lone surrogates, which a strict UTF-32 decoder would
        // replace; code points are copied one by one so the text stays exact.
        private static string FromUcs4(uint* data, int length)
        {
            int units = length;
            for (int i = 0; i < length; i++)
                if (data[i] > 0xFFFF)
                    units++;
            return string.Create(units, (IntPtr)data, static (span, state) =>
            {
                uint* p = (uint*)state;
                int j = 0;
                for (int i = 0; j < span.Length; i++)
                {
                    uint cp = p[i];
                    if (cp > 0xFFFF)
                    {
                        cp -= 0x10000;
                        span[j++] = (char)(0xD800 + (cp >> 10));
                        span[j++] = (char)(0xDC00 + (cp & 0x3FF));
                    }
                    else
                    {
                        span[j++] = (char)cp;
                    }
                }
            });
        }

        /// <summary>
        /// A new Python str for <paramref name="value"/>, 0 for null. A decoding
        /// failure (a lone surrogate) leaves the Python error pending and gives 0.
        /// </summary>
        public static IntPtr ToPy(string? value)
        {
            if (value is null)
                return IntPtr.Zero;
            fixed (char* p = value)
                return ExchangeHost.PyStrBuilder(p, value.Length);
        }

        /// <summary>
        /// The text of a Python str (borrowed) through the collection table's
        /// unicode slot. Native code hands out its UTF-16 encoding with the
        /// data pointer one unit past the byte-order mark, so reading starts
        /// one unit before it.
        /// </summary>
        public static string FromPyStr(IntPtr str)
        {
            IntPtr** tables = ExchangeHost.StaticTables;
            IntPtr fn = tables == null ? IntPtr.Zero : tables[ExchangeHost.UcolTable][UcolUnicodeBytesSlot];
            if (fn == IntPtr.Zero)
                throw new InvalidOperationException("the native string callbacks are not registered");
            IntPtr holder = IntPtr.Zero;
            int count = 0;
            char* data = null;
            if (((delegate* unmanaged<IntPtr, IntPtr*, int*, char**, int>)fn)(str, &holder, &count, &data) != 0)
                throw ErrorBridge.FromPython("can't read the Python string");
            try
            {
                return new string(data - 1, 0, count);
            }
            finally
            {
                PyObjects.DecRef(holder);
            }
        }

        private const int UcolUnicodeBytesSlot = 10;

        /// <summary>As <see cref="ToPy"/>, but a decoding failure is reported as unraisable.</summary>
        public static IntPtr ToPyUnraisable(string? value)
        {
            if (value is null)
                return IntPtr.Zero;
            fixed (char* p = value)
                return ExchangeHost.PyUnraisableStrBuilder(p, value.Length);
        }
    }

}
