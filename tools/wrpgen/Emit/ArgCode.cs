using System;
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
                foreach (string line in CppTypes.Decl(m.Parameters[i].Type, $"a{i}").Split('\n'))
                    w.Line(line);
        }

        public static void EmitKeywords(CodeWriter w, MethodModel m, string name = "kw")
        {
            var items = m.Parameters.Select(p => CodeWriter.Quote(p.PyName)).Append("nullptr");
            w.Line($"static const char* {name}[] = {{{string.Join(", ", items)}}};");
        }

        /// <summary>The parse expression: true when every argument converted.</summary>
        public static string Parse(MethodModel m, string kw = "kw")
        {
            string format = string.Concat(Enumerable.Repeat("O&", m.Parameters.Count));
            var parts = new List<string> { "args", "kwargs", CodeWriter.Quote(format), $"const_cast<char**>({kw})" };
            for (int i = 0; i < m.Parameters.Count; i++)
            {
                parts.Add($"(wrp_o_conv)&{CppTypes.Converter(m.Parameters[i].Type)}");
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
                args.Add(CppTypes.CallArg(m.Parameters[i].Type, $"a{i}"));
            var byRefs = m.Parameters.Select((p, i) => (p, i)).Where(x => x.p.Type.Kind == BindKind.ByRef)
                          .Select(x => $"a{x.i}").ToList();
            if (m.IsCtor)
            {
                w.Line($"((PyClrObject*)self)->clr_handle = {m.Owner.Cpp.Host}::get_instance()->{m.EntryName}({string.Join(", ", args)});");
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
            ArgCode.EmitCallAndReturn(w, m.Result, $"{m.Owner.Cpp.Host}::get_instance()->{m.EntryName}(", args, byRefs);
        }

        /// <summary>Static methods refuse to run when the class (or what it depends on) could not bind.</summary>
        public static void EmitStaticStateCheck(CodeWriter w)
        {
            w.Line("const PyHostState& state = wrpPy_tybm_get_aggregate_host_state();");
            w.Line("if (state.not_valid)").Indent().Line("return fn_raise_host_state_error(state);").Outdent();
        }

        /// <summary>
        /// Calls an entry and returns its converted result from a function returning PyObject*.
        /// <paramref name="call"/> is the call up to its arguments, e.g. "host->call_000_Save(".
        /// <paramref name="byRefs"/> names the locals of by-reference parameters, whose out
        /// values are pushed into the caller's lists once the call succeeded.
        /// </summary>
        public static void EmitCallAndReturn(CodeWriter w, TypeRef result, string call, IReadOnlyList<string> args,
                                             IReadOnlyList<string>? byRefs = null)
        {
            byRefs ??= Array.Empty<string>();
            string Call(string? extra) => call + string.Join(", ", extra == null ? args : args.Append(extra)) + ")";
            void CheckError(string? release = null)
            {
                w.Open("if (PyErr_Occurred())");
                if (release != null)
                    w.Line(release);
                foreach (var b in byRefs)
                    w.Line($"Py_XDECREF({b}_out);");
                w.Line("return nullptr;");
                w.Close();
                // The out values go to the lists before the result is built, so that
                // a failure there cannot leave a converted result behind.
                foreach (var b in byRefs)
                {
                    w.Open($"if (fn_push_parbyref_outvalue({b}.list, {b}_out) < 0)");
                    foreach (var other in byRefs.SkipWhile(o => o != b).Skip(1))
                        w.Line($"Py_XDECREF({other}_out);");
                    if (release != null)
                        w.Line(release);
                    w.Line("return nullptr;");
                    w.Close();
                }
            }
            switch (Kinds.Shape(result))
            {
                case ResultShape.Void:
                    w.Line(Call(null) + ";");
                    CheckError();
                    w.Line("Py_RETURN_NONE;");
                    break;
                case ResultShape.Scalar:
                    w.Line($"const {CppTypes.ReturnType(result)} result = {Call(null)};");
                    CheckError();
                    w.Line($"return {CppTypes.ScalarToPy(result, "result")};");
                    break;
                case ResultShape.PyObjectOut:
                    w.Line("PyObject* result = nullptr;");
                    w.Line(Call("&result") + ";");
                    if (byRefs.Count > 0)
                        CheckError("Py_XDECREF(result);");
                    w.Line("return fn_take_py_string_result(result);");
                    break;
                case ResultShape.Handle:
                    w.Line($"void* result = {Call(null)};");
                    CheckError();
                    w.Line($"return {CppTypes.ObjectToPy(result, "result")};");
                    break;
                case ResultShape.ObjectOut:
                    w.Line("PyObjectOutArg result = {nullptr, 0};");
                    w.Line(Call("&result") + ";");
                    CheckError(byRefs.Count > 0 ? "if (result.handle) ExchangeHost::get_instance()->free_instance(result.handle);" : null);
                    w.Line($"return {CppTypes.ObjectToPy(result, "result")};");
                    break;
                case ResultShape.ValueOut:
                    w.Line($"{CppTypes.Storage(result)} result{CppTypes.StorageInit(result)};");
                    w.Line(Call("&result") + ";");
                    CheckError();
                    w.Line($"return {CppTypes.ValueToPy(result, "result")};");
                    break;
                case ResultShape.CollectionOut:
                    w.Line("PyCollectionArg result = {0, nullptr, 0};");
                    w.Line(Call("&result") + ";");
                    CheckError(byRefs.Count > 0 ? "if (result.value && result.kind == 0) ExchangeHost::get_instance()->free_instance(result.value);" : null);
                    w.Line($"return {CppTypes.CollectionToPy(result, "result")};");
                    break;
            }
        }
    }
}
