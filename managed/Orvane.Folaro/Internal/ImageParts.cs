using System;
using System.IO;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;

namespace Orvane.Folaro.Internal;

// Images referenced from a part (picture fills, picture bullets): bytes in, relationship id out.
internal static class ImageParts
{
    /// <summary>The id of a relationship from <paramref name="part"/> to an image holding these bytes, reusing an equal one.</summary>
    internal static string Relate(OpenXmlPart part, byte[] data, string where)
    {
        ArgumentNullException.ThrowIfNull(data);
        string type = ContentType(data)
            ?? throw new ArgumentException($"{where}: the image is not PNG, JPEG, GIF, BMP or TIFF data", nameof(data));
        foreach (var pair in part.Parts)
        {
            if (pair.OpenXmlPart is ImagePart existing && existing.ContentType == type && Read(existing).AsSpan().SequenceEqual(data))
                return pair.RelationshipId;
        }
        var image = part.AddNewPart<ImagePart>(type, null);
        using (var stream = new MemoryStream(data, false))
            image.FeedData(stream);
        return part.GetIdOfPart(image);
    }

    /// <summary>The bytes of the image a relationship id names; empty when there is none.</summary>
    internal static byte[] Read(OpenXmlPart? part, string? relId)
    {
        if (part == null || string.IsNullOrEmpty(relId))
            return Array.Empty<byte>();
        var found = part.Parts.FirstOrDefault(p => p.RelationshipId == relId).OpenXmlPart as ImagePart;
        return found == null ? Array.Empty<byte>() : Read(found);
    }

    /// <summary>The r:embed of a blip element.</summary>
    internal static string? EmbedOf(DocumentFormat.OpenXml.OpenXmlElement blip)
    {
        foreach (var a in blip.GetAttributes())
            if (a.LocalName == "embed" && a.NamespaceUri == "http://schemas.openxmlformats.org/officeDocument/2006/relationships")
                return a.Value;
        return null;
    }

    private static byte[] Read(ImagePart image)
    {
        using var stream = image.GetStream(FileMode.Open, FileAccess.Read);
        using var copy = new MemoryStream();
        stream.CopyTo(copy);
        return copy.ToArray();
    }

    private static string? ContentType(byte[] d)
    {
        if (d.Length >= 8 && d[0] == 0x89 && d[1] == 'P' && d[2] == 'N' && d[3] == 'G')
            return "image/png";
        if (d.Length >= 3 && d[0] == 0xFF && d[1] == 0xD8 && d[2] == 0xFF)
            return "image/jpeg";
        if (d.Length >= 6 && d[0] == 'G' && d[1] == 'I' && d[2] == 'F' && d[3] == '8')
            return "image/gif";
        if (d.Length >= 2 && d[0] == 'B' && d[1] == 'M')
            return "image/bmp";
        if (d.Length >= 4 && ((d[0] == 'I' && d[1] == 'I' && d[2] == 42 && d[3] == 0) || (d[0] == 'M' && d[1] == 'M' && d[2] == 0 && d[3] == 42)))
            return "image/tiff";
        return null;
    }
}
