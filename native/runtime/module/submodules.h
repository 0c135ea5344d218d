// Registration of a created submodule under its full dotted name.
#pragma once

#include <Python.h>

// Inserts `module` into sys.modules as `full_name`, so that
// "from <full_name> import X" works; false with an error set on failure.
bool fn_register_submodule(const char* full_name, PyObject* module);
