// Helpers shared by the fixed collection and stream wrapper types.
#pragma once

#include <Python.h>
#include <initializer_list>
#include <string>

#include "objects/host_state.h"

using PyInteropValidityCheck = bool (*)(std::string& message);

// The aggregate state of a wrapper type: the first check is the type's own
// host, the others the hosts it depends on (a failure there is inherited).
PyHostState fn_interop_host_state(std::initializer_list<PyInteropValidityCheck> checks);

// The validity check of one native host: false when it bound its entries,
// else true with its binding failure in `message`.
template <typename Host>
bool fn_host_is_not_valid(std::string& message)
{
    const Host* host = Host::get_instance();
    if (!host->is_not_valid())
        return false;
    message = host->error_msg();
    return true;
}

// Whether a host that bound its entries accepts the managed object behind
// `handle` (IsAssignableTo); false when the host did not bind.
template <typename Host>
bool fn_host_accepts(void* handle)
{
    const Host* host = Host::get_instance();
    return !host->is_not_valid() && host->is_assignable_to(handle);
}

// The slots every wrapper type of a managed object shares: the common
// deallocation, hash, same-type comparison and refused initialisation, the
// generic allocation, and `tp_new`. Not subclassable. The name is the short
// one ("_wrpgen._interop.<name>"); the module makes it qualified.
PyTypeObject fn_wrapper_type(const char* name, Py_ssize_t basicsize, newfunc tp_new);

// How a concatenation or extend operand is walked.
enum class PyOperandKind { None, ListOrTuple, SizedSequence, Iterable };
PyOperandKind fn_classify_operand(PyObject* operand);

// Calls fn(item) (borrowed item, returns 0 or -1) for each element of the
// operand. `before` (may be null) is called first with the size when the
// operand is a list, tuple or sized sequence. ValueError "argument must be
// iterable or sequence" for anything else; "argument must be iterable" when
// obtaining the iterator failed silently. 0 or -1.
template <typename Fn, typename Before>
int fn_for_each_operand_item(PyObject* operand, Fn&& fn, Before&& before)
{
    switch (fn_classify_operand(operand)) {
    case PyOperandKind::ListOrTuple: {
        Py_ssize_t size = PySequence_Fast_GET_SIZE(operand);
        if (before(size) < 0)
            return -1;
        // Re-read the size: fn may run Python code that changes the operand.
        for (Py_ssize_t k = 0; k < PySequence_Fast_GET_SIZE(operand); ++k) {
            PyObject* item = PySequence_Fast_GET_ITEM(operand, k);
            Py_INCREF(item);
            int rc = fn(item);
            Py_DECREF(item);
            if (rc < 0)
                return -1;
        }
        return 0;
    }
    case PyOperandKind::SizedSequence: {
        Py_ssize_t size = PySequence_Size(operand);
        if (size < 0)
            return PyErr_Occurred() ? -1 : 0;
        if (before(size) < 0)
            return -1;
        for (Py_ssize_t k = 0; k < size; ++k) {
            PyObject* item = PySequence_GetItem(operand, k);
            if (!item)
                return -1;
            int rc = fn(item);
            Py_DECREF(item);
            if (rc < 0)
                return -1;
        }
        return 0;
    }
    case PyOperandKind::Iterable: {
        PyObject* iterator = PyObject_GetIter(operand);
        if (!iterator) {
            if (!PyErr_Occurred())
                PyErr_SetString(PyExc_ValueError, "argument must be iterable");
            return -1;
        }
        PyObject* item;
        while ((item = PyIter_Next(iterator))) {
            int rc = fn(item);
            Py_DECREF(item);
            if (rc < 0) {
                Py_DECREF(iterator);
                return -1;
            }
        }
        Py_DECREF(iterator);
        return PyErr_Occurred() ? -1 : 0;
    }
    case PyOperandKind::None:
        break;
    }
    PyErr_SetString(PyExc_ValueError, "argument must be iterable or sequence");
    return -1;
}

// Appends the operand's items to `list` (concatenation results).
int fn_append_operand_items(PyObject* list, PyObject* operand);

// A Python index as the low 32 bits managed code receives.
static inline int32_t fn_index_to_clr(Py_ssize_t index)
{
    return (int32_t)index;
}
