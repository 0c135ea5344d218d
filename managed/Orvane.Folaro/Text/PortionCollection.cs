using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

/// <summary>The portions (runs and fields) of a paragraph; line breaks between them are not portions.</summary>
public interface IPortionCollection : IEnumerable<IPortion>
{
    int Count { get; }

    IPortion this[int index] { get; }

    /// <summary>Adds a portion with this text at the end of the paragraph.</summary>
    IPortion Add(string text);

    IPortion Insert(int index, string text);

    /// <summary>Adds a text field (slide number, date or time) at the end of the paragraph.</summary>
    IPortion AddField(IFieldType fieldType);

    int IndexOf(IPortion portion);

    void Remove(IPortion portion);

    void RemoveAt(int index);

    /// <summary>Removes every portion and line break.</summary>
    void Clear();

    IEnumerable<IPortion> AsIEnumerable { get; }
}

public sealed class PortionCollection : IPortionCollection
{
    private readonly Paragraph _paragraph;

    internal PortionCollection(Paragraph paragraph)
    {
        _paragraph = paragraph;
    }

    public int Count => Elements().Count;

    public IPortion this[int index]
    {
        get
        {
            var items = Elements();
            Indexes.Check(index, items.Count, "PortionCollection[index]");
            return View(items[index]);
        }
    }

    public IPortion Add(string text) => Insert(Count, text);

    public IPortion Insert(int index, string text)
    {
        ArgumentNullException.ThrowIfNull(text);
        var items = Elements();
        Indexes.CheckPlace(index, items.Count, "PortionCollection.Insert");
        var run = new A.Run(new A.RunProperties { Language = "en-US" }, new A.Text());
        var portion = View(run);
        portion.Text = text;
        Place(run, index, items);
        return portion;
    }

    public IPortion AddField(IFieldType fieldType)
    {
        ArgumentNullException.ThrowIfNull(fieldType);
        if (string.IsNullOrWhiteSpace(fieldType.Name))
            throw new ArgumentException("PortionCollection.AddField: the field type has no name", nameof(fieldType));
        var field = new A.Field(new A.RunProperties { Language = "en-US" }, new A.Text(FieldType.Placeholder(fieldType.Name, DateTime.Now)))
        {
            Id = "{" + Guid.NewGuid().ToString().ToUpperInvariant() + "}",
            Type = fieldType.Name,
        };
        var items = Elements();
        Place(field, items.Count, items);
        return View(field);
    }

    public int IndexOf(IPortion portion) =>
        portion is Portion p ? Elements().FindIndex(e => ReferenceEquals(e, p.Element)) : -1;

    public void Remove(IPortion portion)
    {
        int index = IndexOf(portion ?? throw new ArgumentNullException(nameof(portion)));
        if (index < 0)
            throw new ArgumentException("PortionCollection.Remove: the portion is not in this paragraph", nameof(portion));
        RemoveAt(index);
    }

    public void RemoveAt(int index)
    {
        var items = Elements();
        Indexes.Check(index, items.Count, "PortionCollection.RemoveAt");
        items[index].Remove();
    }

    public void Clear()
    {
        foreach (var child in _paragraph.Element.ChildElements.Where(c => c is A.Run or A.Field or A.Break).ToList())
            child.Remove();
    }

    public IEnumerator<IPortion> GetEnumerator() => Elements().Select(View).GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IPortion> IPortionCollection.AsIEnumerable => this;

    private IPortion View(OpenXmlCompositeElement e) => new Portion(e, _paragraph.Context);

    private List<OpenXmlCompositeElement> Elements() =>
        _paragraph.Element.ChildElements.Where(c => c is A.Run or A.Field).Cast<OpenXmlCompositeElement>().ToList();

    // Before the portion now at the index; at the end, after the last run, field or break (before the end mark).
    private void Place(OpenXmlElement made, int index, List<OpenXmlCompositeElement> items)
    {
        var p = _paragraph.Element;
        if (index < items.Count)
        {
            p.InsertBefore(made, items[index]);
            return;
        }
        var end = p.GetFirstChild<A.EndParagraphRunProperties>();
        // By name: a paragraph has no extension list in the schema the SDK loads, so one is an unknown element.
        var ext = p.ChildElements.FirstOrDefault(c => c.LocalName == "extLst");
        if (end != null)
            p.InsertBefore(made, end);
        else if (ext != null)
            p.InsertBefore(made, ext);
        else
            p.AppendChild(made);
    }
}
