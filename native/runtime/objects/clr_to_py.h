// Managed results to Python objects: the most derived registered type wins.
// Every function returns a new reference (None for a null handle) or null with
// an error set; a handle that could not be wrapped is released.
#pragma once

#include <Python.h>
#include <cstdint>
#include "marshal/records.h"

PyObject* fn_py_clr_type_generic_new(void* handle, PyTypeObject* type);
PyObject* fn_conv_clr_clsobj_to_py_clsobj(void* handle, PyTypeObject* type);
PyObject* fn_conv_clr_ifcimpl_to_py_ifcimpl(const PyObjectOutArg& arg, PyTypeObject* ifc_type);
PyObject* fn_conv_clr_ifcimpl_to_py_ifcimpl_wps(const PyCollectionArg& arg, PyTypeObject* ifc_type);

// A result declared as a non-sealed class: the runtime type when it is
// registered and derives from the declared type, else the declared type.
PyObject* fn_conv_clr_basobj_to_py_basobj(const PyObjectOutArg& arg, PyTypeObject* declared);

// Runtime type of a handle through the weak cache (misses remembered) / the strong one.
PyTypeObject* get_py_type_weak_object_by_arg(void* handle, intptr_t type_key);
PyTypeObject* get_py_type_object_by_obj(void* handle, intptr_t type_key);
