using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// Sequence and mapping slots of collection types (an int indexer beside a
    /// Count): len(), indexing with negative indices and slices, in,
    /// concatenation, repetition and, for writable indexers, item and slice
    /// assignment. The algorithms are the runtime's (interop/generated_slots.h);
    /// each type hands them its element entries and its element converters.
    /// A type implementing a collection interface of the same element type
    /// reads elements through the interface's exported wrpPy_blts_ functions.
    /// </summary>
    internal static class CollectionSlotEmitter
    {
        public static void Run(EmitContext ctx)
        {
            var collections = ctx.Model.ObjectTypes.Where(t => t.Indexer != null).ToList();
            var providers = collections.Select(SharedFrom).Where(p => p != null).Select(p => p!).ToHashSet();
            foreach (var t in collections)
            {
                var unit = ctx.Unit(t);
                Emit(unit.Private[Section.CollectionSlots], t, SharedFrom(t));
                if (providers.Contains(t))
                    EmitShared(ctx, unit.Public[Section.CollectionSlots], t);
            }
        }

        /// <summary>
        /// The collection interface whose element slots a type reuses: the first
        /// bound interface with an indexer of the same element type. Its handle
        /// entries accept the type's objects, so one function serves both tables.
        /// </summary>
        public static BoundType? SharedFrom(BoundType t) =>
            t.Interfaces.FirstOrDefault(i => i != t && i.Indexer != null && i.Indexer.Element.Clr == t.Indexer!.Element.Clr);

        private static void EmitShared(EmitContext ctx, CodeWriter w, BoundType t)
        {
            string slots = $"{t.Cpp.UnitNamespace}::wrpPy_blsd";
            ctx.Declare(Section.CollectionSlots, $"PyObject* {t.Cpp.SharedItem}(PyObject* self, Py_ssize_t i);");
            ctx.Declare(Section.CollectionSlots, $"PyObject* {t.Cpp.SharedSubscript}(PyObject* self, PyObject* key);");
            w.Line("// The element reads of this collection interface, shared with the types implementing it.");
            w.Line($"PyObject* {t.Cpp.SharedItem}(PyObject* self, Py_ssize_t i) {{ return wrpPye_bltp_coll_sq_item(self, i, &{slots}); }}");
            w.Line($"PyObject* {t.Cpp.SharedSubscript}(PyObject* self, PyObject* key)");
            w.Line($"{{ return wrpPye_bltp_coll_mp_subscript(self, key, &{slots}); }}");
            w.Line();
        }

        private static string ElementToPy(TypeRef e) => e.Kind == BindKind.Object
            ? e.Bound!.Cpp.ClrToPy
            : e.Sibling!.ClrToPyTrampoline;

        private static void Emit(CodeWriter w, BoundType t, BoundType? shared)
        {
            var ix = t.Indexer!;
            string host = $"{t.Cpp.Host}::get_instance()";
            bool write = ix.CanWrite;
            w.Line("// Element entries of the collection, as the shared slot algorithms call them.");
            w.Line($"static int32_t wrpPy_blen_length(void* h) {{ return {host}->sq_length(h); }}");
            w.Line($"static int32_t wrpPy_blen_item(void* h, int32_t i, PyObjectOutArg* out) {{ return {host}->sq_item(h, i, out); }}");
            w.Line($"static int32_t wrpPy_blen_item_nocheck(void* h, int32_t i, PyObjectOutArg* out) {{ return {host}->sq_item_nocheck(h, i, out); }}");
            w.Line($"static int32_t wrpPy_blen_contains(void* h, void* e) {{ return {host}->sq_contains(h, e); }}");
            if (write)
            {
                w.Line($"static int32_t wrpPy_blen_ssitem(void* h, int32_t i, void* e) {{ return {host}->sq_ssitem(h, i, e); }}");
                w.Line($"static void wrpPy_blen_ssitem_nocheck(void* h, int32_t i, void* e) {{ {host}->sq_ssitem_nocheck(h, i, e); }}");
                w.Line("static void wrpPy_blen_ssubscript(void* h, void* source, int32_t start, int32_t n, int32_t step, int32_t size)");
                w.Line($"{{ {host}->mp_ssubscript_sizable(h, source, start, n, step, size); }}");
            }
            w.Line();
            w.Line("static const PyShlCollectionSlots wrpPy_blsd = {");
            w.Indent();
            w.Line("wrpPy_blen_length,");
            w.Line("wrpPy_blen_item,");
            w.Line("wrpPy_blen_item_nocheck,");
            w.Line("wrpPy_blen_contains,");
            w.Line(write ? "wrpPy_blen_ssitem," : "nullptr,");
            w.Line(write ? "wrpPy_blen_ssitem_nocheck," : "nullptr,");
            w.Line(write ? "wrpPy_blen_ssubscript," : "nullptr,");
            w.Line($"{ElementToPy(ix.Element)},");
            w.Line($"{CppTypes.Converter(ix.Element)},");
            w.Outdent().Line("};");
            w.Line();
            w.Line("static Py_ssize_t wrpPy_bltp_sq_length(PyObject* self) { return wrpPye_bltp_coll_sq_length(self, &wrpPy_blsd); }");
            string item = "wrpPy_bltp_sq_item", subscript = "wrpPy_bltp_mp_subscript_sizable";
            if (shared == null)
            {
                w.Line("static PyObject* wrpPy_bltp_sq_item(PyObject* self, Py_ssize_t i) { return wrpPye_bltp_coll_sq_item(self, i, &wrpPy_blsd); }");
                w.Line("static PyObject* wrpPy_bltp_mp_subscript_sizable(PyObject* self, PyObject* key)");
                w.Line("{ return wrpPye_bltp_coll_mp_subscript(self, key, &wrpPy_blsd); }");
            }
            else
            {
                item = shared.Cpp.SharedItem;
                subscript = shared.Cpp.SharedSubscript;
            }
            w.Line("static int wrpPy_bltp_sq_contains(PyObject* self, PyObject* value) { return wrpPye_bltp_coll_sq_contains(self, value, &wrpPy_blsd); }");
            w.Line("static PyObject* wrpPy_bltp_sq_concat(PyObject* self, PyObject* other) { return wrpPye_bltp_coll_sq_concat(self, other, &wrpPy_blsd); }");
            w.Line("static PyObject* wrpPy_bltp_sq_repeat(PyObject* self, Py_ssize_t n) { return wrpPye_bltp_coll_sq_repeat(self, n, &wrpPy_blsd); }");
            if (write)
            {
                w.Line("static int wrpPy_bltp_sq_ssitem(PyObject* self, Py_ssize_t i, PyObject* value)");
                w.Line("{ return wrpPye_bltp_coll_sq_ass_item(self, i, value, &wrpPy_blsd); }");
                w.Line("static int wrpPy_bltp_mp_ssubscript_sizable(PyObject* self, PyObject* key, PyObject* value)");
                w.Line("{ return wrpPye_bltp_coll_mp_ass_subscript(self, key, value, &wrpPy_blsd); }");
            }
            w.Line();
            w.Line($"static PySequenceMethods {t.Cpp.SequenceTable} = {{");
            w.Indent();
            w.Line("wrpPy_bltp_sq_length, // sq_length");
            w.Line("wrpPy_bltp_sq_concat, // sq_concat");
            w.Line("wrpPy_bltp_sq_repeat, // sq_repeat");
            w.Line(item + ", // sq_item");
            w.Line("nullptr, // was_sq_slice");
            w.Line((write ? "wrpPy_bltp_sq_ssitem" : "nullptr") + ", // sq_ass_item");
            w.Line("nullptr, // was_sq_ass_slice");
            w.Line("wrpPy_bltp_sq_contains, // sq_contains");
            w.Line("nullptr, // sq_inplace_concat");
            w.Line("nullptr, // sq_inplace_repeat");
            w.Outdent().Line("};");
            w.Line($"static PyMappingMethods {t.Cpp.MappingTable} = {{");
            w.Indent();
            w.Line("wrpPy_bltp_sq_length, // mp_length");
            w.Line(subscript + ", // mp_subscript");
            w.Line((write ? "wrpPy_bltp_mp_ssubscript_sizable" : "nullptr") + ", // mp_ass_subscript");
            w.Outdent().Line("};");
            w.Line();
        }
    }
}
