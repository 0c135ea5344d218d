using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>The slide masters of a presentation.</summary>
public interface IMasterSlideCollection : IEnumerable<IMasterSlide>
{
    int Count { get; }

    IMasterSlide this[int index] { get; }

    int IndexOf(IMasterSlide masterSlide);

    /// <summary>Removes a master that no slide uses; a used master or the last one raises <see cref="PptxEditException"/>.</summary>
    void Remove(IMasterSlide value);

    /// <summary>Removes every master that no slide uses, keeping at least one.</summary>
    void RemoveUnused();

    IEnumerable<IMasterSlide> AsIEnumerable { get; }
}

public sealed class MasterSlideCollection : IMasterSlideCollection
{
    private readonly Presentation _owner;

    internal MasterSlideCollection(Presentation owner)
    {
        _owner = owner;
    }

    public int Count => Items().Count;

    public IMasterSlide this[int index]
    {
        get
        {
            var items = Items();
            Indexes.Check(index, items.Count, "MasterSlideCollection[index]");
            return items[index];
        }
    }

    public int IndexOf(IMasterSlide masterSlide) => Items().FindIndex(m => ReferenceEquals(m, masterSlide));

    public void Remove(IMasterSlide value)
    {
        ArgumentNullException.ThrowIfNull(value);
        if (value is not MasterSlide master || IndexOf(master) < 0)
            throw new ArgumentException("MasterSlideCollection.Remove: the master is not in this presentation", nameof(value));
        if (master.HasDependingSlides)
            throw new PptxEditException($"{master.Where}: master '{master.Name}' is used by slides and cannot be removed");
        if (Count == 1)
            throw new PptxEditException($"{master.Where}: a presentation keeps at least one master");
        Delete(master);
    }

    public void RemoveUnused()
    {
        foreach (var master in Items().Where(m => !m.HasDependingSlides).ToList())
        {
            if (Count == 1)
                break;
            Delete(master);
        }
    }

    public IEnumerator<IMasterSlide> GetEnumerator() => Items().GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IMasterSlide> IMasterSlideCollection.AsIEnumerable => this;

    internal List<MasterSlide> Items()
    {
        var result = new List<MasterSlide>();
        var pres = _owner.PresentationPart;
        foreach (var entry in _owner.Root.SlideMasterIdList?.Elements<P.SlideMasterId>() ?? Enumerable.Empty<P.SlideMasterId>())
        {
            if (entry.RelationshipId?.Value is { } id && pres.TryGetPartById(id, out var part) && part is SlideMasterPart masterPart)
                result.Add(_owner.ViewOf(masterPart, () => new MasterSlide(_owner, masterPart)));
        }
        return result;
    }

    private void Delete(MasterSlide master)
    {
        var pres = _owner.PresentationPart;
        var relId = pres.GetIdOfPart(master.Part);
        _owner.Root.SlideMasterIdList?.Elements<P.SlideMasterId>().FirstOrDefault(m => m.RelationshipId?.Value == relId)?.Remove();
        foreach (var layout in master.LayoutList.ToList())
            _owner.ForgetView(layout.Part);
        _owner.ForgetView(master.Part);
        pres.DeletePart(master.Part);
    }
}
