using System;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

// What the views of a presentation reach through their owner: the live package and its main
// part, and the per-document state (view caches, slide list, media) held by DocumentState.
public sealed partial class Presentation
{
    internal DocumentState State => _state;

    internal string Origin => _state.Origin;

    internal System.IO.MemoryStream Backing => _state.Backing;

    internal PresentationDocument Document => _state.Document;

    internal PresentationPart PresentationPart => _state.PresentationPart;

    internal P.Presentation Root => PresentationPart.Presentation;

    internal SlideCollection SlideList => _state.Slides;

    internal MasterSlideCollection MasterList => new(this);

    internal T ViewOf<T>(OpenXmlPart part, Func<T> create) where T : class => _state.ViewOf(part, create);

    internal void ForgetView(OpenXmlPart part) => _state.ForgetView(part);

    internal T ElementView<T>(OpenXmlElement element, Func<T> create) where T : class => _state.ElementView(element, create);

    internal void AliasElementView(OpenXmlElement element, object view) => _state.AliasElementView(element, view);

    internal void CheckOpen() => _state.CheckOpen();
}
