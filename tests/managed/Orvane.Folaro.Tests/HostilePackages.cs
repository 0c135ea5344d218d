using System;
using System.Buffers.Binary;
using System.IO;
using System.IO.Compression;
using System.Text;

namespace Orvane.Folaro.Tests;

// Builds damaged and hostile packages from a valid new deck.
internal static class HostilePackages
{
    internal static byte[] ValidDeck()
    {
        using IPresentation pres = new Presentation();
        pres.Slides.AddEmptySlide(pres.LayoutSlides[0]);
        return TestFiles.SaveToBytes(pres);
    }

    internal static byte[] With(Action<ZipArchive> edit)
    {
        var ms = new MemoryStream();
        var deck = ValidDeck();
        ms.Write(deck, 0, deck.Length);
        using (var zip = new ZipArchive(ms, ZipArchiveMode.Update, leaveOpen: true))
            edit(zip);
        return ms.ToArray();
    }

    internal static void Put(ZipArchive zip, string name, string text) => Put(zip, name, Encoding.UTF8.GetBytes(text));

    internal static void Put(ZipArchive zip, string name, byte[] data)
    {
        if (zip.Mode != ZipArchiveMode.Create)
            zip.GetEntry(name)?.Delete();
        using var s = zip.CreateEntry(name, CompressionLevel.Optimal).Open();
        s.Write(data, 0, data.Length);
    }

    // Rewrites the uncompressed size an entry declares, in its local header and in the central directory.
    internal static byte[] DeclareSize(byte[] package, string name, uint size)
    {
        var bytes = (byte[])package.Clone();
        var nameBytes = Encoding.UTF8.GetBytes(name);
        for (int i = 0; i + 46 < bytes.Length; i++)
        {
            uint sig = BinaryPrimitives.ReadUInt32LittleEndian(bytes.AsSpan(i));
            if (sig == 0x04034B50 && Matches(bytes, i + 30, BinaryPrimitives.ReadUInt16LittleEndian(bytes.AsSpan(i + 26)), nameBytes))
                BinaryPrimitives.WriteUInt32LittleEndian(bytes.AsSpan(i + 22), size);
            else if (sig == 0x02014B50 && Matches(bytes, i + 46, BinaryPrimitives.ReadUInt16LittleEndian(bytes.AsSpan(i + 28)), nameBytes))
                BinaryPrimitives.WriteUInt32LittleEndian(bytes.AsSpan(i + 24), size);
        }
        return bytes;
    }

    internal static uint CompressedSize(byte[] package, string name)
    {
        using var zip = new ZipArchive(new MemoryStream(package));
        return (uint)zip.GetEntry(name)!.CompressedLength;
    }

    private static bool Matches(byte[] bytes, int at, int length, byte[] name) =>
        length == name.Length && at + length <= bytes.Length && bytes.AsSpan(at, length).SequenceEqual(name);
}
