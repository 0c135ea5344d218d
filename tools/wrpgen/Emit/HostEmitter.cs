using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// Native hosts: one singleton per proxy class holding a function pointer per
    /// managed entry, bound in entry order on first use; the first failure stops
    /// the binding and is kept as the host's message.
    /// </summary>
    internal static class HostEmitter
    {
        public static void Run(EmitContext ctx)
        {
            foreach (var t in ctx.Model.Types)
                Emit(ctx.Unit(t).Host, t, ctx.Model.ProxyAssembly);
        }

        private static void Emit(CodeWriter w, BoundType t, string proxyAssembly)
        {
            string host = Symbols.Host(t);
            var entries = t.Entries;
            w.Line($"// Host of the managed proxy {t.ProxyFullName}.");
            w.Open($"class {host}");
            w.Outdent().Line("public:").Indent();
            w.Open($"static const {host}* get_instance()");
            w.Line($"static const {host} instance;");
            w.Line("return &instance;");
            w.Close();
            w.Line("bool is_not_valid() const { return m_not_valid; }");
            w.Line("const std::string& error_msg() const { return m_error; }");
            foreach (var e in entries)
            {
                var types = EntrySignature.CppParamTypes(e).ToList();
                string parms = string.Join(", ", types.Select((p, i) => $"{p} a{i}"));
                string args = string.Join(", ", types.Select((_, i) => $"a{i}"));
                if (e.Kind == EntryKind.AssignableTo)
                    w.Line($"bool is_assignable_to(void* a0) const {{ return m_{e.Name}(a0) != 0; }}");
                else if (EntrySignature.CppReturnType(e) == "void")
                    w.Line($"void {e.Name}({parms}) const {{ m_{e.Name}({args}); }}");
                else
                    w.Line($"{EntrySignature.CppReturnType(e)} {e.Name}({parms}) const {{ return m_{e.Name}({args}); }}");
            }
            w.Line();
            w.Outdent().Line("private:").Indent();
            w.Line($"static constexpr const char* kManagedType = {Symbols.Quote(t.ProxyFullName)};");
            w.Line($"static constexpr const char* kAssembly = {Symbols.Quote(proxyAssembly)};");
            w.Line($"{host}();");
            w.Line($"{host}(const {host}&) = delete;");
            w.Line($"{host}& operator=(const {host}&) = delete;");
            w.Line("bool m_not_valid = false;");
            w.Line("std::string m_error;");
            foreach (var e in entries)
                w.Line($"{EntrySignature.CppReturnType(e)} (*m_{e.Name})({string.Join(", ", EntrySignature.CppParamTypes(e))}) = nullptr;");
            w.Close(";");
            w.Line();
            w.Open($"{host}::{host}()");
            if (entries.Count == 0)
            {
                w.Close();
                w.Line();
                return;
            }
            w.Line("static const char* const names[] = {");
            w.Indent();
            foreach (var e in entries)
                w.Line(Symbols.Quote(e.Name) + ",");
            w.Outdent().Line("};");
            w.Line("void** const slots[] = {");
            w.Indent();
            foreach (var e in entries)
                w.Line($"reinterpret_cast<void**>(&m_{e.Name}),");
            w.Outdent().Line("};");
            w.Open("try");
            w.Line("// This module's own proxy assembly: the exchange host may have been initialised");
            w.Line("// by a sibling module of the family, whose proxies live in another assembly.");
            w.Line("const char* assembly = ExchangeHost::get_instance()->get_assembly_name() ? kAssembly : nullptr;");
            w.Line("const HostEnvironment& env = HostEnvironment::instance(nullptr, false, nullptr, nullptr, nullptr, nullptr);");
            w.Open("for (size_t i = 0; i < sizeof(slots) / sizeof(slots[0]); ++i)");
            w.Open("if (!fn_bind_host_method(env, assembly, kManagedType, names[i], slots[i], m_error))");
            w.Line("m_not_valid = true;");
            w.Line("return;");
            w.Close();
            w.Close();
            w.Close();
            w.Open("catch (...)");
            w.Line("// A host that never started binds nothing.");
            w.Line("m_error = HostNotReady;");
            w.Line("m_not_valid = true;");
            w.Close();
            w.Close();
            w.Line();
        }
    }
}
