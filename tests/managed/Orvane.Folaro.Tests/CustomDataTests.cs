using System;
using System.IO;
using System.Linq;
using System.Text;
using Xunit;

namespace Orvane.Folaro.Tests;

public class CustomDataTests
{
    private static IPresentation Reload(IPresentation pres) => new Presentation(new MemoryStream(TestFiles.SaveToBytes(pres)));

    [Fact]
    public void SlideTagsAreKeptPerSlide()
    {
        using IPresentation pres = new Presentation();
        var a = pres.Slides.AddEmptySlide(pres.LayoutSlides[0]);
        var b = pres.Slides.AddEmptySlide(pres.LayoutSlides[0]);
        a.CustomData.Tags.Add("step", "1");
        b.CustomData.Tags.Add("step", "2");
        b.CustomData.Tags.Add("owner", "bo");
        pres.CustomData.Tags.Add("deck", "x");
        using var back = Reload(pres);
        Assert.Equal("1", back.Slides[0].CustomData.Tags.GetValue("STEP"));
        Assert.Equal(new[] { "step", "owner" }, back.Slides[1].CustomData.Tags.ToArray());
        Assert.Equal(new[] { "deck" }, back.CustomData.Tags.ToArray());
        back.Slides[1].CustomData.Tags.Clear();
        Assert.Equal(0, back.Slides[1].CustomData.Tags.Count);
        Assert.Equal(1, back.Slides[0].CustomData.Tags.Count);
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(back));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void CustomXmlPartsAreAddedReadReplacedAndRemoved()
    {
        using IPresentation pres = new Presentation();
        var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides[0]);
        var deckPart = pres.CustomData.CustomXmlParts.Add("<root a=\"1\">é</root>");
        slide.CustomData.CustomXmlParts.Add(Encoding.UTF8.GetBytes("<slideData/>"));
        Assert.NotEqual(Guid.Empty, deckPart.ItemId);
        Assert.Equal("<root a=\"1\">é</root>", deckPart.Xml);
        using var back = Reload(pres);
        var all = back.AllCustomXmlParts;
        Assert.Equal(new[] { "<root a=\"1\">é</root>", "<slideData/>" }, all.Select(p => p.Xml));
        Assert.Equal(deckPart.ItemId, all[0].ItemId);
        all[0].XmlData = Encoding.UTF8.GetBytes("<replaced/>");
        Assert.Equal("<replaced/>", back.CustomData.CustomXmlParts[0].Xml);
        back.Slides[0].CustomData.CustomXmlParts.RemoveAt(0);
        Assert.Single(back.AllCustomXmlParts);
        Assert.Throws<PptxEditException>(() => all[1].Xml);
        var bytes = TestFiles.SaveToBytes(back);
        // One item and its properties are left.
        Assert.Equal(2, TestFiles.PartNames(bytes).Count(n => n.StartsWith("customXml/item", StringComparison.Ordinal)));
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void MalformedXmlAndDtdsAreRefused()
    {
        using IPresentation pres = new Presentation();
        var parts = pres.CustomData.CustomXmlParts;
        Assert.Throws<ArgumentException>(() => parts.Add("<open>"));
        Assert.Throws<ArgumentException>(() => parts.Add("<!DOCTYPE a [<!ENTITY e \"x\">]><a>&e;</a>"));
        Assert.Throws<ArgumentNullException>(() => parts.Add((string)null!));
        var part = parts.Add("<ok/>");
        Assert.Throws<ArgumentException>(() => part.Xml = "not xml");
        Assert.Equal("<ok/>", part.Xml);
        Assert.Equal(1, parts.Count);
    }

    [Fact]
    public void CorpusCustomXmlPartsAreListed()
    {
        // Three SharePoint metadata items related from presentation.xml.
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("poi/60810.pptx"));
        var all = pres.AllCustomXmlParts;
        Assert.Equal(3, all.Length);
        Assert.All(all, p => Assert.StartsWith("<", p.Xml.TrimStart('\uFEFF').TrimStart()));
        Assert.All(all, p => Assert.NotEqual(Guid.Empty, p.ItemId));
    }

    [Fact]
    public void ReadOnlyRecommendationIsWrittenAndCleared()
    {
        using IPresentation pres = new Presentation();
        Assert.False(pres.ProtectionManager.ReadOnlyRecommended);
        pres.ProtectionManager.ReadOnlyRecommended = true;
        pres.ProtectionManager.ReadOnlyRecommended = true;
        using (var back = Reload(pres))
        {
            Assert.True(back.ProtectionManager.ReadOnlyRecommended);
            var bytes = TestFiles.SaveToBytes(back);
            var errors = TestFiles.Validate(bytes);
            Assert.True(errors.Count == 0, TestFiles.Describe(errors));
            back.ProtectionManager.ReadOnlyRecommended = false;
            using var cleared = Reload(back);
            Assert.False(cleared.ProtectionManager.ReadOnlyRecommended);
        }
    }
}
