// Index and count arguments, and the argument-count check of generated methods.
#include "marshal/scalars.h"

int fn_conv_py_obj_to_ssize_t(PyObject* obj, Py_ssize_t* out)
{
    if (!PyIndex_Check(obj)) {
        PyErr_Format(PyExc_TypeError, "argument should be integer or None, not '%.200s'", Py_TYPE(obj)->tp_name);
        return 0;
    }
    Py_ssize_t value = PyNumber_AsSsize_t(obj, PyExc_OverflowError);
    if (value == -1 && PyErr_Occurred())
        return 0;
    *out = value;
    return 1;
}

int fn_conv_py_optional_to_ssize_t(PyObject* tuple, Py_ssize_t* out)
{
    if (!PyTuple_Check(tuple)) {
        PyErr_Format(PyExc_TypeError, "argument should be a tuple, not '%.200s'", Py_TYPE(tuple)->tp_name);
        return 0;
    }
    // A missing item counts as None: the output keeps its default.
    if (PyTuple_GET_SIZE(tuple) == 0)
        return 1;
    PyObject* item = PyTuple_GET_ITEM(tuple, 0);
    if (item == Py_None)
        return 1;
    return fn_conv_py_obj_to_ssize_t(item, out);
}

int fn_check_args_count_out_of_range(Py_ssize_t given, const char* name, Py_ssize_t min, Py_ssize_t max)
{
    if (given >= min && given <= max)
        return 0;
    bool named = name && *name;
    Py_ssize_t bound = given < min ? min : max;
    const char* relation = min == max ? "exactly" : (given < min ? "at least" : "at most");
    PyErr_Format(PyExc_TypeError, "%.150s%s takes %s %d argument%s (%zd given)", named ? name : "function",
                 named ? "()" : "", relation, (int)bound, bound == 1 ? "" : "s", given);
    return 1;
}
