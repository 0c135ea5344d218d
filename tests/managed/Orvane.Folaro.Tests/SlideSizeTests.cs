using System;
using System.IO;
using System.Linq;
using Orvane.Marel;
using Xunit;

namespace Orvane.Folaro.Tests;

public class SlideSizeTests
{
    private static IPresentation DeckWithTitleSlide(out IShape title)
    {
        IPresentation pres = new Presentation();
        var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides[0]);
        title = slide.Shapes[0];
        // Give the slide's title its own box so that scaling has something of the slide's to change.
        title.X = 100;
        title.Y = 50;
        title.Width = 400;
        title.Height = 100;
        return pres;
    }

    [Theory]
    [InlineData(SlideSizeType.OnScreen, 720f, 540f)]
    [InlineData(SlideSizeType.A4Paper, 780f, 540f)]
    [InlineData(SlideSizeType.OnScreen16x9, 720f, 405f)]
    [InlineData(SlideSizeType.Banner, 576f, 72f)]
    [InlineData(SlideSizeType.Widescreen, 960f, 540f)]
    public void PresetsSetTheirSizeAndReadBackAsTheirType(SlideSizeType type, float width, float height)
    {
        using IPresentation pres = new Presentation();
        pres.SlideSize.SetSize(type, SlideSizeScaleType.DoNotScale);
        Assert.Equal(new SizeF(width, height), pres.SlideSize.Size);
        using var back = new Presentation(new MemoryStream(TestFiles.SaveToBytes(pres)));
        Assert.Equal(type, ((IPresentation)back).SlideSize.Type);
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(pres));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void CustomSizeIsCheckedAndReportsPortrait()
    {
        using IPresentation pres = new Presentation();
        pres.SlideSize.SetSize(540, 720, SlideSizeScaleType.DoNotScale);
        Assert.Equal(SlideSizeType.Custom, pres.SlideSize.Type);
        Assert.Equal(SlideOrientation.Portrait, pres.SlideSize.Orientation);
        Assert.Throws<ArgumentOutOfRangeException>(() => pres.SlideSize.SetSize(10, 720, SlideSizeScaleType.DoNotScale));
        Assert.Throws<ArgumentOutOfRangeException>(() => pres.SlideSize.SetSize(540, 5000, SlideSizeScaleType.DoNotScale));
        Assert.Throws<ArgumentException>(() => pres.SlideSize.SetSize(SlideSizeType.Custom, SlideSizeScaleType.DoNotScale));
        Assert.Equal(new SizeF(540, 720), pres.SlideSize.Size);
    }

    [Fact]
    public void DoNotScaleLeavesShapesWhereTheyAre()
    {
        using var pres = DeckWithTitleSlide(out var title);
        pres.SlideSize.SetSize(SlideSizeType.OnScreen, SlideSizeScaleType.DoNotScale);
        Assert.Equal((100f, 50f, 400f, 100f), (title.X, title.Y, title.Width, title.Height));
    }

    [Fact]
    public void EnsureFitScalesUniformlyAndCentres()
    {
        using var pres = DeckWithTitleSlide(out var title);
        // 960x540 to 720x540: factor 0.75, content 720x405 centred vertically (67.5 pt down).
        pres.SlideSize.SetSize(SlideSizeType.OnScreen, SlideSizeScaleType.EnsureFit);
        Assert.Equal(75f, title.X, 2);
        Assert.Equal(50f * 0.75f + 67.5f, title.Y, 2);
        Assert.Equal(300f, title.Width, 2);
        Assert.Equal(75f, title.Height, 2);
        // The layout's and master's own placeholders scale as well.
        var layoutTitle = pres.LayoutSlides[0].Shapes[0];
        Assert.Equal(120f * 0.75f, layoutTitle.X, 2);
    }

    [Fact]
    public void MaximizeScalesToFillAndMayCrop()
    {
        using var pres = DeckWithTitleSlide(out var title);
        // 960x540 to 720x540 maximized: factor 1, shifted left by 120 pt.
        pres.SlideSize.SetSize(SlideSizeType.OnScreen, SlideSizeScaleType.Maximize);
        Assert.Equal(-20f, title.X, 2);
        Assert.Equal(400f, title.Width, 2);
    }
}
