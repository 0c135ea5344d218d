using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using P14 = DocumentFormat.OpenXml.Office2010.PowerPoint;

namespace Orvane.Folaro;

/// <summary>A view over one p14:section element.</summary>
public sealed class Section : ISection
{
    private readonly Presentation _owner;

    internal Section(Presentation owner, P14.Section element)
    {
        _owner = owner;
        Element = element;
    }

    public string Name
    {
        get => Element.Name?.Value ?? string.Empty;
        set => Element.Name = value ?? throw new ArgumentNullException(nameof(value));
    }

    public ISlide? StartedFromSlide
    {
        get
        {
            var first = SectionList.SlideIds(Element).FirstOrDefault();
            return first == 0 ? null : _owner.SlideList.FirstOrDefault(s => s.SlideId == first);
        }
    }

    internal P14.Section Element { get; }

    public override string ToString() => $"Section '{Name}'";
}

/// <summary>The sections of a presentation: consecutive runs of slides with a name each.</summary>
public sealed class SectionCollection : ISectionCollection
{
    private readonly Presentation _owner;

    internal SectionCollection(Presentation owner)
    {
        _owner = owner;
    }

    public int Count => Items().Count;

    public ISection this[int index]
    {
        get
        {
            var items = Items();
            Indexes.Check(index, items.Count, "SectionCollection[index]");
            return items[index];
        }
    }

    /// <summary>
    /// Starts a new section at <paramref name="startedFromSlide"/>: it takes that slide and the
    /// ones after it up to the end of the section they were in. Slides before it that had no
    /// section yet go to a first section named "Default Section".
    /// </summary>
    public ISection AddSection(string name, ISlide startedFromSlide)
    {
        ArgumentNullException.ThrowIfNull(name);
        ArgumentNullException.ThrowIfNull(startedFromSlide);
        int index = _owner.SlideList.IndexOf(startedFromSlide);
        if (index < 0)
            throw new ArgumentException("SectionCollection.AddSection: the slide is not in this presentation", nameof(startedFromSlide));
        var list = SectionList.Ensure(_owner.Root, SlideIdsInOrder());
        return View(SectionList.Split(list, name, startedFromSlide.SlideId));
    }

    public ISection AppendEmptySection(string name)
    {
        ArgumentNullException.ThrowIfNull(name);
        var list = SectionList.Ensure(_owner.Root, SlideIdsInOrder());
        var section = SectionList.NewSection(name);
        list.AppendChild(section);
        return View(section);
    }

    /// <summary>Removes a section; its slides join the section before it (or after it, for the first).</summary>
    public void RemoveSection(ISection section)
    {
        var own = Own(section, nameof(RemoveSection));
        SectionList.Remove(_owner.Root, own.Element, keepSlides: true);
    }

    public void RemoveSectionWithSlides(ISection section)
    {
        var own = Own(section, nameof(RemoveSectionWithSlides));
        var ids = SectionList.SlideIds(own.Element).ToHashSet();
        foreach (var slide in _owner.SlideList.Where(s => ids.Contains(s.SlideId)).ToList())
            _owner.SlideList.Remove(slide);
        SectionList.Remove(_owner.Root, own.Element, keepSlides: false);
    }

    /// <summary>Moves a section with its slides to a new 0-based position among the sections.</summary>
    public void ReorderSectionWithSlides(ISection section, int index)
    {
        var own = Own(section, nameof(ReorderSectionWithSlides));
        var items = Items();
        Indexes.Check(index, items.Count, "SectionCollection.ReorderSectionWithSlides");
        var list = (P14.SectionList)own.Element.Parent!;
        own.Element.Remove();
        var rest = list.Elements<P14.Section>().ToList();
        if (index < rest.Count)
            list.InsertBefore(own.Element, rest[index]);
        else
            list.AppendChild(own.Element);
        // Slides follow their sections' order.
        var order = list.Elements<P14.Section>().SelectMany(SectionList.SlideIds).ToList();
        for (int i = 0; i < order.Count; i++)
        {
            var slide = _owner.SlideList.FirstOrDefault(s => s.SlideId == order[i]);
            if (slide != null)
                _owner.SlideList.Move(slide, i);
        }
    }

    public int IndexOf(ISection section) => Items().FindIndex(s => ReferenceEquals(s, section));

    public IEnumerator<ISection> GetEnumerator() => Items().GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<ISection> ISectionCollection.AsIEnumerable => this;

    private List<Section> Items() =>
        SectionList.Find(_owner.Root)?.Elements<P14.Section>().Select(View).ToList() ?? new List<Section>();

    private Section View(P14.Section element) => _owner.ElementView(element, () => new Section(_owner, element));

    private Section Own(ISection section, string member)
    {
        ArgumentNullException.ThrowIfNull(section);
        if (section is not Section own || !Items().Contains(own))
            throw new ArgumentException($"SectionCollection.{member}: the section is not in this presentation", nameof(section));
        return own;
    }

    private List<uint> SlideIdsInOrder() => _owner.SlideList.Select(s => s.SlideId).ToList();
}
