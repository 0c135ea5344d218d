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

        private static void EmitElement(CodeWriter w, GenericInstance g)
        {
            var e = g.Element;
            string toPy = e.Kind == BindKind.Object ? $"{e.Bound!.Cpp.ClrToPy}(out)" : "wrpPye_gn_take_object(out)";
            string storage = e.Kind == BindKind.Object ? "void*" : CppTypes.Storage(e);
            w.Line($"// Elements of type {e.Clr.FullName}.");
            w.Line($"static PyObject* {g.ElementToPy}(const PyObjectOutArg& out) {{ return {toPy}; }}");
            w.Line($"static int {g.ElementToClr}(PyObject* obj, void* storage)");
            w.Line($"{{ return {CppTypes.Converter(e)}(obj, static_cast<{storage}*>(storage)); }}");
            w.Line($"static const PyGnElement {g.ElementTable} = {{{g.ElementToPy}, {g.ElementToClr}}};");
            w.Line();
        }

        // Each wrapper type's entries: its own proxy's, the length and membership
        // of the collection proxy for lists, and the enumerable's GetEnumerator.
        private static void EmitBindings(CodeWriter w, GenericInstance g)
        {
            foreach (var wrapper in g.Wrappers)
            {
                var k = wrapper.Kind;
                var hosts = k switch
                {
                    GenericWrapper.List => new[] { "IList", "ICol", "Iterable", "Iter" },
                    GenericWrapper.Array => new[] { "Array", "Iterable", "Iter" },
                    GenericWrapper.Iterable => new[] { "Iterable", "Iter" },
                    _ => new[] { "Iter" },
                };
                w.Open($"static const PyGnBinding* {wrapper.Binding}()");
                w.Open("static const PyGnBinding binding = []");
                w.Line("PyGnBinding b;");
                foreach (var h in hosts)
                {
                    w.Line($"const auto* {h.ToLowerInvariant()} = {g.Hosts[h].Native}::get_instance();");
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
            string unit = ctx.Model.Units.Generic.Namespace;
            var iterator = g.Wrapper(GenericWrapper.Iter);
            foreach (var wrapper in g.Wrappers)
            {
                var k = wrapper.Kind;
                string type = wrapper.Type;
                ctx.Declare(Section.GenericWrappers, $"extern PyGnType {type};");
                string kind = k switch
                {
                    GenericWrapper.List => "PyGnKind::List",
                    GenericWrapper.Array => "PyGnKind::Array",
                    GenericWrapper.Iterable => "PyGnKind::Iterable",
                    _ => "PyGnKind::Iterator",
                };
                w.Line($"PyGnType {type} = {{PyTypeObject{{}}, {kind}, {unit}::{g.ElementTable}, &{unit}::{wrapper.Binding}, &{iterator.TypeObject}}};");
            }
            w.Line();

            string iter = g.TpIter;
            ctx.Declare(Section.GenericWrappers, $"PyObject* {iter}(PyObject* self);");
            w.Line("// tp_iter of the wrappers' types and of generated classes implementing IEnumerable<T>.");
            w.Open($"PyObject* {iter}(PyObject* self)");
            w.Line($"return wrpPye_gn_tp_iter(self, {unit}::{g.Wrapper(GenericWrapper.Iterable).Binding}(), &{iterator.TypeObject});");
            w.Close();
            w.Line();

            foreach (var wrapper in g.Wrappers.Where(x => x.Converter != null))
            {
                string fn = wrapper.Converter!;
                string what = wrapper.Kind switch
                {
                    GenericWrapper.List => "List",
                    GenericWrapper.Array => "Array",
                    _ => "IEnumerable",
                };
                ctx.Declare(Section.GenericWrappers, $"int {fn}(PyObject* obj, VariantArg* out);");
                w.Open($"int {fn}(PyObject* obj, VariantArg* out)");
                w.Line($"return wrpPye_gn_conv_py_to_clr(obj, out, &{wrapper.Type}, {CodeWriter.Quote(what)});");
                w.Close();
                w.Line();
            }
        }

        private static void EmitCallbacks(EmitContext ctx, CodeWriter w, GenericInstance g)
        {
            string elem = $"&{ctx.Model.Units.Generic.Namespace}::{g.ElementTable}";
            if (g.PyListTable >= 0)
            {
                var c = g.ListCallbacks;
                w.Open($"int32_t {c.Function}(PyObject* list, int32_t index, void* storage)");
                w.Line($"return wrpPye_gn_clbk_list_get_item(list, index, storage, {elem});");
                w.Close();
                w.Line($"static void* {c.Table}[] = {{reinterpret_cast<void*>(&{c.Function})}};");
                w.Line();
            }
            if (g.PySeqTable >= 0)
            {
                var c = g.SeqCallbacks;
                w.Open($"int32_t {c.Function}(PyObject* seq, int32_t index, void* storage, PyObject** keep)");
                w.Line($"return wrpPye_gn_clbk_seq_get_item(seq, index, storage, keep, {elem});");
                w.Close();
                w.Line($"static void* {c.Table}[] = {{reinterpret_cast<void*>(&{c.Function})}};");
                w.Line();
            }
            if (g.PyIterTable >= 0)
            {
                var c = g.IterCallbacks;
                w.Open($"int32_t {c.Function}(PyObject* iterator, void* storage, PyObject** keep)");
                w.Line($"return wrpPye_gn_clbk_iter_next(iterator, storage, keep, {elem});");
                w.Close();
                w.Line($"static void* {c.Table}[] = {{reinterpret_cast<void*>(&{c.Function})}};");
                w.Line();
            }
        }

        private static IEnumerable<GenericWrapperNames> AllTypes(BindingModel model) =>
            model.Generics.SelectMany(g => g.Wrappers);

        // The types are readied before any generated class lists them among its
        // interfaces: the root module's builder calls this first.
        private static void EmitReady(EmitContext ctx, CodeWriter w)
        {
            string ready = ctx.Model.GenericNames.ReadyTypes;
            ctx.Declare(Section.GenericWrappers, $"bool {ready}(const char* root_name);");
            w.Open($"bool {ready}(const char* root_name)");
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
            foreach (var wrapper in all)
                w.Line($"{{&{wrapper.Type}, {CodeWriter.Quote(wrapper.PyName)}}},");
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
            w.Open($"if (!{model.GenericNames.ReadyTypes}(root_name))");
            w.Line("PyShlErr_ModuleImportError(definition.m_name, 0);");
            w.Line("return nullptr;");
            w.Close();
            w.Line("PyObject* module = PyModule_Create2(&definition, 1013);");
            w.Open("if (!module)");
            w.Line("PyShlErr_ModuleImportError(definition.m_name, 0);");
            w.Line("return nullptr;");
            w.Close();
            foreach (var (g, wrapper) in model.Generics.SelectMany(g => g.Wrappers.Select(w => (g, w))))
            {
                string type = "&" + wrapper.TypeObject;
                string pyName = CodeWriter.Quote(wrapper.PyName);
                w.Open("");
                if (wrapper.Kind is GenericWrapper.List or GenericWrapper.Array)
                {
                    // A typed list or array is accepted wherever the typed enumerable is.
                    string iterable = "&" + g.Wrapper(GenericWrapper.Iterable).TypeObject;
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
                if (g.PyListTable >= 0) tables[g.PyListTable] = g.ListCallbacks.Table;
                if (g.PySeqTable >= 0) tables[g.PySeqTable] = g.SeqCallbacks.Table;
                if (g.PyIterTable >= 0) tables[g.PyIterTable] = g.IterCallbacks.Table;
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
