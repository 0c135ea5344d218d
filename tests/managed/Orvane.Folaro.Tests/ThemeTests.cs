using System;
using System.IO;
using System.Linq;
using Orvane.Folaro.Theme;
using Orvane.Marel;
using Xunit;

namespace Orvane.Folaro.Tests;

// Theme colour, font and format schemes, overrides per slide and the theme in force; the
// theme deck (with the hyperlinks of HyperlinkTests) validates, converts and reads back.
public class ThemeTests
{
    internal static readonly Color Navy = Color.FromArgb(0x12, 0x34, 0x56);
    internal static readonly Color Lime = Color.FromArgb(0x00, 0xFF, 0x00);

    private static ISlide Blank(IPresentation pres) => pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!);

    private static string Hex(Color c) => $"{c.A:X2}{c.R:X2}{c.G:X2}{c.B:X2}";

    // Slide 1 uses the changed master theme; slide 2 overrides colours and body fonts; both carry hyperlinks of every kind.
    internal static byte[] ThemeDeck()
    {
        using IPresentation pres = new Presentation();
        var theme = pres.Masters[0].Theme;
        theme.Name = "Harbour";
        theme.ColorScheme.Name = "Harbour colours";
        theme.ColorScheme.Accent1 = Navy;
        theme.ColorScheme.SetColor(SchemeColor.Accent2, Color.FromArgb(0xAA, 0x55, 0x00));
        theme.ColorScheme.Hyperlink = Color.FromArgb(0x00, 0x00, 0xCC);
        theme.FontScheme.Name = "Harbour fonts";
        theme.FontScheme.MajorLatinFont = "Georgia";
        theme.FontScheme.MinorLatinFont = "Verdana";
        theme.FontScheme.MajorEastAsianFont = "Noto Serif CJK JP";
        theme.FontScheme.MinorComplexScriptFont = "Arial";

        var first = Blank(pres);
        var styled = first.Shapes.AddAutoShape(ShapeType.Rect, 20, 20, 120, 80);
        styled.Name = "styled";
        var scheme = first.Shapes.AddAutoShape(ShapeType.Ellipse, 160, 20, 120, 80);
        scheme.Name = "scheme";
        scheme.FillFormat.SolidFillColor.SchemeColor = SchemeColor.Accent2;
        scheme.LineFormat.Width = 4;
        scheme.LineFormat.DashStyle = LineDashStyle.Dash;

        var second = Blank(pres);
        var overridden = second.ThemeManager.OverrideTheme;
        overridden.InitColorScheme();
        overridden.ColorScheme!.Accent1 = Lime;
        overridden.InitFontScheme();
        overridden.FontScheme!.MinorLatinFont = "Courier New";
        var green = second.Shapes.AddAutoShape(ShapeType.Rect, 20, 20, 120, 80);
        green.Name = "styled";
        green.TextFrame.Text = "body text";

        HyperlinkTests.AddEveryKind(pres, first, second);
        return TestFiles.SaveToBytes(pres);
    }

    [Fact]
    public void ThemeDeckValidatesAndReadsBack()
    {
        var bytes = ThemeDeck();
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        var theme = back.Masters[0].Theme;
        Assert.Equal("Harbour", theme.Name);
        Assert.Equal("Harbour colours", theme.ColorScheme.Name);
        Assert.Equal(Navy.ToArgb(), theme.ColorScheme.Accent1.ToArgb());
        Assert.Equal("FFAA5500", Hex(theme.ColorScheme.GetColor(SchemeColor.Accent2)));
        Assert.Equal("FF0000CC", Hex(theme.ColorScheme.Hyperlink));
        Assert.Equal(("Georgia", "Verdana", "Noto Serif CJK JP", "", "", "Arial"),
            (theme.FontScheme.MajorLatinFont, theme.FontScheme.MinorLatinFont, theme.FontScheme.MajorEastAsianFont,
             theme.FontScheme.MinorEastAsianFont, theme.FontScheme.MajorComplexScriptFont, theme.FontScheme.MinorComplexScriptFont));

        var first = back.Slides[0];
        var styled = first.Shapes.First(s => s.Name == "styled");
        // The new shape's style refers to fill style 1 (solid phClr) with accent1: the changed accent.
        var fill = styled.FillFormat.GetEffective();
        Assert.Equal(FillType.Solid, fill.FillType);
        Assert.Equal(Navy.ToArgb(), fill.SolidFillColor.ToArgb());
        // Line style 2 is 1 pt; its colour is accent1 shaded to 50%.
        var line = styled.LineFormat.GetEffective();
        Assert.Equal(1f, line.Width);
        Assert.Equal(FillType.Solid, line.FillFormat.FillType);
        Assert.True(line.SolidFillColor.B < Navy.B && line.SolidFillColor.B > 0, Hex(line.SolidFillColor));
        var scheme = first.Shapes.First(s => s.Name == "scheme");
        Assert.Equal("FFAA5500", Hex(scheme.FillFormat.GetEffective().SolidFillColor));
        Assert.Equal((4f, LineDashStyle.Dash), (scheme.LineFormat.GetEffective().Width, scheme.LineFormat.GetEffective().DashStyle));

        // Slide 2 sees its own accent and body font; slide 1 and the master keep the theme's.
        var second = back.Slides[1];
        Assert.True(second.ThemeManager.IsOverrideThemeEnabled);
        Assert.False(first.ThemeManager.IsOverrideThemeEnabled);
        Assert.Null(first.ThemeManager.OverrideTheme.ColorScheme);
        Assert.Null(second.ThemeManager.OverrideTheme.FormatScheme);
        Assert.Equal(Lime.ToArgb(), second.ThemeManager.OverrideTheme.ColorScheme!.Accent1.ToArgb());
        var effective = second.ThemeManager.GetEffective();
        Assert.Equal(Lime.ToArgb(), effective.ColorScheme.Accent1.ToArgb());
        Assert.Equal("FFAA5500", Hex(effective.ColorScheme.Accent2));
        Assert.Equal(("Georgia", "Courier New"), (effective.FontScheme.MajorLatinFont, effective.FontScheme.MinorLatinFont));
        Assert.Equal(Navy.ToArgb(), first.ThemeManager.GetEffective().ColorScheme.Accent1.ToArgb());
        Assert.Equal("Verdana", back.Masters[0].ThemeManager.GetEffective().FontScheme.MinorLatinFont);
        var green = second.Shapes.First(s => s.Name == "styled");
        Assert.Equal(Lime.ToArgb(), green.FillFormat.GetEffective().SolidFillColor.ToArgb());
        Assert.Equal("Courier New", ((IAutoShape)green).TextFrame.Paragraphs[0].Portions[0].PortionFormat.GetEffective().LatinFont);

        HyperlinkTests.AssertEveryKind(back);
    }

    [LibreOfficeTests.SkippableFactIfNoSoffice]
    public void ThemeDeckConvertsToPdf()
    {
        Assert.Equal(2, LibreOfficeTests.PdfPages(ThemeDeck()));
    }

    [Fact]
    public void TextAndBackgroundRolesFollowTheColourMap()
    {
        using IPresentation pres = new Presentation();
        var slide = Blank(pres);
        var scheme = pres.Masters[0].Theme.ColorScheme;
        var before = slide.ThemeManager.GetEffective().ColorScheme;
        Assert.Equal(scheme.Dark1.ToArgb(), before.Text1.ToArgb());
        Assert.Equal(scheme.Light1.ToArgb(), before.Background1.ToArgb());
        ((Slide)slide).Part.Slide.ColorMapOverride = new DocumentFormat.OpenXml.Presentation.ColorMapOverride(
            new DocumentFormat.OpenXml.Drawing.OverrideColorMapping
            {
                Background1 = DocumentFormat.OpenXml.Drawing.ColorSchemeIndexValues.Dark1,
                Text1 = DocumentFormat.OpenXml.Drawing.ColorSchemeIndexValues.Light1,
                Background2 = DocumentFormat.OpenXml.Drawing.ColorSchemeIndexValues.Dark2,
                Text2 = DocumentFormat.OpenXml.Drawing.ColorSchemeIndexValues.Light2,
            });
        var after = slide.ThemeManager.GetEffective().ColorScheme;
        Assert.Equal(scheme.Light1.ToArgb(), after.Text1.ToArgb());
        Assert.Equal(scheme.Dark1.ToArgb(), after.Background1.ToArgb());
        Assert.Equal(scheme.Dark2.ToArgb(), after.GetColor(SchemeColor.Background2).ToArgb());
        // The slots themselves do not move.
        Assert.Equal(scheme.Dark1.ToArgb(), after.Dark1.ToArgb());
        // The master keeps its own map.
        Assert.Equal(scheme.Dark1.ToArgb(), pres.Masters[0].ThemeManager.GetEffective().ColorScheme.Text1.ToArgb());
        Assert.Throws<ArgumentOutOfRangeException>(() => after.GetColor(SchemeColor.StyleColor));
    }

    [Fact]
    public void ALayoutOverrideReachesItsSlidesUntilASlideOverrides()
    {
        using IPresentation pres = new Presentation();
        var layout = pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!;
        var a = pres.Slides.AddEmptySlide(layout);
        var b = pres.Slides.AddEmptySlide(layout);
        layout.ThemeManager.OverrideTheme.InitColorScheme();
        layout.ThemeManager.OverrideTheme.ColorScheme!.Accent3 = Lime;
        b.ThemeManager.OverrideTheme.InitColorScheme();
        // A slide's override starts from what it inherited: the layout's colours.
        Assert.Equal(Lime.ToArgb(), b.ThemeManager.OverrideTheme.ColorScheme!.Accent3.ToArgb());
        b.ThemeManager.OverrideTheme.ColorScheme!.Accent3 = Navy;
        Assert.Equal(Lime.ToArgb(), a.ThemeManager.GetEffective().ColorScheme.Accent3.ToArgb());
        Assert.Equal(Navy.ToArgb(), b.ThemeManager.GetEffective().ColorScheme.Accent3.ToArgb());
        var shape = a.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);
        shape.FillFormat.SolidFillColor.SchemeColor = SchemeColor.Accent3;
        Assert.Equal(Lime.ToArgb(), shape.FillFormat.SolidFillColor.Color.ToArgb());
        // Clearing removes the override part; the master theme shows again.
        layout.ThemeManager.OverrideTheme.Clear();
        Assert.True(layout.ThemeManager.OverrideTheme.IsEmpty);
        Assert.Equal(pres.Masters[0].Theme.ColorScheme.Accent3.ToArgb(), shape.FillFormat.SolidFillColor.Color.ToArgb());
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(pres));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        Assert.Throws<ArgumentOutOfRangeException>(() => pres.Masters[0].Theme.ColorScheme.GetColor(SchemeColor.NotDefined));
    }

    [Fact]
    public void FormatSchemeListsTheThemeStyles()
    {
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("python-pptx/dml-line.pptx"));
        var format = pres.Masters[0].Theme.FormatScheme;
        Assert.Equal("Office", format.Name);
        Assert.Equal(new[] { FillType.Solid, FillType.Gradient, FillType.Gradient }, format.FillStyles.Select(f => f.FillType));
        Assert.Equal(270f, format.FillStyles[1].GradientFormat.LinearGradientAngle);
        Assert.Equal(new[] { 0.75f, 2f, 3f }, format.LineStyles.Select(l => l.Width));
        Assert.Equal(3, format.EffectStyles.Count);
        Assert.Equal(3, format.BackgroundFillStyles.Count);
        Assert.Throws<ArgumentOutOfRangeException>(() => format.FillStyles[3]);
        // A fill style keeps its kind; its settings may be edited in place.
        Assert.Throws<NotSupportedException>(() => format.FillStyles[0].FillType = FillType.Pattern);
        Assert.Throws<NotSupportedException>(() => format.FillStyles[0].PatternFormat.PatternStyle = PatternStyle.Plaid);
        Assert.Equal(3, format.FillStyles.Count);
        format.FillStyles[1].GradientFormat.LinearGradientAngle = 90;
        Assert.Equal(90f, pres.Masters[0].Theme.FormatScheme.FillStyles[1].GradientFormat.LinearGradientAngle);
    }

    [Fact]
    public void EveryCorpusThemeReads()
    {
        int themes = 0;
        foreach (var (deck, pres) in TestFiles.LoadableCorpusDecks())
        {
            foreach (var master in pres.Masters)
            {
                IMasterTheme theme;
                try
                {
                    theme = master.Theme;
                }
                catch (PptxReadException)
                {
                    continue;
                }
                themes++;
                _ = (theme.Name, theme.ColorScheme.Accent6, theme.FontScheme.MinorComplexScriptFont);
                var format = theme.FormatScheme;
                foreach (var f in format.FillStyles.Concat(format.BackgroundFillStyles))
                    _ = (f.FillType, f.SolidFillColor.Color, f.GradientFormat.GradientStops.Count);
                foreach (var l in format.LineStyles)
                    _ = (l.Width, l.DashStyle, l.FillFormat.FillType);
                foreach (var e in format.EffectStyles)
                    _ = (e.HasOuterShadow, e.HasThreeDEffects);
                _ = master.ThemeManager.GetEffective().ColorScheme.Text1;
            }
            foreach (var slide in pres.Slides)
            {
                var effective = slide.ThemeManager.GetEffective();
                Assert.False(effective.ColorScheme.Text1.IsEmpty && !effective.ColorScheme.Dark1.IsEmpty, $"{Path.GetFileName(deck)}: Text1 does not resolve");
                _ = (effective.FontScheme.MajorLatinFont, slide.ThemeManager.IsOverrideThemeEnabled, slide.LayoutSlide.ThemeManager.IsOverrideThemeEnabled);
            }
        }
        Assert.True(themes > 50, $"only {themes} themes read");
    }
}
