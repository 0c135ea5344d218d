using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

/// <summary>A connector line (a p:cxnSp element).</summary>
public interface IConnector : IShape
{
    IShape AsIShape { get; }
}

public sealed class Connector : Shape, IConnector
{
    internal Connector(BaseSlide slide, OpenXmlCompositeElement element) : base(slide, element)
    {
    }

    IShape IConnector.AsIShape => this;
}
