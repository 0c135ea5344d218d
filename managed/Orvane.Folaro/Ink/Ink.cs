using DocumentFormat.OpenXml;

namespace Orvane.Folaro.Ink;

/// <summary>Ink drawn on a slide (a content part holding ink traces).</summary>
public interface IInk : IGraphicalObject
{
    IGraphicalObject AsIGraphicalObject { get; }
}

public sealed class Ink : GraphicalObject, IInk
{
    internal Ink(BaseSlide slide, OpenXmlCompositeElement element) : base(slide, element)
    {
    }

    IGraphicalObject IInk.AsIGraphicalObject => this;
}
