// Booleans, integers of every width, floats, chars, indices and the argument-count check.
// Converters return 1 on success, 0 with a Python exception set.
#pragma once

#include <Python.h>
#include <cstdint>

int fn_conv_py_bool_to_clr_bool(PyObject* obj, bool* out);
int fn_read_py_bool(PyObject* obj);

// Integer converters accept int (not bool), float (truncated), decimal.Decimal
// and decimal.DecimalTuple.
int fn_conv_py_long_to_clr_int8(PyObject* obj, int8_t* out);
int fn_conv_py_ulong_to_clr_uint8(PyObject* obj, uint8_t* out);
int fn_conv_py_long_to_clr_int16(PyObject* obj, int16_t* out);
int fn_conv_py_ulong_to_clr_uint16(PyObject* obj, uint16_t* out);
int fn_conv_py_long_to_clr_int32(PyObject* obj, int32_t* out);
int fn_conv_py_ulong_to_clr_uint32(PyObject* obj, uint32_t* out);
int fn_conv_py_long_to_clr_int64(PyObject* obj, int64_t* out);
int fn_conv_py_ulong_to_clr_uint64(PyObject* obj, uint64_t* out);

// A decimal.DecimalTuple to an integer of the target width, truncating toward
// zero; OverflowError outside the target's range.
template <typename T>
int fn_conv_py_decimal_tuple_to_clr_int(PyObject* tuple, T* out);
extern template int fn_conv_py_decimal_tuple_to_clr_int<int8_t>(PyObject*, int8_t*);
extern template int fn_conv_py_decimal_tuple_to_clr_int<uint8_t>(PyObject*, uint8_t*);
extern template int fn_conv_py_decimal_tuple_to_clr_int<int16_t>(PyObject*, int16_t*);
extern template int fn_conv_py_decimal_tuple_to_clr_int<uint16_t>(PyObject*, uint16_t*);
extern template int fn_conv_py_decimal_tuple_to_clr_int<int32_t>(PyObject*, int32_t*);
extern template int fn_conv_py_decimal_tuple_to_clr_int<uint32_t>(PyObject*, uint32_t*);
extern template int fn_conv_py_decimal_tuple_to_clr_int<int64_t>(PyObject*, int64_t*);
extern template int fn_conv_py_decimal_tuple_to_clr_int<uint64_t>(PyObject*, uint64_t*);

// Read table: an int's value and the narrowest managed reader for it:
// 1 signed 32-bit, 2 signed 64-bit, 3 unsigned 64-bit (stored bit for bit);
// 0 with TypeError when it fits none.
int fn_read_py_vers_long(PyObject* obj, int64_t* out);

// float/double: float or subclass, int (not bool).
template <typename T>
int fn_conv_py_float_to_clr_float(PyObject* obj, T* out);
extern template int fn_conv_py_float_to_clr_float<float>(PyObject*, float*);
extern template int fn_conv_py_float_to_clr_float<double>(PyObject*, double*);
int fn_read_py_double(PyObject* obj, double* out);

int fn_conv_py_string_to_clr_char(PyObject* obj, uint16_t* out);
PyObject* fn_conv_clr_char_to_py_string(uint16_t unit);

// Results (new references).
PyObject* fn_write_py_bool(bool value);
PyObject* fn_write_py_long(int32_t value);
PyObject* fn_write_py_ulong(uint32_t value);
PyObject* fn_write_py_longlong(int64_t value);
PyObject* fn_write_py_ulonglong(uint64_t value);
PyObject* fn_write_py_double(double value);
PyObject* fn_write_py_char(uint16_t unit);

int fn_conv_py_obj_to_ssize_t(PyObject* obj, Py_ssize_t* out);
int fn_conv_py_optional_to_ssize_t(PyObject* tuple, Py_ssize_t* out);

// 0 when min <= given <= max; otherwise TypeError like CPython's own message.
int fn_check_args_count_out_of_range(Py_ssize_t given, const char* name, Py_ssize_t min, Py_ssize_t max);

// Range checks of index and count values that already have the managed width:
// every instantiation in use answers false.
struct IndexSubjTrait {};
struct CountSubjTrait {};
template <typename Subject, typename T>
constexpr bool is_clong_value_out_of_clr_range(T)
{
    return false;
}
template <typename Subject, typename T>
constexpr bool is_uclong_value_out_of_clr_range(T)
{
    return false;
}
template <typename Subject, typename T>
constexpr bool is_uclong_value_negative(T)
{
    return false;
}
