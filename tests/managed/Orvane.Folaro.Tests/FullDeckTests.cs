using System;
using System.IO;
using System.Linq;
using Orvane.Marel;
using Xunit;

namespace Orvane.Folaro.Tests;

// A deck made from scratch with every document-level feature: it must validate and reload
// with the values written (LibreOfficeTests converts the same deck).
public class FullDeckTests
{
    internal static byte[] EveryFeatureDeck()
    {
        using IPresentation pres = new Presentation();
        foreach (var layout in pres.LayoutSlides)
            pres.Slides.AddEmptySlide(layout).Name = layout.Name;
        pres.Slides.AddClone(pres.Slides[1]);
        pres.Slides[2].Hidden = true;
        pres.FirstSlideNumber = 3;
        pres.SlideSize.SetSize(SlideSizeType.OnScreen, SlideSizeScaleType.EnsureFit);
        pres.Slides[0].NotesSlideManager.AddNotesSlide().NotesText = "speaker notes";
        pres.Sections.AddSection("Intro", pres.Slides[0]);
        pres.Sections.AddSection("Body", pres.Slides[4]);
        var ana = pres.CommentAuthors.AddAuthor("Ana", "A");
        var bo = pres.CommentAuthors.AddAuthor("Bo", "B");
        ana.Comments.AddComment("please check", pres.Slides[1], new PointF(20, 30), new DateTime(2026, 1, 2, 3, 4, 5)).AddReply(bo, "checked", new DateTime(2026, 1, 3));
        pres.CustomData.Tags.Add("deck", "full");
        pres.Slides[3].CustomData.Tags.Add("slide", "four");
        pres.CustomData.CustomXmlParts.Add("<meta><k>v</k></meta>");
        pres.Slides[3].CustomData.CustomXmlParts.Add("<slideMeta/>");
        pres.HeaderFooterManager.SetAllSlideNumbersVisibility(true);
        pres.Slides[1].HeaderFooterManager.SetFooterVisibility(true);
        pres.Slides[1].HeaderFooterManager.SetFooterText("Draft");
        var props = pres.DocumentProperties;
        props.Title = "Everything";
        props.Author = "Ana";
        props.SetCustomPropertyValue("count", 3);
        props.SetCustomPropertyValue("ratio", 0.5);
        props.SetCustomPropertyValue("ok", true);
        props.SetCustomPropertyValue("when", new DateTime(2026, 5, 1));
        props.SetCustomPropertyValue("who", "team");
        pres.ViewProperties.ShowComments = NullableBool.True;
        pres.ProtectionManager.SetWriteProtection("pw");
        pres.ProtectionManager.ReadOnlyRecommended = true;
        return TestFiles.SaveToBytes(pres);
    }

    [Fact]
    public void EveryFeatureDeckValidatesAndReadsBack()
    {
        var bytes = EveryFeatureDeck();
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        Assert.Equal(12, back.Slides.Count);
        Assert.True(back.Slides[2].Hidden);
        Assert.Equal(3, back.FirstSlideNumber);
        Assert.Equal("speaker notes", back.Slides[0].NotesSlideManager.NotesSlide!.NotesText);
        Assert.Equal(new[] { "Intro", "Body" }, back.Sections.Select(s => s.Name));
        Assert.Equal(new[] { "please check", "checked" }, back.Slides[1].GetSlideComments(null).Select(c => c.Text));
        Assert.Equal("four", back.Slides[3].CustomData.Tags.GetValue("slide"));
        Assert.Equal(2, back.AllCustomXmlParts.Length);
        Assert.Equal("Draft", back.Slides[1].HeaderFooterManager.FooterText);
        Assert.False(back.Slides[0].HeaderFooterManager.IsFooterVisible);
        Assert.True(back.Slides[0].HeaderFooterManager.IsSlideNumberVisible);
        Assert.Equal(0.5, back.DocumentProperties.GetCustomPropertyValueAsDouble("ratio"));
        Assert.True(back.ProtectionManager.CheckWriteProtection("pw"));
        Assert.True(back.ProtectionManager.ReadOnlyRecommended);
    }

    [Fact]
    public void SlideFooterIsShownHiddenAndTextedOnOneSlideOnly()
    {
        using IPresentation pres = new Presentation();
        var a = pres.Slides.AddEmptySlide(pres.LayoutSlides[1]);
        var b = pres.Slides.AddEmptySlide(pres.LayoutSlides[1]);
        var hf = a.HeaderFooterManager;
        Assert.False(hf.IsFooterVisible);
        Assert.Equal("", hf.FooterText);
        hf.SetFooterVisibility(true);
        hf.SetFooterText("Only here");
        hf.SetDateTimeVisibility(true);
        hf.SetDateTimeText("Today");
        Assert.True(hf.IsFooterVisible);
        Assert.Equal("Only here", hf.FooterText);
        Assert.Equal("Today", hf.DateTimeText);
        Assert.False(b.HeaderFooterManager.IsFooterVisible);
        hf.SetFooterVisibility(false);
        Assert.False(hf.IsFooterVisible);
        Assert.True(hf.IsDateTimeVisible);
        Assert.Throws<ArgumentNullException>(() => hf.SetFooterText(null!));
    }
}
