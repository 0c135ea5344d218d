using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using System.Security.Cryptography;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using A = DocumentFormat.OpenXml.Drawing;
using Svg = DocumentFormat.OpenXml.Office2019.Drawing.SVG;

namespace Orvane.Folaro;

// The pictures, sounds and videos of one presentation, each stored once by content. An image added
// but not yet shown anywhere is held in memory: an image part needs a part that refers to it,
// so it is made when a picture, fill or bullet first uses it. Sounds and videos are package-level
// media parts and are stored at once.
internal sealed class MediaStore
{
    internal const string SvgExtensionUri = "{96DAC541-7B7A-43D3-8B79-37D633B846F1}";
    private const string R = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

    private readonly PresentationDocument _package;
    private readonly Dictionary<OpenXmlPart, PPImage> _views = new(ReferenceEqualityComparer.Instance);
    private readonly List<PPImage> _pending = new();
    private Dictionary<string, PPImage>? _imagesByHash;
    private readonly HashSet<ImagePart> _hashed = new(ReferenceEqualityComparer.Instance);
    private readonly Dictionary<DataPart, object> _mediaViews = new(ReferenceEqualityComparer.Instance);
    private Dictionary<string, DataPart>? _mediaByHash;
    private readonly HashSet<DataPart> _hashedMedia = new(ReferenceEqualityComparer.Instance);
    private bool _svgScanned;

    // Made by the DocumentState of the presentation that owns the package: reach a store
    // through DocumentState.Of(part).Media.
    internal MediaStore(PresentationDocument package)
    {
        _package = package;
    }

    // --- images ------------------------------------------------------------------------

    /// <summary>The stored image with these bytes, else a new one (an SVG gets its PNG rendition with it).</summary>
    internal PPImage AddImage(byte[] data, string where)
    {
        ArgumentNullException.ThrowIfNull(data);
        string type = ImageFormats.Detect(data)
            ?? throw new ArgumentException($"{where}: the data is not a {ImageFormats.Accepted} image" + (data.Length == 0 ? " (it is empty)" : string.Empty), nameof(data));
        var index = ImagesByHash();
        string hash = Hash(data);
        if (!index.ContainsKey(hash))
            IndexNewParts(index);
        if (index.TryGetValue(hash, out var existing) && existing.ContentType == type && Usable(existing))
            return existing;
        var image = new PPImage(this, null, (byte[])data.Clone(), type);
        if (type == ImageFormats.Svg)
            image.Fallback = AddImage(SvgFallback.Render(data), where);
        _pending.Add(image);
        index[hash] = image;
        return image;
    }

    /// <summary>An image of this store for <paramref name="image"/>: itself, or a copy of its bytes when it belongs to another presentation.</summary>
    internal PPImage Own(IPPImage image, string where)
    {
        ArgumentNullException.ThrowIfNull(image);
        if (image is PPImage own && ReferenceEquals(own.Store, this) && Usable(own))
            return own;
        return AddImage(image.BinaryData, where);
    }

    /// <summary>The one view of an image part.</summary>
    internal PPImage ViewOf(ImagePart part)
    {
        if (!_views.TryGetValue(part, out var view))
        {
            view = new PPImage(this, part, null, part.ContentType);
            _views[part] = view;
        }
        return view;
    }

    /// <summary>The images of the package (every image part reachable from it) then those added but not used yet; SVG renditions are left out.</summary>
    internal List<PPImage> Images()
    {
        ScanSvg();
        var result = new List<PPImage>();
        var fallbacks = new HashSet<PPImage>(ReferenceEqualityComparer.Instance);
        foreach (var part in StoredImageParts())
        {
            var view = ViewOf(part);
            result.Add(view);
            if (view.Fallback != null)
                fallbacks.Add(view.Fallback);
        }
        foreach (var image in _pending)
        {
            if (image.Part == null)
            {
                result.Add(image);
                if (image.Fallback != null)
                    fallbacks.Add(image.Fallback);
            }
        }
        result.RemoveAll(i => fallbacks.Contains(i) && i.ContentType != ImageFormats.Svg);
        return result;
    }

    /// <summary>Points <paramref name="blip"/> (an a:blip of <paramref name="owner"/>) at the image; an SVG image as its PNG rendition plus the SVG extension.</summary>
    internal void SetBlip(OpenXmlElement blip, OpenXmlPart owner, IPPImage image, string where)
    {
        var own = Own(image, where);
        // An SVG met without a rendition beside it (a blip that named none) gets one now.
        if (own.ContentType == ImageFormats.Svg && own.Fallback == null)
            own.Fallback = AddImage(SvgFallback.Render(own.BinaryData), where);
        var raster = own.Fallback ?? own;
        blip.SetAttribute(new OpenXmlAttribute("r", "embed", R, Relate(owner, raster)));
        // An old SVG extension goes, whatever the new image is.
        OpenXmlElement? extList = blip.GetFirstChild<A.BlipExtensionList>();
        foreach (var ext in extList?.Elements<A.BlipExtension>().Where(e => AttributeAccess.Attr(e, "uri") == SvgExtensionUri).ToList() ?? new List<A.BlipExtension>())
            ext.Remove();
        if (own.ContentType == ImageFormats.Svg)
        {
            if (extList == null)
            {
                extList = new A.BlipExtensionList();
                blip.AppendChild(extList);
            }
            var svgBlip = new Svg.SVGBlip();
            svgBlip.SetAttribute(new OpenXmlAttribute("r", "embed", R, Relate(owner, own)));
            extList.AppendChild(new A.BlipExtension(svgBlip) { Uri = SvgExtensionUri });
        }
        else if (extList != null && !extList.HasChildren)
            extList.Remove();
    }

    /// <summary>The image an a:blip of <paramref name="owner"/> shows (the SVG when it has one), or null when it names none.</summary>
    internal PPImage? ImageOfBlip(OpenXmlElement blip, OpenXmlPart? owner)
    {
        if (owner == null)
            return null;
        var raster = PartOf(owner, ImageParts.EmbedOf(blip));
        var svgBlip = blip.GetFirstChild<A.BlipExtensionList>()?.Elements<A.BlipExtension>()
            .Where(e => AttributeAccess.Attr(e, "uri") == SvgExtensionUri)
            .SelectMany(e => e.Elements<Svg.SVGBlip>()).FirstOrDefault();
        var svg = svgBlip != null ? PartOf(owner, ImageParts.EmbedOf(svgBlip)) : null;
        if (svg != null)
        {
            var view = ViewOf(svg);
            if (raster != null)
                view.Fallback ??= ViewOf(raster);
            return view;
        }
        return raster != null ? ViewOf(raster) : null;
    }

    /// <summary>The id of a relationship from <paramref name="owner"/> to the image, storing the image first when it is not yet.</summary>
    internal string Relate(OpenXmlPart owner, PPImage image)
    {
        if (image.Part is { } part && Alive(part))
        {
            foreach (var pair in owner.Parts)
                if (ReferenceEquals(pair.OpenXmlPart, part))
                    return pair.RelationshipId;
            return owner.GetIdOfPart(owner.AddPart(part));
        }
        var data = image.PendingData ?? throw new PptxEditException("the image was removed from the presentation with the last slide that showed it");
        var made = owner.AddNewPart<ImagePart>(image.ContentType, null);
        using (var stream = new MemoryStream(data, false))
            made.FeedData(stream);
        image.Stored(made);
        _views[made] = image;
        _hashed.Add(made);
        _pending.Remove(image);
        return owner.GetIdOfPart(made);
    }

    /// <summary>Replaces the bytes of a stored or pending image, in every place that shows it.</summary>
    internal void Replace(PPImage image, byte[] data, string where)
    {
        ArgumentNullException.ThrowIfNull(data);
        string type = ImageFormats.Detect(data)
            ?? throw new ArgumentException($"{where}: the data is not a {ImageFormats.Accepted} image", nameof(data));
        if ((type == ImageFormats.Svg) != (image.ContentType == ImageFormats.Svg))
            throw new ArgumentException($"{where}: an SVG image is replaced only by another SVG image, and a raster image only by a raster image", nameof(data));
        var index = ImagesByHash();
        foreach (var stale in index.Where(p => ReferenceEquals(p.Value, image)).Select(p => p.Key).ToList())
            index.Remove(stale);
        if (image.Part is not { } part || !Alive(part))
            image.Pending(data, type);
        else if (part.ContentType == type)
        {
            using var stream = new MemoryStream(data, false);
            part.FeedData(stream);
            image.Stored(part);
            _hashed.Add(part);
        }
        else
            Retype(image, part, data, type);
        index.TryAdd(Hash(data), image);
        if (image.Fallback != null)
        {
            // Stored pictures name the rendition's part, so a stored rendition is redrawn in place.
            var png = SvgFallback.Render(data);
            if (image.Fallback.Part != null)
                Replace(image.Fallback, png, where);
            else
                image.Fallback = AddImage(png, where);
        }
    }

    // A part's content type is fixed: the new bytes go to a new part, which takes over every
    // relationship to the old one under the same ids, so the XML that names them stays as is.
    private void Retype(PPImage image, ImagePart old, byte[] data, string type)
    {
        var holders = AllParts().Where(p => p.Parts.Any(c => ReferenceEquals(c.OpenXmlPart, old))).ToList();
        ImagePart? made = null;
        foreach (var holder in holders)
        {
            var ids = holder.Parts.Where(c => ReferenceEquals(c.OpenXmlPart, old)).Select(c => c.RelationshipId).ToList();
            foreach (var id in ids)
            {
                holder.DeletePart(id);
                if (made == null)
                {
                    made = holder.AddNewPart<ImagePart>(type, id);
                    using var stream = new MemoryStream(data, false);
                    made.FeedData(stream);
                }
                else
                    holder.AddPart(made, id);
            }
        }
        _views.Remove(old);
        if (made == null)
        {
            image.Pending(data, type);
            _pending.Add(image);
            return;
        }
        image.Stored(made, type);
        _views[made] = image;
        _hashed.Add(made);
    }

    private static ImagePart? PartOf(OpenXmlPart owner, string? id) =>
        !string.IsNullOrEmpty(id) && owner.TryGetPartById(id, out var part) ? part as ImagePart : null;

    // A part deleted with the last slide that used it is gone from the package.
    internal static bool Alive(OpenXmlPart part)
    {
        try
        {
            return part.OpenXmlPackage != null;
        }
        catch (InvalidOperationException)
        {
            return false;
        }
    }

    private static bool Usable(PPImage image) => image.Part == null || Alive(image.Part) || image.PendingData != null;

    private Dictionary<string, PPImage> ImagesByHash()
    {
        if (_imagesByHash != null)
            return _imagesByHash;
        _imagesByHash = new Dictionary<string, PPImage>(StringComparer.Ordinal);
        IndexNewParts(_imagesByHash);
        return _imagesByHash;
    }

    // Image parts can arrive by other ways (slides and shapes cloned from another deck): on a
    // miss, the parts not hashed yet are hashed before the bytes are taken as new.
    private void IndexNewParts(Dictionary<string, PPImage> index)
    {
        foreach (var part in StoredImageParts())
        {
            if (!_hashed.Add(part))
                continue;
            using var stream = part.GetStream(FileMode.Open, FileAccess.Read);
            index.TryAdd(Hash(stream), ViewOf(part));
        }
    }

    private IEnumerable<ImagePart> StoredImageParts() => AllParts().OfType<ImagePart>();

    // Every part reachable from the package, each once, in relationship order.
    private List<OpenXmlPart> AllParts()
    {
        var seen = new HashSet<OpenXmlPart>(ReferenceEqualityComparer.Instance);
        var order = new List<OpenXmlPart>();
        var queue = new Queue<OpenXmlPart>(_package.Parts.Select(p => p.OpenXmlPart));
        while (queue.Count > 0)
        {
            var part = queue.Dequeue();
            if (!seen.Add(part))
                continue;
            order.Add(part);
            foreach (var child in part.Parts)
                queue.Enqueue(child.OpenXmlPart);
        }
        return order;
    }

    // Pairs each SVG part of a loaded deck with the raster its pictures show beside it.
    private void ScanSvg()
    {
        if (_svgScanned)
            return;
        _svgScanned = true;
        foreach (var part in AllParts())
        {
            if (!part.Parts.Any(p => p.OpenXmlPart is ImagePart) || part is ImagePart)
                continue;
            var root = part.RootElement;
            if (root == null)
                continue;
            foreach (var svgBlip in root.Descendants<Svg.SVGBlip>())
            {
                var blip = svgBlip.Ancestors<A.Blip>().FirstOrDefault();
                if (blip != null)
                    ImageOfBlip(blip, part);
            }
        }
    }

    // --- copies from another presentation -------------------------------------------

    /// <summary>
    /// Relates <paramref name="source"/>, an image of another package, to <paramref name="target"/>
    /// (under <paramref name="relId"/> when given) and gives back the relationship id: an equal
    /// image of this store is used instead of a copy.
    /// </summary>
    internal string ImportImage(OpenXmlPart target, ImagePart source, string? relId = null)
    {
        string hash;
        using (var stream = source.GetStream(FileMode.Open, FileAccess.Read))
            hash = Hash(stream);
        var index = ImagesByHash();
        if (!index.ContainsKey(hash))
            IndexNewParts(index);
        if (index.TryGetValue(hash, out var existing) && existing.ContentType == source.ContentType && existing.Part is { } part && Alive(part))
        {
            if (relId == null)
                return Relate(target, existing);
            target.AddPart(part, relId);
            return relId;
        }
        // Copying across packages makes a new part with a free name in this package.
        var copy = relId == null ? target.AddPart(source) : target.AddPart(source, relId);
        _hashed.Add(copy);
        // An image added here but not shown yet keeps its bytes of its own (an SVG's rendition
        // is drawn here, the copy brings the source's), so only a stored image is shared.
        if (existing == null || existing.Part != null)
            index[hash] = ViewOf(copy);
        return target.GetIdOfPart(copy);
    }

    /// <summary>The media part of this package holding the bytes of <paramref name="source"/>, a media part of another package.</summary>
    internal MediaDataPart ImportMedia(DataPart source) =>
        AddMedia(Read(source.GetStream(FileMode.Open, FileAccess.Read)), source.ContentType);

    // --- sounds and videos ------------------------------------------------------------

    /// <summary>The media part holding these bytes, made when there is none.</summary>
    internal MediaDataPart AddMedia(byte[] data, string contentType)
    {
        var index = MediaByHash();
        string hash = Hash(data);
        if (!index.ContainsKey(hash))
            IndexNewMedia(index);
        if (index.TryGetValue(hash, out var existing) && existing.ContentType == contentType && existing is MediaDataPart media && Alive(media))
            return media;
        var made = _package.CreateMediaDataPart(contentType);
        using (var stream = new MemoryStream(data, false))
            made.FeedData(stream);
        index[hash] = made;
        _hashedMedia.Add(made);
        return made;
    }

    internal IEnumerable<MediaDataPart> MediaParts() => _package.DataParts.OfType<MediaDataPart>();

    internal T MediaView<T>(DataPart part, Func<T> create) where T : class
    {
        if (!_mediaViews.TryGetValue(part, out var view))
        {
            view = create();
            _mediaViews[part] = view;
        }
        return (T)view;
    }

    internal static bool Alive(DataPart part)
    {
        try
        {
            return part.OpenXmlPackage != null;
        }
        catch (InvalidOperationException)
        {
            return false;
        }
    }

    private Dictionary<string, DataPart> MediaByHash()
    {
        if (_mediaByHash != null)
            return _mediaByHash;
        _mediaByHash = new Dictionary<string, DataPart>(StringComparer.Ordinal);
        IndexNewMedia(_mediaByHash);
        return _mediaByHash;
    }

    private void IndexNewMedia(Dictionary<string, DataPart> index)
    {
        foreach (var data in _package.DataParts)
        {
            if (!_hashedMedia.Add(data))
                continue;
            using var stream = data.GetStream(FileMode.Open, FileAccess.Read);
            index.TryAdd(Hash(stream), data);
        }
    }

    internal static byte[] Read(Stream stream)
    {
        using (stream)
        {
            using var copy = new MemoryStream();
            stream.CopyTo(copy);
            return copy.ToArray();
        }
    }

    private static string Hash(byte[] data) => Convert.ToHexString(SHA256.HashData(data));

    private static string Hash(Stream stream) => Convert.ToHexString(SHA256.HashData(stream));
}
