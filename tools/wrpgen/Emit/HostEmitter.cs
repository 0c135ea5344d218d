using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// Native hosts: one singleton per proxy class holding a function pointer per
    /// managed entry, bound in entry order on first use; the first failure stops
    /// the binding and is kept as the host's message. Bound types get one host
    /// each (their planned entries); typed instantiations get one per generic
    /// host kind, whose entries fill the wrapper algorithms' table.
    /// </summary>
    internal static class HostEmitter
    {
        public static void Run(EmitContext ctx)
        {
            foreach (var t in ctx.Model.Types)
                EmitClassHost(ctx.Unit(t).Host[Section.Hosts], t, ctx.Model.ProxyAssembly);
            if (ctx.Model.Generics.Count == 0)
                return;
            var generic = ctx.Unit(ctx.Model.Units.Generic, "Typed collection wrappers").Host[Section.Hosts];
            foreach (var g in ctx.Model.Generics)
                foreach (var h in GenericHosts.Of(g))
                    EmitGenericHost(generic, g, h, ctx.Model.ProxyAssembly);
        }

        private static void EmitClassHost(CodeWriter w, BoundType t, string proxyAssembly)
        {
            string host = t.Cpp.Host;
            var entries = t.Entries;
            OpenClass(w, host, t.ProxyFullName);
            foreach (var e in entries)
            {
                var types = CppTypes.EntryParamTypes(e).ToList();
                string parms = string.Join(", ", types.Select((p, i) => $"{p} a{i}"));
                string args = string.Join(", ", types.Select((_, i) => $"a{i}"));
                string ret = CppTypes.EntryReturnType(e);
                if (e.Kind == EntryKind.AssignableTo)
                    w.Line($"bool is_assignable_to(void* a0) const {{ return m_{e.Name}(a0) != 0; }}");
                else if (ret == "void")
                    w.Line($"void {e.Name}({parms}) const {{ m_{e.Name}({args}); }}");
                else
                    w.Line($"{ret} {e.Name}({parms}) const {{ return m_{e.Name}({args}); }}");
            }
            w.Line();
            w.Outdent().Line("private:").Indent();
            w.Line($"static constexpr const char* kManagedType = {CodeWriter.Quote(t.ProxyFullName)};");
            w.Line($"static constexpr const char* kAssembly = {CodeWriter.Quote(proxyAssembly)};");
            PrivateState(w, host);
            foreach (var e in entries)
                w.Line($"{CppTypes.EntryReturnType(e)} (*m_{e.Name})({string.Join(", ", CppTypes.EntryParamTypes(e))}) = nullptr;");
            w.Close(";");
            w.Line();
            w.Open($"{host}::{host}()");
            if (entries.Count > 0)
                EmitBinder(w, entries.Select(e => (e.Name, $"m_{e.Name}")), "kAssembly", "kManagedType", explained: true);
            w.Close();
            w.Line();
        }

        private static void EmitGenericHost(CodeWriter w, GenericInstance g, GenericHost h, string proxyAssembly)
        {
            string name = h.Names.Native;
            string managed = h.Names.Managed;
            OpenClass(w, name, managed);
            w.Line("// The bound entries, as the wrapper algorithms call them.");
            w.Line("const PyGnEntries& entries() const { return m_entries; }");
            w.Line();
            w.Outdent().Line("private:").Indent();
            PrivateState(w, name);
            w.Line("PyGnEntries m_entries;");
            w.Close(";");
            w.Line();
            w.Open($"{name}::{name}()");
            EmitBinder(w, h.Entries.Select(e => (e.Name, $"m_entries.{e.Field}")),
                       CodeWriter.Quote(proxyAssembly), CodeWriter.Quote(managed), explained: false);
            w.Close();
            w.Line();
        }

        /// <summary>The class head up to its public members: the singleton and its state.</summary>
        private static void OpenClass(CodeWriter w, string name, string managed)
        {
            w.Line($"// Host of the managed proxy {managed}.");
            w.Open($"class {name}");
            w.Outdent().Line("public:").Indent();
            w.Open($"static const {name}* get_instance()");
            w.Line($"static const {name} instance;");
            w.Line("return &instance;");
            w.Close();
            w.Line("bool is_not_valid() const { return m_not_valid; }");
            w.Line("const std::string& error_msg() const { return m_error; }");
        }

        private static void PrivateState(CodeWriter w, string name)
        {
            w.Line($"{name}();");
            w.Line($"{name}(const {name}&) = delete;");
            w.Line($"{name}& operator=(const {name}&) = delete;");
            w.Line("bool m_not_valid = false;");
            w.Line("std::string m_error;");
        }

        /// <summary>The constructor body: binds every entry by name into its slot, in order.</summary>
        private static void EmitBinder(CodeWriter w, IEnumerable<(string Name, string Slot)> entries,
                                       string assembly, string managedType, bool explained)
        {
            var list = entries.ToList();
            w.Line("static const char* const names[] = {");
            w.Indent();
            foreach (var e in list)
                w.Line(CodeWriter.Quote(e.Name) + ",");
            w.Outdent().Line("};");
            w.Line("void** const slots[] = {");
            w.Indent();
            foreach (var e in list)
                w.Line($"reinterpret_cast<void**>(&{e.Slot}),");
            w.Outdent().Line("};");
            w.Open("try");
            if (explained)
            {
                w.Line("// This module's own proxy assembly: the exchange host may have been initialised");
                w.Line("// by a sibling module of the family, whose proxies live in another assembly.");
            }
            w.Line($"const char* assembly = ExchangeHost::get_instance()->get_assembly_name() ? {assembly} : nullptr;");
            w.Line("const HostEnvironment& env = HostEnvironment::instance(nullptr, false, nullptr, nullptr, nullptr, nullptr);");
            w.Open("for (size_t i = 0; i < sizeof(slots) / sizeof(slots[0]); ++i)");
            w.Open($"if (!fn_bind_host_method(env, assembly, {managedType}, names[i], slots[i], m_error))");
            w.Line("m_not_valid = true;");
            w.Line("return;");
            w.Close();
            w.Close();
            w.Close();
            w.Open("catch (...)");
            if (explained)
                w.Line("// A host that never started binds nothing.");
            w.Line("m_error = HostNotReady;");
            w.Line("m_not_valid = true;");
            w.Close();
        }
    }
}
