"""Managed collections, enumerables and streams seen from Python, and Python
containers and file objects seen from managed code, through the probe module
(orvane_probe, class Collections)."""
import io
import json
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

import orvane_probe as probe
from support import SOURCE_DIR

# Stream parameters also accept orvane.pyio.BufferStream, which the conversion
# imports by name; the pure-Python package comes from the source tree (this
# process must not load the presentation module).
sys.path.append(os.path.join(SOURCE_DIR, "python"))
from orvane.pyio import BufferStream  # noqa: E402

C = probe.Collections


def pattern(n):
    return bytes(i % 251 for i in range(n))


def assert_message(test, exc_type, message, fn, *args, **kwargs):
    with test.assertRaises(exc_type) as cm:
        fn(*args, **kwargs)
    test.assertEqual(str(cm.exception), message)
    return cm.exception


class ListLikeChecks:
    """Checks shared by the list, array-list and collection-base wrappers (made by self.make(n))."""

    TYPE_PREFIX = ""

    def test_type_and_length(self):
        x = self.make(5)
        self.assertTrue(type(x).__name__.startswith(self.TYPE_PREFIX), type(x).__name__)
        self.assertEqual(len(x), 5)
        self.assertEqual(x.length, 5)
        self.assertEqual(len(self.make(0)), 0)

    def test_item_read(self):
        x = self.make(5)
        self.assertEqual([x[i] for i in range(5)], [0, 1, 2, 3, 4])
        self.assertEqual(x[-1], 4)
        self.assertEqual(x[-5], 0)
        for index in (5, -6, 2 ** 31 - 1):
            with self.subTest(index=index):
                assert_message(self, IndexError, "list index out of range", x.__getitem__, index)
        for key, name in (("a", "str"), (1.0, "float"), (None, "NoneType")):
            with self.subTest(key=key):
                assert_message(self, TypeError, "list indices must be integers or slices, not %s" % name,
                               x.__getitem__, key)

    def test_slices_are_python_lists(self):
        x = self.make(5)
        cases = [slice(1, 4), slice(None, None, -1), slice(5, 2), slice(None, None, 2), slice(-2, None),
                 slice(-100, 100), slice(4, 0, -2), slice(3, 3)]
        for s in cases:
            with self.subTest(slice=s):
                result = x[s]
                self.assertIs(type(result), list)
                self.assertEqual(result, list(range(5))[s])

    def test_iteration_and_membership(self):
        x = self.make(4)
        self.assertEqual(list(x), [0, 1, 2, 3])
        self.assertEqual(list(x), [0, 1, 2, 3])
        self.assertIn(3, x)
        self.assertNotIn(7, x)
        self.assertTrue(x.contains(0))
        self.assertFalse(x.contains(9))
        self.assertEqual(x.count(2), 1)
        self.assertEqual(x.count(9), 0)

    def test_index(self):
        x = self.make(5)
        self.assertEqual(x.index(3), 3)
        self.assertEqual(x.index(3, 1), 3)
        self.assertEqual(x.index(3, 1, 4), 3)
        for args in ((9,), (3, 4), (3, 0, 2)):
            with self.subTest(args=args):
                assert_message(self, ValueError, "value is not in list", x.index, *args)

    def test_item_write(self):
        x = self.make(5)
        x[0] = 10
        x[-1] = 40
        self.assertEqual(list(x), [10, 1, 2, 3, 40])
        for index in (5, -6):
            with self.subTest(index=index):
                assert_message(self, IndexError, "list index out of range", x.__setitem__, index, 1)
        with self.assertRaises(TypeError):
            x[0] = object()

    def test_slice_assignment_keeps_the_size(self):
        x = self.make(5)
        x[0:2] = [7, 8]
        self.assertEqual(list(x), [7, 8, 2, 3, 4])
        x[::2] = (10, 11, 12)
        self.assertEqual(list(x), [10, 8, 11, 3, 12])
        x[3:] = range(2)
        self.assertEqual(list(x), [10, 8, 11, 0, 1])
        x[::-1] = [0, 1, 2, 3, 4]
        self.assertEqual(list(x), [4, 3, 2, 1, 0])
        x[2:2] = []
        self.assertEqual(len(x), 5)
        for value, size, target in (([1, 2, 3], 3, slice(0, 2)), ([], 0, slice(0, 1)), ((1,), 1, slice(None, None, 2))):
            with self.subTest(value=value, target=target):
                expected_len = len(range(5)[target])
                assert_message(self, ValueError,
                               "attempt to assign sequence of size %d to extended slice of size %d" % (size, expected_len),
                               x.__setitem__, target, value)
        for value in (5, iter([1, 2]), (i for i in range(2))):
            with self.subTest(value=value):
                assert_message(self, TypeError, "must assign iterable to extended slice", x.__setitem__, slice(0, 2), value)
        self.assertEqual(list(x), [4, 3, 2, 1, 0])

    def test_slice_assignment_from_a_managed_sequence(self):
        x = self.make(5)
        x[1:3] = C.list_of_ints(2)
        self.assertEqual(list(x), [0, 0, 1, 3, 4])
        x[::2] = C.int_array(3)
        self.assertEqual(list(x), [0, 0, 1, 3, 2])

    def test_concat_and_repeat_give_python_lists(self):
        x = self.make(3)
        for other in ([5], (5,), range(5, 6), (i for i in [5]), C.list_of_ints(1)):
            with self.subTest(other=type(other).__name__):
                result = x + other
                self.assertIs(type(result), list)
                self.assertEqual(result[:3], [0, 1, 2])
                self.assertEqual(len(result), 4)
        assert_message(self, ValueError, "argument must be iterable or sequence", lambda: x + 5)
        self.assertEqual(x * 2, [0, 1, 2, 0, 1, 2])
        self.assertEqual(2 * x, [0, 1, 2, 0, 1, 2])
        self.assertEqual(x * 0, [])
        self.assertEqual(x * -3, [])
        copied = x.copy()
        self.assertIs(type(copied), list)
        self.assertEqual(copied, [0, 1, 2])

    def test_repetition_counts(self):
        x = self.make(3)
        self.assertEqual(x * 1, [0, 1, 2])
        self.assertIsNot(x * 1, x * 1)  # a new list every time
        self.assertEqual(x * 3, [0, 1, 2] * 3)
        for times in (0, -1, -2 ** 62):
            with self.subTest(times=times):
                self.assertEqual(x * times, [])
        with self.assertRaises(MemoryError):
            x * 2 ** 62
        self.assertEqual(self.make(0) * 2 ** 62, [])
        self.assertEqual(list(x), [0, 1, 2])

    def test_bad_keys_in_assignment_and_deletion(self):
        x = self.make(3)
        for key, name in (("a", "str"), (1.5, "float"), ((0, 1), "tuple")):
            with self.subTest(key=key):
                assert_message(self, TypeError, "list indices must be integers or slices, not %s" % name,
                               x.__setitem__, key, 1)
                assert_message(self, TypeError, "list indices must be integers or slices, not %s" % name,
                               x.__delitem__, key)
        with self.assertRaises(IndexError):
            x[2 ** 100] = 1
        self.assertEqual(list(x), [0, 1, 2])

    def test_slice_assignment_with_steps_and_wrong_sizes(self):
        x = self.make(6)
        x[::-2] = [50, 30, 10]
        self.assertEqual(list(x), [0, 10, 2, 30, 4, 50])
        x[4:0:-3] = (40, 10)
        self.assertEqual(list(x), [0, 10, 2, 30, 40, 50])
        x[100:] = []
        x[-100:1] = [7]
        self.assertEqual(list(x), [7, 10, 2, 30, 40, 50])
        cases = (
            (slice(None, None, 2), range(2), 2, 3),
            (slice(None, None, -3), [1, 2, 3], 3, 2),
            (slice(0, 2), C.list_of_ints(3), 3, 2),
            (slice(1, 1), (5,), 1, 0),
        )
        for target, value, size, length in cases:
            with self.subTest(target=target, value=type(value).__name__):
                assert_message(self, ValueError,
                               "attempt to assign sequence of size %d to extended slice of size %d" % (size, length),
                               x.__setitem__, target, value)
        self.assertEqual(list(x), [7, 10, 2, 30, 40, 50])
        # Element by element: what was written before a failing element stays.
        with self.assertRaises(TypeError):
            x[0:3] = [1, object(), 3]
        self.assertEqual(list(x), [1, 10, 2, 30, 40, 50])

    def test_sort_and_reverse(self):
        x = self.make(5)
        x.reverse()
        self.assertEqual(list(x), [4, 3, 2, 1, 0])
        x.sort()
        self.assertEqual(list(x), [0, 1, 2, 3, 4])
        x.sort(reverse=True)
        self.assertEqual(list(x), [4, 3, 2, 1, 0])
        x.sort(key=None)
        self.assertEqual(list(x), [0, 1, 2, 3, 4])
        assert_message(self, ValueError, "custom sorting key is not supported", x.sort, key=abs)


class GrowableChecks(ListLikeChecks):
    """Checks of wrappers that can add and remove elements."""

    def test_append_insert_extend(self):
        x = self.make(2)
        self.assertIsNone(x.append(5))
        x.insert(0, -1)
        x.extend([6, 7])
        x.extend((8,))
        x.extend(range(9, 11))
        x.extend(i for i in [11])
        x.extend(C.list_of_ints(2))
        self.assertEqual(list(x), [-1, 0, 1, 5, 6, 7, 8, 9, 10, 11, 0, 1])
        assert_message(self, ValueError, "argument must be iterable or sequence", x.extend, 5)

    def test_inplace_operators_keep_the_wrapper(self):
        x = self.make(2)
        y = x
        y += [2, 3]
        self.assertIs(y, x)
        self.assertEqual(list(x), [0, 1, 2, 3])
        y *= 2
        self.assertIs(y, x)
        self.assertEqual(list(x), [0, 1, 2, 3, 0, 1, 2, 3])

    def test_pop(self):
        x = self.make(4)
        self.assertEqual(x.pop(), 3)
        self.assertEqual(x.pop(0), 0)
        self.assertEqual(x.pop(None), 2)
        self.assertEqual(list(x), [1])
        assert_message(self, IndexError, "pop index out of range", x.pop, 5)
        assert_message(self, TypeError, "argument should be integer or None, not 'str'", x.pop, "0")
        assert_message(self, TypeError, "pop() takes at most 1 argument (2 given)", x.pop, 0, 1)
        x.pop()
        assert_message(self, IndexError, "pop from empty list", x.pop)

    def test_remove_and_clear(self):
        x = self.make(4)
        x.remove(2)
        self.assertEqual(list(x), [0, 1, 3])
        assert_message(self, ValueError, "list.remove(x): x not in list", x.remove, 2)
        self.assertIsNone(x.clear())
        self.assertEqual(len(x), 0)

    def test_item_and_slice_delete(self):
        x = self.make(5)
        del x[0]
        self.assertEqual(list(x), [1, 2, 3, 4])
        del x[-1]
        self.assertEqual(list(x), [1, 2, 3])
        assert_message(self, IndexError, "list index out of range", x.__delitem__, 3)
        x = self.make(5)
        del x[::2]
        self.assertEqual(list(x), [1, 3])
        x = self.make(6)
        del x[1:4]
        self.assertEqual(list(x), [0, 4, 5])
        del x[3:1]
        self.assertEqual(list(x), [0, 4, 5])
        x = self.make(6)
        del x[::-2]
        self.assertEqual(list(x), [0, 2, 4])
        del x[:]
        self.assertEqual(len(x), 0)


    def test_slice_delete_with_steps(self):
        x = self.make(7)
        del x[::3]
        self.assertEqual(list(x), [1, 2, 4, 5])
        del x[10:20]
        del x[3:0]
        self.assertEqual(list(x), [1, 2, 4, 5])
        del x[-1:-4:-2]
        self.assertEqual(list(x), [1, 4])
        del x[-100:1]
        self.assertEqual(list(x), [4])


class IListTests(GrowableChecks, unittest.TestCase):
    TYPE_PREFIX = "_IListWrapper"

    def make(self, n):
        return C.list_of_ints(n)

    def test_typed_list_refuses_other_element_types(self):
        x = self.make(2)
        with self.assertRaisesRegex(RuntimeError, r"^Proxy error\(System\.ArgumentException\)"):
            x[0] = "text"
        with self.assertRaisesRegex(RuntimeError, r"^Proxy error\(System\.ArgumentException\)"):
            x.append("text")
        self.assertEqual(list(x), [0, 1])


class ArrayListTests(GrowableChecks, unittest.TestCase):
    TYPE_PREFIX = "_ArrListWrapper"

    def make(self, n):
        return C.array_list_of(n)

    def test_elements_of_any_kind(self):
        x = self.make(0)
        for value in ("text", None, 2.5, True, 2 ** 40, b"ab"):
            x.append(value)
        self.assertEqual(list(x), ["text", None, 2.5, True, 2 ** 40, bytearray(b"ab")])
        self.assertIs(type(x[3]), bool)

    def test_repetition_reads_each_element_once(self):
        x = self.make(0)
        x.extend([2 ** 40, "text"])  # objects made anew by every read
        self.assertIsNot(x[0], x[0])
        result = x * 3
        self.assertEqual(result, [2 ** 40, "text"] * 3)
        for i in range(2, 6):
            self.assertIs(result[i], result[i % 2])


class CollectionBaseTests(GrowableChecks, unittest.TestCase):
    TYPE_PREFIX = "_ColBaseWrapper"

    def make(self, n):
        return C.new_collection_base(n)


class ArrayTests(ListLikeChecks, unittest.TestCase):
    TYPE_PREFIX = "_ArrayWrapper"

    def make(self, n):
        return C.int_array(n)

    def test_fixed_size(self):
        a = self.make(3)
        for target in (0, -1, slice(None), slice(0, 1)):
            with self.subTest(target=target):
                assert_message(self, ValueError, "elements removing not supported", a.__delitem__, target)
        self.assertEqual(list(a), [0, 1, 2])
        self.assertFalse(hasattr(a, "append"))
        self.assertFalse(hasattr(a, "pop"))
        b = a
        b += [3]
        self.assertIs(type(b), list)
        self.assertEqual(b, [0, 1, 2, 3])
        c = a
        c *= 2
        self.assertIs(type(c), list)
        self.assertEqual(len(a), 3)

    def test_string_arrays(self):
        a = C.string_array(["b", "a", "\u20ac", ""])
        self.assertEqual(list(a), ["b", "a", "\u20ac", ""])
        a.sort()
        self.assertEqual(a[0], "")
        self.assertEqual(set(a), {"a", "b", "\u20ac", ""})
        self.assertEqual(list(C.string_array(("x", "y"))), ["x", "y"])
        self.assertIsNone(C.string_array(None))
        assert_message(self, TypeError, "can't build Array value from 'int'", C.string_array, 5)


class CollectionTests(unittest.TestCase):
    def test_sized_collection(self):
        c = C.miscounted(3, 3)
        self.assertTrue(type(c).__name__.startswith("_IColWrapper"), type(c).__name__)
        self.assertEqual(len(c), 3)
        self.assertEqual(c.length, 3)
        self.assertIn(1, c)
        self.assertTrue(c.contains(2))
        self.assertFalse(c.contains(3))
        self.assertEqual(c.count(0), 1)
        self.assertEqual(list(c), [0, 1, 2])
        self.assertEqual(c + [9], [0, 1, 2, 9])
        self.assertEqual(c + (i for i in [7]), [0, 1, 2, 7])
        self.assertEqual(c * 2, [0, 1, 2, 0, 1, 2])
        self.assertEqual(c * -1, [])
        self.assertEqual(c.copy(), [0, 1, 2])
        with self.assertRaises(TypeError):
            c[0]
        assert_message(self, ValueError, "argument must be iterable or sequence", lambda: c + 5)

    def test_count_mismatch(self):
        short = C.miscounted(2, 3)
        assert_message(self, ValueError, "argument must be iterable or sequence", lambda: short + [])
        long_ = C.miscounted(4, 3)
        assert_message(self, ValueError, "argument must be iterable or sequence", lambda: long_ + [])
        for k in (2, 1, 0):
            with self.subTest(k=k):
                assert_message(self, ValueError, "argument must be iterable or sequence", lambda: long_ * k)
        self.assertEqual(list(long_), [0, 1, 2, 3])

    def test_read_only_collection_base(self):
        c = C.new_read_only_collection_base(3)
        self.assertTrue(type(c).__name__.startswith("_RoColBaseWrapper"), type(c).__name__)
        self.assertEqual(len(c), 3)
        self.assertEqual(list(c), [0, 1, 2])
        self.assertIn(2, c)
        self.assertEqual(c.count(1), 1)
        self.assertEqual(c + [3], [0, 1, 2, 3])
        self.assertEqual(c.copy(), [0, 1, 2])
        self.assertFalse(hasattr(c, "append"))


class KeyedIndexerTests(unittest.TestCase):
    """Indexers that take keys rather than positions: x[a, b] and x[k] call get_item/set_item."""

    def test_two_indices_read_and_write_through_a_tuple_key(self):
        g = probe.Grid()
        g[1, 2] = "b"
        g.set_item(0, 0, "a")
        self.assertEqual((g[1, 2], g[0, 0], g.get_item(1, 2)), ("b", "a", "b"))
        # A managed failure (no such cell) surfaces like any other.
        with self.assertRaises(RuntimeError):
            g[2, 2]

    def test_overloaded_indexers_dispatch_on_the_key(self):
        g = probe.Grid()
        g[3, 4] = "x"
        self.assertEqual((g["four"], g[3, 4]), (4, "x"))
        for bad in (lambda: g[1], lambda: g["a", 2], lambda: g[1, 2, 3]):
            with self.assertRaises(TypeError):
                bad()

    def test_read_only_and_deletion_are_refused(self):
        lengths = probe.Lengths()
        self.assertEqual(lengths["abc"], 3)
        assert_message(self, TypeError, "can't build String from 'int'", lengths.__getitem__, 3)
        with self.assertRaises(TypeError) as cm:
            lengths["abc"] = 4
        self.assertIn("does not support item assignment", str(cm.exception))
        g = probe.Grid()
        g[0, 0] = "a"
        assert_message(self, TypeError, "'orvane_probe.Grid' object doesn't support item deletion", g.__delitem__, (0, 0))
        self.assertEqual(g[0, 0], "a")


class EnumerationTests(unittest.TestCase):
    def test_enumerable(self):
        r = C.range(3)
        self.assertTrue(type(r).__name__.startswith("_IterableWrapper"), type(r).__name__)
        self.assertEqual(list(r), [0, 1, 2])
        self.assertEqual(list(r), [0, 1, 2])
        self.assertEqual(list(C.range(0)), [])
        self.assertRaises(TypeError, len, r)

    def test_enumerator(self):
        it = C.range_enumerator(3)
        self.assertTrue(type(it).__name__.startswith("_IterWrapper"), type(it).__name__)
        self.assertIs(iter(it), it)
        self.assertEqual(next(it), 0)
        self.assertEqual(list(it), [1, 2])
        with self.assertRaises(StopIteration) as cm:
            next(it)
        self.assertIsNone(cm.exception.value)
        self.assertRaises(StopIteration, next, it)

    def test_disposable(self):
        d = C.new_disposable()
        self.assertTrue(type(d).__name__.startswith("_IDisposableWrapper"), type(d).__name__)
        self.assertEqual(C.dispose_count(d), 0)
        with d as entered:
            self.assertIs(entered, d)
        self.assertEqual(C.dispose_count(d), 1)
        with self.assertRaises(KeyError):
            with d:
                raise KeyError("kept")
        self.assertEqual(C.dispose_count(d), 2)
        self.assertIsNone(d.__exit__(None, None, None))
        self.assertEqual(C.dispose_count(d), 3)


class StreamWrapperTests(unittest.TestCase):
    def stream(self, data):
        return C.memory_stream_of(data)

    def test_capabilities(self):
        f = self.stream(b"abc")
        self.assertTrue(type(f).__name__.startswith("_StreamWrapper"), type(f).__name__)
        self.assertTrue(f.readable())
        self.assertTrue(f.seekable())
        self.assertTrue(f.writable())
        self.assertIs(f.isatty(), False)
        self.assertIs(f.closed, False)
        assert_message(self, ValueError, "fileno method is not supported", f.fileno)

    def test_read_sizes(self):
        f = self.stream(b"0123456789")
        self.assertEqual(f.read(0), b"")
        self.assertEqual(f.read(3), b"012")
        self.assertEqual(f.tell(), 3)
        self.assertEqual(f.read(100), b"3456789")
        self.assertEqual(f.read(), b"")
        f.seek(0)
        self.assertEqual(f.read(None), b"0123456789")
        f.seek(2)
        self.assertEqual(f.read(-1), b"23456789")
        f.seek(5)
        self.assertEqual(f.readall(), b"56789")
        assert_message(self, TypeError, "argument should be integer or None, not 'str'", f.read, "1")

    def test_bulk_read_grows_past_its_first_buffer(self):
        data = os.urandom(300_000)
        self.assertEqual(self.stream(data).read(), data)
        self.assertEqual(self.stream(data).readall(), data)
        f = self.stream(data)
        f.seek(10)
        self.assertEqual(f.read(2 ** 31), data[10:])

    def test_readinto(self):
        f = self.stream(b"abcdef")
        buf = bytearray(4)
        self.assertEqual(f.readinto(buf), 4)
        self.assertEqual(buf, b"abcd")
        self.assertEqual(f.readinto(memoryview(buf)[1:]), 2)
        self.assertEqual(buf, b"aefd")
        self.assertEqual(f.readinto(buf), 0)
        assert_message(self, TypeError, "readinto argument must be read-write bytes-like object, not 'bytes'",
                       f.readinto, b"xxxx")
        assert_message(self, TypeError, "readinto argument must be read-write bytes-like object, not 'int'",
                       f.readinto, 4)
        assert_message(self, TypeError, "readinto argument must be read-write contiguous buffer, not 'memoryview'",
                       f.readinto, memoryview(bytearray(8))[::2])

    def test_lines(self):
        f = self.stream(b"ab\ncd")
        self.assertEqual(f.readline(), b"ab\n")
        self.assertEqual(f.tell(), 3)
        self.assertEqual(f.readline(), b"cd")
        self.assertEqual(f.readline(), b"")
        f = self.stream(b"abc\n")
        self.assertEqual(f.readline(2), b"ab")
        self.assertEqual(f.readline(None), b"c\n")
        f = self.stream(b"one\ntwo\n\nthree")
        self.assertEqual(f.readlines(), [b"one\n", b"two\n", b"\n", b"three"])
        f.seek(0)
        self.assertEqual(list(f), [b"one\n", b"two\n", b"\n", b"three"])
        f.seek(0)
        self.assertEqual(f.readlines(5), [b"one\n", b"two\n"])
        f.seek(0)
        self.assertEqual(f.readlines(4), [b"one\n"])
        long_line = b"x" * 5000 + b"\n"
        f = self.stream(long_line * 2)
        self.assertEqual(f.readline(), long_line)
        self.assertEqual(f.tell(), len(long_line))

    def test_seek(self):
        f = self.stream(b"0123456789")
        self.assertEqual(f.seek(4), 4)
        self.assertEqual(f.seek(2, 1), 6)
        self.assertEqual(f.seek(-1, 2), 9)
        self.assertEqual(f.read(), b"9")
        assert_message(self, ValueError, "negative seek value -1", f.seek, -1)
        assert_message(self, ValueError, "invalid whence (3, should be 0, 1 or 2)", f.seek, 0, 3)
        assert_message(self, ValueError, "invalid whence (-1, should be 0, 1 or 2)", f.seek, 0, -1)

    def test_write_and_truncate(self):
        f = self.stream(bytearray(6))
        self.assertEqual(f.write(b"ab"), 2)
        self.assertEqual(f.write(memoryview(b"xcdx")[1:3]), 2)
        self.assertEqual(f.write(bytearray(b"e")), 1)
        f.writelines([b"f"])
        f.seek(0)
        self.assertEqual(f.read(), b"abcdef")
        assert_message(self, TypeError, "write argument must be bytes-like object, not 'str'", f.write, "ab")
        assert_message(self, TypeError, "write argument must be bytes-like object, not 'None'", f.write, None)
        assert_message(self, TypeError, "write argument must be contiguous buffer, not 'memoryview'",
                       f.write, memoryview(b"abcd")[::2])
        # A memory stream over a fixed buffer cannot grow: the managed error comes back.
        with self.assertRaisesRegex(RuntimeError, r"^Proxy error\(System\.NotSupportedException\)"):
            f.write(b"more")
        self.assertIsInstance(f.truncate(3), int)
        f.seek(0)
        self.assertEqual(f.read(), b"abc")
        assert_message(self, TypeError, "truncate() takes at most 1 argument (2 given)", f.truncate, 1, 2)
        self.assertIsNone(f.flush())

    def test_close_and_context_manager(self):
        f = self.stream(b"abc")
        self.assertIsNone(f.close())
        self.assertIs(f.closed, True)
        self.assertIsNone(f.close())
        g = self.stream(b"abc")
        with g as entered:
            self.assertIs(entered, g)
            self.assertEqual(g.read(1), b"a")
        self.assertIs(g.closed, True)
        for s in (f, g):
            for method, args in (("read", ()), ("readinto", (bytearray(1),)), ("readline", ()), ("readlines", ()),
                                 ("write", (b"x",)), ("seek", (0,)), ("tell", ()), ("flush", ()), ("readable", ()),
                                 ("isatty", ()), ("truncate", ()), ("readall", ())):
                with self.subTest(method=method):
                    assert_message(self, ValueError, "I/O operation on closed stream", getattr(s, method), *args)
            self.assertRaises(ValueError, iter, s)
            assert_message(self, ValueError, "I/O operation on closed stream", next, s)
        assert_message(self, ValueError, "fileno method is not supported", g.fileno)

    def test_block_error_still_closes(self):
        f = self.stream(b"abc")
        with self.assertRaises(KeyError):
            with f:
                raise KeyError("kept")
        self.assertIs(f.closed, True)

    def test_non_seekable_stream(self):
        f = C.non_seekable_stream_of(b"ab\ncd")
        self.assertFalse(f.seekable())
        self.assertFalse(f.writable())
        buf = bytearray(2)
        self.assertEqual(f.readinto(buf), 2)
        self.assertEqual(f.read(), b"\ncd")
        message = "the operation supported only for seekable inner streams. the inner stream is not seekable"
        assert_message(self, TypeError, message, f.readline)
        assert_message(self, TypeError, message, f.readlines)
        assert_message(self, TypeError, message, iter, f)
        with self.assertRaisesRegex(RuntimeError, r"^Proxy error\(System\.NotSupportedException\)"):
            f.tell()


class PythonCollectionArgumentTests(unittest.TestCase):
    def test_collections(self):
        class Sized:
            def __len__(self):
                return 2

            def __iter__(self):
                return iter([1, 2])

        for value, count in (([1, 2, 3], 3), ((1, 2), 2), (range(4), 4), ({1, 2}, 2), ({"a": 1}, 1), (Sized(), 2),
                             (C.list_of_ints(3), 3), (C.miscounted(1, 5), 5)):
            with self.subTest(value=type(value).__name__):
                self.assertEqual(C.count_of(value), count)
        for value, name in ((5, "int"), (iter([1]), "list_iterator"), ((i for i in []), "generator")):
            with self.subTest(value=name):
                assert_message(self, TypeError, "can't build List value from '%s'" % name, C.count_of, value)

    def test_lists(self):
        class L(list):
            pass

        cases = [
            ([1, "a", 2.5, None, True], "1,a,2.5,,True"),
            ((1, 2), "1,2"),
            (range(3), "0,1,2"),
            (L([4, 5]), "4,5"),
            ([], ""),
            (C.list_of_ints(2), "0,1"),
            (C.array_list_of(2), "0,1"),
            (C.int_array(2), "0,1"),
        ]
        for value, expected in cases:
            with self.subTest(value=type(value).__name__):
                self.assertEqual(C.join_list(value), expected)
        for value, name in ((5, "int"), ((i for i in [1]), "generator")):
            with self.subTest(value=name):
                assert_message(self, TypeError, "can't build List value from '%s'" % name, C.join_list, value)
        # A set has a length but no indexing: refused at conversion or at the first item read.
        with self.assertRaises((TypeError, RuntimeError)):
            C.join_list({1})

    def test_append_to_python_list(self):
        target = [1]
        C.append_to_list(target, "x")
        C.append_to_list(target, None)
        C.append_to_list(target, 2 ** 40)
        self.assertEqual(target, [1, "x", None, 2 ** 40])
        managed = C.array_list_of(1)
        C.append_to_list(managed, "y")
        self.assertEqual(list(managed), [0, "y"])
        # A tuple is seen as a read-only sequence.
        with self.assertRaisesRegex(RuntimeError, r"^Proxy error\(System\.NotSupportedException\)"):
            C.append_to_list((1, 2), 3)

    def test_enumerables(self):
        def gen():
            yield 1
            yield "b"

        cases = [([1, 2], "1,2"), ((3,), "3"), (gen(), "1,b"), (iter([4, 5]), "4,5"), ({"k": 1}, "k"),
                 (C.range(3), "0,1,2"), (C.list_of_ints(2), "0,1"), ("ab", "a,b")]
        for value, expected in cases:
            with self.subTest(value=type(value).__name__):
                self.assertEqual(C.join_enumerable(value), expected)
        assert_message(self, TypeError, "can't build IEnumerable value from 'int'", C.join_enumerable, 5)

    def test_enumerators(self):
        self.assertEqual(C.join_enumerator(iter([1, 2])), "1,2")
        self.assertEqual(C.join_enumerator(x * 2 for x in range(3)), "0,2,4")
        self.assertEqual(C.join_enumerator(C.range_enumerator(2)), "0,1")
        for value, name in (([1], "list"), (5, "int"), (C.range(2), "_IterableWrapper")):
            with self.subTest(value=name):
                with self.assertRaisesRegex(TypeError, r"^can't build IEnumerator value from '([\w.]+\.)?%s" % name):
                    C.join_enumerator(value)

    def test_python_errors_while_enumerating_reach_the_caller(self):
        def failing():
            yield 1
            raise ValueError("boom in generator")

        with self.assertRaises(RuntimeError) as cm:
            C.join_enumerable(failing())
        self.assertIn("ValueError: boom in generator", str(cm.exception))
        self.assertEqual(C.join_enumerable([1]), "1")

    def test_typed_parameters(self):
        self.assertEqual(C.sum_typed([1, 2, 3]), 6)
        self.assertEqual(C.sum_typed((4, 5)), 9)
        self.assertEqual(C.sum_typed(C.list_of_ints(4)), 6)
        self.assertEqual(C.sum_array([1, 2, 3]), 6)
        self.assertEqual(C.sum_array((1, 2)), 3)
        self.assertEqual(C.sum_array(C.int_array(4)), 6)
        self.assertEqual(C.join_typed(["a", "b"]), "a,b")
        self.assertEqual(C.join_typed(s for s in ("x", "\u20ac")), "x,\u20ac")
        with self.assertRaises((TypeError, RuntimeError)):
            C.sum_typed(["a"])
        with self.assertRaises((TypeError, RuntimeError)):
            C.sum_array([1, "b"])


class PythonFileArgumentTests(unittest.TestCase):
    def setUp(self):
        self.dir = tempfile.mkdtemp(prefix="orvane-probe-")

    def tearDown(self):
        shutil.rmtree(self.dir, ignore_errors=True)

    def path(self, name):
        return os.path.join(self.dir, name)

    def test_read_from_python_files(self):
        data = os.urandom(300_000)
        self.assertEqual(C.read_all(io.BytesIO(data)), data)
        with open(self.path("in.bin"), "wb") as f:
            f.write(data)
        with open(self.path("in.bin"), "rb") as f:
            self.assertEqual(C.read_all(f), data)
            self.assertFalse(f.closed)
        with open(self.path("in.bin"), "rb", buffering=0) as f:
            f.seek(10)
            self.assertEqual(C.read_all(f), data[10:])
            self.assertEqual(f.tell(), len(data))
        self.assertEqual(C.read_all(C.memory_stream_of(b"managed")), b"managed")
        self.assertEqual(C.read_all(BufferStream(b"buffered")), b"buffered")

    def test_write_to_python_files(self):
        buf = io.BytesIO()
        self.assertEqual(C.write_chunks(buf, 1000, 64), 1000)
        self.assertEqual(buf.getvalue(), pattern(1000))
        with open(self.path("out.bin"), "wb") as f:
            self.assertEqual(C.write_chunks(f, 100_000, 4096), 100_000)
            self.assertFalse(f.closed)
        with open(self.path("out.bin"), "rb") as f:
            self.assertEqual(f.read(), pattern(100_000))
        with open(self.path("raw.bin"), "wb", buffering=0) as f:
            self.assertEqual(C.write_chunks(f, 10, 100), 10)
        with open(self.path("raw.bin"), "rb") as f:
            self.assertEqual(f.read(), pattern(10))
        stream = BufferStream()
        self.assertEqual(C.write_chunks(stream, 5000, 999), 5000)
        self.assertEqual(stream.getvalue(), pattern(5000))
        managed = C.memory_stream_of(bytearray(8))
        self.assertEqual(C.write_chunks(managed, 8, 3), 8)
        managed.seek(0)
        self.assertEqual(managed.read(), pattern(8))

    def test_other_objects_are_not_streams(self):
        for value, name in ((b"abc", "bytes"), (io.StringIO("x"), "_io.StringIO"), (5, "int"), ([1], "list")):
            with self.subTest(value=name):
                assert_message(self, TypeError, "can't build Stream from '%s'" % name, C.read_all, value)

    def test_file_raising_in_write_keeps_what_was_written(self):
        class FailingWriter(io.RawIOBase):
            def __init__(self):
                self.data = bytearray()

            def writable(self):
                return True

            def write(self, b):
                if len(self.data) >= 20:
                    raise OSError("disk full")
                self.data += bytes(b)
                return memoryview(b).nbytes

        target = FailingWriter()
        with self.assertRaises(RuntimeError) as cm:
            C.write_chunks(target, 100, 10)
        self.assertIn("OSError: disk full", str(cm.exception))
        self.assertEqual(bytes(target.data), pattern(20))

    def test_file_write_returning_none_or_short_counts(self):
        class NoneWriter(io.RawIOBase):
            def writable(self):
                return True

            def write(self, b):
                return None

        with self.assertRaises(RuntimeError):
            C.write_chunks(NoneWriter(), 10, 10)

        class ShortWriter(io.RawIOBase):
            def __init__(self):
                self.data = bytearray()

            def writable(self):
                return True

            def write(self, b):
                self.data += bytes(memoryview(b)[:3])
                return min(3, memoryview(b).nbytes)

        target = ShortWriter()
        C.write_chunks(target, 10, 10)
        self.assertEqual(bytes(target.data), pattern(10))

    def test_file_counts_outside_the_request_are_errors(self):
        class Counting(io.RawIOBase):
            def __init__(self, answer):
                self.answer = answer

            def readable(self):
                return True

            def writable(self):
                return True

            def write(self, b):
                return self.answer(memoryview(b).nbytes)

            def readinto(self, b):
                return self.answer(memoryview(b).nbytes)

        written = (
            (lambda n: -1, r"OSError: write\(\) returned invalid length -1 \(should have been between 0 and 10\)"),
            (lambda n: n + 1, r"OSError: write\(\) returned invalid length 11 \(should have been between 0 and 10\)"),
            (lambda n: str(n), r"OSError: write\(\) returned a length of type 'str' \(should have been an int\)"),
            (lambda n: float(n), r"OSError: write\(\) returned a length of type 'float' \(should have been an int\)"),
        )
        for answer, message in written:
            with self.subTest(message=message):
                with self.assertRaisesRegex(RuntimeError, message):
                    C.write_chunks(Counting(answer), 10, 10)
        with self.assertRaisesRegex(RuntimeError, r"OSError: readinto\(\) returned invalid length (\d+) "
                                                  r"\(should have been between 0 and \d+\)") as cm:
            C.read_all(Counting(lambda n: n + 1))
        self.assertIn("returned invalid length %d (should have been between 0 and %d)"
                      % (64 * 1024 + 1, 64 * 1024), str(cm.exception))
        self.assertEqual(C.write_chunks(Counting(lambda n: n), 10, 4), 10)

    def test_views_a_file_keeps_do_not_follow_the_managed_buffer(self):
        class Keeper(io.RawIOBase):
            def __init__(self):
                self.kept = []

            def writable(self):
                return True

            def write(self, b):
                view = memoryview(b)
                self.kept.append((view, bytes(view)))
                return view.nbytes

        # write_chunks reuses one managed buffer for every chunk.
        target = Keeper()
        self.assertEqual(C.write_chunks(target, 40, 8), 40)
        self.assertEqual(len(target.kept), 5)
        for view, copy in target.kept:
            self.assertEqual(bytes(view), copy)
        self.assertEqual(b"".join(bytes(view) for view, _ in target.kept), pattern(40))

    def test_file_raising_or_returning_none_in_readinto(self):
        class FailingReader(io.RawIOBase):
            def readable(self):
                return True

            def readinto(self, b):
                raise OSError("device gone")

        with self.assertRaises(RuntimeError) as cm:
            C.read_all(FailingReader())
        self.assertIn("OSError: device gone", str(cm.exception))

        class NoDataReader(io.RawIOBase):
            def readable(self):
                return True

            def readinto(self, b):
                return None

        self.assertEqual(C.read_all(NoDataReader()), b"")

    def test_file_raising_in_seek(self):
        class FailingSeek(io.BytesIO):
            def seek(self, *args):
                raise OSError("seek refused")

        with self.assertRaises(RuntimeError) as cm:
            C.read_all(FailingSeek(b"abc"))
        # The length failure is chained onto the file's own error; the text managed
        # code receives is the outer TypeError's.
        self.assertIn("TypeError: While calculating the length of the stream, an error occurred.", str(cm.exception))

    def test_closed_files(self):
        class Watched(io.BytesIO):
            asked = False

            def readable(self):
                Watched.asked = True
                return super().readable()

        f = Watched(b"abc")
        f.close()
        with self.assertRaises(RuntimeError):
            C.read_all(f)
        self.assertFalse(Watched.asked)
        g = io.BytesIO()
        g.close()
        with self.assertRaises(RuntimeError):
            C.write_chunks(g, 4, 4)

    def test_callers_file_stays_open_even_when_close_would_raise(self):
        class NoClose(io.BytesIO):
            armed = True

            def close(self):
                if self.armed:
                    raise OSError("close refused")
                super().close()

        f = NoClose(b"xyz")
        self.assertEqual(C.read_all(f), b"xyz")
        self.assertFalse(f.closed)
        self.assertEqual(f.getvalue(), b"xyz")
        f.armed = False



# Foreign objects handed to parameters that take managed objects, run in a
# child process: reading such an object as a managed handle ends the process.
FOREIGN_OBJECT_CHECKS = """
import io
import json
import orvane_probe as probe
C = probe.Collections
out = {}


class Imitation:
    # The names a wrapper type carries, on a Python class that is also a
    # two-element sequence of 7s.
    __slots__ = ("payload",)
    _orvane_clr_host = None
    _additional_interfaces = set()
    _implicit_interfaces = set()

    def __len__(self):
        return 2

    def __getitem__(self, index):
        if index not in (0, 1):
            raise IndexError(index)
        return 7


imitation = Imitation()
imitation.payload = object()


def outcome(fn, *args):
    try:
        fn(*args)
    except Exception as e:
        return type(e).__name__
    return "accepted"


def probe_all(value):
    return {
        "stream": outcome(C.read_all, value),
        "disposable": outcome(C.dispose_count, value),
        "collection": outcome(C.count_of, value),
        "list element": outcome(C.list_of_ints(2).append, value),
    }


class Sink(io.RawIOBase):
    def writable(self):
        return True

    def write(self, b):
        if "view" not in out:
            out["view marked"] = hasattr(type(b), "_orvane_clr_host")
            out["view"] = probe_all(b)
        return memoryview(b).nbytes


C.write_chunks(Sink(), 10, 10)
out["imitation"] = probe_all(imitation)
# As a plain sequence it is copied element by element.
ints = C.list_of_ints(2)
ints[0:2] = imitation
ints.extend(imitation)
out["imitation copied"] = list(ints)
out["imitation sum"] = C.sum_typed(imitation)
print(json.dumps(out))
"""


class ForeignObjectTests(unittest.TestCase):
    def test_foreign_objects_are_never_read_as_managed_objects(self):
        env = dict(os.environ)
        env["PYTHONPATH"] = os.pathsep.join(sys.path)  # as this process finds the probe and orvane.pyio
        proc = subprocess.run([sys.executable, "-c", FOREIGN_OBJECT_CHECKS], env=env, capture_output=True,
                              timeout=120)
        self.assertEqual(proc.returncode, 0, proc.stderr.decode(errors="replace"))
        out = json.loads(proc.stdout.decode())
        self.assertIs(out["view marked"], False)
        for name in ("view", "imitation"):
            with self.subTest(value=name):
                self.assertEqual(out[name], {k: "TypeError" for k in ("stream", "disposable", "collection",
                                                                      "list element")})
        self.assertEqual(out["imitation copied"], [7, 7, 7, 7])
        self.assertEqual(out["imitation sum"], 14)

if __name__ == "__main__":
    unittest.main()
