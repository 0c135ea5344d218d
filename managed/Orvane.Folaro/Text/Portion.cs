using System;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

/// <summary>A run of text with one formatting (a view over a:r), or a text field (a:fld).</summary>
public interface IPortion : IHyperlinkContainer
{
    /// <summary>The portion's text (for a field, what it shows now). It holds no line breaks.</summary>
    string Text { get; set; }

    IPortionFormat PortionFormat { get; }

    /// <summary>The field this portion is, or null for plain text.</summary>
    IField? Field { get; }

    IHyperlinkContainer AsIHyperlinkContainer { get; }
}

public sealed class Portion : IPortion
{
    internal Portion(OpenXmlCompositeElement element, FormatContext context)
    {
        Element = element;
        Context = context;
    }

    internal OpenXmlCompositeElement Element { get; }

    internal FormatContext Context { get; }

    public string Text
    {
        get => Element.GetFirstChild<A.Text>()?.Text ?? string.Empty;
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            TextRules.Check(value, "Portion.Text");
            if (value.IndexOfAny(new[] { '\n', '\r', '\v' }) >= 0)
                throw new ArgumentException("Portion.Text: a portion holds no line breaks; set Paragraph.Text or add portions to paragraphs", nameof(value));
            var t = Element.GetFirstChild<A.Text>();
            if (t == null)
                Element.AppendChild(new A.Text(value));
            else
                t.Text = value;
        }
    }

    public IPortionFormat PortionFormat => new PortionFormat(Properties, Context,
        Element.Parent is A.Paragraph p ? () => Paragraph.InheritedRunProperties(p, Context) : null);

    /// <summary>The click hyperlink of the text (its PortionFormat's).</summary>
    public IHyperlink? HyperlinkClick { get => PortionFormat.HyperlinkClick; set => PortionFormat.HyperlinkClick = value; }

    public IHyperlink? HyperlinkMouseOver { get => PortionFormat.HyperlinkMouseOver; set => PortionFormat.HyperlinkMouseOver = value; }

    IHyperlinkContainer IPortion.AsIHyperlinkContainer => this;

    public IField? Field => Element is A.Field f ? new Field(new FieldType(f.Type?.Value ?? string.Empty)) : null;

    public override string ToString() => $"Portion \"{Text}\"";

    // a:rPr is the first child of both a:r and a:fld.
    private OpenXmlElement? Properties(bool create)
    {
        var rPr = Element.GetFirstChild<A.RunProperties>();
        if (rPr != null || !create)
            return rPr;
        return Element.PrependChild(new A.RunProperties());
    }
}
