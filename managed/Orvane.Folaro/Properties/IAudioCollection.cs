using System.Collections.Generic;

namespace Orvane.Folaro;

public interface IAudio
{
    byte[] BinaryData { get; }
    string ContentType { get; }
}

/// <summary>The sounds of a presentation, each stored once.</summary>
public interface IAudioCollection : IEnumerable<IAudio>
{
    int Count { get; }
    IAudio this[int index] { get; }
    IAudio AddAudio(byte[] audioData);

    IEnumerable<IAudio> AsIEnumerable { get; }
}
