using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>The slides of a presentation, in show order.</summary>
public interface ISlideCollection : IEnumerable<ISlide>
{
    int Count { get; }

    ISlide this[int index] { get; }

    /// <summary>Appends a slide based on <paramref name="layout"/>, with the layout's empty placeholders.</summary>
    ISlide AddEmptySlide(ILayoutSlide layout);

    ISlide InsertEmptySlide(int index, ILayoutSlide layout);

    /// <summary>Appends a copy of a slide of this or another presentation.</summary>
    ISlide AddClone(ISlide sourceSlide);

    ISlide InsertClone(int index, ISlide sourceSlide);

    void Remove(ISlide value);

    void RemoveAt(int index);

    /// <summary>The 0-based position of the slide, or -1 when it is not in this presentation.</summary>
    int IndexOf(ISlide slide);

    /// <summary>Moves a slide of this presentation to a new 0-based position.</summary>
    void Reorder(int index, ISlide slide);

    IEnumerable<ISlide> AsIEnumerable { get; }
}

public sealed class SlideCollection : ISlideCollection
{
    private readonly Presentation _owner;

    internal SlideCollection(Presentation owner)
    {
        _owner = owner;
    }

    public int Count => Entries().Count;

    public ISlide this[int index]
    {
        get
        {
            var entries = Entries();
            Indexes.Check(index, entries.Count, "SlideCollection[index]");
            return View(entries[index].Part);
        }
    }

    public ISlide AddEmptySlide(ILayoutSlide layout) => InsertEmptySlide(Count, layout);

    public ISlide InsertEmptySlide(int index, ILayoutSlide layout)
    {
        var source = OwnLayout(layout, nameof(InsertEmptySlide));
        Indexes.Check(index, Count + 1, "SlideCollection.InsertEmptySlide");
        var pres = _owner.PresentationPart;
        var part = pres.AddNewPart<SlidePart>();
        part.Slide = EmptySlideFor(source.Part);
        part.AddPart(source.Part);
        Insert(index, part);
        return View(part);
    }

    public ISlide AddClone(ISlide sourceSlide) => InsertClone(Count, sourceSlide);

    public ISlide InsertClone(int index, ISlide sourceSlide)
    {
        ArgumentNullException.ThrowIfNull(sourceSlide);
        if (sourceSlide is not Slide source)
            throw new ArgumentException("SlideCollection.InsertClone: not a slide of this library", nameof(sourceSlide));
        if (source.Entry == null)
            throw new ArgumentException("SlideCollection.InsertClone: the slide has been removed from its presentation", nameof(sourceSlide));
        Indexes.Check(index, Count + 1, "SlideCollection.InsertClone");
        var part = ReferenceEquals(source.Owner, _owner)
            ? SlideCloner.CloneWithin(_owner.PresentationPart, source.Part)
            : SlideImporter.Import(_owner.PresentationPart, source.Part);
        Insert(index, part);
        return View(part);
    }

    public void Remove(ISlide value)
    {
        ArgumentNullException.ThrowIfNull(value);
        var entry = EntryOf(value) ?? throw new ArgumentException("SlideCollection.Remove: the slide is not in this presentation", nameof(value));
        RemoveEntry(entry);
    }

    public void RemoveAt(int index)
    {
        var entries = Entries();
        Indexes.Check(index, entries.Count, "SlideCollection.RemoveAt");
        RemoveEntry(entries[index]);
    }

    public int IndexOf(ISlide slide)
    {
        if (slide is not Slide s)
            return -1;
        var entries = Entries();
        for (int i = 0; i < entries.Count; i++)
            if (ReferenceEquals(entries[i].Part, s.Part))
                return i;
        return -1;
    }

    public void Reorder(int index, ISlide slide)
    {
        ArgumentNullException.ThrowIfNull(slide);
        Move(slide, index);
    }

    public IEnumerator<ISlide> GetEnumerator()
    {
        foreach (var entry in Entries())
            yield return View(entry.Part);
    }

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<ISlide> ISlideCollection.AsIEnumerable => this;

    internal void Move(ISlide slide, int index)
    {
        var entry = EntryOf(slide) ?? throw new ArgumentException("SlideCollection.Reorder: the slide is not in this presentation", nameof(slide));
        var entries = Entries();
        Indexes.Check(index, entries.Count, "SlideCollection.Reorder");
        int from = entries.FindIndex(e => ReferenceEquals(e.Part, entry.Part));
        if (from == index)
            return;
        var element = entry.Element;
        element.Remove();
        entries.RemoveAt(from);
        var list = _owner.Root.SlideIdList!;
        if (index < entries.Count)
            list.InsertBefore(element, entries[index].Element);
        else
            list.AppendChild(element);
        // Sections hold consecutive slides: the moved slide joins the section of its new predecessor.
        SectionList.Place(_owner.Root, element.Id?.Value ?? 0, index > 0 ? entries[index - 1].Element.Id?.Value : null);
    }

    // The valid entries of the slide id list: a dangling entry stays in the XML but is not a slide here.
    private List<(P.SlideId Element, SlidePart Part)> Entries()
    {
        var result = new List<(P.SlideId, SlidePart)>();
        var pres = _owner.PresentationPart;
        foreach (var entry in _owner.Root.SlideIdList?.Elements<P.SlideId>() ?? Enumerable.Empty<P.SlideId>())
        {
            if (entry.RelationshipId?.Value is { } id && pres.TryGetPartById(id, out var part) && part is SlidePart slidePart)
                result.Add((entry, slidePart));
        }
        return result;
    }

    private (P.SlideId Element, SlidePart Part)? EntryOf(ISlide slide)
    {
        if (slide is not Slide s || !ReferenceEquals(s.Owner, _owner))
            return null;
        foreach (var entry in Entries())
            if (ReferenceEquals(entry.Part, s.Part))
                return entry;
        return null;
    }

    private void RemoveEntry((P.SlideId Element, SlidePart Part) entry)
    {
        _owner.ForgetView(entry.Part);
        SlideParts.Remove(_owner.PresentationPart, entry.Element);
    }

    private void Insert(int index, SlidePart part)
    {
        var root = _owner.Root;
        var list = SlideParts.EnsureSlideIdList(root);
        var element = new P.SlideId { Id = SlideParts.NewSlideId(root), RelationshipId = _owner.PresentationPart.GetIdOfPart(part) };
        var entries = Entries();
        if (index < entries.Count)
            list.InsertBefore(element, entries[index].Element);
        else
            list.AppendChild(element);
        SectionList.Place(root, element.Id!.Value, index > 0 ? entries[index - 1].Element.Id?.Value : null);
    }

    private Slide View(SlidePart part) => _owner.ViewOf(part, () => new Slide(_owner, part));

    private LayoutSlide OwnLayout(ILayoutSlide layout, string member)
    {
        ArgumentNullException.ThrowIfNull(layout);
        if (layout is not LayoutSlide own || !ReferenceEquals(own.Owner, _owner))
            throw new ArgumentException($"SlideCollection.{member}: the layout must belong to this presentation", nameof(layout));
        return own;
    }

    // A slide with the layout's content placeholders, emptied: no text, no own geometry.
    private static P.Slide EmptySlideFor(SlideLayoutPart layout)
    {
        var tree = new P.ShapeTree(
            new P.NonVisualGroupShapeProperties(
                new P.NonVisualDrawingProperties { Id = 1U, Name = string.Empty },
                new P.NonVisualGroupShapeDrawingProperties(),
                new P.ApplicationNonVisualDrawingProperties()),
            new P.GroupShapeProperties(new A.TransformGroup(
                new A.Offset { X = 0, Y = 0 }, new A.Extents { Cx = 0, Cy = 0 },
                new A.ChildOffset { X = 0, Y = 0 }, new A.ChildExtents { Cx = 0, Cy = 0 })));
        uint id = 2;
        foreach (var shape in layout.SlideLayout.CommonSlideData?.ShapeTree?.Elements<P.Shape>() ?? Enumerable.Empty<P.Shape>())
        {
            var ph = shape.NonVisualShapeProperties?.ApplicationNonVisualDrawingProperties?.PlaceholderShape;
            if (ph == null || IsChrome(ph.Type?.Value))
                continue;
            var nv = (P.NonVisualShapeProperties)shape.NonVisualShapeProperties!.CloneNode(true);
            nv.NonVisualDrawingProperties!.Id = id;
            nv.NonVisualDrawingProperties.Name = $"{Describe(ph.Type?.Value)} {id - 1}";
            tree.AppendChild(new P.Shape(nv, new P.ShapeProperties(),
                new P.TextBody(new A.BodyProperties(), new A.ListStyle(), new A.Paragraph(new A.EndParagraphRunProperties { Language = "en-US" }))));
            id++;
        }
        return new P.Slide(new P.CommonSlideData(tree), new P.ColorMapOverride(new A.MasterColorMapping()));
    }

    private static bool IsChrome(P.PlaceholderValues? type) =>
        type == P.PlaceholderValues.DateAndTime || type == P.PlaceholderValues.Footer ||
        type == P.PlaceholderValues.SlideNumber || type == P.PlaceholderValues.Header;

    private static string Describe(P.PlaceholderValues? type)
    {
        if (type == P.PlaceholderValues.Title || type == P.PlaceholderValues.CenteredTitle)
            return "Title";
        if (type == P.PlaceholderValues.SubTitle)
            return "Subtitle";
        if (type == P.PlaceholderValues.Picture)
            return "Picture Placeholder";
        if (type == P.PlaceholderValues.Body)
            return "Text Placeholder";
        return "Content Placeholder";
    }
}
