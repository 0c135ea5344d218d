using System;
using System.Runtime.InteropServices;

namespace Orvane.WrpGen.Interop
{
    /// <summary>
    /// A managed Decimal as native code exchanges it (marshal/decimal.h): a
    /// 96-bit mantissa in Lo/Mid/Hi, the sign in bit 31 of Flags and the scale
    /// in bits 16-23. Flags == 1 (native to managed only) means Lo and Mid hold
    /// the low and high halves of a double.
    /// </summary>
    [StructLayout(LayoutKind.Sequential)]
    public struct DecimalArg
    {
        public uint Lo;
        public uint Mid;
        public uint Hi;
        public uint Flags;
    }

    public static unsafe class Decimals
    {
        public const uint DoubleForm = 1;
        private const uint SignBit = 0x80000000;
        private const uint ScaleMask = 0x00FF0000;
        private const int MaxScale = 28;

        // Read and write table slots (marshal/callback_tables.cpp).
        private const int ReadDecimalSlot = 4, ReadDecimalTupleSlot = 5, WriteDecimalSlot = 7;

        /// <summary>
        /// The double form converts with the runtime's own rounding (and throws
        /// OverflowException beyond the Decimal range).
        /// </summary>
        public static decimal ToDecimal(in DecimalArg arg)
        {
            if (arg.Flags == DoubleForm)
                return (decimal)BitConverter.Int64BitsToDouble((long)(((ulong)arg.Mid << 32) | arg.Lo));
            if ((arg.Flags & ~(SignBit | ScaleMask)) != 0)
                throw new ArgumentException($"malformed Decimal flags 0x{arg.Flags:X8}");
            int scale = (int)((arg.Flags & ScaleMask) >> 16);
            if (scale > MaxScale)
                throw new ArgumentException($"Decimal scale {scale} is larger than {MaxScale}");
            return new decimal((int)arg.Lo, (int)arg.Mid, (int)arg.Hi, (arg.Flags & SignBit) != 0, (byte)scale);
        }

        public static DecimalArg FromDecimal(decimal value)
        {
            Span<int> bits = stackalloc int[4];
            decimal.GetBits(value, bits);
            return new DecimalArg { Lo = (uint)bits[0], Mid = (uint)bits[1], Hi = (uint)bits[2], Flags = (uint)bits[3] };
        }

        /// <summary>Reads a variant's Python Decimal (tag 7) or DecimalTuple (tag 8).</summary>
        public static decimal ReadVariant(int tag, IntPtr obj)
        {
            int slot = tag switch
            {
                7 => ReadDecimalSlot,
                8 => ReadDecimalTupleSlot,
                _ => throw new ArgumentException($"variant tag {tag} is not a decimal", nameof(tag)),
            };
            DecimalArg arg;
            if (((delegate* unmanaged<IntPtr, DecimalArg*, int>)CallbackSlots.Read(slot))(obj, &arg) == 0)
                throw ErrorBridge.FromPython("can't read the Python decimal");
            return ToDecimal(arg);
        }

        /// <summary>A new decimal.Decimal; 0 with the Python error pending on failure.</summary>
        public static IntPtr ToPy(decimal value)
        {
            DecimalArg arg = FromDecimal(value);
            return ((delegate* unmanaged<DecimalArg*, IntPtr>)CallbackSlots.Write(WriteDecimalSlot))(&arg);
        }
    }
}
