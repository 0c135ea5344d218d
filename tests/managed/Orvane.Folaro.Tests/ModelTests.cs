using System;
using System.IO;
using System.Linq;
using Orvane.Folaro.Animation;
using Orvane.Folaro.SlideShow;
using Orvane.Folaro.Util;
using Orvane.Folaro.Vba;
using Orvane.Marel;
using Xunit;

namespace Orvane.Folaro.Tests;

public class ModelTests
{
    [Fact]
    public void ThemeColoursAndFontsAreEditedInPlace()
    {
        using IPresentation pres = new Presentation();
        var theme = pres.MasterTheme;
        theme.Name = "Harbour";
        theme.ColorScheme.Accent2 = Color.FromArgb(0x12, 0x34, 0x56);
        theme.FontScheme.MajorLatinFont = "Liberation Serif";
        Assert.Throws<ArgumentException>(() => theme.ColorScheme.Dark1 = Color.Empty);
        using IPresentation back = new Presentation(new MemoryStream(TestFiles.SaveToBytes(pres)));
        Assert.Equal("Harbour", back.MasterTheme.Name);
        Assert.Equal(Color.FromArgb(0x12, 0x34, 0x56), back.MasterTheme.ColorScheme.Accent2);
        Assert.Equal("Liberation Serif", back.MasterTheme.FontScheme.MajorLatinFont);
    }

    [Fact]
    public void ShapesOfACorpusDeckHaveKindsNamesAndBoxes()
    {
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("python-pptx/shp-shapes.pptx"));
        var shapes = pres.Slides.SelectMany(s => s.Shapes).ToList();
        Assert.NotEmpty(shapes);
        Assert.All(shapes, s => Assert.False(string.IsNullOrEmpty(s.Name)));
        Assert.Contains(shapes, s => s is AutoShape);
        Assert.All(shapes, s => Assert.True(s.Width >= 0 && s.Height >= 0));
        var ids = shapes.Where(s => ReferenceEquals(s.Slide, pres.Slides[0])).Select(s => s.UniqueId).ToList();
        Assert.Equal(ids.Count, ids.Distinct().Count());
    }

    [Fact]
    public void GroupsExposeTheirChildrenAndFindShapeSearchesThem()
    {
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("python-pptx/shp-groupshape.pptx"));
        var group = pres.Slides.SelectMany(s => s.Shapes).OfType<IGroupShape>().First();
        Assert.True(group.Shapes.Count > 0);
        var inner = group.Shapes[0];
        inner.AlternativeText = "needle";
        Assert.Same(inner, SlideUtil.FindShape(pres, "needle"));
        Assert.Null(SlideUtil.FindShape(pres, "absent"));
    }

    [Fact]
    public void ShapePositionEditsAreSavedInPoints()
    {
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("python-pptx/shp-pos-and-size.pptx"));
        var shape = pres.Slides[0].Shapes[0];
        shape.X = 12.5f;
        shape.Width = 200;
        shape.Hidden = true;
        using IPresentation back = new Presentation(new MemoryStream(TestFiles.SaveToBytes(pres)));
        var again = back.Slides[0].Shapes[0];
        Assert.Equal((12.5f, 200f, true), (again.X, again.Width, again.Hidden));
        Assert.Throws<ArgumentOutOfRangeException>(() => again.Width = -1);
    }

    [Fact]
    public void HyperlinksAreReadFromShapes()
    {
        Assert.Equal(HyperlinkActionType.JumpNextSlide, Hyperlink.ActionOf("ppaction://hlinkshowjump?jump=nextslide", false));
        Assert.Equal(HyperlinkActionType.Hyperlink, Hyperlink.ActionOf(null, true));
        Assert.Equal(HyperlinkActionType.NoAction, Hyperlink.ActionOf(null, false));
        Assert.Equal(HyperlinkActionType.JumpSpecificSlide, Hyperlink.ActionOf("ppaction://hlinksldjump", true));
        Assert.Equal("https://x.org", new Hyperlink("https://x.org").ExternalUrl);
        Assert.Equal(HyperlinkActionType.EndShow, Hyperlink.EndShow.ActionType);
    }

    [Fact]
    public void JoinPortionsMergesRunsWithTheSameFormatting()
    {
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("python-pptx/txt-text.pptx"));
        int Runs() => pres.Slides.Sum(s => ((Slide)s).Part.Slide.Descendants<DocumentFormat.OpenXml.Drawing.Run>().Count());
        string Text() => string.Concat(pres.Slides.Select(s => ((Slide)s).Part.Slide.InnerText));
        var before = Text();
        int runs = Runs();
        pres.JoinPortionsWithSameFormatting();
        Assert.Equal(before, Text());
        Assert.True(Runs() <= runs);
    }

    [Fact]
    public void TransitionsAreReadAndWritten()
    {
        using IPresentation pres = new Presentation();
        var slide = (Slide)pres.Slides.AddEmptySlide(pres.LayoutSlides[0]);
        var transition = slide.SlideShowTransition;
        Assert.Equal(TransitionType.None, transition.Type);
        Assert.True(transition.AdvanceOnClick);
        transition.Speed = TransitionSpeed.Slow;
        transition.AdvanceAfterTime = 1500;
        transition.AdvanceOnClick = false;
        Assert.Equal((TransitionSpeed.Slow, 1500u, false, true), (transition.Speed, transition.AdvanceAfterTime, transition.AdvanceOnClick, transition.AdvanceAfter));
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(pres));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void BehaviorPropertiesAreSharedByValue()
    {
        Assert.Same(BehaviorProperty.PptX, BehaviorProperty.GetOrCreateByValue("ppt_x"));
        Assert.False(BehaviorProperty.Rotation.IsCustom);
        var custom = BehaviorProperty.GetOrCreateByValue("my.prop");
        Assert.True(custom.IsCustom);
        Assert.Equal("my.prop", custom.Value);
    }

    [Fact]
    public void VbaProjectsFromTheFactory()
    {
        var project = VbaProjectFactory.Instance.CreateVbaProject();
        Assert.Equal("VBAProject", project.Name);
        var module = project.Modules.AddEmptyModule("Module1");
        module.SourceCode = "Sub Hi()\nEnd Sub";
        Assert.Throws<ArgumentException>(() => project.Modules.AddEmptyModule("module1"));
        project.References.Add(VbaReferenceFactory.Instance.CreateOleTypeLibReference("stdole", "*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#stdole2.tlb#OLE Automation"));
        Assert.Equal(1, project.References.Count);
        Assert.Throws<ArgumentException>(() => VbaProjectFactory.Instance.ReadVbaProject(new byte[] { 1, 2, 3 }));
        Assert.Same(VbaProjectFactory.Instance, VbaProjectFactory.Instance);
    }
}
