using System;
using System.IO;
using System.Linq;
using Xunit;

namespace Orvane.Folaro.Tests;

public class SectionTests
{
    private static IPresentation DeckWith(int count)
    {
        IPresentation pres = new Presentation();
        for (int i = 0; i < count; i++)
            pres.Slides.AddEmptySlide(pres.LayoutSlides[0]).Name = $"s{i}";
        return pres;
    }

    // Each section as "name:slide,slide".
    private static string[] Layout(IPresentation pres) =>
        pres.Sections.Select(sec =>
        {
            var first = sec.StartedFromSlide;
            int start = first == null ? -1 : pres.Slides.IndexOf(first);
            int next = pres.Sections.Skip(pres.Sections.IndexOf(sec) + 1).Select(s => s.StartedFromSlide).Where(s => s != null).Select(s => pres.Slides.IndexOf(s!)).DefaultIfEmpty(pres.Slides.Count).First();
            var names = start < 0 ? Array.Empty<string>() : Enumerable.Range(start, next - start).Select(i => pres.Slides[i].Name);
            return $"{sec.Name}:{string.Join(",", names)}";
        }).ToArray();

    [Fact]
    public void AddingSectionsSplitsTheSlides()
    {
        using var pres = DeckWith(5);
        Assert.Equal(0, pres.Sections.Count);
        pres.Sections.AddSection("Middle", pres.Slides[2]);
        Assert.Equal(new[] { "Default Section:s0,s1", "Middle:s2,s3,s4" }, Layout(pres));
        pres.Sections.AddSection("End", pres.Slides[4]);
        pres.Sections.AppendEmptySection("Spare");
        Assert.Equal(new[] { "Default Section:s0,s1", "Middle:s2,s3", "End:s4", "Spare:" }, Layout(pres));
        Assert.Null(pres.Sections[3].StartedFromSlide);
        using IPresentation back = new Presentation(new MemoryStream(TestFiles.SaveToBytes(pres)));
        Assert.Equal(Layout(pres), Layout(back));
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(pres));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void NewAndMovedSlidesJoinTheSectionOfTheirPredecessor()
    {
        using var pres = DeckWith(4);
        pres.Sections.AddSection("B", pres.Slides[2]);
        pres.Slides.AddEmptySlide(pres.LayoutSlides[0]).Name = "s4";
        pres.Slides.InsertEmptySlide(0, pres.LayoutSlides[0]).Name = "first";
        Assert.Equal(new[] { "Default Section:first,s0,s1", "B:s2,s3,s4" }, Layout(pres));
        pres.Slides[5].SlideNumber = 2;
        Assert.Equal(new[] { "Default Section:first,s4,s0,s1", "B:s2,s3" }, Layout(pres));
        pres.Slides.RemoveAt(4);
        Assert.Equal(new[] { "Default Section:first,s4,s0,s1", "B:s3" }, Layout(pres));
    }

    [Fact]
    public void RemovingASectionKeepsOrDropsItsSlides()
    {
        using var pres = DeckWith(4);
        var b = pres.Sections.AddSection("B", pres.Slides[2]);
        pres.Sections.RemoveSection(b);
        Assert.Equal(new[] { "Default Section:s0,s1,s2,s3" }, Layout(pres));
        var c = pres.Sections.AddSection("C", pres.Slides[1]);
        pres.Sections.RemoveSectionWithSlides(c);
        Assert.Equal(new[] { "s0" }, pres.Slides.Select(s => s.Name).ToArray());
        pres.Sections.RemoveSection(pres.Sections[0]);
        Assert.Equal(0, pres.Sections.Count);
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(pres));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        Assert.Throws<ArgumentException>(() => pres.Sections.RemoveSection(c));
    }

    [Fact]
    public void ReorderingASectionMovesItsSlides()
    {
        using var pres = DeckWith(5);
        pres.Sections.AddSection("B", pres.Slides[2]);
        var c = pres.Sections.AddSection("C", pres.Slides[4]);
        pres.Sections.ReorderSectionWithSlides(c, 0);
        Assert.Equal(new[] { "C:s4", "Default Section:s0,s1", "B:s2,s3" }, Layout(pres));
        Assert.Equal(new[] { "s4", "s0", "s1", "s2", "s3" }, pres.Slides.Select(s => s.Name).ToArray());
        pres.Sections[1].Name = "A";
        Assert.Equal("A", pres.Sections[1].Name);
        Assert.Throws<ArgumentOutOfRangeException>(() => pres.Sections.ReorderSectionWithSlides(c, 3));
    }

    [Fact]
    public void SectionsOfACorpusDeckAreRead()
    {
        var deck = TestFiles.CorpusDecks().FirstOrDefault(f =>
        {
            using var z = System.IO.Compression.ZipFile.OpenRead(f);
            var e = z.GetEntry("ppt/presentation.xml");
            if (e == null)
                return false;
            using var r = new StreamReader(e.Open());
            return r.ReadToEnd().Contains("sectionLst", StringComparison.Ordinal);
        });
        Assert.NotNull(deck);
        using IPresentation pres = new Presentation(deck!);
        Assert.True(pres.Sections.Count > 0);
        Assert.All(pres.Sections, s => Assert.False(string.IsNullOrEmpty(s.Name)));
    }
}
