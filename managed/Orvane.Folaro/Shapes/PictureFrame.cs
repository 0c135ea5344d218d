using System;
using DocumentFormat.OpenXml;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>A picture (a p:pic element): an image in a preset geometry, cropped, stretched or tiled.</summary>
public interface IPictureFrame : IShape
{
    /// <summary>The picture, its crop and how it fills the frame.</summary>
    IPictureFillFormat PictureFormat { get; }

    /// <summary>The geometry the picture is clipped to (Rect unless set).</summary>
    ShapeType ShapeType { get; set; }

    IShape AsIShape { get; }
}

/// <summary>A picture frame; audio and video frames are picture frames that show a poster image.</summary>
public class PictureFrame : Shape, IPictureFrame
{
    private protected PictureFrame(BaseSlide slide, OpenXmlCompositeElement element) : base(slide, element)
    {
    }

    /// <summary>The view of a p:pic element: an audio or video frame when it holds media, else a picture frame.</summary>
    internal static PictureFrame Create(BaseSlide slide, OpenXmlCompositeElement element) => MediaFrameMarkup.KindOf(element) switch
    {
        "audioFile" or "wavAudioFile" or "audioCd" => new AudioFrame(slide, element),
        "videoFile" or "quickTimeFile" => new VideoFrame(slide, element),
        _ => new PictureFrame(slide, element),
    };

    public IPictureFillFormat PictureFormat => new PictureFillFormat(create =>
        Element.GetFirstChild<P.BlipFill>()
            ?? (create ? throw new PptxEditException($"{Context.Where}: the picture has no picture fill") : null), Context);

    public ShapeType ShapeType
    {
        get => GeometryAccess.TypeOf(Element);
        set
        {
            if (value < 0 || !Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "PictureFrame.ShapeType must be a preset geometry");
            GeometryAccess.SetType(Element, value, SlideView.Where);
        }
    }

    IShape IPictureFrame.AsIShape => this;
}
