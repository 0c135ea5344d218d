"""A presentation made, saved and loaded from Python, with the calling conventions around it."""
import io
import json
import os
import re
import shutil
import subprocess
import tempfile
import unittest
import zipfile

from support import CORPUS_DIR, clean_env, run_python

import orvane.folaro as f


class TempDirCase(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.mkdtemp(prefix="orvane-test-")
        self.addCleanup(shutil.rmtree, self.dir, True)

    def path(self, name):
        return os.path.join(self.dir, name)


class MakeAndSaveTest(TempDirCase):
    def test_new_deck_saves_as_pptx_and_loads_back(self):
        p = f.Presentation()
        out = self.path("deck.pptx")
        p.save(out, f.SaveFormat.PPTX)
        with zipfile.ZipFile(out) as z:
            names = z.namelist()
            self.assertIn("[Content_Types].xml", names)
            self.assertIn("ppt/presentation.xml", names)
            content_types = z.read("[Content_Types].xml").decode()
        self.assertIn("application/vnd.openxmlformats-officedocument.presentationml.presentation.main+xml",
                      content_types)
        again = f.Presentation(out)
        self.assertEqual(again.slides.count, p.slides.count)
        self.assertEqual(again.layout_slides.count, p.layout_slides.count)
        self.assertEqual(again.masters.count, 1)

    @unittest.skipUnless(shutil.which("soffice"), "LibreOffice is not installed")
    def test_libreoffice_converts_the_saved_deck(self):
        out = self.path("deck.pptx")
        f.Presentation().save(out, f.SaveFormat.PPTX)
        subprocess.run(["soffice", "--headless", "--convert-to", "pdf", "--outdir", self.dir, out],
                       check=True, capture_output=True, timeout=300,
                       env=dict(os.environ, HOME=self.dir))
        with open(self.path("deck.pdf"), "rb") as pdf:
            self.assertEqual(pdf.read(5), b"%PDF-")

    def test_corpus_deck_loads(self):
        deck = os.path.join(CORPUS_DIR, "python-pptx", "default.pptx")
        p = f.Presentation(deck)
        self.assertGreaterEqual(p.layout_slides.count, 1)


class ConstructorDispatchTest(TempDirCase):
    def test_keyword_selects_the_file_overloads(self):
        out = self.path("deck.pptx")
        f.Presentation().save(out, f.SaveFormat.PPTX)
        self.assertIsNotNone(f.Presentation(file=out))
        self.assertIsNotNone(f.Presentation(file=out, load_options=f.LoadOptions()))

    def test_none_selects_the_load_options_overload(self):
        self.assertEqual(f.Presentation(None).slides.count, 0)

    def test_no_matching_overload_lists_every_candidate(self):
        with self.assertRaises(TypeError) as cm:
            f.Presentation(1, 2, 3)
        messages = cm.exception.args[0]
        self.assertIsInstance(messages, list)
        # One message per bound constructor overload, each a str.
        self.assertGreaterEqual(len(messages), 4)
        self.assertTrue(all(isinstance(m, str) for m in messages))

    def test_managed_exception_in_constructor_becomes_runtime_error(self):
        with self.assertRaises(RuntimeError) as cm:
            f.Presentation(self.path("missing.pptx"))
        self.assertRegex(str(cm.exception), r"^Proxy error\(System\.IO\.FileNotFoundException\): ")

    def test_wrong_object_type_names_the_parameter_type(self):
        with self.assertRaises(TypeError) as cm:
            f.Presentation(file=self.path("x.pptx"), load_options=f.Presentation())
        self.assertIn("can't build LoadOptions value from 'orvane.folaro.Presentation'", str(cm.exception))


class PythonFileStreamTest(unittest.TestCase):
    """Decks saved into and loaded from Python file objects that misbehave."""

    class Raw(io.RawIOBase):
        def __init__(self, data=b"", count=None):
            self.source = io.BytesIO(data)
            self.count = count or (lambda requested, done: done)
            self.kept = []

        def readable(self):
            return True

        def writable(self):
            return True

        def readinto(self, b):
            view = memoryview(b)
            done = self.source.readinto(view)
            return self.count(view.nbytes, done)

        def write(self, b):
            view = memoryview(b)
            self.kept.append((view, bytes(view)))
            return self.count(view.nbytes, view.nbytes)

    def deck_bytes(self):
        buffer = io.BytesIO()
        f.Presentation().save(buffer, f.SaveFormat.PPTX)
        return buffer.getvalue()

    def test_a_well_behaved_raw_file_round_trips(self):
        target = self.Raw()
        f.Presentation().save(target, f.SaveFormat.PPTX)
        # The file kept every view it was given; each still shows what was written.
        for view, copy in target.kept:
            self.assertEqual(bytes(view), copy)
        data = b"".join(copy for _, copy in target.kept)
        self.assertEqual(f.Presentation(self.Raw(data)).masters.count, 1)

    def test_save_refuses_write_counts_outside_the_request(self):
        answers = (
            (lambda requested, done: -1, r"OSError: write\(\) returned invalid length -1 "),
            (lambda requested, done: "many", r"OSError: write\(\) returned a length of type 'str'"),
        )
        for count, message in answers:
            with self.subTest(message=message):
                with self.assertRaisesRegex(RuntimeError, message):
                    f.Presentation().save(self.Raw(count=count), f.SaveFormat.PPTX)
        with self.assertRaises(RuntimeError) as cm:
            f.Presentation().save(self.Raw(count=lambda requested, done: requested + 1), f.SaveFormat.PPTX)
        found = re.search(r"OSError: write\(\) returned invalid length (\d+) \(should have been between 0 and (\d+)\)",
                          str(cm.exception))
        self.assertIsNotNone(found, str(cm.exception))
        self.assertEqual(int(found.group(1)), int(found.group(2)) + 1)

    def test_load_refuses_readinto_counts_beyond_the_request(self):
        data = self.deck_bytes()
        with self.assertRaisesRegex(RuntimeError, r"OSError: readinto\(\) returned invalid length (\d+) "
                                                  r"\(should have been between 0 and (\d+)\)"):
            f.Presentation(self.Raw(data, count=lambda requested, done: requested + 1))
        self.assertEqual(f.Presentation(self.Raw(data)).masters.count, 1)


class MembersTest(unittest.TestCase):
    def setUp(self):
        self.p = f.Presentation()

    def test_int_property_round_trips_and_enum_property_is_plain_int(self):
        self.p.first_slide_number = 7
        self.assertEqual(self.p.first_slide_number, 7)
        self.assertIs(type(self.p.source_format), int)

    def test_setter_conversion_failure_does_not_reach_managed_code(self):
        with self.assertRaises(TypeError) as cm:
            self.p.first_slide_number = "x"
        self.assertEqual(str(cm.exception), "can't build 'Int32' from 'str'")
        self.assertEqual(self.p.first_slide_number, 1)

    def test_single_overload_method_reports_the_converter_error(self):
        with self.assertRaises(TypeError) as cm:
            self.p.get_slide_by_id("x")
        self.assertEqual(str(cm.exception), "can't build 'UInt32' from 'str'")

    def test_dispatcher_with_no_match_raises_a_list(self):
        with self.assertRaises(TypeError) as cm:
            self.p.save()
        self.assertIsInstance(cm.exception.args[0], list)

    def test_interface_result_has_the_most_derived_type(self):
        # Declared as ISlideCollection, shown as the runtime class.
        self.assertIs(type(self.p.slides), f.SlideCollection)

    def test_equality_and_hash_follow_the_managed_object(self):
        a, b = self.p.slides, self.p.slides
        self.assertIsNot(a, b)
        self.assertEqual(a, b)
        self.assertFalse(a != b)
        self.assertEqual(hash(a), hash(b))
        self.assertNotEqual(a, self.p.layout_slides)
        with self.assertRaises(TypeError):
            a < b  # noqa: B015

    def test_repr_is_the_managed_text(self):
        self.assertEqual(repr(self.p), str(self.p))
        self.assertTrue(str(self.p))

    def test_context_manager_disposes(self):
        with f.Presentation() as p:
            self.assertIsInstance(p, f.Presentation)


# Run in a child process: reading a foreign object as a managed handle ends it.
FOREIGN_OBJECT_CHECKS = """
import io
import json
import orvane.folaro as f
out = {}


class Imitation:
    # The names a wrapper type carries, on a Python class.
    __slots__ = ("payload",)
    _orvane_clr_host = None
    _additional_interfaces = {f.ISlide}
    _implicit_interfaces = {f.ISlide}


imitation = Imitation()
imitation.payload = object()
pres = f.Presentation()
pres.slides.add_empty_slide(pres.layout_slides[0])


def outcome(fn, *args):
    try:
        fn(*args)
    except Exception as e:
        return type(e).__name__
    return "accepted"


def probe_all(value):
    return [outcome(f.Presentation, value), outcome(pres.slides.index_of, value),
            outcome(pres.slides.add_clone, value)]


class Sink(io.RawIOBase):
    def writable(self):
        return True

    def write(self, b):
        if "view" not in out:
            out["view marked"] = hasattr(type(b), "_orvane_clr_host")
            out["view"] = probe_all(b)
        return memoryview(b).nbytes


f.Presentation().save(Sink(), f.SaveFormat.PPTX)
out["imitation"] = probe_all(imitation)
out["slides"] = len(pres.slides)
print(json.dumps(out))
"""


class ForeignObjectTest(unittest.TestCase):
    def test_buffer_views_and_imitations_are_refused_with_type_errors(self):
        proc = run_python(FOREIGN_OBJECT_CHECKS, env=clean_env())
        self.assertEqual(proc.returncode, 0, proc.stderr.decode(errors="replace"))
        out = json.loads(proc.stdout.decode())
        self.assertIs(out["view marked"], False)
        self.assertEqual(out["view"], ["TypeError"] * 3)
        self.assertEqual(out["imitation"], ["TypeError"] * 3)
        self.assertEqual(out["slides"], 1)

class ProcessExitTest(TempDirCase):
    def test_saving_process_exits_cleanly_every_time(self):
        out = self.path("deck.pptx")
        code = ("import orvane.folaro as f; p = f.Presentation(); "
                f"p.save({out!r}, f.SaveFormat.PPTX); f.Presentation({out!r})")
        for _ in range(100):
            proc = run_python(code, env=clean_env(), timeout=60)
            self.assertEqual((proc.returncode, proc.stderr), (0, b""))


if __name__ == "__main__":
    unittest.main()
