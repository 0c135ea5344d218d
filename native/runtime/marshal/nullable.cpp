// Nullable<T> parameters: None passes no value.
#include "marshal/nullable.h"

int fn_conv_py_nullable_to_clr_nullable(PyObject* obj, PyNullableArg* arg, void* extra)
{
    if (obj == Py_None)
        return 1;
    if (arg->convert(obj, arg->value, extra) != 1) {
        if (!PyErr_Occurred())
            PyErr_Format(PyExc_TypeError, "can't convert '%.200s' for a nullable argument", Py_TYPE(obj)->tp_name);
        return 0;
    }
    arg->has_value = 1;
    return 1;
}
