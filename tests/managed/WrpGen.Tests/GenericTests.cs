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
        public void EveryTypedHostBindsNamesItsManagedProxyDefines()
        {
            var lines = _g.Lines(Generic);
            foreach (var g in _g.Result.Model.Generics)
            {
                string proxy = _g.Read($"cs/Orvane.WrpGen.Generic.{g.Id}.cs");
                foreach (var (kind, managed) in new[] { ("ICol", "SiApiCntCollection"), ("IList", "SiApiCntList"), ("Array", "SiApiArray"),
                                                       ("Iterable", "SiApiEnumerable"), ("Iter", "SiApiEnumerator") })
                {
                    string host = $"PyHost_gn_{kind}_{g.Id}";
                    int ctor = Array.IndexOf(lines, $"{host}::{host}()");
                    bool expected = kind switch { "ICol" or "IList" => g.HasList, "Array" => g.HasArray, _ => true };
                    Assert.Equal(expected, ctor >= 0);
                    if (ctor < 0)
                        continue;
                    Assert.Contains($"if (!fn_bind_host_method(env, assembly, \"Orvane.WrpGen.Generic.{managed}_{g.Id}\", names[i], slots[i], m_error))",
                                    lines.Skip(ctor));
                    int names = Array.IndexOf(lines, "static const char* const names[] = {", ctor);
                    var bound = lines.Skip(names + 1).TakeWhile(l => l != "};").Select(l => l.Trim('"', ',')).ToList();
                    Assert.NotEmpty(bound);
                    // The proxy class of the host, up to the next class, defines every bound name.
                    int start = proxy.IndexOf($"public static unsafe class {managed}_{g.Id}", StringComparison.Ordinal);
                    Assert.True(start >= 0, managed);
                    int end = proxy.IndexOf("public static unsafe class ", start + 1, StringComparison.Ordinal);
                    string cls = end < 0 ? proxy.Substring(start) : proxy.Substring(start, end - start);
                    var defined = Regex.Matches(cls, @"public static \w+ (\w+)\(").Select(m => m.Groups[1].Value).ToList();
                    Assert.Equal(bound, defined);
                }
            }
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
