using System;
using System.IO;
using System.Linq;
using Xunit;

namespace WrpGen.Tests
{
    /// <summary>Determinism, incremental writing, and that what is generated compiles.</summary>
    public class OutputTests : IClassFixture<GeneratedFixture>
    {
        private readonly GeneratedFixture _g;

        public OutputTests(GeneratedFixture g) { _g = g; }

        private static string[] AllFiles(string root) =>
            Directory.GetFiles(root, "*", SearchOption.AllDirectories)
                .Select(f => Path.GetRelativePath(root, f)).OrderBy(f => f, StringComparer.Ordinal).ToArray();

        [Fact]
        public void TwoRunsProduceIdenticalBytesAndARerunWritesNothing()
        {
            string other = Path.Combine(Path.GetTempPath(), "wrpgen-tests-" + Guid.NewGuid().ToString("N"));
            try
            {
                GeneratedFixture.Generate(other);
                var mine = AllFiles(_g.Root);
                Assert.Equal(mine, AllFiles(other));
                foreach (var f in mine)
                    Assert.True(File.ReadAllBytes(Path.Combine(_g.Root, f)).SequenceEqual(File.ReadAllBytes(Path.Combine(other, f))), f);

                var again = GeneratedFixture.Generate(other);
                Assert.Equal(0, again.Writer.Written);
                Assert.Equal(0, again.Writer.Removed);
                Assert.True(again.Writer.Unchanged > 20);
            }
            finally
            {
                Directory.Delete(other, recursive: true);
            }
        }

        [Fact]
        public void FilesOfAnEarlierRunThatAreNoLongerGeneratedAreRemoved()
        {
            string other = Path.Combine(Path.GetTempPath(), "wrpgen-tests-" + Guid.NewGuid().ToString("N"));
            try
            {
                GeneratedFixture.Generate(other);
                string staleCs = Path.Combine(other, "cs", "Wrp.Fixture.Gone.cs");
                string staleUnit = Path.Combine(other, "cpp", "units", "00000000_Gone.inc");
                File.WriteAllText(staleCs, "class Broken {");
                File.WriteAllText(staleUnit, "#error stale");
                var again = GeneratedFixture.Generate(other);
                Assert.False(File.Exists(staleCs));
                Assert.False(File.Exists(staleUnit));
                Assert.Equal(2, again.Writer.Removed);
            }
            finally
            {
                Directory.Delete(other, recursive: true);
            }
        }

        [Fact]
        public void TheProxiesCompileWithTheFixedInteropAndTheLibrary()
        {
            string repo = GeneratedFixture.RepositoryRoot();
            string dir = Path.Combine(_g.Root, "proxy-build");
            Directory.CreateDirectory(dir);
            File.WriteAllText(Path.Combine(dir, "Proxy.csproj"), $@"<Project Sdk=""Microsoft.NET.Sdk"">
  <PropertyGroup>
    <TargetFramework>net10.0</TargetFramework>
    <AllowUnsafeBlocks>true</AllowUnsafeBlocks>
    <EnableDefaultCompileItems>false</EnableDefaultCompileItems>
    <Nullable>annotations</Nullable>
    <TreatWarningsAsErrors>true</TreatWarningsAsErrors>
    <NoWarn>$(NoWarn);CS8500;CS0108;CS0114</NoWarn>
  </PropertyGroup>
  <ItemGroup>
    <Compile Include=""{Path.Combine(repo, "managed", "Interop")}/**/*.cs"" />
    <Compile Include=""{Path.Combine(_g.Root, "cs")}/**/*.cs"" />
    <Reference Include=""{GeneratedFixture.FixtureDll}"" />
  </ItemGroup>
</Project>
");
            var (code, output) = GeneratedFixture.Run("dotnet", "build -v:q -nologo -clp:ErrorsOnly", dir);
            Assert.True(code == 0, output);
        }

        [Fact]
        public void TheCppShardsCompileAgainstTheRuntimeHeaders()
        {
            string repo = GeneratedFixture.RepositoryRoot();
            string include = PythonInclude();
            string cpp = Path.Combine(_g.Root, "cpp");
            foreach (var shard in Directory.GetFiles(cpp, "shard_*.cpp").OrderBy(s => s, StringComparer.Ordinal))
            {
                var (code, output) = GeneratedFixture.Run("g++",
                    $"-std=c++17 -fsyntax-only -Wall -Werror -I \"{Path.Combine(repo, "native", "runtime")}\" -I \"{cpp}\" -I \"{include}\" \"{shard}\"", cpp);
                Assert.True(code == 0, shard + "\n" + output);
            }
        }

        /// <summary>Python 3.9's headers: $WRPGEN_PYTHON_INCLUDE, else pyenv's 3.9.18.</summary>
        private static string PythonInclude()
        {
            string? configured = Environment.GetEnvironmentVariable("WRPGEN_PYTHON_INCLUDE");
            if (!string.IsNullOrEmpty(configured))
                return configured;
            string pyenv = Environment.GetEnvironmentVariable("PYENV_ROOT")
                           ?? Path.Combine(Environment.GetFolderPath(Environment.SpecialFolder.UserProfile), ".pyenv");
            string path = Path.Combine(pyenv, "versions", "3.9.18", "include", "python3.9");
            Assert.True(File.Exists(Path.Combine(path, "Python.h")), $"Python 3.9 headers not found at {path}; set WRPGEN_PYTHON_INCLUDE");
            return path;
        }
    }
}
