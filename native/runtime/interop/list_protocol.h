// The Python list protocol of every indexable wrapper of a managed collection
// (the untyped list, array-list and array wrappers, the typed generic ones and
// the generated collection classes), written once: index normalisation,
// slicing, item and slice assignment and deletion, concatenation, repetition,
// extend, and the argument handling and messages of the list methods.
//
// A family of wrappers describes how it reaches its elements in a
// PyListAccess; every function here receives that table and the family's
// `context` (its own element table, or null) and passes the context on.
#pragma once

#include <Python.h>
#include <cstdint>

// What a slice may be assigned from, besides an exact list or tuple (which
// every family takes element by element after an exact size check).
enum class PyListSliceSource {
    // A sequence whose type has a length slot; its size is checked first, then
    // a managed source is offered whole to `assign_from_managed`, and the
    // elements are copied one by one when that declines.
    SizedSequence,
    // A sequence whose type has an item slot; a managed source is handed whole
    // to `assign_from_managed` without a size check (the managed side checks
    // it), any other source is size-checked and copied element by element.
    IndexableSequence,
};

struct PyListAccess {
    // The element count; -1 with an error set on failure.
    Py_ssize_t (*length)(PyObject* self, const void* context);
    // A new reference to the element at `index` (negative indices have been
    // adjusted once by the length); IndexError "list index out of range"
    // outside the collection; null with an error set on failure.
    PyObject* (*get_item)(PyObject* self, Py_ssize_t index, const void* context);
    // As get_item, for an index known to be inside the collection.
    PyObject* (*get_item_nocheck)(PyObject* self, Py_ssize_t index, const void* context);
    // Converts `value` and writes it at `index`; IndexError outside. 0 or -1.
    // Null for read-only families (the protocol then never writes).
    int (*set_item)(PyObject* self, Py_ssize_t index, PyObject* value, const void* context);
    // As set_item, for an index known to be inside the collection.
    int (*set_item_nocheck)(PyObject* self, Py_ssize_t index, PyObject* value, const void* context);
    // Removes the element at `index`; IndexError outside. 0 or -1. Null for a
    // family of fixed size: deletion raises "elements removing not supported".
    int (*remove_at)(PyObject* self, Py_ssize_t index, const void* context);
    // Removes `slice_length` elements from `start` by `step`; the step is
    // never positive, so the highest index goes first. 0 or -1. Null with
    // remove_at.
    int (*remove_slice)(PyObject* self, Py_ssize_t start, Py_ssize_t slice_length, Py_ssize_t step,
                        const void* context);
    // Offers a slice assignment from another managed object as one managed
    // call: 1 done, 0 declined, -1 with an error set.
    int (*assign_from_managed)(PyObject* self, PyObject* source, Py_ssize_t start, Py_ssize_t slice_length,
                               Py_ssize_t step, Py_ssize_t length, const void* context);
    PyListSliceSource slice_source;
    // Converts `value` and appends it. 0 or -1. Null for a family of fixed size.
    int (*add)(PyObject* self, PyObject* value, const void* context);
    // Called before `count` elements of a list, tuple or sized sequence are
    // added (may be null). 0 or -1.
    int (*reserve)(PyObject* self, Py_ssize_t count, const void* context);
    // Offers an extend from another managed object as one managed call:
    // 1 done, 0 declined, -1 with an error set.
    int (*extend_from_managed)(PyObject* self, PyObject* other, const void* context);
};

// x[key]: an index (adjusted once by the length when negative) or a slice (a
// new Python list). TypeError "list indices must be integers or slices, not
// <type>" for other keys.
PyObject* fn_list_subscript(PyObject* self, PyObject* key, const PyListAccess* access, const void* context);

// x[i] = v and del x[i] with an index already made non-negative.
int fn_list_ass_item(PyObject* self, Py_ssize_t index, PyObject* value, const PyListAccess* access,
                     const void* context);

// x[key] = v and del x[key]. A slice keeps its length: the source must have
// exactly as many elements, also for step 1.
int fn_list_ass_subscript(PyObject* self, PyObject* key, PyObject* value, const PyListAccess* access,
                          const void* context);

// Every element, read once each, as a new Python list.
PyObject* fn_list_items(PyObject* self, const PyListAccess* access, const void* context);

// x + y: a new Python list of x's elements followed by the operand's (a list,
// tuple, sized sequence or iterable; ValueError "argument must be iterable or
// sequence" for anything else).
PyObject* fn_list_concat(PyObject* self, PyObject* other, const PyListAccess* access, const void* context);

// x * n: a new Python list of x's elements n times (n < 0 counts as 0); the
// elements are read once each, also for n = 0. copy() is repetition by 1.
PyObject* fn_list_repeat(PyObject* self, Py_ssize_t times, const PyListAccess* access, const void* context);

// x.extend(y), also behind x += y. 0 or -1.
int fn_list_extend(PyObject* self, PyObject* other, const PyListAccess* access, const void* context);

// Messages of a Python list, set and returned as the caller's failure value.
PyObject* fn_list_index_error();
int fn_list_removal_refused();

// Maps the status of an element entry: 0 gives 0; 2 raises IndexError "list
// index out of range"; anything else is a failure (RuntimeError naming
// `operation` unless an error is already pending). 0 or -1.
int fn_list_check_status(int32_t status, const char* operation);

// Arguments of pop([i]): none, None, or an integer. 1, or 0 with an error set.
int fn_list_pop_args(PyObject* args, int32_t* has_index, Py_ssize_t* index);
// The result of a managed Pop: `item` (a new reference, None when null) for
// status 0, else the IndexError of an empty list or a bad index.
PyObject* fn_list_pop_result(int32_t status, PyObject* item);

// The result of a managed Remove: None, or ValueError "list.remove(x): x not in list".
PyObject* fn_list_remove_result(bool removed);

// Arguments of index(v[, start[, stop]]). 1, or 0 with an error set.
int fn_list_index_args(PyObject* args, PyObject** value, int32_t* has_start, Py_ssize_t* start, int32_t* has_stop,
                       Py_ssize_t* stop);
// The result of a managed IndexBy: the position, or ValueError "value is not in list".
PyObject* fn_list_index_result(int32_t position);

// Arguments of sort(key=None, reverse=False); a key other than None is
// refused. 1, or 0 with an error set.
int fn_list_sort_args(PyObject* args, PyObject* kwargs, int32_t* reverse);
