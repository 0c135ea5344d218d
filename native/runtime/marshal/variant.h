// Untyped (object) arguments: classification into VariantArg tags.
#pragma once

#include <Python.h>
#include "marshal/records.h"

int fn_conv_py_variant_to_clr_variant(PyObject* obj, VariantArg* out);
