// Native hosts of the managed collection proxies in Orvane.WrpGen.Interop.
// Each binds its entries once, in the order listed, on first use; members
// forward their arguments unchanged. Status results: 0 ok, 2 index out of
// range, anything else a failure with a Python error pending.
#pragma once

#include <Python.h>
#include <cstdint>

#include "interop/interop_host.h"
#include "marshal/records.h"

// SiApiCntCollection: SqLength, SqContains, CountOf, CreateInstanceFromPyList,
// CreateInstanceFromPyIterable, IsAssignableTo.
class PyHost_ph_ICol : public PyInteropHostBase {
public:
    static constexpr const char* kManagedType = "Orvane.WrpGen.Interop.SiApiCntCollection";
    static PyHost_ph_ICol* get_instance();

    int32_t sq_length(void* h) const { return sq_length_(h); }
    int32_t sq_contains(void* h, VariantArg* v) const { return sq_contains_(h, v); }
    int32_t count_of(void* h, VariantArg* v) const { return count_of_(h, v); }
    void* create_instance_from_py_list(PyObject* obj) const { return from_list_(obj); }
    void* create_instance_from_py_iterable(PyObject* obj) const { return from_iterable_(obj); }
    bool is_assignable_to(void* h) const { return is_assignable_to_(h) != 0; }

private:
    PyHost_ph_ICol();
    int32_t (*sq_length_)(void*) = nullptr;
    int32_t (*sq_contains_)(void*, VariantArg*) = nullptr;
    int32_t (*count_of_)(void*, VariantArg*) = nullptr;
    void* (*from_list_)(PyObject*) = nullptr;
    void* (*from_iterable_)(PyObject*) = nullptr;
    uint8_t (*is_assignable_to_)(void*) = nullptr;
};

// The entries shared by the list, array and array-list proxies.
struct PyListEntries {
    int32_t (*sq_length)(void*) = nullptr;
    int32_t (*sq_getitem)(void*, int32_t, PyObject**) = nullptr;
    PyObject* (*sq_getitem_nocheck)(void*, int32_t) = nullptr;
    int32_t (*sq_setitem)(void*, int32_t, VariantArg*) = nullptr;
    void (*sq_setitem_nocheck)(void*, int32_t, VariantArg*) = nullptr;
    void (*add)(void*, VariantArg*) = nullptr;
    void (*insert)(void*, int32_t, VariantArg*) = nullptr;
    uint8_t (*remove)(void*, VariantArg*) = nullptr;
    int32_t (*remove_at)(void*, int32_t) = nullptr;
    int32_t (*pop)(void*, int32_t, int32_t, PyObject**) = nullptr;
    void (*clear)(void*) = nullptr;
    int32_t (*sq_inplace_concat)(void*, void*) = nullptr;
    void (*sq_inplace_repeat)(void*, int32_t) = nullptr;
    int32_t (*mp_set_items)(void*, void*, int32_t, int32_t, int32_t) = nullptr;
    void (*mp_remove_items)(void*, int32_t, int32_t, int32_t) = nullptr;
    void (*reverse)(void*) = nullptr;
    void (*sort)(void*, int32_t) = nullptr;
    int32_t (*index_by)(void*, int32_t, int32_t, int32_t, int32_t, VariantArg*) = nullptr;
    int32_t (*sq_contains)(void*, VariantArg*) = nullptr;
    int32_t (*count_of)(void*, VariantArg*) = nullptr;
    void (*ensure_capacity)(void*, int32_t) = nullptr;
    void* (*from_list)(PyObject*) = nullptr;
    void* (*from_sequence)(PyObject*) = nullptr;
    uint8_t (*is_assignable_to)(void*) = nullptr;
};

// Members common to the three list-like hosts; entries a proxy lacks stay null.
class PyListHostBase : public PyInteropHostBase {
public:
    int32_t sq_length(void* h) const { return e_.sq_length(h); }
    int32_t sq_getitem(void* h, int32_t i, PyObject** out) const { return e_.sq_getitem(h, i, out); }
    PyObject* sq_getitem_nocheck(void* h, int32_t i) const { return e_.sq_getitem_nocheck(h, i); }
    int32_t sq_setitem(void* h, int32_t i, VariantArg* v) const { return e_.sq_setitem(h, i, v); }
    void sq_setitem_nocheck(void* h, int32_t i, VariantArg* v) const { e_.sq_setitem_nocheck(h, i, v); }
    void add(void* h, VariantArg* v) const { e_.add(h, v); }
    void insert(void* h, int32_t i, VariantArg* v) const { e_.insert(h, i, v); }
    bool remove(void* h, VariantArg* v) const { return e_.remove(h, v) != 0; }
    int32_t remove_at(void* h, int32_t i) const { return e_.remove_at(h, i); }
    int32_t pop(void* h, int32_t has_index, int32_t i, PyObject** out) const { return e_.pop(h, has_index, i, out); }
    void clear(void* h) const { e_.clear(h); }
    int32_t sq_inplace_concat(void* h, void* other) const { return e_.sq_inplace_concat(h, other); }
    void sq_inplace_repeat(void* h, int32_t n) const { e_.sq_inplace_repeat(h, n); }
    int32_t mp_set_items(void* h, void* src, int32_t start, int32_t len, int32_t step) const
    {
        return e_.mp_set_items(h, src, start, len, step);
    }
    void mp_remove_items(void* h, int32_t start, int32_t len, int32_t step) const
    {
        e_.mp_remove_items(h, start, len, step);
    }
    void reverse(void* h) const { e_.reverse(h); }
    void sort(void* h, int32_t reverse) const { e_.sort(h, reverse); }
    int32_t index_by(void* h, int32_t has_start, int32_t start, int32_t has_stop, int32_t stop, VariantArg* v) const
    {
        return e_.index_by(h, has_start, start, has_stop, stop, v);
    }
    int32_t sq_contains(void* h, VariantArg* v) const { return e_.sq_contains(h, v); }
    int32_t count_of(void* h, VariantArg* v) const { return e_.count_of(h, v); }
    void ensure_capacity(void* h, int32_t n) const
    {
        if (e_.ensure_capacity)
            e_.ensure_capacity(h, n);
    }
    bool has_ensure_capacity() const { return e_.ensure_capacity != nullptr; }
    void* create_instance_from_py_list(PyObject* obj) const { return e_.from_list(obj); }
    void* create_instance_from_py_sequence(PyObject* obj) const { return e_.from_sequence(obj); }
    bool is_assignable_to(void* h) const { return e_.is_assignable_to(h) != 0; }

protected:
    using PyInteropHostBase::PyInteropHostBase;
    PyListEntries e_;
};

// SiApiCntList (the length is read through PyHost_ph_ICol).
class PyHost_ph_IList : public PyListHostBase {
public:
    static constexpr const char* kManagedType = "Orvane.WrpGen.Interop.SiApiCntList";
    static PyHost_ph_IList* get_instance();

private:
    PyHost_ph_IList();
};

// SiApiArray (fixed size; its unchecked setter is exported as SqSetItemNoChek).
class PyHost_ph_Array : public PyListHostBase {
public:
    static constexpr const char* kManagedType = "Orvane.WrpGen.Interop.SiApiArray";
    static PyHost_ph_Array* get_instance();

private:
    PyHost_ph_Array();
};

// SiApiArrayList.
class PyHost_ph_ArrList : public PyListHostBase {
public:
    static constexpr const char* kManagedType = "Orvane.WrpGen.Interop.SiApiArrayList";
    static PyHost_ph_ArrList* get_instance();

private:
    PyHost_ph_ArrList();
};

// SiApiCollectionBase / SiApiReadOnlyCollectionBase: IsAssignableTo,
// CreateInstanceFromPyList, CreateInstanceFromPySequence.
class PyColBaseHostBase : public PyInteropHostBase {
public:
    bool is_assignable_to(void* h) const { return is_assignable_to_(h) != 0; }
    void* create_instance_from_py_list(PyObject* obj) const { return from_list_(obj); }
    void* create_instance_from_py_sequence(PyObject* obj) const { return from_sequence_(obj); }

protected:
    explicit PyColBaseHostBase(const char* managed_type);
    uint8_t (*is_assignable_to_)(void*) = nullptr;
    void* (*from_list_)(PyObject*) = nullptr;
    void* (*from_sequence_)(PyObject*) = nullptr;
};

class PyHost_ph_ColBase : public PyColBaseHostBase {
public:
    static constexpr const char* kManagedType = "Orvane.WrpGen.Interop.SiApiCollectionBase";
    static PyHost_ph_ColBase* get_instance();

private:
    PyHost_ph_ColBase() : PyColBaseHostBase(kManagedType) {}
};

class PyHost_ph_RoColBase : public PyColBaseHostBase {
public:
    static constexpr const char* kManagedType = "Orvane.WrpGen.Interop.SiApiReadOnlyCollectionBase";
    static PyHost_ph_RoColBase* get_instance();

private:
    PyHost_ph_RoColBase() : PyColBaseHostBase(kManagedType) {}
};

// SiApiEnumerable: GetEnumerator, CreateInstanceFromPyIterable, IsAssignableTo.
class PyHost_ph_Iterable : public PyInteropHostBase {
public:
    static constexpr const char* kManagedType = "Orvane.WrpGen.Interop.SiApiEnumerable";
    static PyHost_ph_Iterable* get_instance();

    // Negative on failure; the enumerator arrives through the out record.
    int32_t get_enumerator(void* h, PyObjectOutArg* out) const { return get_enumerator_(h, out); }
    void* create_instance_from_py_iterable(PyObject* obj) const { return from_iterable_(obj); }
    bool is_assignable_to(void* h) const { return is_assignable_to_(h) != 0; }

private:
    PyHost_ph_Iterable();
    int32_t (*get_enumerator_)(void*, PyObjectOutArg*) = nullptr;
    void* (*from_iterable_)(PyObject*) = nullptr;
    uint8_t (*is_assignable_to_)(void*) = nullptr;
};

// SiApiEnumerator: MoveNext, IsAssignableTo.
class PyHost_ph_Iter : public PyInteropHostBase {
public:
    static constexpr const char* kManagedType = "Orvane.WrpGen.Interop.SiApiEnumerator";
    static PyHost_ph_Iter* get_instance();

    // 0 an element (new reference in *out), 1 the end, other: error pending.
    int32_t move_next(void* h, PyObject** out) const { return move_next_(h, out); }
    bool is_assignable_to(void* h) const { return is_assignable_to_(h) != 0; }

private:
    PyHost_ph_Iter();
    int32_t (*move_next_)(void*, PyObject**) = nullptr;
    uint8_t (*is_assignable_to_)(void*) = nullptr;
};
