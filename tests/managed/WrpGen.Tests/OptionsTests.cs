using System;
using System.IO;
using Orvane.WrpGen;
using Xunit;

namespace WrpGen.Tests
{
    public class OptionsTests
    {
        private static readonly string Dll = typeof(Wrp.Fixture.Document).Assembly.Location;

        private static string[] Args(params string[] extra)
        {
            var baseArgs = new[] { "--assembly", Dll, "--module", "orvane.fixture", "--proxy-assembly", "P", "--company", "orvane" };
            var all = new string[baseArgs.Length + extra.Length];
            baseArgs.CopyTo(all, 0);
            extra.CopyTo(all, baseArgs.Length);
            return all;
        }

        [Fact]
        public void TheBuildCommandLineParses()
        {
            var o = Options.Parse(Args("--shards", "8", "--sibling", Dll + "=orvane.pymarel", "--export-capsules", "--report", "r.txt"));
            Assert.Equal(8, o.Shards);
            Assert.True(o.ExportCapsules);
            Assert.Equal("orvane.pymarel", Assert.Single(o.Siblings).PythonModule);
            Assert.Equal("r.txt", o.Report);
        }

        [Theory]
        [InlineData("--shards", "0", "--shards")]
        [InlineData("--shards", "x", "--shards")]
        [InlineData("--sibling", "no-module", "--sibling")]
        [InlineData("--bogus", "1", "--bogus")]
        public void BadOptionsAreNamedInTheError(string option, string value, string named)
        {
            var e = Assert.Throws<ArgumentException>(() => Options.Parse(Args(option, value)));
            Assert.Contains(named, e.Message);
        }

        [Theory]
        [InlineData("orvane_probe")]
        [InlineData("orvane.folaro")]
        [InlineData("a.b2.c_d")]
        public void ATopLevelModuleOrAPackagePathIsAccepted(string module)
        {
            Assert.Equal(module, Options.Parse(new[] { "--assembly", Dll, "--module", module, "--proxy-assembly", "P", "--company", "c" }).Module);
        }

        [Theory]
        [InlineData("orvane.")]
        [InlineData(".folaro")]
        [InlineData("orvane-probe")]
        [InlineData("orvane.2d")]
        public void AModuleThatIsNotAPythonPathIsRefused(string module)
        {
            var e = Assert.Throws<ArgumentException>(() => Options.Parse(new[] { "--assembly", Dll, "--module", module, "--proxy-assembly", "P", "--company", "c" }));
            Assert.Contains(module, e.Message);
        }

        [Fact]
        public void RequiredOptionsAndMissingFilesAreReported()
        {
            Assert.Contains("--module", Assert.Throws<ArgumentException>(() => Options.Parse(new[] { "--assembly", Dll })).Message);
            string missing = Path.Combine(Path.GetTempPath(), "no-such-assembly.dll");
            var e = Assert.Throws<ArgumentException>(() => Options.Parse(new[]
                { "--assembly", missing, "--module", "a.b", "--proxy-assembly", "P", "--company", "c" }));
            Assert.Contains(missing, e.Message);
            Assert.Contains("value", Assert.Throws<ArgumentException>(() => Options.Parse(Args("--report"))).Message);
        }
    }
}
