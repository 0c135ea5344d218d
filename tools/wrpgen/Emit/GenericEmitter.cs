using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// The typed instantiations: per element type the wrapper types of
    /// &lt;root&gt;._wrpgen._generic, their bindings to the generic hosts, the
    /// typed argument conversions and callback tables. The hosts and their
    /// managed proxies come from the host and proxy emitters; the wrappers'
    /// algorithms are the runtime's (interop/generic_wrappers.h).
    /// </summary>
    internal static class GenericEmitter
    {
        public static void Run(EmitContext ctx)
        {
            var unit = ctx.Unit(ctx.Model.Units.Generic, "Typed collection wrappers");
            foreach (var g in ctx.Model.Generics)
            {
                EmitElement(unit.Private[Section.GenericWrappers], g);
                EmitBindings(unit.Private[Section.GenericWrappers], g);
                EmitTypes(ctx, unit.Public[Section.GenericWrappers], g);
                EmitCallbacks(ctx, unit.Public[Section.GenericWrappers], g);
            }
            EmitReady(ctx, unit.Public[Section.GenericWrappers]);
            EmitModule(unit.Public[Section.GenericWrappers], ctx.Model);
            EmitTableList(unit.Public[Section.GenericWrappers], ctx.Model);
        }

        // ---- native element converters and bindings ------------------------------

        private static string Elem(GenericInstance g) => $"wrpPygn_elem_{g.Id}";

        private static void EmitElement(CodeWriter w, GenericInstance g)
        {
            var e = g.Element;
            string toPy = e.Kind == BindKind.Object ? $"{e.Bound!.Cpp.ClrToPy}(out)" : "wrpPye_gn_take_object(out)";
            string storage = e.Kind == BindKind.Object ? "void*" : CppTypes.Storage(e);
            w.Line($"// Elements of type {e.Clr.FullName}.");
            w.Line($"static PyObject* wrpPygn_elem_to_py_{g.Id}(const PyObjectOutArg& out) {{ return {toPy}; }}");
            w.Line($"static int wrpPygn_elem_to_clr_{g.Id}(PyObject* obj, void* storage)");
            w.Line($"{{ return {CppTypes.Converter(e)}(obj, static_cast<{storage}*>(storage)); }}");
            w.Line($"static const PyGnElement {Elem(g)} = {{wrpPygn_elem_to_py_{g.Id}, wrpPygn_elem_to_clr_{g.Id}}};");
            w.Line();
        }

        private static string Binding(GenericInstance g, GenericWrapper k) => $"wrpPygn_bind_{g.Id}{GenericNames.PyName(k)}";

        // Each wrapper type's entries: its own proxy's, the length and membership
        // of the collection proxy for lists, and the enumerable's GetEnumerator.
        private static void EmitBindings(CodeWriter w, GenericInstance g)
        {
            foreach (var k in GenericNames.Wrappers(g))
            {
                var hosts = k switch
                {
                    GenericWrapper.List => new[] { "IList", "ICol", "Iterable", "Iter" },
                    GenericWrapper.Array => new[] { "Array", "Iterable", "Iter" },
                    GenericWrapper.Iterable => new[] { "Iterable", "Iter" },
                    _ => new[] { "Iter" },
                };
                w.Open($"static const PyGnBinding* {Binding(g, k)}()");
                w.Open("static const PyGnBinding binding = []");
                w.Line("PyGnBinding b;");
                foreach (var h in hosts)
                {
                    w.Line($"const auto* {h.ToLowerInvariant()} = PyHost_gn_{h}_{g.Id}::get_instance();");
                    w.Open($"if ({h.ToLowerInvariant()}->is_not_valid())");
                    w.Line("b.not_valid = true;");
                    w.Line($"b.message = {h.ToLowerInvariant()}->error_msg();");
                    w.Line("return b;");
                    w.Close();
                }
                w.Line($"b.entries = {hosts[0].ToLowerInvariant()}->entries();");
                if (k == GenericWrapper.List)
                {
                    foreach (var f in new[] { "sq_length", "sq_contains", "add", "remove", "clear" })
                        w.Line($"b.entries.{f} = icol->entries().{f};");
                }
                if (k != GenericWrapper.Iter && k != GenericWrapper.Iterable)
                    w.Line("b.entries.get_enumerator = iterable->entries().get_enumerator;");
                w.Line("return b;");
                w.Close("();");
                w.Line("return &binding;");
                w.Close();
                w.Line();
            }
        }

        // ---- types, conversions, callbacks -------------------------------------------

        private static void EmitTypes(EmitContext ctx, CodeWriter w, GenericInstance g)
        {
            foreach (var k in GenericNames.Wrappers(g))
            {
                string type = GenericNames.GnType(g, k);
                ctx.Declare(Section.GenericWrappers, $"extern PyGnType {type};");
                string kind = k switch
                {
                    GenericWrapper.List => "PyGnKind::List",
                    GenericWrapper.Array => "PyGnKind::Array",
                    GenericWrapper.Iterable => "PyGnKind::Iterable",
                    _ => "PyGnKind::Iterator",
                };
                w.Line($"PyGnType {type} = {{PyTypeObject{{}}, {kind}, wrpu_generic::{Elem(g)}, &wrpu_generic::{Binding(g, k)}, &{GenericNames.TypeObject(g, GenericWrapper.Iter)}}};");
            }
            w.Line();

            string iter = GenericNames.TpIter(g);
            ctx.Declare(Section.GenericWrappers, $"PyObject* {iter}(PyObject* self);");
            w.Line("// tp_iter of the wrappers' types and of generated classes implementing IEnumerable<T>.");
            w.Open($"PyObject* {iter}(PyObject* self)");
            w.Line($"return wrpPye_gn_tp_iter(self, wrpu_generic::{Binding(g, GenericWrapper.Iterable)}(), &{GenericNames.TypeObject(g, GenericWrapper.Iter)});");
            w.Close();
            w.Line();

            var conversions = new List<(GenericWrapper Kind, string Name, string What)>();
            if (g.HasList) conversions.Add((GenericWrapper.List, "list", "List"));
            if (g.HasArray) conversions.Add((GenericWrapper.Array, "array", "Array"));
            conversions.Add((GenericWrapper.Iterable, "iterable", "IEnumerable"));
            foreach (var (k, name, what) in conversions)
            {
                string fn = $"wrpPygn_conv_py_to_clr_{name}_{g.Id}";
                ctx.Declare(Section.GenericWrappers, $"int {fn}(PyObject* obj, VariantArg* out);");
                w.Open($"int {fn}(PyObject* obj, VariantArg* out)");
                w.Line($"return wrpPye_gn_conv_py_to_clr(obj, out, &{GenericNames.GnType(g, k)}, {CodeWriter.Quote(what)});");
                w.Close();
                w.Line();
            }
        }

        private static void EmitCallbacks(EmitContext ctx, CodeWriter w, GenericInstance g)
        {
            string elem = $"&wrpu_generic::{Elem(g)}";
            if (g.PyListTable >= 0)
            {
                w.Open($"int32_t fn_clbk_pylist_{g.Id}_get_item(PyObject* list, int32_t index, void* storage)");
                w.Line($"return wrpPye_gn_clbk_list_get_item(list, index, storage, {elem});");
                w.Close();
                w.Line($"static void* m_pygn_pylist_{g.Id}_callbacks[] = {{reinterpret_cast<void*>(&fn_clbk_pylist_{g.Id}_get_item)}};");
                w.Line();
            }
            if (g.PySeqTable >= 0)
            {
                w.Open($"int32_t fn_clbk_pyseq_{g.Id}_get_item(PyObject* seq, int32_t index, void* storage, PyObject** keep)");
                w.Line($"return wrpPye_gn_clbk_seq_get_item(seq, index, storage, keep, {elem});");
                w.Close();
                w.Line($"static void* m_pygn_pyseq_{g.Id}_callbacks[] = {{reinterpret_cast<void*>(&fn_clbk_pyseq_{g.Id}_get_item)}};");
                w.Line();
            }
            if (g.PyIterTable >= 0)
            {
                w.Open($"int32_t fn_clbk_pyiter_{g.Id}_iter_next(PyObject* iterator, void* storage, PyObject** keep)");
                w.Line($"return wrpPye_gn_clbk_iter_next(iterator, storage, keep, {elem});");
                w.Close();
                w.Line($"static void* m_pygn_pyiter_{g.Id}_callbacks[] = {{reinterpret_cast<void*>(&fn_clbk_pyiter_{g.Id}_iter_next)}};");
                w.Line();
            }
        }

        private static IEnumerable<(GenericInstance G, GenericWrapper K)> AllTypes(BindingModel model) =>
            model.Generics.SelectMany(g => GenericNames.Wrappers(g).Select(k => (g, k)));

        // The types are readied before any generated class lists them among its
        // interfaces: the root module's builder calls this first.
        private static void EmitReady(EmitContext ctx, CodeWriter w)
        {
            ctx.Declare(Section.GenericWrappers, $"bool {GenericNames.ReadyTypes}(const char* root_name);");
            w.Open($"bool {GenericNames.ReadyTypes}(const char* root_name)");
            var all = AllTypes(ctx.Model).ToList();
            if (all.Count == 0)
            {
                w.Line("(void)root_name;");
                w.Line("return true;");
                w.Close();
                w.Line();
                return;
            }
            w.Line("static bool ready = false;");
            w.Line($"static std::string names[{all.Count}];");
            w.Line("if (ready)").Indent().Line("return true;").Outdent();
            w.Line("static const struct { PyGnType* type; const char* name; } types[] = {");
            w.Indent();
            foreach (var (g, k) in all)
                w.Line($"{{&{GenericNames.GnType(g, k)}, {CodeWriter.Quote(GenericNames.PyName(g, k))}}},");
            w.Outdent().Line("};");
            w.Open("for (size_t i = 0; i < sizeof(types) / sizeof(types[0]); ++i)");
            w.Line("names[i] = std::string(root_name) + \"._wrpgen._generic.\" + types[i].name;");
            w.Open("if (wrpPye_gn_ready(types[i].type, names[i].c_str()) < 0)");
            w.Line("PyShlErr_TypeReadyError(names[i].c_str(), root_name);");
            w.Line("return false;");
            w.Close();
            w.Close();
            w.Line("ready = true;");
            w.Line("return true;");
            w.Close();
            w.Line();
        }

        private static void EmitModule(CodeWriter w, BindingModel model)
        {
            w.Open("PyObject* wrpPygn_mlit_FFFFFFFF_generic_wrappers(const char* root_name)");
            w.Line("static std::string name;");
            w.Line("static PyMethodDef methods[] = {{nullptr, nullptr, 0, nullptr}};");
            w.Line("static PyModuleDef definition = {PyModuleDef_HEAD_INIT, nullptr, nullptr, -1, methods, nullptr, nullptr, nullptr, nullptr};");
            w.Open("if (!definition.m_name)");
            w.Line("name = std::string(root_name) + \"._wrpgen._generic\";");
            w.Line("definition.m_name = name.c_str();");
            w.Close();
            w.Open($"if (!{GenericNames.ReadyTypes}(root_name))");
            w.Line("PyShlErr_ModuleImportError(definition.m_name, 0);");
            w.Line("return nullptr;");
            w.Close();
            w.Line("PyObject* module = PyModule_Create2(&definition, 1013);");
            w.Open("if (!module)");
            w.Line("PyShlErr_ModuleImportError(definition.m_name, 0);");
            w.Line("return nullptr;");
            w.Close();
            foreach (var (g, k) in AllTypes(model))
            {
                string type = "&" + GenericNames.TypeObject(g, k);
                string pyName = CodeWriter.Quote(GenericNames.PyName(g, k));
                w.Open("");
                if (k is GenericWrapper.List or GenericWrapper.Array)
                {
                    // A typed list or array is accepted wherever the typed enumerable is.
                    string iterable = "&" + GenericNames.TypeObject(g, GenericWrapper.Iterable);
                    w.Open($"if (!fn_set_additional_ifcs_markattr({type}, 1, {iterable}) || !fn_set_implicit_ifcs_markattr({type}, 1, {iterable}))");
                    w.Line($"PyShlErr_TypeImportError({pyName}, 1);");
                    w.Line("goto error;");
                    w.Close();
                }
                w.Line($"Py_INCREF({type});");
                w.Open($"if (PyModule_AddObject(module, {pyName}, (PyObject*){type}) < 0)");
                w.Line($"Py_DECREF({type});");
                w.Line($"PyShlErr_TypeImportError({pyName}, 4);");
                w.Line("goto error;");
                w.Close();
                w.Close();
            }
            w.Line("return module;");
            if (model.Generics.Count > 0)
            {
                w.Outdent().Line("error:").Indent();
                w.Line("Py_DECREF(module);");
                w.Line("return nullptr;");
            }
            w.Close();
            w.Line();
        }

        private static void EmitTableList(CodeWriter w, BindingModel model)
        {
            var tables = new SortedDictionary<int, string>();
            foreach (var g in model.Generics)
            {
                if (g.PyListTable >= 0) tables[g.PyListTable] = $"m_pygn_pylist_{g.Id}_callbacks";
                if (g.PySeqTable >= 0) tables[g.PySeqTable] = $"m_pygn_pyseq_{g.Id}_callbacks";
                if (g.PyIterTable >= 0) tables[g.PyIterTable] = $"m_pygn_pyiter_{g.Id}_callbacks";
            }
            w.Line("// The typed callback tables, by the position managed code knows them at;");
            w.Line("// registered once with the exchange host.");
            w.Open("void*** get_all_pygn_generic_callbacks()");
            var entries = tables.Values.ToList();
            entries.Add("nullptr");
            w.Line($"static void** m_all_py_generic_callbacks[{entries.Count}] = {{{string.Join(", ", entries)}}};");
            w.Line("return m_all_py_generic_callbacks;");
            w.Close();
            w.Line();
        }

    }
}
