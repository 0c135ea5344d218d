using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

/// <summary>A picture (a p:pic element).</summary>
public interface IPictureFrame : IShape
{
    IShape AsIShape { get; }
}

public sealed class PictureFrame : Shape, IPictureFrame
{
    internal PictureFrame(BaseSlide slide, OpenXmlCompositeElement element) : base(slide, element)
    {
    }

    IShape IPictureFrame.AsIShape => this;
}
