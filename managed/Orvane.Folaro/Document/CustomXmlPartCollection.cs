using System;
using System.Collections;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using System.Text;
using System.Xml;
using DocumentFormat.OpenXml.Packaging;
using DS = DocumentFormat.OpenXml.CustomXmlDataProperties;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>A view over one custom XML part (customXml/itemN.xml) and the part that holds it.</summary>
public sealed class CustomXmlPart : ICustomXmlPart
{
    internal CustomXmlPart(CustomDataHost host, DocumentFormat.OpenXml.Packaging.CustomXmlPart part)
    {
        Host = host;
        Part = part;
    }

    public byte[] XmlData
    {
        get
        {
            CheckLive();
            using var stream = Part.GetStream(FileMode.Open, FileAccess.Read);
            using var copy = new MemoryStream();
            stream.CopyTo(copy);
            return copy.ToArray();
        }
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            CheckLive();
            CheckWellFormed(value, "CustomXmlPart.XmlData");
            using var data = new MemoryStream(value, false);
            Part.FeedData(data);
        }
    }

    public string Xml
    {
        get
        {
            // Decoded by its byte-order mark, else as UTF-8 (the encoding custom XML parts use).
            using var reader = new StreamReader(new MemoryStream(XmlData), Encoding.UTF8, detectEncodingFromByteOrderMarks: true);
            return reader.ReadToEnd();
        }
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            XmlData = Encoding.UTF8.GetBytes(value);
        }
    }

    public Guid ItemId =>
        Guid.TryParse(Part.CustomXmlPropertiesPart?.DataStoreItem?.ItemId?.Value, out var id) ? id : Guid.Empty;

    public void Remove()
    {
        CheckLive();
        var relId = Host.Part.GetIdOfPart(Part);
        foreach (var entry in Host.List(false)?.Elements<P.CustomerData>().Where(d => d.Id?.Value == relId).ToList() ?? new List<P.CustomerData>())
            entry.Remove();
        Host.Owner.ForgetView(Part);
        Host.Part.DeletePart(Part);
    }

    internal CustomDataHost Host { get; }

    internal DocumentFormat.OpenXml.Packaging.CustomXmlPart Part { get; }

    internal bool IsLive => Host.Part.Parts.Any(p => ReferenceEquals(p.OpenXmlPart, Part));

    private void CheckLive()
    {
        if (!IsLive)
            throw new PptxEditException($"{Host.Where}: the custom XML part has been removed");
    }

    internal static void CheckWellFormed(byte[] data, string member)
    {
        var settings = new XmlReaderSettings { DtdProcessing = DtdProcessing.Prohibit, XmlResolver = null };
        try
        {
            using var reader = XmlReader.Create(new MemoryStream(data, false), settings);
            while (reader.Read())
            {
            }
        }
        catch (XmlException ex)
        {
            throw new ArgumentException($"{member}: the data is not well-formed XML ({ex.Message})", "value", ex);
        }
    }
}

/// <summary>
/// The custom XML parts of the presentation (related from presentation.xml) or of a slide
/// (named by the slide's customer data list).
/// </summary>
public sealed class CustomXmlPartCollection : ICustomXmlPartCollection
{
    private readonly CustomDataHost _host;

    internal CustomXmlPartCollection(CustomDataHost host)
    {
        _host = host;
    }

    public int Count => Items().Count;

    public ICustomXmlPart this[int index]
    {
        get
        {
            var items = Items();
            Indexes.Check(index, items.Count, "CustomXmlPartCollection[index]");
            return items[index];
        }
    }

    public ICustomXmlPart Add(string xml)
    {
        ArgumentNullException.ThrowIfNull(xml);
        return Add(Encoding.UTF8.GetBytes(xml));
    }

    public ICustomXmlPart Add(byte[] xmlData)
    {
        ArgumentNullException.ThrowIfNull(xmlData);
        CustomXmlPart.CheckWellFormed(xmlData, "CustomXmlPartCollection.Add");
        var part = _host.Part switch
        {
            PresentationPart pres => pres.AddNewPart<DocumentFormat.OpenXml.Packaging.CustomXmlPart>("application/xml", null),
            SlidePart slide => slide.AddNewPart<DocumentFormat.OpenXml.Packaging.CustomXmlPart>("application/xml", null),
            _ => throw new PptxEditException($"{_host.Where}: this part cannot hold custom XML"),
        };
        using (var data = new MemoryStream(xmlData, false))
            part.FeedData(data);
        // Readers identify the item by the id of its properties part.
        var props = part.AddNewPart<CustomXmlPropertiesPart>();
        props.DataStoreItem = new DS.DataStoreItem
        {
            ItemId = "{" + Guid.NewGuid().ToString().ToUpperInvariant() + "}",
            SchemaReferences = new DS.SchemaReferences(),
        };
        if (_host.Part is SlidePart)
        {
            var list = _host.List(true)!;
            var entry = new P.CustomerData { Id = _host.Part.GetIdOfPart(part) };
            // Data entries come before the tags reference.
            if (list.GetFirstChild<P.CustomerDataTags>() is { } tags)
                list.InsertBefore(entry, tags);
            else
                list.AppendChild(entry);
        }
        return View(_host, part);
    }

    public void Remove(ICustomXmlPart part)
    {
        if (part is not CustomXmlPart own || !ReferenceEquals(own.Host.Part, _host.Part) || !own.IsLive)
            throw new ArgumentException("CustomXmlPartCollection.Remove: the part is not in this collection", nameof(part));
        own.Remove();
    }

    public void RemoveAt(int index) => Remove(this[index]);

    public int IndexOf(ICustomXmlPart part) => Items().FindIndex(p => ReferenceEquals(p, part));

    public void Clear()
    {
        foreach (var part in Items())
            part.Remove();
    }

    public IEnumerator<ICustomXmlPart> GetEnumerator() => Items().Cast<ICustomXmlPart>().GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<ICustomXmlPart> ICustomXmlPartCollection.AsIEnumerable => this;

    internal static CustomXmlPart View(CustomDataHost host, DocumentFormat.OpenXml.Packaging.CustomXmlPart part) =>
        host.Owner.ViewOf(part, () => new CustomXmlPart(host, part));

    /// <summary>Every custom XML part of the presentation and of its slides, presentation first.</summary>
    internal static ICustomXmlPart[] All(Presentation owner)
    {
        var result = new List<ICustomXmlPart>();
        result.AddRange(new CustomXmlPartCollection(CustomDataHost.Of(owner)).Items());
        foreach (Slide slide in owner.SlideList)
            result.AddRange(new CustomXmlPartCollection(CustomDataHost.Of(slide)).Items());
        return result.ToArray();
    }

    private List<CustomXmlPart> Items() =>
        _host.Part.GetPartsOfType<DocumentFormat.OpenXml.Packaging.CustomXmlPart>().Select(p => View(_host, p)).ToList();
}
