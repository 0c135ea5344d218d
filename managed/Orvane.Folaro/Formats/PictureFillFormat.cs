using System;
using DocumentFormat.OpenXml;
using Orvane.Folaro.Internal;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

/// <summary>How a picture fills its area: stretched over it or tiled.</summary>
public enum PictureFillMode
{
    NotDefined = -1,
    Tile,
    Stretch,
}

/// <summary>A picture fill: the image and how it covers the area.</summary>
public interface IPictureFillFormat
{
    PictureFillMode PictureFillMode { get; set; }

    /// <summary>The image's bytes (PNG, JPEG, GIF, BMP or TIFF); empty when there is none. Setting makes the fill a picture fill.</summary>
    byte[] ImageData { get; set; }
}

public sealed class PictureFillFormat : IPictureFillFormat
{
    private const string R = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    private readonly FillFormat _fill;

    internal PictureFillFormat(FillFormat fill)
    {
        _fill = fill;
    }

    private OpenXmlElement? Existing => _fill.Fill(false) is { LocalName: "blipFill" } b ? b : null;

    public PictureFillMode PictureFillMode
    {
        get => Existing is not { } b ? PictureFillMode.NotDefined
            : ElementOrder.First(b, "tile") != null ? PictureFillMode.Tile
            : PictureFillMode.Stretch;
        set
        {
            if (value < 0 || !Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "PictureFillFormat.PictureFillMode must be Tile or Stretch");
            var b = _fill.Ensure(FillType.Picture);
            OpenXmlElement made = value == PictureFillMode.Tile
                ? new A.Tile { HorizontalOffset = 0, VerticalOffset = 0, HorizontalRatio = 100000, VerticalRatio = 100000, Flip = A.TileFlipValues.None, Alignment = A.RectangleAlignmentValues.TopLeft }
                : new A.Stretch(new A.FillRectangle());
            ElementOrder.Replace(b, new[] { "tile", "stretch" }, made, ElementOrder.BlipFill);
        }
    }

    public byte[] ImageData
    {
        get => Existing is { } b && ElementOrder.First(b, "blip") is { } blip
            ? ImageParts.Read(_fill.Context.Part, ImageParts.EmbedOf(blip))
            : Array.Empty<byte>();
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            var part = _fill.Context.Part ?? throw new PptxEditException($"{_fill.Context.Where}: there is no part to hold an image");
            string id = ImageParts.Relate(part, value, "PictureFillFormat.ImageData");
            var b = _fill.Ensure(FillType.Picture);
            var blip = ElementOrder.Ensure(b, "blip", () => new A.Blip(), ElementOrder.BlipFill);
            blip.SetAttribute(new OpenXmlAttribute("r", "embed", R, id));
        }
    }

    public override string ToString() => $"PictureFillFormat [{PictureFillMode}]";
}
