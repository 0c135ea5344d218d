// Plain records filled by the argument converters for one managed call, and
// the result records managed code writes. Their layouts are shared with the
// managed interop (Records.cs) and must not change.
#pragma once

#include <Python.h>
#include <cstdint>

// An untyped argument: a tag and a pointer. For every tag but 1 the pointer is
// the Python object itself (borrowed for the call); for tag 1 it is a handle.
struct VariantArg {
    int32_t type;
    void* value;
};

// A Python string's own storage, passed without copying. length -1: None.
struct PyStringArg {
    int32_t length;
    int32_t char_size;
    const void* data;
};

// An exporter's bytes, passed without copying. length -1: None.
struct PyBytesArg {
    uint32_t need_release;
    int32_t length;
    const void* data;
};

// Owns the buffer view behind a PyBytesArg until the managed call returned.
class PyBytesArgBuilder {
public:
    PyBytesArgBuilder();
    ~PyBytesArgBuilder();
    PyBytesArgBuilder(const PyBytesArgBuilder&) = delete;
    PyBytesArgBuilder& operator=(const PyBytesArgBuilder&) = delete;

    Py_buffer* get_view() { return &m_view; }
    PyBytesArg* get_info() { return &m_info; }
    const PyBytesArg* get_info() const { return &m_info; }

private:
    Py_buffer m_view;
    PyBytesArg m_info;
};

// A managed Nullable<T> argument.
struct PyNullableArg {
    int32_t has_value;
    int (*convert)(PyObject* obj, void* out, void* extra);
    void* value;
};

// A managed ref/out argument carried in and out by a Python list.
struct PyParamByRef {
    PyObject* list;
    int (*convert)(PyObject* obj, void* out);
    void* value;
};

// An object result: a new handle (null: None) and its runtime type's key.
struct PyObjectOutArg {
    void* handle;
    intptr_t type_key;
};

// A result that may already be a Python object (kind 1) instead of a handle.
struct PyCollectionArg {
    int32_t kind;
    void* value;
    intptr_t type_key;
};
