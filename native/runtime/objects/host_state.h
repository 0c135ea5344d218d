// Whether a generated class (and every type it depends on) could bind its managed entries.
#pragma once

#include <Python.h>
#include <string>

struct PyHostState {
    bool not_valid = false;
    bool inherited = false;
    std::string message;
};

// Raises the TypeError of an invalid state (chaining "one or more refereced
// type is not initialized" when inherited) and returns null.
PyObject* fn_raise_host_state_error(const PyHostState& state);

// The tp_new of every generated class: refuses construction when the state is
// invalid, otherwise allocates with PyType_GenericNew and a null handle.
PyObject* fn_clr_object_checked_new(PyTypeObject* type, const PyHostState& state);
