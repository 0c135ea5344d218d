using System;
using System.Collections.Generic;
using System.Diagnostics;
using System.IO;
using System.Linq;
using Orvane.Folaro;

// Load + save of every deck of shared/corpus, in process: one warm-up pass, then the best of
// three timed passes. Throughput counts input bytes; decks the library rejects on load count
// too (rejecting is part of the work) but are reported separately.
internal static class Program
{
    private static readonly string[] Extensions = { ".pptx", ".pptm", ".potx", ".potm", ".ppsx", ".ppsm" };

    private static int Main(string[] args)
    {
        var corpus = args.Length > 0 ? args[0] : FindCorpus();
        if (corpus == null || !Directory.Exists(corpus))
        {
            Console.Error.WriteLine("shared/corpus not found above the current directory; give its path as the first argument");
            return 2;
        }
        var decks = Directory.EnumerateFiles(corpus, "*.*", SearchOption.AllDirectories)
            .Where(f => Extensions.Contains(Path.GetExtension(f).ToLowerInvariant()))
            .OrderBy(f => f, StringComparer.Ordinal)
            .Select(f => (Path: f, Bytes: File.ReadAllBytes(f)))
            .ToList();
        long totalBytes = decks.Sum(d => (long)d.Bytes.Length);

        var (_, rejected) = Pass(decks);
        var times = new List<TimeSpan>();
        for (int i = 0; i < 3; i++)
        {
            var clock = Stopwatch.StartNew();
            Pass(decks);
            times.Add(clock.Elapsed);
        }
        var best = times.Min();
        Process.GetCurrentProcess().Refresh();
        long peak = Process.GetCurrentProcess().PeakWorkingSet64;
        Console.WriteLine($"corpus: {corpus}");
        Console.WriteLine($"decks: {decks.Count} ({rejected} rejected on load), input {totalBytes / 1e6:F1} MB");
        Console.WriteLine($"load+save best of 3: {best.TotalMilliseconds:F0} ms ({string.Join(", ", times.Select(t => $"{t.TotalMilliseconds:F0}"))})");
        Console.WriteLine($"throughput: {totalBytes / 1e6 / best.TotalSeconds:F1} MB/s");
        Console.WriteLine($"peak working set: {peak / (1024.0 * 1024.0):F0} MiB");
        return 0;
    }

    // Each deck read from memory (so the disk is not timed) and saved in its own format.
    private static (int Loaded, int Rejected) Pass(List<(string Path, byte[] Bytes)> decks)
    {
        int loaded = 0, rejected = 0;
        foreach (var (_, bytes) in decks)
        {
            IPresentation pres;
            try
            {
                pres = new Presentation(new MemoryStream(bytes, false));
            }
            catch (PptxReadException)
            {
                rejected++;
                continue;
            }
            using (pres)
            {
                using var output = new MemoryStream();
                pres.Save(output, Enum.Parse<SaveFormat>(pres.SourceFormat.ToString()));
                loaded++;
            }
        }
        return (loaded, rejected);
    }

    // shared/corpus in the current directory or any parent (or beside it, for a checkout next to shared/).
    private static string? FindCorpus()
    {
        for (var dir = new DirectoryInfo(Directory.GetCurrentDirectory()); dir != null; dir = dir.Parent)
        {
            foreach (var candidate in new[] { Path.Combine(dir.FullName, "shared", "corpus"), Path.Combine(dir.FullName, "..", "shared", "corpus") })
                if (Directory.Exists(candidate))
                    return Path.GetFullPath(candidate);
        }
        return null;
    }
}
