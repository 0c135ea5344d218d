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
public sealed class Presentation : IPresentation
{
    private readonly MemoryStream _backing;
    private readonly PresentationDocument _doc;
    private readonly Dictionary<OpenXmlPart, object> _views = new();
    private readonly System.Runtime.CompilerServices.ConditionalWeakTable<OpenXmlElement, object> _elementViews = new();
    private SlideCollection? _slides;
    private bool _disposed;

    /// <summary>A new presentation: one master, the eleven usual layouts, the Orvane theme, no slides.</summary>
    public Presentation() : this(Opened.New())
    {
    }

    public Presentation(LoadOptions loadOptions) : this(Opened.New(loadOptions))
    {
    }

    /// <summary>Loads a presentation from the current position of the stream to its end.</summary>
    public Presentation(Stream stream) : this(Opened.FromStream(stream, null))
    {
    }

    public Presentation(Stream stream, LoadOptions loadOptions) : this(Opened.FromStream(stream, loadOptions))
    {
    }

    public Presentation(string file) : this(Opened.FromFile(file, null))
    {
    }

    public Presentation(string file, LoadOptions loadOptions) : this(Opened.FromFile(file, loadOptions))
    {
    }

    private Presentation(Opened opened)
    {
        _backing = opened.Backing;
        _doc = opened.Document;
        SourceFormat = opened.Format;
        Origin = opened.Origin;
    }

    // --- saving ----------------------------------------------------------------------

    public void Save(string fname, SaveFormat format) => Save(fname, null, format, null);

    public void Save(Stream stream, SaveFormat format) => Save(stream, null, format, null);

    public void Save(string fname, SaveFormat format, ISaveOptions options) => Save(fname, null, format, options);

    public void Save(Stream stream, SaveFormat format, ISaveOptions options) => Save(stream, null, format, options);

    public void Save(IXamlOptions options) =>
        throw new NotSupportedException("Presentation.Save(IXamlOptions): export to XAML is not supported yet");

    public void Save(string fname, int[] slides, SaveFormat format) => Save(fname, slides, format, null);

    public void Save(string fname, int[]? slides, SaveFormat format, ISaveOptions? options)
    {
        ArgumentNullException.ThrowIfNull(fname);
        CheckOpen();
        // Write to memory first: a failed save must not leave a truncated file behind.
        using var buffer = new MemoryStream();
        PackageWriter.Write(this, buffer, slides, format);
        File.WriteAllBytes(fname, buffer.ToArray());
    }

    public void Save(Stream stream, int[] slides, SaveFormat format) => Save(stream, slides, format, null);

    public void Save(Stream stream, int[]? slides, SaveFormat format, ISaveOptions? options)
    {
        ArgumentNullException.ThrowIfNull(stream);
        CheckOpen();
        PackageWriter.Write(this, stream, slides, format);
    }

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
    public IBaseSlide? GetSlideById(uint id)
    {
        foreach (var slide in SlideList)
            if (slide.SlideId == id)
                return slide;
        foreach (MasterSlide master in MasterList)
        {
            if (master.SlideId == id)
                return master;
            foreach (var layout in master.LayoutList)
                if (layout.SlideId == id)
                    return layout;
        }
        return null;
    }

    /// <summary>Merges neighbouring text runs of every slide whose formatting is the same.</summary>
    public void JoinPortionsWithSameFormatting()
    {
        foreach (var slide in SlideList)
            TextRuns.Join(((Slide)slide).Part.Slide);
    }

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

    public IImageCollection Images => new ImageCollection(MediaStore.Of(Document));

    public IAudioCollection Audios => new AudioCollection(MediaStore.Of(Document));

    public IVideoCollection Videos => new VideoCollection(MediaStore.Of(Document));

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

    public SourceFormat SourceFormat { get; }

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

    void IDisposable.Dispose()
    {
        if (_disposed)
            return;
        _disposed = true;
        _doc.Dispose();
        _backing.Dispose();
    }

    // --- internals shared by the views ----------------------------------------------

    internal string Origin { get; }

    // The package bytes behind the live document; current after Document.Save().
    internal MemoryStream Backing
    {
        get
        {
            CheckOpen();
            return _backing;
        }
    }

    internal PresentationDocument Document
    {
        get
        {
            CheckOpen();
            return _doc;
        }
    }

    // The package's main part never changes once the document is open; looking
    // it up walks the package's relationships, so every view would pay for it.
    private PresentationPart? _presentationPart;

    internal PresentationPart PresentationPart
    {
        get
        {
            CheckOpen();
            return _presentationPart ??= _doc.PresentationPart!;
        }
    }

    internal P.Presentation Root => PresentationPart.Presentation;

    internal SlideCollection SlideList => _slides ??= new SlideCollection(this);

    internal MasterSlideCollection MasterList => new(this);

    /// <summary>One view object per part, so the same slide is always the same object.</summary>
    internal T ViewOf<T>(OpenXmlPart part, Func<T> create) where T : class
    {
        if (_views.TryGetValue(part, out var view))
            return (T)view;
        var made = create();
        _views[part] = made;
        return made;
    }

    internal void ForgetView(OpenXmlPart part) => _views.Remove(part);

    /// <summary>One view object per element (shapes); dropped with the element.</summary>
    internal T ElementView<T>(OpenXmlElement element, Func<T> create) where T : class =>
        (T)_elementViews.GetValue(element, _ => create());

    /// <summary>Makes a second element (a view spanning two elements) find the same view.</summary>
    internal void AliasElementView(OpenXmlElement element, object view) => _elementViews.AddOrUpdate(element, view);

    internal void CheckOpen()
    {
        if (_disposed)
            throw new ObjectDisposedException(nameof(Presentation), "The presentation has been disposed");
    }

    private static NotSupportedException NoRendering() =>
        new("Presentation.GetThumbnails: rendering slides to images is not supported yet");

    private static NotSupportedException NoPrinting() =>
        new("Presentation.Print: printing is not supported yet");

    private static NotSupportedException Later(string member, string what) =>
        new($"Presentation.{member}: {what} is not supported yet");

    // The result of opening: the package, its backing memory and what it was loaded from.
    private readonly record struct Opened(MemoryStream Backing, PresentationDocument Document, SourceFormat Format, string Origin)
    {
        internal static Opened New(LoadOptions? options = null)
        {
            var backing = PresentationTemplate.Create();
            return Open(backing, "new presentation", options ?? new LoadOptions(), generated: true);
        }

        internal static Opened FromStream(Stream stream, LoadOptions? options)
        {
            ArgumentNullException.ThrowIfNull(stream);
            options ??= new LoadOptions();
            CheckLoadFormat(options);
            const string origin = "presentation stream";
            return Open(PackageReader.Read(stream, options, origin), origin, options);
        }

        internal static Opened FromFile(string file, LoadOptions? options)
        {
            ArgumentNullException.ThrowIfNull(file);
            options ??= new LoadOptions();
            CheckLoadFormat(options);
            string origin = $"'{file}'";
            using var source = new FileStream(file, FileMode.Open, FileAccess.Read, FileShare.ReadWrite);
            return Open(PackageReader.Read(source, options, origin), origin, options);
        }

        private static void CheckLoadFormat(LoadOptions options)
        {
            if (options.LoadFormat is LoadFormat.Ppt or LoadFormat.Odp)
                throw new NotSupportedException($"Presentation: loading {options.LoadFormat} is not supported yet");
        }

        // A generated package is known to be well formed, so its parts are parsed when first used.
        private static Opened Open(MemoryStream backing, string origin, LoadOptions options, bool generated = false)
        {
            PresentationDocument? doc = null;
            try
            {
                doc = PresentationDocument.Open(backing, true, new OpenSettings { AutoSave = false });
                var part = doc.PresentationPart
                    ?? throw new PptxReadException($"{origin}: the package has no presentation part");
                // Parse the main part and the slide-like parts now, so that a broken one fails
                // here, naming the part, and not on first use.
                _ = part.Presentation ?? throw new PptxReadException($"{origin}: the presentation part is empty");
                if (generated)
                    PresentationTemplate.Stamp(doc);
                else
                    CheckParts(part, origin);
                var format = SaveFormats.SourceOf(doc.DocumentType);
                CheckExpected(options.LoadFormat, format, origin);
                return new Opened(backing, doc, format, origin);
            }
            catch (PptxReadException)
            {
                doc?.Dispose();
                backing.Dispose();
                throw;
            }
            catch (Exception ex) when (ex is OpenXmlPackageException or InvalidDataException or IOException
                                          or System.Xml.XmlException or InvalidOperationException or FormatException
                                          or ArgumentException or NotSupportedException)
            {
                doc?.Dispose();
                backing.Dispose();
                throw new PptxReadException($"{origin}: the package cannot be read as a presentation: {ex.Message}", ex);
            }
        }

        private static void CheckParts(PresentationPart pres, string origin)
        {
            foreach (var master in pres.SlideMasterParts)
            {
                Parse(master, () => master.SlideMaster, origin);
                foreach (var layout in master.SlideLayoutParts)
                    Parse(layout, () => layout.SlideLayout, origin);
            }
            foreach (var slide in pres.SlideParts)
                Parse(slide, () => slide.Slide, origin);
        }

        private static void Parse(OpenXmlPart part, Func<OpenXmlElement?> root, string origin)
        {
            try
            {
                if (root() == null)
                    throw new PptxReadException($"{origin}: part '{part.Uri}' is empty");
            }
            catch (Exception ex) when (ex is not PptxReadException and not OutOfMemoryException)
            {
                throw new PptxReadException($"{origin}: part '{part.Uri}' cannot be read: {ex.Message}", ex);
            }
        }

        private static void CheckExpected(LoadFormat expected, SourceFormat actual, string origin)
        {
            if (expected is LoadFormat.Auto or LoadFormat.Unknown)
                return;
            if (!Enum.TryParse<SourceFormat>(expected.ToString(), out var wanted) || wanted != actual)
                throw new PptxReadException($"{origin}: LoadOptions.LoadFormat is {expected} but the package is {actual}");
        }
    }
}
