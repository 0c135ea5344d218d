using System;
using System.IO;
using System.IO.Compression;
using System.Linq;
using System.Xml.Linq;
using Xunit;

namespace Orvane.Folaro.Tests;

// Text frames, paragraphs and portions: what is written reads back after a save, the deck
// stays valid, and nothing else of the document changes.
public class TextTests
{
    internal static readonly byte[] Png = Convert.FromBase64String("iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mP8z8BQDwAEhQGAhKmMIQAAAABJRU5ErkJggg==");

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

    [Fact]
    public void TextSplitsIntoParagraphsAndLineBreaksAndReadsBack()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var shape = slide.Shapes.AddAutoShape(ShapeType.Rect, 10, 10, 300, 200);
            shape.TextFrame.Text = "first\r\nsecond\vline two\n\nlast";
            Assert.Equal("first\nsecond\vline two\n\nlast", shape.TextFrame.Text);
            Assert.Equal(4, shape.TextFrame.Paragraphs.Count);
            Assert.Equal("second\vline two", shape.TextFrame.Paragraphs[1].Text);
            Assert.Equal(new[] { "second", "line two" }, shape.TextFrame.Paragraphs[1].Portions.Select(p => p.Text));
            Assert.Equal(0, shape.TextFrame.Paragraphs[2].Portions.Count);
            AssertValid(pres);
            using var back = Reload(pres);
            var text = ((IAutoShape)back.Slides[0].Shapes[0]).TextFrame;
            Assert.Equal("first\nsecond\vline two\n\nlast", text.Text);
            // The new shape is centred: the paragraph formatting carries over to every new paragraph.
            Assert.All(text.Paragraphs, p => Assert.Equal(TextAlignment.Center, p.ParagraphFormat.Alignment));
        }
    }

    [Fact]
    public void WritingTextKeepsTheFirstPortionsFormatting()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var frame = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 100, 100).TextFrame;
            frame.Text = "a";
            frame.Paragraphs[0].Portions[0].PortionFormat.FontBold = NullableBool.True;
            frame.Paragraphs[0].Portions[0].PortionFormat.FontHeight = 31;
            frame.Text = "b\nc";
            Assert.All(frame.Paragraphs, p => Assert.Equal((NullableBool.True, 31f), (p.Portions[0].PortionFormat.FontBold, p.Portions[0].PortionFormat.FontHeight)));
            frame.Paragraphs[1].Text = "d";
            Assert.Equal(NullableBool.True, frame.Paragraphs[1].Portions[0].PortionFormat.FontBold);
        }
    }

    [Fact]
    public void ShapesWithoutTextBodyGetOneWhenWritten()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var shape = slide.Shapes.AddAutoShape(ShapeType.Ellipse, 0, 0, 50, 50);
            var sp = ((Shape)shape).Element;
            sp.RemoveChild(sp.ChildElements.First(c => c.LocalName == "txBody"));
            Assert.False(shape.HasTextFrame);
            Assert.Equal(string.Empty, shape.TextFrame.Text);
            Assert.Equal(0, shape.TextFrame.Paragraphs.Count);
            Assert.Equal(float.NaN, shape.TextFrame.TextFrameFormat.MarginLeft);
            Assert.False(shape.HasTextFrame);
            shape.TextFrame.Text = "now";
            Assert.True(shape.HasTextFrame);
            AssertValid(pres);
        }
    }

    [Fact]
    public void PlaceholdersOfNewSlidesTakeText()
    {
        using IPresentation pres = new Presentation();
        var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.Title)!);
        var placeholders = slide.Shapes.OfType<IAutoShape>().Where(s => s.IsPlaceholder).ToList();
        Assert.NotEmpty(placeholders);
        placeholders[0].TextFrame.Text = "Title text";
        using var back = Reload(pres);
        Assert.Equal("Title text", back.Slides[0].Shapes.OfType<IAutoShape>().First(s => s.IsPlaceholder).TextFrame.Text);
    }

    [Fact]
    public void TextFrameFormatRoundTripsAndResets()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var f = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 100, 100).TextFrame.TextFrameFormat;
            f.MarginLeft = 1.5f;
            f.MarginRight = 2;
            f.MarginTop = 3;
            f.MarginBottom = 0;
            f.WrapText = NullableBool.False;
            f.AnchoringType = TextAnchorType.Bottom;
            f.CenterText = NullableBool.True;
            f.TextVerticalType = TextVerticalType.Vertical270;
            f.AutofitType = TextAutofitType.Shape;
            f.ColumnCount = 3;
            f.ColumnSpacing = 12;
            AssertValid(pres);
            using var back = Reload(pres);
            var g = ((IAutoShape)back.Slides[0].Shapes[0]).TextFrame.TextFrameFormat;
            Assert.Equal((1.5f, 2f, 3f, 0f), (g.MarginLeft, g.MarginRight, g.MarginTop, g.MarginBottom));
            Assert.Equal((NullableBool.False, TextAnchorType.Bottom, NullableBool.True), (g.WrapText, g.AnchoringType, g.CenterText));
            Assert.Equal((TextVerticalType.Vertical270, TextAutofitType.Shape, 3, 12f), (g.TextVerticalType, g.AutofitType, g.ColumnCount, g.ColumnSpacing));
            g.AutofitType = TextAutofitType.Normal;
            Assert.Equal(TextAutofitType.Normal, g.AutofitType);
            g.MarginLeft = float.NaN;
            g.AnchoringType = TextAnchorType.NotDefined;
            g.AutofitType = TextAutofitType.NotDefined;
            g.ColumnCount = 0;
            Assert.Equal((float.NaN, TextAnchorType.NotDefined, TextAutofitType.NotDefined, 0), (g.MarginLeft, g.AnchoringType, g.AutofitType, g.ColumnCount));
            Assert.Throws<ArgumentOutOfRangeException>(() => g.ColumnCount = 17);
            Assert.Throws<ArgumentOutOfRangeException>(() => g.MarginTop = -1);
            Assert.Throws<ArgumentOutOfRangeException>(() => g.AnchoringType = (TextAnchorType)9);
        }
    }

    [Fact]
    public void ParagraphFormatRoundTripsWithSpacingInPointsOrLines()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var frame = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 300, 300).TextFrame;
            frame.Text = "one\ntwo";
            var f = frame.Paragraphs[0].ParagraphFormat;
            f.Alignment = TextAlignment.Justify;
            f.Depth = 2;
            f.MarginLeft = 36;
            f.Indent = -18;
            f.MarginRight = 4;
            f.SpaceBefore = 6;
            f.SpaceAfterLines = 0.5f;
            f.SpaceWithinLines = 1.5f;
            f.RightToLeft = NullableBool.True;
            var g = frame.Paragraphs[1].ParagraphFormat;
            g.SpaceWithin = 20;
            g.SpaceWithinLines = 2;
            Assert.Equal((float.NaN, 2f), (g.SpaceWithin, g.SpaceWithinLines));
            AssertValid(pres);
            using var back = Reload(pres);
            var h = ((IAutoShape)back.Slides[0].Shapes[0]).TextFrame.Paragraphs[0].ParagraphFormat;
            Assert.Equal((TextAlignment.Justify, (short)2, 36f, -18f, 4f), (h.Alignment, h.Depth, h.MarginLeft, h.Indent, h.MarginRight));
            Assert.Equal((6f, float.NaN, float.NaN, 0.5f), (h.SpaceBefore, h.SpaceBeforeLines, h.SpaceAfter, h.SpaceAfterLines));
            Assert.Equal((float.NaN, 1.5f, NullableBool.True), (h.SpaceWithin, h.SpaceWithinLines, h.RightToLeft));
            h.SpaceBefore = float.NaN;
            Assert.Equal(float.NaN, h.SpaceBefore);
            Assert.Throws<ArgumentOutOfRangeException>(() => h.Depth = 9);
            Assert.Throws<ArgumentOutOfRangeException>(() => h.SpaceBefore = -1);
        }
    }

    [Fact]
    public void BulletsOfEveryKindRoundTrip()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var frame = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 300, 300).TextFrame;
            frame.Text = "none\nsymbol\nnumbered\npicture";
            var none = frame.Paragraphs[0].ParagraphFormat.Bullet;
            none.Type = BulletType.None;
            var symbol = frame.Paragraphs[1].ParagraphFormat.Bullet;
            symbol.Char = '\u25A0';
            symbol.Font = "Wingdings";
            symbol.Color.Color = Orvane.Marel.Color.FromArgb(255, 0, 0);
            symbol.Height = 1.25f;
            var numbered = frame.Paragraphs[2].ParagraphFormat.Bullet;
            numbered.NumberedBulletStyle = NumberedBulletStyle.RomanUpperCharacterParenR;
            numbered.NumberedBulletStartWith = 4;
            frame.Paragraphs[3].ParagraphFormat.Bullet.SetPicture(Png);
            AssertValid(pres);
            using var back = Reload(pres);
            var ps = ((IAutoShape)back.Slides[0].Shapes[0]).TextFrame.Paragraphs;
            Assert.Equal(new[] { BulletType.None, BulletType.Symbol, BulletType.Numbered, BulletType.Picture }, ps.Select(p => p.ParagraphFormat.Bullet.Type));
            var s = ps[1].ParagraphFormat.Bullet;
            Assert.Equal(('\u25A0', "Wingdings", 1.25f), (s.Char, s.Font, s.Height));
            Assert.Equal(Orvane.Marel.Color.FromArgb(255, 0, 0).ToArgb(), s.Color.Color.ToArgb());
            Assert.Equal((NumberedBulletStyle.NotDefined, (short)-1), (s.NumberedBulletStyle, s.NumberedBulletStartWith));
            var n = ps[2].ParagraphFormat.Bullet;
            Assert.Equal((NumberedBulletStyle.RomanUpperCharacterParenR, (short)4), (n.NumberedBulletStyle, n.NumberedBulletStartWith));
            Assert.Equal(Png, ps[3].ParagraphFormat.Bullet.PictureData);
            Assert.Empty(ps[2].ParagraphFormat.Bullet.PictureData);
            s.ResetColor();
            s.Font = "";
            Assert.Equal((ColorType.NotDefined, ""), (s.Color.ColorType, s.Font));
            Assert.Throws<ArgumentException>(() => s.Type = BulletType.Picture);
            Assert.Throws<ArgumentException>(() => s.SetPicture(new byte[] { 1, 2, 3 }));
            s.Type = BulletType.NotDefined;
            Assert.Equal(BulletType.NotDefined, s.Type);
        }
    }

    [Fact]
    public void PortionFormatRoundTripsEveryProperty()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var p = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 300, 300).TextFrame.Paragraphs[0];
            var f = p.Portions.Add("styled").PortionFormat;
            f.FontHeight = 28.5f;
            f.FontBold = NullableBool.True;
            f.FontItalic = NullableBool.False;
            f.FontUnderline = TextUnderlineType.HeavyWavy;
            f.StrikethroughType = TextStrikethroughType.Double;
            f.TextCapType = TextCapType.Small;
            f.LatinFont = "Liberation Serif";
            f.EastAsianFont = "Noto Sans CJK JP";
            f.ComplexScriptFont = "+mn-cs";
            f.FillFormat.SolidFillColor.SchemeColor = SchemeColor.Accent2;
            f.HighlightColor.Color = Orvane.Marel.Color.FromArgb(255, 255, 0);
            f.Spacing = -1.5f;
            f.Kerning = 12;
            f.Escapement = 0.3f;
            f.LanguageId = "fr-FR";
            f.HyperlinkClick = new Hyperlink("https://example.org/a b");
            f.HyperlinkMouseOver = Hyperlink.NextSlide;
            AssertValid(pres);
            using var back = Reload(pres);
            var g = ((IAutoShape)back.Slides[0].Shapes[0]).TextFrame.Paragraphs[0].Portions[0].PortionFormat;
            Assert.Equal((28.5f, NullableBool.True, NullableBool.False), (g.FontHeight, g.FontBold, g.FontItalic));
            Assert.Equal((TextUnderlineType.HeavyWavy, TextStrikethroughType.Double, TextCapType.Small), (g.FontUnderline, g.StrikethroughType, g.TextCapType));
            Assert.Equal(("Liberation Serif", "Noto Sans CJK JP", "+mn-cs"), (g.LatinFont, g.EastAsianFont, g.ComplexScriptFont));
            Assert.Equal((FillType.Solid, SchemeColor.Accent2), (g.FillFormat.FillType, g.FillFormat.SolidFillColor.SchemeColor));
            Assert.Equal(unchecked((int)0xFFFFFF00), g.HighlightColor.Color.ToArgb());
            Assert.Equal((-1.5f, 12f, 0.3f, "fr-FR"), (g.Spacing, g.Kerning, g.Escapement, g.LanguageId));
            Assert.Equal((HyperlinkActionType.Hyperlink, "https://example.org/a b"), (g.HyperlinkClick!.ActionType, g.HyperlinkClick.ExternalUrl));
            Assert.Equal(HyperlinkActionType.JumpNextSlide, g.HyperlinkMouseOver!.ActionType);
            Assert.Equal(string.Empty, g.HyperlinkMouseOver.ExternalUrl);
        }
    }

    [Fact]
    public void RemovingAHyperlinkDropsItsRelationship()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var p = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 300, 300).TextFrame.Paragraphs[0];
            var f = p.Portions.Add("link").PortionFormat;
            f.HyperlinkClick = new Hyperlink("https://example.org/");
            var part = ((Slide)slide).Part;
            Assert.Single(part.HyperlinkRelationships);
            f.HyperlinkClick = new Hyperlink("https://example.org/other");
            Assert.Equal("https://example.org/other", Assert.Single(part.HyperlinkRelationships).Uri.OriginalString);
            f.HyperlinkClick = null;
            Assert.Null(f.HyperlinkClick);
            Assert.Empty(part.HyperlinkRelationships);
            Assert.Throws<NotSupportedException>(() => f.HyperlinkClick = new FileLink());
            Assert.Null(f.HyperlinkClick);
        }
    }

    private sealed class FileLink : IHyperlink
    {
        public string ExternalUrl => "other.pptx";
        public HyperlinkActionType ActionType => HyperlinkActionType.OpenFile;
        public ISlide? TargetSlide => null;
        public string Tooltip { get; set; } = "";
        public bool HighlightClick { get; set; }
        public bool History { get; set; } = true;
        public string TargetFrame { get; set; } = "";
    }

    [Fact]
    public void PortionFormatResetsAndRejectsBadValues()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var portion = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 300, 300).TextFrame.Paragraphs[0].Portions.Add("x");
            var f = portion.PortionFormat;
            f.FontHeight = 10;
            f.LatinFont = "Arial";
            f.HighlightColor.Color = Orvane.Marel.Color.FromArgb(0, 255, 0);
            f.FontHeight = float.NaN;
            f.LatinFont = "";
            f.ResetHighlightColor();
            Assert.Equal((float.NaN, "", ColorType.NotDefined), (f.FontHeight, f.LatinFont, f.HighlightColor.ColorType));
            Assert.Throws<ArgumentOutOfRangeException>(() => f.FontHeight = 0.5f);
            Assert.Throws<ArgumentOutOfRangeException>(() => f.Escapement = 2);
            Assert.Throws<ArgumentOutOfRangeException>(() => f.FontUnderline = (TextUnderlineType)99);
            Assert.Throws<ArgumentException>(() => portion.Text = "two\nlines");
            Assert.Throws<ArgumentException>(() => portion.Text = "bell\a");
            Assert.Throws<ArgumentException>(() => portion.Text = "half \uD83D pair");
            portion.Text = "emoji \uD83D\uDE00";
            Assert.Equal("emoji \uD83D\uDE00", portion.Text);
        }
    }

    [Fact]
    public void PortionsAndParagraphsAreAddedInsertedAndRemoved()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var frame = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 300, 300).TextFrame;
            var portions = frame.Paragraphs[0].Portions;
            var b = portions.Add("b");
            portions.Insert(0, "a");
            portions.Add("c");
            Assert.Equal("abc", frame.Paragraphs[0].Text);
            Assert.Equal(1, portions.IndexOf(b));
            portions.Remove(b);
            Assert.Equal("ac", frame.Paragraphs[0].Text);
            frame.Paragraphs.Add("second");
            frame.Paragraphs.Insert(0, "zero");
            var clone = frame.Paragraphs.AddClone(frame.Paragraphs[1]);
            Assert.Equal(new[] { "zero", "ac", "second", "ac" }, frame.Paragraphs.Select(p => p.Text));
            frame.Paragraphs.Remove(clone);
            frame.Paragraphs.RemoveAt(0);
            Assert.Equal("ac\nsecond", frame.Text);
            AssertValid(pres);
            frame.Paragraphs.Clear();
            Assert.Equal(1, frame.Paragraphs.Count);
            Assert.Equal(string.Empty, frame.Text);
            Assert.Throws<PptxEditException>(() => frame.Paragraphs.RemoveAt(0));
            Assert.Throws<ArgumentOutOfRangeException>(() => frame.Paragraphs.Insert(5, "x"));
            Assert.Throws<ArgumentException>(() => frame.Paragraphs.Remove(new OtherParagraph()));
        }
    }

    private sealed class OtherParagraph : IParagraph
    {
        public string Text { get; set; } = "";
        public IPortionCollection Portions => throw new NotImplementedException();
        public IParagraphFormat ParagraphFormat => throw new NotImplementedException();
        public IPortionFormat EndParagraphPortionFormat => throw new NotImplementedException();
    }

    [Fact]
    public void FieldsAreAddedAndReadBack()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var p = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 300, 300).TextFrame.Paragraphs[0];
            p.Portions.Add("Slide ");
            p.Portions.AddField(FieldType.SlideNumber);
            p.Portions.Add(" of ");
            p.Portions.AddField(FieldType.DateTime4);
            AssertValid(pres);
            using var back = Reload(pres);
            var portions = ((IAutoShape)back.Slides[0].Shapes[0]).TextFrame.Paragraphs[0].Portions.ToList();
            Assert.Equal(new[] { null, "slidenum", null, "datetime4" }, portions.Select(x => x.Field?.Type.Name));
            Assert.Equal(FieldType.SlideNumber, portions[1].Field!.Type);
            Assert.StartsWith("Slide \u2039#\u203A of ", ((IAutoShape)back.Slides[0].Shapes[0]).TextFrame.Text);
        }
    }

    // Formatting one portion changes only its slide part, and only that run in it.
    [Fact]
    public void EditingOnePortionLeavesTheRestOfTheDeckAlone()
    {
        var file = TestFiles.CorpusFile("python-pptx/txt-font-props.pptx");
        if (!File.Exists(file))
            file = TestFiles.CorpusDecks().First(f => f.EndsWith(".pptx", StringComparison.Ordinal));
        var before = File.ReadAllBytes(file);
        using IPresentation pres = new Presentation(new MemoryStream(before));
        var (slideIndex, portion) = pres.Slides.SelectMany((s, i) => s.Shapes.OfType<IAutoShape>().Where(a => a.HasTextFrame)
            .SelectMany(a => a.TextFrame.Paragraphs).SelectMany(p => p.Portions).Select(x => (i, x))).First();
        IPresentation untouched = new Presentation(new MemoryStream(before));
        var original = TestFiles.SaveToBytes(untouched);
        untouched.Dispose();
        portion.PortionFormat.FontBold = portion.PortionFormat.FontBold == NullableBool.True ? NullableBool.False : NullableBool.True;
        var after = TestFiles.SaveToBytes(pres);
        var changed = TestFiles.ChangedEntries(original, after);
        Assert.Equal(new[] { $"ppt/slides/slide{SlideNumberOf(original, slideIndex)}.xml" }, changed);
    }

    private static int SlideNumberOf(byte[] package, int index)
    {
        using IPresentation pres = new Presentation(new MemoryStream(package));
        var uri = ((Slide)pres.Slides[index]).Part.Uri.OriginalString;
        return int.Parse(new string(uri.Where(char.IsDigit).ToArray()));
    }

    [Fact]
    public void EveryShapeParagraphAndPortionOfTheCorpusReads()
    {
        int portions = 0;
        foreach (var (deck, pres) in TestFiles.LoadableCorpusDecks())
        {
            var slides = TestFiles.AllSlides(pres);
            foreach (var slide in slides)
                foreach (var shape in TestFiles.AllShapes(slide.Shapes))
                    portions += ReadAll(shape, deck);
        }
        Assert.True(portions > 1000, $"only {portions} portions read");
    }

    private static int ReadAll(IShape shape, string deck)
    {
        int count = 0;
        try
        {
            _ = (shape.FillFormat.FillType, shape.FillFormat.SolidFillColor.Color, shape.FillFormat.GradientFormat.GradientStops.Select(s => s.Color.Color).ToList());
            _ = (shape.FillFormat.PatternFormat.PatternStyle, shape.FillFormat.PictureFillFormat.PictureFillMode);
            var line = shape.LineFormat;
            _ = (line.Width, line.DashStyle, line.Style, line.CapStyle, line.JoinStyle, line.BeginArrowheadStyle, line.EndArrowheadLength, line.FillFormat.SolidFillColor.Color);
            if (shape is not IAutoShape auto)
                return 0;
            var frame = auto.TextFrame;
            var ff = frame.TextFrameFormat;
            _ = (frame.Text, ff.MarginLeft, ff.AnchoringType, ff.AutofitType, ff.TextVerticalType, ff.WrapText, ff.ColumnCount);
            Assert.False(float.IsNaN(ff.GetEffective().MarginLeft));
            foreach (var p in frame.Paragraphs)
            {
                var pf = p.ParagraphFormat;
                _ = (p.Text, pf.Alignment, pf.Depth, pf.Indent, pf.SpaceBefore, pf.SpaceWithinLines, pf.Bullet.Type, pf.Bullet.Char, pf.Bullet.Color.Color, pf.Bullet.NumberedBulletStyle);
                _ = (p.EndParagraphPortionFormat.FontHeight, pf.DefaultPortionFormat.LatinFont);
                var pe = pf.GetEffective();
                Assert.InRange(pe.Depth, 0, 8);
                _ = (pe.Bullet.Color, pe.Bullet.Font, p.EndParagraphPortionFormat.GetEffective().FontHeight);
                foreach (var portion in p.Portions)
                {
                    var f = portion.PortionFormat;
                    _ = (portion.Text, portion.Field?.Type.Name, f.FontHeight, f.FontBold, f.FontUnderline, f.LatinFont, f.FillFormat.SolidFillColor.Color, f.HighlightColor.Color);
                    _ = (f.Escapement, f.LanguageId, f.HyperlinkClick?.ExternalUrl, f.StrikethroughType, f.TextCapType);
                    // Every run has a size and, when solid, a colour once inheritance and the theme are applied.
                    var e = f.GetEffective();
                    Assert.True(e.FontHeight > 0, $"{portion}: effective size {e.FontHeight}");
                    _ = (e.LatinFont, e.SolidFillColor, e.FontBold);
                    foreach (var op in f.FillFormat.SolidFillColor.ColorOperations)
                        _ = op.Parameter;
                    count++;
                }
            }
        }
        catch (Exception ex) when (ex is not Xunit.Sdk.XunitException)
        {
            throw new Exception($"{Path.GetFileName(deck)}, {shape.Slide}, {shape}: {ex.Message}", ex);
        }
        return count;
    }
}
