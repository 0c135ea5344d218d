using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;

namespace Orvane.Folaro;

// The sounds or the videos of a presentation: the media parts of one kind, one view per part,
// adding bytes (stored once by content), and the media a frame embeds. AudioCollection,
// VideoCollection, AudioFrame and VideoFrame are this list for their kind.
internal sealed class MediaList<T> where T : class
{
    private readonly MediaStore _store;
    private readonly bool _audio;
    private readonly Func<MediaDataPart, T> _make;
    private readonly Func<T, MediaDataPart?> _partOf;
    private readonly Func<T, byte[]> _bytesOf;

    internal MediaList(MediaStore store, bool audio, Func<MediaDataPart, T> make, Func<T, MediaDataPart?> partOf, Func<T, byte[]> bytesOf)
    {
        _store = store;
        _audio = audio;
        _make = make;
        _partOf = partOf;
        _bytesOf = bytesOf;
    }

    internal int Count => Items().Count;

    internal T At(int index) => Indexes.At(Items(), index, _audio ? "AudioCollection[index]" : "VideoCollection[index]");

    /// <summary>The stored media with these bytes, else a new part holding them.</summary>
    internal T Add(byte[] data, string paramName)
    {
        ArgumentNullException.ThrowIfNull(data, paramName);
        string type = (_audio ? MediaFormats.Audio(data) : MediaFormats.Video(data))
            ?? throw new ArgumentException(_audio
                ? $"AudioCollection.AddAudio: the data is not {MediaFormats.AudioAccepted} sound"
                : $"VideoCollection.AddVideo: the data is not {MediaFormats.VideoAccepted} video", paramName);
        return View(_store.AddMedia(data, type));
    }

    internal T Add(Stream data, string paramName)
    {
        ArgumentNullException.ThrowIfNull(data, paramName);
        return Add(MediaLists.ReadAll(data), paramName);
    }

    internal IEnumerator<T> GetEnumerator() => Items().GetEnumerator();

    /// <summary>The media <paramref name="frame"/> (a p:pic of <paramref name="slide"/>) embeds, or null for a linked one.</summary>
    internal T? EmbeddedIn(OpenXmlElement frame, OpenXmlPart slide) =>
        MediaFrameMarkup.Embedded(frame, slide) is { } part ? View(part) : null;

    /// <summary>Makes <paramref name="frame"/> embed <paramref name="value"/>: its own part when it is of this presentation, else a stored copy of its bytes.</summary>
    internal void Embed(OpenXmlElement frame, OpenXmlPart slide, T? value, string where)
    {
        ArgumentNullException.ThrowIfNull(value);
        var part = _partOf(value) is { } own && MediaStore.Alive(own) && ReferenceEquals(own.OpenXmlPackage, slide.OpenXmlPackage)
            ? own
            : _partOf(Add(_bytesOf(value), _audio ? "audioData" : "videoData"))!;
        MediaFrameMarkup.Embed(frame, slide, part, audio: _audio, where);
    }

    private T View(MediaDataPart part) => _store.MediaView(part, () => _make(part));

    private List<T> Items() => _store.MediaParts().Where(p => MediaLists.IsAudio(p) == _audio).Select(View).ToList();
}

internal static class MediaLists
{
    internal static MediaList<IAudio> Audios(MediaStore store) =>
        new(store, audio: true, p => new Audio(p), a => (a as Audio)?.Part, a => a.BinaryData);

    internal static MediaList<IVideo> Videos(MediaStore store) =>
        new(store, audio: false, p => new Video(p), v => (v as Video)?.Part, v => v.BinaryData);

    internal static bool IsAudio(MediaDataPart part) => part.ContentType.StartsWith("audio/", StringComparison.OrdinalIgnoreCase);

    internal static byte[] ReadAll(Stream stream)
    {
        using var copy = new MemoryStream();
        stream.CopyTo(copy);
        return copy.ToArray();
    }
}
