using System;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using Orvane.Folaro.SlideShow;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>A slide of the presentation.</summary>
public interface ISlide : IBaseSlide
{
    /// <summary>The 1-based position of the slide in the deck, counted from <see cref="IPresentation.FirstSlideNumber"/>. Setting it moves the slide.</summary>
    int SlideNumber { get; set; }

    bool Hidden { get; set; }

    /// <summary>The layout the slide is based on. Setting it re-bases the slide on another layout of the same presentation.</summary>
    ILayoutSlide LayoutSlide { get; set; }

    /// <summary>How the show moves to this slide.</summary>
    ISlideShowTransition SlideShowTransition { get; }

    INotesSlideManager NotesSlideManager { get; }

    /// <summary>The slide's theme overrides and the theme in force for it.</summary>
    Theme.IOverrideThemeManager ThemeManager { get; }

    /// <summary>The slide's tags and custom XML parts.</summary>
    ICustomData CustomData { get; }

    ISlideHeaderFooterManager HeaderFooterManager { get; }

    /// <summary>The comments and replies on this slide, classic then threaded; all of them when <paramref name="author"/> is null.</summary>
    IComment[] GetSlideComments(ICommentAuthor? author);

    IBaseSlide AsIBaseSlide { get; }
}

public sealed class Slide : BaseSlide, ISlide
{
    internal Slide(Presentation presentation, SlidePart part) : base(presentation, part)
    {
        Part = part;
    }

    public override uint SlideId => Entry?.Id?.Value ?? 0;

    public int SlideNumber
    {
        get => Owner.SlideList.IndexOf(this) + Owner.FirstSlideNumber;
        set => Owner.SlideList.Move(this, value - Owner.FirstSlideNumber);
    }

    public bool Hidden
    {
        get => Part.Slide.Show?.Value == false;
        set => Part.Slide.Show = value ? false : null;
    }

    public ILayoutSlide LayoutSlide
    {
        get
        {
            var layoutPart = Part.SlideLayoutPart
                ?? throw new PptxReadException($"{Where}: the slide has no layout");
            var masterPart = layoutPart.SlideMasterPart
                ?? throw new PptxReadException($"{Owner.Origin}, part '{layoutPart.Uri}': the layout has no master");
            var master = Owner.ViewOf(masterPart, () => new MasterSlide(Owner, masterPart));
            return Owner.ViewOf(layoutPart, () => new LayoutSlide(Owner, layoutPart, master));
        }
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            if (value is not LayoutSlide layout || !ReferenceEquals(layout.Owner, Owner))
                throw new ArgumentException("Slide.LayoutSlide: the layout must belong to the same presentation", nameof(value));
            var old = Part.SlideLayoutPart;
            if (ReferenceEquals(old, layout.Part))
                return;
            if (old != null)
                Part.DeletePart(old);
            Part.AddPart(layout.Part);
        }
    }

    public ISlideShowTransition SlideShowTransition => new SlideShowTransition(Part.Slide);

    public INotesSlideManager NotesSlideManager => new NotesSlideManager(this);

    public Theme.IOverrideThemeManager ThemeManager => new Theme.OverrideThemeManager(this);

    public ICustomData CustomData => new CustomData(CustomDataHost.Of(this));

    public ISlideHeaderFooterManager HeaderFooterManager => new SlideHeaderFooterManager(this);

    public IComment[] GetSlideComments(ICommentAuthor? author) =>
        CommentStore.SlideComments(this).Where(c => author == null || ReferenceEquals(c.Author, author)).Cast<IComment>().ToArray();

    IBaseSlide ISlide.AsIBaseSlide => this;

    internal SlidePart Part { get; }

    internal P.SlideId? Entry =>
        Owner.Root.SlideIdList?.Elements<P.SlideId>().FirstOrDefault(s =>
            s.RelationshipId?.Value is { } id && Owner.PresentationPart.TryGetPartById(id, out var p) && ReferenceEquals(p, Part));

    public override string ToString() => $"Slide {SlideNumber} ({Name})";
}
