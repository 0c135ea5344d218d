using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

/// <summary>A connector line (a p:cxnSp element).</summary>
public interface IConnector : IShape
{
    /// <summary>The line's geometry (straight, bent or curved connector).</summary>
    ShapeType ShapeType { get; set; }

    IShape AsIShape { get; }
}

public sealed class Connector : Shape, IConnector
{
    internal Connector(BaseSlide slide, OpenXmlCompositeElement element) : base(slide, element)
    {
    }

    public ShapeType ShapeType
    {
        get => Internal.GeometryAccess.TypeOf(Element);
        set
        {
            if (value < 0 || !System.Enum.IsDefined(value))
                throw new System.ArgumentOutOfRangeException(nameof(value), value, "Connector.ShapeType must be a preset geometry");
            Internal.GeometryAccess.SetType(Element, value, SlideView.Where);
        }
    }

    IShape IConnector.AsIShape => this;
}
