using System;
using System.Diagnostics;
using System.IO;
using System.Linq;
using System.Text.RegularExpressions;
using Xunit;

namespace Orvane.Folaro.Tests;

// LibreOffice must open what we write: converting a new deck to PDF gives one page per slide.
public class LibreOfficeTests
{
    private static string? Soffice() =>
        (Environment.GetEnvironmentVariable("PATH") ?? "").Split(':')
            .Select(d => Path.Combine(d, "soffice"))
            .FirstOrDefault(File.Exists);

    [SkippableFactIfNoSoffice]
    public void NewDeckConvertsToPdfWithOnePagePerSlide()
    {
        // Eleven layouts, one clone, and the parts made in code for notes, sections, comments,
        // tags, custom XML, properties and protection. The hidden slide is not printed.
        Assert.Equal(11, PdfPages(FullDeckTests.EveryFeatureDeck()));
    }

    [SkippableFactIfNoSoffice]
    public void DeckWithSlidesClonedAcrossConvertsToPdf()
    {
        var bytes = SlideCollectionTests.CloneChartPictureAndNotesIntoNewDeck(out _, out _);
        Assert.Equal(2, PdfPages(bytes));
    }

    // Every corpus deck that LibreOffice converts converts as well after our round trip, with
    // the same number of pages. Inputs and outputs go through one soffice run each.
    [SkippableFactIfNoSoffice]
    public void CorpusRoundTripsConvertWithTheSamePageCount()
    {
        var dir = TestFiles.NewTempDir();
        try
        {
            var inputs = Directory.CreateDirectory(Path.Combine(dir, "in")).FullName;
            var outputs = Directory.CreateDirectory(Path.Combine(dir, "out")).FullName;
            int index = 0;
            foreach (var deck in TestFiles.CorpusDecks())
            {
                var name = $"d{index++:D3}{Path.GetExtension(deck)}";
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
                {
                    File.Copy(deck, Path.Combine(inputs, name));
                    File.WriteAllBytes(Path.Combine(outputs, name), TestFiles.SaveToBytes(pres, Enum.Parse<SaveFormat>(pres.SourceFormat.ToString())));
                }
            }
            Convert(dir, inputs);
            Convert(dir, outputs);
            var compared = 0;
            foreach (var pdf in Directory.EnumerateFiles(inputs, "*.pdf"))
            {
                var after = Path.Combine(outputs, Path.GetFileName(pdf));
                Assert.True(File.Exists(after), $"{Path.GetFileName(pdf)}: the round-tripped deck did not convert");
                Assert.True(Pages(pdf) == Pages(after), $"{Path.GetFileName(pdf)}: {Pages(pdf)} pages before, {Pages(after)} after");
                compared++;
            }
            Assert.True(compared > 50, $"only {compared} decks converted");
        }
        finally
        {
            Directory.Delete(dir, true);
        }
    }

    private static void Convert(string profileDir, string folder)
    {
        var files = Directory.EnumerateFiles(folder).Select(f => $"\"{f}\"").ToList();
        // Without a document to convert, soffice starts as a server and never exits.
        Assert.NotEmpty(files);
        var start = new ProcessStartInfo(Soffice()!,
            $"-env:UserInstallation=file://{profileDir}/profile --headless --convert-to pdf --outdir \"{folder}\" {string.Join(' ', files)}")
        {
            RedirectStandardOutput = true,
            RedirectStandardError = true,
        };
        using var process = Process.Start(start)!;
        process.StandardOutput.ReadToEndAsync();
        process.StandardError.ReadToEndAsync();
        if (!process.WaitForExit(600_000))
        {
            process.Kill(entireProcessTree: true);
            Assert.Fail("soffice did not finish in 10 minutes");
        }
    }

    private static int Pages(string pdf) =>
        Regex.Matches(System.Text.Encoding.Latin1.GetString(File.ReadAllBytes(pdf)), @"/Type\s*/Page[^s]").Count;

    internal static int PdfPages(byte[] package)
    {
        var dir = TestFiles.NewTempDir();
        try
        {
            var deck = Path.Combine(dir, "deck.pptx");
            File.WriteAllBytes(deck, package);
            var start = new ProcessStartInfo(Soffice()!, $"-env:UserInstallation=file://{dir}/profile --headless --convert-to pdf --outdir {dir} {deck}")
            {
                RedirectStandardOutput = true,
                RedirectStandardError = true,
            };
            using var process = Process.Start(start)!;
            if (!process.WaitForExit(120_000))
            {
                process.Kill(entireProcessTree: true);
                Assert.Fail("soffice did not finish in 2 minutes");
            }
            var pdf = Path.Combine(dir, "deck.pdf");
            Assert.True(File.Exists(pdf), process.StandardError.ReadToEnd());
            var text = System.Text.Encoding.Latin1.GetString(File.ReadAllBytes(pdf));
            return Regex.Matches(text, @"/Type\s*/Page[^s]").Count;
        }
        finally
        {
            Directory.Delete(dir, true);
        }
    }

    internal sealed class SkippableFactIfNoSofficeAttribute : FactAttribute
    {
        public SkippableFactIfNoSofficeAttribute()
        {
            if (Soffice() == null)
                Skip = "soffice is not installed (Debian package libreoffice-impress)";
        }
    }
}
