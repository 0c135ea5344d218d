using System;
using System.IO;
using System.Linq;
using Orvane.WrpGen;
using Xunit;

namespace WrpGen.Tests
{
    /// <summary>
    /// Each emitter's whole output for the fixture assembly, compared with its
    /// golden file in Golden/. After an intended change of the generated code,
    /// refresh the goldens with WRPGEN_UPDATE_GOLDEN=1 (e.g.
    /// <c>WRPGEN_UPDATE_GOLDEN=1 dotnet test tests/managed/WrpGen.Tests</c>),
    /// then review and commit their diff. Off by default.
    /// </summary>
    public class GoldenTests : IClassFixture<AnalysedFixture>
    {
        private readonly AnalysedFixture _f;

        public GoldenTests(AnalysedFixture f) { _f = f; }

        public static TheoryData<string> Families()
        {
            var data = new TheoryData<string>();
            foreach (var (family, _) in Generator.Emitters)
                data.Add(family);
            return data;
        }

        private static string GoldenPath(string family) =>
            Path.Combine(GeneratedFixture.RepositoryRoot(), "tests", "managed", "WrpGen.Tests", "Golden", family + ".txt");

        [Theory]
        [MemberData(nameof(Families))]
        public void EachFamilyWritesWhatItsGoldenFileShows(string family)
        {
            var run = Generator.Emitters.Single(e => e.Family == family).Run;
            string actual = _f.Render(run);
            Assert.False(string.IsNullOrEmpty(actual), $"the {family} emitter wrote nothing for the fixture");
            string path = GoldenPath(family);
            if (Environment.GetEnvironmentVariable("WRPGEN_UPDATE_GOLDEN") == "1")
            {
                File.WriteAllText(path, actual);
                return;
            }
            Assert.True(File.Exists(path), $"no golden file {path}; run the tests with WRPGEN_UPDATE_GOLDEN=1 to write it");
            string expected = File.ReadAllText(path);
            if (expected == actual)
                return;
            var e = expected.Split('\n');
            var a = actual.Split('\n');
            int line = Enumerable.Range(0, Math.Min(e.Length, a.Length)).FirstOrDefault(i => e[i] != a[i], Math.Min(e.Length, a.Length));
            Assert.Fail($"{family} differs from {path} at line {line + 1}:\n" +
                        $"  golden: {(line < e.Length ? e[line] : "<end>")}\n  actual: {(line < a.Length ? a[line] : "<end>")}");
        }

        [Fact]
        public void TheOrderTheEmittersRunInDoesNotChangeTheOutput()
        {
            var runs = Generator.Emitters.Select(e => e.Run).ToArray();
            string forward = _f.Render(runs);
            Assert.Equal(forward, _f.Render(runs.Reverse().ToArray()));
            // Interleaved: odd positions first, then even ones.
            Assert.Equal(forward, _f.Render(runs.Where((_, i) => i % 2 == 1).Concat(runs.Where((_, i) => i % 2 == 0)).ToArray()));
        }
    }
}
