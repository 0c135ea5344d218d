using System;
using System.Linq;
using System.Text;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

/// <summary>A paragraph of a text frame (a view over a:p). Its text reads "\v" for a line break.</summary>
public interface IParagraph
{
    /// <summary>The paragraph's text. Writing replaces its portions with one (keeping the first one's formatting); "\v", "\n" or "\r" make line breaks.</summary>
    string Text { get; set; }

    IPortionCollection Portions { get; }

    IParagraphFormat ParagraphFormat { get; }

    /// <summary>The formatting of the paragraph's end mark, which new text typed at its end takes.</summary>
    IPortionFormat EndParagraphPortionFormat { get; }
}

public sealed class Paragraph : IParagraph
{
    internal Paragraph(A.Paragraph element, FormatContext context)
    {
        Element = element;
        Context = context;
    }

    internal A.Paragraph Element { get; }

    internal FormatContext Context { get; }

    public string Text
    {
        get => TextOf(Element);
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            TextRules.Check(value, "Paragraph.Text");
            var rPr = Element.Elements<A.Run>().FirstOrDefault()?.RunProperties;
            foreach (var old in Element.ChildElements.Where(c => c is A.Run or A.Break or A.Field).ToList())
                old.Remove();
            Fill(Element, value.Replace("\r\n", "\v", StringComparison.Ordinal).Replace('\r', '\v').Replace('\n', '\v'), rPr);
        }
    }

    public IPortionCollection Portions => new PortionCollection(this);

    public IParagraphFormat ParagraphFormat => new ParagraphFormat(
        create => Element.ParagraphProperties ?? (create ? Element.PrependChild(new A.ParagraphProperties()) : null), Context, this);

    public IPortionFormat EndParagraphPortionFormat => new PortionFormat(
        create => Element.GetFirstChild<A.EndParagraphRunProperties>() ?? (create ? Element.AppendChild(new A.EndParagraphRunProperties()) : null), Context,
        () => InheritedRunProperties(Element, Context));

    /// <summary>The inheritance of a paragraph's shape.</summary>
    internal static TextInheritance InheritanceOf(A.Paragraph p, FormatContext context) =>
        TextInheritance.Of(TextInheritance.ShapeOf(p), context.Part);

    /// <summary>The paragraph properties a paragraph inherits at its level, nearest first (its own not included).</summary>
    internal static (TextInheritance Inheritance, System.Collections.Generic.List<OpenXmlElement> Chain) InheritedParagraphProperties(A.Paragraph p, FormatContext context)
    {
        var inheritance = InheritanceOf(p, context);
        int level = (int)(p.ParagraphProperties?.Level?.Value ?? 0);
        return (inheritance, inheritance.LevelProperties(level));
    }

    /// <summary>The character properties a run of this paragraph inherits: the a:defRPr of each inherited level, nearest first.</summary>
    internal static (TextInheritance Inheritance, System.Collections.Generic.List<OpenXmlElement> Chain) InheritedRunProperties(A.Paragraph p, FormatContext context)
    {
        var inheritance = InheritanceOf(p, context);
        var levels = inheritance.LevelProperties((int)(p.ParagraphProperties?.Level?.Value ?? 0), out int defaultsFrom);
        var chain = new System.Collections.Generic.List<OpenXmlElement>();
        var style = inheritance.StyleRunProperties();
        for (int i = 0; i <= levels.Count; i++)
        {
            if (i == defaultsFrom && style != null)
                chain.Add(style);
            if (i < levels.Count && levels[i].GetFirstChild<A.DefaultRunProperties>() is { } defRPr)
                chain.Add(defRPr);
        }
        return (inheritance, chain);
    }

    public override string ToString() => $"Paragraph \"{Text}\"";

    /// <summary>The text of a paragraph: runs and fields as written, "\v" for each line break.</summary>
    internal static string TextOf(A.Paragraph p)
    {
        var text = new StringBuilder();
        foreach (var child in p.ChildElements)
        {
            switch (child)
            {
                case A.Run r:
                    text.Append(r.Text?.Text);
                    break;
                case A.Field f:
                    text.Append(f.Text?.Text);
                    break;
                case A.Break:
                    text.Append('\v');
                    break;
            }
        }
        return text.ToString();
    }

    /// <summary>Adds runs for <paramref name="text"/> (line breaks at "\v") before the paragraph's end mark, formatted as <paramref name="rPr"/>.</summary>
    internal static void Fill(A.Paragraph p, string text, OpenXmlElement? rPr)
    {
        var end = p.GetFirstChild<A.EndParagraphRunProperties>();
        var lines = text.Split('\v');
        for (int i = 0; i < lines.Length; i++)
        {
            if (i > 0)
            {
                var br = new A.Break();
                if (rPr != null)
                    br.AppendChild(Convert<A.RunProperties>(rPr));
                Add(p, br, end);
            }
            if (lines[i].Length == 0)
                continue;
            var run = new A.Run();
            if (rPr != null)
                run.AppendChild(Convert<A.RunProperties>(rPr));
            run.AppendChild(new A.Text(lines[i]));
            Add(p, run, end);
        }
        if (end == null && rPr != null && p.GetFirstChild<A.Run>() == null)
            p.AppendChild(Convert<A.EndParagraphRunProperties>(rPr));
    }

    private static void Add(A.Paragraph p, OpenXmlElement child, OpenXmlElement? end)
    {
        if (end != null)
            p.InsertBefore(child, end);
        else
            p.AppendChild(child);
    }

    /// <summary>A copy of character properties (a:rPr, a:endParaRPr, a:defRPr share one schema) as another of them.</summary>
    internal static T Convert<T>(OpenXmlElement properties) where T : OpenXmlCompositeElement, new()
    {
        var made = new T();
        foreach (var a in properties.GetAttributes())
            made.SetAttribute(a);
        foreach (var c in properties.ChildElements)
            made.AppendChild(c.CloneNode(true));
        return made;
    }
}

/// <summary>The paragraphs of a text frame; a frame keeps at least one.</summary>
public interface IParagraphCollection : System.Collections.Generic.IEnumerable<IParagraph>
{
    int Count { get; }

    IParagraph this[int index] { get; }

    /// <summary>Adds a paragraph with this text at the end.</summary>
    IParagraph Add(string text);

    IParagraph Insert(int index, string text);

    /// <summary>Adds a copy of a paragraph (of this or another frame) at the end.</summary>
    IParagraph AddClone(IParagraph paragraph);

    int IndexOf(IParagraph paragraph);

    void Remove(IParagraph paragraph);

    void RemoveAt(int index);

    /// <summary>Leaves one empty paragraph.</summary>
    void Clear();

    System.Collections.Generic.IEnumerable<IParagraph> AsIEnumerable { get; }
}
