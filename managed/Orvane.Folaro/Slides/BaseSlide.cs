using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>The common base of <see cref="Slide"/>, <see cref="LayoutSlide"/> and <see cref="MasterSlide"/>: a view over one slide part.</summary>
public abstract class BaseSlide : IBaseSlide
{
    private protected BaseSlide(Presentation presentation, OpenXmlPart part)
    {
        Owner = presentation;
        PartBase = part;
    }

    public abstract uint SlideId { get; }

    /// <summary>The slide's name (the name of its common slide data); empty when unnamed.</summary>
    public string Name
    {
        get => CommonSlideData?.Name?.Value ?? string.Empty;
        set
        {
            var data = CommonSlideData ?? throw new PptxEditException($"{Where}: the slide has no common slide data to name");
            data.Name = string.IsNullOrEmpty(value) ? null : value;
        }
    }

    public IShapeCollection Shapes => new ShapeCollection(this);

    public IPresentation Presentation => Owner;

    IPresentationComponent IBaseSlide.AsIPresentationComponent => this;

    internal Presentation Owner { get; }

    internal OpenXmlPart PartBase { get; }

    internal P.CommonSlideData? CommonSlideData => PartBase.RootElement?.GetFirstChild<P.CommonSlideData>();

    internal P.ShapeTree? ShapeTree => CommonSlideData?.ShapeTree;

    /// <summary>Where this slide is, for error messages.</summary>
    internal string Where => $"{Owner.Origin}, part '{PartBase.Uri}'";
}
