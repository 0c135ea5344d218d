using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

/// <summary>An object placed in a graphic frame or content part: a table, chart, diagram, OLE object or ink.</summary>
public interface IGraphicalObject : IShape
{
    IShape AsIShape { get; }
}

public class GraphicalObject : Shape, IGraphicalObject
{
    internal GraphicalObject(BaseSlide slide, OpenXmlCompositeElement element) : base(slide, element)
    {
    }

    IShape IGraphicalObject.AsIShape => this;
}
