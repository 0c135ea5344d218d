using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using Orvane.Marel;
using Xunit;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Tests;

// Guide formulas, preset and freeform paths, connection sites, connectors and groups.
public class GeometryTests
{
    private static ISlide NewSlide(IPresentation pres) => pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!);

    private static float[] Flat(IGeometryPath path) => path.PathData.SelectMany(s => s.PathPoints).ToArray();

    [Fact]
    public void GuideFormulasFollowTheirDefinitions()
    {
        var g = new Dictionary<string, double> { ["w"] = 200, ["h"] = 100, ["a"] = 5400000, ["neg"] = -3 };
        Assert.Equal(60, GeometryEngine.Formula("*/ w 30 100", g), 6);
        Assert.Equal(250, GeometryEngine.Formula("+- w h 50", g), 6);
        Assert.Equal(150, GeometryEngine.Formula("+/ w h 2", g), 6);
        Assert.Equal(100, GeometryEngine.Formula("?: neg w h", g), 6);
        Assert.Equal(200, GeometryEngine.Formula("?: w w h", g), 6);
        Assert.Equal(3, GeometryEngine.Formula("abs neg", g), 6);
        // Angles are in 1/60,000 degree: at2 of (0, 1) is 90 degrees; sin and cos take them.
        Assert.Equal(5400000, GeometryEngine.Formula("at2 0 1", g), 3);
        Assert.Equal(200, GeometryEngine.Formula("sin w a", g), 6);
        Assert.Equal(0, GeometryEngine.Formula("cos w a", g), 6);
        Assert.Equal(100, GeometryEngine.Formula("tan h 2700000", g), 6);
        Assert.Equal(200 * Math.Cos(Math.Atan2(100, 200)), GeometryEngine.Formula("cat2 w w h", g), 6);
        Assert.Equal(200 * Math.Sin(Math.Atan2(100, 200)), GeometryEngine.Formula("sat2 w w h", g), 6);
        Assert.Equal(Math.Sqrt(200 * 200 + 100 * 100 + 9), GeometryEngine.Formula("mod w h neg", g), 6);
        Assert.Equal(100, GeometryEngine.Formula("pin 0 w h", g), 6);
        Assert.Equal(0, GeometryEngine.Formula("pin 0 neg h", g), 6);
        Assert.Equal(10, GeometryEngine.Formula("sqrt 100", g), 6);
        Assert.Equal(100, GeometryEngine.Formula("min w h", g), 6);
        Assert.Equal(200, GeometryEngine.Formula("max w h", g), 6);
    }

    [Fact]
    public void PresetPathsAreEvaluatedForSizeAndAdjustments()
    {
        using IPresentation pres = new Presentation();
        var shapes = NewSlide(pres).Shapes;
        var rect = shapes.AddAutoShape(ShapeType.Rect, 10, 20, 100, 50);
        var path = Assert.Single(rect.GetGeometryPaths());
        Assert.Equal(new[] { PathCommand.MoveTo, PathCommand.LineTo, PathCommand.LineTo, PathCommand.LineTo, PathCommand.Close }, path.PathData.Select(s => s.PathCommand));
        Assert.Equal(new float[] { 0, 0, 100, 0, 100, 50, 0, 50 }, Flat(path));

        // A rounded rectangle's corner radius is adj/100000 of the shorter side: the arcs are of an ellipse twice that.
        var round = shapes.AddAutoShape(ShapeType.RoundRect, 0, 0, 100, 50);
        var arcs = round.GetGeometryPaths()[0].PathData.Where(s => s.PathCommand == PathCommand.ArcTo).ToList();
        Assert.Equal(4, arcs.Count);
        Assert.Equal(2 * 50 * 16667 / 100000f, arcs[0].PathPoints[0], 3);
        Assert.Equal(180f, arcs[0].PathPoints[2]);
        Assert.Equal(90f, arcs[0].PathPoints[3]);
        round.Adjustments[0].RawValue = 50000;
        Assert.Equal(50f, round.GetGeometryPaths()[0].PathData.First(s => s.PathCommand == PathCommand.ArcTo).PathPoints[0], 3);

        // A line is not filled.
        var line = shapes.AddConnector(ShapeType.BentConnector3, 0, 0, 30, 40);
        var bent = Assert.Single(line.GetGeometryPaths());
        Assert.Equal(PathFillModeType.None, bent.FillMode);
        Assert.Equal(new float[] { 0, 0, 15, 0, 15, 40, 30, 40 }, Flat(bent));
    }

    [Fact]
    public void ConnectionSitesComeFromTheGeometry()
    {
        using IPresentation pres = new Presentation();
        var shapes = NewSlide(pres).Shapes;
        Assert.Equal(4, shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10).ConnectionSiteCount);
        Assert.Equal(8, shapes.AddAutoShape(ShapeType.Ellipse, 0, 0, 10, 10).ConnectionSiteCount);
        Assert.Equal(0, shapes.AddGroupShape().ConnectionSiteCount);
        var free = shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);
        var p = new GeometryPath();
        p.MoveTo(0, 0);
        p.LineTo(10, 10);
        free.SetGeometryPath(p);
        Assert.Equal(0, free.ConnectionSiteCount);
    }

    [Fact]
    public void FreeformPathsAreWrittenInEmuAndReadBackInPoints()
    {
        using IPresentation pres = new Presentation();
        var shape = NewSlide(pres).Shapes.AddAutoShape(ShapeType.Rect, 50, 50, 200, 100);
        var outline = new GeometryPath();
        outline.MoveTo(new PointF(0, 0));
        outline.LineTo(200, 0);
        outline.CubicBezierTo(200, 50, 150, 100, 100, 100);
        outline.QuadraticBezierTo(new PointF(50, 100), new PointF(0, 50));
        outline.ArcTo(40, 20, 90, -180);
        outline.CloseFigure();
        var mark = new GeometryPath { FillMode = PathFillModeType.None, Stroke = false };
        mark.MoveTo(10, 10);
        mark.LineTo(20.5f, 30.25f);
        shape.SetGeometryPaths(new IGeometryPath[] { outline, mark });

        Assert.Equal(ShapeType.Custom, shape.ShapeType);
        var element = ((AutoShape)shape).Element;
        var path = element.Descendants<A.Path>().First();
        Assert.Equal(200 * 12700, path.Width!.Value);
        Assert.Equal("2540000", path.GetFirstChild<A.LineTo>()!.Point!.X!.Value);
        var arc = path.GetFirstChild<A.ArcTo>()!;
        Assert.Equal(("254000", "127000", "5400000", "-10800000"), (arc.WidthRadius!.Value, arc.HeightRadius!.Value, arc.StartAngle!.Value, arc.SwingAngle!.Value));

        var back = shape.GetGeometryPaths();
        Assert.Equal(2, back.Length);
        Assert.Equal(outline.PathData.Select(s => s.PathCommand), back[0].PathData.Select(s => s.PathCommand));
        Assert.Equal(Flat(outline), Flat(back[0]));
        Assert.Equal((PathFillModeType.None, false), (back[1].FillMode, back[1].Stroke));
        Assert.Equal(Flat(mark), Flat(back[1]));

        // The path scales with the shape.
        shape.Width = 400;
        Assert.Equal(400f, Flat(shape.GetGeometryPaths()[0])[2], 3);

        // Back to a preset drops the freeform.
        shape.ShapeType = ShapeType.Ellipse;
        Assert.Empty(element.Descendants<A.CustomGeometry>());
    }

    [Fact]
    public void BadPathsAreRejected()
    {
        var path = new GeometryPath();
        Assert.Throws<InvalidOperationException>(() => path.CloseFigure());
        Assert.Throws<ArgumentOutOfRangeException>(() => path.LineTo(float.NaN, 0));
        Assert.Throws<ArgumentOutOfRangeException>(() => path.ArcTo(-1, 1, 0, 90));
        using IPresentation pres = new Presentation();
        var shape = NewSlide(pres).Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);
        Assert.Throws<ArgumentException>(() => shape.SetGeometryPaths(Array.Empty<IGeometryPath>()));
        Assert.Throws<ArgumentNullException>(() => shape.SetGeometryPaths(new IGeometryPath[] { path, null! }));
        Assert.Equal(ShapeType.Rect, shape.ShapeType);
    }

    [Fact]
    public void ConnectorEndsFollowTheSitesTheyAreAttachedTo()
    {
        using IPresentation pres = new Presentation();
        var shapes = NewSlide(pres).Shapes;
        var a = shapes.AddAutoShape(ShapeType.Rect, 100, 100, 100, 50);
        var b = shapes.AddAutoShape(ShapeType.Rect, 400, 300, 80, 60);
        var c = shapes.AddConnector(ShapeType.BentConnector3, 0, 0, 10, 10);
        c.StartShapeConnectedTo = a;
        c.StartShapeConnectionSiteIndex = 3; // right middle: (200, 125)
        c.EndShapeConnectedTo = b;
        c.EndShapeConnectionSiteIndex = 1; // left middle: (400, 330)
        Assert.Same(a, c.StartShapeConnectedTo);
        Assert.Same(b, c.EndShapeConnectedTo);
        Assert.Equal((200f, 125f, 200f, 205f), (c.X, c.Y, c.Width, c.Height));
        Assert.Equal((NullableBool.False, NullableBool.False), (c.Frame.FlipH, c.Frame.FlipV));

        // Moving the end shape above and left of the start flips the connector.
        b.X = 20;
        b.Y = 10; // left middle now (20, 40)
        Assert.Equal((20f, 40f, 180f, 85f), (c.X, c.Y, c.Width, c.Height));
        Assert.Equal((NullableBool.True, NullableBool.True), (c.Frame.FlipH, c.Frame.FlipV));

        // A rotated shape carries its sites with it: the right middle of a rotated by 90 is the bottom middle.
        a.Rotation = 90;
        Assert.Equal(150f, c.X + c.Width, 3);
        Assert.Equal(175f, c.Y + c.Height, 3);

        // Detached, the end stays where it was when the start shape moves on.
        c.EndShapeConnectedTo = null;
        Assert.Null(c.EndShapeConnectedTo);
        Assert.Equal(0u, c.EndShapeConnectionSiteIndex);
        a.Rotation = 0;
        a.X = 300;
        Assert.Equal((20f, 40f), (c.X, c.Y));
        Assert.Equal(400f, c.X + c.Width, 3);
    }

    [Fact]
    public void ConnectorAttachmentIsChecked()
    {
        using IPresentation pres = new Presentation();
        var shapes = NewSlide(pres).Shapes;
        var a = shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);
        var c = shapes.AddConnector(ShapeType.StraightConnector1, 0, 0, 10, 10);
        Assert.Throws<PptxEditException>(() => c.StartShapeConnectionSiteIndex = 1);
        c.StartShapeConnectedTo = a;
        Assert.Throws<ArgumentOutOfRangeException>(() => c.StartShapeConnectionSiteIndex = 4);
        Assert.Throws<ArgumentException>(() => c.EndShapeConnectedTo = c);
        var other = NewSlide(pres).Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);
        Assert.Throws<ArgumentException>(() => c.EndShapeConnectedTo = other);
    }

    [Fact]
    public void ConnectorsReachShapesInsideScaledGroups()
    {
        using IPresentation pres = new Presentation();
        var shapes = NewSlide(pres).Shapes;
        var inner = shapes.AddAutoShape(ShapeType.Rect, 100, 100, 100, 100);
        var anchor = shapes.AddAutoShape(ShapeType.Rect, 100, 300, 10, 10);
        var group = shapes.Group(new IShape[] { inner, anchor });
        var c = shapes.AddConnector(ShapeType.StraightConnector1, 0, 0, 1, 1);
        c.StartShapeConnectedTo = inner; // top middle: (150, 100)
        c.EndShapeConnectedTo = anchor;
        c.EndShapeConnectionSiteIndex = 2; // bottom middle: (105, 310)
        Assert.Equal((105f, 100f, 45f, 210f), (c.X, c.Y, c.Width, c.Height));
        Assert.Equal(NullableBool.True, c.Frame.FlipH);
        // Doubling the group's width stretches its children about the group's left edge:
        // the start goes to (200, 100), the end to (110, 310).
        group.Width *= 2;
        Assert.Equal((110f, 100f, 90f, 210f), (c.X, c.Y, c.Width, c.Height));
    }

    [Fact]
    public void GroupKeepsPlacesAndZOrderAndUngroupRestoresThem()
    {
        using IPresentation pres = new Presentation();
        var shapes = NewSlide(pres).Shapes;
        var back = shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);
        var a = shapes.AddAutoShape(ShapeType.Ellipse, 100, 50, 40, 20);
        var middle = shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);
        var b = shapes.AddAutoShape(ShapeType.Triangle, 200, 150, 60, 30);
        var front = shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);

        var group = shapes.Group(new IShape[] { b, a });
        Assert.Equal(new IShape[] { back, middle, group, front }, shapes.ToArray());
        Assert.Equal(new IShape[] { a, b }, group.Shapes.ToArray());
        Assert.Equal((100f, 50f, 160f, 130f), (group.X, group.Y, group.Width, group.Height));
        Assert.Equal((200f, 150f), (b.X, b.Y));

        // Moving a child refits the group's box and its child box together.
        b.X = 300;
        Assert.Equal((100f, 260f), (group.X, group.Width));
        var xfrm = ((GroupShape)group).Element.Descendants<A.TransformGroup>().First();
        Assert.Equal((xfrm.Offset!.X!.Value, xfrm.Extents!.Cx!.Value), (xfrm.ChildOffset!.X!.Value, xfrm.ChildExtents!.Cx!.Value));

        // Moving, scaling, rotating and flipping the group moves its children with it on ungrouping.
        group.X = 0;
        group.Y = 0;
        group.Width = 520; // twice as wide
        group.Rotation = 90;
        shapes.Ungroup(group);
        Assert.Equal(new IShape[] { back, middle, a, b, front }, shapes.ToArray());
        // The group's box (0, 0, 520, 130) turns about its centre (260, 65).
        // a's centre was (40, 10) in the stretched group: turned it goes to (315, -155).
        Assert.Equal(315f, a.X + a.Width / 2, 2);
        Assert.Equal(-155f, a.Y + a.Height / 2, 2);
        Assert.Equal((80f, 20f, 90f), (a.Width, a.Height, a.Rotation));

        Assert.Throws<ArgumentException>(() => shapes.Group(new IShape[] { a, a }));
        Assert.Throws<ArgumentException>(() => shapes.Group(Array.Empty<IShape>()));
        Assert.Throws<ArgumentException>(() => shapes.Ungroup(group));
    }

    [Fact]
    public void UngroupingAFlippedGroupMirrorsItsChildren()
    {
        using IPresentation pres = new Presentation();
        var shapes = NewSlide(pres).Shapes;
        var a = shapes.AddAutoShape(ShapeType.RtTriangle, 0, 0, 10, 10);
        var b = shapes.AddAutoShape(ShapeType.Rect, 90, 0, 10, 10);
        a.Rotation = 30;
        var group = shapes.Group(new IShape[] { a, b });
        group.Frame = new ShapeFrame(0, 0, 100, 10, NullableBool.True, NullableBool.False, 0);
        shapes.Ungroup(group);
        Assert.Equal((90f, 0f), (a.X, b.X));
        Assert.Equal(NullableBool.True, a.Frame.FlipH);
        Assert.Equal(330f, a.Rotation, 3);
    }
}
