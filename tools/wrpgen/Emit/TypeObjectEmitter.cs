using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// The static Python type of each class, struct and interface, with its slot
    /// functions, method and property tables, the aggregate host state, and the
    /// converters other units use for parameters and results of the type.
    /// </summary>
    internal static class TypeObjectEmitter
    {
        /// <summary>
        /// The slot functions and host state go before the member functions that
        /// use them; the tables after the member functions they list, then the
        /// type object and its converters.
        /// </summary>
        public static void Run(EmitContext ctx)
        {
            foreach (var t in ctx.Model.ObjectTypes)
            {
                var unit = ctx.Unit(t);
                EmitPrelude(unit.Private[Section.TypePrelude], t);
                EmitTables(unit.Private[Section.TypeTables], t);
                EmitPublic(ctx, unit.Public[Section.TypeTables], t);
            }
        }

        /// <summary>The is_not_valid checks a class's state depends on, in order.</summary>
        private static IEnumerable<string> Dependencies(BoundType t)
        {
            if (t.IsInterface)
                yield break;  // interfaces answer for their own host only
            if (t.IsDisposable)
                yield return "wrpPye_is_not_valid_disposable(s.message)";
            if (t.Base != null)
                yield return $"{t.Base.Cpp.IsNotValid}(s.message)";
            foreach (var i in t.Interfaces)
                yield return $"{i.Cpp.IsNotValid}(s.message)";
        }

        private static void EmitPrelude(CodeWriter w, BoundType t)
        {
            string host = t.Cpp.Host;
            w.Open("static const PyHostState& wrpPy_tybm_get_aggregate_host_state()");
            w.Open("static const PyHostState state = []");
            w.Line("PyHostState s;");
            w.Line($"const {host}* host = {host}::get_instance();");
            w.Open("if (host->is_not_valid())");
            w.Line("s.not_valid = true;");
            w.Line("s.message = host->error_msg();");
            w.Line("return s;");
            w.Close();
            var deps = Dependencies(t).ToList();
            if (deps.Count > 0)
            {
                w.Open($"if ({string.Join("\n        || ", deps)})");
                w.Line("s.not_valid = true;");
                w.Line("s.inherited = true;");
                w.Close();
            }
            w.Line("return s;");
            w.Close("();");
            w.Line("return state;");
            w.Close();
            w.Line();

            w.Open("static PyObject* wrpPy_tybm_tp_new(PyTypeObject* type, PyObject*, PyObject*)");
            w.Line("return fn_clr_object_checked_new(type, wrpPy_tybm_get_aggregate_host_state());");
            w.Close();
            w.Line();

            w.Open("static PyObject* wrpPy_tybm_tp_richcompare(PyObject* self, PyObject* other, int op)");
            w.Line($"const int is_instance = PyObject_IsInstance(other, (PyObject*)&{t.Cpp.TypeObject});");
            w.Line("if (is_instance < 0)").Indent().Line("return nullptr;").Outdent();
            w.Line("if (!is_instance)").Indent().Line("Py_RETURN_NOTIMPLEMENTED;").Outdent();
            w.Line("return wrapClrObject_tp_richcompare(fn_clr_handle(self), fn_clr_handle(other), op);");
            w.Close();
            w.Line();

            w.Open("static bool wrpPy_tybm_is_assignable(void* handle)");
            w.Line($"const {host}* host = {host}::get_instance();");
            w.Line("return !host->is_not_valid() && host->is_assignable_to(handle);");
            w.Close();
            w.Line();
        }

        private static void EmitTables(CodeWriter w, BoundType t)
        {
            w.Line($"static PyMethodDef {t.Cpp.MethodTable}[] = {{");
            w.Indent();
            if (t.IsDisposable)
            {
                w.Line("{\"__enter__\", (PyCFunction)wrpPye_mtfn_disposable_enter, METH_NOARGS, nullptr},");
                w.Line("{\"__exit__\", (PyCFunction)wrpPye_mtfn_disposable_exit, METH_VARARGS, nullptr},");
            }
            foreach (var slot in t.PyMethods.Where(s => s.Source != SlotSource.Inherited))
            {
                string flags = slot.IsStatic ? "METH_STATIC | METH_VARARGS | METH_KEYWORDS"
                             : slot.IsNoArgs ? "METH_NOARGS" : "METH_VARARGS | METH_KEYWORDS";
                w.Line($"{{{CodeWriter.Quote(slot.PyName)}, (PyCFunction)(void (*)(void)){slot.Function.From(t.Cpp.UnitNamespace)}, {flags}, nullptr}},");
            }
            w.Line("{nullptr, nullptr, 0, nullptr}");
            w.Outdent().Line("};");
            w.Line();

            w.Line($"static PyGetSetDef {t.Cpp.GetSetTable}[] = {{");
            w.Indent();
            foreach (var slot in t.PyProperties.Where(s => s.Source != SlotSource.Inherited))
            {
                var p = slot.Property;
                string get = p.Getter?.From(t.Cpp.UnitNamespace) ?? "nullptr";
                string set = p.Setter?.From(t.Cpp.UnitNamespace) ?? "nullptr";
                w.Line($"{{{CodeWriter.Quote(slot.PyName)}, {get}, {set}, nullptr, nullptr}},");
            }
            w.Line("{nullptr, nullptr, nullptr, nullptr, nullptr}");
            w.Outdent().Line("};");
        }

        private static void EmitPublic(EmitContext ctx, CodeWriter w, BoundType t)
        {
            string ns = t.Cpp.UnitNamespace;
            string type = t.Cpp.TypeObject;
            string init = t.BoundConstructors.Any() ? $"{ns}::wrpPy_tybm_tp_init" : "wrapClrObject_tp_init_fault";
            string baseType = t.Base != null ? "&" + t.Base.Cpp.TypeObject : "nullptr";
            ctx.Declare(Section.TypeTables, $"extern PyTypeObject {type};");
            w.Open($"PyTypeObject {type} =");
            w.Line("PyVarObject_HEAD_INIT(nullptr, 0)");
            w.Line($"{CodeWriter.Quote(t.PythonFullName)}, // tp_name");
            w.Line("sizeof(PyClrObject), // tp_basicsize");
            w.Line("0, // tp_itemsize");
            w.Line("wrapClrObject_tp_dealloc, // tp_dealloc");
            w.Line("0, // tp_vectorcall_offset");
            w.Line("nullptr, // tp_getattr");
            w.Line("nullptr, // tp_setattr");
            w.Line("nullptr, // tp_as_async");
            w.Line("wrapClrObject_str, // tp_repr");
            w.Line("nullptr, // tp_as_number");
            bool coll = t.Indexer != null;
            w.Line((coll ? $"&{ns}::{t.Cpp.SequenceTable}" : "nullptr") + ", // tp_as_sequence");
            string mapping = coll ? $"&{ns}::{t.Cpp.MappingTable}"
                : t.KeyedGet == null ? "nullptr"
                : t.KeyedSet == null ? "&wrpPye_keyed_items_ro" : "&wrpPye_keyed_items_rw";
            w.Line(mapping + ", // tp_as_mapping");
            w.Line("wrapClrObject_hash, // tp_hash");
            w.Line("nullptr, // tp_call");
            w.Line("nullptr, // tp_str");
            w.Line("nullptr, // tp_getattro");
            w.Line("nullptr, // tp_setattro");
            w.Line("nullptr, // tp_as_buffer");
            w.Line("Py_TPFLAGS_DEFAULT, // tp_flags");
            w.Line("nullptr, // tp_doc");
            w.Line("nullptr, // tp_traverse");
            w.Line("nullptr, // tp_clear");
            w.Line($"{ns}::wrpPy_tybm_tp_richcompare, // tp_richcompare");
            w.Line("0, // tp_weaklistoffset");
            // Enumerable collections iterate through their managed enumerator; the
            // others through the sequence protocol (sq_item until IndexError).
            // A typed enumerable iterates as the typed iterable wrapper of its element type does.
            string tpIter = t.IterableOf != null ? t.IterableOf.TpIter
                : coll && t.IsEnumerable ? "wrpPye_collection_tp_iter" : "nullptr";
            w.Line(tpIter + ", // tp_iter");
            w.Line("nullptr, // tp_iternext");
            w.Line($"{ns}::{t.Cpp.MethodTable}, // tp_methods");
            w.Line("nullptr, // tp_members");
            w.Line($"{ns}::{t.Cpp.GetSetTable}, // tp_getset");
            w.Line($"{baseType}, // tp_base");
            w.Line("nullptr, // tp_dict");
            w.Line("nullptr, // tp_descr_get");
            w.Line("nullptr, // tp_descr_set");
            w.Line("0, // tp_dictoffset");
            w.Line($"{init}, // tp_init");
            w.Line("PyType_GenericAlloc, // tp_alloc");
            w.Line($"{ns}::wrpPy_tybm_tp_new, // tp_new");
            w.Close(";");
            w.Line();

            string toClr = t.Cpp.PyToClr;
            ctx.Declare(Section.TypeTables, $"int {toClr}(PyObject* obj, void** out);");
            w.Open($"int {toClr}(PyObject* obj, void** out)");
            string fn = t.IsInterface ? "fn_conv_py_ifcobj_to_clr_handle" : "fn_conv_py_clsobj_to_clr_handle";
            w.Line($"return {fn}(obj, out, &{type}, {ns}::wrpPy_tybm_is_assignable, {CodeWriter.Quote(t.Name)});");
            w.Close();
            w.Line();

            string toPy = t.Cpp.ClrToPy;
            ctx.Declare(Section.TypeTables, $"PyObject* {toPy}(const PyObjectOutArg& arg);");
            w.Open($"PyObject* {toPy}(const PyObjectOutArg& arg)");
            if (t.IsInterface)
                w.Line($"return fn_conv_clr_ifcimpl_to_py_ifcimpl(arg, &{type});");
            else if (t.IsStruct || t.IsSealed)
                w.Line($"return fn_conv_clr_clsobj_to_py_clsobj(arg.handle, &{type});");
            else
                w.Line($"return fn_conv_clr_basobj_to_py_basobj(arg, &{type});");
            w.Close();
            w.Line();

            string check = t.Cpp.IsNotValid;
            ctx.Declare(Section.TypeTables, $"bool {check}(std::string& message);");
            w.Open($"bool {check}(std::string& message)");
            w.Line($"const PyHostState& state = {ns}::wrpPy_tybm_get_aggregate_host_state();");
            w.Line("if (state.not_valid)").Indent().Line("message = state.message;").Outdent();
            w.Line("return state.not_valid;");
            w.Close();
            w.Line();
        }
    }
}
