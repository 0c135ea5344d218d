using System;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;

namespace Orvane.Folaro;

/// <summary>A sound on a slide: a picture (its icon) that plays an embedded or linked sound.</summary>
public interface IAudioFrame : IPictureFrame
{
    /// <summary>The embedded sound; null for a linked one. Setting embeds the sound in place of the old one.</summary>
    IAudio? EmbeddedAudio { get; set; }

    /// <summary>The path or URL of a linked sound; empty for an embedded one. Setting links the frame to it.</summary>
    string LinkPathLong { get; set; }

    IPictureFrame AsIPictureFrame { get; }
}

/// <summary>A video on a slide: a picture (its poster frame) that plays an embedded or linked video.</summary>
public interface IVideoFrame : IPictureFrame
{
    /// <summary>The embedded video; null for a linked one. Setting embeds the video in place of the old one.</summary>
    IVideo? EmbeddedVideo { get; set; }

    /// <summary>The path or URL of a linked video; empty for an embedded one. Setting links the frame to it.</summary>
    string LinkPathLong { get; set; }

    IPictureFrame AsIPictureFrame { get; }
}

public sealed class AudioFrame : PictureFrame, IAudioFrame
{
    internal AudioFrame(BaseSlide slide, OpenXmlCompositeElement element) : base(slide, element)
    {
    }

    public IAudio? EmbeddedAudio
    {
        get => Sounds().EmbeddedIn(Element, SlideView.PartBase);
        set => Sounds().Embed(Element, SlideView.PartBase, value, Context.Where);
    }

    public string LinkPathLong
    {
        get => MediaFrameMarkup.Link(Element, SlideView.PartBase);
        set => MediaFrameMarkup.SetLink(Element, SlideView.PartBase, value, audio: true, Context.Where);
    }

    IPictureFrame IAudioFrame.AsIPictureFrame => this;

    private MediaList<IAudio> Sounds() => MediaLists.Audios(DocumentState.Of(SlideView.PartBase).Media);
}

public sealed class VideoFrame : PictureFrame, IVideoFrame
{
    internal VideoFrame(BaseSlide slide, OpenXmlCompositeElement element) : base(slide, element)
    {
    }

    public IVideo? EmbeddedVideo
    {
        get => Videos().EmbeddedIn(Element, SlideView.PartBase);
        set => Videos().Embed(Element, SlideView.PartBase, value, Context.Where);
    }

    public string LinkPathLong
    {
        get => MediaFrameMarkup.Link(Element, SlideView.PartBase);
        set => MediaFrameMarkup.SetLink(Element, SlideView.PartBase, value, audio: false, Context.Where);
    }

    IPictureFrame IVideoFrame.AsIPictureFrame => this;

    private MediaList<IVideo> Videos() => MediaLists.Videos(DocumentState.Of(SlideView.PartBase).Media);
}
