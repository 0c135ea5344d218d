using System;
using System.Collections.Generic;
using System.Globalization;
using System.IO;
using System.Linq;

namespace Orvane.WrpGen
{
    /// <summary>A sibling extension module whose capsules this module imports.</summary>
    internal sealed record SiblingOption(string AssemblyPath, string PythonModule);

    /// <summary>The command line of one generator run.</summary>
    internal sealed class Options
    {
        public string Assembly { get; set; } = "";
        public string Module { get; set; } = "";
        public string ProxyAssembly { get; set; } = "";
        public string Company { get; set; } = "";
        public string? CppOut { get; set; }
        public string? CsOut { get; set; }
        public string? Report { get; set; }
        public string? PyiOut { get; set; }
        public int Shards { get; set; } = 8;
        public bool ExportCapsules { get; set; }
        /// <summary>Managed namespace of the module's root; by default the common prefix of the public namespaces.</summary>
        public string? RootNamespace { get; set; }
        public List<SiblingOption> Siblings { get; } = new();

        public const string Usage =
            "usage: WrpGen --assembly <dll> --module <python module> --proxy-assembly <name> --company <word>\n" +
            "              [--cpp-out <dir>] [--cs-out <dir>] [--report <file>] [--pyi-out <dir>] [--shards <n>]\n" +
            "              [--sibling <dll>=<python module>]... [--export-capsules] [--root-namespace <ns>]";

        /// <summary>Parses the arguments; throws <see cref="ArgumentException"/> with a user-facing message.</summary>
        public static Options Parse(IReadOnlyList<string> args)
        {
            var o = new Options();
            for (int i = 0; i < args.Count; i++)
            {
                string arg = args[i];
                string Value()
                {
                    if (i + 1 >= args.Count)
                        throw new ArgumentException($"option '{arg}' needs a value");
                    return args[++i];
                }
                switch (arg)
                {
                    case "--assembly": o.Assembly = Value(); break;
                    case "--module": o.Module = Value(); break;
                    case "--proxy-assembly": o.ProxyAssembly = Value(); break;
                    case "--company": o.Company = Value(); break;
                    case "--cpp-out": o.CppOut = Value(); break;
                    case "--cs-out": o.CsOut = Value(); break;
                    case "--report": o.Report = Value(); break;
                    case "--pyi-out": o.PyiOut = Value(); break;
                    case "--root-namespace": o.RootNamespace = Value(); break;
                    case "--export-capsules": o.ExportCapsules = true; break;
                    case "--shards":
                        {
                            string v = Value();
                            if (!int.TryParse(v, NumberStyles.None, CultureInfo.InvariantCulture, out int n) || n < 1 || n > 99)
                                throw new ArgumentException($"--shards expects a number from 1 to 99, not '{v}'");
                            o.Shards = n;
                            break;
                        }
                    case "--sibling":
                        {
                            string v = Value();
                            int eq = v.LastIndexOf('=');
                            if (eq <= 0 || eq == v.Length - 1)
                                throw new ArgumentException($"--sibling expects <dll>=<python module>, not '{v}'");
                            o.Siblings.Add(new SiblingOption(v.Substring(0, eq), v.Substring(eq + 1)));
                            break;
                        }
                    default:
                        throw new ArgumentException($"unknown option '{arg}'");
                }
            }
            if (o.Assembly.Length == 0) throw new ArgumentException("--assembly is required");
            if (o.Module.Length == 0) throw new ArgumentException("--module is required");
            if (o.ProxyAssembly.Length == 0) throw new ArgumentException("--proxy-assembly is required");
            if (o.Company.Length == 0) throw new ArgumentException("--company is required");
            // A package path (orvane.folaro) or a top-level module (orvane_probe):
            // each segment a Python identifier.
            foreach (string segment in o.Module.Split('.'))
                if (segment.Length == 0 || char.IsDigit(segment[0]) || !segment.All(c => c == '_' || char.IsAsciiLetterOrDigit(c)))
                    throw new ArgumentException($"--module must be a Python module path such as 'orvane.folaro', not '{o.Module}'");
            if (!File.Exists(o.Assembly))
                throw new ArgumentException($"assembly '{o.Assembly}' does not exist");
            foreach (var s in o.Siblings)
                if (!File.Exists(s.AssemblyPath))
                    throw new ArgumentException($"sibling assembly '{s.AssemblyPath}' does not exist");
            return o;
        }
    }
}
