using System;
using System.Buffers.Binary;
using System.IO;
using System.IO.Compression;
using System.Xml;

namespace Orvane.Folaro;

// Reads a package into memory and checks it against the load limits before the Open XML
// SDK parses anything: entry count, expanded sizes (as declared and as actually inflated),
// per-entry compression ratio, XML nesting depth, and no DTD anywhere.
internal static class PackageReader
{
    private const long RatioFloor = 1L << 20; // small entries may compress as well as they like

    internal static MemoryStream Read(Stream source, LoadOptions options, string origin)
    {
        var buffer = CopyBounded(source, options.MaxUncompressedSize, origin);
        CheckSignature(buffer, origin);
        CheckEntryCountFromDirectory(buffer, options, origin);
        try
        {
            using var zip = new ZipArchive(new MemoryStream(buffer, writable: false), ZipArchiveMode.Read);
            if (zip.Entries.Count > options.MaxZipEntries)
                throw TooMany(zip.Entries.Count, options, origin);
            long declared = 0;
            foreach (var entry in zip.Entries)
            {
                declared += entry.Length;
                if (declared > options.MaxUncompressedSize)
                    throw new PptxReadException($"{origin}: the package expands to more than {options.MaxUncompressedSize} bytes (LoadOptions.MaxUncompressedSize)");
                CheckRatio(entry.FullName, entry.Length, entry.CompressedLength, options, origin);
            }
            long inflated = 0;
            foreach (var entry in zip.Entries)
                inflated += ScanEntry(entry, options, origin, options.MaxUncompressedSize - inflated);
        }
        catch (InvalidDataException ex)
        {
            throw new PptxReadException($"{origin}: the zip package is damaged: {ex.Message}", ex);
        }
        var stream = new MemoryStream(buffer.Length + 4096);
        stream.Write(buffer, 0, buffer.Length);
        stream.Position = 0;
        return stream;
    }

    private static byte[] CopyBounded(Stream source, long limit, string origin)
    {
        using var copy = new MemoryStream();
        var chunk = new byte[81920];
        int n;
        while ((n = source.Read(chunk, 0, chunk.Length)) > 0)
        {
            copy.Write(chunk, 0, n);
            if (copy.Length > limit)
                throw new PptxReadException($"{origin}: the input is larger than {limit} bytes (LoadOptions.MaxUncompressedSize)");
        }
        return copy.ToArray();
    }

    private static void CheckSignature(byte[] data, string origin)
    {
        if (data.Length >= 4 && data[0] == 0x50 && data[1] == 0x4B && data[2] == 0x03 && data[3] == 0x04)
            return;
        if (data.Length >= 8 && BinaryPrimitives.ReadUInt64LittleEndian(data) == 0xE11AB1A1E011CFD0UL)
            throw new PptxReadException($"{origin}: the input is an OLE compound file (an encrypted package or a legacy binary presentation); neither is supported yet");
        if (data.Length == 0)
            throw new PptxReadException($"{origin}: the input is empty");
        throw new PptxReadException($"{origin}: the input is not a zip package");
    }

    // The end-of-central-directory record gives the entry count without reading the directory.
    private static void CheckEntryCountFromDirectory(byte[] data, LoadOptions options, string origin)
    {
        int stop = Math.Max(0, data.Length - 22 - 65535);
        for (int i = data.Length - 22; i >= stop; i--)
        {
            if (BinaryPrimitives.ReadUInt32LittleEndian(data.AsSpan(i)) != 0x06054B50)
                continue;
            int count = BinaryPrimitives.ReadUInt16LittleEndian(data.AsSpan(i + 10));
            if (count != 0xFFFF && count > options.MaxZipEntries)
                throw TooMany(count, options, origin);
            return;
        }
    }

    private static PptxReadException TooMany(int count, LoadOptions options, string origin) =>
        new($"{origin}: the package has {count} entries, more than {options.MaxZipEntries} (LoadOptions.MaxZipEntries)");

    private static void CheckRatio(string name, long length, long compressed, LoadOptions options, string origin)
    {
        if (length > RatioFloor && length > (long)options.MaxCompressionRatio * Math.Max(1, compressed))
            throw new PptxReadException($"{origin}: part '/{name}' expands {length / Math.Max(1, compressed)} times, more than {options.MaxCompressionRatio} (LoadOptions.MaxCompressionRatio)");
    }

    // Inflates one entry, counting the bytes actually produced (declared sizes can lie), and
    // walks XML entries with a reader that refuses DTDs and tracks the nesting depth.
    private static long ScanEntry(ZipArchiveEntry entry, LoadOptions options, string origin, long budget)
    {
        using var raw = entry.Open();
        using var counted = new CountingStream(raw, Math.Min(budget, entry.Length), entry, options, origin);
        if (IsXml(entry.FullName))
        {
            var settings = new XmlReaderSettings
            {
                DtdProcessing = DtdProcessing.Prohibit,
                XmlResolver = null,
                IgnoreWhitespace = true,
                IgnoreComments = true,
                CloseInput = false,
            };
            try
            {
                using var reader = XmlReader.Create(counted, settings);
                while (reader.Read())
                {
                    if (reader.Depth > options.MaxXmlDepth)
                        throw new PptxReadException($"{origin}: part '/{entry.FullName}' nests XML deeper than {options.MaxXmlDepth} levels (LoadOptions.MaxXmlDepth)");
                }
            }
            catch (XmlException ex)
            {
                string what = ex.Message.Contains("DTD", StringComparison.OrdinalIgnoreCase)
                    ? "contains a DTD, which is not allowed"
                    : "is not well-formed XML";
                throw new PptxReadException($"{origin}: part '/{entry.FullName}' {what} ({ex.Message})", ex);
            }
        }
        else
        {
            var sink = new byte[81920];
            while (counted.Read(sink, 0, sink.Length) > 0)
            {
            }
        }
        return counted.Total;
    }

    private static bool IsXml(string name) =>
        name.EndsWith(".xml", StringComparison.OrdinalIgnoreCase) || name.EndsWith(".rels", StringComparison.OrdinalIgnoreCase);

    private sealed class CountingStream : Stream
    {
        private readonly Stream _inner;
        private readonly long _limit;
        private readonly ZipArchiveEntry _entry;
        private readonly LoadOptions _options;
        private readonly string _origin;

        internal CountingStream(Stream inner, long limit, ZipArchiveEntry entry, LoadOptions options, string origin)
        {
            _inner = inner;
            _limit = limit;
            _entry = entry;
            _options = options;
            _origin = origin;
        }

        internal long Total { get; private set; }

        public override int Read(byte[] buffer, int offset, int count)
        {
            int n = _inner.Read(buffer, offset, count);
            Total += n;
            if (Total > _limit)
            {
                if (Total > _entry.Length)
                    throw new PptxReadException($"{_origin}: part '/{_entry.FullName}' expands past its declared size");
                throw new PptxReadException($"{_origin}: the package expands to more than {_options.MaxUncompressedSize} bytes (LoadOptions.MaxUncompressedSize)");
            }
            return n;
        }

        public override bool CanRead => true;
        public override bool CanSeek => false;
        public override bool CanWrite => false;
        public override long Length => throw new NotSupportedException();
        public override long Position { get => Total; set => throw new NotSupportedException(); }
        public override void Flush() { }
        public override long Seek(long offset, SeekOrigin origin) => throw new NotSupportedException();
        public override void SetLength(long value) => throw new NotSupportedException();
        public override void Write(byte[] buffer, int offset, int count) => throw new NotSupportedException();
    }
}
