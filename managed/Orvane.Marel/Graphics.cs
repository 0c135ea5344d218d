using System;
using Orvane.Marel.Drawing2D;
using SkiaSharp;

namespace Orvane.Marel;

/// <summary>Draws on an image. Coordinates are pixels; pen widths are pixels.</summary>
public sealed class Graphics : IDisposable
{
    private SKCanvas? _canvas;

    private Graphics(SKCanvas canvas)
    {
        _canvas = canvas;
    }

    public static Graphics FromImage(Image image)
    {
        ArgumentNullException.ThrowIfNull(image);
        return new Graphics(new SKCanvas(image.Pixels));
    }

    /// <summary>Whether edges are anti-aliased (on by default).</summary>
    public bool AntiAlias { get; set; } = true;

    private SKCanvas Canvas => _canvas ?? throw new ObjectDisposedException(nameof(Graphics));

    public void Clear(Color color) => Canvas.Clear(ToSk(color));

    public void FillRectangle(Color color, RectangleF rect)
    {
        using var paint = Fill(color);
        Canvas.DrawRect(ToSk(rect), paint);
    }

    public void FillRectangle(Color color, float x, float y, float width, float height) =>
        FillRectangle(color, new RectangleF(x, y, width, height));

    public void DrawRectangle(Color color, float penWidth, RectangleF rect)
    {
        using var paint = Stroke(color, penWidth);
        Canvas.DrawRect(ToSk(rect), paint);
    }

    public void FillEllipse(Color color, RectangleF rect)
    {
        using var paint = Fill(color);
        Canvas.DrawOval(ToSk(rect), paint);
    }

    public void DrawLine(Color color, float penWidth, PointF pt1, PointF pt2)
    {
        using var paint = Stroke(color, penWidth);
        Canvas.DrawLine(pt1.X, pt1.Y, pt2.X, pt2.Y, paint);
    }

    public void FillPath(Color color, GraphicsPath path)
    {
        ArgumentNullException.ThrowIfNull(path);
        using var paint = Fill(color);
        Canvas.DrawPath(path.Path, paint);
    }

    public void DrawPath(Color color, float penWidth, GraphicsPath path)
    {
        ArgumentNullException.ThrowIfNull(path);
        using var paint = Stroke(color, penWidth);
        Canvas.DrawPath(path.Path, paint);
    }

    /// <summary>Draws an image scaled into a rectangle.</summary>
    public void DrawImage(Image image, RectangleF rect)
    {
        ArgumentNullException.ThrowIfNull(image);
        using var source = SKImage.FromBitmap(image.Pixels);
        using var paint = new SKPaint { IsAntialias = AntiAlias };
        Canvas.DrawImage(source, ToSk(rect), new SKSamplingOptions(SKFilterMode.Linear), paint);
    }

    /// <summary>Draws an image at its own size with its top-left corner at (x, y).</summary>
    public void DrawImage(Image image, float x, float y)
    {
        ArgumentNullException.ThrowIfNull(image);
        DrawImage(image, new RectangleF(x, y, image.Width, image.Height));
    }

    /// <summary>Makes all drawing so far visible in the image's pixels.</summary>
    public void Flush() => Canvas.Flush();

    public void Dispose()
    {
        _canvas?.Flush();
        _canvas?.Dispose();
        _canvas = null;
    }

    private SKPaint Fill(Color color) =>
        new() { Color = ToSk(color), IsAntialias = AntiAlias, Style = SKPaintStyle.Fill };

    private SKPaint Stroke(Color color, float penWidth)
    {
        if (penWidth < 0f || float.IsNaN(penWidth))
            throw new ArgumentOutOfRangeException(nameof(penWidth), penWidth, "Graphics: the pen width must not be negative");
        return new SKPaint { Color = ToSk(color), IsAntialias = AntiAlias, Style = SKPaintStyle.Stroke, StrokeWidth = penWidth };
    }

    private static SKColor ToSk(Color color) => new(color.R, color.G, color.B, color.A);

    private static SKRect ToSk(RectangleF rect) => SKRect.Create(rect.X, rect.Y, rect.Width, rect.Height);
}
