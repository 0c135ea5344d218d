using System;
using System.IO;
using System.Linq;
using Xunit;

namespace WrpGen.Tests
{
    /// <summary>What the emitters produce for the fixture assembly, checked on telling lines.</summary>
    public class GenerationTests : IClassFixture<GeneratedFixture>
    {
        private readonly GeneratedFixture _g;

        public GenerationTests(GeneratedFixture g) { _g = g; }

        [Fact]
        public void TheReportListsExactlyTheSkippedTypesAndMembersWithTheirKinds()
        {
            // Every kind a value, record, list or view can carry is bound; what
            // stays is what has no binding at all.
            var expected = new[]
            {
                "Wrp.Fixture.Box<T>\tgeneric",
                "Wrp.Fixture.Document.Callback(System.Action)\tdelegate",
                "Wrp.Fixture.Document.Changed(System.EventHandler)\tdelegate",
                "Wrp.Fixture.Document.Echo(T)\tgeneric",
                "Wrp.Fixture.Document.Inner\tunsupported",
                "Wrp.Fixture.Kinds.Map()\tcollection",
                "Wrp.Fixture.Kinds.Ranges(System.Int32[,])\tarray",
                "Wrp.Fixture.Kinds.Slot()\tbyref",
            };
            Assert.Equal(expected, _g.Read("skipped.txt").TrimEnd('\n').Split('\n'));
        }

        [Fact]
        public void OverloadNumbersFollowDeclarationOrder()
        {
            string unit = _g.Unit("Document");
            Assert.Contains("\"call_000_Save\",", unit);
            Assert.Contains("\"call_001_Save\",", unit);
            Assert.Contains("\"call_002_Save\",", unit);
            Assert.Contains("\"call_003_Save\",", unit);
            string proxy = _g.Read("cs/Wrp.Fixture.Document.cs");
            Assert.Contains("public static void call_002_Save(IntPtr self, PyStringArg* a0, int a1)", proxy);
            Assert.Contains("Handles.Self<global::Wrp.Fixture.Document>(self).Save(Strings.FromArg(a0), (global::Wrp.Fixture.SaveKind)a1);", proxy);
            Assert.Contains("public static int call_003_Save(IntPtr self, PyBytesArg* a0, int a1)", proxy);
        }

        [Fact]
        public void HostsBindEveryEntryInOrderFromTheModulesOwnProxyAssembly()
        {
            var lines = _g.Lines(_g.Unit("Document"));
            Assert.Contains("static constexpr const char* kManagedType = \"WrpNs_Wrp.WrpNs_Fixture.WrpCs_Document\";", lines);
            Assert.Contains("static constexpr const char* kAssembly = \"WrpInterop.Fixture\";", lines);
            int names = Array.IndexOf(lines, "static const char* const names[] = {");
            var bound = lines.Skip(names + 1).TakeWhile(l => l != "};").ToList();
            Assert.Equal("\"ctor_000_Document\",", bound[0]);
            Assert.Equal("\"ctor_001_Document\",", bound[1]);
            Assert.Equal("\"btp_IsAssignableTo\",", bound[^1]);
            Assert.Equal(bound.Count, bound.Distinct().Count());
            // Every bound entry has its [UnmanagedCallersOnly] method in the proxy, and nothing else is there.
            string proxy = _g.Read("cs/Wrp.Fixture.Document.cs");
            var proxyEntries = proxy.Split('\n').Select(l => l.Trim())
                .Where(l => l.StartsWith("public static ", StringComparison.Ordinal) && !l.Contains(" class "))
                .Select(l => l.Substring(0, l.IndexOf('(')).Split(' ').Last()).ToList();
            Assert.Equal(bound.Select(b => b.Trim('"', ',')), proxyEntries);
        }

        [Fact]
        public void TheDispatcherTriesTheBoundOverloadsInDeclarationOrderWithSnakeCaseKeywords()
        {
            string save = GeneratedFixture.Function(_g.Unit("Document"), "static PyObject* wrpPy_mgfn_000_save(");
            var lines = _g.Lines(save);
            Assert.Contains("PyObject* errors[4] = {};", lines);
            int first = Array.IndexOf(lines, "static const char* kw[] = {\"path\", nullptr};");
            int stream = Array.IndexOf(lines, "static const char* kw[] = {\"stream\", nullptr};");
            int second = Array.IndexOf(lines, "static const char* kw[] = {\"path\", \"kind\", nullptr};");
            int third = Array.IndexOf(lines, "static const char* kw[] = {\"data\", \"offset\", nullptr};");
            Assert.True(first > 0 && first < stream && stream < second && second < third);
            Assert.Contains(lines, l => l.StartsWith("if (PyArg_ParseTupleAndKeywords(args, kwargs, \"O&O&\", const_cast<char**>(kw), (wrp_o_conv)&fn_conv_py_bytes_to_clr_bytes, &a0, (wrp_o_conv)&fn_conv_py_long_to_clr_int32, &a1))"));
            Assert.Contains("const int32_t result = PyHost_cs_" + Id("Wrp.Fixture.Document") + "_Document::get_instance()->call_003_Save(fn_clr_handle(self), a0.get_info(), a1);", lines);
            Assert.Equal("return wrpPy_dispatch_fail(errors, 4);", lines[^2]);
        }

        [Fact]
        public void ConstructorsDispatchAndAStructGetsItsImplicitDefaultConstructorLast()
        {
            string init = GeneratedFixture.Function(_g.Unit("Document"), "static int wrpPy_tybm_tp_init(");
            Assert.Contains("PyObject* errors[2] = {};", init);
            Assert.Contains("->ctor_001_Document(&a0);", init);
            Assert.Contains("wrpPy_dispatch_fail(errors, 2);", init);
            Assert.Contains("public static IntPtr ctor_001_Point()", _g.Read("cs/Wrp.Fixture.Point.cs"));
            Assert.Contains("return Handles.Alloc(default(global::Wrp.Fixture.Point));", _g.Read("cs/Wrp.Fixture.Point.cs"));
            // A static class has no constructor: calling it is refused.
            Assert.Contains("wrapClrObject_tp_init_fault, // tp_init", _g.Unit("Constants"));
        }

        [Fact]
        public void ResultsUseTheConverterOfTheirKind()
        {
            string unit = _g.Unit("Document");
            string page = Id("Wrp.Fixture.Page") + "_Page";
            string ipage = Id("Wrp.Fixture.IPage") + "_IPage";
            Assert.Contains($"return fn_conv_clr_clsobj_to_py_clsobj(result, &wrpPy_tyds_{page});",
                GeneratedFixture.Function(unit, "static PyObject* wrpPy_pafn_000_get_first_page("));
            string last = GeneratedFixture.Function(unit, "static PyObject* wrpPy_pafn_000_get_last_page(");
            Assert.Contains("PyObjectOutArg result = {nullptr, 0};", last);
            Assert.Contains($"return wrpPy_conv_clr_to_py_{ipage}(result);", last);
            Assert.Contains("return fn_take_py_string_result(result);", GeneratedFixture.Function(unit, "static PyObject* wrpPy_pafn_000_get_title("));
            Assert.Contains("return PyLong_FromLongLong(result);", GeneratedFixture.Function(unit, "static PyObject* wrpPy_pafn_000_get_flags("));
            Assert.Contains("return PyBool_FromLong(result);", GeneratedFixture.Function(unit, "static PyObject* wrpPy_pafn_000_get_flag("));
            Assert.Contains("return fn_conv_clr_char_to_py_string(result);", GeneratedFixture.Function(unit, "static PyObject* wrpPy_pafn_000_get_letter("));
            string setter = GeneratedFixture.Function(unit, "static int wrpPy_pafn_000_set_single(");
            Assert.Contains("if (!fn_conv_py_float_to_clr_float<float>(value, &a0))", setter);
            Assert.DoesNotContain("PyErr_Occurred", setter);
            Assert.Contains("{\"read_only_count\", wrpPy_pafn_000_get_read_only_count, nullptr, nullptr, nullptr},", unit);
            // An init-only setter cannot be called after construction: the property is read-only.
            Assert.Contains("{\"version\", wrpPy_pafn_000_get_version, nullptr, nullptr, nullptr},", unit);
            Assert.Contains("{\"get3_dname\", (PyCFunction)(void (*)(void))wrpPy_mtfn_000_get3_dname, METH_NOARGS, nullptr},", unit);
            string proxy = _g.Read("cs/Wrp.Fixture.Document.cs");
            Assert.Contains("public static IntPtr get_FirstPage(IntPtr self)", proxy);
            Assert.Contains("public static void get_LastPage(IntPtr self, PyObjectOutArg* result)", proxy);
            Assert.Contains("public static void get_Title(IntPtr self, IntPtr* result)", proxy);
            Assert.Contains("public static byte get_Flag(IntPtr self)", proxy);
            Assert.Contains("public static void set_Letter(IntPtr self, ushort a0)", proxy);
        }

        [Fact]
        public void ExplicitInterfaceMembersAreReachedThroughTheInterfacesSharedFunctions()
        {
            string doc = _g.Unit("Document");
            string idoc = Id("Wrp.Fixture.IDocument") + "_IDocument";
            Assert.Contains($"{{\"as_idisposable\", wrpPy_phfn_{idoc}_000_get_as_idisposable, nullptr, nullptr, nullptr}},", doc);
            Assert.Contains($"{{\"close\", (PyCFunction)(void (*)(void))wrpPy_hgfn_{idoc}_000_close, METH_VARARGS | METH_KEYWORDS, nullptr}},", doc);
            Assert.DoesNotContain("get_AsIDisposable", doc);
            string iface = _g.Unit("IDocument");
            Assert.Contains($"PyObject* wrpPy_phfn_{idoc}_000_get_as_idisposable(PyObject* self, void*)", iface);
            Assert.Contains("return fn_conv_clr_ifcimpl_to_py_ifcimpl(result, &wrpPye_tyds_FFFFFFFF_IDisposableWrapper);", iface);
            Assert.Contains($"PyObject* wrpPy_phfn_{idoc}_000_get_as_idisposable(PyObject* self, void* closure);", _g.Read("cpp/wrp_module.h"));
            // The interface's own type lists the members of the interface it extends.
            string icomp = Id("Wrp.Fixture.IComponent") + "_IComponent";
            Assert.Contains($"{{\"owner\", wrpPy_phfn_{icomp}_000_get_owner, nullptr, nullptr, nullptr}},", iface);
            Assert.Contains("Handles.Self<global::Wrp.Fixture.IDocument>(self).AsIDisposable", _g.Read("cs/Wrp.Fixture.IDocument.cs"));
        }

        [Fact]
        public void ADerivedDispatcherTriesTheBaseOverloadsThroughTheirExportedCandidates()
        {
            string shape = Id("Wrp.Fixture.Shapes.Shape") + "_Shape";
            string move = GeneratedFixture.Function(_g.Unit("Rectangle"), "static PyObject* wrpPy_mgfn_000_move(");
            Assert.Contains($"PyObject* result = wrpPy_htgn_{shape}_000_move(self, args, kwargs, &errors[1]);", move);
            Assert.Contains($"PyObject* wrpPy_htgn_{shape}_000_move(PyObject* self, PyObject* args, PyObject* kwargs, PyObject** error_value)", _g.Unit("Shape"));
            Assert.Contains($"&wrpPy_tyds_{shape}, // tp_base", _g.Unit("Rectangle"));
        }

        [Fact]
        public void DisposableClassesAreContextManagersAndCheckTheDisposableWrapperFirst()
        {
            string doc = _g.Unit("Document");
            Assert.Contains("{\"__enter__\", (PyCFunction)wrpPye_mtfn_disposable_enter, METH_NOARGS, nullptr},", doc);
            Assert.Contains("{\"__exit__\", (PyCFunction)wrpPye_mtfn_disposable_exit, METH_VARARGS, nullptr},", doc);
            string state = GeneratedFixture.Function(doc, "static const PyHostState& wrpPy_tybm_get_aggregate_host_state(");
            Assert.True(state.IndexOf("wrpPye_is_not_valid_disposable", StringComparison.Ordinal)
                        < state.IndexOf("wrpPy_is_not_valid_" + Id("Wrp.Fixture.IDocument"), StringComparison.Ordinal));
            string modules = _g.Read("cpp/units/modules.inc");
            string tag = Id("Wrp.Fixture.Document") + "_Document";
            Assert.Contains($"if (!fn_set_additional_ifcs_markattr(&wrpPy_tyds_{tag}, 3, &wrpPy_tyds_{Id("Wrp.Fixture.IDocument")}_IDocument, &wrpPy_tyds_{Id("Wrp.Fixture.IComponent")}_IComponent, &wrpPye_tyds_FFFFFFFF_IDisposableWrapper))", modules);
            Assert.Contains($"PyWrpTypesMap::get_instance()->add(u\"Wrp.Fixture.Document\", &wrpPy_tyds_{tag});", modules);
        }

        [Fact]
        public void StaticMembersBecomeClassAttributesAndStaticMethodsCheckTheHostState()
        {
            string unit = _g.Unit("Constants");
            var lines = _g.Lines(unit);
            int max = Array.FindIndex(lines, l => l.StartsWith("{\"MAX_SIZE\","));
            int product = Array.FindIndex(lines, l => l.StartsWith("{\"PRODUCT_NAME\","));
            int first = Array.FindIndex(lines, l => l.StartsWith("{\"first_page\","));
            Assert.True(max > 0 && max < product && product < first);
            Assert.Contains("PyType_Modified(&wrpPy_tyds_" + Id("Wrp.Fixture.Constants") + "_Constants);", lines);
            string twice = GeneratedFixture.Function(unit, "static PyObject* wrpPy_mgfn_000_twice(");
            Assert.Contains("if (state.not_valid)", twice);
            Assert.DoesNotContain("fn_clr_handle(self)", twice);
            Assert.Contains("{\"twice\", (PyCFunction)(void (*)(void))wrpPy_mgfn_000_twice, METH_STATIC | METH_VARARGS | METH_KEYWORDS, nullptr},", unit);
            string statics = GeneratedFixture.Function(_g.Read("cpp/units/modules.inc"), "void wrpPy_imtf_");
            Assert.Contains($"wrpPy_eypi_{Id("Wrp.Fixture.Constants")}_Constants(warn_count);", statics);
            Assert.Contains($"&wrpPy_imtf_{Id("orvane.fixture")}_fixture,", _g.Read("cpp/wrp_entry.h"));
        }

        [Fact]
        public void EnumsAreBuiltFromTheirGettersInDeclarationOrder()
        {
            string unit = _g.Unit("SaveKind");
            var lines = _g.Lines(unit);
            string host = "PyHost_cs_" + Id("Wrp.Fixture.SaveKind") + "_SaveKind";
            int a = Array.IndexOf(lines, $"{{\"NOT_DEFINED\", &{host}::get_NotDefined}},");
            int b = Array.IndexOf(lines, $"{{\"PPTX\", &{host}::get_Pptx}},");
            int c = Array.IndexOf(lines, $"{{\"PDF\", &{host}::get_Pdf}},");
            Assert.True(a > 0 && a < b && b < c);
            Assert.Contains("PyShlErr_EnumTypeInitialization(host->error_msg().c_str(), \"orvane.fixture.SaveKind\");", lines);
            Assert.Contains("int64_t get_High() const { return m_get_High(); }", _g.Lines(_g.Unit("BigFlags")));
            Assert.Contains("return (long)global::Wrp.Fixture.BigFlags.High;", _g.Read("cs/Wrp.Fixture.BigFlags.cs"));
        }

        [Fact]
        public void ModulesReadyForeignTypesAndBasesFirstAndRegisterChildren()
        {
            string modules = _g.Read("cpp/units/modules.inc");
            string shapes = GeneratedFixture.Function(modules, "PyObject* wrpPy_mlit_" + Id("orvane.fixture.shapes") + "_shapes()");
            int component = shapes.IndexOf("&wrpPy_tyds_" + Id("Wrp.Fixture.IComponent") + "_IComponent,", StringComparison.Ordinal);
            int shape = shapes.IndexOf("&wrpPy_tyds_" + Id("Wrp.Fixture.Shapes.Shape") + "_Shape,", StringComparison.Ordinal);
            int rect = shapes.IndexOf("&wrpPy_tyds_" + Id("Wrp.Fixture.Shapes.Rectangle") + "_Rectangle,", StringComparison.Ordinal);
            Assert.True(component > 0 && component < shape && shape < rect);
            string root = GeneratedFixture.Function(modules, "PyObject* wrpPy_mlit_" + Id("orvane.fixture") + "_fixture()");
            Assert.Contains("if (PyModule_AddObject(module, \"shapes\", child) < 0)", root);
            Assert.Contains("if (PyDict_SetItemString(PyImport_GetModuleDict(), \"orvane.fixture.shapes\", child) < 0)", root);
            Assert.Contains("PyShlErr_TypeImportError(\"orvane.fixture.SaveKind\", 0);", root);
            string entry = _g.Read("cpp/wrp_entry.h");
            Assert.Contains("\"orvane.fixture\",", entry);
            Assert.Contains("\"WrpInterop.Fixture\",", entry);
            Assert.Contains("\"fixture\",", entry);
        }

        [Fact]
        public void EveryUnitIsIncludedByExactlyOneShard()
        {
            var shards = Enumerable.Range(0, 4).Select(i => _g.Read($"cpp/shard_{i:D2}.cpp")).ToList();
            var units = Directory.GetFiles(Path.Combine(_g.Root, "cpp", "units")).Select(Path.GetFileName).ToList();
            Assert.NotEmpty(units);
            foreach (var unit in units)
                Assert.Equal(1, shards.Count(s => s.Contains($"#include \"units/{unit}\"")));
            Assert.All(shards, s => Assert.StartsWith("// Shard", s));
        }

        [Fact]
        public void ExportedCapsulesArePublishedInTheModuleOfTheirType()
        {
            var o = GeneratedFixture.OptionsFor(Path.Combine(_g.Root, "unused"));
            o.ExportCapsules = true;
            using var loader = new Orvane.WrpGen.Metadata.AssemblyLoader(o.Assembly, Array.Empty<string>());
            var ctx = Orvane.WrpGen.Generator.Emit(Orvane.WrpGen.Generator.Analyse(loader, o));
            string unit = ctx.Units.Single(u => u.FileName == "units/capsule_export.inc").Render();
            string rect = Id("Wrp.Fixture.Shapes.Rectangle") + "_Rectangle";
            Assert.Contains($"static void* table_{rect}[2] = {{(void*)&wrpPy_conv_py_to_clr_{rect}, (void*)&wrpPy_conv_clr_to_py_{rect}}};", unit);
            Assert.Contains($"{{\"orvane.fixture.shapes\", \"_C_APIT_Rectangle\", \"orvane.fixture.shapes._C_APIT_Rectangle\", table_{rect}}},", unit);
            Assert.DoesNotContain("_C_APIT_SaveKind", unit);  // enums travel as integers
            Assert.Contains($"&wrpPy_cexp_{Id("orvane.fixture")}_fixture,", ctx.CppFiles["wrp_entry.h"]);
        }

        internal static string Id(string name) => Orvane.WrpGen.Passes.Naming.Id(name);
    }
}
