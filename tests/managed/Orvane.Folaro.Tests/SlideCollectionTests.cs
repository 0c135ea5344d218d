using System;
using System.IO;
using System.Linq;
using Xunit;

namespace Orvane.Folaro.Tests;

public class SlideCollectionTests
{
    private static IPresentation DeckWith(int count)
    {
        IPresentation pres = new Presentation();
        for (int i = 0; i < count; i++)
            pres.Slides.AddEmptySlide(pres.LayoutSlides[i % pres.LayoutSlides.Count]).Name = $"s{i}";
        return pres;
    }

    private static string[] Names(IPresentation pres) => pres.Slides.Select(s => s.Name).ToArray();

    private static IPresentation Reload(IPresentation pres) => new Presentation(new MemoryStream(TestFiles.SaveToBytes(pres)));

    [Fact]
    public void InsertPutsTheSlideAtTheIndexWithAFreshId()
    {
        using var pres = DeckWith(3);
        var inserted = pres.Slides.InsertEmptySlide(1, pres.LayoutSlides[6]);
        inserted.Name = "new";
        Assert.Equal(new[] { "s0", "new", "s1", "s2" }, Names(pres));
        Assert.Equal(1, pres.Slides.IndexOf(inserted));
        Assert.Equal(2, inserted.SlideNumber);
        var ids = pres.Slides.Select(s => s.SlideId).ToList();
        Assert.Equal(ids.Count, ids.Distinct().Count());
        Assert.All(ids, id => Assert.True(id >= 256));
        Assert.Same(inserted, pres.GetSlideById(inserted.SlideId));
        Assert.Same(pres.Slides[1], inserted);
    }

    [Fact]
    public void RemoveAndRemoveAtDropTheSlideAndItsPart()
    {
        using var pres = DeckWith(4);
        var second = pres.Slides[1];
        pres.Slides.Remove(second);
        pres.Slides.RemoveAt(0);
        Assert.Equal(new[] { "s2", "s3" }, Names(pres));
        Assert.Equal(-1, pres.Slides.IndexOf(second));
        Assert.Throws<ArgumentException>(() => pres.Slides.Remove(second));
        var bytes = TestFiles.SaveToBytes(pres);
        Assert.Equal(2, TestFiles.PartNames(bytes).Count(n => n.StartsWith("ppt/slides/slide", StringComparison.Ordinal)));
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void IndicesOutOfRangeAreRejected()
    {
        using var pres = DeckWith(2);
        Assert.Throws<ArgumentOutOfRangeException>(() => pres.Slides[2]);
        Assert.Throws<ArgumentOutOfRangeException>(() => pres.Slides[-1]);
        Assert.Throws<ArgumentOutOfRangeException>(() => pres.Slides.RemoveAt(5));
        Assert.Throws<ArgumentOutOfRangeException>(() => pres.Slides.InsertEmptySlide(3, pres.LayoutSlides[0]));
        Assert.Equal(2, pres.Slides.Count);
    }

    [Fact]
    public void LayoutOfAnotherPresentationIsRefused()
    {
        using var a = new Presentation() as IPresentation;
        using var b = new Presentation() as IPresentation;
        Assert.Throws<ArgumentException>(() => a.Slides.AddEmptySlide(b.LayoutSlides[0]));
        Assert.Throws<ArgumentNullException>(() => a.Slides.AddEmptySlide(null!));
    }

    [Fact]
    public void SettingSlideNumberMovesTheSlide()
    {
        using var pres = DeckWith(4);
        var first = pres.Slides[0];
        first.SlideNumber = 3;
        Assert.Equal(new[] { "s1", "s2", "s0", "s3" }, Names(pres));
        pres.Slides.Reorder(0, pres.Slides[3]);
        Assert.Equal(new[] { "s3", "s1", "s2", "s0" }, Names(pres));
        pres.FirstSlideNumber = 10;
        Assert.Equal(12, pres.Slides[2].SlideNumber);
        pres.Slides[2].SlideNumber = 10;
        Assert.Equal(new[] { "s2", "s3", "s1", "s0" }, Names(pres));
        Assert.Throws<ArgumentOutOfRangeException>(() => pres.Slides[0].SlideNumber = 20);
        using var back = Reload(pres);
        Assert.Equal(Names(pres), Names(back));
        Assert.Equal(10, back.FirstSlideNumber);
    }

    [Fact]
    public void CloneCopiesContentAndNotesButSharesTheLayout()
    {
        // Its first slide has two shapes and a notes page; the second slide has notes too.
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("python-pptx/ph-inherit-props.pptx"));
        var source = pres.Slides[0];
        Assert.Equal(2, source.Shapes.Count);
        int before = pres.Slides.Count;
        var clone = pres.Slides.AddClone(source);
        Assert.Equal(before + 1, pres.Slides.Count);
        Assert.NotEqual(source.SlideId, clone.SlideId);
        Assert.Same(source.LayoutSlide, clone.LayoutSlide);
        Assert.Equal(source.Shapes.Select(s => s.Name), clone.Shapes.Select(s => s.Name));
        // The copy is independent: renaming it leaves the source alone.
        clone.Shapes[0].Name = "changed";
        Assert.NotEqual("changed", source.Shapes[0].Name);
        var bytes = TestFiles.SaveToBytes(pres);
        var names = TestFiles.PartNames(bytes);
        Assert.Equal(3, names.Count(n => n.Contains("notesSlides/notesSlide", StringComparison.Ordinal) && n.EndsWith(".xml", StringComparison.Ordinal) && !n.Contains("_rels", StringComparison.Ordinal)));
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void CloneGetsItsOwnThemeOverrideAndComments()
    {
        using IPresentation pres = new Presentation();
        var source = pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!);
        var overridden = source.ThemeManager.OverrideTheme;
        overridden.InitColorScheme();
        overridden.ColorScheme!.Accent1 = Orvane.Marel.Color.Lime;
        var author = pres.CommentAuthors.AddAuthor("Ana Lima", "AL");
        var first = author.Comments.AddComment("Check this", source, new Orvane.Marel.PointF(10f, 10f), new DateTime(2026, 1, 2));
        first.AddReply(author, "Checked", new DateTime(2026, 1, 3));

        var clone = pres.Slides.AddClone(source);
        Assert.Equal(Orvane.Marel.Color.Lime.ToArgb(), clone.ThemeManager.OverrideTheme.ColorScheme!.Accent1.ToArgb());
        var copied = clone.GetSlideComments(null);
        Assert.Equal(new[] { "Check this", "Checked" }, copied.Select(c => c.Text));
        // The copied reply answers the copied comment, not the source's.
        Assert.Same(copied[0], copied[1].ParentComment);
        // Editing the copy's theme and comments leaves the source's alone.
        clone.ThemeManager.OverrideTheme.ColorScheme!.Accent1 = Orvane.Marel.Color.Red;
        author.Comments.AddComment("Only on the copy", clone, new Orvane.Marel.PointF(20f, 20f), new DateTime(2026, 1, 3));
        Assert.Equal(Orvane.Marel.Color.Lime.ToArgb(), source.ThemeManager.OverrideTheme.ColorScheme!.Accent1.ToArgb());
        Assert.Equal(new[] { "Check this", "Checked" }, source.GetSlideComments(null).Select(c => c.Text));

        var bytes = TestFiles.SaveToBytes(pres);
        Assert.True(TestFiles.Validate(bytes).Count == 0, TestFiles.Describe(TestFiles.Validate(bytes)));
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        Assert.Equal(Orvane.Marel.Color.Red.ToArgb(), back.Slides[^1].ThemeManager.OverrideTheme.ColorScheme!.Accent1.ToArgb());
        Assert.Equal(3, back.Slides[^1].GetSlideComments(null).Length);
        Assert.Equal(2, back.Slides[^2].GetSlideComments(null).Length);
        Assert.Same(back.Slides[^2].GetSlideComments(null)[0], back.Slides[^2].GetSlideComments(null)[1].ParentComment);
    }

    [Fact]
    public void CloneFromAnotherDeckKeepsTheCommentsAndTheirAuthors()
    {
        using IPresentation source = new Presentation();
        var slide = source.Slides.AddEmptySlide(source.LayoutSlides.GetByType(SlideLayoutType.Blank)!);
        var author = source.CommentAuthors.AddAuthor("Ana Lima", "AL");
        author.Comments.AddComment("Check this", slide, new Orvane.Marel.PointF(10f, 10f), new DateTime(2026, 1, 2));
        using IPresentation target = new Presentation();
        var existing = target.Slides.AddEmptySlide(target.LayoutSlides.GetByType(SlideLayoutType.Blank)!);
        target.CommentAuthors.AddAuthor("Bo Berg", "BB").Comments
            .AddComment("Already here", existing, new Orvane.Marel.PointF(5f, 5f), new DateTime(2026, 1, 1));

        var clone = target.Slides.AddClone(slide);
        var comment = Assert.Single(clone.GetSlideComments(null));
        Assert.Equal(("Check this", "Ana Lima"), (comment.Text, comment.Author.Name));
        Assert.Equal("Bo Berg", target.Slides[0].GetSlideComments(null)[0].Author.Name);
        var bytes = TestFiles.SaveToBytes(target);
        Assert.True(TestFiles.Validate(bytes).Count == 0, TestFiles.Describe(TestFiles.Validate(bytes)));
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        Assert.Equal("Ana Lima", back.Slides[^1].GetSlideComments(null)[0].Author.Name);
    }

    [Fact]
    public void CloneOfASlideWithAChartCopiesTheChart()
    {
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("python-pptx/cht-charts.pptx"));
        static int ChartParts(byte[] package) =>
            TestFiles.PartNames(package).Count(n => n.Contains("charts/chart", StringComparison.Ordinal) && !n.Contains("_rels", StringComparison.Ordinal));
        var inputCharts = ChartParts(TestFiles.SaveToBytes(pres));
        var withChart = pres.Slides.First(s => s.Shapes.Any(sh => sh is GraphicalObject));
        int chartsOnSlide = withChart.Shapes.Count(sh => sh is GraphicalObject);
        pres.Slides.InsertClone(0, withChart);
        var bytes = TestFiles.SaveToBytes(pres);
        Assert.Equal(inputCharts + chartsOnSlide, ChartParts(bytes));
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        Assert.Equal(chartsOnSlide, back.Slides[0].Shapes.Count(sh => sh is GraphicalObject));
    }

    [Fact]
    public void CloneBetweenDecksOfTheSameDesignReusesTheLayout()
    {
        using var a = DeckWith(0);
        using var b = DeckWith(3);
        var clone = a.Slides.AddClone(b.Slides[2]);
        Assert.Equal("s2", clone.Name);
        Assert.Equal(11, a.LayoutSlides.Count);
        Assert.Equal(1, a.Masters.Count);
        Assert.Same(a.LayoutSlides[2], clone.LayoutSlide);
        Assert.Equal(3, b.Slides.Count);
    }

    [Fact]
    public void CloneFromAnotherDesignBringsItsMasterLayoutsAndTheme()
    {
        using IPresentation source = new Presentation(TestFiles.CorpusFile("python-pptx/shp-shapes.pptx"));
        using var target = DeckWith(1);
        int sourceLayouts = source.Masters[0].LayoutSlides.Count;
        var clone = target.Slides.AddClone(source.Slides[0]);
        Assert.Equal(2, target.Masters.Count);
        Assert.Equal(11 + sourceLayouts, target.LayoutSlides.Count);
        Assert.Same(target.Masters[1], clone.LayoutSlide.MasterSlide);
        Assert.Equal(source.Slides[0].LayoutSlide.Name, clone.LayoutSlide.Name);
        var ids = target.Masters.Select(m => m.SlideId).Concat(target.LayoutSlides.Select(l => l.SlideId)).ToList();
        Assert.Equal(ids.Count, ids.Distinct().Count());
        // A second slide of the same design reuses the imported master.
        target.Slides.AddClone(source.Slides[0]);
        Assert.Equal(2, target.Masters.Count);
        var bytes = TestFiles.SaveToBytes(target);
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    internal static ISlide SlideOfPart(IPresentation pres, string partName) =>
        pres.Slides.First(s => ((Slide)s).Part.Uri.OriginalString.EndsWith(partName, StringComparison.Ordinal));

    // Slides with a chart, a picture and notes pages, cloned into a new presentation, keep all of them.
    internal static byte[] CloneChartPictureAndNotesIntoNewDeck(out int charts, out int pictures)
    {
        using IPresentation withChart = new Presentation(TestFiles.CorpusFile("poi/aascu.org_workarea_downloadasset.aspx_id=5864.pptx"));
        using IPresentation withPicture = new Presentation(TestFiles.CorpusFile("poi/2411-Performance_Up.pptx"));
        using IPresentation target = new Presentation();
        var chartSlide = SlideOfPart(withChart, "/slide11.xml");
        var pictureSlide = SlideOfPart(withPicture, "/slide10.xml");
        charts = chartSlide.Shapes.Count(s => s is GraphicalObject);
        pictures = pictureSlide.Shapes.Count(s => s is PictureFrame);
        target.Slides.AddClone(chartSlide);
        target.Slides.AddClone(pictureSlide);
        return TestFiles.SaveToBytes(target);
    }

    [Fact]
    public void CloneAcrossDecksKeepsChartsPicturesAndNotes()
    {
        var bytes = CloneChartPictureAndNotesIntoNewDeck(out int charts, out int pictures);
        Assert.True(charts > 0 && pictures > 0);
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        Assert.Equal(charts, back.Slides[0].Shapes.Count(s => s is GraphicalObject));
        Assert.Equal(pictures, back.Slides[1].Shapes.Count(s => s is PictureFrame));
        var names = TestFiles.PartNames(bytes);
        Assert.Contains(names, n => n.Contains("charts/chart", StringComparison.Ordinal) && !n.Contains("_rels", StringComparison.Ordinal));
        Assert.Contains(names, n => n.Contains("/media/", StringComparison.Ordinal));
        Assert.Equal(2, names.Count(n => n.Contains("notesSlides/notesSlide", StringComparison.Ordinal) && !n.Contains("_rels", StringComparison.Ordinal)));
        Assert.Single(names, n => n.Contains("notesMasters/notesMaster", StringComparison.Ordinal) && !n.Contains("_rels", StringComparison.Ordinal));
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void PicturesClonedTwiceAcrossDecksAreStoredOnce()
    {
        using IPresentation source = new Presentation(TestFiles.CorpusFile("poi/2411-Performance_Up.pptx"));
        using IPresentation target = new Presentation();
        var slide = SlideOfPart(source, "/slide10.xml");
        static string[] Media(byte[] package) =>
            TestFiles.PartNames(package).Where(n => n.Contains("/media/", StringComparison.Ordinal)).ToArray();
        target.Slides.AddClone(slide);
        var once = Media(TestFiles.SaveToBytes(target));
        Assert.NotEmpty(once);
        target.Slides.AddClone(slide);
        var bytes = TestFiles.SaveToBytes(target);
        Assert.Equal(once, Media(bytes));
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        Assert.Equal(back.Slides[0].Shapes.Count(s => s is PictureFrame), back.Slides[1].Shapes.Count(s => s is PictureFrame));
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void HiddenAndNameAndLayoutRoundTrip()
    {
        using var pres = DeckWith(2);
        pres.Slides[1].Hidden = true;
        pres.Slides[0].LayoutSlide = pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!;
        using var back = Reload(pres);
        Assert.False(back.Slides[0].Hidden);
        Assert.True(back.Slides[1].Hidden);
        Assert.Equal(SlideLayoutType.Blank, back.Slides[0].LayoutSlide.LayoutType);
        Assert.Equal("s1", back.Slides[1].Name);
    }

    [Fact]
    public void UnusedLayoutsAndMastersCanBeRemovedButUsedOnesCannot()
    {
        using var pres = DeckWith(0);
        var title = pres.LayoutSlides.GetByType(SlideLayoutType.Title)!;
        pres.Slides.AddEmptySlide(title);
        Assert.True(title.HasDependingSlides);
        Assert.Throws<PptxEditException>(() => pres.LayoutSlides.Remove(title));
        Assert.Throws<PptxEditException>(() => pres.Masters.Remove(pres.Masters[0]));
        LowCode.Compress.RemoveUnusedLayoutSlides(pres);
        Assert.Equal(1, pres.LayoutSlides.Count);
        Assert.Same(title, pres.LayoutSlides[0]);
        LowCode.Compress.RemoveUnusedMasterSlides(pres);
        Assert.Equal(1, pres.Masters.Count);
        var bytes = TestFiles.SaveToBytes(pres);
        Assert.Single(TestFiles.PartNames(bytes), n => n.StartsWith("ppt/slideLayouts/slideLayout", StringComparison.Ordinal));
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void SlideIdsFindLayoutsAndMastersToo()
    {
        using var pres = DeckWith(1);
        var master = pres.Masters[0];
        var layout = pres.LayoutSlides[3];
        Assert.Same(master, pres.GetSlideById(master.SlideId));
        Assert.Same(layout, pres.GetSlideById(layout.SlideId));
        Assert.Null(pres.GetSlideById(12345));
        var all = new[] { master.SlideId }.Concat(pres.LayoutSlides.Select(l => l.SlideId)).ToList();
        Assert.Equal(all.Count, all.Distinct().Count());
    }
}
