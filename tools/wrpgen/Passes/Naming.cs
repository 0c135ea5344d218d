using System;
using System.Collections.Generic;
using System.Globalization;
using System.Linq;
using System.Text;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Passes
{
    /// <summary>
    /// Python names, proxy names and the eight-hex-digit identifiers of types and modules.
    /// </summary>
    internal static class Naming
    {
        /// <summary>
        /// PascalCase to snake_case: a word boundary before every capital that
        /// follows a lower-case letter or a digit (GetThumbnails → get_thumbnails,
        /// AsIDisposable → as_idisposable, Utf8String → utf8_string).
        /// </summary>
        public static string ToSnake(string name)
        {
            var sb = new StringBuilder(name.Length + 8);
            for (int i = 0; i < name.Length; i++)
            {
                char c = name[i];
                if (char.IsUpper(c))
                {
                    if (i > 0 && (char.IsLower(name[i - 1]) || char.IsDigit(name[i - 1])))
                        sb.Append('_');
                    sb.Append(char.ToLowerInvariant(c));
                }
                else
                {
                    sb.Append(c);
                }
            }
            return sb.ToString();
        }

        /// <summary>The snake_case form in capitals: NotDefined → NOT_DEFINED.</summary>
        public static string ToUpperSnake(string name) => ToSnake(name).ToUpperInvariant();

        /// <summary>
        /// The Python module of a managed namespace: the root namespace maps to the
        /// module itself, each further segment is lower-cased
        /// (Orvane.Folaro.Export.Web → orvane.folaro.export.web).
        /// </summary>
        public static string ModulePath(string pythonRoot, string rootNamespace, string ns)
        {
            if (ns == rootNamespace)
                return pythonRoot;
            if (!ns.StartsWith(rootNamespace + ".", StringComparison.Ordinal))
                throw new ArgumentException($"namespace '{ns}' is not below the root namespace '{rootNamespace}'");
            string rest = ns.Substring(rootNamespace.Length + 1);
            return pythonRoot + "." + string.Join(".", rest.Split('.').Select(s => s.ToLowerInvariant()));
        }

        /// <summary>The proxy namespace: every segment of the managed namespace prefixed WrpNs_.</summary>
        public static string ProxyNamespace(string ns) =>
            string.Join(".", ns.Split('.').Select(s => "WrpNs_" + s));

        /// <summary>FNV-1a (32 bit) over the UTF-8 bytes of a name, as eight upper-case hex digits.</summary>
        public static string Id(string fullName)
        {
            uint hash = 2166136261;
            foreach (byte b in Encoding.UTF8.GetBytes(fullName))
            {
                hash ^= b;
                hash *= 16777619;
            }
            return hash.ToString("X8", CultureInfo.InvariantCulture);
        }

        /// <summary>The longest dotted prefix shared by all namespaces.</summary>
        public static string CommonNamespace(IEnumerable<string> namespaces)
        {
            string[]? common = null;
            foreach (string ns in namespaces)
            {
                string[] parts = ns.Split('.');
                if (common == null) { common = parts; continue; }
                int n = 0;
                while (n < common.Length && n < parts.Length && common[n] == parts[n]) n++;
                common = common.Take(n).ToArray();
            }
            return common == null ? "" : string.Join(".", common);
        }

        /// <summary>
        /// Fills every name of the model: ids, module tree, Python and proxy names,
        /// overload numbers and entry names, and the sibling types' modules.
        /// </summary>
        public static void Run(BindingModel model)
        {
            foreach (var s in model.SiblingTypes)
            {
                s.Id = Id(s.FullName);
                s.PythonModule = ModulePath(s.RootModule, s.RootNamespace, s.Clr.Namespace!);
            }
            BuildModuleTree(model);
            var ids = new Dictionary<string, string>(StringComparer.Ordinal);
            void Claim(string id, string owner)
            {
                if (ids.TryGetValue(id, out var other))
                    throw new InvalidOperationException($"identifier {id} of '{owner}' collides with '{other}'");
                ids.Add(id, owner);
            }
            foreach (var m in model.Modules)
            {
                m.Id = Id(m.PyName);
                Claim(m.Id, m.PyName);
            }
            foreach (var t in model.Types)
            {
                t.Id = Id(t.FullName);
                Claim(t.Id, t.FullName);
                t.ProxyNamespace = ProxyNamespace(t.Namespace);
                t.ProxyClass = "WrpCs_" + t.Name;
                t.PythonFullName = t.Module.PyName + "." + t.Name;
                NameMembers(t);
            }
        }

        /// <summary>Names the typed instantiations; two element types must not share an identifier.</summary>
        public static void NameInstances(BindingModel model)
        {
            foreach (var g in model.Generics)
                g.Id = InstanceId(g.Element.Clr);
            var clash = model.Generics.GroupBy(g => g.Id).FirstOrDefault(g => g.Count() > 1);
            if (clash != null)
                throw new InvalidOperationException(
                    $"typed collections of {string.Join(" and ", clash.Select(g => g.Element.Clr.FullName))} share the identifier {clash.Key}");
        }

        /// <summary>An instantiation's identifier: the name hash of IEnumerable&lt;T&gt;.</summary>
        public static string InstanceId(Type element) =>
            Id("System.Collections.Generic.IEnumerable`1[" + element.FullName + "]");

        /// <summary>
        /// Entry names number every overload of a managed name in declaration
        /// order, skipped ones included, so an entry keeps its name when a
        /// neighbour becomes bindable.
        /// </summary>
        private static void NameEntries(BoundType t)
        {
            for (int i = 0; i < t.Constructors.Count; i++)
            {
                t.Constructors[i].Number = i;
                t.Constructors[i].EntryName = $"ctor_{i:D3}_{t.Constructors[i].Name}";
            }
            foreach (var group in t.Methods.GroupBy(m => m.Name, StringComparer.Ordinal))
            {
                int n = 0;
                foreach (var m in group)
                {
                    m.Number = n++;
                    m.EntryName = $"call_{m.Number:D3}_{m.Name}";
                }
            }
        }

        private static void NameMembers(BoundType t)
        {
            NameEntries(t);
            foreach (var m in t.Constructors.Concat(t.Methods))
            {
                m.PyName = ToSnake(m.Name);
                foreach (var p in m.Parameters)
                    p.PyName = ToSnake(p.Name);
            }
            foreach (var p in t.Properties)
                p.PyName = ToSnake(p.Name);
            foreach (var s in t.StaticMembers)
                s.Key = s.IsField ? ToUpperSnake(s.Name) : ToSnake(s.Name);
            foreach (var e in t.EnumMembers)
                e.PyName = ToUpperSnake(e.Name);
        }

        private static void BuildModuleTree(BindingModel model)
        {
            var byNs = new Dictionary<string, ModuleNode>(StringComparer.Ordinal);
            var root = new ModuleNode(model.PythonModule, model.RootNamespace, null);
            byNs[model.RootNamespace] = root;
            ModuleNode Get(string ns)
            {
                if (byNs.TryGetValue(ns, out var node))
                    return node;
                string parentNs = ns.Substring(0, ns.LastIndexOf('.'));
                var parent = Get(parentNs);
                node = new ModuleNode(ModulePath(model.PythonModule, model.RootNamespace, ns), ns, parent);
                parent.Children.Add(node);
                byNs[ns] = node;
                return node;
            }
            foreach (var t in model.Types)
            {
                var node = Get(t.Namespace);
                t.Module = node;
                (t.IsEnum ? node.Enums : node.Types).Add(t);
            }
            foreach (var m in byNs.Values)
                m.Children.Sort((a, b) => string.CompareOrdinal(a.Segment, b.Segment));
            model.Root = root;
        }
    }
}
