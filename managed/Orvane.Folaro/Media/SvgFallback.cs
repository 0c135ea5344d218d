using System;
using System.IO;
using Orvane.Marel;
using Orvane.Marel.Imaging;

namespace Orvane.Folaro;

// The PNG stored beside an SVG image for readers that show no SVG. The drawing package has no
// SVG renderer, so the rendition is a plain panel of the SVG's declared size (longest side at
// most 1024 pixels): a light grey field inside a grey frame.
internal static class SvgFallback
{
    private const int MaxSide = 1024;

    internal static byte[] Render(byte[] svg)
    {
        var (width, height) = ImageFormats.SvgSize(svg);
        double scale = Math.Min(1.0, (double)MaxSide / Math.Max(width, height));
        int w = Math.Max(1, (int)Math.Round(width * scale)), h = Math.Max(1, (int)Math.Round(height * scale));
        using var bitmap = new Bitmap(w, h);
        using (var g = Graphics.FromImage(bitmap))
        {
            g.Clear(Color.FromArgb(240, 240, 240));
            float pen = Math.Max(1f, Math.Min(w, h) / 50f);
            g.DrawRectangle(Color.FromArgb(160, 160, 160), pen, new RectangleF(pen / 2, pen / 2, w - pen, h - pen));
        }
        using var png = new MemoryStream();
        bitmap.Save(png, ImageFormat.Png);
        return png.ToArray();
    }
}
