using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using DocumentFormat.OpenXml.Validation;

namespace Orvane.Folaro.Tests;

// Locating the shared corpus, temporary folders, and package-level checks used by several tests.
internal static class TestFiles
{
    private static readonly Lazy<string?> CorpusDir = new(FindCorpus);

    // The corpus lives in shared/corpus beside the repository (or inside a checkout that has shared/);
    // a clone elsewhere names it with ORVANE_CORPUS_DIR or finds the workplace's copy.
    private static string? FindCorpus()
    {
        var given = Environment.GetEnvironmentVariable("ORVANE_CORPUS_DIR");
        if (!string.IsNullOrEmpty(given) && Directory.Exists(given))
            return Path.GetFullPath(given);
        for (var dir = new DirectoryInfo(AppContext.BaseDirectory); dir != null; dir = dir.Parent)
        {
            foreach (var candidate in new[] { Path.Combine(dir.FullName, "shared", "corpus"), Path.Combine(dir.FullName, "..", "shared", "corpus") })
                if (Directory.Exists(candidate))
                    return Path.GetFullPath(candidate);
        }
        return Directory.Exists("/work/shared/corpus") ? "/work/shared/corpus" : null;
    }

    internal static string Corpus => CorpusDir.Value ?? throw new InvalidOperationException("shared/corpus was not found above the test assembly");

    internal static bool HasCorpus => CorpusDir.Value != null;

    internal static IEnumerable<string> CorpusDecks() =>
        HasCorpus
            ? Directory.EnumerateFiles(Corpus, "*.*", SearchOption.AllDirectories)
                .Where(f => new[] { ".pptx", ".pptm", ".potx", ".potm", ".ppsx", ".ppsm" }.Contains(Path.GetExtension(f).ToLowerInvariant()))
                .OrderBy(f => f, StringComparer.Ordinal)
            : Enumerable.Empty<string>();

    // The corpus decks the library loads, each open for one step of the loop (the few it
    // rejects as encrypted or broken are skipped).
    internal static IEnumerable<(string Path, IPresentation Presentation)> LoadableCorpusDecks() => Loadable(CorpusDecks());

    internal static IEnumerable<(string Path, IPresentation Presentation)> Loadable(IEnumerable<string> decks)
    {
        foreach (var deck in decks)
        {
            IPresentation pres;
            try
            {
                pres = new Presentation(deck);
            }
            catch (PptxReadException)
            {
                continue;
            }
            using (pres)
                yield return (deck, pres);
        }
    }

    /// <summary>Every slide-like part of a deck: its slides, layouts and masters.</summary>
    internal static IEnumerable<IBaseSlide> AllSlides(IPresentation pres) =>
        pres.Slides.Cast<IBaseSlide>().Concat(pres.LayoutSlides).Concat(pres.Masters);

    /// <summary>The shapes of a collection and, depth first, those inside its groups.</summary>
    internal static IEnumerable<IShape> AllShapes(IShapeCollection shapes)
    {
        foreach (var shape in shapes)
        {
            yield return shape;
            if (shape is IGroupShape group)
                foreach (var inner in AllShapes(group.Shapes))
                    yield return inner;
        }
    }

    internal static string CorpusFile(string relative) => Path.Combine(Corpus, relative);

    internal static string NewTempDir() => Directory.CreateTempSubdirectory("orvane-folaro-").FullName;

    // Schema and semantic errors of a package, each as "part xpath: description".
    internal static List<string> Validate(byte[] package)
    {
        using var doc = PresentationDocument.Open(new MemoryStream(package), false);
        return new OpenXmlValidator().Validate(doc).Select(e => $"{e.Part?.Uri} {e.Path?.XPath}: {e.Description}").ToList();
    }

    internal static string Describe(IEnumerable<string> errors) => string.Join("\n", errors.Take(10));

    internal static byte[] SaveToBytes(IPresentation pres, SaveFormat format = SaveFormat.Pptx)
    {
        using var ms = new MemoryStream();
        pres.Save(ms, format);
        return ms.ToArray();
    }

    // Entries whose content differs between two packages: byte-different binaries, XML that
    // is not the same tree (namespace prefixes and attribute order aside), relationship parts
    // with other relationships, or parts whose content type changed.
    internal static List<string> ChangedEntries(byte[] before, byte[] after, params string[] except)
    {
        using var a = new System.IO.Compression.ZipArchive(new MemoryStream(before));
        using var b = new System.IO.Compression.ZipArchive(new MemoryStream(after));
        var changed = new List<string>();
        var typesBefore = ContentTypes(a);
        var typesAfter = ContentTypes(b);
        foreach (var entry in a.Entries)
        {
            if (entry.FullName.EndsWith('/') || except.Any(e => entry.FullName.EndsWith(e, StringComparison.OrdinalIgnoreCase)))
                continue;
            if (entry.FullName == "[Content_Types].xml")
                continue;
            if (TypeOf(typesBefore, entry.FullName) != TypeOf(typesAfter, entry.FullName))
            {
                changed.Add(entry.FullName + " (content type)");
                continue;
            }
            var other = b.Entries.FirstOrDefault(e => string.Equals(e.FullName, entry.FullName, StringComparison.OrdinalIgnoreCase));
            if (other == null)
                continue;
            var x = Read(entry);
            var y = Read(other);
            if (x.AsSpan().SequenceEqual(y))
                continue;
            bool same = entry.FullName.EndsWith(".rels", StringComparison.OrdinalIgnoreCase) ? SameRelationships(entry.FullName, x, y) : SameXml(x, y);
            if (!same)
                changed.Add(entry.FullName);
        }
        return changed;
    }

    private static (Dictionary<string, string> Defaults, Dictionary<string, string> Overrides) ContentTypes(System.IO.Compression.ZipArchive zip)
    {
        var defaults = new Dictionary<string, string>(StringComparer.OrdinalIgnoreCase);
        var overrides = new Dictionary<string, string>(StringComparer.OrdinalIgnoreCase);
        var entry = zip.GetEntry("[Content_Types].xml");
        if (entry == null)
            return (defaults, overrides);
        var root = System.Xml.Linq.XDocument.Load(new MemoryStream(Read(entry))).Root!;
        foreach (var e in root.Elements())
        {
            if (e.Name.LocalName == "Default")
                defaults[(string)e.Attribute("Extension")!] = (string)e.Attribute("ContentType")!;
            else if (e.Name.LocalName == "Override")
                overrides[((string)e.Attribute("PartName")!).TrimStart('/')] = (string)e.Attribute("ContentType")!;
        }
        return (defaults, overrides);
    }

    private static string? TypeOf((Dictionary<string, string> Defaults, Dictionary<string, string> Overrides) types, string name)
    {
        if (types.Overrides.TryGetValue(name, out var t))
            return t;
        return types.Defaults.TryGetValue(Path.GetExtension(name).TrimStart('.'), out t) ? t : null;
    }

    // Relationship parts are equal when they hold the same relationships, internal targets
    // compared as resolved part names (a writer may make relative targets absolute).
    private static bool SameRelationships(string relsName, byte[] x, byte[] y)
    {
        var sourceDir = "/" + relsName.Replace("_rels/", "", StringComparison.Ordinal);
        var baseUri = new Uri(new Uri("http://package"), sourceDir);
        SortedSet<string> Set(byte[] data)
        {
            var root = System.Xml.Linq.XDocument.Load(new MemoryStream(data)).Root!;
            return new SortedSet<string>(root.Elements().Select(r =>
            {
                var mode = (string?)r.Attribute("TargetMode") ?? "Internal";
                var target = (string?)r.Attribute("Target") ?? "";
                if (mode == "Internal")
                    target = Uri.UnescapeDataString(new Uri(baseUri, target).AbsolutePath).ToLowerInvariant();
                return $"{(string?)r.Attribute("Id")}|{(string?)r.Attribute("Type")}|{target}|{mode}";
            }), StringComparer.Ordinal);
        }
        try
        {
            return Set(x).SetEquals(Set(y));
        }
        catch (System.Xml.XmlException)
        {
            return false;
        }
    }

    private static byte[] Read(System.IO.Compression.ZipArchiveEntry entry)
    {
        using var s = entry.Open();
        using var ms = new MemoryStream();
        s.CopyTo(ms);
        return ms.ToArray();
    }

    private static bool SameXml(byte[] x, byte[] y)
    {
        try
        {
            var a = Canonical(System.Xml.Linq.XDocument.Load(new MemoryStream(x)).Root!);
            var b = Canonical(System.Xml.Linq.XDocument.Load(new MemoryStream(y)).Root!);
            return System.Xml.Linq.XNode.DeepEquals(a, b);
        }
        catch (System.Xml.XmlException)
        {
            return false;
        }
    }

    // Elements with their attributes sorted and namespace declarations dropped.
    private static System.Xml.Linq.XElement Canonical(System.Xml.Linq.XElement e) =>
        new(e.Name,
            e.Attributes().Where(a => !a.IsNamespaceDeclaration).OrderBy(a => a.Name.ToString(), StringComparer.Ordinal),
            e.Nodes().Select(n => n is System.Xml.Linq.XElement c ? (System.Xml.Linq.XNode?)Canonical(c) : n is System.Xml.Linq.XText t ? new System.Xml.Linq.XText(t.Value) : null).Where(n => n != null));

    internal static SortedSet<string> PartNames(byte[] package)
    {
        using var zip = new System.IO.Compression.ZipArchive(new MemoryStream(package));
        return new SortedSet<string>(zip.Entries.Select(e => e.FullName), StringComparer.Ordinal);
    }
}
