using System;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

// The package kinds of the PowerPoint family and their save/source formats.
internal static class SaveFormats
{
    internal static PresentationDocumentType DocumentTypeOf(SaveFormat format) => format switch
    {
        SaveFormat.Pptx => PresentationDocumentType.Presentation,
        SaveFormat.Pptm => PresentationDocumentType.MacroEnabledPresentation,
        SaveFormat.Ppsx => PresentationDocumentType.Slideshow,
        SaveFormat.Ppsm => PresentationDocumentType.MacroEnabledSlideshow,
        SaveFormat.Potx => PresentationDocumentType.Template,
        SaveFormat.Potm => PresentationDocumentType.MacroEnabledTemplate,
        _ when Enum.IsDefined(format) => throw new NotSupportedException($"Presentation.Save: saving as {format} is not supported yet"),
        _ => throw new ArgumentOutOfRangeException(nameof(format), format, "Presentation.Save: unknown SaveFormat"),
    };

    internal static string MainContentType(PresentationDocumentType type) => type switch
    {
        PresentationDocumentType.Presentation => "application/vnd.openxmlformats-officedocument.presentationml.presentation.main+xml",
        PresentationDocumentType.Slideshow => "application/vnd.openxmlformats-officedocument.presentationml.slideshow.main+xml",
        PresentationDocumentType.Template => "application/vnd.openxmlformats-officedocument.presentationml.template.main+xml",
        PresentationDocumentType.MacroEnabledPresentation => "application/vnd.ms-powerpoint.presentation.macroEnabled.main+xml",
        PresentationDocumentType.MacroEnabledSlideshow => "application/vnd.ms-powerpoint.slideshow.macroEnabled.main+xml",
        PresentationDocumentType.MacroEnabledTemplate => "application/vnd.ms-powerpoint.template.macroEnabled.main+xml",
        _ => throw new ArgumentOutOfRangeException(nameof(type), type, "not a presentation package type"),
    };

    internal static bool IsMacroEnabled(PresentationDocumentType type) =>
        type is PresentationDocumentType.MacroEnabledPresentation or PresentationDocumentType.MacroEnabledSlideshow
            or PresentationDocumentType.MacroEnabledTemplate;

    internal static SourceFormat SourceOf(PresentationDocumentType type) => type switch
    {
        PresentationDocumentType.MacroEnabledPresentation => SourceFormat.Pptm,
        PresentationDocumentType.Slideshow => SourceFormat.Ppsx,
        PresentationDocumentType.MacroEnabledSlideshow => SourceFormat.Ppsm,
        PresentationDocumentType.Template => SourceFormat.Potx,
        PresentationDocumentType.MacroEnabledTemplate => SourceFormat.Potm,
        _ => SourceFormat.Pptx,
    };
}
