using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using System.Reflection;
using System.Runtime.InteropServices;

namespace Orvane.WrpGen.Metadata
{
    /// <summary>
    /// Opens the input assembly and its siblings for inspection only: nothing of
    /// the library runs. References resolve from the assemblies' own folders and
    /// from the running runtime's directory.
    /// </summary>
    internal sealed class AssemblyLoader : IDisposable
    {
        private readonly MetadataLoadContext _context;

        public AssemblyLoader(string assemblyPath, IEnumerable<string> siblingPaths)
        {
            var siblings = siblingPaths.Select(Path.GetFullPath).ToList();
            string input = Path.GetFullPath(assemblyPath);
            // Siblings first: when a sibling also lies beside the input, both
            // copies resolve to one identity.
            var paths = new List<string>(siblings) { input };
            foreach (string dir in siblings.Append(input).Select(p => Path.GetDirectoryName(p)!).Distinct())
                paths.AddRange(Directory.EnumerateFiles(dir, "*.dll"));
            paths.AddRange(Directory.EnumerateFiles(RuntimeEnvironment.GetRuntimeDirectory(), "*.dll"));
            var unique = new List<string>();
            var seen = new HashSet<string>(StringComparer.OrdinalIgnoreCase);
            foreach (string p in paths)
                if (seen.Add(Path.GetFileName(p)))
                    unique.Add(p);
            _context = new MetadataLoadContext(new PathAssemblyResolver(unique));
            Input = Load(input);
            Siblings = siblings.Select(Load).ToList();
        }

        public Assembly Input { get; }
        public IReadOnlyList<Assembly> Siblings { get; }

        private Assembly Load(string path) => _context.LoadFromAssemblyName(AssemblyName.GetAssemblyName(path));

        public void Dispose() => _context.Dispose();
    }
}
