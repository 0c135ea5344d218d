using System;
using System.IO;
using System.Linq;
using Xunit;

namespace WrpGen.Tests
{
    /// <summary>The files of a whole run over the fixture assembly: the report, the shards, hosts against proxies.</summary>
    public class GenerationTests : IClassFixture<GeneratedFixture>
    {
        private readonly GeneratedFixture _g;

        public GenerationTests(GeneratedFixture g) { _g = g; }

        [Fact]
        public void TheReportListsExactlyTheSkippedTypesAndMembersWithTheirKinds()
        {
            // Every kind a value, record, list or view can carry is bound; what
            // stays is what has no binding at all.
            var expected = new[]
            {
                "Wrp.Fixture.Box<T>\tgeneric",
                "Wrp.Fixture.Document.Callback(System.Action)\tdelegate",
                "Wrp.Fixture.Document.Changed(System.EventHandler)\tdelegate",
                "Wrp.Fixture.Document.Echo(T)\tgeneric",
                "Wrp.Fixture.Document.Inner\tunsupported",
                "Wrp.Fixture.Kinds.Map()\tcollection",
                "Wrp.Fixture.Kinds.Ranges(System.Int32[,])\tarray",
                "Wrp.Fixture.Kinds.Slot()\tbyref",
            };
            Assert.Equal(expected, _g.Read("skipped.txt").TrimEnd('\n').Split('\n'));
        }

        [Fact]
        public void HostsBindEveryEntryInOrderFromTheModulesOwnProxyAssembly()
        {
            var lines = _g.Lines(_g.Unit("Document"));
            int names = Array.IndexOf(lines, "static const char* const names[] = {");
            var bound = lines.Skip(names + 1).TakeWhile(l => l != "};").ToList();
            Assert.Equal("\"ctor_000_Document\",", bound[0]);
            Assert.Equal("\"ctor_001_Document\",", bound[1]);
            Assert.Equal("\"btp_IsAssignableTo\",", bound[^1]);
            Assert.Equal(bound.Count, bound.Distinct().Count());
            // Every bound entry has its [UnmanagedCallersOnly] method in the proxy, and nothing else is there.
            string proxy = _g.Read("cs/Wrp.Fixture.Document.cs");
            var proxyEntries = proxy.Split('\n').Select(l => l.Trim())
                .Where(l => l.StartsWith("public static ", StringComparison.Ordinal) && !l.Contains(" class "))
                .Select(l => l.Substring(0, l.IndexOf('(')).Split(' ').Last()).ToList();
            Assert.Equal(bound.Select(b => b.Trim('"', ',')), proxyEntries);
        }

        [Fact]
        public void EveryUnitIsIncludedByExactlyOneShard()
        {
            var shards = Enumerable.Range(0, 4).Select(i => _g.Read($"cpp/shard_{i:D2}.cpp")).ToList();
            var units = Directory.GetFiles(Path.Combine(_g.Root, "cpp", "units")).Select(Path.GetFileName).ToList();
            Assert.NotEmpty(units);
            foreach (var unit in units)
                Assert.Equal(1, shards.Count(s => s.Contains($"#include \"units/{unit}\"")));
            Assert.All(shards, s => Assert.StartsWith("// Shard", s));
        }

        internal static string Id(string name) => Orvane.WrpGen.Passes.Naming.Id(name);
    }
}
