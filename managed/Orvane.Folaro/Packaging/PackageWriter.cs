using System;
using System.Collections.Generic;
using System.IO;
using System.IO.Compression;
using System.Linq;
using System.Xml.Linq;
using DocumentFormat.OpenXml.Packaging;

namespace Orvane.Folaro;

// Writes the live package as one of the PowerPoint formats. The live document is left as it
// is: the copy gets the format's content type, loses its VBA part when the format is
// macro-free, and keeps only the chosen slides when a subset is asked for.
internal static class PackageWriter
{
    // Writes to memory first: a failed save must not leave a truncated file behind.
    internal static void WriteFile(Presentation owner, string fname, int[]? slides, SaveFormat format)
    {
        ArgumentNullException.ThrowIfNull(fname);
        owner.CheckOpen();
        using var buffer = new MemoryStream();
        Write(owner, buffer, slides, format);
        File.WriteAllBytes(fname, buffer.ToArray());
    }

    internal static void WriteStream(Presentation owner, Stream stream, int[]? slides, SaveFormat format)
    {
        ArgumentNullException.ThrowIfNull(stream);
        owner.CheckOpen();
        Write(owner, stream, slides, format);
    }

    private static void Write(Presentation owner, Stream target, int[]? slides, SaveFormat format)
    {
        var type = SaveFormats.DocumentTypeOf(format);
        var keep = slides == null ? null : CheckSlideNumbers(slides, owner.SlideList.Count);
        var doc = owner.Document;
        ExtendedProperties.UpdateSlideCount(doc);
        doc.Save();
        // The usual save: the same format and every slide. The live package, just flushed, is
        // already the file to write; copying it as it is avoids reading and compressing every
        // part a second time.
        bool dropsVba = !SaveFormats.IsMacroEnabled(type) && owner.PresentationPart.VbaProjectPart != null;
        if (keep == null && !dropsVba && doc.DocumentType == type)
        {
            // The package keeps using its stream, so read the bytes without moving its position.
            var backing = owner.Backing;
            if (backing.TryGetBuffer(out var bytes))
                target.Write(bytes.AsSpan(0, (int)backing.Length));
            else
                target.Write(backing.ToArray());
            return;
        }
        using var copy = new MemoryStream();
        string mainPart;
        using (var clone = doc.Clone(copy, true, new OpenSettings { AutoSave = true }))
        {
            var pres = clone.PresentationPart!;
            mainPart = pres.Uri.OriginalString;
            if (dropsVba && pres.VbaProjectPart is { } vba)
                pres.DeletePart(vba);
            if (keep != null)
            {
                SlideParts.KeepOnly(pres, keep);
                ExtendedProperties.UpdateSlideCount(clone);
            }
            clone.Save();
        }
        // The format is the main part's content type alone; setting it in place keeps the
        // part names (the SDK's own type change moves the main part to a new name).
        if (doc.DocumentType != type)
            SetMainContentType(copy, mainPart, SaveFormats.MainContentType(type));
        copy.Position = 0;
        copy.CopyTo(target);
    }

    private static void SetMainContentType(MemoryStream package, string partName, string contentType)
    {
        XNamespace ct = "http://schemas.openxmlformats.org/package/2006/content-types";
        using var zip = new ZipArchive(package, ZipArchiveMode.Update, leaveOpen: true);
        var entry = zip.GetEntry("[Content_Types].xml") ?? throw new PptxEditException("the saved package has no content types");
        XDocument types;
        using (var read = entry.Open())
            types = XDocument.Load(read);
        var main = types.Root!.Elements(ct + "Override")
            .FirstOrDefault(o => string.Equals((string?)o.Attribute("PartName"), partName, StringComparison.OrdinalIgnoreCase));
        if (main == null)
        {
            main = new XElement(ct + "Override", new XAttribute("PartName", partName));
            types.Root.Add(main);
        }
        main.SetAttributeValue("ContentType", contentType);
        entry.Delete();
        var fresh = zip.CreateEntry("[Content_Types].xml", CompressionLevel.Optimal);
        using var write = fresh.Open();
        types.Save(write, SaveOptions.DisableFormatting);
    }

    // Slide numbers are 1-based positions in the deck; gives back the 0-based indices to keep.
    private static HashSet<int> CheckSlideNumbers(int[] slides, int count)
    {
        var keep = new HashSet<int>();
        foreach (int number in slides)
        {
            if (number < 1 || number > count)
                throw new ArgumentOutOfRangeException(nameof(slides), number, $"Presentation.Save: slide number {number} is not in 1..{count}");
            if (!keep.Add(number - 1))
                throw new ArgumentException($"Presentation.Save: slide number {number} is given twice", nameof(slides));
        }
        return keep;
    }
}
