using System;
using System.Linq;
using System.Text.RegularExpressions;
using Orvane.WrpGen.Model;
using Xunit;

namespace WrpGen.Tests
{
    /// <summary>The typed instantiations the fixture's typed lists, arrays and enumerables call for.</summary>
    public class GenericTests : IClassFixture<GeneratedFixture>
    {
        private readonly GeneratedFixture _g;

        public GenericTests(GeneratedFixture g) { _g = g; }

        private GenericInstance Of(string elementFullName) =>
            _g.Result.Model.Generics.Single(g => g.Element.Clr.FullName == elementFullName);

        private string Generic => _g.Read("cpp/units/generic.inc");

        [Fact]
        public void EachElementTypeGetsOneInstantiationWithTheKindsItIsUsedAs()
        {
            var generics = _g.Result.Model.Generics;
            Assert.Equal(generics.Select(g => g.Element.Clr.FullName).OrderBy(n => n, StringComparer.Ordinal),
                         generics.Select(g => g.Element.Clr.FullName));
            Assert.All(generics, g => Assert.Matches("^[0-9A-F]{8}$", g.Id));
            Assert.Equal(generics.Count, generics.Select(g => g.Id).Distinct().Count());

            var page = Of("Wrp.Fixture.IPage");
            Assert.True(page.HasList);         // IList<IPage>, ICollection<IPage>, IReadOnlyList<IPage>
            Assert.True(page.HasArray);        // IPage[]
            Assert.True(page.ArrayParameter);
            Assert.True(page.EnumerableParameter);
            var text = Of("System.String");
            Assert.True(text.HasList);         // List<string> result
            Assert.True(text.ArrayParameter);  // string[] parameter
            Assert.False(text.EnumerableParameter);
            var number = Of("System.Int32");
            Assert.True(number.ArrayParameter);       // the setter of an int[] property
            Assert.True(number.EnumerableParameter);  // IEnumerable<int>
            Assert.True(number.HasList);              // an IList<int> property
        }

        [Fact]
        public void CallbackTablesAreNumberedInTheOrderTheNativeListHoldsThem()
        {
            var generics = _g.Result.Model.Generics;
            var numbered = generics.SelectMany(g => new[]
            {
                (g.PyListTable, $"m_pygn_pylist_{g.Id}_callbacks"),
                (g.PySeqTable, $"m_pygn_pyseq_{g.Id}_callbacks"),
                (g.PyIterTable, $"m_pygn_pyiter_{g.Id}_callbacks"),
            }).Where(t => t.Item1 >= 0).OrderBy(t => t.Item1).ToList();
            Assert.Equal(Enumerable.Range(0, numbered.Count), numbered.Select(t => t.Item1));
            string expected = string.Join(", ", numbered.Select(t => t.Item2).Append("nullptr"));
            Assert.Contains($"static void** m_all_py_generic_callbacks[{numbered.Count + 1}] = {{{expected}}};", Generic);

            // The managed side reads a Python list of pages through the same two tables.
            var page = Of("Wrp.Fixture.IPage");
            string shelf = _g.Read("cs/Wrp.Fixture.Shelf.cs");
            Assert.Contains($"GenericArgs.ArrayFromArg<global::Wrp.Fixture.IPage>(a0, {page.PyListTable}, {page.PySeqTable}, &global::Orvane.WrpGen.Generic.Element_{page.Id}.Read)", shelf);
            Assert.Contains($"int32_t fn_clbk_pylist_{page.Id}_get_item(PyObject* list, int32_t index, void* storage)", Generic);
            Assert.Contains($"int32_t fn_clbk_pyiter_{page.Id}_iter_next(PyObject* iterator, void* storage, PyObject** keep)", Generic);
        }

        [Fact]
        public void HostsBindTheTypedProxiesEntriesInOrder()
        {
            var page = Of("Wrp.Fixture.IPage");
            var lines = _g.Lines(Generic);
            string[] BoundNames(string host)
            {
                int ctor = Array.IndexOf(lines, $"{host}::{host}()");
                Assert.True(ctor >= 0, host);
                int names = Array.IndexOf(lines, "static const char* const names[] = {", ctor);
                return lines.Skip(names + 1).TakeWhile(l => l != "};").Select(l => l.Trim('"', ',')).ToArray();
            }
            Assert.Equal(new[] { "SqLength", "SqContains", "SqGetItem", "SqGetItemNoCheck", "SqSetItem", "SqSetItemNoChek",
                                 "MpSetItems", "Reverse", "Sort", "IndexBy", "CountOf", "IsAssignableTo" },
                         BoundNames($"PyHost_gn_Array_{page.Id}"));
            Assert.Equal(new[] { "SqGetItem", "SqGetItemNoCheck", "SqSetItem", "SqSetItemNoChek", "Insert", "RemoveAt", "Pop",
                                 "SqInplaceConcat", "SqInplaceRepeat", "MpSetItems", "MpRemoveItems", "Reverse", "Sort",
                                 "IndexBy", "CountOf", "IsAssignableTo" },
                         BoundNames($"PyHost_gn_IList_{page.Id}"));
            Assert.Equal(new[] { "MoveNext", "IsAssignableTo" }, BoundNames($"PyHost_gn_Iter_{page.Id}"));
            Assert.Contains($"if (!fn_bind_host_method(env, assembly, \"Orvane.WrpGen.Generic.SiApiArray_{page.Id}\", names[i], slots[i], m_error))", lines);

            // Every bound name exists in the managed proxy of the same identifier.
            string proxy = _g.Read($"cs/Orvane.WrpGen.Generic.{page.Id}.cs");
            foreach (var name in BoundNames($"PyHost_gn_Array_{page.Id}"))
                Assert.Matches(new Regex($@"class SiApiArray_{page.Id}\b[\s\S]*public static \w+ {name}\("), proxy);
            Assert.Contains("public static global::Wrp.Fixture.IPage Read(void* element) => Handles.Get<global::Wrp.Fixture.IPage>(*(IntPtr*)element);", proxy);
            Assert.Contains("GenericEntries<global::System.String>.WriteObject(result, Strings.ToPy(value))",
                            _g.Read($"cs/Orvane.WrpGen.Generic.{Of("System.String").Id}.cs"));
            Assert.Contains("GenericEntries<global::System.Int32>.WriteObject(result, PyCallbacks.WriteInt(value))",
                            _g.Read($"cs/Orvane.WrpGen.Generic.{Of("System.Int32").Id}.cs"));
        }

        [Fact]
        public void TypedParametersAndResultsUseTheirInstantiation()
        {
            var page = Of("Wrp.Fixture.IPage");
            string shelf = _g.Unit("Shelf");
            Assert.Contains($"(wrp_o_conv)&wrpPygn_conv_py_to_clr_array_{page.Id}", shelf);
            Assert.Contains($"return wrpPye_gn_result_to_py(result, &wrpPygn_tyds_{page.Id}_ArrayWrapper);", shelf);
            Assert.Contains($"(wrp_o_conv)&wrpPygn_conv_py_to_clr_iterable_{page.Id}", shelf);
            Assert.Contains($"return wrpPye_gn_result_to_py(result, &wrpPygn_tyds_{page.Id}_IterWrapper);", shelf);
            Assert.Contains($"(wrp_o_conv)&wrpPygn_conv_py_to_clr_list_{page.Id}", shelf);
            Assert.Contains($"return wrpPye_gn_result_to_py(result, &wrpPygn_tyds_{page.Id}_IListWrapper);", shelf);
            // A read-only list result that is not an IList<T> travels as a copy the typed list proxy can index.
            Assert.Contains("GenericEntries<global::Wrp.Fixture.IPage>.WriteListResult(result, ",
                            _g.Read("cs/Wrp.Fixture.Shelf.cs"));
        }

        [Fact]
        public void EnumerableCollectionsIterateAndConvertAsTheTypedIterable()
        {
            var page = Of("Wrp.Fixture.IPage");
            foreach (var name in new[] { "PageCollection", "IPageCollection" })
            {
                string unit = _g.Unit(name);
                Assert.Contains($"wrpPygn_tp_iter_{page.Id}, // tp_iter", unit);
            }
            string modules = _g.Read("cpp/units/modules.inc");
            Assert.Matches(new Regex($@"fn_set_additional_ifcs_markattr\(&wrpPy_tyds_\w+_PageCollection, \d+, [^)]*&wrpPygn_tyds_{page.Id}_IterableWrapper\.type\)"), modules);
            // The typed types are readied before the root module builds any class that lists them.
            string root = GeneratedFixture.Function(modules, $"PyObject* wrpPy_mlit_{_g.Result.Model.Root.Tag}()");
            Assert.True(root.IndexOf("wrpPygn_tyrd_FFFFFFFF_generic_types(\"orvane.fixture\")", StringComparison.Ordinal)
                        < root.IndexOf("PyModule_Create2", StringComparison.Ordinal), root);
        }

        [Fact]
        public void TheGenericModuleAddsEveryWrapperUnderItsPythonName()
        {
            string module = GeneratedFixture.Function(Generic, "PyObject* wrpPygn_mlit_FFFFFFFF_generic_wrappers(");
            foreach (var g in _g.Result.Model.Generics)
            {
                Assert.Contains($"PyModule_AddObject(module, \"_IterWrapper_{g.Id}\", (PyObject*)&wrpPygn_tyds_{g.Id}_IterWrapper.type)", module);
                Assert.Contains($"PyModule_AddObject(module, \"_IterableWrapper_{g.Id}\", (PyObject*)&wrpPygn_tyds_{g.Id}_IterableWrapper.type)", module);
                Assert.Equal(g.HasArray, module.Contains($"\"_ArrayWrapper_{g.Id}\""));
                Assert.Equal(g.HasList, module.Contains($"\"_IListWrapper_{g.Id}\""));
            }
        }
    }
}
