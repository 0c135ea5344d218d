using System;
using System.Linq;
using DocumentFormat.OpenXml;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro.SlideShow;

/// <summary>How the show moves to a slide.</summary>
public interface ISlideShowTransition
{
    TransitionType Type { get; }
    TransitionSpeed Speed { get; set; }
    bool AdvanceOnClick { get; set; }
    /// <summary>Whether the slide advances by itself after <see cref="AdvanceAfterTime"/>.</summary>
    bool AdvanceAfter { get; set; }
    /// <summary>The time before advancing by itself, in milliseconds.</summary>
    uint AdvanceAfterTime { get; set; }
}

/// <summary>A view over a slide's p:transition element, made when first written.</summary>
public sealed class SlideShowTransition : ISlideShowTransition
{
    private readonly P.Slide _slide;

    internal SlideShowTransition(P.Slide slide)
    {
        _slide = slide;
    }

    public TransitionType Type
    {
        get
        {
            var effect = Element?.ChildElements.FirstOrDefault(c => c is not P.SoundAction && c.LocalName != "extLst");
            if (effect == null)
                return TransitionType.None;
            return effect.LocalName switch
            {
                "blinds" => TransitionType.Blinds,
                "checker" => TransitionType.Checker,
                "circle" => TransitionType.Circle,
                "comb" => TransitionType.Comb,
                "cover" => TransitionType.Cover,
                "cut" => TransitionType.Cut,
                "diamond" => TransitionType.Diamond,
                "dissolve" => TransitionType.Dissolve,
                "fade" => TransitionType.Fade,
                "newsflash" => TransitionType.Newsflash,
                "plus" => TransitionType.Plus,
                "pull" => TransitionType.Pull,
                "push" => TransitionType.Push,
                "random" => TransitionType.Random,
                "randomBar" => TransitionType.RandomBar,
                "split" => TransitionType.Split,
                "strips" => TransitionType.Strips,
                "wedge" => TransitionType.Wedge,
                "wheel" => TransitionType.Wheel,
                "wipe" => TransitionType.Wipe,
                "zoom" => TransitionType.Zoom,
                _ => TransitionType.Other,
            };
        }
    }

    public TransitionSpeed Speed
    {
        get
        {
            var speed = Element?.Speed?.Value;
            if (speed == P.TransitionSpeedValues.Slow)
                return TransitionSpeed.Slow;
            if (speed == P.TransitionSpeedValues.Medium)
                return TransitionSpeed.Medium;
            return TransitionSpeed.Fast;
        }
        set => Ensure().Speed = value switch
        {
            TransitionSpeed.Slow => P.TransitionSpeedValues.Slow,
            TransitionSpeed.Medium => P.TransitionSpeedValues.Medium,
            TransitionSpeed.Fast => P.TransitionSpeedValues.Fast,
            _ => throw new ArgumentOutOfRangeException(nameof(value), value, "SlideShowTransition.Speed: unknown speed"),
        };
    }

    public bool AdvanceOnClick
    {
        get => Element?.AdvanceOnClick?.Value ?? true;
        set => Ensure().AdvanceOnClick = value ? null : false;
    }

    public bool AdvanceAfter
    {
        get => Element?.AdvanceAfterTime != null;
        set
        {
            if (!value)
            {
                if (Element != null)
                    Element.AdvanceAfterTime = null;
                return;
            }
            Ensure().AdvanceAfterTime ??= "0";
        }
    }

    public uint AdvanceAfterTime
    {
        get => uint.TryParse(Element?.AdvanceAfterTime?.Value, out var ms) ? ms : 0;
        set => Ensure().AdvanceAfterTime = value.ToString(System.Globalization.CultureInfo.InvariantCulture);
    }

    private P.Transition? Element => _slide.GetFirstChild<P.Transition>();

    // p:transition follows p:clrMapOvr and precedes p:timing in a slide.
    private P.Transition Ensure()
    {
        if (Element is { } existing)
            return existing;
        var made = new P.Transition();
        OpenXmlElement? anchor = (OpenXmlElement?)_slide.ColorMapOverride ?? _slide.CommonSlideData;
        if (anchor != null)
            _slide.InsertAfter(made, anchor);
        else
            _slide.AppendChild(made);
        return made;
    }
}
