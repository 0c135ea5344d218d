// The callback tables through which managed views use Python lists,
// sequences, iterators and file objects, over real Python objects.
#include <cstring>
#include <thread>

#include "interop/containers.h"
#include "interop/streams.h"
#include "runtime_python.h"

using namespace runtimetest;

namespace {

class ContainerCallbacksTest : public PythonTest {};

// Runs statements, then evaluates an expression (new reference).
PyObject* value_of(const std::string& expression)
{
    return eval(expression);
}

std::string pending_error()
{
    PyError error;
    take_error(error);
    return error.type + ": " + error.message;
}

TEST_F(ContainerCallbacksTest, ListItemsReadAndWriteWithoutNegativeIndexing)
{
    PyObject* list = value_of("[10, 'a', [1]]");
    VariantArg arg{-1, nullptr};
    EXPECT_EQ(fn_clbk_olist_get_item(list, 0, &arg), 0);
    EXPECT_EQ(arg.type, 5);
    EXPECT_EQ(arg.value, PyList_GET_ITEM(list, 0));
    EXPECT_EQ(fn_clbk_olist_get_item(list, 2, &arg), 0);
    EXPECT_EQ(arg.type, 14);
    EXPECT_EQ(fn_clbk_olist_get_item(list, -1, &arg), -2);
    EXPECT_EQ(pending_error(), "IndexError: list index out of range");
    EXPECT_EQ(fn_clbk_olist_get_item(list, 3, &arg), -2);
    PyErr_Clear();

    PyObject* item = PyUnicode_FromString("new");
    Py_INCREF(item);  // one reference for the list, one kept here
    EXPECT_EQ(fn_clbk_olist_set_item(list, 1, item), 0);
    EXPECT_EQ(PyList_GET_ITEM(list, 1), item);
    Py_ssize_t before = Py_REFCNT(item);
    Py_INCREF(item);
    EXPECT_EQ(fn_clbk_olist_set_item(list, 7, item), -2);
    PyErr_Clear();
    EXPECT_EQ(Py_REFCNT(item), before) << "a refused item is released";
    Py_DECREF(item);
    Py_DECREF(list);
}

TEST_F(ContainerCallbacksTest, ListAddInsertRemoveConsumeTheirItem)
{
    PyObject* list = value_of("[1, 2, 3]");
    PyObject* item = value_of("object()");
    Py_ssize_t base = Py_REFCNT(item);

    Py_INCREF(item);
    EXPECT_EQ(fn_clbk_olist_add(list, item), 4);
    EXPECT_EQ(Py_REFCNT(item), base + 1) << "the list holds it, the handed reference was consumed";
    Py_INCREF(item);
    EXPECT_EQ(fn_clbk_olist_insert(list, 1000, item), 0);
    EXPECT_EQ(PyList_GET_ITEM(list, 4), item) << "insertion clamps like list.insert";
    EXPECT_EQ(PyList_GET_SIZE(list), 5);

    Py_INCREF(item);
    EXPECT_EQ(fn_clbk_olist_index_of(list, item), 3);
    Py_INCREF(item);
    EXPECT_EQ(fn_clbk_olist_contains(list, item), 1);
    Py_INCREF(item);
    EXPECT_EQ(fn_clbk_olist_remove(list, item), 0);
    EXPECT_EQ(PyList_GET_SIZE(list), 4);
    EXPECT_EQ(Py_REFCNT(item), base + 1);

    PyObject* missing = PyLong_FromLong(99);
    Py_INCREF(missing);
    EXPECT_EQ(fn_clbk_olist_contains(list, missing), 0);
    EXPECT_FALSE(PyErr_Occurred()) << "not found is no error for contains";
    Py_INCREF(missing);
    EXPECT_EQ(fn_clbk_olist_index_of(list, missing), -1);
    EXPECT_FALSE(PyErr_Occurred());
    Py_INCREF(missing);
    EXPECT_EQ(fn_clbk_olist_remove(list, missing), -1);
    EXPECT_EQ(pending_error(), "ValueError: list.remove(x): x not in list");
    Py_DECREF(missing);
    Py_DECREF(item);
    Py_DECREF(list);
}

TEST_F(ContainerCallbacksTest, IndexOfOutsideInt32IsAnIndexError)
{
    ASSERT_TRUE(exec("class FarList(list):\n"
                     "    def index(self, item): return 2**31\n"
                     "class NearList(list):\n"
                     "    def index(self, item): return -2**31 - 1\n"
                     "class BrokenList(list):\n"
                     "    def index(self, item): raise KeyError('boom')\n"));
    PyObject* far = value_of("FarList([1])");
    EXPECT_EQ(fn_clbk_olist_index_of(far, PyLong_FromLong(1)), -2);
    EXPECT_EQ(pending_error(), "IndexError: index too big to convert to 'Int32'");
    PyObject* near = value_of("NearList([1])");
    EXPECT_EQ(fn_clbk_olist_index_of(near, PyLong_FromLong(1)), -2);
    EXPECT_EQ(pending_error(), "IndexError: index too small to convert to 'Int32'");
    PyObject* broken = value_of("BrokenList([1])");
    EXPECT_EQ(fn_clbk_olist_index_of(broken, PyLong_FromLong(1)), -2);
    EXPECT_EQ(pending_error(), "KeyError: 'boom'");
    EXPECT_EQ(fn_clbk_olist_contains(broken, PyLong_FromLong(1)), -1);
    PyErr_Clear();
    Py_DECREF(far);
    Py_DECREF(near);
    Py_DECREF(broken);
}

TEST_F(ContainerCallbacksTest, UnsizedCollectionSlots)
{
    PyObject* list = value_of("[1, 2, 3]");
    EXPECT_EQ(fn_clbk_ucol_list_length(list), 3);
    EXPECT_EQ(fn_clbk_ucol_list_longlength(list), 3);
    EXPECT_EQ(fn_clbk_ucol_remove_at(list, 0), 0);
    EXPECT_EQ(to_utf8(list), "[2, 3]");
    EXPECT_EQ(fn_clbk_ucol_remove_at(list, 5), -2);
    EXPECT_EQ(pending_error(), "IndexError: pop index out of range");
    EXPECT_EQ(fn_clbk_ucol_clear(list), 0);
    EXPECT_EQ(PyList_GET_SIZE(list), 0);

    PyObject* tuple = value_of("(1, 2)");
    EXPECT_EQ(fn_clbk_ucol_remove_at(tuple, 0), -1) << "a tuple has no pop";
    EXPECT_EQ(pending_error(), "AttributeError: 'tuple' object has no attribute 'pop'");
    EXPECT_EQ(fn_clbk_ucol_sequence_length(tuple), 2);
    EXPECT_EQ(fn_clbk_ucol_sequence_longlength(tuple), 2);
    PyObject* dict = value_of("{1: 2, 3: 4, 5: 6}");
    EXPECT_EQ(fn_clbk_ucol_object_length(dict), 3);

    PyObject* number = PyLong_FromLong(5);
    EXPECT_EQ(fn_clbk_ucol_get_enumerator(number), nullptr);
    EXPECT_EQ(pending_error(), "TypeError: No iterator in 'int'");
    ASSERT_TRUE(exec("class BadIter:\n"
                     "    def __iter__(self): return 5\n"));
    PyObject* bad = value_of("BadIter()");
    EXPECT_EQ(fn_clbk_ucol_get_enumerator(bad), nullptr);
    EXPECT_TRUE(PyErr_ExceptionMatches(PyExc_TypeError));
    PyErr_Clear();
    PyObject* iterator = fn_clbk_ucol_get_enumerator(tuple);
    ASSERT_NE(iterator, nullptr);
    EXPECT_TRUE(PyIter_Check(iterator));
    Py_DECREF(iterator);

    PyObject* fast = nullptr;
    PyObject** items = fn_clbk_ucol_create_fast_list(2, &fast);
    ASSERT_NE(items, nullptr);
    ASSERT_NE(fast, nullptr);
    EXPECT_EQ(fn_clbk_olist_set_fast_item(items, 1, PyUnicode_FromString("b")), 1);
    EXPECT_EQ(fn_clbk_olist_set_fast_item(items, 0, PyUnicode_FromString("a")), 0);
    EXPECT_EQ(to_utf8(fast), "['a', 'b']");
    Py_DECREF(fast);
    PyObject* refused = nullptr;
    EXPECT_EQ(fn_clbk_ucol_create_fast_longlist(-1, &refused), nullptr);
    EXPECT_EQ(refused, nullptr);
    PyErr_Clear();

    for (PyObject* obj : {list, tuple, dict, number, bad})
        Py_DECREF(obj);
}

TEST_F(ContainerCallbacksTest, SequenceItemsCountFromTheEndAndStayAlive)
{
    PyObject* tuple = value_of("(1, 'two', 3)");
    VariantArg arg{-1, nullptr};
    EXPECT_EQ(fn_clbk_oseq_get_item(tuple, -1, &arg), 0);
    EXPECT_EQ(arg.value, PyTuple_GET_ITEM(tuple, 2));
    EXPECT_EQ(fn_clbk_oseq_get_item(tuple, 3, &arg), -2);
    EXPECT_EQ(pending_error(), "IndexError: tuple index out of range");

    // A range creates its items on demand: the one handed out must survive the call.
    PyObject* big = value_of("range(10**20, 10**20 + 3)");
    ASSERT_EQ(fn_clbk_oseq_get_item(big, 1, &arg), 0);
    EXPECT_EQ(arg.type, 5);
    EXPECT_EQ(to_utf8(static_cast<PyObject*>(arg.value)), "100000000000000000001");

    PyObject* one = PyFloat_FromDouble(3.0);
    EXPECT_EQ(fn_clbk_oseq_contains(tuple, one), 1) << "== comparison, 3.0 == 3";
    EXPECT_EQ(fn_clbk_oseq_index_of(tuple, PyFloat_FromDouble(3.0)), 2);
    EXPECT_EQ(fn_clbk_oseq_index_of(tuple, PyLong_FromLong(7)), -1);
    EXPECT_EQ(fn_clbk_oseq_contains(tuple, PyLong_FromLong(7)), 0);
    EXPECT_FALSE(PyErr_Occurred());

    ASSERT_TRUE(exec("class Shrinking:\n"
                     "    def __init__(self): self.items = [1, 2, 3, 4]\n"
                     "    def __len__(self): return len(self.items)\n"
                     "    def __getitem__(self, i):\n"
                     "        value = self.items[i]\n"
                     "        self.items.pop()\n"
                     "        return value\n"
                     "class Holey:\n"
                     "    def __len__(self): return 2\n"
                     "    def __getitem__(self, i): raise RuntimeError('hole')\n"));
    PyObject* shrinking = value_of("Shrinking()");
    EXPECT_EQ(fn_clbk_oseq_contains(shrinking, PyLong_FromLong(4)), 0) << "the length is re-read every step";
    EXPECT_FALSE(PyErr_Occurred());
    PyObject* holey = value_of("Holey()");
    EXPECT_EQ(fn_clbk_oseq_contains(holey, PyLong_FromLong(1)), -1);
    EXPECT_EQ(pending_error(), "RuntimeError: hole");
    EXPECT_EQ(fn_clbk_oseq_index_of(holey, PyLong_FromLong(1)), -2);
    PyErr_Clear();
    for (PyObject* obj : {tuple, big, shrinking, holey})
        Py_DECREF(obj);
}

TEST_F(ContainerCallbacksTest, ASequenceItemHeldForAThreadGoesWithTheThread)
{
    ASSERT_TRUE(exec("released = []\n"
                     "class Tracked(float):\n"
                     "    def __del__(self): released.append(float(self))\n"
                     "class Making:\n"
                     "    def __len__(self): return 3\n"
                     "    def __getitem__(self, i):\n"
                     "        if not 0 <= i < 3: raise IndexError(i)\n"
                     "        return Tracked(i)\n"));
    PyObject* seq = value_of("Making()");
    PyObject* released = PyDict_GetItemString(globals(), "released");  // borrowed
    ASSERT_NE(released, nullptr);

    VariantArg arg{-1, nullptr};
    ASSERT_EQ(fn_clbk_oseq_get_item(seq, 0, &arg), 0);
    EXPECT_EQ(PyFloat_AsDouble(static_cast<PyObject*>(arg.value)), 0.0) << "alive after the call";
    ASSERT_EQ(fn_clbk_oseq_get_item(seq, 1, &arg), 0);
    EXPECT_EQ(PyList_GET_SIZE(released), 1) << "the next item replaces the one held";

    int32_t status = -1;
    Py_ssize_t released_in_thread = -1;
    std::thread worker([&] {
        PyGILState_STATE state = PyGILState_Ensure();
        VariantArg item{-1, nullptr};
        status = fn_clbk_oseq_get_item(seq, 2, &item);
        released_in_thread = PyList_GET_SIZE(released);
        PyGILState_Release(state);  // clears and deletes this thread's state
    });
    Py_BEGIN_ALLOW_THREADS worker.join();
    Py_END_ALLOW_THREADS EXPECT_EQ(status, 0);
    EXPECT_EQ(released_in_thread, 1) << "the worker's item lives while its thread does";
    ASSERT_EQ(PyList_GET_SIZE(released), 2) << "and is released with the thread";
    EXPECT_EQ(PyFloat_AsDouble(PyList_GET_ITEM(released, 1)), 2.0);
    Py_DECREF(seq);
}

TEST_F(ContainerCallbacksTest, IteratorStepsEndsAndFails)
{
    ASSERT_TRUE(exec("def produce():\n"
                     "    yield 1\n"
                     "    yield 'x'\n"
                     "def failing():\n"
                     "    yield 1\n"
                     "    raise KeyError('gone')\n"
                     "def unconvertible():\n"
                     "    yield object()\n"));
    PyObject* it = value_of("produce()");
    PyObject* item = nullptr;
    VariantArg arg{-1, nullptr};
    ASSERT_EQ(fn_clbk_iter_next(it, &item, &arg), 0);
    EXPECT_EQ(arg.type, 5);
    EXPECT_EQ(arg.value, item);
    Py_DECREF(item);
    ASSERT_EQ(fn_clbk_iter_next(it, &item, &arg), 0);
    EXPECT_EQ(arg.type, 2);
    EXPECT_EQ(to_utf8(item), "x");
    Py_DECREF(item);
    EXPECT_EQ(fn_clbk_iter_next(it, &item, &arg), 1);
    EXPECT_EQ(item, nullptr);
    EXPECT_FALSE(PyErr_Occurred());
    Py_DECREF(it);

    PyObject* failing = value_of("failing()");
    ASSERT_EQ(fn_clbk_iter_next(failing, &item, &arg), 0);
    Py_DECREF(item);
    EXPECT_EQ(fn_clbk_iter_next(failing, &item, &arg), 2);
    EXPECT_EQ(pending_error(), "KeyError: 'gone'");
    Py_DECREF(failing);

    PyObject* odd = value_of("unconvertible()");
    EXPECT_EQ(fn_clbk_iter_next(odd, &item, &arg), 2);
    EXPECT_EQ(item, nullptr);
    EXPECT_EQ(pending_error(), "TypeError: unknown variant type");
    Py_DECREF(odd);
}

class RawIoTest : public PythonTest {
protected:
    static void SetUpTestSuite()
    {
        PythonTest::SetUpTestSuite();
        ASSERT_TRUE(exec("import io\n"
                         "class Faulty(io.RawIOBase):\n"
                         "    def __init__(self, fail=(), none=()):\n"
                         "        self.fail, self.none, self.data = set(fail), set(none), bytearray()\n"
                         "        self.calls = []\n"
                         "    def readable(self): self.calls.append('readable'); return True\n"
                         "    def writable(self): self.calls.append('writable'); return True\n"
                         "    def seekable(self): self.calls.append('seekable'); return False\n"
                         "    def write(self, b):\n"
                         "        if 'write' in self.fail: raise OSError('disk full')\n"
                         "        if 'write' in self.none: return None\n"
                         "        self.data += bytes(b); return len(b)\n"
                         "    def readinto(self, b):\n"
                         "        if 'readinto' in self.fail: raise OSError('bad read')\n"
                         "        if 'readinto' in self.none: return None\n"
                         "        n = min(len(b), len(self.data)); b[:n] = self.data[:n]; del self.data[:n]; return n\n"
                         "    def close(self):\n"
                         "        if 'close' in self.fail: raise OSError('close failed')\n"
                         "        super().close()\n"
                         "class BadClosed(io.RawIOBase):\n"
                         "    @property\n"
                         "    def closed(self): raise KeyError('closed?')\n"));
    }
};

TEST_F(RawIoTest, WritesReadsAndSeeksABytesIO)
{
    PyObject* file = value_of("io.BytesIO()");
    const char data[] = "hello world";
    EXPECT_EQ(fn_clbk_rawio_write(file, data, 11), 11);
    EXPECT_EQ(fn_clbk_rawio_write_byte(file, 0x121), 1) << "low 8 bits: '!'";
    EXPECT_EQ(fn_clbk_rawio_tell(file), 12);
    EXPECT_EQ(fn_clbk_rawio_seek(file, 6, 0), 6);
    char buffer[16] = {};
    EXPECT_EQ(fn_clbk_rawio_read(file, buffer, 16), 6);
    EXPECT_EQ(std::string(buffer, 6), "world!");
    EXPECT_EQ(fn_clbk_rawio_readbyte(file), -1) << "end of stream";
    EXPECT_EQ(fn_clbk_rawio_seek(file, -2, 2), 10);
    EXPECT_EQ(fn_clbk_rawio_readbyte(file), 'd');
    EXPECT_EQ(fn_clbk_rawio_flush(file), 0);
    EXPECT_EQ(fn_clbk_rawio_readable(file), 1);
    EXPECT_EQ(fn_clbk_rawio_writable(file), 1);
    EXPECT_EQ(fn_clbk_rawio_seekable(file), 1);

    EXPECT_EQ(fn_clbk_rawio_seek(file, 10, 0), 10);
    EXPECT_EQ(fn_clbk_rawio_length(file), 12);
    EXPECT_EQ(fn_clbk_rawio_tell(file), 10) << "length leaves the position alone";

    fn_clbk_rawio_close(file);
    EXPECT_FALSE(PyErr_Occurred());
    EXPECT_EQ(fn_clbk_rawio_readable(file), 0);
    EXPECT_EQ(fn_clbk_rawio_writable(file), 0);
    EXPECT_EQ(fn_clbk_rawio_seekable(file), 0);
    EXPECT_EQ(fn_clbk_rawio_length(file), -3);
    EXPECT_FALSE(PyErr_Occurred());
    EXPECT_EQ(fn_clbk_rawio_write(file, data, 1), -1);
    EXPECT_EQ(pending_error(), "ValueError: I/O operation on closed file.");
    Py_DECREF(file);
}

TEST_F(RawIoTest, AFileThatKeepsTheViewNeverReachesTheCallersMemory)
{
    ASSERT_TRUE(exec("class Keeper(io.RawIOBase):\n"
                     "    def __init__(self): self.kept = []\n"
                     "    def writable(self): return True\n"
                     "    def readable(self): return True\n"
                     "    def write(self, b):\n"
                     "        m = memoryview(b); self.kept.append((b, m))\n"
                     "        assert type(b).__name__ == '_ShlBufferView' and m.readonly\n"
                     "        return m.nbytes\n"
                     "    def readinto(self, b):\n"
                     "        m = memoryview(b); self.kept.append((b, m))\n"
                     "        m[:3] = b'new'; return 3\n"));
    PyObject* keeper = value_of("Keeper()");
    PyDict_SetItemString(globals(), "keeper", keeper);
    char data[] = "abc";
    EXPECT_EQ(fn_clbk_rawio_write(keeper, data, 3), 3);
    std::memcpy(data, "XYZ", 3);  // the caller reuses its buffer
    EXPECT_TRUE(exec("view, m = keeper.kept[0]\n"
                     "assert bytes(m) == b'abc', bytes(m)\n"
                     "assert bytes(view) == b'abc', bytes(view)\n"));

    char target[6] = "-----";
    EXPECT_EQ(fn_clbk_rawio_read(keeper, target, 5), 3);
    EXPECT_EQ(std::string(target, 5), "new--") << "only the reported count is copied back";
    EXPECT_TRUE(exec("view, m = keeper.kept[1]\n"
                     "m[:5] = b'later'\n"
                     "assert bytes(m) == b'later'\n"));
    EXPECT_EQ(std::string(target, 5), "new--") << "a write through a kept view stays in its own copy";
    PyDict_DelItemString(globals(), "keeper");
    Py_DECREF(keeper);
}

TEST_F(RawIoTest, ViewsOverCallerMemoryAreZeroCopyAndHonourReadOnly)
{
    char target[4] = {};
    PyObject* view = fn_create_shlbuffer_view(target, 4, 0);
    ASSERT_NE(view, nullptr);
    PyDict_SetItemString(globals(), "view", view);
    EXPECT_TRUE(exec("memoryview(view)[1:3] = b'xy'\n"));
    EXPECT_EQ(std::string(target + 1, 2), "xy");
    PyObject* readonly = fn_create_shlbuffer_view(target, 4, 1);
    PyDict_SetItemString(globals(), "view", readonly);
    PyObject* refused = PyRun_String("memoryview(view).__setitem__(0, 1)", Py_eval_input, globals(), globals());
    EXPECT_EQ(refused, nullptr);
    EXPECT_EQ(pending_error(), "TypeError: cannot modify read-only memory");
    PyDict_DelItemString(globals(), "view");
    Py_DECREF(view);
    Py_DECREF(readonly);
}

TEST_F(RawIoTest, CountsOutsideTheRequestAreOSErrors)
{
    ASSERT_TRUE(exec("class Counting(io.RawIOBase):\n"
                     "    def __init__(self, answer): self.answer = answer\n"
                     "    def write(self, b): return self.answer\n"
                     "    def readinto(self, b):\n"
                     "        m = memoryview(b); m[:] = b'z' * len(m); return self.answer\n"
                     "class Index:\n"
                     "    def __index__(self): return 2\n"));
    struct Case {
        const char* answer;
        int32_t write;
        int32_t read;
        int32_t readbyte;
        const char* write_error;
        const char* read_error;
    };
    const Case cases[] = {
        {"4", 4, 4, -2, "", ""},
        {"0", 0, 0, -1, "", ""},
        {"Index()", 2, 2, -2, "", ""},
        {"-1", -1, -1, -2, "OSError: write() returned invalid length -1 (should have been between 0 and 4)",
         "OSError: readinto() returned invalid length -1 (should have been between 0 and 4)"},
        {"5", -1, -1, -2, "OSError: write() returned invalid length 5 (should have been between 0 and 4)",
         "OSError: readinto() returned invalid length 5 (should have been between 0 and 4)"},
        {"2**64 + 1", -1, -1, -2,
         "OSError: write() returned invalid length 18446744073709551617 (should have been between 0 and 4)",
         "OSError: readinto() returned invalid length 18446744073709551617 (should have been between 0 and 4)"},
        {"'4'", -1, -1, -2, "OSError: write() returned a length of type 'str' (should have been an int)",
         "OSError: readinto() returned a length of type 'str' (should have been an int)"},
        {"4.0", -1, -1, -2, "OSError: write() returned a length of type 'float' (should have been an int)",
         "OSError: readinto() returned a length of type 'float' (should have been an int)"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.answer);
        PyObject* file = value_of(std::string("Counting(") + c.answer + ")");
        ASSERT_NE(file, nullptr);
        char buffer[4] = {'a', 'a', 'a', 'a'};
        EXPECT_EQ(fn_clbk_rawio_write(file, buffer, 4), c.write);
        if (*c.write_error)
            EXPECT_EQ(pending_error(), c.write_error);
        EXPECT_FALSE(PyErr_Occurred());
        EXPECT_EQ(fn_clbk_rawio_read(file, buffer, 4), c.read);
        if (*c.read_error)
            EXPECT_EQ(pending_error(), c.read_error);
        EXPECT_FALSE(PyErr_Occurred());
        if (c.read > 0)
            EXPECT_EQ(std::string(buffer, 4), std::string((size_t)c.read, 'z') + std::string(4 - c.read, 'a'));
        else
            EXPECT_EQ(std::string(buffer, 4), "aaaa") << "nothing is copied back from a refused count";
        EXPECT_EQ(fn_clbk_rawio_readbyte(file), c.readbyte);
        if (c.readbyte == -2)
            EXPECT_TRUE(pending_error().rfind("OSError: readinto() returned ", 0) == 0);
        else
            EXPECT_FALSE(PyErr_Occurred());
        Py_DECREF(file);
    }
    PyObject* one = value_of("Counting(1)");
    EXPECT_EQ(fn_clbk_rawio_readbyte(one), 'z');
    EXPECT_EQ(fn_clbk_rawio_write_byte(one, 'q'), 1);
    Py_DECREF(one);
}

TEST_F(RawIoTest, FailuresLeaveThePythonErrorPending)
{
    PyObject* failing = value_of("Faulty(fail=['write', 'readinto'])");
    char buffer[4] = {};
    EXPECT_EQ(fn_clbk_rawio_write(failing, "ab", 2), -1);
    EXPECT_EQ(pending_error(), "OSError: disk full");
    EXPECT_EQ(fn_clbk_rawio_read(failing, buffer, 4), -1);
    EXPECT_EQ(pending_error(), "OSError: bad read");
    EXPECT_EQ(fn_clbk_rawio_readbyte(failing), -2);
    EXPECT_EQ(pending_error(), "OSError: bad read");

    PyObject* idle = value_of("Faulty(none=['write', 'readinto'])");
    EXPECT_EQ(fn_clbk_rawio_write(idle, "ab", 2), 0) << "None: nothing written";
    EXPECT_EQ(fn_clbk_rawio_read(idle, buffer, 4), 0) << "None: no data yet";
    EXPECT_FALSE(PyErr_Occurred());
    EXPECT_EQ(fn_clbk_rawio_readbyte(idle), -2);
    EXPECT_EQ(pending_error(), "OSError: no bytes are available for reading");

    PyObject* unseekable = value_of("Faulty()");
    EXPECT_EQ(fn_clbk_rawio_length(unseekable), -2);
    EXPECT_EQ(fn_clbk_rawio_seek(unseekable, 0, 0), -1);
    EXPECT_TRUE(PyErr_ExceptionMatches(PyExc_OSError));
    PyErr_Clear();

    PyObject* bad_closed = value_of("BadClosed()");
    EXPECT_EQ(fn_clbk_rawio_readable(bad_closed), -1);
    {
        PyError error;
        take_error(error);
        EXPECT_EQ(error.type, "TypeError");
        EXPECT_EQ(error.message, "An error occurred while checking if the stream is closed");
        EXPECT_EQ(error.cause(), "KeyError: 'closed?'");
    }
    EXPECT_EQ(fn_clbk_rawio_length(bad_closed), -1);
    PyErr_Clear();

    PyObject* broken_length = value_of("type('Odd', (io.BytesIO,), {'seek': lambda self, *a: 'far'})()");
    EXPECT_EQ(fn_clbk_rawio_length(broken_length), -1);
    {
        PyError error;
        take_error(error);
        EXPECT_EQ(error.message, "While calculating the length of the stream, an error occurred.");
    }
    for (PyObject* obj : {failing, idle, unseekable, bad_closed, broken_length})
        Py_DECREF(obj);
}

TEST_F(RawIoTest, ACloseThatRaisesKeepsThePendingError)
{
    UnraisableCapture capture;
    PyObject* file = value_of("Faulty(fail=['close'])");
    PyErr_SetString(PyExc_KeyError, "earlier");
    fn_clbk_rawio_close(file);
    EXPECT_EQ(pending_error(), "KeyError: 'earlier'");
    ASSERT_EQ(capture.count(), 1);
    EXPECT_NE(capture.entry(0).find("OSError|close failed"), std::string::npos) << capture.entry(0);
    PyObject* fine = value_of("io.BytesIO()");
    fn_clbk_rawio_close(fine);
    EXPECT_FALSE(PyErr_Occurred());
    EXPECT_EQ(capture.count(), 1);
    Py_DECREF(fine);
    // Closed for real now: the faulty close raises no more.
    exec("_f = Faulty(); _f.close()\n");
    Py_DECREF(file);
}

}  // namespace
