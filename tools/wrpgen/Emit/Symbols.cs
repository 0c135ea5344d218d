using System;
using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>Names of the generated functions that several emitters refer to.</summary>
    internal static class Symbols
    {
        public static string Host(BoundType t) => "PyHost_cs_" + t.Tag;
        public static string TypeObject(BoundType t) => "wrpPy_tyds_" + t.Tag;
        public static string UnitNamespace(BoundType t) => "wrpu_" + t.Tag;
        public static string IsNotValid(BoundType t) => "wrpPy_is_not_valid_" + t.Tag;
        public static string PyToClr(BoundType t) => "wrpPy_conv_py_to_clr_" + t.Tag;
        public static string ClrToPy(BoundType t) => "wrpPy_conv_clr_to_py_" + t.Tag;
        public static string Eypi(BoundType t) => "wrpPy_eypi_" + t.Tag;
        public static string ModuleInit(ModuleNode m) => "wrpPy_mlit_" + m.Tag;
        public static string ModuleStatics(ModuleNode m) => "wrpPy_imtf_" + m.Tag;
        public static string CapsuleImport(ModuleNode root) => "wrpPyl_ciap_" + root.Tag;
        public static string CapsuleExport(ModuleNode root) => "wrpPy_cexp_" + root.Tag;

        /// <summary>Interfaces share their member functions with every implementing type.</summary>
        public static bool IsShared(BoundType provider) => provider.IsInterface;

        /// <summary>The function behind a property accessor, qualified so any unit can name it.</summary>
        public static string PropertyFn(BoundType provider, string pyName, bool setter)
        {
            string acc = (setter ? "set_" : "get_") + pyName;
            return IsShared(provider)
                ? $"wrpPy_phfn_{provider.Tag}_000_{acc}"
                : $"{UnitNamespace(provider)}::wrpPy_pafn_000_{acc}";
        }

        /// <summary>The function behind a Python method of <paramref name="slot"/>'s provider.</summary>
        public static string MethodFn(PyMethodSlot slot)
        {
            var p = slot.Provider;
            if (IsShared(p) && !slot.IsStatic)
                return slot.IsDispatcher ? $"wrpPy_hgfn_{p.Tag}_000_{slot.PyName}" : $"wrpPy_htfn_{p.Tag}_000_{slot.PyName}";
            return $"{UnitNamespace(p)}::" + (slot.IsDispatcher ? $"wrpPy_mgfn_000_{slot.PyName}" : $"wrpPy_mtfn_000_{slot.PyName}");
        }

        /// <summary>The exported candidate function through which other types' dispatchers call an overload.</summary>
        public static string Htgn(MethodModel m) => $"wrpPy_htgn_{m.Owner.Tag}_{m.GroupIndex:D3}_{m.PyName}";

        /// <summary>Strips the unit namespace for use inside the unit itself.</summary>
        public static string Local(string qualified)
        {
            int i = qualified.LastIndexOf("::", StringComparison.Ordinal);
            return i < 0 ? qualified : qualified.Substring(i + 2);
        }

        /// <summary>A C/C++ string literal.</summary>
        public static string Quote(string s) => "\"" + s.Replace("\\", "\\\\").Replace("\"", "\\\"") + "\"";
    }
}
