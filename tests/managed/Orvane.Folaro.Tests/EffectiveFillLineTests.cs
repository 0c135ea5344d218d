using System;
using System.IO;
using System.Linq;
using Orvane.Marel;
using Xunit;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Tests;

// Effective fills and outlines: the shape's own, its placeholders', then the theme style its
// shape style refers to, with the reference's colour standing in for phClr.
public class EffectiveFillLineTests
{
    private static string Hex(Color c) => $"{c.R:X2}{c.G:X2}{c.B:X2}";

    private static void Near(string expected, Color actual)
    {
        int e = Convert.ToInt32(expected, 16);
        int[] want = { (e >> 16) & 255, (e >> 8) & 255, e & 255 };
        int[] got = { actual.R, actual.G, actual.B };
        Assert.True(want.Zip(got).All(p => Math.Abs(p.First - p.Second) <= 1), $"expected {expected}, got {Hex(actual)}");
    }

    // dml-line.pptx, slide 1, worked out from its XML: three rounded rectangles with the style
    // lnRef 1 / fillRef 3 / accent1 (4F81BD) of the "Office" theme.
    [Fact]
    public void StyleReferencesResolveIntoTheThemeAsWorkedOutByHand()
    {
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("python-pptx/dml-line.pptx"));
        var shapes = pres.Slides[0].Shapes;
        IShape Named(string n) => shapes.First(s => s.Name == n);

        // 1: nothing of its own. Fill style 3 is a linear gradient at 270° with stops at 0, 80%, 100%
        // of accent1 shaded; line style 1 is 9525 EMU, flat-capped, solid, accent1 shaded 95%.
        var fill = Named("Rounded Rectangle 1").FillFormat.GetEffective();
        Assert.Equal(FillType.Gradient, fill.FillType);
        Assert.Equal((GradientShape.Linear, 270f), (fill.GradientShape, fill.LinearGradientAngle));
        Assert.Equal(new[] { 0f, 0.8f, 1f }, fill.GradientStops.Select(s => s.Position));
        // shade 51% / 93% / 94% with satMod 130% / 130% / 135%, in linear light as Office computes them.
        Near("2C5D98", fill.GradientStops[0].Color);
        Near("3C7BC7", fill.GradientStops[1].Color);
        Near("3A7CCB", fill.GradientStops[2].Color);
        var line = Named("Rounded Rectangle 1").LineFormat.GetEffective();
        Assert.Equal((0.75f, LineDashStyle.Solid, LineCapStyle.Flat, LineStyle.Single), (line.Width, line.DashStyle, line.CapStyle, line.Style));
        Assert.Equal(FillType.Solid, line.FillFormat.FillType);
        Assert.True(line.SolidFillColor.B is > 0xA0 and < 0xBD, Hex(line.SolidFillColor));

        // 2: its own solid FCD5B5 fill and no line; the width still comes from the style.
        var second = Named("Rounded Rectangle 2");
        Assert.Equal((FillType.Solid, "FCD5B5"), (second.FillFormat.GetEffective().FillType, Hex(second.FillFormat.GetEffective().SolidFillColor)));
        Assert.Equal(FillType.NoFill, second.LineFormat.GetEffective().FillFormat.FillType);
        Assert.Equal(Color.Empty, second.LineFormat.GetEffective().SolidFillColor);

        // 3: accent3 (9BBB59) at lumMod 40% + lumOff 60% is D7E4BD; its own 19050 EMU red line, dashes from the style.
        var third = Named("Rounded Rectangle 3");
        Near("D7E4BD", third.FillFormat.GetEffective().SolidFillColor);
        var thirdLine = third.LineFormat.GetEffective();
        Assert.Equal((1.5f, "FF0000", LineDashStyle.Solid), (thirdLine.Width, Hex(thirdLine.SolidFillColor), thirdLine.DashStyle));
    }

    // font-color.pptx: text boxes with their own a:noFill, no outline and no shape style draw nothing.
    [Fact]
    public void UnstyledTextBoxesHaveNeitherFillNorLine()
    {
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("python-pptx/font-color.pptx"));
        Assert.NotEmpty(pres.Slides[0].Shapes);
        foreach (var shape in pres.Slides[0].Shapes)
        {
            Assert.Equal(FillType.NoFill, shape.FillFormat.FillType);
            Assert.Equal(FillType.NoFill, shape.FillFormat.GetEffective().FillType);
            var line = shape.LineFormat.GetEffective();
            Assert.Equal((FillType.NoFill, 0f), (line.FillFormat.FillType, line.Width));
        }
    }

    [Fact]
    public void PlaceholdersInheritFillAndLinePropertyByProperty()
    {
        using IPresentation pres = new Presentation();
        var layout = pres.LayoutSlides.GetByType(SlideLayoutType.Title)!;
        var slide = pres.Slides.AddEmptySlide(layout);
        IShape Title(IBaseSlide s) => s.Shapes.First(x => x.Placeholder?.Type is PlaceholderType.Title or PlaceholderType.CenteredTitle);
        var master = Title(pres.Masters[0]);
        var onLayout = Title(layout);
        var onSlide = Title(slide);
        Assert.Equal(FillType.NoFill, onSlide.FillFormat.GetEffective().FillType);

        master.FillFormat.SolidFillColor.Color = Color.FromArgb(0x11, 0x22, 0x33);
        master.LineFormat.Width = 5;
        master.LineFormat.FillFormat.SolidFillColor.Color = Color.FromArgb(0xFF, 0, 0);
        Assert.Equal("112233", Hex(onSlide.FillFormat.GetEffective().SolidFillColor));
        onLayout.FillFormat.PatternFormat.PatternStyle = PatternStyle.Plaid;
        onLayout.FillFormat.PatternFormat.ForeColor.SchemeColor = SchemeColor.Accent2;
        onLayout.LineFormat.DashStyle = LineDashStyle.Dot;
        var fill = onSlide.FillFormat.GetEffective();
        Assert.Equal((FillType.Pattern, PatternStyle.Plaid), (fill.FillType, fill.PatternStyle));
        Assert.Equal(pres.Masters[0].Theme.ColorScheme.Accent2.ToArgb(), fill.PatternForeColor.ToArgb());
        // The line's width and colour come from the master, its dashes from the layout.
        var line = onSlide.LineFormat.GetEffective();
        Assert.Equal((5f, LineDashStyle.Dot, "FF0000"), (line.Width, line.DashStyle, Hex(line.SolidFillColor)));
        onSlide.FillFormat.FillType = FillType.NoFill;
        Assert.Equal(FillType.NoFill, onSlide.FillFormat.GetEffective().FillType);
        // The local view still says what the slide itself sets.
        Assert.True(float.IsNaN(onSlide.LineFormat.Width));
    }

    [Fact]
    public void GroupFillsTakeTheGroupsFill()
    {
        using IPresentation pres = new Presentation();
        var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!);
        var group = slide.Shapes.AddGroupShape();
        var child = group.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);
        child.FillFormat.FillType = FillType.Group;
        Assert.Equal(FillType.NoFill, child.FillFormat.GetEffective().FillType);
        group.FillFormat.SolidFillColor.Color = Color.FromArgb(0x0A, 0x0B, 0x0C);
        Assert.Equal((FillType.Solid, "0A0B0C"), (child.FillFormat.GetEffective().FillType, Hex(child.FillFormat.GetEffective().SolidFillColor)));
    }

    [Fact]
    public void FillReferenceIndicesPickTheList()
    {
        using IPresentation pres = new Presentation();
        var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!);
        var shape = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);
        var fillRef = ((AutoShape)shape).Element.Descendants<A.FillReference>().Single();
        var accent1 = pres.Masters[0].Theme.ColorScheme.Accent1;
        Assert.Equal(accent1.ToArgb(), shape.FillFormat.GetEffective().SolidFillColor.ToArgb());
        // 1002: the second background fill style, phClr at lumMod 95%: darker than the accent, same hue.
        fillRef.Index = 1002;
        var background = shape.FillFormat.GetEffective().SolidFillColor;
        Assert.True(background.GetBrightness() < accent1.GetBrightness(), $"{Hex(background)} vs {Hex(accent1)}");
        Assert.Equal(accent1.GetHue(), background.GetHue(), 0);
        fillRef.Index = 0;
        Assert.Equal(FillType.NoFill, shape.FillFormat.GetEffective().FillType);
        fillRef.Index = 7;
        Assert.Equal(FillType.NoFill, shape.FillFormat.GetEffective().FillType);
        // The line reference's colour stands in for the theme line's placeholder colour.
        var lnRef = ((AutoShape)shape).Element.Descendants<A.LineReference>().Single();
        lnRef.RemoveAllChildren();
        lnRef.AppendChild(new A.RgbColorModelHex { Val = "336699" });
        Assert.Equal("336699", Hex(shape.LineFormat.GetEffective().SolidFillColor));
    }

    [Fact]
    public void EveryCorpusShapesEffectiveFillAndLineRead()
    {
        int shapes = 0;
        foreach (var (deck, pres) in TestFiles.LoadableCorpusDecks())
        {
            var slides = TestFiles.AllSlides(pres);
            foreach (var slide in slides)
                foreach (var shape in TestFiles.AllShapes(slide.Shapes))
                {
                    var fill = shape.FillFormat.GetEffective();
                    var line = shape.LineFormat.GetEffective();
                    _ = (fill.FillType, fill.SolidFillColor, fill.GradientStops.Length, fill.ImageData.Length, line.Width, line.SolidFillColor, line.DashStyle);
                    Assert.True(line.Width >= 0, $"{Path.GetFileName(deck)}: {shape}");
                    shapes++;
                }
        }
        Assert.True(shapes > 1000, $"only {shapes} shapes read");
    }
}
