using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>Layout slides: all of a presentation's, or one master's.</summary>
public interface ILayoutSlideCollection : IEnumerable<ILayoutSlide>
{
    int Count { get; }

    ILayoutSlide this[int index] { get; }

    /// <summary>The first layout of the given type, or null.</summary>
    ILayoutSlide? GetByType(SlideLayoutType type);

    int IndexOf(ILayoutSlide layoutSlide);

    /// <summary>Removes a layout that no slide uses; a used layout raises <see cref="PptxEditException"/>.</summary>
    void Remove(ILayoutSlide value);

    /// <summary>Removes every layout that no slide uses.</summary>
    void RemoveUnused();

    /// <summary>
    /// Adds a layout of the given type with the usual placeholders of that type, to this master
    /// (to the first master, for the presentation's collection).
    /// </summary>
    ILayoutSlide Add(SlideLayoutType layoutType, string layoutName);

    IEnumerable<ILayoutSlide> AsIEnumerable { get; }
}

public sealed class LayoutSlideCollection : ILayoutSlideCollection
{
    private readonly Presentation _owner;
    private readonly MasterSlide? _master;

    internal LayoutSlideCollection(Presentation owner, MasterSlide? master)
    {
        _owner = owner;
        _master = master;
    }

    public int Count => Items().Count;

    public ILayoutSlide this[int index]
    {
        get
        {
            var items = Items();
            Indexes.Check(index, items.Count, "LayoutSlideCollection[index]");
            return items[index];
        }
    }

    public ILayoutSlide? GetByType(SlideLayoutType type) => Items().FirstOrDefault(l => l.LayoutType == type);

    public int IndexOf(ILayoutSlide layoutSlide) => Items().FindIndex(l => ReferenceEquals(l, layoutSlide));

    public void Remove(ILayoutSlide value)
    {
        ArgumentNullException.ThrowIfNull(value);
        if (value is not LayoutSlide layout || IndexOf(layout) < 0)
            throw new ArgumentException("LayoutSlideCollection.Remove: the layout is not in this collection", nameof(value));
        if (layout.HasDependingSlides)
            throw new PptxEditException($"{layout.Where}: layout '{layout.Name}' is used by slides and cannot be removed");
        Delete(layout);
    }

    public void RemoveUnused()
    {
        foreach (var layout in Items().Where(l => !l.HasDependingSlides).ToList())
            Delete(layout);
    }

    public ILayoutSlide Add(SlideLayoutType layoutType, string layoutName)
    {
        ArgumentNullException.ThrowIfNull(layoutName);
        if (!Enum.IsDefined(layoutType))
            throw new ArgumentOutOfRangeException(nameof(layoutType), layoutType, "LayoutSlideCollection.Add: unknown layout type");
        var master = _master ?? _owner.MasterList.Items().FirstOrDefault()
            ?? throw new PptxEditException($"{_owner.Origin}: the presentation has no master to add a layout to");
        var part = master.Part.AddNewPart<SlideLayoutPart>();
        PresentationTemplate.Feed(part, PresentationTemplate.NewLayoutXml(LayoutTypes.ToXml(layoutType), layoutName));
        part.AddPart(master.Part);
        var root = master.Part.SlideMaster;
        root.SlideLayoutIdList ??= new P.SlideLayoutIdList();
        root.SlideLayoutIdList.AppendChild(new P.SlideLayoutId { Id = SlideParts.NewLayoutId(_owner.PresentationPart), RelationshipId = master.Part.GetIdOfPart(part) });
        return _owner.ViewOf(part, () => new LayoutSlide(_owner, part, master));
    }

    public IEnumerator<ILayoutSlide> GetEnumerator() => Items().GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<ILayoutSlide> ILayoutSlideCollection.AsIEnumerable => this;

    private List<LayoutSlide> Items()
    {
        var masters = _master != null ? new List<MasterSlide> { _master } : _owner.MasterList.Items();
        return masters.SelectMany(m => m.LayoutList).ToList();
    }

    private void Delete(LayoutSlide layout)
    {
        var masterPart = layout.Master.Part;
        var relId = masterPart.GetIdOfPart(layout.Part);
        masterPart.SlideMaster.SlideLayoutIdList?.Elements<P.SlideLayoutId>()
            .FirstOrDefault(l => l.RelationshipId?.Value == relId)?.Remove();
        _owner.ForgetView(layout.Part);
        masterPart.DeletePart(layout.Part);
    }
}
