using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>Where custom data lives: a presentation or slide part and its customer data list.</summary>
internal sealed class CustomDataHost
{
    private readonly Func<bool, P.CustomerDataList?> _list;

    internal CustomDataHost(Presentation owner, OpenXmlPart part, string where, Func<bool, P.CustomerDataList?> list)
    {
        Owner = owner;
        Part = part;
        Where = where;
        _list = list;
    }

    internal Presentation Owner { get; }

    internal OpenXmlPart Part { get; }

    internal string Where { get; }

    /// <summary>The p:custDataLst, made when <paramref name="create"/> is set.</summary>
    internal P.CustomerDataList? List(bool create) => _list(create);

    internal static CustomDataHost Of(Presentation owner) =>
        new(owner, owner.PresentationPart, owner.Origin, create =>
        {
            var root = owner.Root;
            if (create)
                root.CustomerDataList ??= new P.CustomerDataList();
            return root.CustomerDataList;
        });

    internal static CustomDataHost Of(Slide slide) =>
        new(slide.Owner, slide.Part, slide.Where, create =>
        {
            var data = slide.CommonSlideData;
            if (data == null)
                return create ? throw new PptxEditException($"{slide.Where}: the slide has no common slide data to hold custom data") : null;
            if (create)
                data.CustomerDataList ??= new P.CustomerDataList();
            return data.CustomerDataList;
        });
}

/// <summary>The tags and custom XML parts of a presentation or a slide.</summary>
public sealed class CustomData : ICustomData
{
    private readonly CustomDataHost _host;

    internal CustomData(CustomDataHost host)
    {
        _host = host;
    }

    public ITagCollection Tags => new TagCollection(_host);

    public ICustomXmlPartCollection CustomXmlParts => new CustomXmlPartCollection(_host);
}

/// <summary>
/// Tags: a tags part named from the customer data list of the presentation or slide.
/// Names are unique without regard to case; the part is made on the first add.
/// </summary>
public sealed class TagCollection : ITagCollection
{
    private readonly CustomDataHost _host;

    internal TagCollection(CustomDataHost host)
    {
        _host = host;
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
        Indexes.Check(index, tags.Count, $"TagCollection.{member}");
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
        var id = _host.List(false)?.GetFirstChild<P.CustomerDataTags>()?.Id?.Value;
        return id != null && _host.Part.TryGetPartById(id, out var part) ? part as UserDefinedTagsPart : null;
    }

    private P.TagList EnsureList()
    {
        var part = Part();
        if (part == null)
        {
            part = _host.Part switch
            {
                PresentationPart pres => pres.AddNewPart<UserDefinedTagsPart>(),
                SlidePart slide => slide.AddNewPart<UserDefinedTagsPart>(),
                _ => throw new PptxEditException($"{_host.Where}: this part cannot hold tags"),
            };
            var list = _host.List(true)!;
            // The tags reference comes after any customer data entries.
            list.GetFirstChild<P.CustomerDataTags>()?.Remove();
            list.AppendChild(new P.CustomerDataTags { Id = _host.Part.GetIdOfPart(part) });
        }
        part.TagList ??= new P.TagList();
        return part.TagList;
    }
}
