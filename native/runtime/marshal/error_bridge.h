// Errors across the boundary in both directions.
#pragma once

#include <Python.h>
#include <cstdarg>
#include "marshal/records.h"

// Exception callback: raises RuntimeError "Proxy error(%U): %U"; takes over both strings.
void on_clr_exception(PyObject* type_text, PyObject* message_text);
// Catch-and-clear callback: the pending Python error as text for managed code.
int fn_catch_and_clear_py_error(PyObject** holder, PyStringArg* text);
// Raises a formatted exception chained (cause and context) onto the pending one.
PyObject* PyShlErr_ChainFormat(PyObject* exception_type, const char* format, ...);
// The same with a va_list. With no error pending it raises the new exception alone.
PyObject* PyShlErr_ChainFormatV(PyObject* exception_type, const char* format, va_list args);
