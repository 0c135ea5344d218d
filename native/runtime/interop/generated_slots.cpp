// Sequence and mapping slots of generated collection classes.
#include "interop/generated_slots.h"

#include <cstdint>

#include "interop/subscript.h"
#include "interop/wrapper_common.h"
#include "objects/clr_object.h"

namespace {

// The element at an index already in range; a new reference or null.
PyObject* item_nocheck(PyObject* self, Py_ssize_t index, const PyShlCollectionSlots* slots)
{
    PyObjectOutArg out{nullptr, 0};
    slots->item_nocheck(fn_clr_handle(self), (int32_t)index, &out);
    if (PyErr_Occurred())
        return nullptr;  // a raising entry wrote no handle
    return slots->to_py(out);
}

// Converts and stores one element; 0 or -1.
int store_nocheck(PyObject* self, Py_ssize_t index, PyObject* value, const PyShlCollectionSlots* slots)
{
    void* element = nullptr;
    if (!slots->to_clr(value, &element))
        return -1;
    slots->ssitem_nocheck(fn_clr_handle(self), (int32_t)index, element);
    return PyErr_Occurred() ? -1 : 0;
}

// An index beyond 32 bits cannot name an element: out of range, never truncated.
bool out_of_clr_range(Py_ssize_t index)
{
    if (index >= INT32_MIN && index <= INT32_MAX)
        return false;
    PyErr_SetString(PyExc_IndexError, "list index out of range");
    return true;
}

int refuse_removal()
{
    PyErr_SetString(PyExc_ValueError, "elements removing not supported");
    return -1;
}

int refuse_key(PyObject* key)
{
    PyErr_Format(PyExc_TypeError, "list indices must be integers or slices, not %.200s", Py_TYPE(key)->tp_name);
    return -1;
}

int refuse_size(Py_ssize_t given, Py_ssize_t slice_length)
{
    PyErr_Format(PyExc_ValueError, "attempt to assign sequence of size %zd to extended slice of size %zd", given,
                 slice_length);
    return -1;
}

// Every element, in order, as a new list.
PyObject* all_items(PyObject* self, const PyShlCollectionSlots* slots)
{
    Py_ssize_t length = wrpPye_bltp_coll_sq_length(self, slots);
    if (length < 0)
        return nullptr;
    return fn_items_list(
        self, length,
        [](PyObject* o, Py_ssize_t i, const void* c) {
            return item_nocheck(o, i, static_cast<const PyShlCollectionSlots*>(c));
        },
        slots);
}

// Slice assignment: exactly slice_length elements, never growing or shrinking.
int assign_slice(PyObject* self, Py_ssize_t length, Py_ssize_t start, Py_ssize_t step, Py_ssize_t slice_length,
                 PyObject* value, const PyShlCollectionSlots* slots)
{
    if (PyList_CheckExact(value) || PyTuple_CheckExact(value)) {
        PyObject* fast = PySequence_Fast(value, "must assign iterable to extended slice");
        if (!fast)
            return -1;
        int rc = 0;
        if (PySequence_Fast_GET_SIZE(fast) != slice_length)
            rc = refuse_size(PySequence_Fast_GET_SIZE(fast), slice_length);
        for (Py_ssize_t i = 0; rc == 0 && i < slice_length; ++i)
            rc = store_nocheck(self, start + i * step, PySequence_Fast_GET_ITEM(fast, i), slots);
        Py_DECREF(fast);
        return rc;
    }
    PyTypeObject* type = Py_TYPE(value);
    if (!type->tp_as_sequence || !type->tp_as_sequence->sq_item) {
        PyErr_SetString(PyExc_TypeError, "must assign iterable to extended slice");
        return -1;
    }
    if (fn_is_managed_wrapper(value)) {
        // One managed call copies the whole slice from the other collection.
        slots->ssubscript_sizable(fn_clr_handle(self), fn_clr_handle(value), (int32_t)start, (int32_t)slice_length,
                                  (int32_t)step, (int32_t)length);
        return PyErr_Occurred() ? -1 : 0;
    }
    Py_ssize_t size = PySequence_Size(value);
    if (size < 0)
        return -1;
    if (size != slice_length)
        return refuse_size(size, slice_length);
    for (Py_ssize_t i = 0; i < slice_length; ++i) {
        PyObject* item = PySequence_GetItem(value, i);
        if (!item)
            return -1;
        int rc = store_nocheck(self, start + i * step, item, slots);
        Py_DECREF(item);
        if (rc < 0)
            return -1;
    }
    return 0;
}

}  // namespace

Py_ssize_t wrpPye_bltp_coll_sq_length(PyObject* self, const PyShlCollectionSlots* slots)
{
    int32_t count = slots->length(fn_clr_handle(self));
    if (PyErr_Occurred())
        return -1;
    return count < 0 ? 0 : count;
}

PyObject* wrpPye_bltp_coll_sq_item(PyObject* self, Py_ssize_t index, const PyShlCollectionSlots* slots)
{
    if (out_of_clr_range(index))
        return nullptr;
    PyObjectOutArg out{nullptr, 0};
    int32_t status = slots->item(fn_clr_handle(self), (int32_t)index, &out);
    if (PyErr_Occurred())
        return nullptr;
    if (status == 2) {
        PyErr_SetString(PyExc_IndexError, "list index out of range");
        return nullptr;
    }
    if (status != 0) {
        PyErr_Format(PyExc_RuntimeError, "reading the element failed with status %d", (int)status);
        return nullptr;
    }
    return slots->to_py(out);
}

PyObject* wrpPye_bltp_coll_mp_subscript(PyObject* self, PyObject* key, const PyShlCollectionSlots* slots)
{
    Py_ssize_t length = wrpPye_bltp_coll_sq_length(self, slots);
    if (length < 0)
        return nullptr;
    return fn_subscript_sizable(
        self, key, length,
        [](PyObject* o, Py_ssize_t i, const void* c) {
            return wrpPye_bltp_coll_sq_item(o, i, static_cast<const PyShlCollectionSlots*>(c));
        },
        [](PyObject* o, Py_ssize_t i, const void* c) {
            return item_nocheck(o, i, static_cast<const PyShlCollectionSlots*>(c));
        },
        slots);
}

int wrpPye_bltp_coll_sq_ass_item(PyObject* self, Py_ssize_t index, PyObject* value, const PyShlCollectionSlots* slots)
{
    if (!value)
        return refuse_removal();
    if (out_of_clr_range(index))
        return -1;
    void* element = nullptr;
    if (!slots->to_clr(value, &element))
        return -1;
    int32_t status = slots->ssitem(fn_clr_handle(self), (int32_t)index, element);
    if (PyErr_Occurred())
        return -1;
    if (status == 2) {
        PyErr_SetString(PyExc_IndexError, "list index out of range");
        return -1;
    }
    if (status != 0) {
        PyErr_Format(PyExc_RuntimeError, "writing the element failed with status %d", (int)status);
        return -1;
    }
    return 0;
}

int wrpPye_bltp_coll_mp_ass_subscript(PyObject* self, PyObject* key, PyObject* value,
                                      const PyShlCollectionSlots* slots)
{
    Py_ssize_t length = wrpPye_bltp_coll_sq_length(self, slots);
    if (length < 0)
        return -1;
    if (PyIndex_Check(key)) {
        Py_ssize_t index = PyNumber_AsSsize_t(key, PyExc_IndexError);
        if (index == -1 && PyErr_Occurred())
            return -1;
        if (index < 0)
            index += length;
        return wrpPye_bltp_coll_sq_ass_item(self, index, value, slots);
    }
    if (PySlice_Check(key)) {
        Py_ssize_t start, stop, step;
        if (PySlice_Unpack(key, &start, &stop, &step) < 0)
            return -1;
        Py_ssize_t slice_length = PySlice_AdjustIndices(length, &start, &stop, step);
        if (!value)
            return refuse_removal();
        return assign_slice(self, length, start, step, slice_length, value, slots);
    }
    return refuse_key(key);
}

int wrpPye_bltp_coll_sq_contains(PyObject* self, PyObject* value, const PyShlCollectionSlots* slots)
{
    void* element = nullptr;
    if (!slots->to_clr(value, &element)) {
        // A value of another type cannot be an element, as for a Python list.
        if (!PyErr_ExceptionMatches(PyExc_TypeError))
            return -1;
        PyErr_Clear();
        return 0;
    }
    int32_t found = slots->contains(fn_clr_handle(self), element);
    if (PyErr_Occurred())
        return -1;
    return found > 0;
}

PyObject* wrpPye_bltp_coll_sq_concat(PyObject* self, PyObject* other, const PyShlCollectionSlots* slots)
{
    if (fn_classify_operand(other) == PyOperandKind::None) {
        PyErr_SetString(PyExc_ValueError, "argument must be iterable or sequence");
        return nullptr;
    }
    PyObject* result = all_items(self, slots);
    if (!result)
        return nullptr;
    if (fn_append_operand_items(result, other) < 0) {
        Py_DECREF(result);
        return nullptr;
    }
    return result;
}

PyObject* wrpPye_bltp_coll_sq_repeat(PyObject* self, Py_ssize_t times, const PyShlCollectionSlots* slots)
{
    PyObject* items = all_items(self, slots);
    if (!items)
        return nullptr;
    // The elements are read once each, also for a count of 0.
    PyObject* result = PySequence_Repeat(items, times < 0 ? 0 : times);
    Py_DECREF(items);
    return result;
}
