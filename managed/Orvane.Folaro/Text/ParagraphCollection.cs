using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

public sealed class ParagraphCollection : IParagraphCollection
{
    private readonly TextFrame _frame;

    internal ParagraphCollection(TextFrame frame)
    {
        _frame = frame;
    }

    public int Count => Elements().Count;

    public IParagraph this[int index]
    {
        get
        {
            var items = Elements();
            Indexes.Check(index, items.Count, "ParagraphCollection[index]");
            return View(items[index]);
        }
    }

    public IParagraph Add(string text) => Insert(Count, text);

    public IParagraph Insert(int index, string text)
    {
        ArgumentNullException.ThrowIfNull(text);
        TextRules.Check(text, "ParagraphCollection.Insert");
        var items = Elements();
        Indexes.CheckPlace(index, items.Count, "ParagraphCollection.Insert");
        var p = new A.Paragraph();
        Paragraph.Fill(p, text.Replace("\r\n", "\v", StringComparison.Ordinal).Replace('\r', '\v').Replace('\n', '\v'), null);
        Place(p, index, items);
        return View(p);
    }

    public IParagraph AddClone(IParagraph paragraph)
    {
        ArgumentNullException.ThrowIfNull(paragraph);
        if (paragraph is not Paragraph source)
            throw new ArgumentException("ParagraphCollection.AddClone: the paragraph is not one of this library's", nameof(paragraph));
        var copy = (A.Paragraph)source.Element.CloneNode(true);
        if (source.Context.Part is { } from && _frame.Context.Part is { } to)
            ShapeFactory.CopyRelationships(copy, from, to);
        Place(copy, Count, Elements());
        return View(copy);
    }

    public int IndexOf(IParagraph paragraph) =>
        paragraph is Paragraph p ? Elements().FindIndex(e => ReferenceEquals(e, p.Element)) : -1;

    public void Remove(IParagraph paragraph)
    {
        int index = IndexOf(paragraph ?? throw new ArgumentNullException(nameof(paragraph)));
        if (index < 0)
            throw new ArgumentException("ParagraphCollection.Remove: the paragraph is not in this text frame", nameof(paragraph));
        RemoveAt(index);
    }

    public void RemoveAt(int index)
    {
        var items = Elements();
        Indexes.Check(index, items.Count, "ParagraphCollection.RemoveAt");
        if (items.Count == 1)
            throw new PptxEditException($"{_frame.Context.Where}: a text frame keeps at least one paragraph; use Clear or set the text to empty");
        items[index].Remove();
    }

    public void Clear() => _frame.Text = string.Empty;

    public IEnumerator<IParagraph> GetEnumerator() => Elements().Select(View).GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IParagraph> IParagraphCollection.AsIEnumerable => this;

    private IParagraph View(A.Paragraph p) => new Paragraph(p, _frame.Context);

    private List<A.Paragraph> Elements() => _frame.Existing?.ChildElements.OfType<A.Paragraph>().ToList() ?? new List<A.Paragraph>();

    private void Place(A.Paragraph p, int index, List<A.Paragraph> items)
    {
        var body = _frame.Body();
        if (index < items.Count)
            body.InsertBefore(p, items[index]);
        else if (items.Count > 0)
            body.InsertAfter(p, items[^1]);
        else
            body.AppendChild(p);
    }
}
