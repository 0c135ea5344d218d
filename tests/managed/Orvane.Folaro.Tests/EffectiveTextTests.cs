using System;
using System.IO;
using System.Linq;
using Orvane.Marel;
using Xunit;

namespace Orvane.Folaro.Tests;

// Effective text formatting on corpus decks. Each expected value was worked out by hand from
// the deck's XML; the comments name the element that decides it.
public class EffectiveTextTests
{
    private static IPresentation Open(string relative) => new Presentation(TestFiles.CorpusFile(relative));

    private static IAutoShape Named(IBaseSlide slide, string name) => slide.Shapes.OfType<IAutoShape>().Single(s => s.Name == name);

    private static string Hex(Color c) => $"{c.R:X2}{c.G:X2}{c.B:X2}";

    [Fact]
    public void PlaceholdersInheritFromTheMasterThroughAnEmptyLayout()
    {
        using var pres = Open("python-pptx/ph-inherit-props.pptx");
        var slide = pres.Slides[0];

        // Title: the layout title sets nothing; the master title's bodyPr anchors at the centre
        // with normAutofit; titleStyle lvl1 centres, sz=4400, +mj-lt (Calibri), tx1 -> dk1 = 000000.
        var title = Named(slide, "Title 3");
        var frame = title.TextFrame.TextFrameFormat.GetEffective();
        Assert.Equal((TextAnchorType.Center, TextAutofitType.Normal, TextVerticalType.Horizontal), (frame.AnchoringType, frame.AutofitType, frame.TextVerticalType));
        Assert.Equal((7.2f, 7.2f, 3.6f, 3.6f, true), (frame.MarginLeft, frame.MarginRight, frame.MarginTop, frame.MarginBottom, frame.WrapText));
        var tp = title.TextFrame.Paragraphs[0].ParagraphFormat.GetEffective();
        Assert.Equal((TextAlignment.Center, BulletType.None, 0f, float.NaN), (tp.Alignment, tp.Bullet.Type, tp.SpaceBeforeLines, tp.SpaceBefore));
        var tr = title.TextFrame.Paragraphs[0].Portions[0].PortionFormat.GetEffective();
        Assert.Equal((44f, "Calibri", "000000", 12f), (tr.FontHeight, tr.LatinFont, Hex(tr.SolidFillColor), tr.Kerning));
        Assert.Equal((false, false, "en-US"), (tr.FontBold, tr.FontItalic, tr.LanguageId));

        // Content placeholder idx=10: the layout's idx=10 then, by kind, the master body (idx=1):
        // top anchor, normAutofit; bodyStyle lvl1: marL=342900, indent=-342900, spcBef 20%,
        // bullet '•' in Arial taking the text's colour, sz=3200 in +mn-lt.
        var body = Named(slide, "Content Placeholder 4");
        Assert.Equal((TextAnchorType.Top, TextAutofitType.Normal), (body.TextFrame.TextFrameFormat.GetEffective().AnchoringType, body.TextFrame.TextFrameFormat.GetEffective().AutofitType));
        var bp = body.TextFrame.Paragraphs[0].ParagraphFormat.GetEffective();
        Assert.Equal((TextAlignment.Left, 27f, -27f, 0.2f), (bp.Alignment, bp.MarginLeft, bp.Indent, bp.SpaceBeforeLines));
        Assert.Equal((BulletType.Symbol, '\u2022', "Arial", "000000", 1f), (bp.Bullet.Type, bp.Bullet.Char, bp.Bullet.Font, Hex(bp.Bullet.Color), bp.Bullet.Height));
        var br = body.TextFrame.Paragraphs[0].Portions[0].PortionFormat.GetEffective();
        Assert.Equal((32f, "Calibri"), (br.FontHeight, br.LatinFont));
    }

    [Fact]
    public void LayoutListStylesOverrideTheMastersTextStyles()
    {
        using var pres = Open("poi/layouts.pptx");

        // Slide 1 subtitle (idx=1) -> layout subTitle lstStyle lvl1: marL=0, indent=0, algn=ctr,
        // buNone, tx1 tinted 75% (000000 -> 898989); size from the master bodyStyle lvl1 (3200).
        var subtitle = Named(pres.Slides[0], "Subtitle 2");
        var sp = subtitle.TextFrame.Paragraphs[0].ParagraphFormat.GetEffective();
        Assert.Equal((TextAlignment.Center, 0f, 0f, BulletType.None, 0.2f), (sp.Alignment, sp.MarginLeft, sp.Indent, sp.Bullet.Type, sp.SpaceBeforeLines));
        var sr = subtitle.TextFrame.Paragraphs[0].Portions[0].PortionFormat.GetEffective();
        Assert.Equal((32f, "898989", "Calibri"), (sr.FontHeight, Hex(sr.SolidFillColor), sr.LatinFont));

        // Slide 1 centred title -> master title by kind: 44 pt, centred, anchored at the centre.
        var title = Named(pres.Slides[0], "Title 1");
        Assert.Equal(44f, title.TextFrame.Paragraphs[0].Portions[0].PortionFormat.GetEffective().FontHeight);
        Assert.Equal(TextAnchorType.Center, title.TextFrame.TextFrameFormat.GetEffective().AnchoringType);

        // Slide 2 content, levels 1, 2 and 5 of the master bodyStyle.
        var content = Named(pres.Slides[1], "Content Placeholder 2").TextFrame.Paragraphs;
        var expected = new[]
        {
            (Level: 0, Size: 32f, Margin: 27f, Indent: -27f, Char: '\u2022'),
            (Level: 1, Size: 28f, Margin: 58.5f, Indent: -22.5f, Char: '\u2013'),
            (Level: 4, Size: 20f, Margin: 162f, Indent: -18f, Char: '\u00BB'),
        };
        foreach (var e in expected)
        {
            var p = content[e.Level];
            var pf = p.ParagraphFormat.GetEffective();
            Assert.Equal((e.Level, e.Margin, e.Indent, e.Char), ((int)pf.Depth, pf.MarginLeft, pf.Indent, pf.Bullet.Char));
            Assert.Equal(e.Size, p.Portions[0].PortionFormat.GetEffective().FontHeight);
        }
    }

    [Fact]
    public void LayoutPlaceholdersInheritFromTheMasterPlaceholderAndOtherStyle()
    {
        using var pres = Open("poi/layouts.pptx");
        var layout = pres.LayoutSlides.Single(l => ((LayoutSlide)l).Part.Uri.OriginalString.EndsWith("slideLayout2.xml", StringComparison.Ordinal));
        // The layout's slide number -> master sldNum: lstStyle lvl1 algn=r, sz=1200, tx1 tint 75%; bodyPr anchor=ctr.
        var number = Named(layout, "Slide Number Placeholder 5");
        var portion = number.TextFrame.Paragraphs[0].Portions[0];
        Assert.Equal("slidenum", portion.Field!.Type.Name);
        var r = portion.PortionFormat.GetEffective();
        Assert.Equal((12f, "898989"), (r.FontHeight, Hex(r.SolidFillColor)));
        Assert.Equal(TextAlignment.Right, number.TextFrame.Paragraphs[0].ParagraphFormat.GetEffective().Alignment);
        Assert.Equal(TextAnchorType.Center, number.TextFrame.TextFrameFormat.GetEffective().AnchoringType);
    }

    [Fact]
    public void TextBoxesUseThePresentationDefaultTextStyle()
    {
        using var pres = Open("python-pptx/txt-font-props.pptx");
        // Slide 1: i="1", i="0", no i (defaultTextStyle sets none: not italic).
        var italic = Named(pres.Slides[0], "TextBox 1").TextFrame.Paragraphs[0].Portions.Select(p => p.PortionFormat.GetEffective().FontItalic);
        Assert.Equal(new[] { true, false, false }, italic);
        // Slide 2: the default text box is 18 pt (defaultTextStyle lvl1 sz=1800), the other sets 4200.
        Assert.Equal(18f, Named(pres.Slides[1], "TextBox 1").TextFrame.Paragraphs[0].Portions[0].PortionFormat.GetEffective().FontHeight);
        Assert.Equal(42f, Named(pres.Slides[1], "TextBox 2").TextFrame.Paragraphs[0].Portions[0].PortionFormat.GetEffective().FontHeight);
        var frame = Named(pres.Slides[1], "TextBox 1").TextFrame.TextFrameFormat.GetEffective();
        Assert.Equal((false, TextAutofitType.Shape, TextAnchorType.Top), (frame.WrapText, frame.AutofitType, frame.AnchoringType));
        // Slide 4: underline kinds, "inherit" resolving to none.
        var underlines = Named(pres.Slides[3], "TextBox 1").TextFrame.Paragraphs[0].Portions.Select(p => p.PortionFormat.GetEffective().FontUnderline);
        Assert.Equal(new[] { TextUnderlineType.Single, TextUnderlineType.None, TextUnderlineType.None, TextUnderlineType.Double, TextUnderlineType.Wavy }, underlines);
        // Slide 5: the first run has no lang; defaultTextStyle's defPPr gives en-US.
        Assert.Equal(new[] { "en-US", "fr-FR", "pl-PL" },
            pres.Slides[4].Shapes.OfType<IAutoShape>().Select(s => s.TextFrame.Paragraphs[0].Portions[0].PortionFormat.GetEffective().LanguageId));
    }

    [Fact]
    public void TextColoursResolveThroughTheThemeAndTheirOperations()
    {
        using var pres = Open("python-pptx/font-color.pptx");
        // None (tx1 -> dk1 windowText 000000), FF6600, accent1 4F81BD, accent4 8064A2 at lumMod 75%,
        // accent1 at lumMod 60% + lumOff 40% (the palette's "darker 25%" and "lighter 40%").
        var colours = pres.Slides[0].Shapes.OfType<IAutoShape>().Select(s => Hex(s.TextFrame.Paragraphs[0].Portions[0].PortionFormat.GetEffective().SolidFillColor));
        Assert.Equal(new[] { "000000", "FF6600", "4F81BD", "604A7B", "95B3D7" }, colours);
    }

    [Fact]
    public void ShapeStyleGivesNewShapesTheirTextColourAndOwnValuesWin()
    {
        using IPresentation pres = new Presentation();
        var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!);
        var shape = slide.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 100, 100);
        shape.TextFrame.Text = "x";
        var portion = shape.TextFrame.Paragraphs[0].Portions[0];
        var theme = pres.Masters[0].Theme;
        // The style's fontRef is idx=minor with lt1: the theme's minor Latin font, in light 1.
        var r = portion.PortionFormat.GetEffective();
        Assert.Equal(theme.ColorScheme.Light1.ToArgb(), r.SolidFillColor.ToArgb());
        Assert.Equal(theme.FontScheme.MinorLatinFont, r.LatinFont);
        Assert.Equal(TextAlignment.Center, shape.TextFrame.Paragraphs[0].ParagraphFormat.GetEffective().Alignment);
        Assert.Equal(TextAnchorType.Center, shape.TextFrame.TextFrameFormat.GetEffective().AnchoringType);
        portion.PortionFormat.FontHeight = 9;
        portion.PortionFormat.LatinFont = "+mj-lt";
        portion.PortionFormat.FillFormat.SolidFillColor.Color = Color.FromArgb(1, 2, 3);
        r = portion.PortionFormat.GetEffective();
        Assert.Equal((9f, theme.FontScheme.MajorLatinFont, "010203"), (r.FontHeight, r.LatinFont, Hex(r.SolidFillColor)));
    }
}
