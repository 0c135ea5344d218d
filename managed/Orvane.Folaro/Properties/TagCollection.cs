using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>The presentation's data: its tags.</summary>
public sealed class CustomData : ICustomData
{
    private readonly Presentation _owner;

    internal CustomData(Presentation owner)
    {
        _owner = owner;
    }

    public ITagCollection Tags => new TagCollection(_owner);
}

/// <summary>
/// The presentation's tags: a tags part named from presentation.xml's customer data list.
/// Names are unique without regard to case; the part is made on the first add.
/// </summary>
public sealed class TagCollection : ITagCollection
{
    private readonly Presentation _owner;

    internal TagCollection(Presentation owner)
    {
        _owner = owner;
    }

    public int Count => Tags().Count;

    public string GetNameByIndex(int index) => At(index, nameof(GetNameByIndex)).Name?.Value ?? string.Empty;

    public string GetValueByIndex(int index) => At(index, nameof(GetValueByIndex)).Val?.Value ?? string.Empty;

    public string? GetValue(string name) => Find(name)?.Val?.Value;

    /// <summary>Adds a tag, or replaces the value of the tag of that name.</summary>
    public void Add(string name, string value)
    {
        ArgumentException.ThrowIfNullOrEmpty(name);
        ArgumentNullException.ThrowIfNull(value);
        if (Find(name) is { } existing)
        {
            existing.Val = value;
            return;
        }
        EnsureList().AppendChild(new P.Tag { Name = name, Val = value });
    }

    public void Remove(string name)
    {
        var tag = Find(name) ?? throw new ArgumentException($"TagCollection.Remove: there is no tag '{name}'", nameof(name));
        tag.Remove();
    }

    public void Clear()
    {
        foreach (var tag in Tags())
            tag.Remove();
    }

    /// <summary>Enumerates the tag names.</summary>
    public IEnumerator<string> GetEnumerator() => Tags().Select(t => t.Name?.Value ?? string.Empty).ToList().GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<string> ITagCollection.AsIEnumerable => this;

    private P.Tag At(int index, string member)
    {
        var tags = Tags();
        if (index < 0 || index >= tags.Count)
            throw new ArgumentOutOfRangeException(nameof(index), index, $"TagCollection.{member}: index must be in [0, {tags.Count})");
        return tags[index];
    }

    private P.Tag? Find(string name)
    {
        ArgumentNullException.ThrowIfNull(name);
        return Tags().FirstOrDefault(t => string.Equals(t.Name?.Value, name, StringComparison.OrdinalIgnoreCase));
    }

    private List<P.Tag> Tags() => Part()?.TagList?.Elements<P.Tag>().ToList() ?? new List<P.Tag>();

    private UserDefinedTagsPart? Part()
    {
        var pres = _owner.PresentationPart;
        var id = _owner.Root.CustomerDataList?.GetFirstChild<P.CustomerDataTags>()?.Id?.Value;
        return id != null && pres.TryGetPartById(id, out var part) ? part as UserDefinedTagsPart : null;
    }

    private P.TagList EnsureList()
    {
        var part = Part();
        if (part == null)
        {
            var pres = _owner.PresentationPart;
            part = pres.AddNewPart<UserDefinedTagsPart>();
            var root = _owner.Root;
            root.CustomerDataList ??= new P.CustomerDataList();
            // The tags reference comes after any customer data entries.
            root.CustomerDataList.AppendChild(new P.CustomerDataTags { Id = pres.GetIdOfPart(part) });
        }
        part.TagList ??= new P.TagList();
        return part.TagList;
    }
}
