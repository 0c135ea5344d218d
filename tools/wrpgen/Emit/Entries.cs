using System;
using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    internal enum EntryKind
    {
        Ctor, Method, Getter, Setter, StaticGetter, EnumGetter, AssignableTo,
        /// <summary>The element entries of a collection type (its Count and int indexer).</summary>
        CollLength, CollItem, CollItemNoCheck, CollContains, CollSetItem, CollSetItemNoCheck, CollSetSlice,
    }

    /// <summary>One managed entry of a proxy class, as both the native host and the C# proxy see it.</summary>
    internal sealed class Entry
    {
        public Entry(string name, EntryKind kind, bool hasSelf, IReadOnlyList<TypeRef> parameters, TypeRef result)
        { Name = name; Kind = kind; HasSelf = hasSelf; Parameters = parameters; Result = result; }
        public string Name { get; }
        public EntryKind Kind { get; }
        public bool HasSelf { get; }
        public IReadOnlyList<TypeRef> Parameters { get; }
        /// <summary>The result; a constructor's is its own object type (returned as a handle).</summary>
        public TypeRef Result { get; }
        public MethodModel? Method { get; init; }
        public PropertyModel? Property { get; init; }
        public StaticMemberModel? Static { get; init; }
        public EnumMemberModel? EnumMember { get; init; }
        /// <summary>Fixed native signature of an element entry (parameters after the handle).</summary>
        public IReadOnlyList<string>? NativeParams { get; init; }
        public string? NativeReturn { get; init; }

        public string CppReturnType => NativeReturn ?? Kind switch
        {
            EntryKind.Ctor => "void*",
            EntryKind.AssignableTo => "uint8_t",
            _ => Kinds.CppReturnType(Result),
        };

        /// <summary>Native parameter types, the handle of the instance first and the result record last.</summary>
        public IEnumerable<string> CppParamTypes()
        {
            if (HasSelf) yield return "void*";
            if (NativeParams != null)
            {
                foreach (var p in NativeParams)
                    yield return p;
                yield break;
            }
            foreach (var p in Parameters)
                foreach (var native in Kinds.CppParamTypes(p))
                    yield return native;
            if (Kind != EntryKind.Ctor && Kind != EntryKind.AssignableTo && Kinds.CppResultParam(Result) is { } extra)
                yield return extra;
        }
    }

    internal static class Entries
    {
        private static readonly TypeRef VoidRef = new(BindKind.Void, typeof(void));

        /// <summary>Every entry the proxy class of <paramref name="t"/> exports, in binding order.</summary>
        public static List<Entry> Of(BoundType t)
        {
            var list = new List<Entry>();
            if (t.IsEnum)
            {
                var value = new TypeRef(EnumValueKind(t.EnumUnderlying), typeof(int));
                foreach (var m in t.EnumMembers)
                    list.Add(new Entry("get_" + m.Name, EntryKind.EnumGetter, false, Array.Empty<TypeRef>(), value) { EnumMember = m });
                return list;
            }
            foreach (var c in t.BoundConstructors)
                list.Add(new Entry(c.EntryName, EntryKind.Ctor, false, c.Parameters.Select(p => p.Type).ToList(), VoidRef) { Method = c });
            foreach (var m in t.Methods.Where(m => m.IsBound))
                list.Add(new Entry(m.EntryName, EntryKind.Method, !m.IsStatic, m.Parameters.Select(p => p.Type).ToList(), m.Result) { Method = m });
            foreach (var p in t.Properties.Where(p => p.IsBound))
            {
                if (p.CanRead)
                    list.Add(new Entry("get_" + p.Name, EntryKind.Getter, true, Array.Empty<TypeRef>(), p.Type) { Property = p });
                if (p.CanWrite)
                    list.Add(new Entry("set_" + p.Name, EntryKind.Setter, true, new[] { p.Type }, VoidRef) { Property = p });
            }
            if (t.Indexer != null)
                list.AddRange(ElementEntries(t.Indexer));
            foreach (var s in t.BoundStaticMembers)
                list.Add(new Entry("get_" + s.Name, EntryKind.StaticGetter, false, Array.Empty<TypeRef>(), s.Type) { Static = s });
            list.Add(new Entry("btp_IsAssignableTo", EntryKind.AssignableTo, false, new[] { new TypeRef(BindKind.Object, t.Clr) { Bound = t } }, VoidRef));
            return list;
        }

        /// <summary>
        /// The element entries of a collection type, in binding order. Status
        /// results: 0 ok, 2 index out of range, anything else a failure with a
        /// Python error pending.
        /// </summary>
        private static IEnumerable<Entry> ElementEntries(IndexerModel ix)
        {
            Entry E(string name, EntryKind kind, string ret, params string[] ps) =>
                new(name, kind, true, Array.Empty<TypeRef>(), ix.Element) { NativeParams = ps, NativeReturn = ret };
            yield return E("sq_length", EntryKind.CollLength, "int32_t");
            yield return E("sq_item", EntryKind.CollItem, "int32_t", "int32_t", "PyObjectOutArg*");
            yield return E("sq_item_nocheck", EntryKind.CollItemNoCheck, "int32_t", "int32_t", "PyObjectOutArg*");
            yield return E("sq_contains", EntryKind.CollContains, "int32_t", "void*");
            if (!ix.CanWrite)
                yield break;
            yield return E("sq_ssitem", EntryKind.CollSetItem, "int32_t", "int32_t", "void*");
            yield return E("sq_ssitem_nocheck", EntryKind.CollSetItemNoCheck, "void", "int32_t", "void*");
            yield return E("mp_ssubscript_sizable", EntryKind.CollSetSlice, "void", "void*", "int32_t", "int32_t", "int32_t", "int32_t");
        }

        /// <summary>Enum values travel as int32, widened to int64 (uint64) where the underlying type needs it.</summary>
        public static BindKind EnumValueKind(BindKind underlying) => underlying switch
        {
            BindKind.UInt32 or BindKind.Int64 => BindKind.Int64,
            BindKind.UInt64 => BindKind.UInt64,
            _ => BindKind.Int32,
        };
    }

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
