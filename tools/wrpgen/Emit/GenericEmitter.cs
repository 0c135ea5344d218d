using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>The Python wrapper types of one instantiation.</summary>
    internal enum GenericWrapper { List, Array, Iterable, Iter }

    /// <summary>Names of the pieces of a typed instantiation; every emitter asks here.</summary>
    internal static class GenericNames
    {
        public const string ManagedNamespace = "Orvane.WrpGen.Generic";
        public const string ReadyTypes = "wrpPygn_tyrd_FFFFFFFF_generic_types";

        public static string PyName(GenericWrapper w) => w switch
        {
            GenericWrapper.List => "_IListWrapper",
            GenericWrapper.Array => "_ArrayWrapper",
            GenericWrapper.Iterable => "_IterableWrapper",
            _ => "_IterWrapper",
        };

        public static string PyName(GenericInstance g, GenericWrapper w) => $"{PyName(w)}_{g.Id}";
        public static string TypeObject(GenericInstance g, GenericWrapper w) => $"wrpPygn_tyds_{g.Id}{PyName(w)}.type";
        public static string GnType(GenericInstance g, GenericWrapper w) => $"wrpPygn_tyds_{g.Id}{PyName(w)}";
        public static string TpIter(GenericInstance g) => $"wrpPygn_tp_iter_{g.Id}";
        public static string ElementClass(GenericInstance g) => $"global::{ManagedNamespace}.Element_{g.Id}";

        /// <summary>The wrapper a typed parameter or result crosses as.</summary>
        public static GenericWrapper WrapperOf(TypeRef t) => t.Collection switch
        {
            CollectionKind.GenericList or CollectionKind.GenericCollection => GenericWrapper.List,
            CollectionKind.TypedArray => GenericWrapper.Array,
            CollectionKind.GenericEnumerable => GenericWrapper.Iterable,
            _ => GenericWrapper.Iter,
        };

        /// <summary>The typed O&amp; converter of a parameter, or null where the untyped one serves (enumerators).</summary>
        public static string? ConverterOf(TypeRef t)
        {
            if (t.Generic == null)
                return null;
            return WrapperOf(t) switch
            {
                GenericWrapper.List => $"wrpPygn_conv_py_to_clr_list_{t.Generic.Id}",
                GenericWrapper.Array => $"wrpPygn_conv_py_to_clr_array_{t.Generic.Id}",
                GenericWrapper.Iterable => $"wrpPygn_conv_py_to_clr_iterable_{t.Generic.Id}",
                _ => null,
            };
        }

        public static IEnumerable<GenericWrapper> Wrappers(GenericInstance g)
        {
            if (g.HasList) yield return GenericWrapper.List;
            if (g.HasArray) yield return GenericWrapper.Array;
            yield return GenericWrapper.Iterable;
            yield return GenericWrapper.Iter;
        }
    }

    /// <summary>
    /// The typed instantiations: per element type the native hosts
    /// (PyHost_gn_&lt;Kind&gt;_&lt;ID8&gt;), the wrapper types of
    /// &lt;root&gt;._wrpgen._generic, the typed argument conversions and callback
    /// tables, and the managed proxies Orvane.WrpGen.Generic.*_&lt;ID8&gt;. The
    /// wrappers' algorithms are the runtime's (interop/generic_wrappers.h).
    /// </summary>
    internal static class GenericEmitter
    {
        private sealed record Entry(string Name, string Field, string CsReturn, string CsParams, string Body, string? Fail);

        private sealed record Host(string Kind, string Proxy, List<Entry> Entries);

        public static void Run(EmitContext ctx)
        {
            var unit = ctx.Unit("generic", "Typed collection wrappers");
            foreach (var g in ctx.Model.Generics)
            {
                var hosts = Hosts(g);
                EmitElement(unit.Private, g);
                foreach (var h in hosts)
                    EmitHost(unit.Host, g, h, ctx.Model.ProxyAssembly);
                EmitBindings(unit.Private, g);
                EmitTypes(ctx, unit.Public, g);
                EmitCallbacks(ctx, unit.Public, g);
                EmitProxies(ctx, g, hosts);
            }
            EmitReady(ctx, unit.Public);
            EmitModule(unit.Public, ctx.Model);
            EmitTableList(unit.Public, ctx.Model);
        }

        // ---- hosts and their managed entries ------------------------------------

        private static string El(GenericInstance g) => Kinds.CsType(g.Element.Clr);

        private static string Read(GenericInstance g) => $"Element_{g.Id}.Read(element)";

        private static List<Host> Hosts(GenericInstance g)
        {
            string t = El(g);
            string ops = $"GenericEntries<{t}>";
            string write = $"&Element_{g.Id}.Write";
            var hosts = new List<Host>();
            if (g.HasList)
            {
                hosts.Add(new Host("ICol", "SiApiCntCollection", new List<Entry>
                {
                    new("SqLength", "sq_length", "int", "IntPtr handle", $"return {ops}.Collection(handle).Count;", "-1"),
                    new("SqContains", "sq_contains", "int", "IntPtr handle, void* element", $"return {ops}.Collection(handle).Contains({Read(g)}) ? 1 : 0;", "0"),
                    new("Add", "add", "void", "IntPtr handle, void* element", $"{ops}.Collection(handle).Add({Read(g)});", null),
                    new("Remove", "remove", "byte", "IntPtr handle, void* element", $"return {ops}.Collection(handle).Remove({Read(g)}) ? (byte)1 : (byte)0;", "0"),
                    new("Clear", "clear", "void", "IntPtr handle", $"{ops}.Collection(handle).Clear();", null),
                    new("IsAssignableTo", "is_assignable_to", "byte", "IntPtr handle", $"return Handles.Target(handle) is global::System.Collections.Generic.ICollection<{t}> ? (byte)1 : (byte)0;", "0"),
                }));
                hosts.Add(new Host("IList", "SiApiCntList", new List<Entry>
                {
                    new("SqGetItem", "sq_getitem", "int", "IntPtr handle, int index, PyObjectOutArg* result", $"return {ops}.GetItem(handle, index, result, {write});", "-1"),
                    new("SqGetItemNoCheck", "sq_getitem_nocheck", "int", "IntPtr handle, int index, PyObjectOutArg* result", $"{ops}.GetItemNoCheck(handle, index, result, {write}); return 0;", "-1"),
                    new("SqSetItem", "sq_setitem", "int", "IntPtr handle, int index, void* element", $"return {ops}.SetItem(handle, index, {Read(g)});", "-1"),
                    new("SqSetItemNoChek", "sq_setitem_nocheck", "void", "IntPtr handle, int index, void* element", $"{ops}.List(handle)[index] = {Read(g)};", null),
                    new("Insert", "insert", "void", "IntPtr handle, int index, void* element", $"{ops}.Insert(handle, index, {Read(g)});", null),
                    new("RemoveAt", "remove_at", "int", "IntPtr handle, int index", $"return {ops}.RemoveAt(handle, index);", "-1"),
                    new("Pop", "pop", "int", "IntPtr handle, int hasIndex, int index, PyObjectOutArg* result", $"return {ops}.Pop(handle, hasIndex, index, result, {write});", "-1"),
                    new("SqInplaceConcat", "sq_inplace_concat", "int", "IntPtr handle, IntPtr other", $"return {ops}.InplaceConcat(handle, other);", "-1"),
                    new("SqInplaceRepeat", "sq_inplace_repeat", "void", "IntPtr handle, int times", $"{ops}.InplaceRepeat(handle, times);", null),
                    new("MpSetItems", "mp_set_items", "int", "IntPtr handle, IntPtr source, int start, int sliceLength, int step", $"return {ops}.MpSetItems(handle, source, start, sliceLength, step);", "-1"),
                    new("MpRemoveItems", "mp_remove_items", "void", "IntPtr handle, int start, int sliceLength, int step", $"{ops}.MpRemoveItems(handle, start, sliceLength, step);", null),
                    new("Reverse", "reverse", "void", "IntPtr handle", $"{ops}.Reverse(handle);", null),
                    new("Sort", "sort", "void", "IntPtr handle, int reverse", $"{ops}.Sort(handle, reverse);", null),
                    new("IndexBy", "index_by", "int", "IntPtr handle, int hasStart, int start, int hasStop, int stop, void* element", $"return {ops}.IndexBy(handle, hasStart, start, hasStop, stop, {Read(g)});", "-1"),
                    new("CountOf", "count_of", "int", "IntPtr handle, void* element", $"return {ops}.CountOf(handle, {Read(g)});", "0"),
                    new("IsAssignableTo", "is_assignable_to", "byte", "IntPtr handle", $"return Handles.Target(handle) is global::System.Collections.Generic.IList<{t}> ? (byte)1 : (byte)0;", "0"),
                }));
            }
            if (g.HasArray)
            {
                hosts.Add(new Host("Array", "SiApiArray", new List<Entry>
                {
                    new("SqLength", "sq_length", "int", "IntPtr handle", $"return {ops}.List(handle).Count;", "-1"),
                    new("SqContains", "sq_contains", "int", "IntPtr handle, void* element", $"return {ops}.List(handle).Contains({Read(g)}) ? 1 : 0;", "0"),
                    new("SqGetItem", "sq_getitem", "int", "IntPtr handle, int index, PyObjectOutArg* result", $"return {ops}.GetItem(handle, index, result, {write});", "-1"),
                    new("SqGetItemNoCheck", "sq_getitem_nocheck", "int", "IntPtr handle, int index, PyObjectOutArg* result", $"{ops}.GetItemNoCheck(handle, index, result, {write}); return 0;", "-1"),
                    new("SqSetItem", "sq_setitem", "int", "IntPtr handle, int index, void* element", $"return {ops}.SetItem(handle, index, {Read(g)});", "-1"),
                    new("SqSetItemNoChek", "sq_setitem_nocheck", "void", "IntPtr handle, int index, void* element", $"{ops}.List(handle)[index] = {Read(g)};", null),
                    new("MpSetItems", "mp_set_items", "int", "IntPtr handle, IntPtr source, int start, int sliceLength, int step", $"return {ops}.MpSetItems(handle, source, start, sliceLength, step);", "-1"),
                    new("Reverse", "reverse", "void", "IntPtr handle", $"{ops}.Reverse(handle);", null),
                    new("Sort", "sort", "void", "IntPtr handle, int reverse", $"{ops}.Sort(handle, reverse);", null),
                    new("IndexBy", "index_by", "int", "IntPtr handle, int hasStart, int start, int hasStop, int stop, void* element", $"return {ops}.IndexBy(handle, hasStart, start, hasStop, stop, {Read(g)});", "-1"),
                    new("CountOf", "count_of", "int", "IntPtr handle, void* element", $"return {ops}.CountOf(handle, {Read(g)});", "0"),
                    new("IsAssignableTo", "is_assignable_to", "byte", "IntPtr handle", $"return Handles.Target(handle) is {t}[] ? (byte)1 : (byte)0;", "0"),
                }));
            }
            hosts.Add(new Host("Iterable", "SiApiEnumerable", new List<Entry>
            {
                new("GetEnumerator", "get_enumerator", "int", "IntPtr handle, PyObjectOutArg* result", $"return {ops}.GetEnumerator(handle, result);", "-1"),
                new("IsAssignableTo", "is_assignable_to", "byte", "IntPtr handle", $"return Handles.Target(handle) is global::System.Collections.Generic.IEnumerable<{t}> ? (byte)1 : (byte)0;", "0"),
            }));
            hosts.Add(new Host("Iter", "SiApiEnumerator", new List<Entry>
            {
                new("MoveNext", "move_next", "int", "IntPtr handle, PyObjectOutArg* result", $"return {ops}.MoveNext(handle, result, {write});", "-1"),
                new("IsAssignableTo", "is_assignable_to", "byte", "IntPtr handle", $"return Handles.Target(handle) is global::System.Collections.Generic.IEnumerator<{t}> ? (byte)1 : (byte)0;", "0"),
            }));
            return hosts;
        }

        private static string HostName(GenericInstance g, Host h) => $"PyHost_gn_{h.Kind}_{g.Id}";

        private static void EmitHost(CodeWriter w, GenericInstance g, Host h, string proxyAssembly)
        {
            string name = HostName(g, h);
            string managed = $"{GenericNames.ManagedNamespace}.{h.Proxy}_{g.Id}";
            w.Line($"// Host of the managed proxy {managed}.");
            w.Open($"class {name}");
            w.Outdent().Line("public:").Indent();
            w.Open($"static const {name}* get_instance()");
            w.Line($"static const {name} instance;");
            w.Line("return &instance;");
            w.Close();
            w.Line("bool is_not_valid() const { return m_not_valid; }");
            w.Line("const std::string& error_msg() const { return m_error; }");
            w.Line("// The bound entries, as the wrapper algorithms call them.");
            w.Line("const PyGnEntries& entries() const { return m_entries; }");
            w.Line();
            w.Outdent().Line("private:").Indent();
            w.Line($"{name}();");
            w.Line($"{name}(const {name}&) = delete;");
            w.Line($"{name}& operator=(const {name}&) = delete;");
            w.Line("bool m_not_valid = false;");
            w.Line("std::string m_error;");
            w.Line("PyGnEntries m_entries;");
            w.Close(";");
            w.Line();
            w.Open($"{name}::{name}()");
            w.Line("static const char* const names[] = {");
            w.Indent();
            foreach (var e in h.Entries)
                w.Line(Symbols.Quote(e.Name) + ",");
            w.Outdent().Line("};");
            w.Line("void** const slots[] = {");
            w.Indent();
            foreach (var e in h.Entries)
                w.Line($"reinterpret_cast<void**>(&m_entries.{e.Field}),");
            w.Outdent().Line("};");
            w.Open("try");
            w.Line($"const char* assembly = ExchangeHost::get_instance()->get_assembly_name() ? {Symbols.Quote(proxyAssembly)} : nullptr;");
            w.Line("const HostEnvironment& env = HostEnvironment::instance(nullptr, false, nullptr, nullptr, nullptr, nullptr);");
            w.Open("for (size_t i = 0; i < sizeof(slots) / sizeof(slots[0]); ++i)");
            w.Open($"if (!fn_bind_host_method(env, assembly, {Symbols.Quote(managed)}, names[i], slots[i], m_error))");
            w.Line("m_not_valid = true;");
            w.Line("return;");
            w.Close();
            w.Close();
            w.Close();
            w.Open("catch (...)");
            w.Line("m_error = HostNotReady;");
            w.Line("m_not_valid = true;");
            w.Close();
            w.Close();
            w.Line();
        }

        // ---- native element converters and bindings ------------------------------

        private static string Elem(GenericInstance g) => $"wrpPygn_elem_{g.Id}";

        private static void EmitElement(CodeWriter w, GenericInstance g)
        {
            var e = g.Element;
            string toPy = e.Kind == BindKind.Object ? $"wrpPy_conv_clr_to_py_{e.Bound!.Tag}(out)" : "wrpPye_gn_take_object(out)";
            string storage = e.Kind == BindKind.Object ? "void*" : Kinds.CppStorage(e);
            w.Line($"// Elements of type {e.Clr.FullName}.");
            w.Line($"static PyObject* wrpPygn_elem_to_py_{g.Id}(const PyObjectOutArg& out) {{ return {toPy}; }}");
            w.Line($"static int wrpPygn_elem_to_clr_{g.Id}(PyObject* obj, void* storage)");
            w.Line($"{{ return {Kinds.CppConverter(e)}(obj, static_cast<{storage}*>(storage)); }}");
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
                ctx.Declare($"extern PyGnType {type};");
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
            ctx.Declare($"PyObject* {iter}(PyObject* self);");
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
                ctx.Declare($"int {fn}(PyObject* obj, VariantArg* out);");
                w.Open($"int {fn}(PyObject* obj, VariantArg* out)");
                w.Line($"return wrpPye_gn_conv_py_to_clr(obj, out, &{GenericNames.GnType(g, k)}, {Symbols.Quote(what)});");
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
            ctx.Declare($"bool {GenericNames.ReadyTypes}(const char* root_name);");
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
                w.Line($"{{&{GenericNames.GnType(g, k)}, {Symbols.Quote(GenericNames.PyName(g, k))}}},");
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
                string pyName = Symbols.Quote(GenericNames.PyName(g, k));
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

        // ---- managed proxies ---------------------------------------------------------------

        /// <summary>A new Python object for a string or number element, without boxing it.</summary>
        private static string ValueToPy(TypeRef e, string v) => e.Kind switch
        {
            BindKind.String => $"Strings.ToPy({v})",
            BindKind.Bool => $"PyCallbacks.WriteBool({v})",
            BindKind.Int8 or BindKind.UInt8 or BindKind.Int16 or BindKind.UInt16 or BindKind.Int32 => $"PyCallbacks.WriteInt({v})",
            BindKind.UInt32 => $"PyCallbacks.WriteUInt({v})",
            BindKind.Int64 => $"PyCallbacks.WriteLong({v})",
            BindKind.UInt64 => $"PyCallbacks.WriteULong({v})",
            BindKind.Float or BindKind.Double => $"PyCallbacks.WriteDouble({v})",
            _ => $"Variants.ToPy({v})",
        };

        private static void EmitProxies(EmitContext ctx, GenericInstance g, List<Host> hosts)
        {
            string t = El(g);
            var e = g.Element;
            var w = new CodeWriter();
            w.Line($"// Typed collection proxies of {e.Clr.FullName}.");
            w.Line("// Generated by WrpGen; do not edit.");
            w.Line("using System;");
            w.Line("using System.Runtime.CompilerServices;");
            w.Line("using System.Runtime.InteropServices;");
            w.Line("using Orvane.WrpGen.Interop;");
            w.Line();
            w.Open($"namespace {GenericNames.ManagedNamespace}");
            w.Line("/// <summary>How one element crosses: read from native storage, written into an object out record.</summary>");
            w.Open($"internal static unsafe class Element_{g.Id}");
            w.Line($"public static {t} Read(void* element) => {Kinds.CsFromStorage(e, "element")};");
            w.Line(e.Kind == BindKind.Object
                ? $"public static void Write(PyObjectOutArg* result, {t} value) => Handles.WriteOut(result, value);"
                : $"public static void Write(PyObjectOutArg* result, {t} value) => GenericEntries<{t}>.WriteObject(result, {ValueToPy(e, "value")});");
            w.Close();
            foreach (var h in hosts)
            {
                w.Line();
                w.Open($"public static unsafe class {h.Proxy}_{g.Id}");
                bool first = true;
                foreach (var entry in h.Entries)
                {
                    if (!first)
                        w.Line();
                    first = false;
                    w.Line("[UnmanagedCallersOnly]");
                    w.Line("[MethodImpl(MethodImplOptions.AggressiveOptimization)]");
                    w.Open($"public static {entry.CsReturn} {entry.Name}({entry.CsParams})");
                    w.Open("try");
                    w.Line(entry.Body);
                    w.Close();
                    w.Open("catch (Exception e)");
                    w.Line("EntryErrors.Report(e);");
                    if (entry.Fail != null)
                        w.Line(entry.CsReturn == "byte" ? $"return (byte){entry.Fail};" : $"return {entry.Fail};");
                    w.Close();
                    w.Close();
                }
                w.Close();
            }
            w.Close();
            ctx.CsFiles[$"{GenericNames.ManagedNamespace}.{g.Id}.cs"] = w.ToString();
        }
    }
}
