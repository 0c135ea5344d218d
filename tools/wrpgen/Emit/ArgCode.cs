using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// The pieces every generated caller of an entry is made of: argument locals
    /// in their empty state, the keyword list, the parse call (one "O&amp;" per
    /// parameter) and the call of the entry with the conversion of its result.
    /// </summary>
    internal static class ArgCode
    {
        public static void EmitLocals(CodeWriter w, MethodModel m)
        {
            for (int i = 0; i < m.Parameters.Count; i++)
                foreach (string line in Kinds.CppDecl(m.Parameters[i].Type, $"a{i}").Split('\n'))
                    w.Line(line);
        }

        public static void EmitKeywords(CodeWriter w, MethodModel m, string name = "kw")
        {
            var items = m.Parameters.Select(p => Symbols.Quote(p.PyName)).Append("nullptr");
            w.Line($"static const char* {name}[] = {{{string.Join(", ", items)}}};");
        }

        /// <summary>The parse expression: true when every argument converted.</summary>
        public static string Parse(MethodModel m, string kw = "kw")
        {
            string format = string.Concat(Enumerable.Repeat("O&", m.Parameters.Count));
            var parts = new List<string> { "args", "kwargs", Symbols.Quote(format), $"const_cast<char**>({kw})" };
            for (int i = 0; i < m.Parameters.Count; i++)
            {
                parts.Add($"(wrp_o_conv)&{Kinds.CppConverter(m.Parameters[i].Type)}");
                parts.Add($"&a{i}");
            }
            return $"PyArg_ParseTupleAndKeywords({string.Join(", ", parts)})";
        }

        /// <summary>Calls the overload's entry on its owner's host and returns the converted result.</summary>
        public static void EmitInvoke(CodeWriter w, MethodModel m)
        {
            var args = new List<string>();
            if (!m.IsStatic && !m.IsCtor)
                args.Add("fn_clr_handle(self)");
            for (int i = 0; i < m.Parameters.Count; i++)
                args.Add(Kinds.CppCallArg(m.Parameters[i].Type, $"a{i}"));
            var byRefs = m.Parameters.Select((p, i) => (p, i)).Where(x => x.p.Type.Kind == BindKind.ByRef)
                          .Select(x => $"a{x.i}").ToList();
            if (m.IsCtor)
            {
                w.Line($"((PyClrObject*)self)->clr_handle = {Symbols.Host(m.Owner)}::get_instance()->{m.EntryName}({string.Join(", ", args)});");
                if (byRefs.Count == 0)
                {
                    w.Line("return PyErr_Occurred() ? -1 : 0;");
                    return;
                }
                w.Open("if (PyErr_Occurred())");
                foreach (var b in byRefs)
                    w.Line($"Py_XDECREF({b}_out);");
                w.Line("return -1;");
                w.Close();
                w.Line("int status = 0;");
                foreach (var b in byRefs)
                    w.Line($"if (fn_push_parbyref_outvalue({b}.list, {b}_out) < 0)").Indent().Line("status = -1;").Outdent();
                w.Line("return status;");
                return;
            }
            Kinds.EmitCallAndReturn(w, m.Result, $"{Symbols.Host(m.Owner)}::get_instance()->{m.EntryName}(", args, byRefs);
        }

        /// <summary>Static methods refuse to run when the class (or what it depends on) could not bind.</summary>
        public static void EmitStaticStateCheck(CodeWriter w)
        {
            w.Line("const PyHostState& state = wrpPy_tybm_get_aggregate_host_state();");
            w.Line("if (state.not_valid)").Indent().Line("return fn_raise_host_state_error(state);").Outdent();
        }
    }
}
