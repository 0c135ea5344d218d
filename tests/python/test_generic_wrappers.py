"""Typed collection wrappers (<root>._wrpgen._generic): typed arrays, enumerables and
enumerators of the presentation API's own types, and of numbers and strings through
the probe module (run in a child process: the two modules do not share one process)."""
import datetime
import json
import os
import tempfile
import textwrap
import unittest

from support import BUILD_DIR, STAGE_DIR, clean_env, run_python

import orvane.folaro as f
import orvane.pymarel as m

GENERIC = "orvane.folaro._wrpgen._generic"


def error_of(fn, *args):
    try:
        fn(*args)
    except Exception as e:  # the error itself is what the caller compares
        return e
    raise AssertionError(f"{fn} did not raise")


class DeckCase(unittest.TestCase):
    def setUp(self):
        self.p = f.Presentation()
        for layout in (self.p.layout_slides[0], self.p.layout_slides[1]):
            self.p.slides.add_empty_slide(layout)


class EnumerationTests(DeckCase):
    def test_collections_iterate_with_their_typed_enumerator(self):
        it = iter(self.p.slides)
        self.assertEqual(type(it).__module__, GENERIC)
        self.assertTrue(type(it).__name__.startswith("_IterWrapper_"), type(it).__name__)
        self.assertIs(iter(it), it)
        self.assertIs(type(next(it)), f.Slide)  # the most derived type of an ISlide
        self.assertIs(type(next(it)), f.Slide)
        self.assertRaises(StopIteration, next, it)
        self.assertRaises(StopIteration, next, it)
        self.assertEqual(list(self.p.slides), [self.p.slides[0], self.p.slides[1]])

    def test_each_element_type_has_its_own_instantiation(self):
        shapes = self.p.slides[0].shapes
        self.assertGreater(len(shapes), 0)
        self.assertTrue(all(type(s) is f.AutoShape for s in shapes))
        slide_iter, shape_iter = type(iter(self.p.slides)), type(iter(shapes))
        self.assertNotEqual(slide_iter, shape_iter)
        # The same identifier names every piece of one instantiation.
        ident = slide_iter.__name__.rsplit("_", 1)[1]
        generic = __import__(GENERIC, fromlist=["_"])
        self.assertTrue(hasattr(generic, "_IterableWrapper_" + ident))
        self.assertIs(type(self.p.slides.get_enumerator()), slide_iter)

    def test_typed_enumerable_result_keeps_the_collection_type(self):
        # SlideCollection lists the typed iterable of ISlide among its interfaces,
        # so the enumerable result is the collection itself.
        e = self.p.slides.as_ienumerable
        self.assertIs(type(e), f.SlideCollection)
        self.assertEqual(e, self.p.slides)
        self.assertEqual([type(s) for s in e], [f.Slide, f.Slide])

    def test_enumerator_survives_its_collection(self):
        it = iter(self.p.slides[0].shapes)
        first = next(it)
        self.assertIs(type(first), f.AutoShape)
        self.assertEqual(len(list(it)), len(self.p.slides[0].shapes) - 1)


class TypedArrayTests(DeckCase):
    def setUp(self):
        super().setUp()
        self.slide = self.p.slides[0]
        author = self.p.comment_authors.add_author("Ann", "A")
        self.comments = author.comments
        for text in ("one", "two", "three"):
            author.comments.add_comment(text, self.slide, m.PointF(1.0, 2.0), datetime.datetime(2024, 1, 2))

    def test_array_result_holds_most_derived_elements(self):
        arr = self.slide.get_slide_comments(None)
        self.assertEqual(type(arr).__module__, GENERIC)
        self.assertTrue(type(arr).__name__.startswith("_ArrayWrapper_"), type(arr).__name__)
        self.assertEqual(len(arr), 3)
        self.assertEqual(arr.length, 3)
        self.assertTrue(all(type(c) is f.Comment for c in arr))
        self.assertEqual([c.text for c in arr], ["one", "two", "three"])
        self.assertEqual([c.text for c in arr[::-1]], ["three", "two", "one"])
        self.assertIs(type(arr[1:]), list)
        self.assertEqual(arr[-1].text, "three")
        with self.assertRaises(IndexError) as cm:
            arr[3]
        self.assertEqual(str(cm.exception), "list index out of range")

    def test_search_and_assignment_use_the_element_converter(self):
        arr = self.slide.get_slide_comments(None)
        first, last = arr[0], arr[2]
        self.assertEqual(arr.index(last), 2)
        self.assertIn(first, arr)
        self.assertEqual(arr.count(first), 1)
        arr[0] = last
        self.assertEqual(arr.count(last), 2)
        # A wrong-typed value fails with the IComment converter's own TypeError.
        expected = str(error_of(self.comments.index_of, "x"))
        self.assertIn("IComment", expected)
        for op in (lambda: arr.__setitem__(1, "x"), lambda: arr.index("x"), lambda: arr.count("x"),
                   lambda: "x" in arr):
            with self.assertRaises(TypeError) as cm:
                op()
            self.assertEqual(str(cm.exception), expected)
        self.assertEqual(arr[1].text, "two")
        with self.assertRaises(ValueError) as cm:
            del arr[0]
        self.assertEqual(str(cm.exception), "elements removing not supported")

    def test_empty_array(self):
        arr = self.p.slides[1].get_slide_comments(None)
        self.assertEqual(len(arr), 0)
        self.assertEqual(list(arr), [])
        self.assertEqual(arr * 3, [])

    def test_typed_int_array_parameter_refuses_a_wrong_element(self):
        with tempfile.TemporaryDirectory(prefix="orvane-test-") as folder:
            out = os.path.join(folder, "deck.pptx")
            with self.assertRaises(TypeError) as cm:
                self.p.save(out, [1, "x"], f.SaveFormat.PPTX)
            self.assertIn("can't build 'Int32' from 'str'", str(cm.exception))
            self.assertFalse(os.path.exists(out))
            self.p.save(out, [2], f.SaveFormat.PPTX)  # slide numbers count from 1
            self.assertEqual(len(f.Presentation(out).slides), 1)


PROBE_CHECKS = textwrap.dedent("""
    import json
    import orvane_probe as probe
    C = probe.Collections
    out = {}

    def err(fn, *args):
        try:
            fn(*args)
        except Exception as e:
            return [type(e).__name__, str(e)]
        return None

    a = C.int_array(5)
    out["array_type"] = [type(a).__module__, type(a).__name__, type(iter(a)).__name__]
    out["array"] = [a[0], a[-1], a[1:4], a[::-2], list(a), a + [9], 0 in a, 5 in a]
    out["contains_error"] = err(a.__contains__, "0")
    out["sum_typed"] = [C.sum_typed([1, 2, 3]), C.sum_array(a), C.sum_array((4, 5)), C.join_typed(iter(["x", "y"]))]
    out["int_param_error"] = err(C.int_array, "b")
    out["array_element_error"] = err(C.sum_array, [1, "b"])
    out["sequence_element_error"] = err(C.sum_array, (1, "b"))
    a[0] = 7
    out["store_error"] = err(a.__setitem__, 1, "b")
    out["after_store"] = list(a)
    s = C.string_array(["a", "b"])
    out["string_array"] = [type(s).__name__, list(s), s[-1], s.index("b"), type(next(iter(s))).__name__]
    out["string_element_error"] = err(C.string_array, ["a", 2])
    out["iterable_element_error"] = err(C.join_typed, (x for x in ["a", 2]))
    print(json.dumps(out))
""")


class ProbeTypedWrapperTests(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        env = clean_env()
        env["PYTHONPATH"] = os.path.join(BUILD_DIR, "probe")
        env["NETCORE_WRAPPER_ASSEMBLY_DIR_orvane"] = os.path.join(BUILD_DIR, "probe", "assemblies")
        env["NETCORE_WRAPPER_NETCORE_DIR_orvane"] = os.path.join(STAGE_DIR, "orvane", "runtime")
        proc = run_python(PROBE_CHECKS, env=env)
        if proc.returncode != 0:
            raise AssertionError(proc.stderr.decode(errors="replace"))
        cls.out = json.loads(proc.stdout.decode())

    def test_int_array_is_a_typed_array_wrapper(self):
        module, array, iterator = self.out["array_type"]
        self.assertEqual(module, "orvane_probe._wrpgen._generic")
        self.assertTrue(array.startswith("_ArrayWrapper_"))
        self.assertEqual(iterator, "_IterWrapper_" + array.rsplit("_", 1)[1])
        self.assertEqual(self.out["array"], [0, 4, [1, 2, 3], [4, 2, 0], [0, 1, 2, 3, 4], [0, 1, 2, 3, 4, 9], True, False])
        self.assertEqual(self.out["contains_error"], self.out["int_param_error"])

    def test_typed_parameters_take_python_containers(self):
        self.assertEqual(self.out["sum_typed"], [6, 10, 9, "x,y"])

    def test_wrong_elements_fail_with_the_element_converters_type_error(self):
        expected = self.out["int_param_error"]
        self.assertEqual(expected[0], "TypeError")
        self.assertEqual(self.out["array_element_error"], expected)
        self.assertEqual(self.out["sequence_element_error"], expected)
        self.assertEqual(self.out["store_error"], expected)
        self.assertEqual(self.out["after_store"], [7, 1, 2, 3, 4])
        self.assertEqual(self.out["string_element_error"][0], "TypeError")
        self.assertEqual(self.out["iterable_element_error"], self.out["string_element_error"])

    def test_string_array_keeps_str_elements(self):
        name, items, last, position, element = self.out["string_array"]
        self.assertTrue(name.startswith("_ArrayWrapper_"))
        self.assertEqual((items, last, position, element), (["a", "b"], "b", 1, "str"))


if __name__ == "__main__":
    unittest.main()
