using System;
using System.Text;

namespace Orvane.Folaro;

// Sound and video containers told apart by their first bytes.
internal static class MediaFormats
{
    internal const string AudioAccepted = "MP3, WAV, AIFF, MIDI, Ogg, FLAC, M4A or WMA";
    internal const string VideoAccepted = "MP4, MOV, M4V, AVI, WMV, MPEG or WebM";

    internal static string? Audio(ReadOnlySpan<byte> d)
    {
        if (Riff(d, "WAVE"))
            return "audio/wav";
        if (Tag(d, 0, "ID3") || (d.Length >= 2 && d[0] == 0xFF && (d[1] & 0xE0) == 0xE0))
            return "audio/mpeg";
        if (Tag(d, 0, "FORM") && (Tag(d, 8, "AIFF") || Tag(d, 8, "AIFC")))
            return "audio/x-aiff";
        if (Tag(d, 0, "MThd"))
            return "audio/midi";
        if (Tag(d, 0, "OggS"))
            return "audio/ogg";
        if (Tag(d, 0, "fLaC"))
            return "audio/flac";
        if (Tag(d, 4, "ftyp") && (Tag(d, 8, "M4A ") || Tag(d, 8, "M4B ")))
            return "audio/mp4";
        if (Asf(d))
            return "audio/x-ms-wma";
        return null;
    }

    internal static string? Video(ReadOnlySpan<byte> d)
    {
        if (Tag(d, 4, "ftyp"))
        {
            if (Tag(d, 8, "qt  "))
                return "video/quicktime";
            if (Tag(d, 8, "M4V ") || Tag(d, 8, "M4VH") || Tag(d, 8, "M4VP"))
                return "video/x-m4v";
            return "video/mp4";
        }
        if (Tag(d, 4, "moov") || Tag(d, 4, "mdat") || Tag(d, 4, "wide"))
            return "video/quicktime";
        if (Riff(d, "AVI "))
            return "video/avi";
        if (Asf(d))
            return "video/x-ms-wmv";
        if (d.Length >= 4 && d[0] == 0 && d[1] == 0 && d[2] == 1 && (d[3] == 0xBA || d[3] == 0xB3))
            return "video/mpeg";
        if (d.Length >= 4 && d[0] == 0x1A && d[1] == 0x45 && d[2] == 0xDF && d[3] == 0xA3)
            return "video/webm";
        return null;
    }

    private static bool Riff(ReadOnlySpan<byte> d, string form) => Tag(d, 0, "RIFF") && Tag(d, 8, form);

    // The ASF header object's GUID, shared by WMA and WMV.
    private static bool Asf(ReadOnlySpan<byte> d) =>
        d.Length >= 16 && d[..16].SequenceEqual(new byte[] { 0x30, 0x26, 0xB2, 0x75, 0x8E, 0x66, 0xCF, 0x11, 0xA6, 0xD9, 0x00, 0xAA, 0x00, 0x62, 0xCE, 0x6C });

    private static bool Tag(ReadOnlySpan<byte> d, int at, string tag) =>
        d.Length >= at + tag.Length && d.Slice(at, tag.Length).SequenceEqual(Encoding.ASCII.GetBytes(tag));
}
