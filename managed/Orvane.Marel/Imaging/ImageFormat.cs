using System;

namespace Orvane.Marel.Imaging;

/// <summary>The file format of an image.</summary>
public sealed class ImageFormat : IEquatable<ImageFormat>
{
    private ImageFormat(string name, string mimeType, string extension)
    {
        Name = name;
        MimeType = mimeType;
        Extension = extension;
    }

    public static ImageFormat MemoryBmp { get; } = new("MemoryBMP", "image/bmp", ".bmp");
    public static ImageFormat Bmp { get; } = new("Bmp", "image/bmp", ".bmp");
    public static ImageFormat Emf { get; } = new("Emf", "image/x-emf", ".emf");
    public static ImageFormat Wmf { get; } = new("Wmf", "image/x-wmf", ".wmf");
    public static ImageFormat Jpeg { get; } = new("Jpeg", "image/jpeg", ".jpg");
    public static ImageFormat Png { get; } = new("Png", "image/png", ".png");
    public static ImageFormat Gif { get; } = new("Gif", "image/gif", ".gif");
    public static ImageFormat Tiff { get; } = new("Tiff", "image/tiff", ".tif");
    public static ImageFormat Exif { get; } = new("Exif", "image/jpeg", ".jpg");
    public static ImageFormat Icon { get; } = new("Icon", "image/x-icon", ".ico");
    public static ImageFormat Webp { get; } = new("Webp", "image/webp", ".webp");

    /// <summary>The format's short name ("Png", "Jpeg", ...).</summary>
    public string Name { get; }

    public string MimeType { get; }

    /// <summary>The usual file extension, with its dot.</summary>
    public string Extension { get; }

    public bool Equals(ImageFormat? other) => other is not null && Name == other.Name;

    public override bool Equals(object? obj) => Equals(obj as ImageFormat);

    public override int GetHashCode() => Name.GetHashCode(StringComparison.Ordinal);

    public override string ToString() => Name;
}
