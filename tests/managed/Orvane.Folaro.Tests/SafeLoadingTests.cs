using System;
using System.Diagnostics;
using System.IO;
using System.IO.Compression;
using System.Text;
using Xunit;

namespace Orvane.Folaro.Tests;

public class SafeLoadingTests
{
    // A hostile package must be refused promptly; this catches a hang or a
    // runaway expansion, with room for a busy machine (the allocation limit
    // below is the strict check).
    private static readonly TimeSpan HangGuard = TimeSpan.FromSeconds(20);

    // Loads and expects a PptxReadException within the time and allocation budget.
    private static PptxReadException Rejected(byte[] package, LoadOptions? options = null)
    {
        long allocated = GC.GetTotalAllocatedBytes(true);
        var clock = Stopwatch.StartNew();
        var ex = Assert.Throws<PptxReadException>(() =>
        {
            using var pres = options == null ? new Presentation(new MemoryStream(package)) : new Presentation(new MemoryStream(package), options);
        });
        Assert.True(clock.Elapsed < HangGuard, $"rejection took {clock.Elapsed}");
        long used = GC.GetTotalAllocatedBytes(true) - allocated;
        Assert.True(used < 200L << 20, $"rejection allocated {used >> 20} MiB");
        return ex;
    }

    [Fact]
    public void EntryExpandingPastTheSizeLimitIsRejected()
    {
        var package = HostilePackages.With(zip => HostilePackages.Put(zip, "ppt/media/big.bin", new byte[24 << 20]));
        var ex = Rejected(package, new LoadOptions { MaxUncompressedSize = 16 << 20, MaxCompressionRatio = 100_000 });
        Assert.Contains("MaxUncompressedSize", ex.Message);
    }

    // An entry that declares a small size but inflates to much more is read no further than
    // its declared size (or refused): either way the limits hold.
    [Fact]
    public void EntryLyingAboutItsSizeStaysWithinTheLimits()
    {
        const string name = "ppt/media/liar.bin";
        var package = HostilePackages.With(zip => HostilePackages.Put(zip, name, new byte[64 << 20]));
        package = HostilePackages.DeclareSize(package, name, 1000);
        long allocated = GC.GetTotalAllocatedBytes(true);
        var clock = Stopwatch.StartNew();
        try
        {
            using IPresentation pres = new Presentation(new MemoryStream(package), new LoadOptions { MaxUncompressedSize = 16 << 20, MaxCompressionRatio = 100_000 });
            Assert.Equal(1, pres.Slides.Count);
            Assert.True(TestFiles.SaveToBytes(pres).Length < 1 << 20);
        }
        catch (PptxReadException ex)
        {
            Assert.Contains("liar.bin", ex.Message);
        }
        Assert.True(clock.Elapsed < HangGuard, $"took {clock.Elapsed}");
        Assert.True(GC.GetTotalAllocatedBytes(true) - allocated < 200L << 20);
    }

    [Fact]
    public void HundredThousandEntriesAreRejected()
    {
        var package = HostilePackages.With(zip =>
        {
            for (int i = 0; i < 100_000; i++)
                zip.CreateEntry($"x/{i}", CompressionLevel.NoCompression);
        });
        var ex = Rejected(package);
        Assert.Contains("MaxZipEntries", ex.Message);
    }

    [Fact]
    public void CompressionRatioOfTenThousandIsRejected()
    {
        const string name = "ppt/media/bomb.bin";
        var package = HostilePackages.With(zip => HostilePackages.Put(zip, name, new byte[1 << 20]));
        uint compressed = HostilePackages.CompressedSize(package, name);
        var ex = Rejected(HostilePackages.DeclareSize(package, name, compressed * 10_000));
        Assert.Contains("MaxCompressionRatio", ex.Message);
        Assert.Contains("bomb.bin", ex.Message);
    }

    [Fact]
    public void DeeplyNestedXmlIsRejected()
    {
        var xml = new StringBuilder("<?xml version=\"1.0\"?>");
        for (int i = 0; i < 100_000; i++)
            xml.Append("<a>");
        for (int i = 0; i < 100_000; i++)
            xml.Append("</a>");
        var package = HostilePackages.With(zip => HostilePackages.Put(zip, "ppt/slides/slide1.xml", xml.ToString()));
        var ex = Rejected(package);
        Assert.Contains("MaxXmlDepth", ex.Message);
        Assert.Contains("/ppt/slides/slide1.xml", ex.Message);
    }

    [Fact]
    public void DtdWithEntityExpansionIsRejected()
    {
        const string laughs =
            "<?xml version=\"1.0\"?><!DOCTYPE lolz [<!ENTITY lol \"lol\">" +
            "<!ENTITY lol2 \"&lol;&lol;&lol;&lol;&lol;&lol;&lol;&lol;&lol;&lol;\">" +
            "<!ENTITY lol3 \"&lol2;&lol2;&lol2;&lol2;&lol2;&lol2;&lol2;&lol2;&lol2;&lol2;\">" +
            "<!ENTITY lol4 \"&lol3;&lol3;&lol3;&lol3;&lol3;&lol3;&lol3;&lol3;&lol3;&lol3;\">]>" +
            "<p:sld xmlns:p=\"http://schemas.openxmlformats.org/presentationml/2006/main\">&lol4;</p:sld>";
        var package = HostilePackages.With(zip => HostilePackages.Put(zip, "ppt/slides/slide1.xml", laughs));
        var ex = Rejected(package);
        Assert.Contains("DTD", ex.Message);
    }

    [Fact]
    public void MalformedPartIsNamed()
    {
        var package = HostilePackages.With(zip => HostilePackages.Put(zip, "ppt/slides/slide1.xml", "<p:sld xmlns:p=\"urn:x\"><unclosed></p:sld>"));
        var ex = Rejected(package);
        Assert.Contains("/ppt/slides/slide1.xml", ex.Message);
    }

    [Fact]
    public void PartWithTheWrongRootElementIsNamed()
    {
        var package = HostilePackages.With(zip => HostilePackages.Put(zip, "ppt/slides/slide1.xml",
            "<p:notes xmlns:p=\"http://schemas.openxmlformats.org/presentationml/2006/main\"/>"));
        var ex = Rejected(package);
        Assert.Contains("/ppt/slides/slide1.xml", ex.Message);
    }

    [Theory]
    [InlineData(new byte[0], "empty")]
    [InlineData(new byte[] { 1, 2, 3, 4, 5, 6, 7, 8 }, "not a zip")]
    [InlineData(new byte[] { 0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1, 0, 0 }, "compound file")]
    public void NonPackagesAreRejectedWithAReason(byte[] data, string reason)
    {
        var ex = Rejected(data);
        Assert.Contains(reason, ex.Message);
    }

    [Fact]
    public void PackageWithoutPresentationIsRejected()
    {
        var ms = new MemoryStream();
        using (var zip = new ZipArchive(ms, ZipArchiveMode.Create, leaveOpen: true))
            HostilePackages.Put(zip, "hello.txt", "hi");
        Rejected(ms.ToArray());
    }

    [Fact]
    public void TruncatedPackageIsRejected()
    {
        var deck = HostilePackages.ValidDeck();
        Rejected(deck.AsSpan(0, deck.Length / 2).ToArray());
    }

    [Fact]
    public void LimitsAreConfigurableAndValidated()
    {
        var deck = HostilePackages.ValidDeck();
        var ex = Rejected(deck, new LoadOptions { MaxZipEntries = 3 });
        Assert.Contains("MaxZipEntries", ex.Message);
        Assert.Throws<ArgumentOutOfRangeException>(() => new LoadOptions { MaxXmlDepth = 0 });
        Assert.Throws<ArgumentOutOfRangeException>(() => new LoadOptions { MaxUncompressedSize = -1 });
        using var ok = new Presentation(new MemoryStream(deck), new LoadOptions { MaxXmlDepth = 64 });
        Assert.Equal(1, ((IPresentation)ok).Slides.Count);
    }

    [Fact]
    public void ExpectedFormatIsChecked()
    {
        var deck = HostilePackages.ValidDeck();
        var ex = Rejected(deck, new LoadOptions(LoadFormat.Potx));
        Assert.Contains("Potx", ex.Message);
        Assert.Throws<NotSupportedException>(() => new Presentation(new MemoryStream(deck), new LoadOptions(LoadFormat.Ppt)));
    }
}
