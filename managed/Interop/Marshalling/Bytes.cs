using System;

namespace Orvane.WrpGen.Interop
{
    /// <summary>Byte arrays: read from an exporter's buffer, returned as a new Python bytearray.</summary>
    public static unsafe class Bytes
    {
        public static byte[]? FromArg(PyBytesArg* arg)
        {
            if (arg == null || arg->Length < 0)
                return null;
            return new ReadOnlySpan<byte>(arg->Data, arg->Length).ToArray();
        }

        public static IntPtr ToPy(byte[]? value)
        {
            if (value is null)
                return IntPtr.Zero;
            fixed (byte* p = value)
                return ExchangeHost.PyBytesBuilder(p, value.Length);
        }
    }
}
