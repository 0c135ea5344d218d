// The shared read subscript of the sized collection wrappers.
#include "interop/subscript.h"

PyObject* fn_subscript_sizable(PyObject* self, PyObject* key, Py_ssize_t length, fn_item_reader checked,
                               fn_item_reader nocheck, const void* context)
{
    if (PyIndex_Check(key)) {
        Py_ssize_t index = PyNumber_AsSsize_t(key, PyExc_IndexError);
        if (index == -1 && PyErr_Occurred())
            return nullptr;
        if (index < 0)
            index += length;
        return checked(self, index, context);
    }
    if (PySlice_Check(key)) {
        Py_ssize_t start, stop, step;
        if (PySlice_Unpack(key, &start, &stop, &step) < 0)
            return nullptr;
        Py_ssize_t slice_length = PySlice_AdjustIndices(length, &start, &stop, step);
        if (slice_length <= 0)
            return PyList_New(0);
        PyObject* list = PyList_New(slice_length);  // new reference, released on failure
        if (!list)
            return nullptr;
        for (Py_ssize_t k = 0; k < slice_length; ++k) {
            PyObject* item = nocheck(self, start + k * step, context);
            if (!item) {
                Py_DECREF(list);
                return nullptr;
            }
            PyList_SET_ITEM(list, k, item);
        }
        return list;
    }
    PyErr_Format(PyExc_TypeError, "list indices must be integers or slices, not %.200s", Py_TYPE(key)->tp_name);
    return nullptr;
}

PyObject* fn_items_list(PyObject* self, Py_ssize_t length, fn_item_reader nocheck, const void* context)
{
    PyObject* list = PyList_New(length);
    if (!list)
        return nullptr;
    for (Py_ssize_t i = 0; i < length; ++i) {
        PyObject* item = nocheck(self, i, context);
        if (!item) {
            Py_DECREF(list);
            return nullptr;
        }
        PyList_SET_ITEM(list, i, item);
    }
    return list;
}
