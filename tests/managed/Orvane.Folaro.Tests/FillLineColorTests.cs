using System;
using System.IO;
using System.Linq;
using Orvane.Marel;
using Xunit;

namespace Orvane.Folaro.Tests;

// Fills, outlines and colours of shapes and text: every kind written, validated and read
// back; colours resolved through the theme, the colour map and their operations.
public class FillLineColorTests
{
    private static readonly byte[] Gif = Convert.FromBase64String("R0lGODlhAQABAIAAAAAAAP///yH5BAEAAAAALAAAAAABAAEAAAIBRAA7");

    private static IPresentation Reload(IPresentation pres) => new Presentation(new MemoryStream(TestFiles.SaveToBytes(pres)));

    private static (IPresentation Pres, ISlide Slide) BlankSlide()
    {
        IPresentation pres = new Presentation();
        var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!);
        return (pres, slide);
    }

    private static void AssertValid(IPresentation pres)
    {
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(pres));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    private static string Hex(Color c) => $"{c.A:X2}{c.R:X2}{c.G:X2}{c.B:X2}";

    [Fact]
    public void EveryFillKindRoundTrips()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var shapes = Enumerable.Range(0, 7).Select(i => slide.Shapes.AddAutoShape(ShapeType.Rect, 10 + 60 * i, 10, 50, 50)).ToList();
            shapes[0].FillFormat.FillType = FillType.NoFill;
            shapes[1].FillFormat.SolidFillColor.Color = Color.FromArgb(128, 10, 20, 30);
            var grad = shapes[2].FillFormat.GradientFormat;
            grad.GradientStops.Add(0.5f, SchemeColor.Accent3);
            grad.GradientStops.Insert(1, 0.25f, Color.FromArgb(0, 255, 0));
            grad.LinearGradientAngle = 450;
            shapes[3].FillFormat.GradientFormat.GradientShape = GradientShape.Radial;
            var pattern = shapes[4].FillFormat.PatternFormat;
            pattern.PatternStyle = PatternStyle.DiagonalBrick;
            pattern.ForeColor.PresetColor = PresetColor.DarkBlue;
            pattern.BackColor.SystemColor = SystemColor.Window;
            shapes[5].FillFormat.PictureFillFormat.ImageData = TextTests.Png;
            shapes[6].FillFormat.PictureFillFormat.ImageData = Gif;
            shapes[6].FillFormat.PictureFillFormat.PictureFillMode = PictureFillMode.Tile;
            var group = slide.Shapes.AddGroupShape();
            group.FillFormat.SolidFillColor.SchemeColor = SchemeColor.Accent6;
            var member = group.Shapes.AddAutoShape(ShapeType.Ellipse, 0, 100, 40, 40);
            member.FillFormat.FillType = FillType.Group;
            AssertValid(pres);

            using var back = Reload(pres);
            var s = back.Slides[0].Shapes.ToList();
            Assert.Equal(new[] { FillType.NoFill, FillType.Solid, FillType.Gradient, FillType.Gradient, FillType.Pattern, FillType.Picture, FillType.Picture, FillType.Solid },
                s.Select(x => x.FillFormat.FillType));
            Assert.Equal("800A141E", Hex(s[1].FillFormat.SolidFillColor.Color));
            var g = s[2].FillFormat.GradientFormat;
            Assert.Equal((GradientShape.Linear, 90f), (g.GradientShape, g.LinearGradientAngle));
            Assert.Equal(new[] { 0f, 0.25f, 1f, 0.5f }, g.GradientStops.Select(x => x.Position));
            Assert.Equal(SchemeColor.Accent3, g.GradientStops[3].Color.SchemeColor);
            Assert.Equal("FF00FF00", Hex(g.GradientStops[1].Color.Color));
            Assert.Equal((GradientShape.Radial, float.NaN), (s[3].FillFormat.GradientFormat.GradientShape, s[3].FillFormat.GradientFormat.LinearGradientAngle));
            var p = s[4].FillFormat.PatternFormat;
            Assert.Equal((PatternStyle.DiagonalBrick, PresetColor.DarkBlue, SystemColor.Window), (p.PatternStyle, p.ForeColor.PresetColor, p.BackColor.SystemColor));
            Assert.Equal("FF00008B", Hex(p.ForeColor.Color));
            Assert.Equal((PictureFillMode.Stretch, PictureFillMode.Tile), (s[5].FillFormat.PictureFillFormat.PictureFillMode, s[6].FillFormat.PictureFillFormat.PictureFillMode));
            Assert.Equal(TextTests.Png, s[5].FillFormat.PictureFillFormat.ImageData);
            Assert.Equal(Gif, s[6].FillFormat.PictureFillFormat.ImageData);
            Assert.Equal(FillType.Group, ((IGroupShape)s[7]).Shapes[0].FillFormat.FillType);
            Assert.Equal(GradientShape.NotDefined, s[0].FillFormat.GradientFormat.GradientShape);
        }
    }

    [Fact]
    public void EveryPatternPresetIsValid()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var styles = Enum.GetValues<PatternStyle>().Where(p => p >= 0).ToList();
            Assert.Equal(54, styles.Count);
            foreach (var style in styles)
                slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10).FillFormat.PatternFormat.PatternStyle = style;
            AssertValid(pres);
            using var back = Reload(pres);
            Assert.Equal(styles, back.Slides[0].Shapes.Select(x => x.FillFormat.PatternFormat.PatternStyle));
        }
    }

    [Fact]
    public void SameImageIsStoredOnce()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            for (int i = 0; i < 3; i++)
                slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10).FillFormat.PictureFillFormat.ImageData = TextTests.Png;
            Assert.Single(((Slide)slide).Part.ImageParts);
        }
    }

    [Fact]
    public void FillKindsSwitchAndReset()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var fill = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10).FillFormat;
            // A new shape takes its fill from its style: no fill of its own.
            Assert.Equal(FillType.NotDefined, fill.FillType);
            fill.FillType = FillType.Gradient;
            Assert.Equal(2, fill.GradientFormat.GradientStops.Count);
            Assert.Throws<PptxEditException>(() => fill.GradientFormat.GradientStops.RemoveAt(0));
            fill.PatternFormat.PatternStyle = PatternStyle.Weave;
            Assert.Equal((FillType.Pattern, GradientShape.NotDefined, 0), (fill.FillType, fill.GradientFormat.GradientShape, fill.GradientFormat.GradientStops.Count));
            fill.FillType = FillType.NotDefined;
            Assert.Equal((FillType.NotDefined, PatternStyle.NotDefined, ColorType.NotDefined), (fill.FillType, fill.PatternFormat.PatternStyle, fill.SolidFillColor.ColorType));
            Assert.Throws<ArgumentOutOfRangeException>(() => fill.GradientFormat.GradientStops.Add(1.5f, Color.Red));
            Assert.Throws<ArgumentException>(() => fill.SolidFillColor.Color = Color.Empty);
            AssertValid(pres);
        }
    }

    [Fact]
    public void LineFormatRoundTripsEveryProperty()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var dashes = Enum.GetValues<LineDashStyle>().Where(d => d >= 0 && d != LineDashStyle.Custom).ToList();
            foreach (var dash in dashes)
                slide.Shapes.AddConnector(ShapeType.Line, 0, 0, 100, 0).LineFormat.DashStyle = dash;
            var line = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 100, 100).LineFormat;
            line.Width = 4.5f;
            line.Style = LineStyle.ThickBetweenThin;
            line.CapStyle = LineCapStyle.Square;
            line.JoinStyle = LineJoinStyle.Bevel;
            line.BeginArrowheadStyle = LineArrowheadStyle.Diamond;
            line.BeginArrowheadWidth = LineArrowheadWidth.Wide;
            line.BeginArrowheadLength = LineArrowheadLength.Short;
            line.EndArrowheadStyle = LineArrowheadStyle.Open;
            line.EndArrowheadWidth = LineArrowheadWidth.Narrow;
            line.EndArrowheadLength = LineArrowheadLength.Long;
            line.FillFormat.SolidFillColor.SchemeColor = SchemeColor.Accent4;
            line.DashStyle = LineDashStyle.LargeDashDotDot;
            AssertValid(pres);

            using var back = Reload(pres);
            var shapes = back.Slides[0].Shapes.ToList();
            Assert.Equal(dashes, shapes.Take(dashes.Count).Select(s => s.LineFormat.DashStyle));
            var l = shapes[^1].LineFormat;
            Assert.Equal((4.5f, LineStyle.ThickBetweenThin, LineCapStyle.Square, LineJoinStyle.Bevel, LineDashStyle.LargeDashDotDot), (l.Width, l.Style, l.CapStyle, l.JoinStyle, l.DashStyle));
            Assert.Equal((LineArrowheadStyle.Diamond, LineArrowheadWidth.Wide, LineArrowheadLength.Short), (l.BeginArrowheadStyle, l.BeginArrowheadWidth, l.BeginArrowheadLength));
            Assert.Equal((LineArrowheadStyle.Open, LineArrowheadWidth.Narrow, LineArrowheadLength.Long), (l.EndArrowheadStyle, l.EndArrowheadWidth, l.EndArrowheadLength));
            Assert.Equal((FillType.Solid, SchemeColor.Accent4), (l.FillFormat.FillType, l.FillFormat.SolidFillColor.SchemeColor));
            l.Width = float.NaN;
            l.JoinStyle = LineJoinStyle.NotDefined;
            l.EndArrowheadStyle = LineArrowheadStyle.NotDefined;
            Assert.Equal((float.NaN, LineJoinStyle.NotDefined, LineArrowheadStyle.NotDefined), (l.Width, l.JoinStyle, l.EndArrowheadStyle));
            Assert.Throws<ArgumentException>(() => l.FillFormat.FillType = FillType.Picture);
            Assert.Throws<ArgumentOutOfRangeException>(() => l.Width = -1);
            Assert.Throws<ArgumentOutOfRangeException>(() => l.DashStyle = LineDashStyle.Custom);
        }
    }

    [Fact]
    public void GroupsHaveNoOutlineToWrite()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var group = slide.Shapes.AddGroupShape();
            Assert.Equal(float.NaN, group.LineFormat.Width);
            var ex = Assert.Throws<PptxEditException>(() => group.LineFormat.Width = 2);
            Assert.Contains("Group", ex.Message);
        }
    }

    // Office's "darker 25%" and "lighter 80%" of its blue accent are lumMod 75% and lumMod 20% + lumOff 80%.
    [Fact]
    public void OperationsResolveAsOfficeComputesThem()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var color = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10).FillFormat.SolidFillColor;
            color.Color = Color.FromArgb(0x44, 0x72, 0xC4);
            color.ColorOperations.Add(ColorTransformOperation.LuminanceModulation, 0.75f);
            Assert.Equal("FF2F5597", Hex(color.Color));
            color.Color = Color.FromArgb(0x44, 0x72, 0xC4);
            Assert.Equal(0, color.ColorOperations.Count);
            color.ColorOperations.Add(ColorTransformOperation.LuminanceModulation, 0.2f);
            color.ColorOperations.Add(ColorTransformOperation.LuminanceOffset, 0.8f);
            Assert.Equal("FFDAE3F3", Hex(color.Color));
            color.ColorOperations.Insert(0, ColorTransformOperation.Alpha, 0.5f);
            Assert.Equal(new[] { ColorTransformOperation.Alpha, ColorTransformOperation.LuminanceModulation, ColorTransformOperation.LuminanceOffset },
                color.ColorOperations.Select(o => o.OperationType));
            Assert.Equal(0x80, color.Color.A);
            color.ColorOperations.RemoveAt(0);
            color.ColorOperations[0].Parameter = 1;
            color.ColorOperations[1].Parameter = 0;
            Assert.Equal("FF4472C4", Hex(color.Color));
            // A shade of 50% halves white in linear light: 0.5 encodes as 188.
            color.Color = Color.White;
            color.ColorOperations.Add(ColorTransformOperation.Shade, 0.5f);
            Assert.Equal("FFBCBCBC", Hex(color.Color));
            color.ColorOperations.Clear();
            color.ColorOperations.Add(ColorTransformOperation.Inverse);
            Assert.Equal("FF000000", Hex(color.Color));
            Assert.Throws<ArgumentException>(() => color.ColorOperations.Add(ColorTransformOperation.Tint));
            Assert.Throws<ArgumentException>(() => color.ColorOperations.Add(ColorTransformOperation.Gray, 0.5f));
            Assert.Throws<ArgumentOutOfRangeException>(() => color.ColorOperations.Add(ColorTransformOperation.Shade, -0.5f));
            Assert.Throws<ArgumentOutOfRangeException>(() => color.ColorOperations.Add(ColorTransformOperation.LuminanceOffset, float.NaN));
            Assert.Single(color.ColorOperations);
            Assert.Throws<ArgumentException>(() => color.ColorOperations[0].Parameter = 1);
            AssertValid(pres);
        }
    }

    [Fact]
    public void StoredColourKindsResolve()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var color = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10).FillFormat.SolidFillColor;
            Assert.Equal((ColorType.NotDefined, true), (color.ColorType, color.Color.IsEmpty));
            color.SetHsl(120, 1, 0.5f);
            Assert.Equal((ColorType.HSL, "FF00FF00"), (color.ColorType, Hex(color.Color)));
            color.SetHsl(-120, 1, 0.25f);
            Assert.Equal("FF000080", Hex(color.Color));
            color.SystemColor = SystemColor.WindowText;
            Assert.Equal((ColorType.System, "FF000000"), (color.ColorType, Hex(color.Color)));
            color.PresetColor = PresetColor.Coral;
            Assert.Equal((ColorType.Preset, "FFFF7F50"), (color.ColorType, Hex(color.Color)));
            var theme = pres.Masters[0].Theme.ColorScheme;
            color.SchemeColor = SchemeColor.Accent2;
            Assert.Equal(theme.Accent2.ToArgb(), color.Color.ToArgb());
            // bg1 and tx1 go through the master's colour map to lt1 and dk1.
            color.SchemeColor = SchemeColor.Text1;
            Assert.Equal(theme.Dark1.ToArgb(), color.Color.ToArgb());
            Assert.Throws<ArgumentOutOfRangeException>(() => color.SetHsl(0, 2, 0));
            Assert.Throws<ArgumentOutOfRangeException>(() => color.SchemeColor = SchemeColor.NotDefined);
            AssertValid(pres);
        }
    }

    [Fact]
    public void ASlidesColourMapOverrideChangesSchemeColours()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var color = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10).FillFormat.SolidFillColor;
            color.SchemeColor = SchemeColor.Background1;
            var theme = pres.Masters[0].Theme.ColorScheme;
            Assert.Equal(theme.Light1.ToArgb(), color.Color.ToArgb());
            var root = ((Slide)slide).Part.Slide;
            root.ColorMapOverride = new DocumentFormat.OpenXml.Presentation.ColorMapOverride(new DocumentFormat.OpenXml.Drawing.OverrideColorMapping
            {
                Background1 = DocumentFormat.OpenXml.Drawing.ColorSchemeIndexValues.Dark1,
                Text1 = DocumentFormat.OpenXml.Drawing.ColorSchemeIndexValues.Light1,
                Background2 = DocumentFormat.OpenXml.Drawing.ColorSchemeIndexValues.Dark2,
                Text2 = DocumentFormat.OpenXml.Drawing.ColorSchemeIndexValues.Light2,
                Accent1 = DocumentFormat.OpenXml.Drawing.ColorSchemeIndexValues.Accent1,
                Accent2 = DocumentFormat.OpenXml.Drawing.ColorSchemeIndexValues.Accent2,
                Accent3 = DocumentFormat.OpenXml.Drawing.ColorSchemeIndexValues.Accent3,
                Accent4 = DocumentFormat.OpenXml.Drawing.ColorSchemeIndexValues.Accent4,
                Accent5 = DocumentFormat.OpenXml.Drawing.ColorSchemeIndexValues.Accent5,
                Accent6 = DocumentFormat.OpenXml.Drawing.ColorSchemeIndexValues.Accent6,
                Hyperlink = DocumentFormat.OpenXml.Drawing.ColorSchemeIndexValues.Hyperlink,
                FollowedHyperlink = DocumentFormat.OpenXml.Drawing.ColorSchemeIndexValues.FollowedHyperlink,
            });
            Assert.Equal(theme.Dark1.ToArgb(), color.Color.ToArgb());
            // A changed theme colour shows through at once: nothing is cached.
            theme.Dark1 = Color.FromArgb(1, 2, 3);
            Assert.Equal("FF010203", Hex(color.Color));
        }
    }

    [Fact]
    public void CorpusThemeColoursResolveThroughTheirMasters()
    {
        int resolved = 0;
        foreach (var (deck, pres) in TestFiles.Loadable(TestFiles.CorpusDecks().Take(40)))
        {
            foreach (var slide in pres.Slides)
                foreach (var shape in slide.Shapes)
                {
                    var c = shape.FillFormat.SolidFillColor;
                    if (c.ColorType == ColorType.Scheme && c.SchemeColor is >= SchemeColor.Accent1 and <= SchemeColor.Accent6 && c.ColorOperations.Count == 0)
                    {
                        Assert.False(c.Color.IsEmpty, $"{Path.GetFileName(deck)}: {shape} has an unresolved {c.SchemeColor}");
                        resolved++;
                    }
                }
        }
        Assert.True(resolved > 0, "no corpus shape has an accent fill");
    }

    [LibreOfficeTests.SkippableFactIfNoSoffice]
    public void DeckWithTextFillsAndLinesConvertsToPdf()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var shape = slide.Shapes.AddAutoShape(ShapeType.RoundRect, 20, 20, 300, 200);
            shape.TextFrame.Text = "Heading\nBody";
            shape.TextFrame.Paragraphs[1].ParagraphFormat.Bullet.NumberedBulletStyle = NumberedBulletStyle.ArabicPeriod;
            shape.TextFrame.Paragraphs[0].Portions[0].PortionFormat.FillFormat.SolidFillColor.PresetColor = PresetColor.Gold;
            shape.FillFormat.GradientFormat.GradientShape = GradientShape.Rectangle;
            shape.LineFormat.Width = 3;
            shape.LineFormat.DashStyle = LineDashStyle.DashDot;
            slide.Shapes.AddAutoShape(ShapeType.Rect, 350, 20, 100, 100).FillFormat.PictureFillFormat.ImageData = TextTests.Png;
            var second = pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!);
            second.Shapes.AddAutoShape(ShapeType.Ellipse, 0, 0, 100, 100).FillFormat.PatternFormat.PatternStyle = PatternStyle.Plaid;
            Assert.Equal(2, LibreOfficeTests.PdfPages(TestFiles.SaveToBytes(pres)));
        }
    }
}
