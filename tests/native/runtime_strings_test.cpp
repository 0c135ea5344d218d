// Strings and byte buffers in both directions.
#include <cstdlib>
#include <cstring>
#include <vector>

#include "marshal/strings.h"
#include "runtime_python.h"

using namespace runtimetest;

namespace {

class StringsTest : public PythonTest {
protected:
    PyError error_;
};

TEST_F(StringsTest, StringsPassTheirOwnStorage)
{
    struct Case {
        const char* expression;
        int32_t char_size;
        int32_t length;
    };
    const Case cases[] = {
        {"'h\\xe9llo'", 1, 5}, {"'\\u20acuro'", 2, 4}, {"'a\\U0001F600'", 4, 2}, {"MyStr('sub')", 1, 3}, {"''", 1, 0},
    };
    for (const Case& c : cases) {
        PyObject* str = eval(c.expression);
        PyStringArg arg{-1, 0, nullptr};
        ASSERT_EQ(fn_conv_py_string_to_clr_string(str, &arg), 1) << c.expression;
        EXPECT_EQ(arg.char_size, c.char_size) << c.expression;
        EXPECT_EQ(arg.length, c.length) << c.expression;
        EXPECT_EQ(arg.data, PyUnicode_DATA(str)) << "no copy is made";
        Py_DECREF(str);
    }

    PyObject* latin = eval("'h\\xe9'");
    PyStringArg arg{-1, 0, nullptr};
    ASSERT_EQ(fn_read_py_string(latin, &arg), 1);
    EXPECT_EQ(std::memcmp(arg.data, "h\xe9", 2), 0);
    Py_DECREF(latin);
}

TEST_F(StringsTest, StringConverterTakesNoneAndRefusesOthers)
{
    PyStringArg arg{0, 0, nullptr};
    ASSERT_EQ(fn_conv_py_string_to_clr_string(Py_None, &arg), 1);
    EXPECT_EQ(arg.length, -1);

    PyObject* bytes = eval("b'x'");
    EXPECT_EQ(fn_conv_py_string_to_clr_string(bytes, &arg), 0);
    Py_DECREF(bytes);
    take_error(error_);
    EXPECT_EQ(error_.type, "TypeError");
    EXPECT_EQ(error_.message, "can't build String from 'bytes'");
}

TEST_F(StringsTest, Utf16UnitsBecomeStr)
{
    const char16_t text[] = u"h\u00e9llo \U0001F600";
    PyObject* str = fn_conv_clr_string_to_py_string(text, (int32_t)(sizeof(text) / 2 - 1));
    ASSERT_NE(str, nullptr);
    EXPECT_EQ(to_utf8(str), "h\xC3\xA9llo \xF0\x9F\x98\x80");
    EXPECT_EQ(PyUnicode_GET_LENGTH(str), 7);
    Py_DECREF(str);

    PyObject* empty = fn_conv_clr_string_to_py_string(nullptr, 0);
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(PyUnicode_GET_LENGTH(empty), 0);
    Py_DECREF(empty);

    const char16_t lone[] = {u'a', 0xD800, u'b'};
    EXPECT_EQ(fn_conv_clr_string_to_py_string(lone, 3), nullptr);
    EXPECT_TRUE(PyErr_Occurred());
    PyErr_Clear();
}

TEST_F(StringsTest, UnraisableBuilderReportsInsteadOfRaising)
{
    UnraisableCapture capture;
    const char16_t lone[] = {0xDC00};
    EXPECT_EQ(fn_conv_clr_string_to_py_unraisable(lone, 1), nullptr);
    EXPECT_FALSE(PyErr_Occurred());
    ASSERT_EQ(capture.count(), 1);
    EXPECT_EQ(capture.entry(0).rfind("FormatCallbackException|", 0), 0u) << capture.entry(0);

    const char16_t ok[] = u"ok";
    PyObject* str = fn_conv_clr_string_to_py_unraisable(ok, 2);
    ASSERT_NE(str, nullptr);
    EXPECT_EQ(to_utf8(str), "ok");
    Py_DECREF(str);
    EXPECT_EQ(capture.count(), 1);
}

TEST_F(StringsTest, U16BufferIsAZeroTerminatedCopyFromMalloc)
{
    char16_t units[] = {u'a', u'b', u'c'};
    char16_t* buffer = fn_create_u16_buffer(units, 2);
    ASSERT_NE(buffer, nullptr);
    units[0] = u'z';
    EXPECT_EQ(std::u16string(buffer), u"ab") << "a copy, cut after `count` units";
    // The receiver frees it with the C allocator (managed code: NativeMemory.Free);
    // a sanitizer or malloc's own checks catch a mismatch here.
    free(buffer);

    for (char16_t* empty : {fn_create_u16_buffer(nullptr, 3), fn_create_u16_buffer(units, 0)}) {
        ASSERT_NE(empty, nullptr);
        EXPECT_EQ(empty[0], u'\0');
        free(empty);
    }
}

TEST_F(StringsTest, BytesPassTheExportersMemory)
{
    PyObject* data = eval("bytearray(b'abc')");
    {
        PyBytesArgBuilder builder;
        EXPECT_EQ(builder.get_info()->length, -1);
        ASSERT_EQ(fn_conv_py_bytes_to_clr_bytes(data, &builder), 1);
        EXPECT_EQ(builder.get_info()->length, 3);
        EXPECT_EQ(builder.get_info()->need_release, 1u);
        EXPECT_EQ(builder.get_info()->data, PyByteArray_AS_STRING(data));
        // While the view is held the exporter cannot resize.
        EXPECT_EQ(PyByteArray_Resize(data, 10), -1);
        PyErr_Clear();
    }
    EXPECT_EQ(PyByteArray_Resize(data, 10), 0) << "the builder released its view";
    Py_DECREF(data);

    PyObject* empty = eval("b''");
    PyBytesArgBuilder builder;
    ASSERT_EQ(fn_conv_py_bytes_to_clr_bytes(empty, &builder), 1);
    EXPECT_EQ(builder.get_info()->length, 0);
    EXPECT_NE(builder.get_info()->data, nullptr);
    Py_DECREF(empty);
}

TEST_F(StringsTest, BytesConverterRefusals)
{
    PyBytesArgBuilder none;
    ASSERT_EQ(fn_conv_py_bytes_to_clr_bytes(Py_None, &none), 1);
    EXPECT_EQ(none.get_info()->length, -1);
    EXPECT_EQ(none.get_info()->need_release, 0u);

    PyObject* number = eval("5");
    PyBytesArgBuilder typed;
    EXPECT_EQ(fn_conv_py_bytes_to_clr_bytes(number, &typed), 0);
    Py_DECREF(number);
    take_error(error_);
    EXPECT_EQ(error_.type, "TypeError");
    EXPECT_EQ(error_.message, "can't build byte[] from 'int'");

    PyObject* base = eval("bytearray(b'abcdef')");
    PyDict_SetItemString(globals(), "_base", base);
    PyObject* strided = eval("memoryview(_base)[::2]");
    {
        PyBytesArgBuilder builder;
        EXPECT_EQ(fn_conv_py_bytes_to_clr_bytes(strided, &builder), 0);
        take_error(error_);
        EXPECT_EQ(error_.type, "BufferError");
        EXPECT_EQ(error_.message, "buffer is not contiguous");
        EXPECT_EQ(builder.get_info()->need_release, 0u) << "nothing is left for the builder to release";
        // A memoryview cannot be released while an export of it is alive.
        PyObject* released = PyObject_CallMethod(strided, "release", nullptr);
        EXPECT_NE(released, nullptr) << "the refused view was given back at once";
        if (!released)
            PyErr_Clear();
        Py_XDECREF(released);
    }
    Py_DECREF(strided);
    PyDict_DelItemString(globals(), "_base");
    EXPECT_EQ(PyByteArray_Resize(base, 1), 0) << "no export survives the failed conversion";
    Py_DECREF(base);
}

TEST_F(StringsTest, BufferTableViewsReleaseSafely)
{
    std::vector<char> storage((size_t)fn_get_sizeof_py_byffer(), 'x');
    ASSERT_EQ(storage.size(), sizeof(Py_buffer));
    auto* view = reinterpret_cast<Py_buffer*>(storage.data());
    fn_create_py_byffer(view);
    fn_release_py_buffer(view);  // a zero-filled view releases as a no-op

    PyObject* strided = eval("memoryview(b'abcdef')[::2]");
    PyBytesArg refused{0, -1, nullptr};
    EXPECT_EQ(fn_read_py_buffer_view(strided, view, &refused), 0);
    EXPECT_EQ(refused.need_release, 0u);
    EXPECT_EQ(view->obj, nullptr) << "a refused view holds no exporter";
    PyErr_Clear();
    fn_release_py_buffer(view);  // what managed code does in its cleanup
    Py_DECREF(strided);
    fn_create_py_byffer(view);

    PyObject* data = eval("b'xyz'");
    PyBytesArg info{0, -1, nullptr};
    ASSERT_EQ(fn_read_py_buffer_view(data, view, &info), 1);
    EXPECT_EQ(info.length, 3);
    Py_ssize_t before = Py_REFCNT(data);
    fn_release_py_buffer(view);
    fn_release_py_buffer(view);
    EXPECT_EQ(Py_REFCNT(data), before - 1) << "released exactly once";
    Py_DECREF(data);
}

TEST_F(StringsTest, ManagedBytesComeBackAsBytearray)
{
    const uint8_t raw[] = {1, 2, 0, 255};
    PyObject* result = fn_conv_clr_bytes_to_py_bytes(raw, 4);
    ASSERT_NE(result, nullptr);
    EXPECT_TRUE(PyByteArray_CheckExact(result));
    ASSERT_EQ(PyByteArray_GET_SIZE(result), 4);
    EXPECT_EQ(std::memcmp(PyByteArray_AS_STRING(result), raw, 4), 0);
    Py_DECREF(result);
}

TEST_F(StringsTest, UnicodeBytesForManagedCollections)
{
    PyObject* str = eval("'h\\xe9\\u20ac'");
    PyObject* holder = nullptr;
    int32_t count = 0;
    const void* data = nullptr;
    ASSERT_EQ(fn_clbk_ucol_get_unicode_bytes(str, &holder, &count, &data), 0);
    ASSERT_NE(holder, nullptr);
    EXPECT_EQ(count, 3);
    // The text starts one unit before the pointer handed out.
    const char16_t* units = static_cast<const char16_t*>(data) - 1;
    EXPECT_EQ(units[0], u'h');
    EXPECT_EQ(units[1], u'\u00e9');
    EXPECT_EQ(units[2], u'\u20ac');
    Py_DECREF(holder);
    Py_DECREF(str);

    PyObject* number = eval("3");
    EXPECT_EQ(fn_clbk_ucol_get_unicode_bytes(number, &holder, &count, &data), -1);
    Py_DECREF(number);
    take_error(error_);
    EXPECT_EQ(error_.message, "can't build Char from 'int'");
}

}  // namespace
