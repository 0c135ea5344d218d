// Managed Boolean: only bool itself converts in; any truth value reads.
#include "marshal/scalars.h"

int fn_conv_py_bool_to_clr_bool(PyObject* obj, bool* out)
{
    if (!PyBool_Check(obj)) {
        PyErr_Format(PyExc_TypeError, "can't build bool from '%s'", Py_TYPE(obj)->tp_name);
        return 0;
    }
    *out = obj == Py_True;
    return 1;
}

int fn_read_py_bool(PyObject* obj)
{
    return PyObject_IsTrue(obj);  // -1 with an error set when the truth test raised
}

PyObject* fn_write_py_bool(bool value)
{
    return PyBool_FromLong(value ? 1 : 0);
}
