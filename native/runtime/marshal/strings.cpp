// Strings into managed code without copying (the str's own storage and its
// character width), and UTF-16 from managed code back into Python str.
#include "marshal/strings.h"

#include <cstdlib>
#include <cstring>

#include "module/identifiers.h"

int fn_conv_py_string_to_clr_string_value(PyObject* str, PyStringArg* out)
{
    if (PyUnicode_READY(str) < 0) {
        PyErr_SetString(PyExc_TypeError, "unicode object is not ready");
        return 0;
    }
    int kind = PyUnicode_KIND(str);
    if (kind != PyUnicode_1BYTE_KIND && kind != PyUnicode_2BYTE_KIND && kind != PyUnicode_4BYTE_KIND) {
        PyErr_Format(PyExc_TypeError, "unknown unicode encoding '%i'", kind);
        return 0;
    }
    // PyUnicode_DATA picks the storage of compact ASCII, compact and legacy strings alike.
    out->char_size = kind;
    out->data = PyUnicode_DATA(str);
    out->length = (int32_t)PyUnicode_GET_LENGTH(str);
    return 1;
}

int fn_conv_py_string_to_clr_string(PyObject* obj, PyStringArg* out)
{
    if (obj == Py_None) {
        out->length = -1;
        out->char_size = 0;
        out->data = nullptr;
        return 1;
    }
    if (!PyUnicode_Check(obj)) {
        PyErr_Format(PyExc_TypeError, "can't build String from '%s'", Py_TYPE(obj)->tp_name);
        return 0;
    }
    return fn_conv_py_string_to_clr_string_value(obj, out);
}

int fn_read_py_string(PyObject* str, PyStringArg* out)
{
    return fn_conv_py_string_to_clr_string_value(str, out);
}

namespace {

PyObject* decode_utf16le(const char16_t* units, int32_t count)
{
    // Short text without surrogates maps unit for unit onto code points: build
    // the string directly in its narrowest storage, which saves most of the
    // cost of a short result. Longer text goes through the decoder, whose
    // vectorised loops win there, and so does anything with surrogates.
    if (units && count > 0 && count <= 32) {
        char16_t max_unit = 0;
        bool surrogates = false;
        for (int32_t i = 0; i < count; ++i) {
            char16_t u = units[i];
            max_unit = u > max_unit ? u : max_unit;
            surrogates |= (u >= 0xD800 && u <= 0xDFFF);
        }
        if (!surrogates) {
            PyObject* text = PyUnicode_New(count, max_unit);
            if (!text)
                return nullptr;
            if (PyUnicode_KIND(text) == PyUnicode_1BYTE_KIND) {
                Py_UCS1* target = PyUnicode_1BYTE_DATA(text);
                for (int32_t i = 0; i < count; ++i)
                    target[i] = (Py_UCS1)units[i];
            } else {
                memcpy(PyUnicode_2BYTE_DATA(text), units, (size_t)count * 2);
            }
            return text;
        }
    }
    int byteorder = -1;  // little-endian
    static const char16_t no_units = 0;
    // The empty error-handler name is deliberate; a decoding failure is
    // reported as whatever the decoder raises.
    return PyUnicode_DecodeUTF16(reinterpret_cast<const char*>(units ? units : &no_units),
                                 (Py_ssize_t)(count > 0 ? count : 0) * 2, "", &byteorder);
}

}  // namespace

PyObject* fn_conv_clr_string_to_py_string(const char16_t* units, int32_t count)
{
    return decode_utf16le(units, count);
}

PyObject* fn_conv_clr_string_to_py_unraisable(const char16_t* units, int32_t count)
{
    PyObject* result = decode_utf16le(units, count);
    if (!result && PyErr_Occurred())
        PyErr_WriteUnraisable(PyWrpIdTraceBack_FormatExceptionWarning);
    return result;
}

char16_t* fn_create_u16_buffer(const char16_t* units, int32_t count)
{
    size_t length = units && count > 0 ? (size_t)count : 0;
    // malloc, not new: the receiver may be managed code, which frees with
    // NativeMemory.Free (the C allocator's free).
    auto* buffer = static_cast<char16_t*>(malloc((length + 1) * sizeof(char16_t)));
    if (!buffer) {
        PyErr_NoMemory();
        return nullptr;
    }
    if (length)
        memcpy(buffer, units, length * sizeof(char16_t));
    buffer[length] = 0;
    return buffer;
}

PyObject* fn_conv_py_string_to_utf16_bytes(PyObject* obj)
{
    if (!PyUnicode_Check(obj)) {
        PyErr_Format(PyExc_TypeError, "can't build Char from '%s'", Py_TYPE(obj)->tp_name);
        return nullptr;
    }
    if (PyUnicode_READY(obj) < 0) {
        PyErr_SetString(PyExc_TypeError, "unicode object is not ready");
        return nullptr;
    }
    PyObject* encoded = PyUnicode_AsUTF16String(obj);
    if (!encoded) {
        if (!PyErr_Occurred())
            PyErr_SetString(PyExc_TypeError, "cannot convert unicode object to byte string");
        return nullptr;
    }
    if (!PyBytes_Check(encoded)) {
        PyErr_Format(PyExc_TypeError, "converted string must be bytes-like object, not '%s'",
                     Py_TYPE(encoded)->tp_name);
        Py_DECREF(encoded);
        return nullptr;
    }
    return encoded;
}

int fn_clbk_ucol_get_unicode_bytes(PyObject* str, PyObject** holder, int32_t* count, const void** data)
{
    PyObject* encoded = fn_conv_py_string_to_utf16_bytes(str);
    if (!encoded)
        return -1;
    *holder = encoded;
    *count = (int32_t)((PyBytes_GET_SIZE(encoded) - 2) / 2);
    // Four bytes in, as the managed reader of this slot expects (see the header).
    *data = PyBytes_AS_STRING(encoded) + 4;
    return 0;
}
