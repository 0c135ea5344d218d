// Managed collections, enumerables and enumerators seen from Python, and the
// conversions of Python arguments to collection-typed managed parameters.
// This is what the generated layer calls.
#pragma once

#include <Python.h>
#include <cstdint>
#include <string>

#include "marshal/records.h"

// The fixed wrapper types of <root>._wrpgen._interop.
extern PyTypeObject wrpPye_tyds_FFFFFFFF_IterWrapper;
extern PyTypeObject wrpPye_tyds_FFFFFFFF_IterableWrapper;
extern PyTypeObject wrpPye_tyds_FFFFFFFF_IColWrapper;
extern PyTypeObject wrpPye_tyds_FFFFFFFF_IListWrapper;
extern PyTypeObject wrpPye_tyds_FFFFFFFF_RoColBaseWrapper;
extern PyTypeObject wrpPye_tyds_FFFFFFFF_ColBaseWrapper;
extern PyTypeObject wrpPye_tyds_FFFFFFFF_ArrayWrapper;
extern PyTypeObject wrpPye_tyds_FFFFFFFF_ArrListWrapper;

// Argument conversions (O& converters; 1 success, 0 with TypeError set). The
// output record is a VariantArg used with a tag set of its own:
//   0  value is a managed handle (null for None),
//   1  value is the Python object itself (a list, an iterable, an iterator),
//   2  value is a Python sequence with a length (not a list).
// The managed receiver turns kinds 1 and 2 into views (Collections.*FromArg).
int wrpPye_conv_py_to_clr_ilist(PyObject* obj, VariantArg* out);      // IList
int wrpPye_conv_py_to_clr_icol(PyObject* obj, VariantArg* out);       // ICollection
int wrpPye_conv_py_to_clr_array(PyObject* obj, VariantArg* out);      // Array / T[]
int wrpPye_conv_py_to_clr_arrlist(PyObject* obj, VariantArg* out);    // ArrayList
int wrpPye_conv_py_to_clr_colbase(PyObject* obj, VariantArg* out);    // CollectionBase
int wrpPye_conv_py_to_clr_rocolbase(PyObject* obj, VariantArg* out);  // ReadOnlyCollectionBase
int wrpPye_conv_py_to_clr_iter(PyObject* obj, VariantArg* out);       // IEnumerable
int wrpPye_conv_py_to_clr_iterator(PyObject* obj, VariantArg* out);   // IEnumerator

// Binding state of each proxy, for the host-state checks of other types:
// false when valid, else true with the binding failure in `message`.
bool wrpPye_is_not_valid_icol(std::string& message);
bool wrpPye_is_not_valid_ilist(std::string& message);
bool wrpPye_is_not_valid_array(std::string& message);
bool wrpPye_is_not_valid_arrlist(std::string& message);
bool wrpPye_is_not_valid_colbase(std::string& message);
bool wrpPye_is_not_valid_rocolbase(std::string& message);
bool wrpPye_is_not_valid_iter(std::string& message);      // SiApiEnumerable
bool wrpPye_is_not_valid_iterator(std::string& message);  // SiApiEnumerator

// Results. A PyCollectionArg written by managed code (Collections.WriteResult):
// kind 1 is a Python object handed back as itself (new reference); otherwise
// the handle becomes a wrapper of `least_derived` unless the registry knows a
// more derived type that lists it among its interfaces. Null handle: None.
PyObject* wrpPye_conv_clr_collection_to_py(const PyCollectionArg& arg, PyTypeObject* least_derived);
// Shorthands for the fixed wrapper types.
PyObject* wrpPye_conv_clr_ilist_to_py(const PyCollectionArg& arg);
PyObject* wrpPye_conv_clr_icol_to_py(const PyCollectionArg& arg);
PyObject* wrpPye_conv_clr_array_to_py(const PyCollectionArg& arg);
PyObject* wrpPye_conv_clr_arrlist_to_py(const PyCollectionArg& arg);
PyObject* wrpPye_conv_clr_colbase_to_py(const PyCollectionArg& arg);
PyObject* wrpPye_conv_clr_rocolbase_to_py(const PyCollectionArg& arg);
PyObject* wrpPye_conv_clr_iter_to_py(const PyCollectionArg& arg);
PyObject* wrpPye_conv_clr_iterator_to_py(const PyCollectionArg& arg);

// tp_iter of every collection wrapper: the managed GetEnumerator as an _IterWrapper.
PyObject* wrpPye_collection_tp_iter(PyObject* self);
// What a GetEnumerator entry gave (its status and out record), as a wrapper
// of `iter_type` or a more derived registered type. A declined enumeration
// (a negative status or no handle, without a Python error) raises ValueError
// "the collection was modified during the operation".
PyObject* fn_enumerator_to_py(int32_t status, const PyObjectOutArg& out, PyTypeObject* iter_type);
