using System;
using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Passes
{
    /// <summary>
    /// Plans the managed entries of every proxy class, in binding order: the
    /// native host binds them by name in this order and the proxy defines them,
    /// so both read the plan stored on the type.
    /// </summary>
    internal static class EntryPlan
    {
        private static readonly TypeRef VoidRef = new(BindKind.Void, typeof(void));

        public static void Run(BindingModel model)
        {
            foreach (var t in model.Types)
            {
                t.Entries.Clear();
                t.Entries.AddRange(Of(t));
            }
        }

        private static IEnumerable<Entry> Of(BoundType t)
        {
            if (t.IsEnum)
            {
                var value = new TypeRef(EnumValueKind(t.EnumUnderlying), typeof(int));
                foreach (var m in t.BoundEnumMembers)
                    yield return new Entry("get_" + m.Name, EntryKind.EnumGetter, false, Array.Empty<TypeRef>(), value) { EnumMember = m };
                yield break;
            }
            foreach (var c in t.BoundConstructors)
                yield return new Entry(c.EntryName, EntryKind.Ctor, false, c.Parameters.Select(p => p.Type).ToList(), VoidRef) { Method = c };
            foreach (var m in t.Methods.Where(m => m.IsBound))
                yield return new Entry(m.EntryName, EntryKind.Method, !m.IsStatic, m.Parameters.Select(p => p.Type).ToList(), m.Result) { Method = m };
            foreach (var p in t.Properties.Where(p => p.IsBound))
            {
                if (p.CanRead)
                    yield return new Entry("get_" + p.Name, EntryKind.Getter, true, Array.Empty<TypeRef>(), p.Type) { Property = p };
                if (p.CanWrite)
                    yield return new Entry("set_" + p.Name, EntryKind.Setter, true, new[] { p.Type }, VoidRef) { Property = p };
            }
            if (t.Indexer != null)
                foreach (var e in ElementEntries(t.Indexer))
                    yield return e;
            foreach (var s in t.BoundStaticMembers)
                yield return new Entry("get_" + s.Name, EntryKind.StaticGetter, false, Array.Empty<TypeRef>(), s.Type) { Static = s };
            yield return new Entry("btp_IsAssignableTo", EntryKind.AssignableTo, false,
                                   new[] { new TypeRef(BindKind.Object, t.Clr) { Bound = t } }, VoidRef);
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
}
