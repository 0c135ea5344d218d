"""The package imports through a real CoreCLR and builds its whole module tree."""
import ast
import enum
import os
import unittest

from support import clean_env, run_python

import orvane.folaro as f

SUBMODULES = ["animation", "charts", "dom", "effects", "export", "import", "ink", "lowcode",
              "mathtext", "slideshow", "smartart", "spreadsheet", "theme", "util", "vba", "warnings"]


class ModuleTreeTest(unittest.TestCase):
    def test_every_submodule_is_an_attribute_of_its_parent(self):
        for name in SUBMODULES:
            sub = getattr(f, name)
            self.assertEqual(sub.__name__, "orvane.folaro." + name)
        self.assertEqual(f.dom.ole.__name__, "orvane.folaro.dom.ole")
        self.assertEqual(f.export.web.__name__, "orvane.folaro.export.web")
        self.assertEqual(f.export.xaml.__name__, "orvane.folaro.export.xaml")

    def test_dom_holds_only_its_child_module(self):
        public = [n for n in vars(f.dom) if not n.startswith("_")]
        self.assertEqual(public, ["ole"])

    def test_private_wrapper_modules_exist(self):
        self.assertEqual(f._wrpgen._interop.__name__, "orvane.folaro._wrpgen._interop")
        self.assertEqual(f._wrpgen._generic.__name__, "orvane.folaro._wrpgen._generic")
        wrapper = f._wrpgen._interop._IDisposableWrapper
        self.assertEqual(wrapper.__name__, "_IDisposableWrapper")

    def test_submodules_are_importable_by_name(self):
        from orvane.folaro.export import web  # noqa: F401  (registered in sys.modules)
        import importlib
        self.assertIs(importlib.import_module("orvane.folaro.export.web"), f.export.web)


class StubsTest(unittest.TestCase):
    """Editors read the generated stubs beside the extension modules; imports still find the modules."""

    def stub(self, *parts):
        package = os.path.dirname(f.__file__)
        with open(os.path.join(package, *parts, "__init__.pyi"), encoding="utf-8") as source:
            return ast.parse(source.read())

    def classes(self, tree):
        return {node.name: node for node in tree.body if isinstance(node, ast.ClassDef)}

    def test_stubs_parse_and_name_the_bound_members(self):
        classes = self.classes(self.stub("folaro"))
        members = {n.name for n in classes["Table"].body if isinstance(n, ast.FunctionDef)}
        self.assertTrue({"__getitem__", "merge_cells", "rows"} <= members, members)
        members = {n.name for n in classes["SlideCollection"].body if isinstance(n, ast.FunctionDef)}
        self.assertTrue({"__len__", "__getitem__", "__iter__", "add_empty_slide"} <= members, members)
        self.assertIn("PdfOptions", self.classes(self.stub("folaro", "export")))
        self.assertIn("Color", self.classes(self.stub("pymarel")))
        self.assertTrue(os.path.isfile(os.path.join(os.path.dirname(f.__file__), "py.typed")))

    def test_the_stub_folders_do_not_hide_the_extension_modules(self):
        import orvane.pymarel as m
        for module in (f, m):
            self.assertTrue(module.__file__.endswith(".so"), module.__file__)


class TypesTest(unittest.TestCase):
    def test_types_carry_full_dotted_names(self):
        self.assertEqual(f.Presentation.__module__ + "." + f.Presentation.__qualname__,
                         "orvane.folaro.Presentation")
        self.assertEqual(repr(f.Presentation), "<class 'orvane.folaro.Presentation'>")

    def test_generated_types_cannot_be_subclassed(self):
        with self.assertRaises(TypeError):
            type("P", (f.Presentation,), {})

    def test_host_marker_and_interface_sets(self):
        d = vars(f.Presentation)
        self.assertIn("_orvane_clr_host", d)
        self.assertIsNone(d["_orvane_clr_host"])
        additional = d["_additional_interfaces"]
        self.assertIsInstance(additional, set)
        self.assertIn(f.IPresentation, additional)
        self.assertIn(f.IPresentationComponent, additional)
        self.assertIn(f._wrpgen._interop._IDisposableWrapper, additional)
        self.assertEqual(additional, d["_implicit_interfaces"])

    def test_class_without_public_constructor_refuses_construction(self):
        with self.assertRaises(TypeError) as cm:
            f.SlideCollection()
        self.assertEqual(str(cm.exception), "type has no available constructor")


class EnumTest(unittest.TestCase):
    def test_enums_are_int_enums_in_declaration_order(self):
        self.assertTrue(issubclass(f.NullableBool, enum.IntEnum))
        self.assertEqual([m.name for m in f.NullableBool], ["NOT_DEFINED", "FALSE", "TRUE"])

    def test_enum_values_are_the_managed_values(self):
        # The managed enum counts from its own values; the Python member
        # compares equal to the plain integer the binding returns.
        self.assertEqual(f.NullableBool.TRUE, int(f.NullableBool.TRUE))
        self.assertEqual(f.NullableBool(int(f.NullableBool.FALSE)), f.NullableBool.FALSE)
        self.assertIn("PPTX", f.SaveFormat.__members__)


class StaticMembersTest(unittest.TestCase):
    def test_static_fields_become_upper_case_class_attributes(self):
        for name in ("ASSEMBLY_VERSION", "FILE_VERSION", "PRODUCT"):
            self.assertIn(name, vars(f.BuildVersionInfo))
        self.assertIsInstance(f.BuildVersionInfo.PRODUCT, str)

    def test_static_property_is_read_once_at_import(self):
        first = f.PresentationFactory.instance
        self.assertIs(first, f.PresentationFactory.instance)
        self.assertIsNotNone(first)


class SecondModuleTest(unittest.TestCase):
    """orvane.pymarel shares the runtime: whichever module comes first starts it."""

    def check_order(self, first, second):
        code = (f"import {first}\nimport {second}\n"
                "import orvane.folaro as f, orvane.pymarel as m\n"
                "print(f.Presentation().first_slide_number, m.Color.red.r)\n")
        proc = run_python(code, env=clean_env(COREHOST_TRACE="1"))
        self.assertEqual(proc.returncode, 0, proc.stderr.decode())
        out = proc.stdout.decode()
        self.assertEqual(out.count("Creating default AppDomain..."), 1, out)
        self.assertEqual(out.count("Using existed module..."), 1, out)
        self.assertIn("1 255", out.splitlines(), out)
        self.assertEqual(proc.stderr, b"")

    def test_folaro_first(self):
        self.check_order("orvane.folaro", "orvane.pymarel")

    def test_pymarel_first(self):
        self.check_order("orvane.pymarel", "orvane.folaro")


if __name__ == "__main__":
    unittest.main()
