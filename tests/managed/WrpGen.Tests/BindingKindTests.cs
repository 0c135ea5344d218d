using System.Linq;
using Xunit;

namespace WrpGen.Tests
{
    /// <summary>
    /// The kinds that travel in value records, nullable and by-reference
    /// records, variants, collection and stream views, and the element slots of
    /// collection types: both sides of each entry must agree.
    /// </summary>
    public class BindingKindTests : IClassFixture<GeneratedFixture>
    {
        private readonly GeneratedFixture _g;

        public BindingKindTests(GeneratedFixture g) { _g = g; }

        private static string Id(string fullName) => Orvane.WrpGen.Passes.Naming.Id(fullName);

        private Orvane.WrpGen.Model.GenericInstance Generic(string element) =>
            _g.Result.Model.Generics.Single(g => g.Element.Clr.FullName == element);

        [Fact]
        public void DatesDecimalsAndGuidsTravelInValueRecordsBothWays()
        {
            string unit = _g.Unit("Document");
            string created = GeneratedFixture.Function(unit, "static PyObject* wrpPy_pafn_000_get_created(");
            Assert.Contains("ClrDateTime result = {};", created);
            Assert.Contains("return fn_conv_clr_datetime_to_py_datetime(&result);", created);
            Assert.Contains("if (!fn_conv_py_datetime_to_clr_datetime(value, &a0))",
                GeneratedFixture.Function(unit, "static int wrpPy_pafn_000_set_created("));
            Assert.Contains("->set_Stamp(fn_clr_handle(self), &a0);",
                GeneratedFixture.Function(unit, "static int wrpPy_pafn_000_set_stamp("));
            Assert.Contains("return fn_conv_clr_timespan_to_py_datetimedelta(result);",
                GeneratedFixture.Function(unit, "static PyObject* wrpPy_pafn_000_get_elapsed("));
            Assert.Contains("return fn_conv_clr_decimal_to_py_decimal(&result);",
                GeneratedFixture.Function(unit, "static PyObject* wrpPy_pafn_000_get_price("));
            Assert.Contains("if (!fn_conv_py_uuid_to_clr_guid(value, &a0))",
                GeneratedFixture.Function(unit, "static int wrpPy_pafn_000_set_id("));

            string proxy = _g.Read("cs/Wrp.Fixture.Document.cs");
            Assert.Contains("public static void get_Created(IntPtr self, DateTimeArg* result)", proxy);
            Assert.Contains("*result = DateTimes.FromDateTime(Handles.Self<global::Wrp.Fixture.Document>(self).Created);", proxy);
            Assert.Contains("Handles.Self<global::Wrp.Fixture.Document>(self).Stamp = DateTimes.ToDateTimeOffset(*a0);", proxy);
            Assert.Contains("public static long get_Elapsed(IntPtr self)", proxy);
            Assert.Contains("Handles.Self<global::Wrp.Fixture.Document>(self).Elapsed = new global::System.TimeSpan(a0);", proxy);
            Assert.Contains("public static void set_Price(IntPtr self, DecimalArg* a0)", proxy);
            Assert.Contains("Guids.ToBytes(Handles.Self<global::Wrp.Fixture.Document>(self).Id, result);", proxy);
        }

        [Fact]
        public void KeyedIndexersBecomeItemAccessorsBehindTheTypesSubscript()
        {
            // Read and write of two indices, declared by the interface and the class alike.
            string grid = _g.Read("cs/Wrp.Fixture.Grid.cs");
            Assert.Contains("public static void call_000_get_Item(IntPtr self, int a0, int a1, IntPtr* result)", grid);
            Assert.Contains("*result = Strings.ToPy(Handles.Self<global::Wrp.Fixture.Grid>(self)[a0, a1]);", grid);
            Assert.Contains("Handles.Self<global::Wrp.Fixture.Grid>(self)[a0, a1] = Strings.FromArg(a2);", grid);
            Assert.Contains("return Handles.Self<global::Wrp.Fixture.Grid>(self)[Strings.FromArg(a0)];", grid);
            Assert.Contains("Handles.Self<global::Wrp.Fixture.IGrid>(self)[a0, a1] = Strings.FromArg(a2);",
                _g.Read("cs/Wrp.Fixture.IGrid.cs"));

            // Two indexers: get_item is a dispatcher; x[...] reaches it through the runtime's keyed slots.
            string unit = _g.Unit("Grid");
            Assert.Contains("{\"get_item\", (PyCFunction)(void (*)(void))wrpPy_mgfn_000_get_item,", unit);
            Assert.Contains("&wrpPye_keyed_items_rw, // tp_as_mapping", unit);
            Assert.Contains("&wrpPye_keyed_items_rw, // tp_as_mapping", _g.Unit("IGrid"));
            // An int indexer without a Count is keyed too, and read-only.
            Assert.Contains("&wrpPye_keyed_items_ro, // tp_as_mapping", _g.Unit("Document"));
            Assert.Contains("Handles.Self<global::Wrp.Fixture.Document>(self)[a0]", _g.Read("cs/Wrp.Fixture.Document.cs"));
            Assert.Contains("nullptr, // tp_as_mapping", _g.Unit("Kinds"));

            string stubs = _g.Read("pyi/orvane/fixture/__init__.pyi");
            Assert.Contains("def __getitem__(self, key: typing.Tuple[int, int]) -> typing.Optional[str]: ...", stubs);
            Assert.Contains("def __getitem__(self, key: typing.Optional[str]) -> int: ...", stubs);
            Assert.Contains("def __setitem__(self, key: typing.Tuple[int, int], value: typing.Optional[str]) -> None: ...", stubs);
            // Collections show their sequence protocol with the element type.
            Assert.Contains("def __getitem__(self, index: int) -> \"IPage\": ...", stubs);
            Assert.Contains("def __iter__(self) -> typing.Iterator[\"IPage\"]: ...", stubs);
            Assert.Contains("def __setitem__(self, index: int, value: \"IPage\") -> None: ...", stubs);
            // Typed collections in signatures name their element.
            Assert.Contains("def pages(pages: typing.Sequence[\"IPage\"]) -> typing.Iterable[\"IPage\"]: ...", stubs);
            Assert.Contains("def walk(pages: typing.Iterable[\"IPage\"]) -> typing.Iterator[\"IPage\"]: ...", stubs);
            Assert.Contains("def names(names: typing.Sequence[str], numbers: typing.Iterable[int]) -> typing.Sequence[str]: ...", stubs);
        }

        [Fact]
        public void NullablesPassNoValueForNoneAndComeBackAsPythonValues()
        {
            string maybe = GeneratedFixture.Function(_g.Unit("Document"), "static int wrpPy_pafn_000_set_maybe(");
            Assert.Contains("int32_t a0_v = 0;", maybe);
            Assert.Contains("PyNullableArg a0 = {0, &fn_nullable_convert<int32_t, fn_conv_py_long_to_clr_int32>, &a0_v};", maybe);
            Assert.Contains("if (!wrpPy_conv_py_to_clr_nullable(value, &a0))", maybe);
            string kinds = _g.Unit("Kinds");
            string point = Id("Wrp.Fixture.Point") + "_Point";
            // A struct travels as a handle inside the record.
            Assert.Contains($"PyNullableArg a0 = {{0, &fn_nullable_convert<void*, wrpPy_conv_py_to_clr_{point}>, &a0_v}};",
                GeneratedFixture.Function(kinds, "static PyObject* wrpPy_mtfn_000_find("));
            Assert.Contains("PyNullableArg a0 = {0, &fn_nullable_convert<ClrDateTimeOffset, fn_conv_py_datetime_to_clr_datetimeoffset>, &a0_v};",
                GeneratedFixture.Function(kinds, "static PyObject* wrpPy_mtfn_000_when("));

            string proxy = _g.Read("cs/Wrp.Fixture.Kinds.cs");
            Assert.Contains("(a0 == null || a0->HasValue == 0 ? default(global::System.Nullable<global::Wrp.Fixture.Point>) : Handles.Unbox<global::Wrp.Fixture.Point>(*(IntPtr*)a0->Value))", proxy);
            Assert.Contains("public static void call_000_When(PyNullableArg* a0, IntPtr* result)", proxy);
            Assert.Contains("*result = Variants.ToPy(global::Wrp.Fixture.Kinds.When(", proxy);
        }

        [Fact]
        public void ByReferenceValuesGoInFromTheListAndArePushedBackAfterTheCall()
        {
            string swap = GeneratedFixture.Function(_g.Unit("Kinds"), "static PyObject* wrpPy_mtfn_000_swap(");
            var lines = _g.Lines(swap);
            Assert.Contains("PyParamByRef a0 = {nullptr, &fn_parbyref_convert<PyStringArg, fn_conv_py_string_to_clr_string>, &a0_v};", lines);
            Assert.Contains("PyStringArg a0_v = {-1, 0, nullptr};", lines);
            Assert.Contains("PyObject* a1_out = nullptr;", lines);
            Assert.Contains(lines, l => l.Contains("\"O&O&\"") && l.Contains("(wrp_o_conv)&fn_conv_py_parbyref_to_clr_parbyref, &a0"));
            Assert.Contains(lines, l => l.EndsWith("->call_000_Swap(&a0, &a0_out, &a1, &a1_out);"));
            // An error after the call releases both out values; a failed push releases the ones not pushed yet.
            int error = System.Array.IndexOf(lines, "if (PyErr_Occurred())");
            Assert.Equal(new[] { "Py_XDECREF(a0_out);", "Py_XDECREF(a1_out);", "return nullptr;" }, lines.Skip(error + 2).Take(3));
            int push = System.Array.IndexOf(lines, "if (fn_push_parbyref_outvalue(a0.list, a0_out) < 0)");
            Assert.Equal("Py_XDECREF(a1_out);", lines[push + 2]);
            Assert.True(System.Array.IndexOf(lines, "if (fn_push_parbyref_outvalue(a1.list, a1_out) < 0)") > push);

            string proxy = _g.Read("cs/Wrp.Fixture.Kinds.cs");
            Assert.Contains("public static void call_000_Swap(PyParamByRef* a0, IntPtr* a0_out, PyParamByRef* a1, IntPtr* a1_out)", proxy);
            Assert.Contains("global::System.String r0 = Strings.FromArg((PyStringArg*)a0->Value);", proxy);
            Assert.Contains("global::Wrp.Fixture.Point r1 = Handles.Unbox<global::Wrp.Fixture.Point>(*(IntPtr*)a1->Value);", proxy);
            Assert.Contains("global::Wrp.Fixture.Kinds.Swap(ref r0, out r1);", proxy);
            Assert.Contains("*a1_out = Variants.ToPy(r1);", proxy);
            // The host forwards the record and its out slot.
            Assert.Contains("void call_000_Swap(PyParamByRef* a0, PyObject** a1, PyParamByRef* a2, PyObject** a3) const", _g.Unit("Kinds"));
        }

        [Fact]
        public void ObjectParametersAreVariantsAndObjectResultsAnyPythonValue()
        {
            string unit = _g.Unit("Document");
            Assert.Contains("if (!fn_conv_py_variant_to_clr_variant(value, &a0))", GeneratedFixture.Function(unit, "static int wrpPy_pafn_000_set_tag("));
            Assert.Contains("return fn_take_py_string_result(result);", GeneratedFixture.Function(unit, "static PyObject* wrpPy_pafn_000_get_tag("));
            string proxy = _g.Read("cs/Wrp.Fixture.Document.cs");
            Assert.Contains("Handles.Self<global::Wrp.Fixture.Document>(self).Tag = Variants.FromArg(a0);", proxy);
            Assert.Contains("*result = Variants.ToPy(Handles.Self<global::Wrp.Fixture.Document>(self).Tag);", proxy);
        }

        [Fact]
        public void CollectionsAndStreamsUseTheConverterAndWrapperOfTheirKind()
        {
            // Typed lists, arrays and enumerables cross as the typed wrappers of their element type.
            string page = Generic("Wrp.Fixture.IPage").Id, text = Generic("System.String").Id, number = Generic("System.Int32").Id;
            string kinds = _g.Unit("Kinds");
            string pages = GeneratedFixture.Function(kinds, "static PyObject* wrpPy_mtfn_000_pages(");
            Assert.Contains($"(wrp_o_conv)&wrpPygn_conv_py_to_clr_list_{page}, &a0", pages);
            Assert.Contains($"return wrpPye_gn_result_to_py(result, &wrpPygn_tyds_{page}_IterableWrapper);", pages);
            string names = GeneratedFixture.Function(kinds, "static PyObject* wrpPy_mtfn_000_names(");
            Assert.Contains($"(wrp_o_conv)&wrpPygn_conv_py_to_clr_array_{text}, &a0, (wrp_o_conv)&wrpPygn_conv_py_to_clr_iterable_{number}, &a1", names);
            Assert.Contains($"return wrpPye_gn_result_to_py(result, &wrpPygn_tyds_{text}_IListWrapper);", names);
            string mixed = GeneratedFixture.Function(kinds, "static PyObject* wrpPy_mtfn_000_mixed(");
            Assert.Contains("&wrpPye_conv_py_to_clr_iterator, &a0, (wrp_o_conv)&wrpPye_conv_py_to_clr_icol, &a1, (wrp_o_conv)&wrpPye_conv_py_to_clr_colbase, &a2", mixed);
            Assert.Contains("return wrpPye_conv_clr_arrlist_to_py(result);", mixed);
            string buffer = GeneratedFixture.Function(kinds, "static PyObject* wrpPy_mtfn_000_buffer(");
            Assert.Contains("(wrp_o_conv)&wrpPye_conv_py_to_clr_stream, &a0", buffer);
            Assert.Contains("return wrpPye_conv_clr_stream_to_py(result);", buffer);

            string proxy = _g.Read("cs/Wrp.Fixture.Kinds.cs");
            Assert.Contains("Collections.WriteResult(result, global::Wrp.Fixture.Kinds.Pages(TypedCollections.ListFromArg<global::Wrp.Fixture.IPage>(a0)));", proxy);
            var t = Generic("System.String");
            var n = Generic("System.Int32");
            Assert.Contains($"GenericEntries<global::System.String>.WriteListResult(result, global::Wrp.Fixture.Kinds.Names(" +
                            $"GenericArgs.ArrayFromArg<global::System.String>(a0, {t.PyListTable}, {t.PySeqTable}, &global::Orvane.WrpGen.Generic.Element_{text}.Read), " +
                            $"GenericArgs.EnumerableFromArg<global::System.Int32>(a1, {n.PyIterTable}, &global::Orvane.WrpGen.Generic.Element_{number}.Read)));", proxy);
            Assert.Contains("Collections.WriteResult(result, global::Wrp.Fixture.Kinds.Mixed(Collections.EnumeratorFromArg(a0), Collections.CollectionFromArg(a1), Collections.CollectionBaseFromArg(a2)));", proxy);
            Assert.Contains("Collections.WriteStreamResult(result, global::Wrp.Fixture.Kinds.Buffer(Collections.StreamFromArg(a0)));", proxy);
            Assert.Contains("public static void call_000_Buffer(VariantArg* a0, PyCollectionArg* result)", proxy);
            Assert.Contains($"GenericArgs.ArrayFromArg<global::System.Int32>(a0, {n.PyListTable}, {n.PySeqTable}, ", _g.Read("cs/Wrp.Fixture.Document.cs"));
        }

        [Fact]
        public void CollectionTypesGetElementEntriesAndSequenceSlots()
        {
            string cls = _g.Unit("PageCollection");
            // The element entries follow the ordinary ones.
            var names = _g.Lines(cls).SkipWhile(l => l != "static const char* const names[] = {").Skip(1).TakeWhile(l => l != "};")
                .SkipWhile(l => l != "\"get_Count\",").Skip(1).ToList();
            Assert.Equal(new[] { "\"sq_length\",", "\"sq_item\",", "\"sq_item_nocheck\",", "\"sq_contains\",", "\"sq_ssitem\",",
                                 "\"sq_ssitem_nocheck\",", "\"mp_ssubscript_sizable\",", "\"btp_IsAssignableTo\"," }, names);
            string ns = "wrpu_" + Id("Wrp.Fixture.PageCollection") + "_PageCollection";
            Assert.Contains($"&{ns}::wrpPy_tysd_PageCollection, // tp_as_sequence", cls);
            Assert.Contains($"&{ns}::wrpPy_tygd_PageCollection, // tp_as_mapping", cls);
            Assert.Contains($"wrpPygn_tp_iter_{Generic("Wrp.Fixture.IPage").Id}, // tp_iter", cls);
            Assert.Contains("wrpPy_bltp_mp_ssubscript_sizable, // mp_ass_subscript", cls);
            string ipage = Id("Wrp.Fixture.IPage") + "_IPage";
            Assert.Contains($"wrpPy_conv_clr_to_py_{ipage},", cls);
            Assert.Contains($"wrpPy_conv_py_to_clr_{ipage},", cls);

            // The interface's indexer has no setter: no write entries, no assignment slots.
            string ifc = _g.Unit("IPageCollection");
            Assert.DoesNotContain("sq_ssitem", ifc);
            Assert.Contains("nullptr, // sq_ass_item", ifc);
            Assert.Contains("nullptr, // mp_ass_subscript", ifc);
            Assert.DoesNotContain("wrpPy_tysd", _g.Unit("Document"));  // an int indexer without Count

            // The class reads elements through the functions its collection interface exports;
            // the interface is the only definer, and the class keeps its own write slots.
            string shared = "wrpPy_blts_" + Id("Wrp.Fixture.IPageCollection") + "_IPageCollection";
            Assert.Contains($"{shared}_sq_item, // sq_item", cls);
            Assert.Contains($"{shared}_mp_subscript_sizable, // mp_subscript", cls);
            Assert.DoesNotContain("static PyObject* wrpPy_bltp_sq_item(", cls);
            Assert.Contains($"PyObject* {shared}_sq_item(PyObject* self, Py_ssize_t i) {{ return wrpPye_bltp_coll_sq_item(self, i, &wrpu_", ifc);
            Assert.Contains($"PyObject* {shared}_sq_item(PyObject* self, Py_ssize_t i);", _g.Read("cpp/wrp_module.h"));
            Assert.Contains("wrpPy_bltp_sq_item, // sq_item", ifc);

            string proxy = _g.Read("cs/Wrp.Fixture.PageCollection.cs");
            Assert.Contains("public static int sq_item(IntPtr self, int index, PyObjectOutArg* result)", proxy);
            Assert.Contains("if ((uint)index >= (uint)items.Count)", proxy);
            Assert.Contains("items[index] = Handles.Get<global::Wrp.Fixture.IPage>(element);", proxy);
            Assert.Contains("public static void mp_ssubscript_sizable(IntPtr self, IntPtr source, int start, int sliceLength, int step, int size)", proxy);
            // A failing element entry reports -1, never a status that reads as success.
            Assert.Contains("return -1;", proxy);
        }
    }
}
