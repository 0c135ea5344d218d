using System;

namespace Orvane.WrpGen.Interop
{
    /// <summary>
    /// Guids cross as their 16 bytes in memory order (the first three fields
    /// little-endian), which is Python's UUID.bytes_le.
    /// </summary>
    public static unsafe class Guids
    {
        private const int Size = 16;
        private const int ReadGuidSlot = 10, WriteGuidSlot = 11;

        public static Guid FromBytes(byte* bytes) => new Guid(new ReadOnlySpan<byte>(bytes, Size));

        public static void ToBytes(Guid value, byte* bytes)
        {
            if (!value.TryWriteBytes(new Span<byte>(bytes, Size)))
                throw new ArgumentException("a Guid needs 16 bytes");
        }

        /// <summary>Reads a variant's Python UUID (tag 13).</summary>
        public static Guid ReadVariant(IntPtr obj)
        {
            byte* bytes = stackalloc byte[Size];
            if (((delegate* unmanaged<IntPtr, byte*, int>)CallbackSlots.Read(ReadGuidSlot))(obj, bytes) == 0)
                throw ErrorBridge.FromPython("can't read the Python UUID");
            return FromBytes(bytes);
        }

        /// <summary>A new uuid.UUID; 0 with the Python error pending on failure.</summary>
        public static IntPtr ToPy(Guid value)
        {
            byte* bytes = stackalloc byte[Size];
            ToBytes(value, bytes);
            return ((delegate* unmanaged<byte*, IntPtr>)CallbackSlots.Write(WriteGuidSlot))(bytes);
        }
    }
}
