// ref/out parameters through a Python list.
#include "marshal/byref.h"

int fn_conv_py_parbyref_to_clr_parbyref(PyObject* obj, PyParamByRef* arg)
{
    if (!PyList_CheckExact(obj)) {
        PyErr_Format(PyExc_TypeError, "argument should be empty list or list contains default value, not '%.200s'",
                     Py_TYPE(obj)->tp_name);
        return 0;
    }
    arg->list = obj;
    if (PyList_GET_SIZE(obj) == 0)
        return 1;
    PyObject* item = PyList_GET_ITEM(obj, 0);
    if (item == Py_None)
        return 1;
    // The converter may run Python code that changes the list; keep the item alive.
    Py_INCREF(item);
    int result = arg->convert(item, arg->value);
    if (result != 1 && !PyErr_Occurred())
        PyErr_Format(PyExc_TypeError, "can't convert '%.200s' for a by-reference argument", Py_TYPE(item)->tp_name);
    Py_DECREF(item);
    return result == 1 ? 1 : 0;
}

int fn_push_parbyref_outvalue(PyObject* list, PyObject* value)
{
    if (!value) {
        if (!PyErr_Occurred())
            PyErr_SetString(PyExc_SystemError, "no out value to store");
        return -1;
    }
    if (!PyList_Check(list)) {
        Py_DECREF(value);
        PyErr_Format(PyExc_TypeError, "by-reference argument should be a list, not '%.200s'", Py_TYPE(list)->tp_name);
        return -1;
    }
    if (PyList_GET_SIZE(list) == 0) {
        int result = PyList_Append(list, value);
        Py_DECREF(value);
        return result;
    }
    // PyList_SetItem takes over the reference, also when it fails.
    return PyList_SetItem(list, 0, value);
}
