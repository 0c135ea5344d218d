// Typed instantiations of the collection wrappers (<root>._wrpgen._generic).
// The algorithms live here once. Each generated instantiation is a PyGnType:
// a type object followed by its element type's converters and a function that
// binds its hosts on first use, so that the slot functions shared by every
// instantiation find everything through the instance's own type.
#pragma once

#include <Python.h>
#include <cstdint>
#include <string>

#include "marshal/records.h"

// Room for one converted element: a handle, a scalar or a record such as
// PyStringArg. Entries receive a pointer to it.
struct alignas(16) PyGnStorage {
    unsigned char bytes[32];
};

// How one element type crosses: `to_py` turns an element written by managed
// code into a new reference (for objects the generated managed-to-Python
// converter, so the most derived type wins); `to_clr` is the element's O&
// converter and fails with its own TypeError.
struct PyGnElement {
    PyObject* (*to_py)(const PyObjectOutArg& out);
    int (*to_clr)(PyObject* obj, void* storage);
};

// The entries of the hosts one wrapper type uses. Absent ones stay null
// (an array has no add, insert, remove...). Element arguments point at a
// PyGnStorage filled by the element converter.
struct PyGnEntries {
    int32_t (*sq_length)(void*) = nullptr;
    int32_t (*sq_getitem)(void*, int32_t, PyObjectOutArg*) = nullptr;
    int32_t (*sq_getitem_nocheck)(void*, int32_t, PyObjectOutArg*) = nullptr;
    int32_t (*sq_setitem)(void*, int32_t, const void*) = nullptr;
    void (*sq_setitem_nocheck)(void*, int32_t, const void*) = nullptr;
    int32_t (*sq_contains)(void*, const void*) = nullptr;
    int32_t (*count_of)(void*, const void*) = nullptr;
    int32_t (*index_by)(void*, int32_t, int32_t, int32_t, int32_t, const void*) = nullptr;
    void (*reverse)(void*) = nullptr;
    void (*sort)(void*, int32_t) = nullptr;
    int32_t (*mp_set_items)(void*, void*, int32_t, int32_t, int32_t) = nullptr;
    void (*add)(void*, const void*) = nullptr;
    void (*insert)(void*, int32_t, const void*) = nullptr;
    uint8_t (*remove)(void*, const void*) = nullptr;
    int32_t (*remove_at)(void*, int32_t) = nullptr;
    int32_t (*pop)(void*, int32_t, int32_t, PyObjectOutArg*) = nullptr;
    void (*clear)(void*) = nullptr;
    int32_t (*sq_inplace_concat)(void*, void*) = nullptr;
    void (*sq_inplace_repeat)(void*, int32_t) = nullptr;
    void (*mp_remove_items)(void*, int32_t, int32_t, int32_t) = nullptr;
    int32_t (*get_enumerator)(void*, PyObjectOutArg*) = nullptr;
    int32_t (*move_next)(void*, PyObjectOutArg*) = nullptr;
    // Of the wrapper's own proxy.
    uint8_t (*is_assignable_to)(void*) = nullptr;
};

// The binding state of a wrapper type: the first host failure, if any.
struct PyGnBinding {
    bool not_valid = false;
    std::string message;
    PyGnEntries entries;
};

enum class PyGnKind { List, Array, Iterable, Iterator };

struct PyGnType {
    PyTypeObject type;
    PyGnKind kind;
    PyGnElement element;
    // Binds the hosts on the first call; later calls return the same record.
    const PyGnBinding* (*binding)();
    // The enumerator wrapper of the same element type (tp_iter results).
    PyTypeObject* iter_type;
};

// Fills a zero-initialised PyGnType from its kind's template, names it
// "<root>._wrpgen._generic.<name>" (the string must outlive the type) and
// readies it. 0, or -1 with an error set.
int wrpPye_gn_ready(PyGnType* t, const char* qualified_name);

// Results typed as this instantiation: None, the Python object behind a view,
// or a wrapper of the most derived registered type that lists the wrapper
// among its interfaces, else of the wrapper itself.
PyObject* wrpPye_gn_result_to_py(const PyCollectionArg& arg, PyGnType* least_derived);

// The managed enumerator of any enumerable handle (a generic wrapper or a
// generated collection class) as a new `iter_type` wrapper.
PyObject* wrpPye_gn_tp_iter(PyObject* self, const PyGnBinding* enumerable, PyTypeObject* iter_type);

// O& conversion of an argument typed as this instantiation into the {kind,
// value} record of the untyped conversions: None; the wrapper itself or an
// object that lists it among its additional interfaces; a host-marked object
// whose managed object the proxy accepts; then a list (kind 1) or sized
// sequence (kind 2) for lists and arrays, any iterable (kind 1) for
// enumerables. Otherwise TypeError "can't build <what> value from '<type>'".
int wrpPye_gn_conv_py_to_clr(PyObject* obj, VariantArg* out, PyGnType* t, const char* what);

// Typed Python-container callbacks (managed views call them): status 0 with
// the converted element in `storage`, -2 for an IndexError, -1 for any other
// error (a conversion failure keeps the converter's TypeError). The converted
// element may point into `item`'s storage: the list callback lends the
// list's own reference, the sequence and iterator callbacks hand a new
// reference through `keep` that the managed side releases after reading.
int32_t wrpPye_gn_clbk_list_get_item(PyObject* list, int32_t index, void* storage, const PyGnElement* element);
int32_t wrpPye_gn_clbk_seq_get_item(PyObject* seq, int32_t index, void* storage, PyObject** keep,
                                    const PyGnElement* element);
// 0 an element, 1 exhausted, 2 error.
int32_t wrpPye_gn_clbk_iter_next(PyObject* iterator, void* storage, PyObject** keep, const PyGnElement* element);

// The element converter of primitive and string element types: the managed
// side wrote a finished Python object (new reference) into the out record.
PyObject* wrpPye_gn_take_object(const PyObjectOutArg& out);
