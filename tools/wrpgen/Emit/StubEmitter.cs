using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>.pyi stubs for editors: one per module, with the bound members and their Python types.</summary>
    internal static class StubEmitter
    {
        public static void Run(EmitContext ctx)
        {
            foreach (var m in ctx.Model.Modules)
            {
                string path = string.Join("/", m.PyName.Split('.')) + "/__init__.pyi";
                ctx.PyiFiles[path] = Emit(ctx.Model, m);
            }
        }

        private static string Emit(BindingModel model, ModuleNode m)
        {
            var imports = new SortedSet<string>(System.StringComparer.Ordinal) { "enum", "typing" };
            var w = new CodeWriter();
            var types = new PyiTypes(m.PyName, imports);
            string PyType(TypeRef t, bool nullable) => types.Of(t, nullable);
            string Params(MethodModel mm) =>
                string.Concat(mm.Parameters.Select(p => $", {p.PyName}: {PyType(p.Type, true)}"));

            foreach (var e in m.Enums)
            {
                w.Line($"class {e.Name}(enum.IntEnum):");
                w.Indent();
                if (!e.BoundEnumMembers.Any()) w.Line("pass");
                foreach (var em in e.BoundEnumMembers)
                    w.Line(em.RawValue != null ? $"{em.PyName} = {em.RawValue}" : $"{em.PyName}: int");
                w.Outdent().Line();
            }
            foreach (var t in m.Types)
            {
                string bases = t.Base == null ? "" : $"({(t.Base.Module == m ? t.Base.Name : t.Base.PythonFullName)})";
                if (t.Base != null && t.Base.Module != m) imports.Add(t.Base.Module.PyName);
                w.Line($"class {t.Name}{bases}:");
                w.Indent();
                int before = 0;
                foreach (var s in t.BoundStaticMembers)
                { w.Line($"{s.Key}: typing.ClassVar[{PyType(s.Type, false)}]"); before++; }
                var ctors = t.BoundConstructors.ToList();
                foreach (var c in ctors)
                {
                    if (ctors.Count > 1) w.Line("@typing.overload");
                    w.Line($"def __init__(self{Params(c)}) -> None: ...");
                    before++;
                }
                if (t.IsDisposable)
                {
                    w.Line($"def __enter__(self) -> \"{t.Name}\": ...");
                    w.Line("def __exit__(self, *args: typing.Any) -> None: ...");
                    before++;
                }
                foreach (var p in t.PyProperties.Where(p => p.Source != SlotSource.Inherited))
                {
                    w.Line("@property");
                    w.Line($"def {p.PyName}(self) -> {PyType(p.Property.Type, true)}: ...");
                    if (p.Property.CanWrite)
                    {
                        w.Line($"@{p.PyName}.setter");
                        w.Line($"def {p.PyName}(self, value: {PyType(p.Property.Type, true)}) -> None: ...");
                    }
                    before++;
                }
                foreach (var slot in t.PyMethods.Where(s => s.Source != SlotSource.Inherited))
                {
                    foreach (var c in slot.Candidates)
                    {
                        if (slot.IsStatic) w.Line("@staticmethod");
                        if (slot.Candidates.Count > 1) w.Line("@typing.overload");
                        string self = slot.IsStatic ? Params(c.Method).TrimStart(',', ' ') : "self" + Params(c.Method);
                        w.Line($"def {slot.PyName}({self}) -> {PyType(c.Method.Result, true)}: ...");
                    }
                    before++;
                }
                // The sequence protocol of a collection type: its element, by index or slice, and in order.
                if (t.Indexer is { } ix)
                {
                    string element = PyType(ix.Element, false);
                    w.Line("def __len__(self) -> int: ...");
                    w.Line("@typing.overload");
                    w.Line($"def __getitem__(self, index: int) -> {element}: ...");
                    w.Line("@typing.overload");
                    w.Line($"def __getitem__(self, index: slice) -> typing.List[{element}]: ...");
                    if (ix.CanWrite)
                        w.Line($"def __setitem__(self, index: int, value: {element}) -> None: ...");
                    w.Line($"def __iter__(self) -> typing.Iterator[{element}]: ...");
                    w.Line("def __contains__(self, value: object) -> bool: ...");
                    before++;
                }
                // x[k] and x[a, b] of a keyed indexer; the key of several indices is a tuple.
                string Key(IEnumerable<ParameterModel> ps)
                {
                    var types = ps.Select(p => PyType(p.Type, true)).ToList();
                    return types.Count == 1 ? types[0] : $"typing.Tuple[{string.Join(", ", types)}]";
                }
                foreach (var (slot, access) in new[] { (t.KeyedGet, MemberAccess.IndexGet), (t.KeyedSet, MemberAccess.IndexSet) })
                {
                    if (slot == null || slot.Source == SlotSource.Inherited)
                        continue;
                    var accessors = slot.Candidates.Where(c => c.Method.Access == access).Select(c => c.Method).ToList();
                    foreach (var a in accessors)
                    {
                        if (accessors.Count > 1) w.Line("@typing.overload");
                        w.Line(access == MemberAccess.IndexGet
                            ? $"def __getitem__(self, key: {Key(a.Parameters)}) -> {PyType(a.Result, true)}: ..."
                            : $"def __setitem__(self, key: {Key(a.Parameters.Take(a.Parameters.Count - 1))}, value: {PyType(a.Parameters[^1].Type, true)}) -> None: ...");
                    }
                    before++;
                }
                if (before == 0) w.Line("...");
                w.Outdent().Line();
            }
            var head = new CodeWriter();
            head.Line($"# Stubs of {m.PyName}; generated by WrpGen.");
            foreach (string i in imports.Where(i => i != m.PyName))
                head.Line($"import {i}");
            head.Line();
            return head.ToString() + w.ToString();
        }
    }
}
