using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

/// <summary>A group of shapes (a p:grpSp element).</summary>
public interface IGroupShape : IShape
{
    IShapeCollection Shapes { get; }

    IShape AsIShape { get; }
}

public sealed class GroupShape : Shape, IGroupShape
{
    internal GroupShape(BaseSlide slide, OpenXmlCompositeElement element) : base(slide, element)
    {
    }

    public IShapeCollection Shapes => new ShapeCollection(SlideView, Element);

    IShape IGroupShape.AsIShape => this;
}
