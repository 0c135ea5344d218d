using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// Static fields, constants and static properties become class attributes,
    /// read once at import. The first member that cannot be read warns (at most
    /// three warnings per import, counted by the caller) and ends its class's
    /// initialisation: it and the members after it stay absent.
    /// </summary>
    internal static class StaticFieldEmitter
    {
        public static void Run(EmitContext ctx)
        {
            foreach (var t in ctx.Model.ObjectTypes.Where(t => t.HasStaticInitialiser))
                Emit(ctx, ctx.Unit(t), t);
        }

        private static void Emit(EmitContext ctx, CppUnit unit, BoundType t)
        {
            string host = t.Cpp.Host;
            var members = t.BoundStaticMembers.ToList();
            foreach (var s in members)
            {
                var w = unit.Private[Section.StaticFields];
                w.Open($"static PyObject* {s.Getter.Name}()");
                ArgCode.EmitCallAndReturn(w, s.Type, $"{host}::get_instance()->get_{s.Name}(", System.Array.Empty<string>());
                w.Close();
                w.Line();
            }
            string fn = t.Cpp.Initialiser;
            string type = t.Cpp.TypeObject;
            string name = CodeWriter.Quote(t.PythonFullName);
            ctx.Declare(Section.StaticFields, $"void {fn}(int* warn_count);");
            var p = unit.Public[Section.StaticFields];
            p.Open($"void {fn}(int* warn_count)");
            p.Line($"const {host}* host = {host}::get_instance();");
            p.Open("if (host->is_not_valid())");
            p.Line($"PyShlErr_TypeStaticFieldsInitialization(host->error_msg().c_str(), {name}, warn_count);");
            p.Line("return;");
            p.Close();
            p.Line($"PyObject* dict = {type}.tp_dict;");
            p.Line("static const struct { const char* key; PyObject* (*get)(); } members[] = {");
            p.Indent();
            foreach (var s in members)
                p.Line($"{{{CodeWriter.Quote(s.Key)}, {s.Getter.Qualified}}},");
            p.Outdent().Line("};");
            p.Open("for (const auto& member : members)");
            p.Line("PyObject* value = member.get();");
            p.Open("if (!value || PyDict_SetItemString(dict, member.key, value) < 0)");
            p.Line($"PyShlErr_StaticFieldsInitialization({name}, member.key, warn_count);");
            p.Line("Py_XDECREF(value);");
            p.Line("break;");
            p.Close();
            p.Line("Py_DECREF(value);");
            p.Close();
            p.Line("// The dictionary was changed behind the type's back: drop cached look-ups.");
            p.Line($"PyType_Modified(&{type});");
            p.Close();
            p.Line();
        }
    }
}
