// Managed ref/out parameters, carried in and out by a Python list: item 0
// (if any, and not None) is the value passed in; the managed out value
// replaces it, or is appended to an empty list.
#pragma once

#include <Python.h>
#include "marshal/records.h"

// Exactly a list, else TypeError "argument should be empty list or list
// contains default value, not '%.200s'". The list is kept in the record
// (borrowed). An empty list or None in item 0 leaves the value storage as the
// caller initialised it (the managed default); another item 0 goes through
// the record's converter. Items after the first are ignored.
int fn_conv_py_parbyref_to_clr_parbyref(PyObject* obj, PyParamByRef* arg);

// Stores the converted out value (a new reference, taken over on every path)
// into the list: appended when the list is empty, else replacing item 0.
// 0, or -1 with the Python error.
int fn_push_parbyref_outvalue(PyObject* list, PyObject* value);

// Adapts a typed converter to the record's converter signature, e.g.
// PyParamByRef arg = {nullptr, &fn_parbyref_convert<int32_t, fn_conv_py_long_to_clr_int32>, &storage};
template <typename T, int (*Convert)(PyObject*, T*)>
int fn_parbyref_convert(PyObject* obj, void* out)
{
    return Convert(obj, static_cast<T*>(out));
}
