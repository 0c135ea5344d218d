using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using System.Security.Cryptography;
using DocumentFormat.OpenXml.Packaging;

namespace Orvane.Folaro;

// The images and media of a package by content hash, so that bytes brought in from another
// package are stored once: an equal part already present is referenced instead of copied.
internal sealed class MediaIndex
{
    private readonly Dictionary<string, ImagePart> _images = new(StringComparer.Ordinal);
    private readonly Dictionary<string, DataPart> _media = new(StringComparer.Ordinal);

    private MediaIndex()
    {
    }

    internal static MediaIndex Of(PresentationDocument package)
    {
        var index = new MediaIndex();
        var seen = new HashSet<OpenXmlPart>();
        var pending = new Stack<OpenXmlPart>(package.Parts.Select(p => p.OpenXmlPart));
        while (pending.Count > 0)
        {
            var part = pending.Pop();
            if (!seen.Add(part))
                continue;
            if (part is ImagePart image)
                index._images.TryAdd(Hash(image.GetStream(FileMode.Open, FileAccess.Read)), image);
            foreach (var child in part.Parts)
                pending.Push(child.OpenXmlPart);
        }
        foreach (var data in package.DataParts)
            index._media.TryAdd(Hash(data.GetStream(FileMode.Open, FileAccess.Read)), data);
        return index;
    }

    /// <summary>Relates <paramref name="source"/>'s bytes to <paramref name="target"/> under <paramref name="relId"/>, reusing an equal image.</summary>
    internal void AddImage(OpenXmlPart target, ImagePart source, string relId)
    {
        var hash = Hash(source.GetStream(FileMode.Open, FileAccess.Read));
        if (_images.TryGetValue(hash, out var existing) && existing.ContentType == source.ContentType)
        {
            target.AddPart(existing, relId);
            return;
        }
        // Copying across packages makes a new part with a free name in the target.
        var copy = target.AddPart(source, relId);
        _images[hash] = copy;
    }

    /// <summary>The media part of the target package holding these bytes, made when there is none.</summary>
    internal DataPart MediaFor(PresentationDocument package, DataPart source)
    {
        var hash = Hash(source.GetStream(FileMode.Open, FileAccess.Read));
        if (_media.TryGetValue(hash, out var existing) && existing.ContentType == source.ContentType)
            return existing;
        var data = package.CreateMediaDataPart(source.ContentType);
        using (var stream = source.GetStream(FileMode.Open, FileAccess.Read))
            data.FeedData(stream);
        _media[hash] = data;
        return data;
    }

    private static string Hash(Stream stream)
    {
        using (stream)
            return Convert.ToHexString(SHA256.HashData(stream));
    }
}
