using System;
using System.IO;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using Orvane.Marel;
using Orvane.Marel.Imaging;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;
using P14 = DocumentFormat.OpenXml.Office2010.PowerPoint;

namespace Orvane.Folaro;

// The XML of pictures and media frames: a p:pic whose nvPr names the sound or video
// (a:audioFile / a:videoFile r:link) with the newer readers' p14:media extension beside it,
// and whose picture is the icon or poster frame.
internal static class MediaFrameMarkup
{
    internal const string R = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    internal const string AudioRelationship = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/audio";
    internal const string VideoRelationship = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/video";
    private const string MediaExtensionUri = "{DAA4B4D4-6D71-4841-9C94-3DE7FCFB9230}";
    private static readonly string[] MediaKinds = { "audioCd", "wavAudioFile", "audioFile", "videoFile", "quickTimeFile" };

    private static readonly Lazy<byte[]> VideoPoster = new(() => Panel(320, 180, Color.FromArgb(38, 38, 38), Color.FromArgb(200, 200, 200)));
    private static readonly Lazy<byte[]> AudioIcon = new(() => Panel(64, 64, Color.FromArgb(255, 255, 255), Color.FromArgb(68, 114, 196)));

    internal static byte[] DefaultPoster(bool audio) => audio ? AudioIcon.Value : VideoPoster.Value;

    internal static P.Picture NewPicture(uint id, string name, string preset, OpenXmlElement? media) =>
        new(
            new P.NonVisualPictureProperties(
                new P.NonVisualDrawingProperties { Id = id, Name = name },
                new P.NonVisualPictureDrawingProperties(new A.PictureLocks { NoChangeAspect = true }),
                media == null ? new P.ApplicationNonVisualDrawingProperties() : new P.ApplicationNonVisualDrawingProperties(media)),
            new P.BlipFill(new A.Blip(), new A.Stretch(new A.FillRectangle())),
            new P.ShapeProperties(
                new A.Transform2D(new A.Offset { X = 0, Y = 0 }, new A.Extents { Cx = 0, Cy = 0 }),
                new A.PresetGeometry(new A.AdjustValueList()) { Preset = new EnumValue<A.ShapeTypeValues>(new A.ShapeTypeValues(preset)) }));

    internal static P.Picture NewMediaFrame(uint id, string name, bool audio) =>
        NewPicture(id, name, "rect", audio ? new A.AudioFromFile() : new A.VideoFromFile());

    /// <summary>The local name of the media element of a p:pic (audioFile, videoFile, ...), or null for a plain picture.</summary>
    internal static string? KindOf(OpenXmlElement pic) => MediaElement(pic)?.LocalName;

    private static OpenXmlElement? NvPr(OpenXmlElement pic) =>
        pic.GetFirstChild<P.NonVisualPictureProperties>()?.GetFirstChild<P.ApplicationNonVisualDrawingProperties>();

    private static OpenXmlElement? MediaElement(OpenXmlElement pic) =>
        NvPr(pic)?.ChildElements.FirstOrDefault(c => Array.IndexOf(MediaKinds, c.LocalName) >= 0);

    private static OpenXmlElement? MediaExtension(OpenXmlElement pic) =>
        NvPr(pic)?.GetFirstChild<P.ApplicationNonVisualDrawingPropertiesExtensionList>()?.Elements<P.ApplicationNonVisualDrawingPropertiesExtension>()
            .FirstOrDefault(e => AttributeAccess.Attr(e, "uri") == MediaExtensionUri);

    private static string? RelAttr(OpenXmlElement? element, string name) =>
        element?.GetAttributes().FirstOrDefault(a => a.LocalName == name && a.NamespaceUri == R).Value;

    /// <summary>The embedded media part a frame plays, or null when it is linked or names none.</summary>
    internal static MediaDataPart? Embedded(OpenXmlElement pic, OpenXmlPart part)
    {
        foreach (var id in new[] { RelAttr(MediaElement(pic), "link"), RelAttr(MediaExtension(pic)?.FirstChild, "embed") })
        {
            if (string.IsNullOrEmpty(id))
                continue;
            if (part.DataPartReferenceRelationships.FirstOrDefault(r => r.Id == id)?.DataPart is MediaDataPart media)
                return media;
        }
        return null;
    }

    /// <summary>The target of a linked frame's media, or empty.</summary>
    internal static string Link(OpenXmlElement pic, OpenXmlPart part)
    {
        var id = RelAttr(MediaElement(pic), "link");
        if (string.IsNullOrEmpty(id))
            return string.Empty;
        return part.ExternalRelationships.FirstOrDefault(r => r.Id == id)?.Uri.OriginalString
            ?? part.HyperlinkRelationships.FirstOrDefault(r => r.Id == id)?.Uri.OriginalString
            ?? string.Empty;
    }

    internal static void Embed(OpenXmlElement pic, OpenXmlPart part, MediaDataPart media, bool audio, string where)
    {
        var element = MediaElement(pic) ?? throw new PptxEditException($"{where}: the frame holds no media element");
        string mediaId, extId;
        switch (part)
        {
            case SlidePart s:
                mediaId = (audio ? (DataPartReferenceRelationship)s.AddAudioReferenceRelationship(media) : s.AddVideoReferenceRelationship(media)).Id;
                extId = s.AddMediaReferenceRelationship(media).Id;
                break;
            case SlideLayoutPart l:
                mediaId = (audio ? (DataPartReferenceRelationship)l.AddAudioReferenceRelationship(media) : l.AddVideoReferenceRelationship(media)).Id;
                extId = l.AddMediaReferenceRelationship(media).Id;
                break;
            case SlideMasterPart m:
                mediaId = (audio ? (DataPartReferenceRelationship)m.AddAudioReferenceRelationship(media) : m.AddVideoReferenceRelationship(media)).Id;
                extId = m.AddMediaReferenceRelationship(media).Id;
                break;
            default:
                throw new PptxEditException($"{where}: media can be placed only on a slide, layout or master");
        }
        element.SetAttribute(new OpenXmlAttribute("r", "link", R, mediaId));
        var ext = MediaExtension(pic);
        if (ext == null)
        {
            var nvPr = NvPr(pic)!;
            OpenXmlElement? list = nvPr.GetFirstChild<P.ApplicationNonVisualDrawingPropertiesExtensionList>();
            if (list == null)
            {
                list = new P.ApplicationNonVisualDrawingPropertiesExtensionList();
                nvPr.AppendChild(list);
            }
            ext = new P.ApplicationNonVisualDrawingPropertiesExtension { Uri = MediaExtensionUri };
            list.AppendChild(ext);
        }
        ext.RemoveAllChildren();
        var p14 = new P14.Media();
        p14.SetAttribute(new OpenXmlAttribute("r", "embed", R, extId));
        ext.AppendChild(p14);
    }

    internal static void SetLink(OpenXmlElement pic, OpenXmlPart part, string url, bool audio, string where)
    {
        if (string.IsNullOrWhiteSpace(url))
            throw new ArgumentException($"{where}: the link path must not be empty", nameof(url));
        if (!Uri.TryCreate(url, UriKind.RelativeOrAbsolute, out var uri))
            throw new ArgumentException($"{where}: '{url}' is not a path or URL", nameof(url));
        var element = MediaElement(pic) ?? throw new PptxEditException($"{where}: the frame holds no media element");
        var rel = part.AddExternalRelationship(audio ? AudioRelationship : VideoRelationship, uri);
        element.SetAttribute(new OpenXmlAttribute("r", "link", R, rel.Id));
        // The extension names embedded media only; a linked frame goes without it.
        var ext = MediaExtension(pic);
        var list = ext?.Parent;
        ext?.Remove();
        if (list != null && !list.HasChildren)
            list.Remove();
    }

    // A flat panel with a centred disc: the default poster of a video and icon of a sound.
    private static byte[] Panel(int width, int height, Color background, Color mark)
    {
        using var bitmap = new Bitmap(width, height);
        using (var g = Graphics.FromImage(bitmap))
        {
            g.Clear(background);
            float d = Math.Min(width, height) * 0.5f;
            g.FillEllipse(mark, new RectangleF((width - d) / 2, (height - d) / 2, d, d));
        }
        using var png = new MemoryStream();
        bitmap.Save(png, ImageFormat.Png);
        return png.ToArray();
    }
}
