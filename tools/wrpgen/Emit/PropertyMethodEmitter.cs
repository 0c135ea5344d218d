using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// Property accessors and single-overload methods. Interfaces export theirs
    /// (phfn, htfn) so that implementing types can point their tables at them;
    /// classes keep theirs private to their unit (pafn, mtfn).
    /// </summary>
    internal static class PropertyMethodEmitter
    {
        public static void Run(EmitContext ctx)
        {
            foreach (var t in ctx.Model.ObjectTypes)
            {
                var unit = ctx.Unit(t);
                foreach (var slot in t.PyProperties.Where(s => s.Source == SlotSource.Local))
                    EmitProperty(ctx, unit, t, slot.Property);
                foreach (var slot in t.PyMethods.Where(s => s.Source == SlotSource.Local && !s.IsDispatcher))
                    EmitSingle(ctx, unit, t, slot);
            }
        }

        private static void EmitProperty(EmitContext ctx, CppUnit unit, BoundType t, PropertyModel p)
        {
            bool shared = t.SharesMembers;
            var w = shared ? unit.Public[Section.PropertiesMethods] : unit.Private[Section.PropertiesMethods];
            string prefix = shared ? "" : "static ";
            string host = t.Cpp.Host;
            if (p.CanRead)
            {
                string name = p.Getter!.Name;
                if (shared) ctx.Declare(Section.PropertiesMethods, $"PyObject* {name}(PyObject* self, void* closure);");
                w.Open($"{prefix}PyObject* {name}(PyObject* self, void*)");
                ArgCode.EmitCallAndReturn(w, p.Type, $"{host}::get_instance()->get_{p.Name}(", new[] { "fn_clr_handle(self)" });
                w.Close();
                w.Line();
            }
            if (p.CanWrite)
            {
                string name = p.Setter!.Name;
                if (shared) ctx.Declare(Section.PropertiesMethods, $"int {name}(PyObject* self, PyObject* value, void* closure);");
                w.Open($"{prefix}int {name}(PyObject* self, PyObject* value, void*)");
                w.Open("if (!value)");
                w.Line("PyErr_SetString(PyExc_AttributeError, \"can't delete attribute\");");
                w.Line("return -1;");
                w.Close();
                w.Line(CppTypes.Decl(p.Type, "a0"));
                w.Line($"if (!{CppTypes.Converter(p.Type)}(value, &a0))").Indent().Line("return -1;").Outdent();
                w.Line($"{host}::get_instance()->set_{p.Name}(fn_clr_handle(self), {CppTypes.CallArg(p.Type, "a0")});");
                w.Line("// A managed exception left its RuntimeError pending: the assignment fails with it.");
                w.Line("return PyErr_Occurred() ? -1 : 0;");
                w.Close();
                w.Line();
            }
        }

        private static void EmitSingle(EmitContext ctx, CppUnit unit, BoundType t, PyMethodSlot slot)
        {
            var m = slot.Candidates[0].Method;
            bool shared = slot.Function.Namespace == null;
            var w = shared ? unit.Public[Section.PropertiesMethods] : unit.Private[Section.PropertiesMethods];
            string name = slot.Function.Name;
            string signature = slot.IsNoArgs ? "(PyObject* self, PyObject*)" : "(PyObject* self, PyObject* args, PyObject* kwargs)";
            if (shared)
                ctx.Declare(Section.PropertiesMethods, $"PyObject* {name}{signature.Replace("PyObject*)", "PyObject* ignored)")};");
            w.Open($"{(shared ? "" : "static ")}PyObject* {name}{signature}");
            if (slot.IsStatic)
                ArgCode.EmitStaticStateCheck(w);
            if (!slot.IsNoArgs)
            {
                ArgCode.EmitLocals(w, m);
                ArgCode.EmitKeywords(w, m);
                w.Line($"if (!{ArgCode.Parse(m)})").Indent().Line("return nullptr;").Outdent();
            }
            ArgCode.EmitInvoke(w, m);
            w.Close();
            w.Line();
        }
    }
}
