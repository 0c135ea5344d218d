using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

public sealed class HyperlinkQueries : IHyperlinkQueries
{
    private readonly Presentation _owner;

    internal HyperlinkQueries(Presentation owner)
    {
        _owner = owner;
    }

    public IHyperlinkContainer[] GetHyperlinkClicks() => Find(click: true, mouseOver: false);

    public IHyperlinkContainer[] GetHyperlinkMouseOvers() => Find(click: false, mouseOver: true);

    public IHyperlinkContainer[] GetAnyHyperlinks() => Find(click: true, mouseOver: true);

    public void RemoveAllHyperlinks()
    {
        foreach (var slide in Slides())
            HyperlinkStore.RemoveAll(slide.PartBase);
    }

    public override string ToString() => "HyperlinkQueries";

    // Slides in deck order, then each master followed by its layouts.
    private IEnumerable<BaseSlide> Slides()
    {
        foreach (var slide in _owner.SlideList)
            yield return (BaseSlide)slide;
        foreach (MasterSlide master in _owner.MasterList)
        {
            yield return master;
            foreach (var layout in master.LayoutList)
                yield return layout;
        }
    }

    private IHyperlinkContainer[] Find(bool click, bool mouseOver)
    {
        var found = new List<IHyperlinkContainer>();
        bool Has(OpenXmlElement? holder, string hover) =>
            holder != null && holder.ChildElements.Any(c => (click && c.LocalName == "hlinkClick") || (mouseOver && c.LocalName == hover));
        foreach (var slide in Slides())
            foreach (var shape in AllShapes(slide.Shapes))
            {
                var element = shape.Element;
                var nv = element.ChildElements.FirstOrDefault(c => c.LocalName.StartsWith("nv", System.StringComparison.Ordinal))
                    ?.ChildElements.FirstOrDefault(c => c.LocalName == "cNvPr");
                if (Has(nv, "hlinkHover"))
                    found.Add(shape);
                // Text of the shape itself, or of a table's cells; a group's members come on their own.
                if (element is P.GroupShape)
                    continue;
                foreach (var run in element.Descendants().Where(e => e is A.Run or A.Field).Cast<OpenXmlCompositeElement>())
                    if (Has(run.GetFirstChild<A.RunProperties>(), "hlinkMouseOver"))
                        found.Add(new Portion(run, shape.Context));
            }
        return found.ToArray();
    }

    private static IEnumerable<Shape> AllShapes(IShapeCollection shapes)
    {
        foreach (var shape in shapes)
        {
            if (shape is not Shape s)
                continue;
            yield return s;
            if (shape is IGroupShape group)
                foreach (var inner in AllShapes(group.Shapes))
                    yield return inner;
        }
    }
}
