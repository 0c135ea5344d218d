using System;
using System.IO;
using System.Linq;
using System.Xml.Linq;
using Xunit;

namespace Orvane.Folaro.Tests;

public class ShapeCollectionTests
{
    private static IPresentation Reload(IPresentation pres) => new Presentation(new MemoryStream(TestFiles.SaveToBytes(pres)));

    private static (IPresentation Pres, ISlide Slide) BlankSlide()
    {
        IPresentation pres = new Presentation();
        var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!);
        return (pres, slide);
    }

    [Fact]
    public void ShapeTypeListsExactlyThePresetsOfTheEmbeddedDefinitions()
    {
        var file = Path.Combine(TestFiles.Corpus, "..", "data", "ooxml", "presetShapeDefinitions.xml");
        var names = XDocument.Load(file).Root!.Elements().Select(e => e.Name.LocalName).ToList();
        var presets = Enum.GetValues<ShapeType>().Where(t => t >= 0).Select(t => char.ToLowerInvariant(t.ToString()[0]) + t.ToString()[1..]).ToList();
        Assert.Equal(187, names.Count);
        Assert.Equal(names.OrderBy(n => n, StringComparer.Ordinal), presets.OrderBy(n => n, StringComparer.Ordinal));
        Assert.Equal(names.OrderBy(n => n, StringComparer.Ordinal), PresetGeometries.Names.OrderBy(n => n, StringComparer.Ordinal));
    }

    [Fact]
    public void EveryPresetCanBeAddedAndTheDeckValidates()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            foreach (var type in Enum.GetValues<ShapeType>().Where(t => t >= 0))
                slide.Shapes.AddAutoShape(type, 10, 20, 100, 50);
            var bytes = TestFiles.SaveToBytes(pres);
            var errors = TestFiles.Validate(bytes);
            Assert.True(errors.Count == 0, TestFiles.Describe(errors));
            using IPresentation back = new Presentation(new MemoryStream(bytes));
            var shapes = back.Slides[0].Shapes.OfType<IAutoShape>().ToList();
            Assert.Equal(Enum.GetValues<ShapeType>().Where(t => t >= 0), shapes.Select(s => s.ShapeType));
            Assert.All(shapes, s => Assert.Equal((10f, 20f, 100f, 50f), (s.X, s.Y, s.Width, s.Height)));
            var ids = shapes.Select(s => s.UniqueId).ToList();
            Assert.Equal(ids.Count, ids.Distinct().Count());
        }
    }

    [Fact]
    public void AdjustmentsReadDefaultsAndWriteValues()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            // roundRect has one adjustment, adj = 16667; rightArrow has adj1 = 50000 and adj2 = 50000.
            var round = slide.Shapes.AddAutoShape(ShapeType.RoundRect, 0, 0, 100, 100);
            Assert.Equal("adj", Assert.Single(round.Adjustments).Name);
            Assert.Equal(16667, round.Adjustments[0].RawValue);
            round.Adjustments[0].FractionValue = 0.25f;
            var arrow = slide.Shapes.AddAutoShape(ShapeType.RightArrow, 0, 0, 100, 100);
            Assert.Equal(new[] { "adj1", "adj2" }, arrow.Adjustments.Select(a => a.Name));
            var arc = slide.Shapes.AddAutoShape(ShapeType.Arc, 0, 0, 100, 100);
            arc.Adjustments[0].AngleValue = 90f;
            using var back = Reload(pres);
            var shapes = back.Slides[0].Shapes.OfType<IAutoShape>().ToList();
            Assert.Equal(25000, shapes[0].Adjustments[0].RawValue);
            Assert.Equal(50000, shapes[1].Adjustments[1].RawValue);
            Assert.Equal(90f, shapes[2].Adjustments[0].AngleValue);
            Assert.Throws<ArgumentOutOfRangeException>(() => shapes[0].Adjustments[1]);
            // Changing the geometry starts from the new preset's defaults.
            shapes[0].ShapeType = ShapeType.Rect;
            Assert.Equal(0, shapes[0].Adjustments.Count);
        }
    }

    [Fact]
    public void FrameRotationAndFlipsRoundTrip()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var shape = slide.Shapes.AddAutoShape(ShapeType.Triangle, 1, 2, 3, 4);
            shape.Rotation = -90f;
            Assert.Equal(270f, shape.Rotation);
            shape.Frame = new ShapeFrame(10, 20, 30, 40, NullableBool.True, NullableBool.NotDefined, 45f);
            shape.Frame = new ShapeFrame(10, 20, 30, 40, NullableBool.NotDefined, NullableBool.True, 45f);
            using var back = Reload(pres);
            var frame = back.Slides[0].Shapes[0].Frame;
            Assert.Equal(new ShapeFrame(10, 20, 30, 40, NullableBool.True, NullableBool.True, 45f), frame);
            Assert.Throws<ArgumentOutOfRangeException>(() => new ShapeFrame(0, 0, -1, 1, NullableBool.False, NullableBool.False, 0));
            Assert.Throws<ArgumentOutOfRangeException>(() => back.Slides[0].Shapes[0].Rotation = float.NaN);
            Assert.Throws<ArgumentOutOfRangeException>(() => slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, -5, 5));
            Assert.Equal(1, slide.Shapes.Count);
        }
    }

    [Fact]
    public void RemoveReorderAndZOrder()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var a = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);
            var b = slide.Shapes.AddAutoShape(ShapeType.Ellipse, 0, 0, 10, 10);
            var c = slide.Shapes.AddAutoShape(ShapeType.Triangle, 0, 0, 10, 10);
            slide.Shapes.Reorder(0, c);
            Assert.Equal(new IShape[] { c, a, b }, slide.Shapes.ToArray());
            Assert.Equal(2, b.ZOrderPosition);
            slide.Shapes.Remove(a);
            slide.Shapes.RemoveAt(0);
            Assert.Equal(new IShape[] { b }, slide.Shapes.ToArray());
            Assert.Throws<ArgumentException>(() => slide.Shapes.Remove(a));
            Assert.Throws<ArgumentOutOfRangeException>(() => slide.Shapes.Reorder(1, b));
            var errors = TestFiles.Validate(TestFiles.SaveToBytes(pres));
            Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        }
    }

    [Fact]
    public void GroupsGrowWithTheirShapesAndConnectorsAreAdded()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var group = slide.Shapes.AddGroupShape();
            group.Shapes.AddAutoShape(ShapeType.Rect, 10, 10, 20, 20);
            group.Shapes.AddAutoShape(ShapeType.Ellipse, 50, 40, 10, 10);
            Assert.Equal((10f, 10f, 50f, 40f), (group.X, group.Y, group.Width, group.Height));
            var line = slide.Shapes.AddConnector(ShapeType.BentConnector3, 0, 0, 100, 50);
            Assert.Equal(ShapeType.BentConnector3, line.ShapeType);
            using var back = Reload(pres);
            var g = Assert.IsAssignableFrom<IGroupShape>(back.Slides[0].Shapes[0]);
            Assert.Equal(2, g.Shapes.Count);
            Assert.Equal(1, g.Shapes[1].ZOrderPosition);
            Assert.IsAssignableFrom<IConnector>(back.Slides[0].Shapes[1]);
            var errors = TestFiles.Validate(TestFiles.SaveToBytes(back));
            Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        }
    }

    [Fact]
    public void ClonesGetFreshIdsAndBringTheirPicturesAcrossDecks()
    {
        using IPresentation source = new Presentation(TestFiles.CorpusFile("poi/2411-Performance_Up.pptx"));
        var picture = SlideCollectionTests.SlideOfPart(source, "/slide10.xml").Shapes.OfType<IPictureFrame>().First();
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var rect = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);
            var copy = slide.Shapes.InsertClone(0, rect);
            Assert.NotEqual(rect.UniqueId, copy.UniqueId);
            Assert.Same(copy, slide.Shapes[0]);
            var pic = slide.Shapes.AddClone(picture);
            Assert.IsAssignableFrom<IPictureFrame>(pic);
            Assert.Equal(picture.Width, pic.Width);
            var bytes = TestFiles.SaveToBytes(pres);
            Assert.Contains(TestFiles.PartNames(bytes), n => n.StartsWith("ppt/media/", StringComparison.Ordinal));
            var errors = TestFiles.Validate(bytes);
            Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        }
    }

    [Fact]
    public void PlaceholdersTellTheirKindAndIndex()
    {
        using IPresentation pres = new Presentation();
        var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.Title)!);
        var kinds = slide.Shapes.Select(s => s.Placeholder?.Type).ToList();
        Assert.Contains(PlaceholderType.CenteredTitle, kinds);
        Assert.Contains(PlaceholderType.Subtitle, kinds);
        var added = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 1, 1);
        Assert.Null(added.Placeholder);
        Assert.Equal(Direction.Horizontal, slide.Shapes[0].Placeholder!.Orientation);
    }
    // A new shape's id is above every id on the slide: shapes inside groups, and (for the
    // ids the walk must not miss) anything else in the tree that carries a cNvPr.
    [Theory]
    [InlineData("python-pptx/shp-groupshape.pptx")]
    [InlineData("poi/2411-Performance_Up.pptx")]
    public void NewShapeIdsAreAboveEveryIdOnTheSlide(string deck)
    {
        using IPresentation pres = new Presentation(TestFiles.CorpusFile(deck));
        foreach (var slide in pres.Slides)
        {
            uint max = ((Slide)slide).Part.Slide.Descendants().Where(e => e.LocalName == "cNvPr")
                .Select(e => uint.Parse(e.GetAttribute("id", "").Value!)).DefaultIfEmpty(1u).Max();
            Assert.Equal(max + 1, slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10).UniqueId);
        }
    }
}
