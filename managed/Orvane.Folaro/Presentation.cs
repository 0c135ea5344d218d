using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using Orvane.Folaro.Export;
using Orvane.Folaro.Export.Xaml;
using Orvane.Folaro.Theme;
using Orvane.Folaro.Vba;
using Orvane.Marel;
using Orvane.Marel.Printing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>
/// A presentation held in memory. Loading reads the whole input first, so the source file is
/// neither locked nor changed; every model object is a view over the live part DOM.
/// </summary>
public sealed partial class Presentation : IPresentation
{
    private readonly DocumentState _state;

    /// <summary>A new presentation: one master, the eleven usual layouts, the Orvane theme, no slides.</summary>
    public Presentation() : this(PresentationLoader.New())
    {
    }

    public Presentation(LoadOptions loadOptions) : this(PresentationLoader.New(loadOptions))
    {
    }

    /// <summary>Loads a presentation from the current position of the stream to its end.</summary>
    public Presentation(Stream stream) : this(PresentationLoader.FromStream(stream, null))
    {
    }

    public Presentation(Stream stream, LoadOptions loadOptions) : this(PresentationLoader.FromStream(stream, loadOptions))
    {
    }

    public Presentation(string file) : this(PresentationLoader.FromFile(file, null))
    {
    }

    public Presentation(string file, LoadOptions loadOptions) : this(PresentationLoader.FromFile(file, loadOptions))
    {
    }

    private Presentation(LoadedPackage loaded)
    {
        _state = new DocumentState(this, loaded);
    }

    // --- saving ----------------------------------------------------------------------

    public void Save(string fname, SaveFormat format) => Save(fname, null, format, null);

    public void Save(Stream stream, SaveFormat format) => Save(stream, null, format, null);

    public void Save(string fname, SaveFormat format, ISaveOptions options) => Save(fname, null, format, options);

    public void Save(Stream stream, SaveFormat format, ISaveOptions options) => Save(stream, null, format, options);

    public void Save(IXamlOptions options) =>
        throw new NotSupportedException("Presentation.Save(IXamlOptions): export to XAML is not supported yet");

    public void Save(string fname, int[] slides, SaveFormat format) => Save(fname, slides, format, null);

    public void Save(string fname, int[]? slides, SaveFormat format, ISaveOptions? options) =>
        PackageWriter.WriteFile(this, fname, slides, format);

    public void Save(Stream stream, int[] slides, SaveFormat format) => Save(stream, slides, format, null);

    public void Save(Stream stream, int[]? slides, SaveFormat format, ISaveOptions? options) =>
        PackageWriter.WriteStream(this, stream, slides, format);

    // --- rendering and printing (later work) -------------------------------------------

    public IImage[] GetThumbnails(IRenderingOptions options) => throw NoRendering();
    public IImage[] GetThumbnails(INotesCommentsLayoutingOptions notesCommentsLayouting) => throw NoRendering();
    public IImage[] GetThumbnails(IRenderingOptions options, int[] slides) => throw NoRendering();
    public IImage[] GetThumbnails(INotesCommentsLayoutingOptions notesCommentsLayouting, int[] slides) => throw NoRendering();
    public IImage[] GetThumbnails(IRenderingOptions options, Size imageSize) => throw NoRendering();
    public IImage[] GetThumbnails(INotesCommentsLayoutingOptions notesCommentsLayouting, Size imageSize) => throw NoRendering();
    public IImage[] GetThumbnails(IRenderingOptions options, float scaleX, float scaleY) => throw NoRendering();
    public IImage[] GetThumbnails(INotesCommentsLayoutingOptions notesCommentsLayouting, float scaleX, float scaleY) => throw NoRendering();
    public IImage[] GetThumbnails(IRenderingOptions options, int[] slides, Size imageSize) => throw NoRendering();
    public IImage[] GetThumbnails(INotesCommentsLayoutingOptions notesCommentsLayouting, int[] slides, Size imageSize) => throw NoRendering();
    public IImage[] GetThumbnails(IRenderingOptions options, int[] slides, float scaleX, float scaleY) => throw NoRendering();
    public IImage[] GetThumbnails(INotesCommentsLayoutingOptions notesCommentsLayouting, int[] slides, float scaleX, float scaleY) => throw NoRendering();

    public void Print() => throw NoPrinting();
    public void Print(PrinterSettings printerSettings) => throw NoPrinting();
    public void Print(string printerName) => throw NoPrinting();
    public void Print(PrinterSettings printerSettings, string presName) => throw NoPrinting();

    // --- other methods -----------------------------------------------------------------

    /// <summary>The slide, layout or master with this id, or null.</summary>
    public IBaseSlide? GetSlideById(uint id) => SlideLookup.ById(this, id);

    /// <summary>Merges neighbouring text runs of every slide whose formatting is the same.</summary>
    public void JoinPortionsWithSameFormatting() => TextRuns.JoinAll(this);

    // --- properties --------------------------------------------------------------------

    /// <summary>The date and time shown by date fields when slides are rendered.</summary>
    public DateTime CurrentDateTime { get; set; } = DateTime.Now;

    public IPresentationHeaderFooterManager HeaderFooterManager => new PresentationHeaderFooterManager(this);

    public IProtectionManager ProtectionManager => new ProtectionManager(this);

    public ISlideCollection Slides => SlideList;

    public ISectionCollection Sections => new SectionCollection(this);

    public ISlideSize SlideSize => new SlideSize(this);

    public INotesSize NotesSize => new NotesSize(this);

    public ILayoutSlideCollection LayoutSlides => new LayoutSlideCollection(this, null);

    public IMasterSlideCollection Masters => MasterList;

    public IMasterNotesSlideManager MasterNotesSlideManager => throw Later("MasterNotesSlideManager", "the notes master");

    public IMasterHandoutSlideManager MasterHandoutSlideManager => throw Later("MasterHandoutSlideManager", "the handout master");

    public IFontsManager FontsManager => throw Later("FontsManager", "font management");

    public ITextStyle DefaultTextStyle => throw Later("DefaultTextStyle", "the default text style");

    public ICommentAuthorCollection CommentAuthors => new CommentAuthorCollection(this);

    public IDocumentProperties DocumentProperties => new DocumentProperties(this);

    public IImageCollection Images => new ImageCollection(_state.Media);

    public IAudioCollection Audios => new AudioCollection(_state.Media);

    public IVideoCollection Videos => new VideoCollection(_state.Media);

    public IDigitalSignatureCollection DigitalSignatures => throw Later("DigitalSignatures", "digital signatures");

    public ICustomData CustomData => new CustomData(CustomDataHost.Of(this));

    /// <summary>The custom XML parts of the presentation and of every slide.</summary>
    public ICustomXmlPart[] AllCustomXmlParts => CustomXmlPartCollection.All(this);

    /// <summary>The VBA project, or null when there is none. Setting null removes it.</summary>
    public IVbaProject? VbaProject
    {
        get => VbaStorage.Read(this);
        set => VbaStorage.Write(this, value);
    }

    public IHyperlinkQueries HyperlinkQueries => new HyperlinkQueries(this);

    public IViewProperties ViewProperties => new ViewProperties(this);

    /// <summary>The number shown on the first slide (1 unless the deck says otherwise).</summary>
    public int FirstSlideNumber
    {
        get => Root.FirstSlideNum?.Value ?? 1;
        set
        {
            if (value < 0 || value > 9999)
                throw new ArgumentOutOfRangeException(nameof(value), value, "Presentation.FirstSlideNumber must be between 0 and 9999");
            Root.FirstSlideNum = value == 1 ? null : value;
        }
    }

    public SourceFormat SourceFormat => _state.Format;

    /// <summary>The theme of the first master.</summary>
    public IMasterTheme MasterTheme
    {
        get
        {
            var masters = MasterList;
            if (masters.Count == 0)
                throw new PptxEditException($"{Origin}: the presentation has no master, so no master theme");
            return ((MasterSlide)masters[0]).Theme;
        }
    }

    IPresentation IPresentationComponent.Presentation => this;

    IPresentationComponent IPresentation.AsIPresentationComponent => this;

    IDisposable IPresentation.AsIDisposable => this;

    void IDisposable.Dispose() => _state.Dispose();

    private static NotSupportedException NoRendering() =>
        new("Presentation.GetThumbnails: rendering slides to images is not supported yet");

    private static NotSupportedException NoPrinting() =>
        new("Presentation.Print: printing is not supported yet");

    private static NotSupportedException Later(string member, string what) =>
        new($"Presentation.{member}: {what} is not supported yet");
}
