// Small questions about arbitrary Python objects, for the collection adapters
// and the error bridge.
#pragma once

#include <Python.h>

// The type has a sequence or mapping length slot.
bool PyShlObject_HasLength(PyObject* obj);
// The type has an iterator slot, or the object passes the sequence check.
bool PyShlObject_HasIter(PyObject* obj);
// __qualname__ of the object when present and a str: true with a new
// reference in *out. Otherwise false with *out null and no error pending.
bool fn_get_obj_qualname(PyObject* obj, PyObject** out);
