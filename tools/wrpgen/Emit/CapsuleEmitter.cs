using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// Conversion capsules between sibling modules of the family: the importing
    /// side fills two converter slots per sibling type from the capsule
    /// "&lt;module&gt;._C_APIT_&lt;Type&gt;"; the exporting side publishes one capsule
    /// per public non-enum type in the module that holds the type.
    /// </summary>
    internal static class CapsuleEmitter
    {
        public static void Run(EmitContext ctx)
        {
            if (ctx.Model.SiblingTypes.Count > 0)
                EmitImport(ctx);
            if (ctx.Model.ExportCapsules)
                EmitExport(ctx);
        }

        private static void EmitImport(EmitContext ctx)
        {
            var unit = ctx.Unit(ctx.Model.Units.CapsuleImport, "Converters imported from sibling modules");
            var w = unit.Public[Section.Capsules];
            foreach (var s in ctx.Model.SiblingTypes)
            {
                string pyName = s.PythonModule + "." + s.Name;
                ctx.Declare(Section.Capsules, $"extern int (*{s.PyToClrSlot})(PyObject*, void**);");
                ctx.Declare(Section.Capsules, $"extern PyObject* (*{s.ClrToPySlot})(const PyObjectOutArg&);");
                ctx.Declare(Section.Capsules, $"int {s.PyToClrTrampoline}(PyObject* obj, void** out);");
                ctx.Declare(Section.Capsules, $"PyObject* {s.ClrToPyTrampoline}(const PyObjectOutArg& arg);");
                w.Line($"int (*{s.PyToClrSlot})(PyObject*, void**) = nullptr;");
                w.Line($"PyObject* (*{s.ClrToPySlot})(const PyObjectOutArg&) = nullptr;");
                w.Line();
                w.Open($"int {s.PyToClrTrampoline}(PyObject* obj, void** out)");
                w.Open($"if (!{s.PyToClrSlot})");
                w.Line($"PyErr_SetString(PyExc_ImportError, \"the converter of '{pyName}' was not imported\");");
                w.Line("return 0;");
                w.Close();
                w.Line($"return {s.PyToClrSlot}(obj, out);");
                w.Close();
                w.Line();
                w.Open($"PyObject* {s.ClrToPyTrampoline}(const PyObjectOutArg& arg)");
                w.Open($"if (!{s.ClrToPySlot})");
                w.Line("// Nobody else will own the handle: release it before failing.");
                w.Line("if (arg.handle)").Indent().Line("ExchangeHost::get_instance()->free_instance(arg.handle);").Outdent();
                w.Line($"PyErr_SetString(PyExc_ImportError, \"the converter of '{pyName}' was not imported\");");
                w.Line("return nullptr;");
                w.Close();
                w.Line($"return {s.ClrToPySlot}(arg);");
                w.Close();
                w.Line();
            }
            string fn = ctx.Model.CapsuleImport;
            ctx.Declare(Section.Capsules, $"int {fn}();");
            w.Open($"int {fn}()");
            foreach (var group in ctx.Model.SiblingTypes.GroupBy(s => s.RootModule))
            {
                w.Open("");
                w.Line($"PyObject* sibling = PyImport_ImportModule({CodeWriter.Quote(group.Key)});");
                w.Open("if (!sibling)");
                w.Line($"PyShlErr_ModuleImportError({CodeWriter.Quote(group.Key)}, -2);");
                w.Line("return -1;");
                w.Close();
                w.Line("static const struct { const char* name; void** py_to_clr; void** clr_to_py; } capsules[] = {");
                w.Indent();
                foreach (var s in group)
                    w.Line($"{{{CodeWriter.Quote(s.CapsuleName)}, reinterpret_cast<void**>(&{s.PyToClrSlot}), reinterpret_cast<void**>(&{s.ClrToPySlot})}},");
                w.Outdent().Line("};");
                w.Open("for (const auto& capsule : capsules)");
                w.Line("void** table = static_cast<void**>(PyCapsule_Import(capsule.name, 0));");
                w.Open("if (!table)");
                w.Line("Py_DECREF(sibling);");
                w.Line("PyShlErr_CapsuleImportError(capsule.name);");
                w.Line("return -1;");
                w.Close();
                w.Line("*capsule.py_to_clr = table[0];");
                w.Line("*capsule.clr_to_py = table[1];");
                w.Close();
                w.Line("Py_DECREF(sibling);");
                w.Close();
            }
            w.Line("return 0;");
            w.Close();
            w.Line();
        }

        private static void EmitExport(EmitContext ctx)
        {
            var unit = ctx.Unit(ctx.Model.Units.CapsuleExport, "Converter capsules this module exports");
            var w = unit.Public[Section.Capsules];
            var types = ctx.Model.ObjectTypes.ToList();
            string fn = ctx.Model.CapsuleExport;
            ctx.Declare(Section.Capsules, $"int {fn}(PyObject* root);");
            w.Open($"int {fn}(PyObject* root)");
            foreach (var t in types)
                w.Line($"static void* {t.Cpp.CapsuleTable}[2] = {{(void*)&{t.Cpp.PyToClr}, (void*)&{t.Cpp.ClrToPy}}};");
            w.Line("static const struct { const char* module; const char* attribute; const char* name; void* table; } capsules[] = {");
            w.Indent();
            foreach (var t in types)
                w.Line($"{{{CodeWriter.Quote(t.Module.PyName)}, {CodeWriter.Quote(t.Cpp.CapsuleAttribute)}, {CodeWriter.Quote(t.Cpp.CapsuleName)}, {t.Cpp.CapsuleTable}}},");
            w.Outdent().Line("};");
            w.Line($"const char* root_name = {CodeWriter.Quote(ctx.Model.PythonModule)};");
            w.Open("for (const auto& capsule : capsules)");
            w.Line("// The root is not in sys.modules yet while it is being imported; submodules are.");
            w.Line("PyObject* target = std::strcmp(capsule.module, root_name) == 0 ? root : PyDict_GetItemString(PyImport_GetModuleDict(), capsule.module);");
            w.Open("if (!target)");
            w.Line("PyShlErr_ModuleImportError(capsule.module, \"module not built\");");
            w.Line("return -1;");
            w.Close();
            w.Line("PyObject* object = PyCapsule_New(capsule.table, capsule.name, nullptr);");
            w.Line("if (!object)").Indent().Line("return -1;").Outdent();
            w.Open("if (PyModule_AddObject(target, capsule.attribute, object) < 0)");
            w.Line("Py_DECREF(object);");
            w.Line("return -1;");
            w.Close();
            w.Close();
            w.Line("return 0;");
            w.Close();
            w.Line();
        }
    }
}
