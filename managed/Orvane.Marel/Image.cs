using System;
using System.IO;
using Orvane.Marel.Imaging;
using SkiaSharp;

namespace Orvane.Marel;

/// <summary>A raster image held in memory as 32-bit premultiplied pixels.</summary>
public abstract class Image : IDisposable
{
    private SKBitmap? _bitmap;

    private protected Image(SKBitmap bitmap, ImageFormat rawFormat)
    {
        _bitmap = bitmap;
        RawFormat = rawFormat;
    }

    /// <summary>Reads an image file (PNG, JPEG, GIF, BMP, WebP, ICO).</summary>
    public static Image FromFile(string filename) => new Bitmap(filename);

    public static Image FromStream(Stream stream) => new Bitmap(stream);

    public int Width => Pixels.Width;
    public int Height => Pixels.Height;
    public Size Size => new(Width, Height);

    /// <summary>The format the image was read from; <see cref="ImageFormat.MemoryBmp"/> for one made in memory.</summary>
    public ImageFormat RawFormat { get; }

    internal SKBitmap Pixels => _bitmap ?? throw new ObjectDisposedException(GetType().Name);

    public void Save(string filename, ImageFormat format)
    {
        ArgumentNullException.ThrowIfNull(filename);
        ArgumentNullException.ThrowIfNull(format);
        var bytes = ImageCodec.Encode(Pixels, format);
        File.WriteAllBytes(filename, bytes);
    }

    public void Save(Stream stream, ImageFormat format)
    {
        ArgumentNullException.ThrowIfNull(stream);
        ArgumentNullException.ThrowIfNull(format);
        var bytes = ImageCodec.Encode(Pixels, format);
        stream.Write(bytes, 0, bytes.Length);
    }

    public void Dispose()
    {
        _bitmap?.Dispose();
        _bitmap = null;
        GC.SuppressFinalize(this);
    }
}
