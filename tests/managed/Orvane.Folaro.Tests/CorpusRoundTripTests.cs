using System;
using System.Collections.Generic;
using System.Diagnostics;
using System.IO;
using System.Linq;
using Xunit;

namespace Orvane.Folaro.Tests;

public class CorpusRoundTripTests
{
    public static IEnumerable<object[]> Decks() =>
        TestFiles.CorpusDecks().Select(f => new object[] { Path.GetRelativePath(TestFiles.Corpus, f) });

    // Catches a hang, not a slow machine: the tests share two cores with other
    // jobs, and the speed itself is measured by bench/CorpusBench.
    private static readonly TimeSpan HangGuard = TimeSpan.FromSeconds(60);

    // Each deck either loads, saves and reloads with the same slides and every part kept,
    // or is rejected on load with PptxReadException; nothing else and never slowly.
    [Theory]
    [MemberData(nameof(Decks))]
    public void DeckRoundTripsOrIsRejectedCleanly(string relative)
    {
        var path = TestFiles.CorpusFile(relative);
        var input = File.ReadAllBytes(path);
        var clock = Stopwatch.StartNew();
        Presentation pres;
        try
        {
            pres = new Presentation(path);
        }
        catch (PptxReadException ex)
        {
            Assert.Contains(path, ex.Message);
            Assert.True(clock.Elapsed < HangGuard, $"rejection took {clock.Elapsed}");
            return;
        }
        using (IPresentation loaded = pres)
        {
            var names = loaded.Slides.Select(s => (s.Name, s.Hidden, s.LayoutSlide.Name)).ToList();
            var shapes = Shapes(loaded);
            // Saved in its own format, so that a macro-enabled deck keeps its VBA part.
            var output = TestFiles.SaveToBytes(loaded, Enum.Parse<SaveFormat>(loaded.SourceFormat.ToString()));
            var lost = TestFiles.PartNames(input).Except(TestFiles.PartNames(output), StringComparer.OrdinalIgnoreCase)
                .Where(n => !n.EndsWith('/'))
                .ToList();
            Assert.True(lost.Count == 0, $"parts lost: {string.Join(", ", lost)}");
            // The extended properties carry the slide count and may be updated on save.
            var changed = TestFiles.ChangedEntries(input, output, "docProps/app.xml");
            Assert.True(changed.Count == 0, $"parts changed: {string.Join(", ", changed)}");
            // The output has no schema error that the input did not have.
            var newErrors = TestFiles.Validate(output).Except(TestFiles.Validate(input)).ToList();
            Assert.True(newErrors.Count == 0, TestFiles.Describe(newErrors));
            using IPresentation back = new Presentation(new MemoryStream(output));
            Assert.Equal(names, back.Slides.Select(s => (s.Name, s.Hidden, s.LayoutSlide.Name)).ToList());
            Assert.Equal(shapes, Shapes(back));
            Assert.Equal(loaded.Masters.Count, back.Masters.Count);
            Assert.Equal(loaded.LayoutSlides.Count, back.LayoutSlides.Count);
        }
        Assert.True(clock.Elapsed < HangGuard, $"took {clock.Elapsed}");
    }

    // Every reader of the model works on every deck that loads: nothing throws but the
    // library's own read exception for a damaged part.
    [Theory]
    [MemberData(nameof(Decks))]
    public void EveryModelReaderWorksOnTheDeck(string relative)
    {
        IPresentation pres;
        try
        {
            pres = new Presentation(TestFiles.CorpusFile(relative));
        }
        catch (PptxReadException)
        {
            return;
        }
        using (pres)
        {
            var seen = new System.Text.StringBuilder();
            void Shapes(IShapeCollection shapes)
            {
                foreach (var shape in shapes)
                {
                    seen.Append(shape.Name).Append(shape.UniqueId).Append(shape.X + shape.Y + shape.Width + shape.Height)
                        .Append(shape.AlternativeText).Append(shape.Hidden).Append(shape.IsPlaceholder).Append(shape.HyperlinkClick?.ActionType);
                    if (shape is IGroupShape group)
                        Shapes(group.Shapes);
                }
            }
            seen.Append(pres.SlideSize.Size).Append(pres.SlideSize.Type).Append(pres.NotesSize.Size).Append(pres.FirstSlideNumber);
            foreach (var master in pres.Masters)
            {
                var scheme = master.Theme.ColorScheme;
                seen.Append(master.Name).Append(master.SlideId).Append(master.Theme.Name).Append(scheme.Accent1).Append(scheme.Dark1)
                    .Append(scheme.Hyperlink).Append(master.Theme.FontScheme.MajorLatinFont).Append(master.HasDependingSlides);
                Shapes(master.Shapes);
                foreach (var layout in master.LayoutSlides)
                {
                    seen.Append(layout.Name).Append(layout.LayoutType).Append(layout.SlideId);
                    Shapes(layout.Shapes);
                }
            }
            foreach (var slide in pres.Slides)
            {
                seen.Append(slide.Name).Append(slide.SlideNumber).Append(slide.Hidden).Append(slide.LayoutSlide.Name)
                    .Append(slide.SlideShowTransition.Type).Append(slide.SlideShowTransition.AdvanceAfterTime)
                    .Append(slide.NotesSlideManager.NotesSlide?.NotesText);
                Shapes(slide.Shapes);
            }
            foreach (var section in pres.Sections)
                seen.Append(section.Name).Append(section.StartedFromSlide?.SlideNumber);
            var props = pres.DocumentProperties;
            seen.Append(props.Title).Append(props.Author).Append(props.CreatedTime).Append(props.RevisionNumber).Append(props.Company)
                .Append(props.CountOfCustomProperties);
            for (int i = 0; i < props.CountOfCustomProperties; i++)
                seen.Append(props.GetCustomPropertyValueAsString(props.GetCustomPropertyName(i)));
            seen.Append(pres.ViewProperties.ShowComments).Append(pres.ViewProperties.GridSpacing).Append(pres.CommentAuthors.Count)
                .Append(pres.CustomData.Tags.Count).Append(pres.VbaProject != null);
            Assert.True(seen.Length > 0);
        }
    }

    // Per slide: each shape's name, kind and box.
    private static List<string> Shapes(IPresentation pres) =>
        pres.Slides.Select(s => string.Join("; ", s.Shapes.Select(sh => $"{sh.Name}|{sh.GetType().Name}|{sh.X},{sh.Y},{sh.Width},{sh.Height}"))).ToList();

    [Fact]
    public void CorpusIsFound()
    {
        Assert.True(TestFiles.HasCorpus, "shared/corpus not found");
        Assert.True(TestFiles.CorpusDecks().Count() > 50);
    }

    [Fact]
    public void LoadingLeavesTheSourceFileUnlockedAndUnchanged()
    {
        var source = TestFiles.CorpusFile("python-pptx/minimal.pptx");
        var dir = TestFiles.NewTempDir();
        try
        {
            var path = Path.Combine(dir, "copy.pptx");
            File.Copy(source, path);
            var before = File.ReadAllBytes(path);
            using (IPresentation pres = new Presentation(path))
            {
                // Writable and deletable while the presentation is open.
                using (new FileStream(path, FileMode.Open, FileAccess.ReadWrite, FileShare.None))
                {
                }
                pres.Slides.AddEmptySlide(pres.LayoutSlides[0]);
                pres.Save(Path.Combine(dir, "out.pptx"), SaveFormat.Pptx);
            }
            Assert.Equal(before, File.ReadAllBytes(path));
        }
        finally
        {
            Directory.Delete(dir, true);
        }
    }

    [Fact]
    public void SavingOverTheSourceFileWorks()
    {
        var dir = TestFiles.NewTempDir();
        try
        {
            var path = Path.Combine(dir, "deck.pptx");
            File.Copy(TestFiles.CorpusFile("python-pptx/minimal.pptx"), path);
            int count;
            using (IPresentation pres = new Presentation(path))
            {
                pres.Slides.AddEmptySlide(pres.LayoutSlides[0]);
                count = pres.Slides.Count;
                pres.Save(path, SaveFormat.Pptx);
            }
            using IPresentation back = new Presentation(path);
            Assert.Equal(count, back.Slides.Count);
        }
        finally
        {
            Directory.Delete(dir, true);
        }
    }
}
