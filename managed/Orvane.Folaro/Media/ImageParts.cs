using System;
using System.IO;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;

namespace Orvane.Folaro;

// Images referenced from a part (picture fills, picture bullets): bytes in, relationship id out.
internal static class ImageParts
{
    /// <summary>The id of a relationship from <paramref name="part"/> to the stored image holding these bytes (an SVG's PNG rendition for SVG bytes).</summary>
    internal static string Relate(OpenXmlPart part, byte[] data, string where)
    {
        var store = DocumentState.Of(part).Media;
        var image = store.AddImage(data, where);
        return store.Relate(part, image.Fallback ?? image);
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
}
