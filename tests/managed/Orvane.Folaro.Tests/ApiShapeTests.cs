using System;
using System.Linq;
using System.Reflection;
using Xunit;

namespace Orvane.Folaro.Tests;

// The binding generator takes constructors, methods and properties in metadata order, so
// that order is part of the contract.
public class ApiShapeTests
{
    private const BindingFlags Declared = BindingFlags.Public | BindingFlags.Instance | BindingFlags.DeclaredOnly;

    private static string Signature(MethodBase m) =>
        $"{m.Name}({string.Join(", ", m.GetParameters().Select(p => $"{p.ParameterType.Name} {p.Name}"))})";

    [Fact]
    public void PresentationConstructorsAndSaveOverloadsAreInBindingOrder()
    {
        var ctors = typeof(Presentation).GetConstructors().OrderBy(c => c.MetadataToken).Select(Signature);
        Assert.Equal(new[]
        {
            ".ctor()", ".ctor(LoadOptions loadOptions)", ".ctor(Stream stream)", ".ctor(Stream stream, LoadOptions loadOptions)",
            ".ctor(String file)", ".ctor(String file, LoadOptions loadOptions)",
        }, ctors);
        var saves = typeof(Presentation).GetMethods(Declared).Where(m => m.Name == "Save").OrderBy(m => m.MetadataToken).Select(Signature);
        Assert.Equal(new[]
        {
            "Save(String fname, SaveFormat format)", "Save(Stream stream, SaveFormat format)",
            "Save(String fname, SaveFormat format, ISaveOptions options)", "Save(Stream stream, SaveFormat format, ISaveOptions options)",
            "Save(IXamlOptions options)", "Save(String fname, Int32[] slides, SaveFormat format)",
            "Save(String fname, Int32[] slides, SaveFormat format, ISaveOptions options)", "Save(Stream stream, Int32[] slides, SaveFormat format)",
            "Save(Stream stream, Int32[] slides, SaveFormat format, ISaveOptions options)",
        }, saves);
    }

    [Fact]
    public void PresentationMethodsThenPropertiesAreInBindingOrder()
    {
        var methods = typeof(Presentation).GetMethods(Declared).Where(m => !m.IsSpecialName).OrderBy(m => m.MetadataToken)
            .Select(m => m.Name).Distinct();
        Assert.Equal(new[] { "Save", "GetThumbnails", "Print", "GetSlideById", "JoinPortionsWithSameFormatting" }, methods);
        Assert.Equal(12, typeof(Presentation).GetMethods(Declared).Count(m => m.Name == "GetThumbnails"));
        Assert.Equal(4, typeof(Presentation).GetMethods(Declared).Count(m => m.Name == "Print"));
        var properties = typeof(Presentation).GetProperties(Declared).OrderBy(p => p.MetadataToken).Select(p => p.Name);
        Assert.Equal(new[]
        {
            "CurrentDateTime", "HeaderFooterManager", "ProtectionManager", "Slides", "Sections", "SlideSize", "NotesSize",
            "LayoutSlides", "Masters", "MasterNotesSlideManager", "MasterHandoutSlideManager", "FontsManager", "DefaultTextStyle",
            "CommentAuthors", "DocumentProperties", "Images", "Audios", "Videos", "DigitalSignatures", "CustomData",
            "AllCustomXmlParts", "VbaProject", "HyperlinkQueries", "ViewProperties", "FirstSlideNumber", "SourceFormat", "MasterTheme",
        }, properties);
        var writable = typeof(Presentation).GetProperties(Declared).Where(p => p.SetMethod?.IsPublic == true).Select(p => p.Name).OrderBy(n => n);
        Assert.Equal(new[] { "CurrentDateTime", "FirstSlideNumber", "VbaProject" }, writable);
    }

    [Fact]
    public void EveryNamespaceOfTheModuleTreeHasPublicTypes()
    {
        var namespaces = typeof(Presentation).Assembly.GetExportedTypes().Select(t => t.Namespace).Distinct().OrderBy(n => n, StringComparer.Ordinal);
        Assert.Equal(new[]
        {
            "Orvane.Folaro", "Orvane.Folaro.Animation", "Orvane.Folaro.Charts", "Orvane.Folaro.Dom.Ole", "Orvane.Folaro.Effects",
            "Orvane.Folaro.Export", "Orvane.Folaro.Export.Web", "Orvane.Folaro.Export.Xaml", "Orvane.Folaro.Import", "Orvane.Folaro.Ink",
            "Orvane.Folaro.LowCode", "Orvane.Folaro.MathText", "Orvane.Folaro.SlideShow", "Orvane.Folaro.SmartArt",
            "Orvane.Folaro.Spreadsheet", "Orvane.Folaro.Theme", "Orvane.Folaro.Util", "Orvane.Folaro.Vba", "Orvane.Folaro.Warnings",
        }, namespaces);
    }

    [Fact]
    public void PublicModelClassesImplementTheirInterfaceAndAreSealedUnlessBases()
    {
        var types = typeof(Presentation).Assembly.GetExportedTypes();
        var bases = new[] { typeof(BaseSlide), typeof(Shape), typeof(GeometryShape), typeof(GraphicalObject), typeof(PictureFrame), typeof(Export.SaveOptions), typeof(PptxReadException) };
        foreach (var type in types.Where(t => t.IsClass && !(t.IsAbstract && t.IsSealed) && !typeof(Exception).IsAssignableFrom(t)))
        {
            var iface = types.FirstOrDefault(i => i.IsInterface && i.Name == "I" + type.Name);
            Assert.True(iface != null && iface.IsAssignableFrom(type), $"{type.FullName} lacks its interface I{type.Name}");
            Assert.True(type.IsSealed || bases.Contains(type), $"{type.FullName} should be sealed");
        }
        Assert.DoesNotContain(types, t => t.IsClass && t.IsSealed && !t.IsAbstract && bases.Contains(t));
    }
}
