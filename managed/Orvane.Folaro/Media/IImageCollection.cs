using System.Collections.Generic;
using System.IO;

namespace Orvane.Folaro;

/// <summary>
/// The pictures of a presentation, each stored once by content: adding bytes already stored gives
/// back the image that holds them. An SVG image is kept with a PNG rendition for readers that
/// show no SVG; the rendition is not listed on its own.
/// </summary>
public interface IImageCollection : IEnumerable<IPPImage>
{
    int Count { get; }

    IPPImage this[int index] { get; }

    /// <summary>Adds a PNG, JPEG, GIF, BMP, TIFF or SVG image, or gives back the one with the same bytes already stored.</summary>
    IPPImage AddImage(byte[] buffer);

    /// <summary>Adds the image read from the current position of the stream to its end.</summary>
    IPPImage AddImage(Stream stream);

    /// <summary>Adds a drawing as a PNG image.</summary>
    IPPImage AddImage(Orvane.Marel.Image image);

    IEnumerable<IPPImage> AsIEnumerable { get; }
}
