using DocumentFormat.OpenXml.Packaging;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>Adds, reads and removes the notes page of one slide.</summary>
public interface INotesSlideManager
{
    /// <summary>The notes page, or null when the slide has none.</summary>
    INotesSlide? NotesSlide { get; }

    /// <summary>The notes page, made (with a notes master, if the presentation has none) when missing.</summary>
    INotesSlide AddNotesSlide();

    void RemoveNotesSlide();
}

public sealed class NotesSlideManager : INotesSlideManager
{
    private readonly Slide _slide;

    internal NotesSlideManager(Slide slide)
    {
        _slide = slide;
    }

    public INotesSlide? NotesSlide => _slide.Part.NotesSlidePart is { } part ? View(part) : null;

    public INotesSlide AddNotesSlide()
    {
        if (_slide.Part.NotesSlidePart is { } existing)
            return View(existing);
        var pres = _slide.Owner.PresentationPart;
        var master = pres.NotesMasterPart ?? NewNotesMaster(pres);
        var part = _slide.Part.AddNewPart<NotesSlidePart>();
        PresentationTemplate.Feed(part, PresentationTemplate.NotesSlideXml());
        part.AddPart(master);
        part.AddPart(_slide.Part);
        return View(part);
    }

    public void RemoveNotesSlide()
    {
        if (_slide.Part.NotesSlidePart is not { } part)
            return;
        _slide.Owner.ForgetView(part);
        _slide.Part.DeletePart(part);
    }

    private NotesSlide View(NotesSlidePart part) => _slide.Owner.ViewOf(part, () => new NotesSlide(_slide.Owner, part, _slide));

    private static NotesMasterPart NewNotesMaster(PresentationPart pres)
    {
        var master = pres.AddNewPart<NotesMasterPart>();
        PresentationTemplate.Feed(master, PresentationTemplate.NotesMasterXml());
        var theme = master.AddNewPart<ThemePart>();
        PresentationTemplate.Feed(theme, PresentationTemplate.ThemeXmlFor("Orvane Notes"));
        pres.Presentation.NotesMasterIdList = new P.NotesMasterIdList(new P.NotesMasterId { Id = pres.GetIdOfPart(master) });
        return master;
    }
}
