using System;
using System.Collections;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;

namespace Orvane.Folaro;

public sealed class Audio : IAudio
{
    internal Audio(MediaDataPart part)
    {
        Part = part;
    }

    public byte[] BinaryData => MediaStore.Read(Part.GetStream(FileMode.Open, FileAccess.Read));

    public string ContentType => Part.ContentType;

    internal MediaDataPart Part { get; }

    public override string ToString() => $"Audio [{ContentType}]";
}

public sealed class Video : IVideo
{
    internal Video(MediaDataPart part)
    {
        Part = part;
    }

    public byte[] BinaryData => MediaStore.Read(Part.GetStream(FileMode.Open, FileAccess.Read));

    public string ContentType => Part.ContentType;

    internal MediaDataPart Part { get; }

    public override string ToString() => $"Video [{ContentType}]";
}

/// <summary>The media parts of the package whose type is audio/*.</summary>
public sealed class AudioCollection : IAudioCollection
{
    private readonly MediaStore _store;

    internal AudioCollection(MediaStore store)
    {
        _store = store;
    }

    public int Count => Items().Count;

    public IAudio this[int index] => Indexes.At(Items(), index, "AudioCollection[index]");

    public IAudio AddAudio(byte[] audioData)
    {
        ArgumentNullException.ThrowIfNull(audioData);
        string type = MediaFormats.Audio(audioData)
            ?? throw new ArgumentException($"AudioCollection.AddAudio: the data is not {MediaFormats.AudioAccepted} sound", nameof(audioData));
        return View(_store, _store.AddMedia(audioData, type));
    }

    public IAudio AddAudio(Stream audioData)
    {
        ArgumentNullException.ThrowIfNull(audioData);
        return AddAudio(MediaLists.ReadAll(audioData));
    }

    internal static Audio View(MediaStore store, MediaDataPart part) => store.MediaView(part, () => new Audio(part));

    private List<IAudio> Items() =>
        _store.MediaParts().Where(MediaLists.IsAudio).Select(p => (IAudio)View(_store, p)).ToList();

    public IEnumerator<IAudio> GetEnumerator() => Items().GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IAudio> IAudioCollection.AsIEnumerable => this;
}

/// <summary>The media parts of the package that are not sound.</summary>
public sealed class VideoCollection : IVideoCollection
{
    private readonly MediaStore _store;

    internal VideoCollection(MediaStore store)
    {
        _store = store;
    }

    public int Count => Items().Count;

    public IVideo this[int index] => Indexes.At(Items(), index, "VideoCollection[index]");

    public IVideo AddVideo(byte[] videoData)
    {
        ArgumentNullException.ThrowIfNull(videoData);
        string type = MediaFormats.Video(videoData)
            ?? throw new ArgumentException($"VideoCollection.AddVideo: the data is not {MediaFormats.VideoAccepted} video", nameof(videoData));
        return View(_store, _store.AddMedia(videoData, type));
    }

    public IVideo AddVideo(Stream videoData)
    {
        ArgumentNullException.ThrowIfNull(videoData);
        return AddVideo(MediaLists.ReadAll(videoData));
    }

    internal static Video View(MediaStore store, MediaDataPart part) => store.MediaView(part, () => new Video(part));

    private List<IVideo> Items() =>
        _store.MediaParts().Where(p => !MediaLists.IsAudio(p)).Select(p => (IVideo)View(_store, p)).ToList();

    public IEnumerator<IVideo> GetEnumerator() => Items().GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IVideo> IVideoCollection.AsIEnumerable => this;
}

internal static class MediaLists
{
    internal static bool IsAudio(MediaDataPart part) => part.ContentType.StartsWith("audio/", StringComparison.OrdinalIgnoreCase);

    internal static byte[] ReadAll(Stream stream)
    {
        using var copy = new MemoryStream();
        stream.CopyTo(copy);
        return copy.ToArray();
    }
}
