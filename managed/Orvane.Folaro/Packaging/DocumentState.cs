using System;
using System.Collections.Generic;
using System.IO;
using System.Runtime.CompilerServices;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;

namespace Orvane.Folaro;

// Everything one open presentation keeps beside its package: the package and the memory behind
// it, one view per part and per element (the same slide, shape or comment author is always the
// same object), the slide list and the media store. One Presentation owns one state and
// releases it when disposed; a collected presentation takes its state with it, as nothing else
// holds it.
//
// Code that starts from a part or a package (a picture fill, a bullet, a frame's media, a copy
// brought in from another deck) finds the state of the deck that part belongs to through
// Of(part): the state is an annotation on its own package, so two decks open at once, or a
// slide copied from one to the other, can never reach each other's state. Packages the library
// opens for itself (the saved copy, the new-deck template) carry no state and are never handed
// to views.
internal sealed class DocumentState : IDisposable
{
    private readonly MemoryStream _backing;
    private readonly PresentationDocument _document;
    private readonly Dictionary<OpenXmlPart, object> _views = new();
    private readonly ConditionalWeakTable<OpenXmlElement, object> _elementViews = new();
    private PresentationPart? _presentationPart;
    private SlideCollection? _slides;
    private MediaStore? _media;
    private bool _disposed;

    internal DocumentState(Presentation owner, LoadedPackage loaded)
    {
        Owner = owner;
        _backing = loaded.Backing;
        _document = loaded.Document;
        Format = loaded.Format;
        Origin = loaded.Origin;
        _document.AddAnnotation(this);
    }

    /// <summary>The state of the open presentation whose package this is.</summary>
    internal static DocumentState Of(OpenXmlPackage package) =>
        package.Annotation<DocumentState>()
        // A live package loses its state only when its presentation is disposed.
        ?? throw new ObjectDisposedException(nameof(Presentation), "The presentation has been disposed");

    /// <summary>The state of the open presentation this part belongs to.</summary>
    internal static DocumentState Of(OpenXmlPart part) => Of(part.OpenXmlPackage);

    internal Presentation Owner { get; }

    internal SourceFormat Format { get; }

    /// <summary>What the presentation was loaded from, for messages.</summary>
    internal string Origin { get; }

    internal bool IsDisposed => _disposed;

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
            return _document;
        }
    }

    // The package's main part never changes once the document is open; looking it up walks
    // the package's relationships, so every view would pay for it.
    internal PresentationPart PresentationPart
    {
        get
        {
            CheckOpen();
            return _presentationPart ??= _document.PresentationPart!;
        }
    }

    internal SlideCollection Slides
    {
        get
        {
            CheckOpen();
            return _slides ??= new SlideCollection(Owner);
        }
    }

    /// <summary>The pictures, sounds and videos of this presentation, each stored once.</summary>
    internal MediaStore Media
    {
        get
        {
            CheckOpen();
            return _media ??= new MediaStore(_document);
        }
    }

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

    /// <summary>One view object per element (shapes, rows, comments); dropped with the element.</summary>
    internal T ElementView<T>(OpenXmlElement element, Func<T> create) where T : class =>
        (T)_elementViews.GetValue(element, _ => create());

    /// <summary>Makes a second element (a view spanning two elements) find the same view.</summary>
    internal void AliasElementView(OpenXmlElement element, object view) => _elementViews.AddOrUpdate(element, view);

    internal void CheckOpen()
    {
        if (_disposed)
            throw new ObjectDisposedException(nameof(Presentation), "The presentation has been disposed");
    }

    // Views still held by the caller keep working on nothing; the caches and the package go.
    public void Dispose()
    {
        if (_disposed)
            return;
        _disposed = true;
        _document.RemoveAnnotations<DocumentState>();
        _views.Clear();
        _elementViews.Clear();
        _slides = null;
        _media = null;
        _presentationPart = null;
        _document.Dispose();
        _backing.Dispose();
    }
}
