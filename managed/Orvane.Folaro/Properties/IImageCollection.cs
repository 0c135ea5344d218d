using System.Collections.Generic;

namespace Orvane.Folaro;

/// <summary>A picture stored once in the package.</summary>
public interface IPPImage
{
    byte[] BinaryData { get; }
    string ContentType { get; }
    int Width { get; }
    int Height { get; }
}

/// <summary>The pictures of a presentation, each stored once.</summary>
public interface IImageCollection : IEnumerable<IPPImage>
{
    int Count { get; }
    IPPImage this[int index] { get; }
    /// <summary>Adds a picture, or gives back the one with the same bytes already stored.</summary>
    IPPImage AddImage(byte[] buffer);

    IEnumerable<IPPImage> AsIEnumerable { get; }
}
