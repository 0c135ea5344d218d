// Exponent checks shared by the DecimalTuple converters.
#include "marshal/decimal_tuple.h"

int fn_check_decimal_tuple_exponent(PyObject* exponent, const char* type_name, int64_t* out)
{
    if (PyLong_Check(exponent)) {
        long long value = PyLong_AsLongLong(exponent);
        if (value == -1 && PyErr_Occurred())
            return 0;
        *out = value;
        return 1;
    }
    if (!PyUnicode_Check(exponent)) {
        PyErr_Format(PyExc_TypeError, "unknown exponent type '%s'", Py_TYPE(exponent)->tp_name);
        return 0;
    }
    // decimal spells the special exponents "F" (infinity), "n" (NaN) and "N" (signalling NaN).
    if (PyUnicode_CompareWithASCIIString(exponent, "F") == 0) {
        PyErr_Format(PyExc_OverflowError, "value too large for .Net '%s'", type_name);
        return 0;
    }
    if (PyUnicode_CompareWithASCIIString(exponent, "n") == 0 || PyUnicode_CompareWithASCIIString(exponent, "N") == 0) {
        PyErr_SetString(PyExc_OverflowError, "value is not a number");
        return 0;
    }
    PyErr_Format(PyExc_TypeError, "can't build '%s' from exponent value '%U'", type_name, exponent);
    return 0;
}
