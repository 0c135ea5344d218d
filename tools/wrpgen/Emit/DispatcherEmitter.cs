using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// Overload dispatchers (mgfn, hgfn), the constructor dispatcher (tp_init)
    /// and the exported candidates (htgn) through which a dispatcher tries an
    /// overload that another type defines. Candidates are tried in order; the
    /// first that parses is called; when none parses, the TypeError's value is
    /// the list of every candidate's message.
    /// </summary>
    internal static class DispatcherEmitter
    {
        public static void Run(EmitContext ctx)
        {
            foreach (var t in ctx.Model.ObjectTypes)
            {
                var unit = ctx.Unit(t);
                EmitInit(unit.Private[Section.Dispatchers], t);
                foreach (var slot in t.PyMethods.Where(s => s.Source == SlotSource.Local && s.IsDispatcher))
                    EmitDispatcher(ctx, unit, t, slot);
                foreach (var m in t.Methods.Where(m => t.ExportedCandidates.Contains(m)))
                    EmitExportedCandidate(ctx, unit.Public[Section.Dispatchers], m);
            }
        }

        private static void EmitInit(CodeWriter w, BoundType t)
        {
            var ctors = t.BoundConstructors.ToList();
            if (ctors.Count == 0)
                return;
            w.Open("static int wrpPy_tybm_tp_init(PyObject* self, PyObject* args, PyObject* kwargs)");
            if (ctors.Count == 1)
            {
                ArgCode.EmitLocals(w, ctors[0]);
                ArgCode.EmitKeywords(w, ctors[0]);
                w.Line($"if (!{ArgCode.Parse(ctors[0])})").Indent().Line("return -1;").Outdent();
                ArgCode.EmitInvoke(w, ctors[0]);
            }
            else
            {
                w.Line($"PyObject* errors[{ctors.Count}] = {{}};");
                for (int i = 0; i < ctors.Count; i++)
                    EmitInlineCandidate(w, ctors[i], i);
                w.Line($"wrpPy_dispatch_fail(errors, {ctors.Count});");
                w.Line("return -1;");
            }
            w.Close();
            w.Line();
        }

        private static void EmitDispatcher(EmitContext ctx, CppUnit unit, BoundType t, PyMethodSlot slot)
        {
            bool shared = slot.Function.Namespace == null;
            var w = shared ? unit.Public[Section.Dispatchers] : unit.Private[Section.Dispatchers];
            string name = slot.Function.Name;
            if (shared)
                ctx.Declare(Section.Dispatchers, $"PyObject* {name}(PyObject* self, PyObject* args, PyObject* kwargs);");
            w.Open($"{(shared ? "" : "static ")}PyObject* {name}(PyObject* self, PyObject* args, PyObject* kwargs)");
            if (slot.IsStatic)
                ArgCode.EmitStaticStateCheck(w);
            int n = slot.Candidates.Count;
            w.Line($"PyObject* errors[{n}] = {{}};");
            for (int i = 0; i < n; i++)
            {
                var m = slot.Candidates[i].Method;
                if (m.Owner == t)
                {
                    EmitInlineCandidate(w, m, i);
                    continue;
                }
                w.Open("");
                w.Line($"// {m.Owner.Name}.{m.Name}, overload {m.Number}");
                w.Line($"PyObject* result = {m.ExportedFunction}(self, args, kwargs, &errors[{i}]);");
                w.Open($"if (!errors[{i}])");
                w.Line($"wrpPy_dispatch_release(errors, {i});");
                w.Line("return result;");
                w.Close();
                w.Close();
            }
            w.Line($"return wrpPy_dispatch_fail(errors, {n});");
            w.Close();
            w.Line();
        }

        /// <summary>One candidate parsed in place; on failure its error value is kept in errors[index].</summary>
        private static void EmitInlineCandidate(CodeWriter w, MethodModel m, int index)
        {
            w.Open("");
            w.Line($"// {(m.IsCtor ? m.EntryName : m.Name + ", overload " + m.Number)}");
            ArgCode.EmitLocals(w, m);
            ArgCode.EmitKeywords(w, m);
            w.Open($"if ({ArgCode.Parse(m)})");
            w.Line($"wrpPy_dispatch_release(errors, {index});");
            ArgCode.EmitInvoke(w, m);
            w.Close();
            w.Line($"errors[{index}] = wrpPy_dispatch_take_error();");
            w.Close();
        }

        private static void EmitExportedCandidate(EmitContext ctx, CodeWriter w, MethodModel m)
        {
            string name = m.ExportedFunction!;
            string signature = $"PyObject* {name}(PyObject* self, PyObject* args, PyObject* kwargs, PyObject** error_value)";
            ctx.Declare(Section.Dispatchers, signature + ";");
            w.Line($"// {m.Owner.Name}.{m.Name}, overload {m.Number}, as a candidate of other types' dispatchers:");
            w.Line("// a parse failure is handed back in *error_value instead of being raised.");
            w.Open(signature);
            ArgCode.EmitLocals(w, m);
            ArgCode.EmitKeywords(w, m);
            w.Open($"if (!{ArgCode.Parse(m)})");
            w.Line("*error_value = wrpPy_dispatch_take_error();");
            w.Line("return nullptr;");
            w.Close();
            ArgCode.EmitInvoke(w, m);
            w.Close();
            w.Line();
        }
    }
}
