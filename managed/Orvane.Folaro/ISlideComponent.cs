namespace Orvane.Folaro;

/// <summary>An object that belongs to a slide (of any kind: slide, layout, master).</summary>
public interface ISlideComponent : IPresentationComponent
{
    IBaseSlide Slide { get; }

    IPresentationComponent AsIPresentationComponent { get; }
}
