using System;
using System.IO;
using Orvane.Marel;
using Orvane.Marel.Drawing2D;
using Orvane.Marel.Imaging;
using Orvane.Marel.Printing;
using Xunit;

namespace Orvane.Marel.Tests;

public class ImageTests : IDisposable
{
    private readonly string _dir = Directory.CreateTempSubdirectory("orvane-marel-").FullName;

    public void Dispose() => Directory.Delete(_dir, recursive: true);

    private static Bitmap Checker()
    {
        var bmp = new Bitmap(8, 6);
        for (int y = 0; y < 6; y++)
            for (int x = 0; x < 8; x++)
                bmp.SetPixel(x, y, (x + y) % 2 == 0 ? Color.Red : Color.Blue);
        return bmp;
    }

    [Fact]
    public void NewBitmapIsTransparentAndPixelsRoundTrip()
    {
        using var bmp = new Bitmap(3, 2);
        Assert.Equal(new Size(3, 2), bmp.Size);
        Assert.Equal(0, bmp.GetPixel(2, 1).A);
        bmp.SetPixel(1, 1, Color.FromArgb(255, 10, 20, 30));
        Assert.Equal(Color.FromArgb(255, 10, 20, 30), bmp.GetPixel(1, 1));
        Assert.Equal(ImageFormat.MemoryBmp, bmp.RawFormat);
    }

    [Fact]
    public void PixelAccessOutsideTheImageThrows()
    {
        using var bmp = new Bitmap(3, 2);
        Assert.Throws<ArgumentOutOfRangeException>(() => bmp.GetPixel(3, 0));
        Assert.Throws<ArgumentOutOfRangeException>(() => bmp.SetPixel(0, -1, Color.Red));
        Assert.Throws<ArgumentOutOfRangeException>(() => new Bitmap(0, 5));
    }

    [Fact]
    public void PngRoundTripIsExact()
    {
        using var bmp = Checker();
        var path = Path.Combine(_dir, "c.png");
        bmp.Save(path, ImageFormat.Png);
        using var back = new Bitmap(path);
        Assert.Equal(ImageFormat.Png, back.RawFormat);
        Assert.Equal(bmp.Size, back.Size);
        for (int y = 0; y < 6; y++)
            for (int x = 0; x < 8; x++)
                Assert.Equal(bmp.GetPixel(x, y).ToArgb(), back.GetPixel(x, y).ToArgb());
    }

    [Fact]
    public void JpegRoundTripKeepsSizeAndApproximateColours()
    {
        using var bmp = new Bitmap(16, 16);
        using (var g = Graphics.FromImage(bmp))
        {
            g.Clear(Color.White);
            g.FillRectangle(Color.Red, 0, 0, 8, 16);
        }
        using var ms = new MemoryStream();
        bmp.Save(ms, ImageFormat.Jpeg);
        Assert.Equal(new byte[] { 0xFF, 0xD8 }, ms.ToArray()[..2]);
        ms.Position = 0;
        using var back = new Bitmap(ms);
        Assert.Equal(ImageFormat.Jpeg, back.RawFormat);
        Assert.Equal(new Size(16, 16), back.Size);
        var left = back.GetPixel(2, 8);
        var right = back.GetPixel(13, 8);
        Assert.True(left.R > 200 && left.G < 60 && left.B < 60, left.ToString());
        Assert.True(right.R > 200 && right.G > 200 && right.B > 200, right.ToString());
    }

    [Fact]
    public void BmpIsWrittenAndReadBack()
    {
        using var bmp = Checker();
        using var ms = new MemoryStream();
        bmp.Save(ms, ImageFormat.Bmp);
        ms.Position = 0;
        using var back = Image.FromStream(ms);
        Assert.Equal(ImageFormat.Bmp, back.RawFormat);
        var b = Assert.IsType<Bitmap>(back);
        Assert.Equal(Color.Red.ToArgb(), b.GetPixel(0, 0).ToArgb());
        Assert.Equal(Color.Blue.ToArgb(), b.GetPixel(1, 0).ToArgb());
        Assert.Equal(Color.Blue.ToArgb(), b.GetPixel(0, 5).ToArgb());
    }

    [Fact]
    public void UnsupportedEncodingAndBadInputGiveClearErrors()
    {
        using var bmp = new Bitmap(2, 2);
        var ex = Assert.Throws<NotSupportedException>(() => bmp.Save(new MemoryStream(), ImageFormat.Tiff));
        Assert.Contains("Tiff", ex.Message);
        Assert.Throws<ArgumentException>(() => new Bitmap(new MemoryStream(new byte[] { 1, 2, 3, 4 })));
        bmp.Dispose();
        Assert.Throws<ObjectDisposedException>(() => bmp.Width);
    }

    [Fact]
    public void GraphicsFillsShapesAndPaths()
    {
        using var bmp = new Bitmap(20, 20);
        using (var g = Graphics.FromImage(bmp))
        {
            g.AntiAlias = false;
            g.Clear(Color.White);
            using var path = new GraphicsPath();
            path.AddLine(0, 0, 10, 0);
            path.AddLine(10, 0, 10, 10);
            path.AddLine(10, 10, 0, 10);
            path.CloseFigure();
            g.FillPath(Color.Lime, path);
            g.DrawLine(Color.Black, 1, new PointF(15.5f, 0), new PointF(15.5f, 20));
        }
        Assert.Equal(Color.Lime.ToArgb(), bmp.GetPixel(5, 5).ToArgb());
        Assert.Equal(Color.White.ToArgb(), bmp.GetPixel(12, 12).ToArgb());
        Assert.Equal(Color.Black.ToArgb(), bmp.GetPixel(15, 10).ToArgb());
    }

    [Fact]
    public void GraphicsPathCountsPointsAndFigures()
    {
        using var path = new GraphicsPath();
        Assert.Equal(RectangleF.Empty, path.GetBounds());
        path.AddLine(0, 0, 10, 0);
        path.AddLine(10, 0, 10, 5);   // continues the figure at its end point
        Assert.Equal(3, path.PointCount);
        path.AddLine(20, 20, 30, 20); // joined to the open figure by a line
        Assert.Equal(5, path.PointCount);
        path.CloseFigure();
        path.AddBezier(new PointF(0, 0), new PointF(1, 40), new PointF(2, 40), new PointF(3, 0));
        Assert.Equal(9, path.PointCount);
        path.AddRectangle(new RectangleF(-5, -5, 1, 1));
        Assert.Equal(new RectangleF(-5, -5, 35, 45), path.GetBounds());
        path.Reset();
        Assert.Equal(0, path.PointCount);
    }

    [Fact]
    public void PrinterSettingsValidateAndClone()
    {
        var s = new PrinterSettings { PrinterName = "lab", Copies = 3, PrintRange = PrintRange.SomePages, FromPage = 2, ToPage = 4 };
        Assert.False(s.IsDefaultPrinter);
        var copy = s.Clone();
        copy.Copies = 1;
        Assert.Equal(3, s.Copies);
        Assert.Equal("lab", copy.PrinterName);
        Assert.Throws<ArgumentOutOfRangeException>(() => s.Copies = -1);
        Assert.Throws<ArgumentOutOfRangeException>(() => s.FromPage = -2);
        Assert.True(new PrinterSettings().IsDefaultPrinter);
    }
}
