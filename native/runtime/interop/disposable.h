// _IDisposableWrapper: managed IDisposable objects as context managers.
#pragma once

#include <Python.h>
#include <string>

extern PyTypeObject wrpPye_tyds_FFFFFFFF_IDisposableWrapper;

// The disposable proxy's binding state, for the host-state checks of other types.
bool wrpPye_is_not_valid_disposable(std::string& message);
// Whether the disposable proxy accepts the managed object behind a handle.
bool wrpPye_is_assignable_to_disposable(void* handle);

// __enter__ returns self; __exit__(*args) disposes through the object host and returns None.
PyObject* wrpPye_mtfn_disposable_enter(PyObject* self, PyObject* ignored);
PyObject* wrpPye_mtfn_disposable_exit(PyObject* self, PyObject* args);

// An IDisposable parameter: None, an _IDisposableWrapper or a wrapper whose
// type lists it among its additional interfaces, or a host-marked wrapper
// whose managed object is disposable. Otherwise TypeError
// "can't build IDisposable value from '<type>'".
int wrpPye_conv_py_to_clr_disposable(PyObject* obj, void** out);
