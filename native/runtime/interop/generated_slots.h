// The sequence and mapping slots of generated collection classes (a class or
// interface with an int indexer and a Count). The algorithms live here once;
// each generated type hands them its own element entries and converters.
#pragma once

#include <Python.h>
#include <cstdint>

#include "marshal/records.h"

// The element-typed entries of one generated collection type. Status results:
// 0 ok, 2 index out of range, anything else a failure with a Python error
// pending. The write entries are null for read-only collections.
struct PyShlCollectionSlots {
    int32_t (*length)(void* handle);
    int32_t (*item)(void* handle, int32_t index, PyObjectOutArg* out);
    int32_t (*item_nocheck)(void* handle, int32_t index, PyObjectOutArg* out);
    int32_t (*contains)(void* handle, void* element);  // 1, 0, or -1 with an error
    int32_t (*ssitem)(void* handle, int32_t index, void* element);
    void (*ssitem_nocheck)(void* handle, int32_t index, void* element);
    // Bulk slice assignment from another managed collection.
    void (*ssubscript_sizable)(void* handle, void* source, int32_t start, int32_t slice_length, int32_t step,
                               int32_t size);
    // The element type's generated converters.
    PyObject* (*to_py)(const PyObjectOutArg& out);
    int (*to_clr)(PyObject* obj, void** out);
};

// len(): the managed Count.
Py_ssize_t wrpPye_bltp_coll_sq_length(PyObject* self, const PyShlCollectionSlots* slots);
// x[i] after the interpreter added the length to a negative index.
PyObject* wrpPye_bltp_coll_sq_item(PyObject* self, Py_ssize_t index, const PyShlCollectionSlots* slots);
// x[i] with one adjustment of a negative index, and x[a:b:c] as a new list.
PyObject* wrpPye_bltp_coll_mp_subscript(PyObject* self, PyObject* key, const PyShlCollectionSlots* slots);
// x[i] = v; deletion raises ValueError "elements removing not supported".
int wrpPye_bltp_coll_sq_ass_item(PyObject* self, Py_ssize_t index, PyObject* value, const PyShlCollectionSlots* slots);
// x[i] = v and x[a:b:c] = sequence of exactly the slice's length.
int wrpPye_bltp_coll_mp_ass_subscript(PyObject* self, PyObject* key, PyObject* value,
                                      const PyShlCollectionSlots* slots);
// v in x: a value the element converter refuses is not in the collection.
int wrpPye_bltp_coll_sq_contains(PyObject* self, PyObject* value, const PyShlCollectionSlots* slots);
// x + y and x * n: new Python lists.
PyObject* wrpPye_bltp_coll_sq_concat(PyObject* self, PyObject* other, const PyShlCollectionSlots* slots);
PyObject* wrpPye_bltp_coll_sq_repeat(PyObject* self, Py_ssize_t times, const PyShlCollectionSlots* slots);
