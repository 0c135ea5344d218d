using DocumentFormat.OpenXml;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>A shape with geometry and text (a p:sp element).</summary>
public interface IAutoShape : IGeometryShape
{
    /// <summary>True when the shape has a text body.</summary>
    bool HasTextFrame { get; }

    /// <summary>The preset geometry, <see cref="ShapeType.Custom"/> for a freeform one. Setting a preset resets its adjustments.</summary>
    ShapeType ShapeType { get; set; }

    /// <summary>The adjust values of the preset geometry (empty for a freeform one).</summary>
    IAdjustValueCollection Adjustments { get; }

    /// <summary>The shape's text. A shape without a text body gets one when text is written.</summary>
    ITextFrame TextFrame { get; }

    IShape AsIShape { get; }
}

public sealed class AutoShape : GeometryShape, IAutoShape
{
    internal AutoShape(BaseSlide slide, OpenXmlCompositeElement element) : base(slide, element)
    {
    }

    public bool HasTextFrame => Element.GetFirstChild<P.TextBody>() != null;

    public ShapeType ShapeType
    {
        get => GeometryAccess.TypeOf(Element);
        set
        {
            if (value < 0 || !System.Enum.IsDefined(value))
                throw new System.ArgumentOutOfRangeException(nameof(value), value, "AutoShape.ShapeType must be a preset geometry");
            GeometryAccess.SetType(Element, value, SlideView.Where);
        }
    }

    public IAdjustValueCollection Adjustments => new AdjustValueCollection(GeometryAccess.Preset(Element));

    public ITextFrame TextFrame => new TextFrame(create => Folaro.TextFrame.ShapeBody(Element, create), Context, Element);

    IShape IAutoShape.AsIShape => this;
}
