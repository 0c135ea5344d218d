// Managed Nullable<T> parameters.
#pragma once

#include <Python.h>
#include "marshal/records.h"

// None: success with has_value untouched (the caller initialises it to 0).
// Otherwise the record's converter fills the value storage (it receives the
// object, the storage and `extra`) and must return 1; then has_value is 1.
int fn_conv_py_nullable_to_clr_nullable(PyObject* obj, PyNullableArg* arg, void* extra);

// Adapts a typed converter to the record's converter signature, e.g.
// PyNullableArg arg = {0, &fn_nullable_convert<int32_t, fn_conv_py_long_to_clr_int32>, &storage};
template <typename T, int (*Convert)(PyObject*, T*)>
int fn_nullable_convert(PyObject* obj, void* out, void* /*extra*/)
{
    return Convert(obj, static_cast<T*>(out));
}
