using System;
using System.IO;
using System.Linq;
using Orvane.Folaro.Effects;
using Orvane.Marel;
using Xunit;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Tests;

// Shape effects (outer shadow, glow, soft edge) and the effective frame of placeholders.
public class EffectAndFrameTests
{
    private static IAutoShape NewShape(IPresentation pres) =>
        pres.Slides.AddEmptySlide(pres.LayoutSlides[0]).Shapes.AddAutoShape(ShapeType.Rect, 10, 10, 100, 50);

    [Fact]
    public void EffectsAreWrittenInSchemaOrderWhateverTheOrderOfEnabling()
    {
        using IPresentation pres = new Presentation();
        var shape = NewShape(pres);
        var fx = shape.EffectFormat;
        Assert.True(fx.IsNoEffects);
        Assert.Null(fx.OuterShadowEffect);
        fx.EnableSoftEdgeEffect();
        fx.EnableOuterShadowEffect();
        fx.EnableGlowEffect();
        shape.LineFormat.Width = 2; // a:ln goes before a:effectLst
        var spPr = ((AutoShape)shape).Element.GetFirstChild<DocumentFormat.OpenXml.Presentation.ShapeProperties>()!;
        Assert.Equal(new[] { "glow", "outerShdw", "softEdge" }, spPr.GetFirstChild<A.EffectList>()!.ChildElements.Select(c => c.LocalName));
        var names = spPr.ChildElements.Select(c => c.LocalName).ToList();
        Assert.True(names.IndexOf("ln") < names.IndexOf("effectLst"), string.Join(",", names));
        Assert.False(fx.IsNoEffects);

        // Enabling again keeps the effect as it is.
        fx.GlowEffect!.Radius = 9;
        fx.EnableGlowEffect();
        Assert.Equal(9f, fx.GlowEffect!.Radius);

        fx.DisableGlowEffect();
        fx.DisableOuterShadowEffect();
        fx.DisableSoftEdgeEffect();
        Assert.True(fx.IsNoEffects);
        Assert.Null(fx.GlowEffect);
    }

    [Fact]
    public void OuterShadowValuesAreStoredInTheirUnits()
    {
        using IPresentation pres = new Presentation();
        var shape = NewShape(pres);
        shape.EffectFormat.EnableOuterShadowEffect();
        var shadow = shape.EffectFormat.OuterShadowEffect!;
        Assert.Equal((4f, 3f, 45f), (shadow.BlurRadius, shadow.Distance, shadow.Direction));
        Assert.Equal(Color.FromArgb(102, 0, 0, 0), shadow.ShadowColor.Color);
        shadow.BlurRadius = 6;
        shadow.Distance = 2.5f;
        shadow.Direction = -90;
        shadow.ScaleHorizontal = 1.5f;
        shadow.ScaleVertical = 0.5f;
        shadow.SkewHorizontal = 10;
        shadow.SkewVertical = -20;
        shadow.RectangleAlign = RectangleAlignment.BottomRight;
        shadow.RotateShadowWithShape = true;
        shadow.ShadowColor.Color = Color.FromArgb(255, 10, 20, 30);
        var e = ((AutoShape)shape).Element.Descendants<A.OuterShadow>().Single();
        Assert.Equal((76200L, 31750L, 16200000), (e.BlurRadius!.Value, e.Distance!.Value, e.Direction!.Value));
        Assert.Equal((150000, 50000, 600000, -1200000), (e.HorizontalRatio!.Value, e.VerticalRatio!.Value, e.HorizontalSkew!.Value, e.VerticalSkew!.Value));
        Assert.Equal(A.RectangleAlignmentValues.BottomRight, e.Alignment!.Value);
        Assert.Equal("0A141E", e.RgbColorModelHex!.Val!.Value);
        Assert.Equal(270f, shadow.Direction);
        Assert.Throws<ArgumentOutOfRangeException>(() => shadow.BlurRadius = -1);
        Assert.Throws<ArgumentOutOfRangeException>(() => shadow.SkewHorizontal = 90);

        // A view of a disabled effect says so instead of writing into nothing.
        shape.EffectFormat.DisableOuterShadowEffect();
        Assert.Throws<PptxEditException>(() => shadow.Distance = 1);
    }

    [Fact]
    public void GlowAndSoftEdgeReadBack()
    {
        using IPresentation pres = new Presentation();
        var shape = NewShape(pres);
        shape.EffectFormat.EnableGlowEffect();
        shape.EffectFormat.EnableSoftEdgeEffect();
        shape.EffectFormat.GlowEffect!.Radius = 7.5f;
        shape.EffectFormat.GlowEffect!.Color.SchemeColor = SchemeColor.Accent2;
        shape.EffectFormat.SoftEdgeEffect!.Radius = 3;
        var bytes = TestFiles.SaveToBytes(pres);
        Assert.Empty(TestFiles.Validate(bytes));
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        var fx = back.Slides[0].Shapes.Last().EffectFormat;
        Assert.Equal(7.5f, fx.GlowEffect!.Radius);
        Assert.Equal(SchemeColor.Accent2, fx.GlowEffect.Color.SchemeColor);
        Assert.Equal(3f, fx.SoftEdgeEffect!.Radius);
        Assert.Null(fx.OuterShadowEffect);
    }

    [Fact]
    public void EffectsOnShapesWithoutShapePropertiesAreRefused()
    {
        using IPresentation pres = new Presentation();
        var group = pres.Slides.AddEmptySlide(pres.LayoutSlides[0]).Shapes.AddGroupShape();
        group.EffectFormat.EnableGlowEffect(); // a group has grpSpPr
        Assert.NotNull(group.EffectFormat.GlowEffect);
    }

    // ph-inherit-props.pptx: the master places the title at (457200, 274638) sized 8229600 x 1143000;
    // the layout's content placeholder idx 10 sits at (468312, 1700212) sized 8208143 x 4537099;
    // the layout's title has no transform. Slide 1 has its own transform on the content placeholder
    // (the same numbers), slide 2 has none on either placeholder.
    [Fact]
    public void PlaceholderFramesComeFromLayoutThenMaster()
    {
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("python-pptx/ph-inherit-props.pptx"));
        var before = File.ReadAllBytes(TestFiles.CorpusFile("python-pptx/ph-inherit-props.pptx"));
        var title = (36f, 274638 / 12700f, 648f, 90f);
        var content = (468312 / 12700f, 1700212 / 12700f, 8208143 / 12700f, 4537099 / 12700f);
        foreach (var slide in pres.Slides)
        {
            var t = slide.Shapes.First(s => s.Placeholder!.Type == PlaceholderType.Title);
            var c = slide.Shapes.First(s => s.Placeholder!.Type != PlaceholderType.Title);
            var te = t.Frame.GetEffective();
            var ce = c.Frame.GetEffective();
            Assert.Equal(title, (te.X, te.Y, te.Width, te.Height));
            Assert.Equal(title, (t.X, t.Y, t.Width, t.Height));
            Assert.Equal(content, (ce.X, ce.Y, ce.Width, ce.Height));
            Assert.Equal(content, (c.X, c.Y, c.Width, c.Height));
            Assert.Equal((0f, false, false), (te.Rotation, te.FlipH, te.FlipV));
        }
        var layoutTitle = pres.LayoutSlides[0].Shapes.First(s => s.Placeholder!.Type == PlaceholderType.Title);
        Assert.Equal(title, (layoutTitle.X, layoutTitle.Y, layoutTitle.Width, layoutTitle.Height));

        // Reading wrote nothing: the slides save as they were read.
        var after = TestFiles.SaveToBytes(pres);
        Assert.DoesNotContain(TestFiles.ChangedEntries(before, after), e => e.Contains("slide", StringComparison.Ordinal));
    }

    // mst-placeholders.pptx: a master with a title at (457200, 274638) 8229600 x 1143000 and a body
    // at (457200, 1600200) 8229600 x 4525963, and one blank layout with no placeholders.
    [Fact]
    public void MasterPlaceholdersHaveTheirOwnFrames()
    {
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("python-pptx/mst-placeholders.pptx"));
        var shapes = pres.Masters[0].Shapes;
        var title = shapes.First(s => s.Name == "Title Placeholder 1").Frame.GetEffective();
        var body = shapes.First(s => s.Name == "Text Placeholder 2").Frame.GetEffective();
        Assert.Equal((36f, 274638 / 12700f, 648f, 90f), (title.X, title.Y, title.Width, title.Height));
        Assert.Equal((36f, 126f, 648f, 4525963 / 12700f), (body.X, body.Y, body.Width, body.Height));
    }

    [Fact]
    public void EffectiveFrameTakesRotationAndFlipsFromTheSameTransformAsThePosition()
    {
        using IPresentation pres = new Presentation();
        var layout = pres.LayoutSlides.GetByType(SlideLayoutType.Title)!;
        var layoutTitle = layout.Shapes.First(s => s.Placeholder?.Type is PlaceholderType.CenteredTitle or PlaceholderType.Title);
        layoutTitle.Frame = new ShapeFrame(10, 20, 300, 40, NullableBool.True, NullableBool.False, 15);
        var slide = pres.Slides.AddEmptySlide(layout);
        var title = slide.Shapes.First(s => s.Placeholder?.Type is PlaceholderType.CenteredTitle or PlaceholderType.Title);
        var e = title.Frame.GetEffective();
        Assert.Equal((10f, 20f, 300f, 40f, 15f, true, false), (e.X, e.Y, e.Width, e.Height, e.Rotation, e.FlipH, e.FlipV));
        // The local values are the shape's own: no rotation or flip of its own.
        Assert.Equal((0f, NullableBool.False), (title.Rotation, title.Frame.FlipH));

        // A user-made frame is its own effective value.
        var made = new ShapeFrame(1, 2, 3, 4, NullableBool.NotDefined, NullableBool.True, 5).GetEffective();
        Assert.Equal((false, true, 5f), (made.FlipH, made.FlipV, made.Rotation));
    }
}
