using System;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>The notes page of a slide.</summary>
public interface INotesSlide : IBaseSlide
{
    /// <summary>The text of the notes body, one line per paragraph.</summary>
    string NotesText { get; set; }

    ISlide ParentSlide { get; }

    IBaseSlide AsIBaseSlide { get; }
}

public sealed class NotesSlide : BaseSlide, INotesSlide
{
    private readonly Slide _slide;

    internal NotesSlide(Presentation presentation, NotesSlidePart part, Slide slide) : base(presentation, part)
    {
        Part = part;
        _slide = slide;
    }

    /// <summary>Notes pages have no id of their own: 0.</summary>
    public override uint SlideId => 0;

    public string NotesText
    {
        get
        {
            var body = Body();
            if (body == null)
                return string.Empty;
            return string.Join("\n", body.Elements<A.Paragraph>().Select(p =>
                string.Concat(p.ChildElements.Select(c => c switch
                {
                    A.Run r => r.Text?.Text ?? string.Empty,
                    A.Field f => f.Text?.Text ?? string.Empty,
                    A.Break => "\v",
                    _ => string.Empty,
                }))));
        }
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            var body = Body() ?? throw new PptxEditException($"{Where}: the notes page has no notes placeholder");
            foreach (var old in body.Elements<A.Paragraph>().ToList())
                old.Remove();
            foreach (var line in value.Replace("\r\n", "\n", StringComparison.Ordinal).Split('\n'))
            {
                var paragraph = line.Length == 0
                    ? new A.Paragraph(new A.EndParagraphRunProperties { Language = "en-US" })
                    : new A.Paragraph(new A.Run(new A.RunProperties { Language = "en-US" }, new A.Text(line)));
                body.AppendChild(paragraph);
            }
        }
    }

    public ISlide ParentSlide => _slide;

    IBaseSlide INotesSlide.AsIBaseSlide => this;

    internal NotesSlidePart Part { get; }

    // The text body of the notes placeholder (type "body").
    private P.TextBody? Body() =>
        Part.NotesSlide.CommonSlideData?.ShapeTree?.Elements<P.Shape>()
            .FirstOrDefault(s => s.NonVisualShapeProperties?.ApplicationNonVisualDrawingProperties?.PlaceholderShape?.Type?.Value == P.PlaceholderValues.Body)
            ?.TextBody;
}
