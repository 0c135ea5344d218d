using System;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

// Group and Ungroup: shapes move between this collection and a group without moving on the slide.
public sealed partial class ShapeCollection
{
    public IGroupShape Group(IShape[] shapes)
    {
        ArgumentNullException.ThrowIfNull(shapes);
        if (shapes.Length == 0)
            throw new ArgumentException("ShapeCollection.Group: there are no shapes to group", nameof(shapes));
        CheckWritable();
        var tops = TopLevelNodes();
        var chosen = new SortedDictionary<int, OpenXmlElement>();
        for (int i = 0; i < shapes.Length; i++)
        {
            var shape = shapes[i] ?? throw new ArgumentNullException(nameof(shapes), $"ShapeCollection.Group: shapes[{i}] is null");
            var node = TopLevel(shape, nameof(Group));
            if (shape.IsPlaceholder)
                throw new ArgumentException($"ShapeCollection.Group: '{shape.Name}' is a placeholder, which cannot be grouped", nameof(shapes));
            int index = tops.IndexOf(node);
            if (!chosen.TryAdd(index, node))
                throw new ArgumentException($"ShapeCollection.Group: '{shape.Name}' is given twice", nameof(shapes));
        }

        uint id = NextId();
        var group = ShapeFactory.Group(id, $"Group {id - 1}");
        // The group takes the place of the frontmost shape; the shapes keep their order inside it.
        chosen.Values.Last().InsertAfterSelf(group);
        foreach (var node in chosen.Values)
        {
            node.Remove();
            group.AppendChild(node);
        }
        ShapePlacement.FitGroup(group);
        Grow();
        return (IGroupShape)Make(group)!;
    }

    public void Ungroup(IGroupShape group)
    {
        ArgumentNullException.ThrowIfNull(group);
        var node = TopLevel(group, nameof(Ungroup));
        if (group is not GroupShape own || !ReferenceEquals(node, own.Element))
            throw new ArgumentException("ShapeCollection.Ungroup: the group is not a group of this collection", nameof(group));
        var element = own.Element;
        var members = element.ChildElements.Where(c => c.LocalName is not ("nvGrpSpPr" or "grpSpPr" or "extLst")).ToList();
        foreach (var member in members)
        {
            // Every branch of alternate content holds the same shape in another form.
            var forms = member is AlternateContent
                ? member.ChildElements.Select(b => b.FirstChild).Where(f => f != null).ToList()
                : new List<OpenXmlElement?> { member };
            foreach (var form in forms)
                if (ShapePlacement.Read(form!) is { } box && Shape.TransformElement(form!, create: false) is { } xfrm)
                    ShapePlacement.Write(xfrm, ShapePlacement.OutOfGroup(element, box));
            member.Remove();
            element.InsertBeforeSelf(member);
        }
        element.Remove();
        Grow();
    }
}
