using System;
using System.Globalization;
using System.IO;
using System.Linq;
using System.Xml;
using System.Xml.Linq;
using DocumentFormat.OpenXml.Packaging;

namespace Orvane.Folaro;

// The core properties part (docProps/core.xml), read and written as plain XML: it has no
// typed DOM in the SDK. Each write replaces one element and keeps everything else.
internal static class CoreProperties
{
    internal static readonly XNamespace Cp = "http://schemas.openxmlformats.org/package/2006/metadata/core-properties";
    internal static readonly XNamespace Dc = "http://purl.org/dc/elements/1.1/";
    internal static readonly XNamespace DcTerms = "http://purl.org/dc/terms/";
    private static readonly XNamespace DcMitype = "http://purl.org/dc/dcmitype/";
    private static readonly XNamespace Xsi = "http://www.w3.org/2001/XMLSchema-instance";

    // The order the schema's readers expect the elements in.
    private static readonly XName[] Order =
    {
        Cp + "category", Cp + "contentStatus", Cp + "contentType", DcTerms + "created", Dc + "creator", Dc + "description",
        Dc + "identifier", Cp + "keywords", Dc + "language", Cp + "lastModifiedBy", Cp + "lastPrinted", DcTerms + "modified",
        Cp + "revision", Dc + "subject", Dc + "title", Cp + "version",
    };

    internal static void WriteNew(CoreFilePropertiesPart part)
    {
        var now = DateTime.UtcNow;
        var doc = Empty();
        SetDate(doc, DcTerms + "created", now);
        SetDate(doc, DcTerms + "modified", now);
        Save(part, doc);
    }

    internal static string? Get(PresentationDocument pkg, XName name) =>
        Load(pkg.CoreFilePropertiesPart)?.Root?.Element(name)?.Value;

    internal static void Set(PresentationDocument pkg, XName name, string? value)
    {
        var part = pkg.CoreFilePropertiesPart ?? pkg.AddCoreFilePropertiesPart();
        var doc = Load(part) ?? Empty();
        SetValue(doc, name, value, isDate: false);
        Save(part, doc);
    }

    internal static DateTime? GetDate(PresentationDocument pkg, XName name)
    {
        var text = Get(pkg, name);
        if (string.IsNullOrWhiteSpace(text))
            return null;
        return DateTime.TryParse(text, CultureInfo.InvariantCulture, DateTimeStyles.AdjustToUniversal | DateTimeStyles.AssumeUniversal, out var when)
            ? DateTime.SpecifyKind(when, DateTimeKind.Utc)
            : null;
    }

    internal static void SetDate(PresentationDocument pkg, XName name, DateTime value)
    {
        var part = pkg.CoreFilePropertiesPart ?? pkg.AddCoreFilePropertiesPart();
        var doc = Load(part) ?? Empty();
        SetDate(doc, name, value);
        Save(part, doc);
    }

    private static void SetDate(XDocument doc, XName name, DateTime value) =>
        SetValue(doc, name, value.ToUniversalTime().ToString("yyyy-MM-dd'T'HH:mm:ss'Z'", CultureInfo.InvariantCulture), isDate: true);

    private static void SetValue(XDocument doc, XName name, string? value, bool isDate)
    {
        var root = doc.Root!;
        root.Element(name)?.Remove();
        if (value == null)
            return;
        var element = new XElement(name, value);
        if (isDate && name.Namespace == DcTerms)
            element.SetAttributeValue(Xsi + "type", "dcterms:W3CDTF");
        int rank = Array.IndexOf(Order, name);
        var before = root.Elements().FirstOrDefault(e => Array.IndexOf(Order, e.Name) > rank);
        if (before != null)
            before.AddBeforeSelf(element);
        else
            root.Add(element);
    }

    private static XDocument Empty() =>
        new(new XDeclaration("1.0", "UTF-8", "yes"),
            new XElement(Cp + "coreProperties",
                new XAttribute(XNamespace.Xmlns + "cp", Cp), new XAttribute(XNamespace.Xmlns + "dc", Dc),
                new XAttribute(XNamespace.Xmlns + "dcterms", DcTerms), new XAttribute(XNamespace.Xmlns + "dcmitype", DcMitype),
                new XAttribute(XNamespace.Xmlns + "xsi", Xsi)));

    private static XDocument? Load(CoreFilePropertiesPart? part)
    {
        if (part == null)
            return null;
        using var stream = part.GetStream(FileMode.Open, FileAccess.Read);
        if (stream.Length == 0)
            return null;
        var settings = new XmlReaderSettings { DtdProcessing = DtdProcessing.Prohibit, XmlResolver = null };
        try
        {
            using var reader = XmlReader.Create(stream, settings);
            var doc = XDocument.Load(reader);
            return doc.Root?.Name == Cp + "coreProperties" ? doc : null;
        }
        catch (XmlException ex)
        {
            throw new PptxReadException($"part '{part.Uri}': the core properties are not well-formed XML ({ex.Message})", ex);
        }
    }

    private static void Save(CoreFilePropertiesPart part, XDocument doc)
    {
        using var stream = part.GetStream(FileMode.Create, FileAccess.Write);
        using var writer = XmlWriter.Create(stream, new XmlWriterSettings { Encoding = new System.Text.UTF8Encoding(false) });
        doc.Save(writer);
    }
}
