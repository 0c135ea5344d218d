using System.Collections.Generic;
using System.IO;

namespace Orvane.Folaro;

/// <summary>A video stored once in the presentation.</summary>
public interface IVideo
{
    byte[] BinaryData { get; }

    /// <summary>The MIME type, such as "video/mp4".</summary>
    string ContentType { get; }
}

/// <summary>The videos of a presentation, each stored once by content.</summary>
public interface IVideoCollection : IEnumerable<IVideo>
{
    int Count { get; }

    IVideo this[int index] { get; }

    /// <summary>Adds a video (MP4, MOV, M4V, AVI, WMV, MPEG or WebM), or gives back the one with the same bytes already stored.</summary>
    IVideo AddVideo(byte[] videoData);

    /// <summary>Adds the video read from the current position of the stream to its end.</summary>
    IVideo AddVideo(Stream videoData);

    IEnumerable<IVideo> AsIEnumerable { get; }
}
