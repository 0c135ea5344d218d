using System;
using System.IO;
using Orvane.Marel;
using Orvane.Marel.Imaging;

namespace Orvane.Folaro;

/// <summary>A raster image produced by the library (a rendered slide, a thumbnail).</summary>
public interface IImage : IDisposable
{
    int Width { get; }
    int Height { get; }
    Size Size { get; }
    void Save(string filename, ImageFormat format);
    void Save(Stream stream, ImageFormat format);
    /// <summary>A copy of the image as a drawing-package bitmap.</summary>
    Bitmap ToBitmap();

    IDisposable AsIDisposable { get; }
}

public sealed class Image : IImage
{
    private Bitmap? _bitmap;

    internal Image(Bitmap bitmap)
    {
        _bitmap = bitmap;
    }

    public int Width => Pixels.Width;
    public int Height => Pixels.Height;
    public Size Size => Pixels.Size;

    public void Save(string filename, ImageFormat format) => Pixels.Save(filename, format);

    public void Save(Stream stream, ImageFormat format) => Pixels.Save(stream, format);

    public Bitmap ToBitmap() => new(Pixels);

    IDisposable IImage.AsIDisposable => this;

    public void Dispose()
    {
        _bitmap?.Dispose();
        _bitmap = null;
    }

    private Bitmap Pixels => _bitmap ?? throw new ObjectDisposedException(nameof(Image));
}
