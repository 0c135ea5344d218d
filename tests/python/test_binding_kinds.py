"""Parameter and result kinds bound by the generator, through orvane.folaro itself:
streams, dates, collection types with their sequence slots, enum- and
collection-typed results."""
import io
import os
import tempfile
import unittest
import zipfile
from datetime import datetime, timedelta, timezone

from support import CORPUS_DIR

import orvane.folaro as f
from orvane.pyio import BufferStream

DECK = os.path.join(CORPUS_DIR, "python-pptx", "default.pptx")


def deck_with_slides(count):
    p = f.Presentation()
    layout = p.layout_slides[0]
    for _ in range(count):
        p.slides.add_empty_slide(layout)
    return p


def is_pptx(data):
    with zipfile.ZipFile(io.BytesIO(data)) as z:
        return "ppt/presentation.xml" in z.namelist()


class StreamTests(unittest.TestCase):
    def test_save_to_bytesio_and_load_back_from_it(self):
        p = deck_with_slides(3)
        out = io.BytesIO()
        self.assertIsNone(p.save(out, f.SaveFormat.PPTX))
        data = out.getvalue()
        self.assertTrue(is_pptx(data))
        # The stream overload with load options, and the plain one.
        again = f.Presentation(io.BytesIO(data), f.LoadOptions())
        self.assertEqual(len(again.slides), 3)
        self.assertEqual(len(f.Presentation(stream=io.BytesIO(data)).slides), 3)

    def test_load_from_an_open_file(self):
        with open(DECK, "rb") as fh:
            p = f.Presentation(fh)
            self.assertFalse(fh.closed)  # the caller keeps the file
        with open(DECK, "rb") as fh:
            expected = len(f.Presentation(DECK).slides)
        self.assertEqual(len(p.slides), expected)

    def test_save_to_an_open_file_and_a_buffer_stream(self):
        p = deck_with_slides(1)
        with tempfile.TemporaryFile() as fh:
            p.save(fh, f.SaveFormat.PPTX)
            fh.seek(0)
            written = fh.read()
        self.assertTrue(is_pptx(written))
        buffer = BufferStream()
        p.save(buffer, f.SaveFormat.PPTX)
        self.assertTrue(is_pptx(buffer.getvalue()))
        self.assertEqual(len(f.Presentation(io.BytesIO(buffer.getvalue())).slides), 1)

    def test_save_a_selection_of_slides_by_number(self):
        p = deck_with_slides(3)
        with tempfile.TemporaryDirectory() as d:
            path = os.path.join(d, "two.pptx")
            p.save(path, [1, 3], f.SaveFormat.PPTX)
            self.assertEqual(len(f.Presentation(path).slides), 2)
        out = io.BytesIO()
        p.save(out, [2], f.SaveFormat.PPTX)
        self.assertEqual(len(f.Presentation(io.BytesIO(out.getvalue())).slides), 1)

    def test_bad_stream_arguments(self):
        p = f.Presentation()
        with self.assertRaises(TypeError) as cm:
            p.save(io.StringIO(), f.SaveFormat.PPTX)
        # Every overload's message, the stream ones naming the text stream's type.
        messages = cm.exception.args[0]
        self.assertEqual(len(messages), 9)
        self.assertIn("can't build Stream from '_io.StringIO'", messages)
        with self.assertRaises(TypeError):
            f.Presentation(io.StringIO("x"))
        # A stream that is not a presentation fails in managed code.
        with self.assertRaises(RuntimeError):
            f.Presentation(io.BytesIO(b"not a zip"))


class SlideCollectionTests(unittest.TestCase):
    def setUp(self):
        self.p = deck_with_slides(4)
        self.slides = self.p.slides

    def test_len_and_indexing_with_negative_indices(self):
        s = self.slides
        self.assertEqual(len(s), 4)
        self.assertIsInstance(s[0], f.Slide)
        self.assertEqual(s[-1], s[3])
        self.assertEqual(s[-4], s[0])
        self.assertNotEqual(s[0], s[1])
        for bad in (4, -5, 2 ** 40):
            with self.assertRaises(IndexError) as cm:
                s[bad]
            self.assertEqual(str(cm.exception), "list index out of range")
        with self.assertRaises(TypeError) as cm:
            s["a"]
        self.assertEqual(str(cm.exception), "list indices must be integers or slices, not str")

    def test_slices_are_python_lists(self):
        s = self.slides
        items = [s[i] for i in range(4)]
        self.assertEqual(s[0:0], [])
        self.assertEqual(s[3:1], [])
        self.assertIs(type(s[:]), list)
        self.assertEqual(s[:], items)
        self.assertEqual(s[::2], items[::2])
        self.assertEqual(s[::-1], items[::-1])
        self.assertEqual(s[-2:], items[-2:])

    def test_iteration_containment_concat_and_repeat(self):
        s = self.slides
        items = list(s)
        self.assertEqual(len(items), 4)
        self.assertEqual(items, [s[i] for i in range(4)])
        self.assertTrue(all(type(x) is f.Slide for x in items))
        self.assertIn(items[2], s)
        other = deck_with_slides(1).slides[0]
        self.assertNotIn(other, s)
        # A value the element converter refuses fails with that converter's TypeError.
        with self.assertRaises(TypeError) as expected:
            s.index_of("slide")
        self.assertIn("ISlide", str(expected.exception))
        with self.assertRaises(TypeError) as cm:
            "slide" in s
        self.assertEqual(str(cm.exception), str(expected.exception))
        self.assertEqual(s + [1], items + [1])
        self.assertEqual(s * 2, items * 2)
        self.assertEqual(s * -1, [])
        self.assertEqual([x.slide_number for x in s.as_ienumerable], [1, 2, 3, 4])

    def test_slices_steps_and_bounds(self):
        s = self.slides
        items = [s[i] for i in range(4)]
        for target in (slice(None, None, 3), slice(3, None, -2), slice(-100, 100), slice(2 ** 40, None),
                       slice(None, -2 ** 40), slice(1, 3, 2 ** 40)):
            with self.subTest(target=target):
                self.assertEqual(s[target], items[target])
        for key in (2 ** 31, -2 ** 31 - 1, 2 ** 63 - 1):
            with self.subTest(key=key):
                with self.assertRaises(IndexError) as cm:
                    s[key]
                self.assertEqual(str(cm.exception), "list index out of range")
        with self.assertRaises(IndexError):
            s[-2 ** 100]  # beyond an index-sized integer
        self.assertEqual(s[True], s[1])
        with self.assertRaises(TypeError) as cm:
            s[1.0]
        self.assertEqual(str(cm.exception), "list indices must be integers or slices, not float")

    def test_concat_and_repetition_counts(self):
        s = self.slides
        items = list(s)
        self.assertEqual(s + (), items)
        self.assertEqual(s + iter([1, 2]), items + [1, 2])
        self.assertEqual(s + s, items + items)
        with self.assertRaises(ValueError) as cm:
            s + 5
        self.assertEqual(str(cm.exception), "argument must be iterable or sequence")
        for times in (0, -5):
            self.assertEqual(s * times, [])
        result = s * 3
        self.assertEqual(len(result), 12)
        self.assertTrue(all(result[i] is result[i % 4] for i in range(12)))  # each slide read once
        with self.assertRaises(MemoryError):
            s * 2 ** 62
        self.assertEqual(deck_with_slides(0).slides * 2 ** 62, [])

    def test_read_only_collections_refuse_assignment(self):
        with self.assertRaises(TypeError):
            self.slides[0] = self.slides[1]
        with self.assertRaises(TypeError):
            del self.slides[0]

    def test_other_collection_types(self):
        p = self.p
        self.assertEqual(len(p.masters), 1)
        master = p.masters[-1]
        self.assertIsInstance(master, f.MasterSlide)
        layouts = p.layout_slides
        self.assertGreater(len(layouts), 2)
        self.assertEqual(layouts[0:2], [layouts[0], layouts[1]])
        self.assertEqual(list(layouts)[-1], layouts[-1])
        shapes = master.shapes
        self.assertEqual(len(list(shapes)), len(shapes))


class ValueKindTests(unittest.TestCase):
    def test_current_date_time_round_trips(self):
        p = f.Presentation()
        self.assertIsInstance(p.current_date_time, datetime)
        p.current_date_time = datetime(2020, 1, 2, 3, 4, 5, 600000)
        self.assertEqual(p.current_date_time, datetime(2020, 1, 2, 3, 4, 5, 600000))
        with self.assertRaises(TypeError) as cm:
            p.current_date_time = "2020-01-02"
        self.assertEqual(str(cm.exception), "can't build DateTime from 'str'")

    def test_document_property_dates(self):
        props = f.Presentation().document_properties
        created = props.created_time
        self.assertIsInstance(created, datetime)
        when = datetime(2021, 6, 7, 8, 9, 10, tzinfo=timezone.utc)
        props.created_time = when
        self.assertEqual(props.created_time, when)
        # An aware value in another zone is the same instant.
        props.last_printed = datetime(2021, 6, 7, 10, 9, 10, tzinfo=timezone(timedelta(hours=2)))
        self.assertEqual(props.last_printed, when)
        props.set_custom_property_value("due", datetime(2022, 2, 3))
        self.assertEqual(props.get_custom_property_value_as_date_time("due").replace(tzinfo=None), datetime(2022, 2, 3))

    def test_enum_and_collection_typed_results(self):
        p = deck_with_slides(2)
        self.assertIs(type(p.source_format), int)
        self.assertEqual(f.SourceFormat(p.source_format), p.source_format)
        parts = p.all_custom_xml_parts
        self.assertEqual(len(parts), 0)
        self.assertEqual(list(parts), [])
        self.assertEqual([s.slide_number for s in p.slides.as_ienumerable], [1, 2])


if __name__ == "__main__":
    unittest.main()
