// Python numbers to managed integers of every width, and managed integers back.
#include <cmath>

#include "marshal/clr_int_traits.h"
#include "marshal/module_type_instance.h"
#include "marshal/scalars.h"
#include "module/identifiers.h"
#include "module/import_errors.h"

namespace {

// An int read with the 64-bit reader of the target's signedness. 8- and
// 16-bit targets are range-checked; Int32/UInt32 keep the low 32 bits.
template <typename T>
int long_to_int(PyObject* obj, T* out)
{
    using limits = std::numeric_limits<T>;
    if constexpr (limits::is_signed) {
        long long value = sizeof(T) == 8 ? PyLong_AsLongLong(obj) : (long long)PyLong_AsLong(obj);
        if (value == -1 && PyErr_Occurred())
            return 0;
        if constexpr (sizeof(T) < 4) {
            if (value < (long long)limits::min()) {
                PyErr_Format(PyExc_OverflowError, "%s too small to convert to '%s'", "value", ClrIntTraits<T>::name);
                return 0;
            }
            if (value > (long long)limits::max()) {
                PyErr_Format(PyExc_OverflowError, "%s too big to convert to '%s'", "value", ClrIntTraits<T>::name);
                return 0;
            }
        }
        *out = (T)value;
    } else {
        unsigned long long value =
            sizeof(T) == 8 ? PyLong_AsUnsignedLongLong(obj) : (unsigned long long)PyLong_AsUnsignedLong(obj);
        if (value == (unsigned long long)-1 && PyErr_Occurred())
            return 0;
        if constexpr (sizeof(T) < 4) {
            if (value > (unsigned long long)limits::max()) {
                PyErr_Format(PyExc_OverflowError, "%s too big to convert to '%s'", "value", ClrIntTraits<T>::name);
                return 0;
            }
        }
        *out = (T)value;
    }
    return 1;
}

// A float truncated toward zero with no range check: the low bits of the
// 64-bit truncation are kept; NaN and values beyond 64 bits give the
// processor's "integer indefinite" pattern.
template <typename T>
T truncate_double(double value)
{
    constexpr double two63 = 9223372036854775808.0;
    if (!std::isnan(value)) {
        if (value >= -two63 && value < two63)
            return (T)(int64_t)value;
        if constexpr (!std::numeric_limits<T>::is_signed && sizeof(T) == 8)
            if (value >= two63 && value < 2.0 * two63)
                return (T)value;
    }
    return (T)(uint64_t)0x8000000000000000ULL;
}

template <typename T>
int conv_integer(PyObject* obj, T* out)
{
    if (!PyBool_Check(obj) && PyLong_Check(obj))
        return long_to_int(obj, out);
    if (PyFloat_Check(obj)) {
        double value = PyFloat_AsDouble(obj);
        if (value == -1.0 && PyErr_Occurred())
            return 0;
        *out = truncate_double<T>(value);
        return 1;
    }
    if (!PyBool_Check(obj)) {
        int is_tuple = fn_is_instance_of_module_type(obj, "decimal", PyWrpIdTypeName_DecimalTuple);
        if (is_tuple < 0)
            return 0;
        if (is_tuple)
            return fn_conv_py_decimal_tuple_to_clr_int<T>(obj, out);
        int is_decimal = fn_is_instance_of_module_type(obj, "decimal", PyWrpIdTypeName_Decimal);
        if (is_decimal < 0)
            return 0;
        if (is_decimal) {
            PyObject* tuple = PyObject_CallMethodObjArgs(obj, PyWrpIdDecimal_AsTuple, nullptr);
            if (!tuple)
                return 0;
            int result = fn_conv_py_decimal_tuple_to_clr_int<T>(tuple, out);
            Py_DECREF(tuple);
            return result;
        }
    }
    PyErr_Format(PyExc_TypeError, "can't build '%s' from '%s'", ClrIntTraits<T>::name, Py_TYPE(obj)->tp_name);
    return 0;
}

}  // namespace

int fn_conv_py_long_to_clr_int8(PyObject* obj, int8_t* out)
{
    return conv_integer(obj, out);
}
int fn_conv_py_ulong_to_clr_uint8(PyObject* obj, uint8_t* out)
{
    return conv_integer(obj, out);
}
int fn_conv_py_long_to_clr_int16(PyObject* obj, int16_t* out)
{
    return conv_integer(obj, out);
}
int fn_conv_py_ulong_to_clr_uint16(PyObject* obj, uint16_t* out)
{
    return conv_integer(obj, out);
}
int fn_conv_py_long_to_clr_int32(PyObject* obj, int32_t* out)
{
    return conv_integer(obj, out);
}
int fn_conv_py_ulong_to_clr_uint32(PyObject* obj, uint32_t* out)
{
    return conv_integer(obj, out);
}
int fn_conv_py_long_to_clr_int64(PyObject* obj, int64_t* out)
{
    return conv_integer(obj, out);
}
int fn_conv_py_ulong_to_clr_uint64(PyObject* obj, uint64_t* out)
{
    return conv_integer(obj, out);
}

int fn_read_py_vers_long(PyObject* obj, int64_t* out)
{
    long long value = PyLong_AsLongLong(obj);
    if (value == -1 && PyErr_Occurred()) {
        PyErr_Clear();
        unsigned long long unsigned_value = PyLong_AsUnsignedLongLong(obj);
        if (unsigned_value == (unsigned long long)-1 && PyErr_Occurred()) {
            PyErr_Clear();
            PyErr_Format(PyExc_TypeError, "can't build integer value from '%s'", Py_TYPE(obj)->tp_name);
            return 0;
        }
        *out = (int64_t)unsigned_value;
        return 3;
    }
    *out = value;
    return value >= INT32_MIN && value <= INT32_MAX ? 1 : 2;
}

PyObject* fn_write_py_long(int32_t value)
{
    return PyLong_FromLong(value);
}
PyObject* fn_write_py_ulong(uint32_t value)
{
    return PyLong_FromUnsignedLong(value);
}
PyObject* fn_write_py_longlong(int64_t value)
{
    return PyLong_FromLongLong(value);
}
PyObject* fn_write_py_ulonglong(uint64_t value)
{
    return PyLong_FromUnsignedLongLong(value);
}
