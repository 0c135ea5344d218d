// Object-API table and the object-result writers: reference counting and
// wrappers for managed objects that managed code hands to Python.
#pragma once

#include <Python.h>
#include <cstdint>

void fn_xinc_ref(PyObject* obj);
void fn_xdec_ref(PyObject* obj);
PyObject* fn_get_py_none();

// A wrapper of the handle's runtime type (new reference; None for a null
// handle). Without a registered type the managed instance is freed and
// TypeError "unknown wrapper type" raised.
PyObject* fn_write_py_tpo(void* handle, intptr_t type_key);
// The same without raising for an unknown type: 1 with *out set, 0 after
// freeing the instance when no type is known, -1 when creating the wrapper failed.
int fn_try_write_py_tpo(void* handle, intptr_t type_key, PyObject** out);
