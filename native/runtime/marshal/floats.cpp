// Python numbers to managed Single/Double, and doubles back.
#include "marshal/scalars.h"

namespace {

template <typename T>
constexpr const char* float_name();
template <>
constexpr const char* float_name<float>()
{
    return "Single";
}
template <>
constexpr const char* float_name<double>()
{
    return "Double";
}

}  // namespace

template <typename T>
int fn_conv_py_float_to_clr_float(PyObject* obj, T* out)
{
    if (PyFloat_Check(obj)) {
        double value = PyFloat_AsDouble(obj);
        if (value == -1.0 && PyErr_Occurred())
            return 0;
        *out = (T)value;  // Single narrows without an overflow check (large values become infinity)
        return 1;
    }
    if (PyLong_Check(obj) && !PyBool_Check(obj)) {
        long long value = PyLong_AsLongLong(obj);
        if (value == -1 && PyErr_Occurred()) {
            if (!PyErr_ExceptionMatches(PyExc_OverflowError))
                return 0;
            PyErr_Clear();
            unsigned long long unsigned_value = PyLong_AsUnsignedLongLong(obj);
            if (unsigned_value == (unsigned long long)-1 && PyErr_Occurred())
                return 0;
            *out = (T)unsigned_value;
            return 1;
        }
        *out = (T)value;
        return 1;
    }
    PyErr_Format(PyExc_TypeError, "can't build '%s' from '%s'", float_name<T>(), Py_TYPE(obj)->tp_name);
    return 0;
}

template int fn_conv_py_float_to_clr_float<float>(PyObject*, float*);
template int fn_conv_py_float_to_clr_float<double>(PyObject*, double*);

int fn_read_py_double(PyObject* obj, double* out)
{
    double value = PyFloat_AsDouble(obj);
    if (value == -1.0 && PyErr_Occurred())
        return 0;
    *out = value;
    return 1;
}

PyObject* fn_write_py_double(double value)
{
    return PyFloat_FromDouble(value);
}
