// Python arguments to managed handles for class- and interface-typed parameters.
// The generated converter of each type forwards here with its own identity.
#pragma once

#include <Python.h>

// A class parameter: None, a wrapper of the class or a subtype, or any
// host-marked wrapper whose managed object the class's proxy accepts
// (is_assignable). Otherwise TypeError "can't build <short_name> value from '<type>'".
int fn_conv_py_clsobj_to_clr_handle(PyObject* obj, void** out, PyTypeObject* cls, bool (*is_assignable)(void* handle),
                                    const char* short_name);
// An interface parameter: as above, but the wrapper's type must be the
// interface itself or list it among its additional interfaces.
int fn_conv_py_ifcobj_to_clr_handle(PyObject* obj, void** out, PyTypeObject* ifc, bool (*is_assignable)(void* handle),
                                    const char* short_name);
