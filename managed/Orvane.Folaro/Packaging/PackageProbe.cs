using System;
using System.IO;
using System.IO.Compression;
using System.Linq;
using System.Xml;

namespace Orvane.Folaro;

// Tells the kind of a presentation from its signature and [Content_Types].xml only.
internal static class PackageProbe
{
    private const string Main = "application/vnd.openxmlformats-officedocument.presentationml.";
    private const string Macro = "application/vnd.ms-powerpoint.";

    internal static PresentationInfo Probe(Stream stream)
    {
        var head = new byte[8];
        int read = stream.ReadAtLeast(head, head.Length, throwOnEndOfStream: false);
        if (read == 8 && BitConverter.ToUInt64(head) == 0xE11AB1A1E011CFD0UL)
            // A compound file: an encrypted package or a legacy binary deck; neither loads yet.
            return new PresentationInfo(false, LoadFormat.Unknown, true);
        if (read < 4 || head[0] != 0x50 || head[1] != 0x4B)
            return new PresentationInfo(false, LoadFormat.Unknown, false);
        using var copy = new MemoryStream();
        copy.Write(head, 0, read);
        stream.CopyTo(copy);
        copy.Position = 0;
        try
        {
            using var zip = new ZipArchive(copy, ZipArchiveMode.Read);
            var types = zip.GetEntry("[Content_Types].xml");
            if (types == null)
                return new PresentationInfo(false, LoadFormat.Unknown, false);
            using var reader = XmlReader.Create(types.Open(), new XmlReaderSettings { DtdProcessing = DtdProcessing.Prohibit, XmlResolver = null });
            while (reader.Read())
            {
                if (reader.NodeType != XmlNodeType.Element || reader.LocalName != "Override")
                    continue;
                var format = FormatOf(reader.GetAttribute("ContentType"));
                if (format != LoadFormat.Unknown)
                    return new PresentationInfo(true, format, false);
            }
        }
        catch (Exception ex) when (ex is InvalidDataException or XmlException or IOException)
        {
        }
        return new PresentationInfo(false, LoadFormat.Unknown, false);
    }

    private static LoadFormat FormatOf(string? contentType) => contentType switch
    {
        Main + "presentation.main+xml" => LoadFormat.Pptx,
        Main + "slideshow.main+xml" => LoadFormat.Ppsx,
        Main + "template.main+xml" => LoadFormat.Potx,
        Macro + "presentation.macroEnabled.main+xml" => LoadFormat.Pptm,
        Macro + "slideshow.macroEnabled.main+xml" => LoadFormat.Ppsm,
        Macro + "template.macroEnabled.main+xml" => LoadFormat.Potm,
        _ => LoadFormat.Unknown,
    };
}
