using System;
using System.Collections.Generic;
using System.IO;
using System.IO.Compression;
using System.Linq;
using System.Runtime.CompilerServices;
using DocumentFormat.OpenXml.Packaging;
using Orvane.Marel;
using Orvane.Marel.Imaging;
using Xunit;

namespace Orvane.Folaro.Tests;

// What one open presentation keeps beside its package (views, media store): each deck has its
// own, parts find the state of the deck they belong to, copies between two decks open at once
// do not mix them, and a disposed or dropped deck lets go of it.
public class DocumentStateTests
{
    private static readonly byte[] Png = MediaTests.Raster(12, 9, ImageFormat.Png, Color.Teal);

    // Each group of media entries with equal bytes, by size, of a saved package.
    private static List<int> MediaCopies(byte[] package)
    {
        using var zip = new ZipArchive(new MemoryStream(package), ZipArchiveMode.Read);
        return zip.Entries
            .Where(e => e.FullName.StartsWith("ppt/media/", StringComparison.Ordinal))
            .Select(e =>
            {
                using var stream = e.Open();
                using var copy = new MemoryStream();
                stream.CopyTo(copy);
                return Convert.ToBase64String(copy.ToArray());
            })
            .GroupBy(b => b)
            .Select(g => g.Count())
            .ToList();
    }

    private static ISlide MediaSlide(IPresentation pres)
    {
        var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides[6]);
        slide.Shapes.AddPictureFrame(ShapeType.Rect, 0, 0, 40, 30, pres.Images.AddImage(Png));
        slide.Shapes.AddVideoFrame(50, 0, 160, 90, pres.Videos.AddVideo(MediaTests.Mp4()));
        return slide;
    }

    [Fact]
    public void SlidesCopiedBetweenTwoOpenDecksUseTheTargetsMediaAndLeaveTheSourceAlone()
    {
        using var source = new Presentation();
        using var target = new Presentation();
        var sourceSlide = MediaSlide(source);
        MediaSlide(target);
        var sourceImage = source.Images.AddImage(Png);
        int sourceImages = source.Images.Count;

        // Twice by slide, once by shape: every copy finds the bytes the target already holds.
        var first = target.Slides.AddClone(sourceSlide);
        target.Slides.AddClone(sourceSlide);
        var byShape = target.Slides.AddEmptySlide(target.LayoutSlides[6]);
        foreach (var shape in sourceSlide.Shapes)
            byShape.Shapes.AddClone(shape);

        // A part of each deck leads to that deck's own state, the copies included.
        var sourceState = source.State;
        var targetState = target.State;
        Assert.NotSame(sourceState, targetState);
        Assert.Same(sourceState, DocumentState.Of(((Slide)sourceSlide).Part));
        Assert.Same(targetState, DocumentState.Of(((Slide)first).Part));
        Assert.Same(targetState, DocumentState.Of(((Slide)byShape).Part));

        // The copied picture is the target's image, the one adding the same bytes gives back.
        var shown = ((IPictureFrame)first.Shapes[0]).PictureFormat.Picture.Image!;
        Assert.Same(target.Images.AddImage(Png), shown);
        Assert.NotSame(sourceImage, shown);
        Assert.Same(target.Videos[0], ((IVideoFrame)first.Shapes[1]).EmbeddedVideo);
        Assert.Same(target.Videos[0], ((IVideoFrame)byShape.Shapes[1]).EmbeddedVideo);
        Assert.Equal(1, target.Videos.Count);
        Assert.Equal(target.Images.Count, target.Images.Select(i => Convert.ToBase64String(i.BinaryData)).Distinct().Count());

        // The source saw none of it.
        Assert.Equal(sourceImages, source.Images.Count);
        Assert.Same(sourceImage, source.Images.AddImage(Png));
        Assert.Single(source.Slides);

        var sourceBytes = TestFiles.SaveToBytes(source);
        var targetBytes = TestFiles.SaveToBytes(target);
        Assert.All(MediaCopies(sourceBytes), n => Assert.Equal(1, n));
        Assert.All(MediaCopies(targetBytes), n => Assert.Equal(1, n));
        Assert.Equal(MediaCopies(sourceBytes).Count, MediaCopies(targetBytes).Count);

        using var sourceBack = new Presentation(new MemoryStream(sourceBytes));
        using var targetBack = new Presentation(new MemoryStream(targetBytes));
        Assert.Single(sourceBack.Slides);
        Assert.Equal(4, targetBack.Slides.Count);
        foreach (var slide in targetBack.Slides.Skip(1))
        {
            Assert.Equal(Png, ((IPictureFrame)slide.Shapes[0]).PictureFormat.Picture.Image!.BinaryData);
            Assert.Same(targetBack.Videos[0], ((IVideoFrame)slide.Shapes[1]).EmbeddedVideo);
        }
        var errors = TestFiles.Validate(targetBytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void ADisposedDeckDropsItsViewsAndRefusesUse()
    {
        var pres = new Presentation();
        var (slide, picture, part) = Views(pres);
        Collect();
        // While the deck is open its caches keep the one view of each part and element.
        Assert.True(slide.IsAlive);
        Assert.True(picture.IsAlive);

        ((IDisposable)pres).Dispose();
        Collect();
        Assert.False(slide.IsAlive);
        Assert.False(picture.IsAlive);
        Assert.Throws<ObjectDisposedException>(() => pres.Slides);
        Assert.Throws<ObjectDisposedException>(() => pres.Images);
        Assert.Throws<ObjectDisposedException>(() => DocumentState.Of(part));
        ((IDisposable)pres).Dispose();
        GC.KeepAlive(pres);
    }

    [Fact]
    public void ADroppedDeckTakesItsStateWithIt()
    {
        var (deck, state) = DroppedDeck();
        Collect();
        Assert.False(deck.IsAlive);
        Assert.False(state.IsAlive);
    }

    [MethodImpl(MethodImplOptions.NoInlining)]
    private static (WeakReference Slide, WeakReference Picture, OpenXmlPart Part) Views(Presentation pres)
    {
        var slide = MediaSlide(pres);
        Assert.Same(slide, pres.Slides[0]);
        Assert.Same(slide.Shapes[0], pres.Slides[0].Shapes[0]);
        return (new WeakReference(slide), new WeakReference(slide.Shapes[0]), ((Slide)slide).Part);
    }

    [MethodImpl(MethodImplOptions.NoInlining)]
    private static (WeakReference Deck, WeakReference State) DroppedDeck()
    {
        var pres = new Presentation();
        MediaSlide(pres);
        _ = pres.Images.Count;
        return (new WeakReference(pres), new WeakReference(pres.State));
    }

    private static void Collect()
    {
        for (int i = 0; i < 3; i++)
        {
            GC.Collect();
            GC.WaitForPendingFinalizers();
        }
    }
}
