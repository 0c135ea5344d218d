using System;
using System.IO;
using Orvane.Marel.Imaging;
using SkiaSharp;

namespace Orvane.Marel;

/// <summary>A raster image whose pixels can be read and written.</summary>
public sealed class Bitmap : Image
{
    /// <summary>Reads an image file.</summary>
    public Bitmap(string filename) : this(Load(filename))
    {
    }

    /// <summary>Reads an image from the current position of a stream to its end.</summary>
    public Bitmap(Stream stream) : this(Decode(stream))
    {
    }

    /// <summary>A copy of another image.</summary>
    public Bitmap(Image original) : this(Copy(original))
    {
    }

    /// <summary>A new image of the given size in pixels, fully transparent.</summary>
    public Bitmap(int width, int height) : base(Blank(width, height), ImageFormat.MemoryBmp)
    {
    }

    private Bitmap((SKBitmap Bitmap, ImageFormat Format) decoded) : base(decoded.Bitmap, decoded.Format)
    {
    }

    public Color GetPixel(int x, int y)
    {
        CheckPoint(x, y, nameof(GetPixel));
        var c = Pixels.GetPixel(x, y);
        return Color.FromArgb(c.Alpha, c.Red, c.Green, c.Blue);
    }

    public void SetPixel(int x, int y, Color color)
    {
        CheckPoint(x, y, nameof(SetPixel));
        Pixels.SetPixel(x, y, new SKColor(color.R, color.G, color.B, color.A));
    }

    private void CheckPoint(int x, int y, string member)
    {
        if (x < 0 || x >= Width)
            throw new ArgumentOutOfRangeException(nameof(x), x, $"Bitmap.{member}: x must be in [0, {Width})");
        if (y < 0 || y >= Height)
            throw new ArgumentOutOfRangeException(nameof(y), y, $"Bitmap.{member}: y must be in [0, {Height})");
    }

    private static (SKBitmap, ImageFormat) Load(string filename)
    {
        ArgumentNullException.ThrowIfNull(filename);
        using var stream = File.OpenRead(filename);
        return ImageCodec.Decode(stream, $"Bitmap('{filename}')");
    }

    private static (SKBitmap, ImageFormat) Decode(Stream stream)
    {
        ArgumentNullException.ThrowIfNull(stream);
        return ImageCodec.Decode(stream, "Bitmap(Stream)");
    }

    private static (SKBitmap, ImageFormat) Copy(Image original)
    {
        ArgumentNullException.ThrowIfNull(original);
        var copy = original.Pixels.Copy() ?? throw new InvalidOperationException("Bitmap(Image): the pixels could not be copied");
        return (copy, original.RawFormat);
    }

    private static SKBitmap Blank(int width, int height)
    {
        if (width <= 0)
            throw new ArgumentOutOfRangeException(nameof(width), width, "Bitmap: width must be positive");
        if (height <= 0)
            throw new ArgumentOutOfRangeException(nameof(height), height, "Bitmap: height must be positive");
        if ((long)width * height > ImageCodec.MaxPixels)
            throw new ArgumentException($"Bitmap: {width}x{height} is too large");
        var bitmap = new SKBitmap(new SKImageInfo(width, height, SKColorType.Bgra8888, SKAlphaType.Premul));
        bitmap.Erase(SKColors.Transparent);
        return bitmap;
    }
}
