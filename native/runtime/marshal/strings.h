// Strings and byte buffers, both without copying on the way in.
#pragma once

#include <Python.h>
#include <cstdint>
#include <string>
#include "marshal/records.h"

int fn_conv_py_string_to_clr_string(PyObject* obj, PyStringArg* out);
int fn_conv_py_string_to_clr_string_value(PyObject* str, PyStringArg* out);
int fn_read_py_string(PyObject* str, PyStringArg* out);

// Builders registered with the exchange host (managed code builds results through them).
PyObject* fn_conv_clr_string_to_py_string(const char16_t* units, int32_t count);
PyObject* fn_conv_clr_string_to_py_unraisable(const char16_t* units, int32_t count);
std::u16string* fn_create_u16_buffer(const char16_t* units, int32_t count);
PyObject* fn_conv_clr_bytes_to_py_bytes(const uint8_t* data, int32_t count);

int fn_conv_py_bytes_to_clr_bytes(PyObject* obj, PyBytesArgBuilder* out);
int fn_conv_py_bytes_to_clr_bytes_value(PyObject* obj, Py_buffer* view, PyBytesArg* out);
int fn_read_py_buffer_view(PyObject* obj, Py_buffer* view, PyBytesArg* out);

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
