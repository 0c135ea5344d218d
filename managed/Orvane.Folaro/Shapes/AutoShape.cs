using System.Linq;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

/// <summary>A shape with geometry and text (a p:sp element).</summary>
public interface IAutoShape : IShape
{
    /// <summary>True when the shape has a text body.</summary>
    bool HasTextFrame { get; }

    IShape AsIShape { get; }
}

public sealed class AutoShape : Shape, IAutoShape
{
    internal AutoShape(BaseSlide slide, OpenXmlCompositeElement element) : base(slide, element)
    {
    }

    public bool HasTextFrame => Element.ChildElements.Any(c => c.LocalName == "txBody");

    IShape IAutoShape.AsIShape => this;
}
