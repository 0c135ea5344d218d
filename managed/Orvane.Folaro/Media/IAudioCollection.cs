using System.Collections.Generic;
using System.IO;

namespace Orvane.Folaro;

/// <summary>A sound stored once in the presentation.</summary>
public interface IAudio
{
    byte[] BinaryData { get; }

    /// <summary>The MIME type, such as "audio/mpeg" or "audio/wav".</summary>
    string ContentType { get; }
}

/// <summary>The sounds of a presentation, each stored once by content.</summary>
public interface IAudioCollection : IEnumerable<IAudio>
{
    int Count { get; }

    IAudio this[int index] { get; }

    /// <summary>Adds a sound (MP3, WAV, AIFF, MIDI, Ogg, FLAC, M4A or WMA), or gives back the one with the same bytes already stored.</summary>
    IAudio AddAudio(byte[] audioData);

    /// <summary>Adds the sound read from the current position of the stream to its end.</summary>
    IAudio AddAudio(Stream audioData);

    IEnumerable<IAudio> AsIEnumerable { get; }
}
