using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// Module builders (one per Python module: create, attach children, ready the
    /// types, build the enums, register and add the types), the static-field
    /// drivers and the module record the extension's PyInit hands to the runtime.
    /// </summary>
    internal static class ModuleEmitter
    {
        public static void Run(EmitContext ctx)
        {
            var unit = ctx.Unit(ctx.Model.Units.Modules, $"Module builders of {ctx.Model.PythonModule}");
            foreach (var m in ctx.Model.Modules.Reverse())
            {
                EmitDefinition(unit.Private[Section.Modules], m);
                EmitBuilder(ctx, unit.Public[Section.Modules], m);
                if (m.HasStaticFields)
                    EmitStaticDriver(ctx, unit.Public[Section.Modules], m);
            }
            EmitEntryHeader(ctx);
        }

        private static void EmitDefinition(CodeWriter w, ModuleNode m)
        {
            w.Line($"PyMethodDef {m.Cpp.MethodTable}[] = {{{{nullptr, nullptr, 0, nullptr}}}};");
            w.Line($"PyModuleDef {m.Cpp.Definition.Name} = {{PyModuleDef_HEAD_INIT, {CodeWriter.Quote(m.PyName)}, nullptr, -1, {m.Cpp.MethodTable}, nullptr, nullptr, nullptr, nullptr}};");
            w.Line();
        }

        /// <summary>
        /// Types to ready: those of other modules that this module's types use as
        /// bases or interfaces, then its own, every base before its derived types.
        /// </summary>
        public static List<string> ReadyList(ModuleNode m)
        {
            var ordered = new List<BoundType>();
            var seen = new HashSet<BoundType>();
            void Visit(BoundType t)
            {
                if (!seen.Add(t))
                    return;
                if (t.Base != null)
                    Visit(t.Base);
                ordered.Add(t);
            }
            foreach (var t in m.Types)
            {
                for (var b = t.Base; b != null; b = b.Base)
                    if (b.Module != m) Visit(b);
                foreach (var i in t.Interfaces)
                    if (i.Module != m) Visit(i);
            }
            var names = ordered.Select(t => t.Cpp.TypeObject).ToList();
            if (m.Types.Any(t => t.IsDisposable))
                names.Insert(0, CppTypes.DisposableType);
            foreach (var t in m.Types)
                Visit(t);
            names.AddRange(ordered.Where(t => t.Module == m).Select(t => t.Cpp.TypeObject));
            return names;
        }

        /// <summary>The interface marker list: bound interfaces and the disposable wrapper, in metadata order.</summary>
        public static List<string> MarkerList(BoundType t)
        {
            var list = t.Interfaces.Select(i => "&" + i.Cpp.TypeObject).ToList();
            if (t.IsDisposable)
                list.Insert(System.Math.Min(t.DisposableIndex, list.Count), "&" + CppTypes.DisposableType);
            if (t.IterableOf != null)
                list.Add("&" + t.IterableOf.Wrapper(GenericWrapper.Iterable).TypeObject);
            return list;
        }

        private static void EmitBuilder(EmitContext ctx, CodeWriter w, ModuleNode m)
        {
            string fn = m.Cpp.Builder;
            string mname = CodeWriter.Quote(m.PyName);
            ctx.Declare(Section.Modules, $"PyObject* {fn}();");
            w.Open($"PyObject* {fn}()");
            if (m.Parent == null)
            {
                w.Line("// The typed wrappers first: generated classes list them among their interfaces.");
                w.Line($"if (!{ctx.Model.GenericNames.ReadyTypes}({mname}))").Indent().Line("return nullptr;").Outdent();
            }
            w.Line($"PyObject* module = PyModule_Create2(&{m.Cpp.Definition.Qualified}, 1013);");
            w.Open("if (!module)");
            w.Line($"PyShlErr_ModuleImportError({mname}, 0);");
            w.Line("return nullptr;");
            w.Close();
            foreach (var c in m.Children)
            {
                string cname = CodeWriter.Quote(c.PyName);
                w.Open("");
                w.Line($"PyObject* child = {c.Cpp.Builder}();");
                w.Line("if (!child)").Indent().Line("goto error;").Outdent();
                w.Open($"if (PyModule_AddObject(module, {CodeWriter.Quote(c.Segment)}, child) < 0)");
                w.Line($"PyShlErr_ModuleImportError({cname}, 1);");
                w.Line("Py_DECREF(child);");
                w.Line("goto error;");
                w.Close();
                w.Line("// Registered so that 'from <package>.<child> import X' finds the built module.");
                w.Open($"if (PyDict_SetItemString(PyImport_GetModuleDict(), {cname}, child) < 0)");
                w.Line($"PyShlErr_ModuleImportError({cname}, 1);");
                w.Line("goto error;");
                w.Close();
                w.Close();
            }
            var ready = ReadyList(m);
            if (ready.Count > 0)
            {
                w.Open("");
                w.Line("static PyTypeObject* const ready[] = {");
                w.Indent();
                foreach (var r in ready)
                    w.Line($"&{r},");
                w.Outdent().Line("};");
                w.Open("for (PyTypeObject* type : ready)");
                w.Open("if (PyType_Ready(type) < 0)");
                w.Line($"PyShlErr_TypeReadyError(type->tp_name, {mname});");
                w.Line("goto error;");
                w.Close();
                w.Close();
                w.Close();
            }
            foreach (var e in m.Enums)
            {
                string ename = CodeWriter.Quote(e.PythonFullName);
                w.Open("");
                w.Line($"PyObject* type = {e.Cpp.Initialiser}();");
                w.Open("if (!type)");
                w.Line($"PyShlErr_TypeImportError({ename}, 0);");
                w.Line("goto error;");
                w.Close();
                w.Open($"if (PyModule_AddObject(module, {CodeWriter.Quote(e.Name)}, type) < 0)");
                w.Line("Py_DECREF(type);");
                w.Line($"PyShlErr_TypeImportError({ename}, 4);");
                w.Line("goto error;");
                w.Close();
                w.Close();
            }
            foreach (var t in m.Types)
            {
                string type = "&" + t.Cpp.TypeObject;
                string tname = CodeWriter.Quote(t.PythonFullName);
                w.Line($"PyWrpTypesMap::get_instance()->add(u{CodeWriter.Quote(t.FullName)}, {type});");
                var markers = MarkerList(t);
                if (markers.Count > 0)
                {
                    string list = $"{markers.Count}, {string.Join(", ", markers)}";
                    w.Open($"if (!fn_set_additional_ifcs_markattr({type}, {list}))");
                    w.Line($"PyShlErr_TypeImportError({tname}, 1);");
                    w.Line("goto error;");
                    w.Close();
                    w.Open($"if (!fn_set_implicit_ifcs_markattr({type}, {list}))");
                    w.Line($"PyShlErr_TypeImportError({tname}, 2);");
                    w.Line("goto error;");
                    w.Close();
                }
                w.Open($"if (!fn_set_host_markattr({type}))");
                w.Line($"PyShlErr_TypeImportError({tname}, 3);");
                w.Line("goto error;");
                w.Close();
                w.Line($"Py_INCREF({type});");
                w.Open($"if (PyModule_AddObject(module, {CodeWriter.Quote(t.Name)}, (PyObject*){type}) < 0)");
                w.Line($"Py_DECREF({type});");
                w.Line($"PyShlErr_TypeImportError({tname}, 4);");
                w.Line("goto error;");
                w.Close();
            }
            w.Line("return module;");
            w.Outdent().Line("error:").Indent();
            w.Line("Py_DECREF(module);");
            w.Line("return nullptr;");
            w.Close();
            w.Line();
        }

        private static void EmitStaticDriver(EmitContext ctx, CodeWriter w, ModuleNode m)
        {
            string fn = m.Cpp.StaticsInitialiser;
            ctx.Declare(Section.Modules, $"void {fn}(int* warn_count);");
            w.Open($"void {fn}(int* warn_count)");
            foreach (var t in m.Types.Where(t => t.HasStaticInitialiser))
                w.Line($"{t.Cpp.Initialiser}(warn_count);");
            foreach (var c in m.Children.Where(c => c.HasStaticFields))
                w.Line($"{c.Cpp.StaticsInitialiser}(warn_count);");
            w.Close();
            w.Line();
        }

        private static void EmitEntryHeader(EmitContext ctx)
        {
            var model = ctx.Model;
            var root = model.Root;
            string ciap = model.SiblingTypes.Count > 0 ? "&" + model.CapsuleImport : "nullptr";
            string imtf = root.HasStaticFields ? "&" + root.Cpp.StaticsInitialiser : "nullptr";
            string cexp = model.ExportCapsules ? "&" + model.CapsuleExport : "nullptr";
            var w = new CodeWriter();
            w.Line($"// The module record of {model.PythonModule}, handed to fn_module_entry by PyInit_{model.Product}.");
            w.Line("// Generated by WrpGen; do not edit.");
            w.Line("#pragma once");
            w.Line();
            w.Line("#include \"wrp_module.h\"");
            w.Line();
            w.Line("static const WrpGeneratedModule wrpgen_module_record = {");
            w.Indent();
            w.Line(CodeWriter.Quote(model.PythonModule) + ",");
            w.Line(CodeWriter.Quote(model.ProxyAssembly) + ",");
            w.Line(CodeWriter.Quote(model.Company) + ",");
            w.Line(CodeWriter.Quote(model.Product) + ",");
            w.Line($"&{root.Cpp.Builder},");
            w.Line(ciap + ",");
            w.Line(imtf + ",");
            w.Line(cexp + ",");
            w.Outdent().Line("};");
            ctx.CppFiles["wrp_entry.h"] = w.ToString();
        }
    }
}
