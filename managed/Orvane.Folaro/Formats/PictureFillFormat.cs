using System;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

/// <summary>How a picture fills its area: stretched over it or tiled.</summary>
public enum PictureFillMode
{
    NotDefined = -1,
    Tile,
    Stretch,
}

/// <summary>How neighbouring tiles of a tiled picture are mirrored.</summary>
public enum TileFlip
{
    NotDefined = -1,
    NoFlip,
    FlipX,
    FlipY,
    FlipBoth,
}

/// <summary>
/// A picture fill (of a shape's fill or of a picture frame): the image, its crop, and how it
/// covers the area. Crops and scales are fractions (0.1 = 10 %), offsets points. Writing a tile
/// property makes the picture tiled.
/// </summary>
public interface IPictureFillFormat
{
    PictureFillMode PictureFillMode { get; set; }

    /// <summary>The image's bytes; empty when there is none. Setting (PNG, JPEG, GIF, BMP, TIFF or SVG bytes) makes the fill a picture fill.</summary>
    byte[] ImageData { get; set; }

    /// <summary>The picture, through which the image is read and replaced.</summary>
    IPicture Picture { get; }

    /// <summary>The part of the image cut off at the left, as a fraction of its width (negative leaves a margin).</summary>
    float CropLeft { get; set; }
    float CropTop { get; set; }
    float CropRight { get; set; }
    float CropBottom { get; set; }

    /// <summary>Horizontal offset of the tiles in points.</summary>
    float TileOffsetX { get; set; }
    float TileOffsetY { get; set; }

    /// <summary>Horizontal scale of a tile relative to the image's size (1 = its own size).</summary>
    float TileScaleX { get; set; }
    float TileScaleY { get; set; }

    RectangleAlignment TileAlignment { get; set; }

    TileFlip TileFlip { get; set; }
}

/// <summary>The picture of a picture fill.</summary>
public interface IPicture
{
    /// <summary>The image shown, or null when there is none. An image of another presentation is copied into this one.</summary>
    IPPImage? Image { get; set; }
}

public sealed class Picture : IPicture
{
    private readonly PictureFillFormat _format;

    internal Picture(PictureFillFormat format)
    {
        _format = format;
    }

    public IPPImage? Image
    {
        get => _format.Context.Part is { } part && _format.Blip(false) is { } blip ? DocumentState.Of(part).Media.ImageOfBlip(blip, part) : null;
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            _format.SetImage(value, "Picture.Image");
        }
    }

    public override string ToString() => $"Picture [{Image}]";
}

public sealed class PictureFillFormat : IPictureFillFormat
{
    private static readonly string[] Modes = { "tile", "stretch" };
    private readonly ElementSlot _blipFill;

    internal PictureFillFormat(FillFormat fill) : this(create => create ? fill.Ensure(FillType.Picture) : fill.Fill(false) as A.BlipFill, fill.Context)
    {
    }

    /// <summary>A view over a blipFill element (a picture frame's p:blipFill).</summary>
    internal PictureFillFormat(ElementSlot blipFill, FormatContext context)
    {
        _blipFill = blipFill;
        Context = context;
    }

    internal FormatContext Context { get; }

    internal DocumentFormat.OpenXml.Packaging.OpenXmlPart Owner =>
        Context.Part ?? throw new PptxEditException($"{Context.Where}: there is no part to hold an image");

    private OpenXmlElement? Existing => _blipFill(false);

    private OpenXmlElement Made => _blipFill(true) ?? throw new PptxEditException($"{Context.Where}: there is no picture fill to edit");

    public PictureFillMode PictureFillMode
    {
        get => Existing is not { } b ? PictureFillMode.NotDefined
            : b.GetFirstChild<A.Tile>() != null ? PictureFillMode.Tile
            : PictureFillMode.Stretch;
        set
        {
            if (value < 0 || !Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "PictureFillFormat.PictureFillMode must be Tile or Stretch");
            if (value == PictureFillMode && SchemaOrder.FirstOf(Made, Modes) != null)
                return;
            OpenXmlElement made = value == PictureFillMode.Tile
                ? new A.Tile { HorizontalOffset = 0, VerticalOffset = 0, HorizontalRatio = 100000, VerticalRatio = 100000, Flip = A.TileFlipValues.None, Alignment = A.RectangleAlignmentValues.TopLeft }
                : new A.Stretch(new A.FillRectangle());
            SchemaOrder.Replace(Made, Modes, made, SchemaOrder.BlipFill);
        }
    }

    public byte[] ImageData
    {
        get => Picture.Image?.BinaryData ?? Array.Empty<byte>();
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            SetImage(DocumentState.Of(Owner).Media.AddImage(value, "PictureFillFormat.ImageData"), "PictureFillFormat.ImageData");
        }
    }

    public IPicture Picture => new Picture(this);

    public float CropLeft { get => Crop("l"); set => SetCrop("l", value, nameof(CropLeft)); }
    public float CropTop { get => Crop("t"); set => SetCrop("t", value, nameof(CropTop)); }
    public float CropRight { get => Crop("r"); set => SetCrop("r", value, nameof(CropRight)); }
    public float CropBottom { get => Crop("b"); set => SetCrop("b", value, nameof(CropBottom)); }

    public float TileOffsetX { get => Emu.ToPoints(TileLong("tx") ?? 0); set => SetTile("tx", Emu.FromPoints(Finite(value, nameof(TileOffsetX)))); }
    public float TileOffsetY { get => Emu.ToPoints(TileLong("ty") ?? 0); set => SetTile("ty", Emu.FromPoints(Finite(value, nameof(TileOffsetY)))); }
    public float TileScaleX { get => (TileLong("sx") ?? 100000) / 100000f; set => SetTile("sx", Ratio(value, nameof(TileScaleX))); }
    public float TileScaleY { get => (TileLong("sy") ?? 100000) / 100000f; set => SetTile("sy", Ratio(value, nameof(TileScaleY))); }

    public RectangleAlignment TileAlignment
    {
        get => Tile(false) is { } t ? FormatTokens.RectangleAlignments.Member(AttributeAccess.Attr(t, "algn"), RectangleAlignment.TopLeft) : RectangleAlignment.NotDefined;
        set
        {
            if (value < 0 || !Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "PictureFillFormat.TileAlignment must be one of the nine alignments");
            AttributeAccess.SetAttr(Tile(true)!, "algn", FormatTokens.RectangleAlignments.Token(value));
        }
    }

    public TileFlip TileFlip
    {
        get => Tile(false) is { } t ? FormatTokens.TileFlips.Member(AttributeAccess.Attr(t, "flip"), TileFlip.NoFlip) : TileFlip.NotDefined;
        set
        {
            if (value < 0 || !Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "PictureFillFormat.TileFlip must be NoFlip, FlipX, FlipY or FlipBoth");
            AttributeAccess.SetAttr(Tile(true)!, "flip", FormatTokens.TileFlips.Token(value));
        }
    }

    public override string ToString() => $"PictureFillFormat [{PictureFillMode}]";

    internal OpenXmlElement? Blip(bool create) =>
        create ? SchemaOrder.Ensure(Made, "blip", () => new A.Blip(), SchemaOrder.BlipFill)
            : Existing?.GetFirstChild<A.Blip>();

    internal void SetImage(IPPImage image, string where)
    {
        var owner = Owner;
        var blip = Blip(true)!;
        DocumentState.Of(owner).Media.SetBlip(blip, owner, image, where);
        // A picture needs a way to fill: stretch unless one is set.
        if (SchemaOrder.FirstOf(Made, Modes) == null)
            SchemaOrder.Insert(Made, new A.Stretch(new A.FillRectangle()), SchemaOrder.BlipFill);
    }

    // a:srcRect holds each side in 1/1000 of a percent; an absent side is not cropped.
    private float Crop(string side) =>
        Existing?.GetFirstChild<A.SourceRectangle>() is { } rect ? (AttributeAccess.Long(rect, side) ?? 0) / 100000f : 0f;

    private void SetCrop(string side, float value, string member)
    {
        if (!float.IsFinite(value) || value <= -10 || value >= 1)
            throw new ArgumentOutOfRangeException(member, value, $"PictureFillFormat.{member} must be a fraction below 1 ({Context.Where})");
        long stored = (long)Math.Round(value * 100000.0);
        var fill = Made;
        var rect = fill.GetFirstChild<A.SourceRectangle>();
        if (rect == null && stored == 0)
            return;
        rect ??= SchemaOrder.Insert(fill, new A.SourceRectangle(), SchemaOrder.BlipFill);
        AttributeAccess.SetAttr(rect, side, stored == 0 ? null : AttributeAccess.Text(stored));
        if (!rect.HasAttributes)
            rect.Remove();
    }

    private OpenXmlElement? Tile(bool create)
    {
        if (!create)
            return Existing?.GetFirstChild<A.Tile>();
        PictureFillMode = PictureFillMode.Tile;
        return Made.GetFirstChild<A.Tile>();
    }

    private long? TileLong(string name) => Tile(false) is { } t ? AttributeAccess.Long(t, name) : null;

    private void SetTile(string name, long value) => AttributeAccess.SetAttr(Tile(true)!, name, AttributeAccess.Text(value));

    private float Finite(float value, string member) =>
        float.IsFinite(value) ? value : throw new ArgumentOutOfRangeException(member, value, $"PictureFillFormat.{member} must be finite ({Context.Where})");

    private long Ratio(float value, string member) =>
        float.IsFinite(value) && value > 0 && value <= 1000
            ? (long)Math.Round(value * 100000.0)
            : throw new ArgumentOutOfRangeException(member, value, $"PictureFillFormat.{member} must be a positive scale ({Context.Where})");
}
