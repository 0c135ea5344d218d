using System;
using System.Collections.Generic;
using System.Diagnostics;
using System.IO;
using System.Linq;
using Orvane.WrpGen;
using Orvane.WrpGen.Passes;

namespace WrpGen.Tests
{
    /// <summary>One generator run over the fixture assembly, shared by the tests of a class.</summary>
    public sealed class GeneratedFixture : IDisposable
    {
        public static readonly string FixtureDll = typeof(Wrp.Fixture.Document).Assembly.Location;

        public GeneratedFixture()
        {
            Root = Path.Combine(Path.GetTempPath(), "wrpgen-tests-" + Guid.NewGuid().ToString("N"));
            Result = Generate(Root);
        }

        public string Root { get; }
        internal Generator.Result Result { get; }

        internal static Options OptionsFor(string root) => Options.Parse(new[]
        {
            "--assembly", FixtureDll, "--module", "orvane.fixture", "--proxy-assembly", "WrpInterop.Fixture",
            "--company", "orvane", "--cpp-out", Path.Combine(root, "cpp"), "--cs-out", Path.Combine(root, "cs"),
            "--report", Path.Combine(root, "skipped.txt"), "--pyi-out", Path.Combine(root, "pyi"), "--shards", "4",
        });

        internal static Generator.Result Generate(string root) => Generator.Run(OptionsFor(root));

        public string Read(string relative) => File.ReadAllText(Path.Combine(Root, relative));

        /// <summary>The C++ unit of a type, found by its short name.</summary>
        public string Unit(string shortName)
        {
            var file = Directory.GetFiles(Path.Combine(Root, "cpp", "units"), "*_" + shortName + ".inc").Single();
            return File.ReadAllText(file);
        }

        public string[] Lines(string text) => text.Split('\n').Select(l => l.Trim()).ToArray();

        /// <summary>The text of one generated function, from its signature line to its closing brace.</summary>
        public static string Function(string unit, string signatureStart)
        {
            int start = unit.IndexOf(signatureStart, StringComparison.Ordinal);
            if (start < 0)
                throw new InvalidOperationException($"no function starting with '{signatureStart}'");
            int end = unit.IndexOf("\n}\n", start, StringComparison.Ordinal);
            return unit.Substring(start, end - start + 2);
        }

        /// <summary>The repository root (where managed/Interop lives).</summary>
        public static string RepositoryRoot()
        {
            for (var dir = new DirectoryInfo(AppContext.BaseDirectory); dir != null; dir = dir.Parent)
                if (Directory.Exists(Path.Combine(dir.FullName, "managed", "Interop")) && Directory.Exists(Path.Combine(dir.FullName, "native", "runtime")))
                    return dir.FullName;
            throw new InvalidOperationException("repository root not found above " + AppContext.BaseDirectory);
        }

        public static (int ExitCode, string Output) Run(string file, string arguments, string workingDirectory)
        {
            var psi = new ProcessStartInfo(file, arguments)
            {
                WorkingDirectory = workingDirectory,
                RedirectStandardOutput = true,
                RedirectStandardError = true,
                UseShellExecute = false,
            };
            using var p = Process.Start(psi)!;
            var stderr = p.StandardError.ReadToEndAsync();
            string stdout = p.StandardOutput.ReadToEnd();
            p.WaitForExit();
            return (p.ExitCode, stdout + stderr.Result);
        }

        public void Dispose()
        {
            try { Directory.Delete(Root, recursive: true); } catch (IOException) { }
        }
    }
}
