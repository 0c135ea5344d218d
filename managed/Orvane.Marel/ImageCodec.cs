using System;
using System.IO;
using Orvane.Marel.Imaging;
using SkiaSharp;

namespace Orvane.Marel;

// Decoding through Skia's codecs and encoding to the formats we can write.
internal static class ImageCodec
{
    // Refuse images whose pixels alone would pass 1 GiB.
    internal const long MaxPixels = 1L << 28;

    internal static (SKBitmap Bitmap, ImageFormat Format) Decode(Stream stream, string what)
    {
        using var data = SKData.Create(stream)
            ?? throw new ArgumentException($"{what}: the stream holds no data", nameof(stream));
        using var codec = SKCodec.Create(data)
            ?? throw new ArgumentException($"{what}: the data is not an image in a supported format");
        var info = codec.Info;
        if ((long)info.Width * info.Height > MaxPixels)
            throw new ArgumentException($"{what}: the image is too large ({info.Width}x{info.Height})");
        var target = new SKImageInfo(info.Width, info.Height, SKColorType.Bgra8888, SKAlphaType.Premul);
        var bitmap = new SKBitmap(target);
        var result = codec.GetPixels(target, bitmap.GetPixels());
        if (result != SKCodecResult.Success && result != SKCodecResult.IncompleteInput)
        {
            bitmap.Dispose();
            throw new ArgumentException($"{what}: the image could not be decoded ({result})");
        }
        return (bitmap, FormatOf(codec.EncodedFormat));
    }

    internal static byte[] Encode(SKBitmap bitmap, ImageFormat format)
    {
        if (format.Equals(ImageFormat.Bmp) || format.Equals(ImageFormat.MemoryBmp))
            return EncodeBmp(bitmap);
        SKEncodedImageFormat skFormat;
        int quality;
        if (format.Equals(ImageFormat.Png))
            (skFormat, quality) = (SKEncodedImageFormat.Png, 100);
        else if (format.Equals(ImageFormat.Jpeg) || format.Equals(ImageFormat.Exif))
            (skFormat, quality) = (SKEncodedImageFormat.Jpeg, 90);
        else if (format.Equals(ImageFormat.Webp))
            (skFormat, quality) = (SKEncodedImageFormat.Webp, 90);
        else
            throw new NotSupportedException($"Image.Save: writing {format.Name} images is not supported yet");
        using var image = SKImage.FromBitmap(bitmap);
        using var data = image.Encode(skFormat, quality)
            ?? throw new InvalidOperationException($"Image.Save: the {format.Name} encoder failed");
        return data.ToArray();
    }

    // A bottom-up 24-bit BMP: the form every reader accepts. Alpha is dropped.
    private static byte[] EncodeBmp(SKBitmap bitmap)
    {
        int width = bitmap.Width, height = bitmap.Height;
        int stride = (width * 3 + 3) & ~3;
        int imageSize = stride * height;
        var bytes = new byte[54 + imageSize];
        using (var writer = new BinaryWriter(new MemoryStream(bytes)))
        {
            writer.Write((byte)'B');
            writer.Write((byte)'M');
            writer.Write(bytes.Length);
            writer.Write(0);
            writer.Write(54);
            writer.Write(40);
            writer.Write(width);
            writer.Write(height);
            writer.Write((short)1);
            writer.Write((short)24);
            writer.Write(0);
            writer.Write(imageSize);
            writer.Write(2835);
            writer.Write(2835);
            writer.Write(0);
            writer.Write(0);
        }
        for (int y = 0; y < height; y++)
        {
            int row = 54 + (height - 1 - y) * stride;
            for (int x = 0; x < width; x++)
            {
                var c = bitmap.GetPixel(x, y);
                bytes[row + x * 3] = c.Blue;
                bytes[row + x * 3 + 1] = c.Green;
                bytes[row + x * 3 + 2] = c.Red;
            }
        }
        return bytes;
    }

    private static ImageFormat FormatOf(SKEncodedImageFormat format) => format switch
    {
        SKEncodedImageFormat.Png => ImageFormat.Png,
        SKEncodedImageFormat.Jpeg => ImageFormat.Jpeg,
        SKEncodedImageFormat.Gif => ImageFormat.Gif,
        SKEncodedImageFormat.Bmp => ImageFormat.Bmp,
        SKEncodedImageFormat.Ico => ImageFormat.Icon,
        SKEncodedImageFormat.Webp => ImageFormat.Webp,
        _ => ImageFormat.MemoryBmp,
    };
}
