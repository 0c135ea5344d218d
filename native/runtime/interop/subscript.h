// The reads every sized collection wrapper shares: the subscript, an index
// (made non-negative once by the length) or a slice (a new Python list), with
// the messages of a Python list; and all elements as a new list.
#pragma once

#include <Python.h>

// Reads one element; `context` is the caller's (its slot table, or null).
typedef PyObject* (*fn_item_reader)(PyObject* self, Py_ssize_t index, const void* context);

// `checked` raises IndexError outside the collection; `nocheck` is used for
// the indices a slice has already clamped. `length` is the caller's, known >= 0.
PyObject* fn_subscript_sizable(PyObject* self, PyObject* key, Py_ssize_t length, fn_item_reader checked,
                               fn_item_reader nocheck, const void* context);

// Elements 0..length-1, read once each with `nocheck`, as a new list; null
// with the error set when a read fails. `length` is the caller's, known >= 0.
PyObject* fn_items_list(PyObject* self, Py_ssize_t length, fn_item_reader nocheck, const void* context);
