// The exponent of a decimal.DecimalTuple, checked the same way by the integer
// and the Decimal converters.
#pragma once

#include <Python.h>
#include <cstdint>

// 1 with *out set for an int exponent. Otherwise 0 with: OverflowError
// "value too large for .Net '<type_name>'" for "F" (infinity, either sign),
// OverflowError "value is not a number" for "n"/"N" (NaN), TypeError
// "can't build '<type_name>' from exponent value '<text>'" for another string,
// TypeError "unknown exponent type '<type>'" for anything else; an int too
// large for 64 bits keeps Python's OverflowError.
int fn_check_decimal_tuple_exponent(PyObject* exponent, const char* type_name, int64_t* out);
