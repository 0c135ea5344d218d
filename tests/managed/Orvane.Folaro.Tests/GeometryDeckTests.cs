using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using Orvane.Folaro.Effects;
using Orvane.Marel;
using Xunit;

namespace Orvane.Folaro.Tests;

// A deck with connected shapes, groups, a freeform and effects: it validates, converts and reads back;
// and every connector, group, geometry and effect of the corpus reads without an exception.
public class GeometryDeckTests
{
    private static readonly float[] Freeform =
    {
        0, 0, 150, 0, // MoveTo, LineTo
        200, 0, 200, 50, 150, 100, // CubicBezierTo
        100, 150, 50, 100, // QuadraticBezierTo
        60, 40, 0, 180, // ArcTo
    };

    internal static byte[] GeometryDeck(out int slides)
    {
        using IPresentation pres = new Presentation();
        var blank = pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!;

        var connected = pres.Slides.AddEmptySlide(blank).Shapes;
        var a = connected.AddAutoShape(ShapeType.Rect, 50, 50, 120, 60);
        a.Name = "A";
        var b = connected.AddAutoShape(ShapeType.Ellipse, 400, 250, 100, 100);
        b.Name = "B";
        var c = connected.AddAutoShape(ShapeType.Triangle, 100, 350, 80, 80);
        c.Name = "C";
        var straight = connected.AddConnector(ShapeType.StraightConnector1, 0, 0, 10, 10);
        straight.StartShapeConnectedTo = a;
        straight.StartShapeConnectionSiteIndex = 3;
        straight.EndShapeConnectedTo = b;
        straight.EndShapeConnectionSiteIndex = 2;
        var bent = connected.AddConnector(ShapeType.BentConnector3, 0, 0, 10, 10);
        bent.StartShapeConnectedTo = c;
        bent.EndShapeConnectedTo = b;
        bent.EndShapeConnectionSiteIndex = 4;
        var curved = connected.AddConnector(ShapeType.CurvedConnector3, 0, 0, 10, 10);
        curved.StartShapeConnectedTo = a;
        curved.StartShapeConnectionSiteIndex = 2;
        curved.EndShapeConnectedTo = c;
        b.X = 450; // reroutes straight and bent
        a.Y = 80;  // reroutes straight and curved

        var grouped = pres.Slides.AddEmptySlide(blank).Shapes;
        var g1 = grouped.AddAutoShape(ShapeType.Star5, 100, 100, 80, 80);
        var g2 = grouped.AddAutoShape(ShapeType.Rect, 200, 150, 100, 40);
        var group = grouped.Group(new IShape[] { g1, g2 });
        group.Name = "Kept";
        g2.Y = 200; // the group grows with its child
        var u1 = grouped.AddAutoShape(ShapeType.Hexagon, 400, 300, 60, 50);
        var u2 = grouped.AddAutoShape(ShapeType.Rect, 500, 350, 40, 40);
        var loose = grouped.Group(new IShape[] { u1, u2 });
        loose.X = 350;
        grouped.Ungroup(loose);

        var free = pres.Slides.AddEmptySlide(blank).Shapes.AddAutoShape(ShapeType.Rect, 100, 100, 200, 150);
        var path = new GeometryPath();
        path.MoveTo(Freeform[0], Freeform[1]);
        path.LineTo(Freeform[2], Freeform[3]);
        path.CubicBezierTo(Freeform[4], Freeform[5], Freeform[6], Freeform[7], Freeform[8], Freeform[9]);
        path.QuadraticBezierTo(Freeform[10], Freeform[11], Freeform[12], Freeform[13]);
        path.ArcTo(Freeform[14], Freeform[15], Freeform[16], Freeform[17]);
        path.CloseFigure();
        free.SetGeometryPath(path);

        var effects = pres.Slides.AddEmptySlide(blank).Shapes;
        var shadowed = effects.AddAutoShape(ShapeType.Rect, 50, 50, 100, 100);
        shadowed.EffectFormat.EnableOuterShadowEffect();
        shadowed.EffectFormat.OuterShadowEffect!.Distance = 6;
        shadowed.EffectFormat.OuterShadowEffect!.Direction = 90;
        shadowed.EffectFormat.OuterShadowEffect!.ShadowColor.Color = Color.FromArgb(255, 200, 0, 0);
        var glowing = effects.AddAutoShape(ShapeType.Ellipse, 250, 50, 100, 100);
        glowing.EffectFormat.EnableGlowEffect();
        glowing.EffectFormat.GlowEffect!.Radius = 10;
        var soft = effects.AddAutoShape(ShapeType.Rect, 450, 50, 100, 100);
        soft.EffectFormat.EnableSoftEdgeEffect();
        soft.EffectFormat.SoftEdgeEffect!.Radius = 5;

        slides = pres.Slides.Count;
        return TestFiles.SaveToBytes(pres);
    }

    private static (float X, float Y) Start(IConnector c) => (c.Frame.FlipH == NullableBool.True ? c.X + c.Width : c.X, c.Frame.FlipV == NullableBool.True ? c.Y + c.Height : c.Y);

    private static (float X, float Y) End(IConnector c) => (c.Frame.FlipH == NullableBool.True ? c.X : c.X + c.Width, c.Frame.FlipV == NullableBool.True ? c.Y : c.Y + c.Height);

    [Fact]
    public void GeometryDeckValidatesAndReadsBack()
    {
        var bytes = GeometryDeck(out int count);
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        Assert.Equal(count, back.Slides.Count);
        int first = count - 4;

        var connectors = back.Slides[first].Shapes.OfType<IConnector>().ToList();
        Assert.Equal(3, connectors.Count);
        var straight = connectors[0];
        Assert.Equal(("A", 3u, "B", 2u), (straight.StartShapeConnectedTo!.Name, straight.StartShapeConnectionSiteIndex, straight.EndShapeConnectedTo!.Name, straight.EndShapeConnectionSiteIndex));
        // A moved to y 80: its right middle is (170, 110); B moved to x 450: its left middle is (450, 300).
        Assert.Equal((170f, 110f), Start(straight));
        Assert.Equal((450f, 300f), End(straight));
        // The bent connector runs from C's top (140, 350) to B's bottom (500, 350) after B moved.
        Assert.Equal((140f, 350f), Start(connectors[1]));
        Assert.Equal((500f, 350f), End(connectors[1]));
        Assert.Equal(ShapeType.CurvedConnector3, connectors[2].ShapeType);
        Assert.Equal((110f, 140f), Start(connectors[2]));

        var grouped = back.Slides[first + 1].Shapes;
        Assert.Equal(3, grouped.Count);
        var group = Assert.IsAssignableFrom<IGroupShape>(grouped[0]);
        Assert.Equal("Kept", group.Name);
        Assert.Equal((100f, 100f, 200f, 140f), (group.X, group.Y, group.Width, group.Height));
        Assert.Equal((200f, 200f), (group.Shapes[1].X, group.Shapes[1].Y));
        Assert.Equal((ShapeType.Hexagon, 350f, 300f), (((IAutoShape)grouped[1]).ShapeType, grouped[1].X, grouped[1].Y));
        Assert.Equal((450f, 350f), (grouped[2].X, grouped[2].Y));

        var free = (IAutoShape)back.Slides[first + 2].Shapes[0];
        Assert.Equal(ShapeType.Custom, free.ShapeType);
        var path = Assert.Single(free.GetGeometryPaths());
        Assert.Equal(
            new[] { PathCommand.MoveTo, PathCommand.LineTo, PathCommand.CubicBezierTo, PathCommand.QuadraticBezierTo, PathCommand.ArcTo, PathCommand.Close },
            path.PathData.Select(s => s.PathCommand));
        Assert.Equal(Freeform, path.PathData.SelectMany(s => s.PathPoints));

        var effects = back.Slides[first + 3].Shapes;
        var shadow = effects[0].EffectFormat.OuterShadowEffect!;
        Assert.Equal((6f, 90f, Color.FromArgb(255, 200, 0, 0)), (shadow.Distance, shadow.Direction, shadow.ShadowColor.Color));
        Assert.Equal(10f, effects[1].EffectFormat.GlowEffect!.Radius);
        Assert.Equal(5f, effects[2].EffectFormat.SoftEdgeEffect!.Radius);
        Assert.Null(effects[2].EffectFormat.GlowEffect);
    }

    [LibreOfficeTests.SkippableFactIfNoSoffice]
    public void GeometryDeckConvertsWithOnePagePerSlide()
    {
        var bytes = GeometryDeck(out int count);
        Assert.Equal(count, LibreOfficeTests.PdfPages(bytes));
    }

    [Fact]
    public void EveryCorpusShapeReadsItsGeometryEffectsAndConnections()
    {
        int decks = 0, connectors = 0, groups = 0, custom = 0, effects = 0;
        foreach (var (file, pres) in TestFiles.LoadableCorpusDecks())
        {
            decks++;
            var slides = TestFiles.AllSlides(pres);
            foreach (var slide in slides)
            {
                try
                {
                    foreach (var shape in TestFiles.AllShapes(slide.Shapes))
                    {
                        _ = shape.ConnectionSiteCount;
                        var frame = shape.Frame.GetEffective();
                        Assert.True(float.IsFinite(frame.X) && frame.Width >= 0, $"{shape.Name}: {frame}");
                        var fx = shape.EffectFormat;
                        if (!fx.IsNoEffects)
                            effects++;
                        if (fx.OuterShadowEffect is { } s)
                            _ = (s.BlurRadius, s.Direction, s.Distance, s.RectangleAlign, s.ScaleHorizontal, s.SkewVertical, s.RotateShadowWithShape, s.ShadowColor.Color);
                        if (fx.GlowEffect is { } g)
                            _ = (g.Radius, g.Color.Color);
                        _ = fx.SoftEdgeEffect?.Radius;
                        if (shape is IGeometryShape geometry)
                        {
                            foreach (var path in geometry.GetGeometryPaths())
                                Assert.All(path.PathData.SelectMany(p => p.PathPoints), v => Assert.False(float.IsNaN(v)));
                            if (shape is IAutoShape { ShapeType: ShapeType.Custom })
                                custom++;
                        }
                        if (shape is IConnector c)
                        {
                            connectors++;
                            _ = (c.StartShapeConnectedTo?.Name, c.EndShapeConnectedTo?.Name, c.StartShapeConnectionSiteIndex, c.EndShapeConnectionSiteIndex);
                        }
                        if (shape is IGroupShape)
                            groups++;
                    }
                }
                catch (Exception ex) when (ex is not Xunit.Sdk.XunitException)
                {
                    throw new Exception($"{Path.GetFileName(file)}, {slide}: {ex.Message}", ex);
                }
            }
        }
        if (TestFiles.HasCorpus)
        {
            Assert.True(decks > 10, $"only {decks} decks read");
            Assert.True(connectors > 0 && groups > 0 && custom > 0 && effects > 0, $"{connectors} connectors, {groups} groups, {custom} freeforms, {effects} shapes with effects");
        }
    }

    [Fact]
    public void CorpusConnectorsRerouteOntoTheirShapes()
    {
        int rerouted = 0;
        foreach (var (file, pres) in TestFiles.LoadableCorpusDecks())
        {
            foreach (var slide in pres.Slides)
                foreach (var c in TestFiles.AllShapes(slide.Shapes).OfType<IConnector>().Where(c => c.StartShapeConnectedTo != null && c.EndShapeConnectedTo != null))
                {
                    c.Reroute();
                    var once = c.Frame;
                    c.Reroute();
                    Assert.Equal(once, c.Frame);
                    Assert.Equal(0f, c.Rotation);
                    rerouted++;
                }
            var errors = TestFiles.Validate(TestFiles.SaveToBytes(pres)).Except(TestFiles.Validate(File.ReadAllBytes(file))).ToList();
            Assert.True(errors.Count == 0, $"{Path.GetFileName(file)}: {TestFiles.Describe(errors)}");
        }
        Assert.True(!TestFiles.HasCorpus || rerouted > 0, "no corpus connector is attached at both ends");
    }
}
