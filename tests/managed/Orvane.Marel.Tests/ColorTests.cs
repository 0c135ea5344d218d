using System;
using System.Linq;
using System.Reflection;
using Orvane.Marel;
using Xunit;

namespace Orvane.Marel.Tests;

public class ColorTests
{
    [Fact]
    public void FromArgbOverloadsAgreeOnChannels()
    {
        var c = Color.FromArgb(0x40, 0x12, 0x34, 0x56);
        Assert.Equal((0x40, 0x12, 0x34, 0x56), (c.A, c.R, c.G, c.B));
        Assert.Equal(0x40123456, c.ToArgb());
        Assert.Equal(c, Color.FromArgb(0x40123456));
        Assert.Equal(255, Color.FromArgb(1, 2, 3).A);
        var faded = Color.FromArgb(128, Color.Red);
        Assert.Equal((128, 255, 0, 0), (faded.A, faded.R, faded.G, faded.B));
        Assert.False(faded.IsNamedColor);
        Assert.Equal(unchecked((int)0xFFFF0000), Color.FromArgb(-65536).ToArgb());
    }

    [Theory]
    [InlineData(256, 0, 0, 0)]
    [InlineData(0, -1, 0, 0)]
    [InlineData(0, 0, 300, 0)]
    [InlineData(0, 0, 0, 1000)]
    public void FromArgbRejectsChannelsOutsideAByte(int a, int r, int g, int b)
    {
        Assert.Throws<ArgumentOutOfRangeException>(() => Color.FromArgb(a, r, g, b));
    }

    [Fact]
    public void NamedColoursHaveTheirWebValues()
    {
        Assert.Equal(unchecked((int)0xFFFF0000), Color.Red.ToArgb());
        Assert.Equal(unchecked((int)0xFF6495ED), Color.CornflowerBlue.ToArgb());
        Assert.Equal(unchecked((int)0xFF008000), Color.Green.ToArgb());
        Assert.Equal(unchecked((int)0xFF9ACD32), Color.YellowGreen.ToArgb());
        Assert.Equal(0x00FFFFFF, Color.Transparent.ToArgb());
        Assert.Equal("CornflowerBlue", Color.CornflowerBlue.Name);
        Assert.True(Color.CornflowerBlue.IsNamedColor);
    }

    [Fact]
    public void EveryStaticColourIsNamedAfterItsProperty()
    {
        var props = typeof(Color).GetProperties(BindingFlags.Public | BindingFlags.Static)
            .Where(p => p.PropertyType == typeof(Color) && p.Name != nameof(Color.Empty))
            .ToList();
        Assert.Equal(141, props.Count);
        foreach (var p in props)
        {
            var c = (Color)p.GetValue(null)!;
            Assert.Equal(p.Name, c.Name);
            Assert.Equal(c, Color.FromName(p.Name.ToUpperInvariant()));
        }
        // Aliases share values but stay distinct colours, as their names differ.
        Assert.Equal(Color.Aqua.ToArgb(), Color.Cyan.ToArgb());
        Assert.NotEqual(Color.Aqua, Color.Cyan);
    }

    [Fact]
    public void FromNameIsCaseInsensitiveAndRejectsUnknownNames()
    {
        var c = Color.FromName("aliceblue");
        Assert.Equal("AliceBlue", c.Name);
        Assert.Equal(Color.AliceBlue, c);
        var ex = Assert.Throws<ArgumentException>(() => Color.FromName("notacolour"));
        Assert.Contains("notacolour", ex.Message);
    }

    [Fact]
    public void EmptyDiffersFromTransparentBlack()
    {
        Assert.True(Color.Empty.IsEmpty);
        Assert.Equal(0, Color.Empty.ToArgb());
        Assert.NotEqual(Color.Empty, Color.FromArgb(0));
        Assert.False(Color.FromArgb(0).IsEmpty);
        Assert.Equal("0", Color.Empty.Name);
        Assert.Equal("ff102030", Color.FromArgb(0x10, 0x20, 0x30).Name);
    }

    [Fact]
    public void NamedAndUnnamedColoursWithTheSameValueAreNotEqual()
    {
        var plainRed = Color.FromArgb(255, 0, 0);
        Assert.Equal(Color.Red.ToArgb(), plainRed.ToArgb());
        Assert.NotEqual(Color.Red, plainRed);
        Assert.True(plainRed == Color.FromArgb(unchecked((int)0xFFFF0000)));
    }

    [Fact]
    public void HueSaturationBrightness()
    {
        Assert.Equal(0f, Color.Red.GetHue());
        Assert.Equal(120f, Color.Lime.GetHue());
        Assert.Equal(240f, Color.Blue.GetHue());
        Assert.Equal(1f, Color.Red.GetSaturation());
        Assert.Equal(0.5f, Color.Red.GetBrightness());
        Assert.Equal(0f, Color.Gray.GetSaturation());
    }
}
