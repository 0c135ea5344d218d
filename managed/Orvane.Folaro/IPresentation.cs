using System;
using System.IO;
using Orvane.Folaro.Export;
using Orvane.Folaro.Export.Xaml;
using Orvane.Folaro.Theme;
using Orvane.Folaro.Vba;
using Orvane.Marel;
using Orvane.Marel.Printing;

namespace Orvane.Folaro;

/// <summary>A presentation: its slides, layouts, masters and the document around them.</summary>
public interface IPresentation : IPresentationComponent, IDisposable
{
    void Save(string fname, SaveFormat format);
    void Save(Stream stream, SaveFormat format);
    void Save(string fname, SaveFormat format, ISaveOptions options);
    void Save(Stream stream, SaveFormat format, ISaveOptions options);
    void Save(IXamlOptions options);
    void Save(string fname, int[] slides, SaveFormat format);
    void Save(string fname, int[] slides, SaveFormat format, ISaveOptions options);
    void Save(Stream stream, int[] slides, SaveFormat format);
    void Save(Stream stream, int[] slides, SaveFormat format, ISaveOptions options);

    IImage[] GetThumbnails(IRenderingOptions options);
    IImage[] GetThumbnails(INotesCommentsLayoutingOptions notesCommentsLayouting);
    IImage[] GetThumbnails(IRenderingOptions options, int[] slides);
    IImage[] GetThumbnails(INotesCommentsLayoutingOptions notesCommentsLayouting, int[] slides);
    IImage[] GetThumbnails(IRenderingOptions options, Size imageSize);
    IImage[] GetThumbnails(INotesCommentsLayoutingOptions notesCommentsLayouting, Size imageSize);
    IImage[] GetThumbnails(IRenderingOptions options, float scaleX, float scaleY);
    IImage[] GetThumbnails(INotesCommentsLayoutingOptions notesCommentsLayouting, float scaleX, float scaleY);
    IImage[] GetThumbnails(IRenderingOptions options, int[] slides, Size imageSize);
    IImage[] GetThumbnails(INotesCommentsLayoutingOptions notesCommentsLayouting, int[] slides, Size imageSize);
    IImage[] GetThumbnails(IRenderingOptions options, int[] slides, float scaleX, float scaleY);
    IImage[] GetThumbnails(INotesCommentsLayoutingOptions notesCommentsLayouting, int[] slides, float scaleX, float scaleY);

    void Print();
    void Print(PrinterSettings printerSettings);
    void Print(string printerName);
    void Print(PrinterSettings printerSettings, string presName);

    IBaseSlide? GetSlideById(uint id);
    void JoinPortionsWithSameFormatting();

    DateTime CurrentDateTime { get; set; }
    IPresentationHeaderFooterManager HeaderFooterManager { get; }
    IProtectionManager ProtectionManager { get; }
    ISlideCollection Slides { get; }
    ISectionCollection Sections { get; }
    ISlideSize SlideSize { get; }
    INotesSize NotesSize { get; }
    ILayoutSlideCollection LayoutSlides { get; }
    IMasterSlideCollection Masters { get; }
    IMasterNotesSlideManager MasterNotesSlideManager { get; }
    IMasterHandoutSlideManager MasterHandoutSlideManager { get; }
    IFontsManager FontsManager { get; }
    ITextStyle DefaultTextStyle { get; }
    ICommentAuthorCollection CommentAuthors { get; }
    IDocumentProperties DocumentProperties { get; }
    IImageCollection Images { get; }
    IAudioCollection Audios { get; }
    IVideoCollection Videos { get; }
    IDigitalSignatureCollection DigitalSignatures { get; }
    ICustomData CustomData { get; }
    ICustomXmlPart[] AllCustomXmlParts { get; }
    IVbaProject? VbaProject { get; set; }
    IHyperlinkQueries HyperlinkQueries { get; }
    IViewProperties ViewProperties { get; }
    int FirstSlideNumber { get; set; }
    SourceFormat SourceFormat { get; }
    IMasterTheme MasterTheme { get; }

    IPresentationComponent AsIPresentationComponent { get; }
    IDisposable AsIDisposable { get; }
}
