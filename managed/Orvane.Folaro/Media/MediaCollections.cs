using System;
using System.Collections;
using System.Collections.Generic;
using System.IO;
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
    private readonly MediaList<IAudio> _list;

    internal AudioCollection(MediaStore store)
    {
        _list = MediaLists.Audios(store);
    }

    public int Count => _list.Count;

    public IAudio this[int index] => _list.At(index);

    public IAudio AddAudio(byte[] audioData) => _list.Add(audioData, nameof(audioData));

    public IAudio AddAudio(Stream audioData) => _list.Add(audioData, nameof(audioData));

    public IEnumerator<IAudio> GetEnumerator() => _list.GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IAudio> IAudioCollection.AsIEnumerable => this;
}

/// <summary>The media parts of the package that are not sound.</summary>
public sealed class VideoCollection : IVideoCollection
{
    private readonly MediaList<IVideo> _list;

    internal VideoCollection(MediaStore store)
    {
        _list = MediaLists.Videos(store);
    }

    public int Count => _list.Count;

    public IVideo this[int index] => _list.At(index);

    public IVideo AddVideo(byte[] videoData) => _list.Add(videoData, nameof(videoData));

    public IVideo AddVideo(Stream videoData) => _list.Add(videoData, nameof(videoData));

    public IEnumerator<IVideo> GetEnumerator() => _list.GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IVideo> IVideoCollection.AsIEnumerable => this;
}
