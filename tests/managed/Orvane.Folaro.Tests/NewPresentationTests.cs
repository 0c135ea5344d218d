using System;
using System.IO;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using Orvane.Marel;
using Xunit;

namespace Orvane.Folaro.Tests;

public class NewPresentationTests
{
    [Fact]
    public void NewDeckHasOneMasterElevenLayoutsAndNoSlides()
    {
        using IPresentation pres = new Presentation();
        Assert.Equal(0, pres.Slides.Count);
        Assert.Equal(1, pres.Masters.Count);
        Assert.Equal(11, pres.LayoutSlides.Count);
        Assert.Equal(11, pres.Masters[0].LayoutSlides.Count);
        Assert.Equal(SourceFormat.Pptx, pres.SourceFormat);
        Assert.Equal(1, pres.FirstSlideNumber);
        var types = pres.LayoutSlides.Select(l => l.LayoutType).ToArray();
        Assert.Equal(new[]
        {
            SlideLayoutType.Title, SlideLayoutType.TitleAndObject, SlideLayoutType.SectionHeader, SlideLayoutType.TwoObjects,
            SlideLayoutType.TwoTextAndTwoObjects, SlideLayoutType.TitleOnly, SlideLayoutType.Blank,
            SlideLayoutType.TitleObjectAndCaption, SlideLayoutType.PictureAndCaption, SlideLayoutType.VerticalText,
            SlideLayoutType.VerticalTitleAndText,
        }, types);
        Assert.Equal("Title Slide", pres.LayoutSlides[0].Name);
        Assert.All(pres.LayoutSlides, l => Assert.Same(pres.Masters[0], l.MasterSlide));
    }

    [Fact]
    public void NewDeckIsWidescreenWithItsOwnTheme()
    {
        using IPresentation pres = new Presentation();
        Assert.Equal(new SizeF(960, 540), pres.SlideSize.Size);
        Assert.Equal(SlideSizeType.Widescreen, pres.SlideSize.Type);
        Assert.Equal(SlideOrientation.Landscape, pres.SlideSize.Orientation);
        Assert.Equal(new SizeF(540, 720), pres.NotesSize.Size);
        var theme = pres.MasterTheme;
        Assert.Equal("Orvane", theme.Name);
        Assert.Equal(Color.FromArgb(0x2E, 0x6D, 0xB4), theme.ColorScheme.Accent1);
        Assert.Equal(Color.FromArgb(255, 255, 255), theme.ColorScheme.Light1);
        Assert.Equal("Calibri", theme.FontScheme.MinorLatinFont);
        Assert.Same(theme, pres.Masters[0].Theme);
    }

    [Fact]
    public void NewDeckWithSlidesValidatesAndReloads()
    {
        var dir = TestFiles.NewTempDir();
        try
        {
            var path = Path.Combine(dir, "new.pptx");
            using (IPresentation pres = new Presentation())
            {
                foreach (var layout in pres.LayoutSlides)
                    pres.Slides.AddEmptySlide(layout);
                pres.DocumentProperties.Title = "Quarterly review";
                pres.Save(path, SaveFormat.Pptx);
            }
            var bytes = File.ReadAllBytes(path);
            var errors = TestFiles.Validate(bytes);
            Assert.True(errors.Count == 0, TestFiles.Describe(errors));
            using IPresentation back = new Presentation(path);
            Assert.Equal(11, back.Slides.Count);
            Assert.Equal(11, back.LayoutSlides.Count);
            Assert.Equal(1, back.Masters.Count);
            Assert.Equal("Quarterly review", back.DocumentProperties.Title);
            for (int i = 0; i < 11; i++)
                Assert.Equal(back.LayoutSlides[i].Name, back.Slides[i].LayoutSlide.Name);
        }
        finally
        {
            Directory.Delete(dir, true);
        }
    }

    [Fact]
    public void EmptyDeckValidates()
    {
        using IPresentation pres = new Presentation();
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(pres));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void EmptySlidesGetTheLayoutsContentPlaceholdersOnly()
    {
        using IPresentation pres = new Presentation();
        var title = pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.Title)!);
        Assert.Equal(2, title.Shapes.Count);
        Assert.All(title.Shapes, s => Assert.True(s.IsPlaceholder));
        // Position comes from the layout's placeholder: 1524000 EMU = 120 pt.
        Assert.Equal(120f, title.Shapes[0].X);
        var blank = pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!);
        Assert.Equal(0, blank.Shapes.Count);
        // The body placeholder of "Title and Content" inherits the master body's box.
        var content = pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.TitleAndObject)!);
        Assert.Equal(1825625f / 12700f, content.Shapes[1].Y, 3);
    }

    [Theory]
    [InlineData(SaveFormat.Pptx, "application/vnd.openxmlformats-officedocument.presentationml.presentation.main+xml", SourceFormat.Pptx)]
    [InlineData(SaveFormat.Pptm, "application/vnd.ms-powerpoint.presentation.macroEnabled.main+xml", SourceFormat.Pptm)]
    [InlineData(SaveFormat.Ppsx, "application/vnd.openxmlformats-officedocument.presentationml.slideshow.main+xml", SourceFormat.Ppsx)]
    [InlineData(SaveFormat.Ppsm, "application/vnd.ms-powerpoint.slideshow.macroEnabled.main+xml", SourceFormat.Ppsm)]
    [InlineData(SaveFormat.Potx, "application/vnd.openxmlformats-officedocument.presentationml.template.main+xml", SourceFormat.Potx)]
    [InlineData(SaveFormat.Potm, "application/vnd.ms-powerpoint.template.macroEnabled.main+xml", SourceFormat.Potm)]
    public void EachFormatGetsItsMainContentTypeAndReloadsAsThatFormat(SaveFormat format, string contentType, SourceFormat source)
    {
        using IPresentation pres = new Presentation();
        pres.Slides.AddEmptySlide(pres.LayoutSlides[0]);
        var bytes = TestFiles.SaveToBytes(pres, format);
        using (var doc = PresentationDocument.Open(new MemoryStream(bytes), false))
            Assert.Equal(contentType, doc.PresentationPart!.ContentType);
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        Assert.Equal(source, back.SourceFormat);
        Assert.Equal(1, back.Slides.Count);
        // Saving in a format leaves the live deck as it was.
        Assert.Equal(SourceFormat.Pptx, pres.SourceFormat);
    }

    [Fact]
    public void MacroFreeFormatsDropTheVbaPartAndMacroFormatsKeepIt()
    {
        var vba = FakeVbaBinary();
        byte[] pptm;
        using (IPresentation pres = new Presentation())
        {
            pres.VbaProject = Vba.VbaProjectFactory.Instance.ReadVbaProject(vba);
            pptm = TestFiles.SaveToBytes(pres, SaveFormat.Pptm);
            var pptx = TestFiles.SaveToBytes(pres, SaveFormat.Pptx);
            Assert.DoesNotContain(TestFiles.PartNames(pptx), n => n.EndsWith("vbaProject.bin", StringComparison.Ordinal));
            Assert.NotNull(pres.VbaProject);
        }
        Assert.Contains(TestFiles.PartNames(pptm), n => n.EndsWith("vbaProject.bin", StringComparison.Ordinal));
        using IPresentation back = new Presentation(new MemoryStream(pptm));
        Assert.Equal(SourceFormat.Pptm, back.SourceFormat);
        Assert.Equal(vba, back.VbaProject!.ToBinary());
        back.VbaProject = null;
        Assert.Null(back.VbaProject);
    }

    internal static byte[] FakeVbaBinary()
    {
        var bytes = new byte[1024];
        BitConverter.GetBytes(0xE11AB1A1E011CFD0UL).CopyTo(bytes, 0);
        for (int i = 8; i < bytes.Length; i++)
            bytes[i] = (byte)i;
        return bytes;
    }

    [Fact]
    public void FormatsNotWrittenYetSayWhatIsMissing()
    {
        using IPresentation pres = new Presentation();
        var ex = Assert.Throws<NotSupportedException>(() => pres.Save(new MemoryStream(), SaveFormat.Pdf));
        Assert.Contains("Pdf", ex.Message);
        Assert.Throws<ArgumentOutOfRangeException>(() => pres.Save(new MemoryStream(), (SaveFormat)999));
    }

    // Saves write the live package itself: edits between two saves must reach the second file,
    // and the slide count of the extended properties must follow the deck (and the subset).
    [Fact]
    public void RepeatedSavesCarryLaterEditsAndTheSlideCount()
    {
        using IPresentation pres = new Presentation();
        pres.Slides.AddEmptySlide(pres.LayoutSlides[0]).Name = "first";
        var before = TestFiles.SaveToBytes(pres);
        pres.Slides.AddEmptySlide(pres.LayoutSlides[0]).Name = "second";
        pres.Slides[0].Name = "renamed";
        var after = TestFiles.SaveToBytes(pres);
        using var ms = new MemoryStream();
        pres.Save(ms, new[] { 2 }, SaveFormat.Pptx);
        foreach (var (bytes, names) in new[] { (before, new[] { "first" }), (after, new[] { "renamed", "second" }), (ms.ToArray(), new[] { "second" }) })
        {
            using IPresentation back = new Presentation(new MemoryStream(bytes));
            Assert.Equal(names, back.Slides.Select(s => s.Name).ToArray());
            using var package = PresentationDocument.Open(new MemoryStream(bytes), false);
            Assert.Equal(names.Length.ToString(), package.ExtendedFilePropertiesPart!.Properties!.Slides!.Text);
            var errors = TestFiles.Validate(bytes);
            Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        }
    }

    [Fact]
    public void SavingChosenSlidesKeepsThemInOrder()
    {
        using IPresentation pres = new Presentation();
        for (int i = 0; i < 4; i++)
            pres.Slides.AddEmptySlide(pres.LayoutSlides[0]).Name = $"s{i}";
        using var ms = new MemoryStream();
        pres.Save(ms, new[] { 4, 2 }, SaveFormat.Pptx);
        Assert.Equal(4, pres.Slides.Count);
        using IPresentation back = new Presentation(new MemoryStream(ms.ToArray()));
        Assert.Equal(new[] { "s1", "s3" }, back.Slides.Select(s => s.Name).ToArray());
        var errors = TestFiles.Validate(ms.ToArray());
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        Assert.Throws<ArgumentOutOfRangeException>(() => pres.Save(new MemoryStream(), new[] { 5 }, SaveFormat.Pptx));
        Assert.Throws<ArgumentException>(() => pres.Save(new MemoryStream(), new[] { 1, 1 }, SaveFormat.Pptx));
    }

    [Fact]
    public void DisposedPresentationRefusesUse()
    {
        IPresentation pres = new Presentation();
        pres.Dispose();
        pres.Dispose();
        Assert.Throws<ObjectDisposedException>(() => pres.Slides.Count);
        Assert.Throws<ObjectDisposedException>(() => pres.Save(new MemoryStream(), SaveFormat.Pptx));
    }

    [Fact]
    public void FactoryIsOneInstanceAndTellsFormats()
    {
        Assert.Same(PresentationFactory.Instance, PresentationFactory.Instance);
        using var pres = PresentationFactory.Instance.CreatePresentation();
        var bytes = TestFiles.SaveToBytes(pres, SaveFormat.Potx);
        var info = PresentationFactory.Instance.GetPresentationInfo(new MemoryStream(bytes));
        Assert.True(info.IsPresentation);
        Assert.Equal(LoadFormat.Potx, info.LoadFormat);
        var junk = PresentationFactory.Instance.GetPresentationInfo(new MemoryStream(new byte[] { 1, 2, 3 }));
        Assert.False(junk.IsPresentation);
    }

    [Fact]
    public void VersionConstantsMatchTheAssembly()
    {
        var name = typeof(Presentation).Assembly.GetName();
        Assert.Equal(BuildVersionInfo.AssemblyVersion, name.Version!.ToString());
        Assert.Equal(BuildVersionInfo.ProductMajor, name.Version.Major);
        Assert.Equal(BuildVersionInfo.ProductMinor, name.Version.Minor);
        Assert.Equal(BuildVersionInfo.Product, name.Name);
    }
}
