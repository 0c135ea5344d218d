using System;
using System.Buffers.Binary;
using System.Globalization;
using System.Text;
using System.Text.RegularExpressions;

namespace Orvane.Folaro;

// Image formats told apart by their first bytes, and their size in pixels read from the header
// alone (no decoding, so sizing a TIFF or a metafile needs no codec).
internal static class ImageFormats
{
    internal const string Png = "image/png";
    internal const string Jpeg = "image/jpeg";
    internal const string Gif = "image/gif";
    internal const string Bmp = "image/bmp";
    internal const string Tiff = "image/tiff";
    internal const string Svg = "image/svg+xml";

    internal const string Accepted = "PNG, JPEG, GIF, BMP, TIFF or SVG";

    /// <summary>The content type of image bytes of an accepted format, or null.</summary>
    internal static string? Detect(ReadOnlySpan<byte> d)
    {
        if (d.Length >= 8 && d[0] == 0x89 && d[1] == 'P' && d[2] == 'N' && d[3] == 'G' && d[4] == 0x0D && d[5] == 0x0A)
            return Png;
        if (d.Length >= 3 && d[0] == 0xFF && d[1] == 0xD8 && d[2] == 0xFF)
            return Jpeg;
        if (d.Length >= 6 && d[0] == 'G' && d[1] == 'I' && d[2] == 'F' && d[3] == '8' && (d[4] == '7' || d[4] == '9') && d[5] == 'a')
            return Gif;
        if (d.Length >= 26 && d[0] == 'B' && d[1] == 'M')
            return Bmp;
        if (d.Length >= 8 && ((d[0] == 'I' && d[1] == 'I' && d[2] == 42 && d[3] == 0) || (d[0] == 'M' && d[1] == 'M' && d[2] == 0 && d[3] == 42)))
            return Tiff;
        if (IsSvg(d))
            return Svg;
        return null;
    }

    // SVG is text: an <svg root after an optional byte-order mark, XML declaration, comments and doctype.
    private static bool IsSvg(ReadOnlySpan<byte> d)
    {
        var head = Encoding.UTF8.GetString(d[..Math.Min(d.Length, 4096)]).TrimStart('\uFEFF');
        int at = 0;
        while (true)
        {
            while (at < head.Length && char.IsWhiteSpace(head[at]))
                at++;
            if (at >= head.Length || head[at] != '<')
                return false;
            if (string.CompareOrdinal(head, at, "<?", 0, 2) == 0 || string.CompareOrdinal(head, at, "<!--", 0, 4) == 0 || string.CompareOrdinal(head, at, "<!DOCTYPE", 0, 9) == 0)
            {
                string close = head[at + 1] == '?' ? "?>" : head[at + 2] == '-' ? "-->" : ">";
                int end = head.IndexOf(close, at + 2, StringComparison.Ordinal);
                if (end < 0)
                    return false;
                at = end + close.Length;
                continue;
            }
            return Regex.IsMatch(head.AsSpan(at), @"^<(\w+:)?svg[\s>/]");
        }
    }

    /// <summary>Width and height in pixels from the header; (0, 0) when the format or header is unknown.</summary>
    internal static (int Width, int Height) SizeOf(ReadOnlySpan<byte> d, string contentType)
    {
        try
        {
            return contentType switch
            {
                Png when d.Length >= 24 => ((int)BinaryPrimitives.ReadUInt32BigEndian(d[16..]), (int)BinaryPrimitives.ReadUInt32BigEndian(d[20..])),
                Gif when d.Length >= 10 => (BinaryPrimitives.ReadUInt16LittleEndian(d[6..]), BinaryPrimitives.ReadUInt16LittleEndian(d[8..])),
                Bmp when d.Length >= 26 => BmpSize(d),
                Jpeg or "image/jpg" or "image/pjpeg" => JpegSize(d),
                Tiff => TiffSize(d),
                Svg => SvgSize(d),
                "image/x-emf" or "image/emf" => EmfSize(d),
                "image/x-wmf" or "image/wmf" => WmfSize(d),
                _ => Detect(d) is { } actual && actual != contentType ? SizeOf(d, actual) : (0, 0),
            };
        }
        catch (ArgumentOutOfRangeException)
        {
            // A truncated header: the size is unknown.
            return (0, 0);
        }
    }

    private static (int, int) BmpSize(ReadOnlySpan<byte> d)
    {
        uint header = BinaryPrimitives.ReadUInt32LittleEndian(d[14..]);
        if (header == 12)
            return (BinaryPrimitives.ReadUInt16LittleEndian(d[18..]), BinaryPrimitives.ReadUInt16LittleEndian(d[20..]));
        // A negative height marks a top-down bitmap.
        return (Math.Abs(BinaryPrimitives.ReadInt32LittleEndian(d[18..])), Math.Abs(BinaryPrimitives.ReadInt32LittleEndian(d[22..])));
    }

    private static (int, int) JpegSize(ReadOnlySpan<byte> d)
    {
        int at = 2;
        while (at + 9 < d.Length)
        {
            if (d[at] != 0xFF)
                return (0, 0);
            byte marker = d[at + 1];
            if (marker == 0xFF)
            {
                at++;
                continue;
            }
            int length = BinaryPrimitives.ReadUInt16BigEndian(d[(at + 2)..]);
            // Start-of-frame markers (all but DHT, JPG and DAC in C0..CF) carry the size.
            if (marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC)
                return (BinaryPrimitives.ReadUInt16BigEndian(d[(at + 7)..]), BinaryPrimitives.ReadUInt16BigEndian(d[(at + 5)..]));
            at += 2 + length;
        }
        return (0, 0);
    }

    private static (int, int) TiffSize(ReadOnlySpan<byte> d)
    {
        bool little = d[0] == 'I';
        long ifd = U32(d, 4, little);
        if (ifd <= 0 || ifd + 2 > d.Length)
            return (0, 0);
        int count = U16(d, (int)ifd, little);
        int width = 0, height = 0;
        for (int i = 0; i < count; i++)
        {
            int entry = (int)ifd + 2 + i * 12;
            ushort tag = U16(d, entry, little);
            ushort type = U16(d, entry + 2, little);
            int value = type == 3 ? U16(d, entry + 8, little) : (int)U32(d, entry + 8, little);
            if (tag == 256)
                width = value;
            else if (tag == 257)
                height = value;
        }
        return (width, height);
    }

    private static uint U32(ReadOnlySpan<byte> d, int at, bool little) =>
        little ? BinaryPrimitives.ReadUInt32LittleEndian(d[at..]) : BinaryPrimitives.ReadUInt32BigEndian(d[at..]);

    private static ushort U16(ReadOnlySpan<byte> d, int at, bool little) =>
        little ? BinaryPrimitives.ReadUInt16LittleEndian(d[at..]) : BinaryPrimitives.ReadUInt16BigEndian(d[at..]);

    private static (int, int) EmfSize(ReadOnlySpan<byte> d)
    {
        // The header's bounds rectangle, in device pixels, inclusive.
        int left = BinaryPrimitives.ReadInt32LittleEndian(d[8..]), top = BinaryPrimitives.ReadInt32LittleEndian(d[12..]);
        int right = BinaryPrimitives.ReadInt32LittleEndian(d[16..]), bottom = BinaryPrimitives.ReadInt32LittleEndian(d[20..]);
        return (Math.Max(0, right - left + 1), Math.Max(0, bottom - top + 1));
    }

    private static (int, int) WmfSize(ReadOnlySpan<byte> d)
    {
        // Only a placeable metafile states its size: a box in units of 1/inch-per-unit.
        if (BinaryPrimitives.ReadUInt32LittleEndian(d) != 0x9AC6CDD7)
            return (0, 0);
        int left = BinaryPrimitives.ReadInt16LittleEndian(d[6..]), top = BinaryPrimitives.ReadInt16LittleEndian(d[8..]);
        int right = BinaryPrimitives.ReadInt16LittleEndian(d[10..]), bottom = BinaryPrimitives.ReadInt16LittleEndian(d[12..]);
        int inch = BinaryPrimitives.ReadUInt16LittleEndian(d[14..]);
        if (inch == 0)
            return (0, 0);
        return ((int)Math.Round(Math.Abs(right - left) * 96.0 / inch), (int)Math.Round(Math.Abs(bottom - top) * 96.0 / inch));
    }

    // The root's width and height (in px, or converted from absolute units), else its viewBox;
    // the size a browser gives an SVG with neither is 300 by 150.
    internal static (int, int) SvgSize(ReadOnlySpan<byte> d)
    {
        var text = Encoding.UTF8.GetString(d[..Math.Min(d.Length, 8192)]);
        var root = Regex.Match(text, @"<(\w+:)?svg\b[^>]*>", RegexOptions.Singleline);
        if (!root.Success)
            return (300, 150);
        double? width = Length(root.Value, "width"), height = Length(root.Value, "height");
        var box = Regex.Match(root.Value, @"\bviewBox\s*=\s*[""']\s*([-\d.eE+]+)[\s,]+([-\d.eE+]+)[\s,]+([-\d.eE+]+)[\s,]+([-\d.eE+]+)");
        double? boxW = null, boxH = null;
        if (box.Success && double.TryParse(box.Groups[3].Value, NumberStyles.Float, CultureInfo.InvariantCulture, out var bw)
            && double.TryParse(box.Groups[4].Value, NumberStyles.Float, CultureInfo.InvariantCulture, out var bh) && bw > 0 && bh > 0)
        {
            boxW = bw;
            boxH = bh;
        }
        // One side given with a viewBox: the other follows the box's aspect ratio.
        if (width == null && height != null && boxW != null)
            width = height * boxW / boxH;
        if (height == null && width != null && boxW != null)
            height = width * boxH / boxW;
        width ??= boxW ?? 300;
        height ??= boxH ?? 150;
        return (Clamp(width.Value), Clamp(height.Value));
    }

    private static int Clamp(double v) => (int)Math.Round(Math.Clamp(v, 1, 16384));

    private static double? Length(string tag, string name)
    {
        var m = Regex.Match(tag, $@"\s{name}\s*=\s*[""']\s*([\d.eE+]+)\s*(px|pt|pc|mm|cm|in)?\s*[""']");
        if (!m.Success || !double.TryParse(m.Groups[1].Value, NumberStyles.Float, CultureInfo.InvariantCulture, out var v))
            return null;
        double perUnit = m.Groups[2].Value switch
        {
            "pt" => 96.0 / 72,
            "pc" => 16,
            "mm" => 96 / 25.4,
            "cm" => 96 / 2.54,
            "in" => 96,
            _ => 1,
        };
        return v * perUnit;
    }
}
