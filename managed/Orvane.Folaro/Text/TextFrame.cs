using System;
using System.Linq;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>
/// The text of a shape: its paragraphs and their layout (a view over p:txBody). Text reads with
/// "\n" between paragraphs and "\v" for a line break inside one; writing accepts "\r\n", "\r" or "\n" between paragraphs.
/// </summary>
public interface ITextFrame
{
    string Text { get; set; }

    IParagraphCollection Paragraphs { get; }

    ITextFrameFormat TextFrameFormat { get; }
}

public sealed class TextFrame : ITextFrame
{
    private readonly ElementSlot _body;
    private readonly OpenXmlElement? _shape;

    internal TextFrame(ElementSlot body, FormatContext context, OpenXmlElement? shape)
    {
        _body = body;
        _shape = shape;
        Context = context;
    }

    internal FormatContext Context { get; }

    public string Text
    {
        get
        {
            if (_body(false) is not { } body)
                return string.Empty;
            return string.Join("\n", body.ChildElements.OfType<A.Paragraph>().Select(Paragraph.TextOf));
        }
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            TextRules.Check(value, "TextFrame.Text");
            var body = Body();
            var old = body.ChildElements.OfType<A.Paragraph>().ToList();
            // The first paragraph's formatting and its first run's carry over to the new text.
            var pPr = old.FirstOrDefault()?.ParagraphProperties;
            var rPr = old.SelectMany(p => p.Elements<A.Run>()).FirstOrDefault()?.RunProperties
                ?? (OpenXmlElement?)old.FirstOrDefault()?.GetFirstChild<A.EndParagraphRunProperties>();
            var anchor = old.LastOrDefault()?.NextSibling();
            foreach (var p in old)
                p.Remove();
            foreach (var line in value.Replace("\r\n", "\n", StringComparison.Ordinal).Replace('\r', '\n').Split('\n'))
            {
                var p = new A.Paragraph();
                if (pPr != null)
                    p.AppendChild(pPr.CloneNode(true));
                Paragraph.Fill(p, line, rPr);
                if (anchor != null)
                    body.InsertBefore(p, anchor);
                else
                    body.AppendChild(p);
            }
        }
    }

    public IParagraphCollection Paragraphs => new ParagraphCollection(this);

    public ITextFrameFormat TextFrameFormat => new TextFrameFormat(create => _body(create)?.GetFirstChild<A.BodyProperties>(), Context,
        () => TextInheritance.Of(_shape, Context.Part));

    public override string ToString() => $"TextFrame \"{Text}\"";

    internal OpenXmlElement? Existing => _body(false);

    internal OpenXmlElement Body() => _body(true) ?? throw new PptxEditException($"{Context.Where}: there is no place for text");

    /// <summary>The text body of a p:sp, made (empty, one paragraph) when missing.</summary>
    internal static OpenXmlElement? ShapeBody(OpenXmlCompositeElement shape, bool create)
    {
        var body = shape.GetFirstChild<P.TextBody>();
        if (body != null || !create)
            return body;
        var made = new P.TextBody(new A.BodyProperties(), new A.ListStyle(), new A.Paragraph(new A.EndParagraphRunProperties { Language = "en-US" }));
        var ext = shape.GetFirstChild<P.ExtensionListWithModification>();
        if (ext != null)
            shape.InsertBefore(made, ext);
        else
            shape.AppendChild(made);
        return made;
    }
}
