// decimal.DecimalTuple (sign, digits, exponent) to a managed integer, digit by
// digit with overflow checks against the target's bounds; fractions truncate.
#include <algorithm>

#include "marshal/clr_int_traits.h"
#include "marshal/scalars.h"
#include "module/identifiers.h"

namespace {

template <typename T>
int too_large(const char* format = "value too large for '%s'")
{
    PyErr_Format(PyExc_OverflowError, format, ClrIntTraits<T>::name);
    return 0;
}

template <typename T>
int too_small()
{
    PyErr_Format(PyExc_OverflowError, "value too small for '%s'", ClrIntTraits<T>::name);
    return 0;
}

// The exponent as a C long; 0 with an error for the special values and odd types.
template <typename T>
int read_exponent(PyObject* exponent, long* out)
{
    if (PyUnicode_Check(exponent)) {
        if (PyUnicode_CompareWithASCIIString(exponent, "F") == 0)
            return too_large<T>("value too large for .Net '%s'");
        if (PyUnicode_CompareWithASCIIString(exponent, "n") == 0 ||
            PyUnicode_CompareWithASCIIString(exponent, "N") == 0) {
            PyErr_SetString(PyExc_OverflowError, "value is not a number");
            return 0;
        }
        PyErr_Format(PyExc_TypeError, "can't build '%s' from exponent value '%U'", ClrIntTraits<T>::name, exponent);
        return 0;
    }
    if (!PyLong_Check(exponent)) {
        PyErr_Format(PyExc_TypeError, "unknown exponent type '%s'", Py_TYPE(exponent)->tp_name);
        return 0;
    }
    long value = PyLong_AsLong(exponent);
    if (value == -1 && PyErr_Occurred())
        return 0;
    *out = value;
    return 1;
}

template <typename T>
int accumulate(PyObject* sign_obj, PyObject* digits_obj, long exponent, T* out)
{
    using limits = std::numeric_limits<T>;
    constexpr T max_div = limits::max() / 10;
    constexpr int max_mod = (int)(limits::max() % 10);
    constexpr T min_div = limits::min() / 10;           // rounded toward zero
    constexpr int min_mod = (int)(limits::min() % 10);  // zero or negative

    long sign = PyLong_AsLong(sign_obj);
    if (sign == -1 && PyErr_Occurred())
        return 0;
    if constexpr (!limits::is_signed) {
        if (sign == 1)
            return too_small<T>();  // a negative zero too, before any digit is seen
    }

    PyObject* digits = PySequence_Fast(digits_obj, "digits must be a sequence");
    if (!digits)
        return 0;
    Py_ssize_t count = PySequence_Fast_GET_SIZE(digits);
    PyObject** items = PySequence_Fast_ITEMS(digits);

    T result = 0;
    *out = 0;
    int ok = 1;
    if (count > -(Py_ssize_t)exponent) {
        Py_ssize_t integer_digits = count + std::min<Py_ssize_t>(exponent, 0);
        for (Py_ssize_t i = 0; i < integer_digits; ++i) {
            long digit = PyLong_AsLong(items[i]);
            if (digit == -1 && PyErr_Occurred()) {
                ok = 0;
                break;
            }
            int d = (int)(sign == 1 ? -digit : digit);
            if (result > max_div || (result == max_div && d > max_mod)) {
                ok = too_large<T>();
                break;
            }
            if constexpr (limits::is_signed) {
                if (result < min_div || (result == min_div && d < min_mod)) {
                    ok = too_small<T>();
                    break;
                }
            }
            result = (T)(result * 10 + d);
            *out = result;
        }
        // A positive exponent scales the integer part; zero stays zero at any scale.
        for (long e = 0; ok && result != 0 && e < exponent; ++e) {
            if (result > max_div) {
                ok = too_large<T>();
                break;
            }
            if constexpr (limits::is_signed) {
                if (result < min_div) {
                    ok = too_small<T>();
                    break;
                }
            }
            result = (T)(result * 10);
            *out = result;
        }
    }
    Py_DECREF(digits);
    return ok;
}

}  // namespace

template <typename T>
int fn_conv_py_decimal_tuple_to_clr_int(PyObject* tuple, T* out)
{
    PyObject* exponent = PyObject_GetAttr(tuple, PyWrpIdDecimal_Exponent);
    if (!exponent)
        return 0;
    long exp = 0;
    int ok = read_exponent<T>(exponent, &exp);
    Py_DECREF(exponent);
    if (!ok)
        return 0;

    PyObject* sign = PyObject_GetAttr(tuple, PyWrpIdDecimal_Sign);
    if (!sign)
        return 0;
    PyObject* digits = PyObject_GetAttr(tuple, PyWrpIdDecimal_Digits);
    if (!digits) {
        Py_DECREF(sign);
        return 0;
    }
    ok = accumulate<T>(sign, digits, exp, out);
    Py_DECREF(sign);
    Py_DECREF(digits);
    return ok;
}

template int fn_conv_py_decimal_tuple_to_clr_int<int8_t>(PyObject*, int8_t*);
template int fn_conv_py_decimal_tuple_to_clr_int<uint8_t>(PyObject*, uint8_t*);
template int fn_conv_py_decimal_tuple_to_clr_int<int16_t>(PyObject*, int16_t*);
template int fn_conv_py_decimal_tuple_to_clr_int<uint16_t>(PyObject*, uint16_t*);
template int fn_conv_py_decimal_tuple_to_clr_int<int32_t>(PyObject*, int32_t*);
template int fn_conv_py_decimal_tuple_to_clr_int<uint32_t>(PyObject*, uint32_t*);
template int fn_conv_py_decimal_tuple_to_clr_int<int64_t>(PyObject*, int64_t*);
template int fn_conv_py_decimal_tuple_to_clr_int<uint64_t>(PyObject*, uint64_t*);
