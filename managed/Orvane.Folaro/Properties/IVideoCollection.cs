using System.Collections.Generic;

namespace Orvane.Folaro;

public interface IVideo
{
    byte[] BinaryData { get; }
    string ContentType { get; }
}

/// <summary>The videos of a presentation, each stored once.</summary>
public interface IVideoCollection : IEnumerable<IVideo>
{
    int Count { get; }
    IVideo this[int index] { get; }
    IVideo AddVideo(byte[] videoData);

    IEnumerable<IVideo> AsIEnumerable { get; }
}
