// x[k] and x[a, b] through the methods the generator binds for an indexer, so
// that argument conversion, overload choice and errors are the methods' own.
#include "interop/keyed_items.h"

#include "module/identifiers.h"

namespace {

// (self, *key, value): a tuple key spreads into the indices, any other key is
// the only one; `value` is null for a read.
PyObject* keyed_args(PyObject* self, PyObject* key, PyObject* value)
{
    Py_ssize_t keys = PyTuple_Check(key) ? PyTuple_GET_SIZE(key) : 1;
    PyObject* args = PyTuple_New(1 + keys + (value ? 1 : 0));
    if (!args)
        return nullptr;
    Py_INCREF(self);
    PyTuple_SET_ITEM(args, 0, self);
    for (Py_ssize_t i = 0; i < keys; ++i) {
        PyObject* item = PyTuple_Check(key) ? PyTuple_GET_ITEM(key, i) : key;
        Py_INCREF(item);
        PyTuple_SET_ITEM(args, 1 + i, item);
    }
    if (value) {
        Py_INCREF(value);
        PyTuple_SET_ITEM(args, 1 + keys, value);
    }
    return args;
}

// Calls the type's method `name` unbound, with self first.
PyObject* call_accessor(PyObject* self, PyObject* name, PyObject* key, PyObject* value)
{
    PyObject* result = nullptr;
    PyObject* args = nullptr;
    PyObject* accessor = _PyType_Lookup(Py_TYPE(self), name);  // borrowed
    if (!accessor) {
        PyErr_Format(PyExc_TypeError,
                     value ? "'%.200s' object does not support item assignment"
                           : "'%.200s' object is not subscriptable",
                     Py_TYPE(self)->tp_name);
        goto done;
    }
    Py_INCREF(accessor);
    args = keyed_args(self, key, value);
    if (!args)
        goto done;
    result = PyObject_Call(accessor, args, nullptr);
done:
    Py_XDECREF(args);
    Py_XDECREF(accessor);
    return result;
}

PyObject* keyed_subscript(PyObject* self, PyObject* key)
{
    return call_accessor(self, PyWrpIdItem_Get, key, nullptr);
}

int keyed_ass_subscript(PyObject* self, PyObject* key, PyObject* value)
{
    if (!value) {
        PyErr_Format(PyExc_TypeError, "'%.200s' object doesn't support item deletion", Py_TYPE(self)->tp_name);
        return -1;
    }
    PyObject* result = call_accessor(self, PyWrpIdItem_Set, key, value);
    if (!result)
        return -1;
    Py_DECREF(result);
    return 0;
}

}  // namespace

PyMappingMethods wrpPye_keyed_items_rw = {nullptr, keyed_subscript, keyed_ass_subscript};
PyMappingMethods wrpPye_keyed_items_ro = {nullptr, keyed_subscript, nullptr};
