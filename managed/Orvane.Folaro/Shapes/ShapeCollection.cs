using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

/// <summary>The shapes of a slide or group, in z-order (back to front).</summary>
public interface IShapeCollection : IEnumerable<IShape>
{
    int Count { get; }

    IShape this[int index] { get; }

    int IndexOf(IShape shape);

    IEnumerable<IShape> AsIEnumerable { get; }
}

public sealed class ShapeCollection : IShapeCollection
{
    private const string McNs = "http://schemas.openxmlformats.org/markup-compatibility/2006";
    private readonly BaseSlide _slide;
    private readonly OpenXmlCompositeElement? _container;

    internal ShapeCollection(BaseSlide slide, OpenXmlCompositeElement? container = null)
    {
        _slide = slide;
        _container = container;
    }

    public int Count => Items().Count;

    public IShape this[int index]
    {
        get
        {
            var items = Items();
            if (index < 0 || index >= items.Count)
                throw new ArgumentOutOfRangeException(nameof(index), index, $"ShapeCollection[index]: index must be in [0, {items.Count})");
            return items[index];
        }
    }

    public int IndexOf(IShape shape) => Items().FindIndex(s => ReferenceEquals(s, shape));

    public IEnumerator<IShape> GetEnumerator() => Items().GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IShape> IShapeCollection.AsIEnumerable => this;

    private List<IShape> Items()
    {
        var result = new List<IShape>();
        var container = _container ?? _slide.ShapeTree;
        if (container == null)
            return result;
        foreach (var child in container.ChildElements)
        {
            var element = child.NamespaceUri == McNs && child.LocalName == "AlternateContent" ? Chosen(child) : child;
            if (element is OpenXmlCompositeElement composite && Make(composite) is { } shape)
                result.Add(shape);
        }
        return result;
    }

    // Of an mc:AlternateContent, the first choice's shape (the form the newer readers use), else the fallback's.
    private static OpenXmlElement? Chosen(OpenXmlElement alternate)
    {
        foreach (var branch in alternate.ChildElements)
            if (branch.FirstChild != null)
                return branch.FirstChild;
        return null;
    }

    // Unknown elements (extension lists, foreign markup) are not shapes and are left alone.
    private IShape? Make(OpenXmlCompositeElement element) => element.LocalName switch
    {
        "sp" => _slide.Owner.ElementView(element, () => new AutoShape(_slide, element)),
        "pic" => _slide.Owner.ElementView(element, () => new PictureFrame(_slide, element)),
        "cxnSp" => _slide.Owner.ElementView(element, () => new Connector(_slide, element)),
        "grpSp" => _slide.Owner.ElementView(element, () => new GroupShape(_slide, element)),
        "graphicFrame" => _slide.Owner.ElementView(element, () => new GraphicalObject(_slide, element)),
        "contentPart" => _slide.Owner.ElementView(element, () => new Ink.Ink(_slide, element)),
        _ => null,
    };
}
