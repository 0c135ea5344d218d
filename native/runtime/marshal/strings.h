// Strings and byte buffers, both without copying on the way in.
#pragma once

#include <Python.h>
#include <cstdint>
#include "marshal/records.h"

int fn_conv_py_string_to_clr_string(PyObject* obj, PyStringArg* out);
int fn_conv_py_string_to_clr_string_value(PyObject* str, PyStringArg* out);
int fn_read_py_string(PyObject* str, PyStringArg* out);

// Builders registered with the exchange host (managed code builds results through them).
PyObject* fn_conv_clr_string_to_py_string(const char16_t* units, int32_t count);
PyObject* fn_conv_clr_string_to_py_unraisable(const char16_t* units, int32_t count);
// A zero-terminated copy of `count` units in memory from malloc; whoever
// receives it frees it with free() (managed code: NativeMemory.Free). Null
// with MemoryError set when the allocation fails.
char16_t* fn_create_u16_buffer(const char16_t* units, int32_t count);
PyObject* fn_conv_clr_bytes_to_py_bytes(const uint8_t* data, int32_t count);

// An exporter's contiguous bytes (at most Int32 of them) for managed code,
// without copying. On success (1) the view is acquired and out->need_release
// is 1: the caller releases it (PyBytesArgBuilder does so when it goes out of
// scope, managed code through the buffer table). On failure (0, BufferError
// or TypeError set) nothing is held and out->need_release is left as it was.
// None converts to length -1 with nothing acquired.
int fn_conv_py_bytes_to_clr_bytes(PyObject* obj, PyBytesArgBuilder* out);
int fn_conv_py_bytes_to_clr_bytes_value(PyObject* obj, Py_buffer* view, PyBytesArg* out);
int fn_read_py_buffer_view(PyObject* obj, Py_buffer* view, PyBytesArg* out);
int fn_read_py_buffer(PyObject* obj, Py_buffer* view, PyBytesArg* out);

// Buffer table: managed code allocates a view of this size, zero-fills it
// through fn_create_py_byffer, fills it and releases it (a zero-filled view
// releases as a no-op).
int32_t fn_get_sizeof_py_byffer();
void fn_create_py_byffer(Py_buffer* view);
void fn_release_py_buffer(Py_buffer* view);

// The UTF-16 encoding of a str with its byte-order mark, as a new bytes
// object; TypeError "can't build Char from '%s'" for anything but a str.
PyObject* fn_conv_py_string_to_utf16_bytes(PyObject* obj);

// ucol slot 11: the UTF-16 text of a str for managed code. On success (0)
// *holder owns the text (release it through the object-API table), *count is
// the number of code units and *data points 4 bytes into the encoding, i.e.
// one unit past the byte-order mark: the reader starts one unit before *data.
// -1 with a Python error set on failure.
int fn_clbk_ucol_get_unicode_bytes(PyObject* str, PyObject** holder, int32_t* count, const void** data);

// A string result written by managed code as a new PyObject* (null: None).
static inline PyObject* fn_take_py_string_result(PyObject* result)
{
    if (PyErr_Occurred()) {
        Py_XDECREF(result);
        return nullptr;
    }
    if (!result)
        Py_RETURN_NONE;
    return result;
}
