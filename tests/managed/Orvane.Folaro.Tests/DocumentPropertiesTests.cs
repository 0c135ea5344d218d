using System;
using System.IO;
using System.Linq;
using Xunit;

namespace Orvane.Folaro.Tests;

public class DocumentPropertiesTests
{
    private static IPresentation Reload(IPresentation pres) => new Presentation(new MemoryStream(TestFiles.SaveToBytes(pres)));

    [Fact]
    public void CorePropertiesAreWrittenAndReadBack()
    {
        using IPresentation pres = new Presentation();
        var props = pres.DocumentProperties;
        props.Title = "Plan";
        props.Author = "Ana";
        props.Subject = "Budget";
        props.Keywords = "q3; money";
        props.Comments = "draft";
        props.Category = "internal";
        props.LastSavedBy = "Bo";
        props.RevisionNumber = 7;
        var created = new DateTime(2024, 5, 6, 7, 8, 9, DateTimeKind.Utc);
        props.CreatedTime = created;
        using var back = Reload(pres);
        var b = back.DocumentProperties;
        Assert.Equal(("Plan", "Ana", "Budget", "q3; money"), (b.Title, b.Author, b.Subject, b.Keywords));
        Assert.Equal(("draft", "internal", "Bo", 7), (b.Comments, b.Category, b.LastSavedBy, b.RevisionNumber));
        Assert.Equal(created, b.CreatedTime);
        Assert.Equal(DateTime.MinValue, b.LastPrinted);
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(back));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void EmptyingAPropertyRemovesIt()
    {
        using IPresentation pres = new Presentation();
        pres.DocumentProperties.Title = "x";
        pres.DocumentProperties.Title = "";
        Assert.Equal("", pres.DocumentProperties.Title);
        Assert.Throws<ArgumentNullException>(() => pres.DocumentProperties.Title = null!);
        Assert.Throws<ArgumentOutOfRangeException>(() => pres.DocumentProperties.RevisionNumber = -1);
    }

    [Fact]
    public void ExistingCorePropertiesOfACorpusDeckAreRead()
    {
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("python-pptx/prs-properties.pptx"));
        var props = pres.DocumentProperties;
        Assert.False(string.IsNullOrEmpty(props.Author + props.Title + props.Subject));
        Assert.NotEqual(DateTime.MinValue, props.CreatedTime);
    }

    [Fact]
    public void DeckWithoutCorePropertiesGetsThemOnWrite()
    {
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("python-pptx/no-core-props.pptx"));
        Assert.Equal("", pres.DocumentProperties.Title);
        pres.DocumentProperties.Title = "now";
        using var back = Reload(pres);
        Assert.Equal("now", back.DocumentProperties.Title);
    }

    [Fact]
    public void ExtendedPropertiesAreWrittenAndReadBack()
    {
        using IPresentation pres = new Presentation();
        Assert.Equal("Orvane.Folaro", pres.DocumentProperties.NameOfApplication);
        pres.DocumentProperties.Company = "Acme";
        pres.DocumentProperties.Manager = "Zoe";
        pres.DocumentProperties.HyperlinkBase = "https://example.org/";
        using var back = Reload(pres);
        Assert.Equal(("Acme", "Zoe", "https://example.org/"), (back.DocumentProperties.Company, back.DocumentProperties.Manager, back.DocumentProperties.HyperlinkBase));
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(back));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void CustomPropertiesKeepTheirTypes()
    {
        using IPresentation pres = new Presentation();
        var props = pres.DocumentProperties;
        var when = new DateTime(2025, 1, 2, 3, 4, 5, DateTimeKind.Utc);
        props.SetCustomPropertyValue("Text", "hello");
        props.SetCustomPropertyValue("Count", 42);
        props.SetCustomPropertyValue("Ratio", 0.25);
        props.SetCustomPropertyValue("Done", true);
        props.SetCustomPropertyValue("When", when);
        props.SetCustomPropertyValue("Count", 43);
        using var back = Reload(pres);
        var b = back.DocumentProperties;
        Assert.Equal(5, b.CountOfCustomProperties);
        Assert.Equal("hello", b.GetCustomPropertyValueAsString("text"));
        Assert.Equal(43, b.GetCustomPropertyValueAsInt("Count"));
        Assert.Equal(0.25, b.GetCustomPropertyValueAsDouble("Ratio"));
        Assert.True(b.GetCustomPropertyValueAsBool("Done"));
        Assert.Equal(when, b.GetCustomPropertyValueAsDateTime("When"));
        Assert.Equal("Text", b.GetCustomPropertyName(0));
        Assert.Throws<InvalidCastException>(() => b.GetCustomPropertyValueAsInt("Text"));
        Assert.Throws<ArgumentException>(() => b.GetCustomPropertyValueAsString("missing"));
        Assert.Throws<ArgumentOutOfRangeException>(() => b.GetCustomPropertyName(5));
        Assert.True(b.RemoveCustomProperty("Ratio"));
        Assert.False(b.RemoveCustomProperty("Ratio"));
        Assert.False(b.ContainsCustomProperty("Ratio"));
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(back));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void ViewPropertiesAreReadAndWritten()
    {
        using IPresentation pres = new Presentation();
        Assert.Equal(NullableBool.NotDefined, pres.ViewProperties.ShowComments);
        Assert.Equal(6f, pres.ViewProperties.GridSpacing);
        pres.ViewProperties.ShowComments = NullableBool.False;
        pres.ViewProperties.GridSpacing = 12f;
        Assert.Throws<ArgumentOutOfRangeException>(() => pres.ViewProperties.GridSpacing = 0f);
        using var back = Reload(pres);
        Assert.Equal(NullableBool.False, back.ViewProperties.ShowComments);
        Assert.Equal(12f, back.ViewProperties.GridSpacing);
        var errors = TestFiles.Validate(TestFiles.SaveToBytes(back));
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
    }

    [Fact]
    public void CommentAuthorsAreAddedWithDistinctIdsAndRemoved()
    {
        using IPresentation pres = new Presentation();
        Assert.Equal(0, pres.CommentAuthors.Count);
        var ana = pres.CommentAuthors.AddAuthor("Ana Lima", "AL");
        pres.CommentAuthors.AddAuthor("Bo Berg", "BB");
        Assert.Same(ana, pres.CommentAuthors[0]);
        using (var back = Reload(pres))
        {
            Assert.Equal(new[] { "Ana Lima", "Bo Berg" }, back.CommentAuthors.Select(a => a.Name).ToArray());
            Assert.Equal("BB", back.CommentAuthors[1].Initials);
            var errors = TestFiles.Validate(TestFiles.SaveToBytes(back));
            Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        }
        pres.CommentAuthors.RemoveAt(0);
        Assert.Equal(1, pres.CommentAuthors.Count);
        Assert.Equal(-1, pres.CommentAuthors.IndexOf(ana));
        Assert.Throws<ArgumentException>(() => pres.CommentAuthors.Remove(ana));
    }

    [Fact]
    public void PresentationTagsAreAddedReplacedAndRemoved()
    {
        using IPresentation pres = new Presentation();
        var tags = pres.CustomData.Tags;
        Assert.Equal(0, tags.Count);
        tags.Add("Owner", "ana");
        tags.Add("stage", "draft");
        tags.Add("STAGE", "final");
        Assert.Equal(2, tags.Count);
        Assert.Equal("final", tags.GetValue("stage"));
        Assert.Null(tags.GetValue("missing"));
        using (var back = Reload(pres))
        {
            var t = back.CustomData.Tags;
            Assert.Equal(new[] { "Owner", "stage" }, t.ToArray());
            Assert.Equal("ana", t.GetValueByIndex(0));
            var errors = TestFiles.Validate(TestFiles.SaveToBytes(back));
            Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        }
        tags.Remove("owner");
        Assert.Throws<ArgumentException>(() => tags.Remove("owner"));
        Assert.Throws<ArgumentOutOfRangeException>(() => tags.GetNameByIndex(1));
        tags.Clear();
        Assert.Equal(0, pres.CustomData.Tags.Count);
    }

    // The corpus deck ends p:presentation with an extension list, which the verifier must precede.
    [Theory]
    [InlineData(null)]
    [InlineData("python-pptx/txt-text.pptx")]
    public void WriteProtectionIsSetCheckedAndRemoved(string? corpusDeck)
    {
        using IPresentation pres = corpusDeck == null ? new Presentation() : new Presentation(Path.Combine(TestFiles.Corpus, corpusDeck));
        Assert.False(pres.ProtectionManager.IsWriteProtected);
        Assert.False(pres.ProtectionManager.CheckWriteProtection("x"));
        pres.ProtectionManager.SetWriteProtection("s3cret");
        using (var back = Reload(pres))
        {
            Assert.True(back.ProtectionManager.IsWriteProtected);
            Assert.True(back.ProtectionManager.CheckWriteProtection("s3cret"));
            Assert.False(back.ProtectionManager.CheckWriteProtection("S3cret"));
            var errors = TestFiles.Validate(TestFiles.SaveToBytes(back));
            Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        }
        Assert.Throws<ArgumentException>(() => pres.ProtectionManager.SetWriteProtection(""));
        pres.ProtectionManager.RemoveWriteProtection();
        Assert.False(pres.ProtectionManager.IsWriteProtected);
        Assert.False(pres.ProtectionManager.IsEncrypted);
    }
}
