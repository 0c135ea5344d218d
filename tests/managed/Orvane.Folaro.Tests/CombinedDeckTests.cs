using System;
using System.IO;
using System.Linq;
using Orvane.Marel;
using Xunit;

namespace Orvane.Folaro.Tests;

// One deck with every kind of content: each preset geometry on its own slide, a slide of fill,
// line and bullet kinds, and the slides of the table, media, geometry/effects and theme/hyperlink
// decks imported with their layouts, masters, themes and media. It must validate, convert to
// PDF with one page per slide, and read back with the values written.
public class CombinedDeckTests
{
    private static readonly ShapeType[] Presets = Enum.GetValues<ShapeType>().Where(t => t >= 0).ToArray();

    private static byte[] CombinedDeck(out int importedSlides)
    {
        using IPresentation pres = new Presentation();
        var blank = pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!;
        foreach (var type in Presets)
        {
            var shape = pres.Slides.AddEmptySlide(blank).Shapes.AddAutoShape(type, 100, 100, 300, 200);
            shape.TextFrame.Text = type.ToString();
        }
        FormatsSlide(pres.Slides.AddEmptySlide(blank), pres.Images.AddImage(TextTests.Png));

        importedSlides = 0;
        foreach (var deck in new[] { TableTests.TableDeck(), MediaTests.MediaDeck(), GeometryDeckTests.GeometryDeck(out _), ThemeTests.ThemeDeck() })
        {
            using IPresentation source = new Presentation(new MemoryStream(deck));
            foreach (var slide in source.Slides)
                pres.Slides.AddClone(slide);
            importedSlides += source.Slides.Count;
        }
        return TestFiles.SaveToBytes(pres);
    }

    // One shape per fill kind with a line of another dash, cap and arrowheads each, and a text
    // box with a paragraph per bullet kind.
    private static void FormatsSlide(ISlide slide, IPPImage picture)
    {
        var fills = new[] { FillType.NoFill, FillType.Solid, FillType.Gradient, FillType.Pattern, FillType.Picture };
        for (int i = 0; i < fills.Length; i++)
        {
            var shape = slide.Shapes.AddAutoShape(ShapeType.Rect, 20 + i * 130, 20, 110, 80);
            var fill = shape.FillFormat;
            fill.FillType = fills[i];
            switch (fills[i])
            {
                case FillType.Solid:
                    fill.SolidFillColor.Color = Color.FromArgb(200, 30, 60);
                    break;
                case FillType.Gradient:
                    fill.GradientFormat.GradientStops.Add(0, Color.Yellow);
                    fill.GradientFormat.GradientStops.Add(1, SchemeColor.Accent1);
                    fill.GradientFormat.LinearGradientAngle = 45;
                    break;
                case FillType.Pattern:
                    fill.PatternFormat.PatternStyle = PatternStyle.DiagonalBrick;
                    fill.PatternFormat.ForeColor.Color = Color.Navy;
                    break;
                case FillType.Picture:
                    fill.PictureFillFormat.Picture.Image = picture;
                    fill.PictureFillFormat.PictureFillMode = PictureFillMode.Tile;
                    break;
            }
            var line = shape.LineFormat;
            line.Width = 1 + i;
            line.DashStyle = (LineDashStyle)i;
            line.CapStyle = i % 2 == 0 ? LineCapStyle.Round : LineCapStyle.Square;
            line.EndArrowheadStyle = LineArrowheadStyle.Triangle;
        }
        var text = slide.Shapes.AddAutoShape(ShapeType.Rect, 20, 140, 600, 300).TextFrame;
        text.Text = "none\nsymbol\nnumbered\npicture";
        var paragraphs = text.Paragraphs;
        paragraphs[0].ParagraphFormat.Bullet.Type = BulletType.None;
        paragraphs[1].ParagraphFormat.Bullet.Type = BulletType.Symbol;
        paragraphs[1].ParagraphFormat.Bullet.Char = '»';
        paragraphs[2].ParagraphFormat.Bullet.Type = BulletType.Numbered;
        paragraphs[2].ParagraphFormat.Bullet.NumberedBulletStartWith = 3;
        paragraphs[3].ParagraphFormat.Bullet.SetPicture(picture);
    }

    [Fact]
    public void EveryKindOfContentValidatesAndReadsBack()
    {
        var bytes = CombinedDeck(out int imported);
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));

        using IPresentation back = new Presentation(new MemoryStream(bytes));
        Assert.Equal(Presets.Length + 1 + imported, back.Slides.Count);
        for (int i = 0; i < Presets.Length; i++)
        {
            var shape = (IAutoShape)back.Slides[i].Shapes[0];
            Assert.Equal(Presets[i], shape.ShapeType);
            Assert.Equal(Presets[i].ToString(), shape.TextFrame.Text);
        }

        var formats = back.Slides[Presets.Length].Shapes;
        Assert.Equal(new[] { FillType.NoFill, FillType.Solid, FillType.Gradient, FillType.Pattern, FillType.Picture },
            formats.Take(5).Select(s => s.FillFormat.FillType));
        Assert.Equal(Color.FromArgb(200, 30, 60).ToArgb(), formats[1].FillFormat.SolidFillColor.Color.ToArgb());
        Assert.Equal(PatternStyle.DiagonalBrick, formats[3].FillFormat.PatternFormat.PatternStyle);
        Assert.Equal(new[] { 1f, 2f, 3f, 4f, 5f }, formats.Take(5).Select(s => s.LineFormat.Width));
        var bullets = ((IAutoShape)formats[5]).TextFrame.Paragraphs.Select(p => p.ParagraphFormat.Bullet).ToArray();
        Assert.Equal(new[] { BulletType.None, BulletType.Symbol, BulletType.Numbered, BulletType.Picture }, bullets.Select(b => b.Type));
        Assert.Equal('»', bullets[1].Char);
        Assert.Equal(3, bullets[2].NumberedBulletStartWith);
        Assert.Equal(TextTests.Png, bullets[3].PictureData);

        // The imported slides keep their content: tables, every picture kind, connectors,
        // hyperlinks, and the changed theme of their own master.
        var imports = back.Slides.Skip(Presets.Length + 1).SelectMany(s => s.Shapes).ToList();
        Assert.Contains(imports, s => s is ITable table && table.Rows.SelectMany(r => r).Any(c => c.IsMergedCell));
        Assert.Contains(imports, s => s is IVideoFrame);
        Assert.Contains(imports, s => s is IAudioFrame);
        Assert.Contains(imports, s => s is IConnector { StartShapeConnectedTo: not null });
        var types = back.Images.Select(i => i.ContentType).ToHashSet();
        foreach (var type in new[] { "image/png", "image/jpeg", "image/gif", "image/bmp", "image/tiff", "image/svg+xml" })
            Assert.Contains(type, types);
        Assert.NotEmpty(back.HyperlinkQueries.GetAnyHyperlinks());
        Assert.Contains(back.Masters, m => m.Theme.ColorScheme.Accent1.ToArgb() == ThemeTests.Navy.ToArgb());
    }

    [LibreOfficeTests.SkippableFactIfNoSoffice]
    public void LibreOfficeDrawsEverySlide()
    {
        var bytes = CombinedDeck(out int imported);
        Assert.Equal(Presets.Length + 1 + imported, LibreOfficeTests.PdfPages(bytes));
    }
}
