using System;
using Orvane.WrpGen.Passes;
using Xunit;

namespace WrpGen.Tests
{
    public class NamingTests
    {
        [Theory]
        [InlineData("GetThumbnails", "get_thumbnails")]
        [InlineData("JoinPortionsWithSameFormatting", "join_portions_with_same_formatting")]
        [InlineData("AsIDisposable", "as_idisposable")]
        [InlineData("AsICollection", "as_icollection")]
        [InlineData("AsIEnumerable", "as_ienumerable")]
        [InlineData("HTMLOptions", "htmloptions")]
        [InlineData("SVGOptions", "svgoptions")]
        [InlineData("Utf8String", "utf8_string")]
        [InlineData("Get3DName", "get3_dname")]
        [InlineData("Drawing2D", "drawing2_d")]
        [InlineData("id", "id")]
        [InlineData("X", "x")]
        [InlineData("Scale_X", "scale_x")]
        // The probe module's members.
        [InlineData("EchoSByte", "echo_sbyte")]
        [InlineData("EchoUInt16", "echo_uint16")]
        [InlineData("EchoNullableInt32", "echo_nullable_int32")]
        [InlineData("DateTimeRaw", "date_time_raw")]
        [InlineData("DateTimeOffsetFromParts", "date_time_offset_from_parts")]
        [InlineData("ArrayListOf", "array_list_of")]
        [InlineData("NewReadOnlyCollectionBase", "new_read_only_collection_base")]
        public void SnakeCaseBreaksBeforeACapitalThatFollowsALowerCaseLetterOrDigit(string managed, string python) =>
            Assert.Equal(python, Naming.ToSnake(managed));

        [Theory]
        [InlineData("NotDefined", "NOT_DEFINED")]
        [InlineData("False", "FALSE")]
        [InlineData("AssemblyVersion", "ASSEMBLY_VERSION")]
        [InlineData("MaxSize2D", "MAX_SIZE2_D")]
        public void UpperSnakeIsTheSnakeCaseInCapitals(string managed, string python) =>
            Assert.Equal(python, Naming.ToUpperSnake(managed));

        [Theory]
        [InlineData("orvane.folaro", "Orvane.Folaro", "Orvane.Folaro", "orvane.folaro")]
        [InlineData("orvane.folaro", "Orvane.Folaro", "Orvane.Folaro.Export.Web", "orvane.folaro.export.web")]
        [InlineData("orvane.pymarel", "Orvane.Marel", "Orvane.Marel.Drawing2D", "orvane.pymarel.drawing2d")]
        [InlineData("orvane.folaro", "Orvane.Folaro", "Orvane.Folaro.MathText", "orvane.folaro.mathtext")]
        public void ModulePathsLowerCaseEachSegmentBelowTheRoot(string module, string root, string ns, string expected) =>
            Assert.Equal(expected, Naming.ModulePath(module, root, ns));

        [Fact]
        public void ANamespaceOutsideTheRootIsRejected()
        {
            var e = Assert.Throws<ArgumentException>(() => Naming.ModulePath("orvane.folaro", "Orvane.Folaro", "Orvane.FolaroExtras"));
            Assert.Contains("Orvane.FolaroExtras", e.Message);
        }

        [Theory]
        [InlineData("", "811C9DC5")]
        [InlineData("a", "E40C292C")]
        [InlineData("foobar", "BF9CF968")]
        public void IdentifiersAreFnv1a32InUpperCaseHex(string name, string id) => Assert.Equal(id, Naming.Id(name));

        [Fact]
        public void ProxyNamespacesPrefixEverySegment() =>
            Assert.Equal("WrpNs_Orvane.WrpNs_Folaro.WrpNs_Export", Naming.ProxyNamespace("Orvane.Folaro.Export"));

        [Fact]
        public void TheRootNamespaceIsTheCommonPrefixOfWholeSegments() =>
            Assert.Equal("Orvane.Marel", Naming.CommonNamespace(new[] { "Orvane.Marel.Imaging", "Orvane.Marel", "Orvane.Marel.Drawing2D" }));
    }
}
