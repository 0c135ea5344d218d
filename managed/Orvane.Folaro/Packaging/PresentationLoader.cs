using System;
using System.IO;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;

namespace Orvane.Folaro;

/// <summary>The result of opening: the package, its backing memory and what it was loaded from.</summary>
internal readonly record struct LoadedPackage(MemoryStream Backing, PresentationDocument Document, SourceFormat Format, string Origin);

// Opening a presentation: a new one from the template, or one read from a stream or a file.
// The whole input is read into memory first (PackageReader), then opened for editing; the main
// part and every slide-like part are parsed at once, so that a broken package fails here,
// naming the part, and not on first use.
internal static class PresentationLoader
{
    internal static LoadedPackage New(LoadOptions? options = null)
    {
        var backing = PresentationTemplate.Create();
        return Open(backing, "new presentation", options ?? new LoadOptions(), generated: true);
    }

    internal static LoadedPackage FromStream(Stream stream, LoadOptions? options)
    {
        ArgumentNullException.ThrowIfNull(stream);
        options ??= new LoadOptions();
        CheckLoadFormat(options);
        const string origin = "presentation stream";
        return Open(PackageReader.Read(stream, options, origin), origin, options);
    }

    internal static LoadedPackage FromFile(string file, LoadOptions? options)
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
    private static LoadedPackage Open(MemoryStream backing, string origin, LoadOptions options, bool generated = false)
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
            return new LoadedPackage(backing, doc, format, origin);
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
