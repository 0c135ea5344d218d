// Python lists, sequences and iterables seen from managed code: the callbacks
// of the unsized-collection (ucol), list (olist), sequence (oseq) and
// iterator tables. Each receives the Python object first (borrowed) and runs
// with the GIL held by the thread that called into managed code.
//
// Status results: 0 success, -1 failure with a Python error pending, -2 index
// error (the pending error is an IndexError).
#pragma once

#include <Python.h>
#include <cstdint>

#include "marshal/records.h"

// ucol, slots 1-10 (slot 11 is fn_clbk_ucol_get_unicode_bytes, marshal/strings.h).
int32_t fn_clbk_ucol_list_length(PyObject* list);
int64_t fn_clbk_ucol_list_longlength(PyObject* list);
int32_t fn_clbk_ucol_remove_at(PyObject* obj, int32_t index);
int32_t fn_clbk_ucol_clear(PyObject* obj);
int32_t fn_clbk_ucol_sequence_length(PyObject* seq);
int64_t fn_clbk_ucol_sequence_longlength(PyObject* seq);
// New iterator reference, or null with TypeError "No iterator in '<type>'".
PyObject* fn_clbk_ucol_get_enumerator(PyObject* obj);
int32_t fn_clbk_ucol_object_length(PyObject* obj);
// A new list of `count` empty slots stored in *out; returns its item array
// for olist slot 8, or null with an error set.
PyObject** fn_clbk_ucol_create_fast_list(int32_t count, PyObject** out);
PyObject** fn_clbk_ucol_create_fast_longlist(int64_t count, PyObject** out);

// olist, slots 1-11. "consumed" item references are released on every path.
int32_t fn_clbk_olist_get_item(PyObject* list, int32_t index, VariantArg* out);
int32_t fn_clbk_olist_set_item(PyObject* list, int32_t index, PyObject* item);  // item stolen
int32_t fn_clbk_olist_add(PyObject* list, PyObject* item);                      // new size or -1
int32_t fn_clbk_olist_insert(PyObject* list, int32_t index, PyObject* item);
int32_t fn_clbk_olist_remove(PyObject* list, PyObject* item);
int32_t fn_clbk_olist_contains(PyObject* list, PyObject* item);  // 1, 0, -1
int32_t fn_clbk_olist_index_of(PyObject* list, PyObject* item);  // position, -1 absent, -2 error
int32_t fn_clbk_olist_set_fast_item(PyObject** items, int32_t index, PyObject* item);
PyObject* fn_clbk_olist_write_clr_ilist(void* handle);
PyObject* fn_clbk_olist_write_clr_arrlist(void* handle);
PyObject* fn_clbk_olist_write_clr_array(void* handle);

// oseq, slots 1-3. get_item's element may be made on demand, so the calling
// thread's state dictionary holds it until the next get_item on that thread
// or until the thread state is cleared (see containers.cpp).
int32_t fn_clbk_oseq_get_item(PyObject* seq, int32_t index, VariantArg* out);
int32_t fn_clbk_oseq_contains(PyObject* seq, PyObject* item);  // 1, 0, -1
int32_t fn_clbk_oseq_index_of(PyObject* seq, PyObject* item);  // position, -1 absent, -2 error

// iterator table: 0 an element (new reference in *item, its variant in *out),
// 1 exhausted, 2 error.
int32_t fn_clbk_iter_next(PyObject* iterator, PyObject** item, VariantArg* out);
