// Instance tests against types of standard or sibling Python modules
// (decimal.Decimal, uuid.UUID, io.RawIOBase, ...), fetched by interned name.
#pragma once

#include <Python.h>

// 1 when obj is an instance of <module>.<name>, 0 when not, -1 with an error
// set (an ImportError when the module or the type cannot be had).
int fn_is_instance_of_module_type(PyObject* obj, const char* module, PyObject* name);
