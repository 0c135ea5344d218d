using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Passes
{
    /// <summary>
    /// The C++ names of the generated code: every function, table and type
    /// object the emitters define or refer to is named here once, from the
    /// identifiers the naming pass gave types and modules. Runs after the
    /// sharing pass, since a method's function depends on who provides it.
    /// </summary>
    internal static class SymbolNaming
    {
        public static void Run(BindingModel model)
        {
            foreach (var s in model.SiblingTypes)
            {
                string tag = s.Id + "_" + s.Name;
                s.CapsuleName = s.PythonModule + "._C_APIT_" + s.Name;
                s.PyToClrSlot = "wrpPyl_convcaps_py_to_clr_" + tag;
                s.ClrToPySlot = "wrpPyl_convcaps_clr_to_py_" + tag;
                s.PyToClrTrampoline = "wrpPyl_conv_py_to_clr_" + tag;
                s.ClrToPyTrampoline = "wrpPyl_conv_clr_to_py_" + tag;
            }
            static UnitName Unit(string key) => new(key, $"units/{key}.inc", "wrpu_" + key);
            model.Units = new ModuleUnits
            {
                Common = Unit("common"),
                Generic = Unit("generic"),
                Modules = Unit("modules"),
                CapsuleImport = Unit("capsule_import"),
                CapsuleExport = Unit("capsule_export"),
            };
            foreach (var m in model.Modules)
            {
                m.Cpp = new ModuleSymbols
                {
                    MethodTable = "wrpPy_mlmd_" + m.Tag,
                    Definition = new CppSymbol("wrpPy_mlds_" + m.Tag, model.Units.Modules.Namespace),
                    Builder = "wrpPy_mlit_" + m.Tag,
                    StaticsInitialiser = "wrpPy_imtf_" + m.Tag,
                };
            }
            model.CapsuleImport = "wrpPyl_ciap_" + model.Root.Tag;
            model.CapsuleExport = "wrpPy_cexp_" + model.Root.Tag;
            foreach (var t in model.Types)
                t.Cpp = Name(t);
            foreach (var t in model.ObjectTypes)
                NameMembers(t);
            model.GenericNames = new GenericModuleNames
            {
                ReadyTypes = "wrpPygn_tyrd_FFFFFFFF_generic_types",
                ManagedNamespace = "Orvane.WrpGen.Generic",
            };
            foreach (var g in model.Generics)
                NameInstance(g, model.GenericNames.ManagedNamespace);
        }

        /// <summary>Everything of one instantiation carries its identifier.</summary>
        private static void NameInstance(GenericInstance g, string managedNamespace)
        {
            string id = g.Id;
            GenericWrapperNames Wrapper(GenericWrapper kind, string pyName, string? converted)
            {
                string infix = "_" + pyName;
                return new GenericWrapperNames(kind, $"{infix}_{id}", $"wrpPygn_tyds_{id}{infix}", $"wrpPygn_bind_{id}{infix}",
                    converted == null ? null : $"wrpPygn_conv_py_to_clr_{converted}_{id}");
            }
            g.Wrappers.Clear();
            if (g.HasList) g.Wrappers.Add(Wrapper(GenericWrapper.List, "IListWrapper", "list"));
            if (g.HasArray) g.Wrappers.Add(Wrapper(GenericWrapper.Array, "ArrayWrapper", "array"));
            g.Wrappers.Add(Wrapper(GenericWrapper.Iterable, "IterableWrapper", "iterable"));
            g.Wrappers.Add(Wrapper(GenericWrapper.Iter, "IterWrapper", null));

            var proxies = new (string Kind, string Proxy)[]
            {
                ("ICol", "SiApiCntCollection"), ("IList", "SiApiCntList"), ("Array", "SiApiArray"),
                ("Iterable", "SiApiEnumerable"), ("Iter", "SiApiEnumerator"),
            };
            g.Hosts.Clear();
            foreach (var (kind, proxy) in proxies.Where(p => (g.HasList || p.Kind is not ("ICol" or "IList")) && (g.HasArray || p.Kind != "Array")))
                g.Hosts.Add(kind, new GenericHostNames($"PyHost_gn_{kind}_{id}", $"{proxy}_{id}", managedNamespace));

            g.ElementToPy = "wrpPygn_elem_to_py_" + id;
            g.ElementToClr = "wrpPygn_elem_to_clr_" + id;
            g.ElementTable = "wrpPygn_elem_" + id;
            g.TpIter = "wrpPygn_tp_iter_" + id;
            g.ElementClass = "Element_" + id;
            g.ElementClassFullName = $"global::{managedNamespace}.{g.ElementClass}";
            g.ProxyFile = $"{managedNamespace}.{id}.cs";
            g.ListCallbacks = new CallbackNames($"fn_clbk_pylist_{id}_get_item", $"m_pygn_pylist_{id}_callbacks");
            g.SeqCallbacks = new CallbackNames($"fn_clbk_pyseq_{id}_get_item", $"m_pygn_pyseq_{id}_callbacks");
            g.IterCallbacks = new CallbackNames($"fn_clbk_pyiter_{id}_iter_next", $"m_pygn_pyiter_{id}_callbacks");
        }

        private static TypeSymbols Name(BoundType t) => new()
        {
            UnitFile = $"units/{t.Tag}.inc",
            UnitNamespace = "wrpu_" + t.Tag,
            Host = "PyHost_cs_" + t.Tag,
            TypeObject = "wrpPy_tyds_" + t.Tag,
            IsNotValid = "wrpPy_is_not_valid_" + t.Tag,
            PyToClr = "wrpPy_conv_py_to_clr_" + t.Tag,
            ClrToPy = "wrpPy_conv_clr_to_py_" + t.Tag,
            Initialiser = "wrpPy_eypi_" + t.Tag,
            MethodTable = "wrpPy_tymd_" + t.Name,
            GetSetTable = "wrpPy_typd_" + t.Name,
            SequenceTable = "wrpPy_tysd_" + t.Name,
            MappingTable = "wrpPy_tygd_" + t.Name,
            SharedItem = $"wrpPy_blts_{t.Tag}_sq_item",
            SharedSubscript = $"wrpPy_blts_{t.Tag}_mp_subscript_sizable",
            CapsuleTable = "table_" + t.Tag,
            CapsuleAttribute = "_C_APIT_" + t.Name,
            CapsuleName = t.Module.PyName + "._C_APIT_" + t.Name,
        };

        /// <summary>
        /// A type's member functions: exported under global names when the type
        /// shares them (interface instance members), private to its unit otherwise.
        /// </summary>
        private static void NameMembers(BoundType t)
        {
            string unit = t.Cpp.UnitNamespace;
            CppSymbol Local(string name) => new(name, unit);

            foreach (var p in t.Properties.Where(p => p.IsBound))
            {
                CppSymbol Accessor(string acc) => t.SharesMembers
                    ? new CppSymbol($"wrpPy_phfn_{t.Tag}_000_{acc}_{p.PyName}")
                    : Local($"wrpPy_pafn_000_{acc}_{p.PyName}");
                p.Getter = p.CanRead ? Accessor("get") : null;
                p.Setter = p.CanWrite ? Accessor("set") : null;
            }
            foreach (var slot in t.PyMethods)
            {
                var provider = slot.Provider;
                if (provider.SharesMembers && !slot.IsStatic)
                    slot.Function = new CppSymbol(
                        (slot.IsDispatcher ? "wrpPy_hgfn_" : "wrpPy_htfn_") + $"{provider.Tag}_000_{slot.PyName}");
                else
                    slot.Function = new CppSymbol(
                        (slot.IsDispatcher ? "wrpPy_mgfn_000_" : "wrpPy_mtfn_000_") + slot.PyName, provider.Cpp.UnitNamespace);
            }
            foreach (var m in t.ExportedCandidates)
                m.ExportedFunction = $"wrpPy_htgn_{m.Owner.Tag}_{m.GroupIndex:D3}_{m.PyName}";
            foreach (var s in t.BoundStaticMembers)
                s.Getter = Local("wrpPy_sfgt_000_" + s.Name);
        }
    }
}
