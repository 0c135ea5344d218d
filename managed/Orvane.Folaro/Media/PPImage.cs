using System;
using System.IO;
using DocumentFormat.OpenXml.Packaging;

namespace Orvane.Folaro;

/// <summary>A picture stored once in the presentation and shown by any number of pictures, fills and bullets.</summary>
public interface IPPImage
{
    /// <summary>The stored bytes (for an SVG image, the SVG document).</summary>
    byte[] BinaryData { get; }

    /// <summary>The MIME type, such as "image/png" or "image/svg+xml".</summary>
    string ContentType { get; }

    /// <summary>Width in pixels, from the image's header (for SVG, its declared size); 0 when the format states none.</summary>
    int Width { get; }

    /// <summary>Height in pixels; 0 when the format states none.</summary>
    int Height { get; }

    /// <summary>The decoded pixels (an SVG image's PNG rendition). TIFF and metafiles cannot be decoded yet.</summary>
    Orvane.Marel.Image Image { get; }

    /// <summary>Replaces the bytes everywhere the image is shown. An SVG image takes only SVG, a raster image only a raster format.</summary>
    void ReplaceImage(byte[] newImageData);
}

public sealed class PPImage : IPPImage
{
    private byte[]? _pending;
    private (int Width, int Height)? _size;

    internal PPImage(MediaStore store, ImagePart? part, byte[]? data, string contentType)
    {
        Store = store;
        Part = part;
        _pending = data;
        ContentType = contentType;
    }

    public byte[] BinaryData
    {
        get
        {
            if (_pending != null)
                return (byte[])_pending.Clone();
            if (Part == null || !MediaStore.Alive(Part))
                return Array.Empty<byte>();
            return MediaStore.Read(Part.GetStream(FileMode.Open, FileAccess.Read));
        }
    }

    public string ContentType { get; private set; }

    public int Width => Size.Width;

    public int Height => Size.Height;

    public Orvane.Marel.Image Image
    {
        get
        {
            if (Fallback != null)
                return Fallback.Image;
            if (ContentType is not (ImageFormats.Png or ImageFormats.Jpeg or ImageFormats.Gif or ImageFormats.Bmp or "image/jpg" or "image/webp"))
                throw new NotSupportedException($"PPImage.Image: decoding {ContentType} images is not supported yet");
            using var stream = new MemoryStream(Bytes(), false);
            return new Orvane.Marel.Bitmap(stream);
        }
    }

    public void ReplaceImage(byte[] newImageData) => Store.Replace(this, newImageData, "PPImage.ReplaceImage");

    public override string ToString() => $"PPImage [{ContentType}, {Width}x{Height}]";

    internal MediaStore Store { get; }

    /// <summary>The image part, or null while the image is held in memory.</summary>
    internal ImagePart? Part { get; private set; }

    /// <summary>The bytes of an image not stored in a part yet.</summary>
    internal byte[]? PendingData => _pending;

    /// <summary>For an SVG image, the PNG rendition pictures point at.</summary>
    internal PPImage? Fallback { get; set; }

    private (int Width, int Height) Size => _size ??= ImageFormats.SizeOf(Bytes(), ContentType);

    private byte[] Bytes() => _pending ?? BinaryData;

    internal void Stored(ImagePart part)
    {
        Part = part;
        _pending = null;
        _size = null;
    }

    internal void Stored(ImagePart part, string contentType)
    {
        Stored(part);
        ContentType = contentType;
    }

    internal void Pending(byte[] data, string contentType)
    {
        Part = null;
        _pending = (byte[])data.Clone();
        ContentType = contentType;
        _size = null;
    }
}
