using System;
using System.IO;
using System.Linq;
using Xunit;

namespace Orvane.Folaro.Tests;

public class NotesAndLayoutTests
{
    private static IPresentation Reload(IPresentation pres) => new Presentation(new MemoryStream(TestFiles.SaveToBytes(pres)));

    [Fact]
    public void NotesPagesAreAddedWrittenAndRemoved()
    {
        using IPresentation pres = new Presentation();
        var first = pres.Slides.AddEmptySlide(pres.LayoutSlides[0]);
        var second = pres.Slides.AddEmptySlide(pres.LayoutSlides[1]);
        Assert.Null(first.NotesSlideManager.NotesSlide);
        var notes = first.NotesSlideManager.AddNotesSlide();
        Assert.Same(notes, first.NotesSlideManager.AddNotesSlide());
        Assert.Same(first, notes.ParentSlide);
        Assert.Equal("", notes.NotesText);
        notes.NotesText = "Open with the numbers.\n\nThen the plan.";
        second.NotesSlideManager.AddNotesSlide().NotesText = "Questions";
        var bytes = TestFiles.SaveToBytes(pres);
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        // One notes master serves both notes pages.
        Assert.Single(TestFiles.PartNames(bytes), n => n.Contains("notesMasters/notesMaster", StringComparison.Ordinal) && !n.Contains("_rels", StringComparison.Ordinal));
        using (var back = new Presentation(new MemoryStream(bytes)) as IPresentation)
        {
            Assert.Equal("Open with the numbers.\n\nThen the plan.", back.Slides[0].NotesSlideManager.NotesSlide!.NotesText);
            Assert.Equal("Questions", back.Slides[1].NotesSlideManager.NotesSlide!.NotesText);
        }
        first.NotesSlideManager.RemoveNotesSlide();
        Assert.Null(first.NotesSlideManager.NotesSlide);
        using var after = Reload(pres);
        Assert.Null(after.Slides[0].NotesSlideManager.NotesSlide);
        Assert.NotNull(after.Slides[1].NotesSlideManager.NotesSlide);
    }

    [Fact]
    public void NotesOfACorpusDeckAreRead()
    {
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("python-pptx/prs-notes.pptx"));
        var notes = pres.Slides[0].NotesSlideManager.NotesSlide;
        Assert.NotNull(notes);
        Assert.False(string.IsNullOrWhiteSpace(notes!.NotesText));
    }

    [Fact]
    public void LayoutsAreAddedByType()
    {
        using IPresentation pres = new Presentation();
        var table = pres.Masters[0].LayoutSlides.Add(SlideLayoutType.Table, "Table Page");
        var blank = pres.LayoutSlides.Add(SlideLayoutType.Blank, "Another Blank");
        Assert.Equal(13, pres.LayoutSlides.Count);
        Assert.Equal(SlideLayoutType.Table, table.LayoutType);
        Assert.Equal("Table Page", table.Name);
        Assert.Same(pres.Masters[0], blank.MasterSlide);
        // The blank layout gets the blank layout's placeholders: date, footer and number only.
        Assert.Equal(3, blank.Shapes.Count);
        var slide = pres.Slides.AddEmptySlide(table);
        Assert.Equal(2, slide.Shapes.Count);
        var ids = pres.LayoutSlides.Select(l => l.SlideId).Append(pres.Masters[0].SlideId).ToList();
        Assert.Equal(ids.Count, ids.Distinct().Count());
        using var back = Reload(pres);
        Assert.Equal(SlideLayoutType.Table, back.Slides[0].LayoutSlide.LayoutType);
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(pres));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void FootersNumbersAndDatesAreShownAndHiddenOnAllSlides()
    {
        using IPresentation pres = new Presentation();
        pres.Slides.AddEmptySlide(pres.LayoutSlides[1]);
        pres.Slides.AddEmptySlide(pres.LayoutSlides[6]);
        var manager = pres.HeaderFooterManager;
        manager.SetAllFootersVisibility(true);
        manager.SetAllFootersText("Confidential");
        manager.SetAllSlideNumbersVisibility(true);
        manager.SetAllDateTimesVisibility(true);
        manager.SetAllDateTimesText("May 2026");
        static string Texts(ISlide s) =>
            string.Join("|", ((Slide)s).Part.Slide.Descendants<DocumentFormat.OpenXml.Presentation.Shape>().Select(sh => sh.TextBody?.InnerText));
        using (IPresentation back = new Presentation(new MemoryStream(TestFiles.SaveToBytes(pres))))
        {
            foreach (var slide in back.Slides)
            {
                Assert.Contains("Confidential", Texts(slide));
                Assert.Contains("May 2026", Texts(slide));
                Assert.Contains("‹#›", Texts(slide));
                var ids = slide.Shapes.Select(s => s.UniqueId).ToList();
                Assert.Equal(ids.Count, ids.Distinct().Count());
            }
            var errors = TestFiles.Validate(TestFiles.SaveToBytes(back));
            Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        }
        int before = pres.Slides[0].Shapes.Count;
        manager.SetAllFootersVisibility(false);
        manager.SetAllFootersVisibility(false);
        Assert.Equal(before - 1, pres.Slides[0].Shapes.Count);
        Assert.DoesNotContain("Confidential", Texts(pres.Slides[0]));
    }
}
