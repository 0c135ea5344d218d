using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// Each managed enum becomes an enum.IntEnum built at import from the values
    /// its proxy's getters return, members in declaration order.
    /// </summary>
    internal static class EnumEmitter
    {
        public static void Run(EmitContext ctx)
        {
            foreach (var t in ctx.Model.EnumTypes)
                Emit(ctx, ctx.Unit(t), t);
        }

        private static void Emit(EmitContext ctx, CppUnit unit, BoundType t)
        {
            string host = t.Cpp.Host;
            var valueKind = Passes.EntryPlan.EnumValueKind(t.EnumUnderlying);
            string cppValue = CppTypes.Scalar(valueKind);
            string toPy = valueKind switch
            {
                BindKind.Int64 => "PyLong_FromLongLong",
                BindKind.UInt64 => "PyLong_FromUnsignedLongLong",
                _ => "PyLong_FromLong",
            };
            var members = t.BoundEnumMembers.ToList();
            string fn = t.Cpp.Initialiser;
            ctx.Declare(Section.Enums, $"PyObject* {fn}();");
            var w = unit.Public[Section.Enums];
            w.Open($"PyObject* {fn}()");
            w.Line($"const {host}* host = {host}::get_instance();");
            w.Open("if (host->is_not_valid())");
            w.Line($"PyShlErr_EnumTypeInitialization(host->error_msg().c_str(), {CodeWriter.Quote(t.PythonFullName)});");
            w.Line("return nullptr;");
            w.Close();
            if (members.Count > 0)
            {
                w.Line($"static const struct {{ const char* name; {cppValue} ({host}::*get)() const; }} members[] = {{");
                w.Indent();
                foreach (var m in members)
                    w.Line($"{{{CodeWriter.Quote(m.PyName)}, &{host}::get_{m.Name}}},");
                w.Outdent().Line("};");
            }
            w.Line("PyObject* int_enum = fn_import_type_from_module(\"enum\", PyWrpIdTypeName_IntEnum);");
            w.Line("if (!int_enum)").Indent().Line("return nullptr;").Outdent();
            w.Line("PyObject* result = nullptr;");
            w.Line("PyObject* call_args = nullptr;");
            w.Line("PyObject* call_kwargs = nullptr;");
            w.Line($"PyObject* items = PyTuple_New({members.Count});");
            w.Line("if (!items)").Indent().Line("goto done;").Outdent();
            if (members.Count > 0)
            {
                w.Open($"for (Py_ssize_t i = 0; i < {members.Count}; ++i)");
                w.Line($"PyObject* item = Py_BuildValue(\"(NN)\", PyUnicode_FromString(members[i].name), {toPy}((host->*members[i].get)()));");
                w.Line("if (!item)").Indent().Line("goto done;").Outdent();
                w.Line("PyTuple_SET_ITEM(items, i, item);");
                w.Line("if (PyErr_Occurred())").Indent().Line("goto done;").Outdent();
                w.Close();
            }
            w.Line($"call_args = Py_BuildValue(\"(sO)\", {CodeWriter.Quote(t.Name)}, items);");
            w.Line("// The module keeps the members picklable and their repr pointing at the right place.");
            w.Line($"call_kwargs = Py_BuildValue(\"{{ss}}\", \"module\", {CodeWriter.Quote(t.Module.PyName)});");
            w.Line("if (call_args && call_kwargs)").Indent().Line("result = PyObject_Call(int_enum, call_args, call_kwargs);").Outdent();
            w.Outdent().Line("done:").Indent();
            w.Line("Py_XDECREF(call_kwargs);");
            w.Line("Py_XDECREF(call_args);");
            w.Line("Py_XDECREF(items);");
            w.Line("Py_DECREF(int_enum);");
            w.Line("return result;");
            w.Close();
            w.Line();
        }
    }
}
