using System;
using System.Collections;
using System.Collections.Generic;
using System.IO;

namespace Orvane.Folaro;

public sealed class ImageCollection : IImageCollection
{
    private readonly MediaStore _store;

    internal ImageCollection(MediaStore store)
    {
        _store = store;
    }

    public int Count => _store.Images().Count;

    public IPPImage this[int index]
    {
        get
        {
            var images = _store.Images();
            Indexes.Check(index, images.Count, "ImageCollection[index]");
            return images[index];
        }
    }

    public IPPImage AddImage(byte[] buffer) => _store.AddImage(buffer, "ImageCollection.AddImage");

    public IPPImage AddImage(Stream stream)
    {
        ArgumentNullException.ThrowIfNull(stream);
        using var copy = new MemoryStream();
        stream.CopyTo(copy);
        return _store.AddImage(copy.ToArray(), "ImageCollection.AddImage(Stream)");
    }

    public IPPImage AddImage(Orvane.Marel.Image image)
    {
        ArgumentNullException.ThrowIfNull(image);
        using var png = new MemoryStream();
        image.Save(png, Orvane.Marel.Imaging.ImageFormat.Png);
        return _store.AddImage(png.ToArray(), "ImageCollection.AddImage(Image)");
    }

    public IEnumerator<IPPImage> GetEnumerator() => ((IEnumerable<IPPImage>)_store.Images()).GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IPPImage> IImageCollection.AsIEnumerable => this;

    public override string ToString() => $"ImageCollection [{Count}]";
}
