using Orvane.Marel;
using Xunit;

namespace Orvane.Marel.Tests;

public class GeometryTests
{
    [Fact]
    public void RectangleEdgesContainmentAndEquality()
    {
        var r = new RectangleF(10, 20, 30, 40);
        Assert.Equal((10f, 20f, 40f, 60f), (r.Left, r.Top, r.Right, r.Bottom));
        Assert.Equal(new PointF(10, 20), r.Location);
        Assert.Equal(new SizeF(30, 40), r.Size);
        Assert.True(r.Contains(10, 20));
        Assert.False(r.Contains(40, 20));
        Assert.True(r.Contains(new RectangleF(15, 25, 5, 5)));
        Assert.Equal(r, RectangleF.FromLTRB(10, 20, 40, 60));
        Assert.True(RectangleF.Empty.IsEmpty);
    }

    [Fact]
    public void RectangleSetOperations()
    {
        var a = new RectangleF(0, 0, 10, 10);
        var b = new RectangleF(5, 5, 10, 10);
        Assert.Equal(new RectangleF(5, 5, 5, 5), RectangleF.Intersect(a, b));
        Assert.Equal(new RectangleF(0, 0, 15, 15), RectangleF.Union(a, b));
        Assert.True(a.IntersectsWith(b));
        Assert.False(a.IntersectsWith(new RectangleF(10, 0, 5, 5)));
        Assert.Equal(RectangleF.Empty, RectangleF.Intersect(a, new RectangleF(20, 20, 1, 1)));
        Assert.Equal(new RectangleF(-1, -2, 12, 14), a.Inflate(1, 2));
        Assert.Equal(new RectangleF(3, 4, 10, 10), a.Offset(3, 4));
    }

    [Fact]
    public void SizesAndPoints()
    {
        Assert.Equal(new Size(3, 4), new SizeF(3.9f, 4.2f).ToSize());
        Assert.Equal(new Size(4, 5), Size.Ceiling(new SizeF(3.1f, 4.2f)));
        Assert.Equal(new Size(4, 4), Size.Round(new SizeF(3.5f, 4.4f)));
        SizeF widened = new Size(2, 3);
        Assert.Equal(new SizeF(2, 3), widened);
        Assert.Equal(new PointF(4, 6), new PointF(1, 2) + new SizeF(3, 4));
        Assert.True(PointF.Empty.IsEmpty && Size.Empty.IsEmpty && SizeF.Empty.IsEmpty);
        Assert.NotEqual(new Size(1, 2), new Size(2, 1));
    }
}
