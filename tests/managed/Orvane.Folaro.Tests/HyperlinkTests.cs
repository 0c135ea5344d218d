using System;
using System.IO;
using System.Linq;
using Xunit;

namespace Orvane.Folaro.Tests;

// Hyperlinks on shapes and text: every kind written and read back, views that write through,
// relationships that come and go with the links, and the queries over a whole deck.
public class HyperlinkTests
{
    private static ISlide Blank(IPresentation pres) => pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!);

    // On slide 1: a web link, show jumps on click and hover, a jump to slide 2; on slide 2: mail and jump links on text.
    internal static void AddEveryKind(IPresentation pres, ISlide first, ISlide second)
    {
        var web = first.Shapes.AddAutoShape(ShapeType.Rect, 20, 200, 100, 40);
        web.Name = "web";
        var link = new Hyperlink("https://example.com/docs?a=1&b=2") { Tooltip = "the docs", TargetFrame = "_blank", HighlightClick = true, History = false };
        web.HyperlinkClick = link;
        web.HyperlinkMouseOver = Hyperlink.LastSlide;
        string[] jumps = { "first", "previous", "next", "last", "end", "none", "viewed" };
        IHyperlink[] actions = { Hyperlink.FirstSlide, Hyperlink.PreviousSlide, Hyperlink.NextSlide, Hyperlink.LastSlide, Hyperlink.EndShow, Hyperlink.NoAction, Hyperlink.LastViewedSlide };
        for (int i = 0; i < jumps.Length; i++)
        {
            var button = first.Shapes.AddAutoShape(ShapeType.ActionButtonBlank, 140 + i * 50, 200, 40, 40);
            button.Name = jumps[i];
            button.HyperlinkClick = actions[i];
        }
        var toSecond = first.Shapes.AddAutoShape(ShapeType.Rect, 20, 260, 100, 40);
        toSecond.Name = "to second";
        toSecond.HyperlinkClick = new Hyperlink(second);

        var text = second.Shapes.AddAutoShape(ShapeType.Rect, 20, 200, 300, 60);
        text.Name = "text";
        text.TextFrame.Text = "write to us or go back";
        var portions = text.TextFrame.Paragraphs[0].Portions;
        portions[0].Text = "write to us";
        portions.Add(" or ");
        portions.Add("go back");
        portions[0].PortionFormat.HyperlinkClick = Hyperlink.Email("team@example.com", "Hello there");
        portions[2].HyperlinkClick = new Hyperlink(first) { Tooltip = "back to the start" };
        portions[2].HyperlinkMouseOver = Hyperlink.NextSlide;
    }

    internal static void AssertEveryKind(IPresentation back)
    {
        var first = back.Slides[0];
        var second = back.Slides[1];
        IShape Named(ISlide s, string name) => s.Shapes.First(x => x.Name == name);
        var web = Named(first, "web").HyperlinkClick!;
        Assert.Equal((HyperlinkActionType.Hyperlink, "https://example.com/docs?a=1&b=2"), (web.ActionType, web.ExternalUrl));
        Assert.Equal(("the docs", "_blank", true, false), (web.Tooltip, web.TargetFrame, web.HighlightClick, web.History));
        Assert.Null(web.TargetSlide);
        Assert.Equal(HyperlinkActionType.JumpLastSlide, Named(first, "web").HyperlinkMouseOver!.ActionType);
        var expected = new[]
        {
            ("first", HyperlinkActionType.JumpFirstSlide), ("previous", HyperlinkActionType.JumpPreviousSlide), ("next", HyperlinkActionType.JumpNextSlide),
            ("last", HyperlinkActionType.JumpLastSlide), ("end", HyperlinkActionType.EndShow), ("none", HyperlinkActionType.NoAction),
            ("viewed", HyperlinkActionType.JumpLastViewedSlide),
        };
        foreach (var (name, action) in expected)
        {
            var h = Named(first, name).HyperlinkClick!;
            Assert.Equal((action, "", true), (h.ActionType, h.ExternalUrl, h.History));
        }
        var jump = Named(first, "to second").HyperlinkClick!;
        Assert.Equal(HyperlinkActionType.JumpSpecificSlide, jump.ActionType);
        Assert.Same(second, jump.TargetSlide);

        var portions = ((IAutoShape)Named(second, "text")).TextFrame.Paragraphs[0].Portions;
        var mail = portions[0].PortionFormat.HyperlinkClick!;
        Assert.Equal((HyperlinkActionType.Hyperlink, "mailto:team@example.com?subject=Hello%20there"), (mail.ActionType, mail.ExternalUrl));
        Assert.Null(portions[1].HyperlinkClick);
        Assert.Same(first, portions[2].HyperlinkClick!.TargetSlide);
        Assert.Equal("back to the start", portions[2].HyperlinkClick!.Tooltip);
        Assert.Equal(HyperlinkActionType.JumpNextSlide, portions[2].PortionFormat.HyperlinkMouseOver!.ActionType);
    }

    [Fact]
    public void EveryKindRoundTripsOnItsOwnDeck()
    {
        using IPresentation pres = new Presentation();
        var a = Blank(pres);
        var b = Blank(pres);
        AddEveryKind(pres, a, b);
        AssertEveryKind(pres);
        var bytes = TestFiles.SaveToBytes(pres);
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        AssertEveryKind(back);
    }

    [Fact]
    public void AReadLinkIsAViewThatWritesThrough()
    {
        using IPresentation pres = new Presentation();
        var shape = Blank(pres).Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);
        shape.HyperlinkClick = new Hyperlink("https://example.org/");
        var view = shape.HyperlinkClick!;
        view.Tooltip = "more";
        view.History = false;
        Assert.Equal(("more", false), (shape.HyperlinkClick!.Tooltip, shape.HyperlinkClick!.History));
        view.Tooltip = "";
        Assert.Equal("", shape.HyperlinkClick!.Tooltip);
        // A detached link keeps its own values, and the shared show actions are fresh each time.
        var made = Hyperlink.FirstSlide;
        made.Tooltip = "changed";
        Assert.Equal("", Hyperlink.FirstSlide.Tooltip);
        // Copying a read link to another shape copies its settings.
        var other = pres.Slides[0].Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);
        other.HyperlinkClick = shape.HyperlinkClick;
        Assert.Equal(("https://example.org/", false), (other.HyperlinkClick!.ExternalUrl, other.HyperlinkClick!.History));
        // Reassigning a link to its own shape keeps its relationship.
        shape.HyperlinkClick = shape.HyperlinkClick;
        Assert.Equal("https://example.org/", shape.HyperlinkClick!.ExternalUrl);
    }

    [Fact]
    public void RelationshipsGoWithTheirLastLink()
    {
        using IPresentation pres = new Presentation();
        var a = Blank(pres);
        var b = Blank(pres);
        var part = ((Slide)a).Part;
        var shape = a.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);
        shape.HyperlinkClick = new Hyperlink("https://example.org/");
        Assert.Single(part.HyperlinkRelationships);
        shape.HyperlinkClick = new Hyperlink("https://example.net/");
        Assert.Equal("https://example.net/", part.HyperlinkRelationships.Single().Uri.OriginalString);
        shape.HyperlinkClick = null;
        Assert.Empty(part.HyperlinkRelationships);
        Assert.Null(shape.HyperlinkClick);

        // Two jumps to one slide share a relationship; removing one keeps it for the other.
        var other = a.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);
        shape.HyperlinkClick = new Hyperlink(b);
        other.HyperlinkMouseOver = new Hyperlink(b);
        Assert.Single(part.Parts, p => ReferenceEquals(p.OpenXmlPart, ((Slide)b).Part));
        shape.HyperlinkClick = null;
        Assert.Same(b, other.HyperlinkMouseOver!.TargetSlide);
        other.HyperlinkMouseOver = null;
        Assert.DoesNotContain(part.Parts, p => ReferenceEquals(p.OpenXmlPart, ((Slide)b).Part));
        // The slide itself stays, in the deck and in the package.
        b.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10).Name = "still here";
        var bytes = TestFiles.SaveToBytes(pres);
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        Assert.Equal(2, back.Slides.Count);
        Assert.Contains(back.Slides[1].Shapes, s => s.Name == "still here");
    }

    [Fact]
    public void ASlideCanLinkToItselfButNotToAnotherDeck()
    {
        using IPresentation pres = new Presentation();
        var a = Blank(pres);
        var shape = a.Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10);
        shape.HyperlinkClick = new Hyperlink(a);
        Assert.Same(a, shape.HyperlinkClick!.TargetSlide);
        using IPresentation other = new Presentation();
        var foreign = Blank(other);
        var ex = Assert.Throws<ArgumentException>(() => shape.HyperlinkClick = new Hyperlink(foreign));
        Assert.Contains("another presentation", ex.Message);
        Assert.Same(a, shape.HyperlinkClick!.TargetSlide);
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(pres));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void ProgramsFilesAndMacrosReadButCannotBeSet()
    {
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("python-pptx/act-props.pptm"));
        var slide = pres.Slides[2];
        IHyperlink Of(string name) => slide.Shapes.First(s => s.Name == name).HyperlinkClick!;
        Assert.Equal(HyperlinkActionType.JumpSpecificSlide, Of("Rounded Rectangle 9").ActionType);
        Assert.Same(slide, Of("Rounded Rectangle 9").TargetSlide);
        Assert.Equal(("http://yahoo.com", HyperlinkActionType.Hyperlink), (Of("Rounded Rectangle 11").ExternalUrl, Of("Rounded Rectangle 11").ActionType));
        Assert.Equal(HyperlinkActionType.OpenFile, Of("Rounded Rectangle 12").ActionType);
        Assert.Equal(HyperlinkActionType.OpenFile, Of("Rounded Rectangle 13").ActionType);
        Assert.EndsWith("72-dpi.tiff", Of("Rounded Rectangle 13").ExternalUrl);
        Assert.Equal(HyperlinkActionType.StartMacro, Of("Rounded Rectangle 17").ActionType);
        Assert.Equal(HyperlinkActionType.StartProgram, Of("Rounded Rectangle 18").ActionType);
        Assert.Equal(HyperlinkActionType.JumpLastViewedSlide, Of("Rounded Rectangle 6").ActionType);
        Assert.Equal(HyperlinkActionType.Unknown, Of("Rounded Rectangle 14").ActionType);
        var target = slide.Shapes.First(s => s.Name == "Rounded Rectangle 1");
        var ex = Assert.Throws<NotSupportedException>(() => target.HyperlinkClick = Of("Rounded Rectangle 18"));
        Assert.Contains("StartProgram", ex.Message);
        Assert.Throws<NotSupportedException>(() => target.HyperlinkClick = Of("Rounded Rectangle 17"));
        Assert.Null(target.HyperlinkClick);
    }

    [Fact]
    public void QueriesFindEveryLinkWithItsOwnerAndRemoveAllClearsThem()
    {
        using IPresentation pres = new Presentation();
        var a = Blank(pres);
        var b = Blank(pres);
        AddEveryKind(pres, a, b);
        pres.Masters[0].Shapes.AddAutoShape(ShapeType.Rect, 0, 0, 10, 10).HyperlinkClick = new Hyperlink("https://master.example/");
        var queries = pres.HyperlinkQueries;
        var clicks = queries.GetHyperlinkClicks();
        // Ten shapes on slide 1, two portions on slide 2, one shape on the master.
        Assert.Equal(12, clicks.Length);
        Assert.Equal(2, clicks.OfType<IPortion>().Count());
        Assert.Equal("write to us", clicks.OfType<IPortion>().First().Text);
        Assert.Equal("https://master.example/", clicks.Last().HyperlinkClick!.ExternalUrl);
        Assert.Equal(2, queries.GetHyperlinkMouseOvers().Length);
        Assert.Equal(12, queries.GetAnyHyperlinks().Length);

        queries.RemoveAllHyperlinks();
        Assert.Empty(queries.GetAnyHyperlinks());
        Assert.Empty(((Slide)a).Part.HyperlinkRelationships);
        Assert.DoesNotContain(((Slide)a).Part.Parts, p => p.OpenXmlPart is DocumentFormat.OpenXml.Packaging.SlidePart);
        Assert.Empty(((MasterSlide)pres.Masters[0]).Part.HyperlinkRelationships);
        Assert.Equal(2, pres.Slides.Count);
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(pres));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void BadLinksAreRefused()
    {
        Assert.Throws<ArgumentException>(() => new Hyperlink(""));
        Assert.Throws<ArgumentException>(() => Hyperlink.Email("not an address"));
        Assert.Throws<ArgumentNullException>(() => new Hyperlink((ISlide)null!));
    }

    [Fact]
    public void EveryCorpusHyperlinkReads()
    {
        int links = 0;
        foreach (var (_, pres) in TestFiles.LoadableCorpusDecks())
        {
            foreach (var owner in pres.HyperlinkQueries.GetAnyHyperlinks())
                foreach (var link in new[] { owner.HyperlinkClick, owner.HyperlinkMouseOver })
                {
                    if (link == null)
                        continue;
                    links++;
                    _ = (link.ActionType, link.ExternalUrl, link.TargetSlide, link.Tooltip, link.History, link.HighlightClick, link.TargetFrame, link.ToString());
                }
        }
        Assert.True(links > 30, $"only {links} hyperlinks read");
    }
}
