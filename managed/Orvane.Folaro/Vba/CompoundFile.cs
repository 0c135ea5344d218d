using System.Buffers.Binary;

namespace Orvane.Folaro.Vba;

// The compound-file (CFB) container of vbaProject.bin and OLE objects.
internal static class CompoundFile
{
    private const ulong Signature = 0xE11AB1A1E011CFD0UL;

    internal static bool HasSignature(byte[] data) =>
        data.Length >= 512 && BinaryPrimitives.ReadUInt64LittleEndian(data) == Signature;
}
