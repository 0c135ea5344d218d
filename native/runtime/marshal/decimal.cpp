// Python decimal values, ints and floats <-> managed Decimal.
#include "marshal/decimal.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "marshal/decimal_tuple.h"
#include "marshal/module_type_instance.h"
#include "module/identifiers.h"
#include "module/import_errors.h"

namespace {

const char kTooLarge[] = "value too large for .Net decimal";
constexpr int64_t kMaxScale = 28;
constexpr int32_t kMaxDigits = 29;   // 2^96 - 1 has 29 decimal digits
constexpr int32_t kGroupDigits = 9;  // a group of 9 digits fits 32 bits
constexpr uint32_t kNoLimit = 0xFFFFFFFFu;

// (2^96 - 1) div 100, by word; (2^96 - 1) mod 100 is 35.
constexpr uint32_t kEstimateHi = 0x28F5C28u;
constexpr uint32_t kEstimateMid = 0xF5C28F5Cu;
constexpr uint32_t kEstimateLo = 0x28F5C28Fu;
constexpr uint32_t kEstimateGroupLimit = 36;

int raise_too_large()
{
    PyErr_SetString(PyExc_OverflowError, kTooLarge);
    return 0;
}

// One digit of a DecimalTuple's digits; -1 with an exception set.
int read_digit(PyObject* item)
{
    long digit = PyLong_AsLong(item);
    if (digit == -1 && PyErr_Occurred())
        return -1;
    if (digit < 0 || digit > 9) {
        PyErr_Format(PyExc_ValueError, "invalid digit %ld in DecimalTuple", digit);
        return -1;
    }
    return int(digit);
}

}  // namespace

uint64_t TenPow::pow(uint32_t n)
{
    uint64_t result = 1;
    uint64_t base = 10;
    while (n) {
        if (n & 1)
            result *= base;
        base *= base;
        n >>= 1;
    }
    return result;
}

// --- DecimalArgOutBuilder ---

DecimalArgOutBuilder::DecimalArgOutBuilder(ClrDecimal* out)
    : m_out(out), m_overflow(false), m_round_at(-1), m_exponent(0), m_sign(0), m_accepted(0)
{
    std::memset(m_out, 0, sizeof(*m_out));
}

void DecimalArgOutBuilder::begin_accept_decimal(uint32_t sign, int64_t exponent, int32_t round_at)
{
    m_sign = sign ? 1 : 0;
    m_exponent = exponent;
    m_round_at = round_at;
    m_accepted = 0;
    m_overflow = false;
}

void DecimalArgOutBuilder::imul_and_add(uint32_t multiplier, uint32_t addend)
{
    uint64_t carry = uint64_t(m_out->lo) * multiplier + addend;
    m_out->lo = uint32_t(carry);
    carry = (carry >> 32) + uint64_t(m_out->mid) * multiplier;
    m_out->mid = uint32_t(carry);
    carry = (carry >> 32) + uint64_t(m_out->hi) * multiplier;
    m_out->hi = uint32_t(carry);
    if (carry >> 32)
        m_overflow = true;
}

uint32_t DecimalArgOutBuilder::round_last(uint32_t group, uint32_t limit)
{
    // Half to even on the dropped digit alone.
    uint32_t q = group / 10;
    uint32_t d = group % 10;
    uint32_t result = (d > 5 || (d == 5 && (q & 1))) ? q + 1 : q;
    if (result == limit) {
        imul_and_add(1, 1);
        result = 0;
    }
    return result;
}

bool DecimalArgOutBuilder::is_overflow_estimated(uint32_t group) const
{
    if (m_out->hi != kEstimateHi)
        return m_out->hi > kEstimateHi;
    if (m_out->mid != kEstimateMid)
        return m_out->mid > kEstimateMid;
    if (m_out->lo != kEstimateLo)
        return m_out->lo > kEstimateLo;
    return group >= kEstimateGroupLimit;
}

void DecimalArgOutBuilder::accept_decimal_mantissa(uint32_t group, int32_t length)
{
    uint32_t p = uint32_t(TenPow::pow(uint32_t(length)));
    int32_t taken = length;
    if (m_accepted + length == m_round_at) {
        // The last digit read only rounds the one before it; a carry out of
        // the group (995 -> 100) flows into the mantissa through the addition.
        group = round_last(group, kNoLimit);
        p /= 10;
        taken -= 1;
    }
    m_accepted += taken;
    if (m_accepted == kMaxDigits && m_exponent < 0 && is_overflow_estimated(group)) {
        // 29 digits that would not fit: give up the last one, rounding, and
        // one decimal place with it.
        m_exponent += 1;
        group = round_last(group, 10);
        imul_and_add(10, group);
        return;
    }
    imul_and_add(p, group);
}

bool DecimalArgOutBuilder::move_exponent_to_mantissa()
{
    // Stops at the first overflow: the exponent may be huge.
    while (m_exponent >= kGroupDigits && !m_overflow) {
        imul_and_add(uint32_t(TenPow::pow(kGroupDigits)), 0);
        m_exponent -= kGroupDigits;
    }
    if (!m_overflow && m_exponent > 0)
        imul_and_add(uint32_t(TenPow::pow(uint32_t(m_exponent))), 0);
    m_exponent = 0;
    return !m_overflow;
}

bool DecimalArgOutBuilder::is_zero() const
{
    return m_out->lo == 0 && m_out->mid == 0 && m_out->hi == 0;
}

bool DecimalArgOutBuilder::end_accept_decimal()
{
    if (m_overflow)
        return false;
    if (is_zero()) {
        // A negative zero loses its sign.
        m_out->flags = 0;
        return true;
    }
    if (m_exponent <= 0) {
        m_out->flags = (m_sign << 31) | (uint32_t(-m_exponent) << 16);
        return true;
    }
    if (!move_exponent_to_mantissa())
        return false;
    m_out->flags = m_sign << 31;
    return true;
}

bool DecimalArgOutBuilder::accept_long(uint64_t magnitude, bool negative)
{
    m_out->lo = uint32_t(magnitude);
    m_out->mid = uint32_t(magnitude >> 32);
    m_out->hi = 0;
    m_out->flags = negative ? 0x80000000u : 0;
    return true;
}

int DecimalArgOutBuilder::accept_double(double value)
{
    if (std::isnan(value))
        return -1;
    uint64_t bits;
    std::memcpy(&bits, &value, sizeof(bits));
    m_out->lo = uint32_t(bits);
    m_out->mid = uint32_t(bits >> 32);
    int biased_exponent = int((bits >> 52) & 0x7FF);
    if (biased_exponent - 1022 > 96)
        return 1;
    m_out->flags = kClrDecimalDoubleForm;
    return 0;
}

// --- DecimalArgInBuilder ---

DecimalArgInBuilder::DecimalArgInBuilder(ClrDecimal* in)
    : m_in(in), m_length(0), m_exponent(int32_t((in->flags >> 16) & 0xFF)), m_sign(int32_t(in->flags) < 0 ? 1 : 0)
{
    do {
        uint64_t remainder = 0;
        for (uint32_t* word : {&m_in->hi, &m_in->mid, &m_in->lo}) {
            uint64_t dividend = (remainder << 32) | *word;
            *word = uint32_t(dividend / 10);
            remainder = dividend % 10;
        }
        m_digits[m_length++] = uint8_t(remainder);
    } while (m_in->lo | m_in->mid | m_in->hi);
    std::reverse(m_digits, m_digits + m_length);
}

// --- Python -> managed ---

int fn_conv_py_decimal_tuple_to_clr_decimal(PyObject* tuple, ClrDecimal* out)
{
    DecimalArgOutBuilder builder(out);
    int64_t exponent = 0;
    long sign = 0;
    PyObject* digits = nullptr;
    PyObject* attr = nullptr;
    int result = 0;

    attr = PyObject_GetAttr(tuple, PyWrpIdDecimal_Exponent);
    if (!attr || !fn_check_decimal_tuple_exponent(attr, "Decimal", &exponent))
        goto error;
    Py_CLEAR(attr);
    attr = PyObject_GetAttr(tuple, PyWrpIdDecimal_Sign);
    if (!attr)
        goto error;
    sign = PyLong_AsLong(attr);
    if (sign == -1 && PyErr_Occurred())
        goto error;
    Py_CLEAR(attr);
    attr = PyObject_GetAttr(tuple, PyWrpIdDecimal_Digits);
    if (!attr)
        goto error;
    digits = PySequence_Fast(attr, "DecimalTuple digits must be a sequence");
    if (!digits)
        goto error;

    {
        int64_t n = PySequence_Fast_GET_SIZE(digits);
        if (n >= 2 && exponent > kMaxDigits - n) {
            raise_too_large();
            goto error;
        }
        int32_t round_at = -1;
        if (exponent < -kMaxScale) {
            // More than 28 places: cut the digits below 10^-28, keeping one
            // of them to round with, unless every digit lies below.
            int64_t cut = -kMaxScale - exponent;
            if (n < cut) {
                n = 0;
            } else {
                n -= cut;
                round_at = int32_t(n + 1);
            }
            exponent = -kMaxScale;
        }
        int64_t read;
        if (n >= kMaxDigits + 1) {
            round_at = kMaxDigits + 1;
            read = kMaxDigits + 1;
            exponent += n - kMaxDigits;
        } else {
            read = std::max<int64_t>(std::min<int64_t>(n, kMaxDigits), round_at);
        }

        builder.begin_accept_decimal(sign ? 1 : 0, exponent, round_at);
        PyObject** items = PySequence_Fast_ITEMS(digits);
        for (int64_t start = 0; start < read; start += kGroupDigits) {
            int32_t length = int32_t(std::min<int64_t>(kGroupDigits, read - start));
            uint32_t group = 0;
            for (int32_t i = 0; i < length; ++i) {
                int digit = read_digit(items[start + i]);
                if (digit < 0)
                    goto error;
                group = group * 10 + uint32_t(digit);
            }
            builder.accept_decimal_mantissa(group, length);
        }
        if (!builder.end_accept_decimal()) {
            raise_too_large();
            goto error;
        }
    }
    result = 1;

error:
    Py_XDECREF(attr);
    Py_XDECREF(digits);
    return result;
}

int fn_conv_py_decimal_obj_to_clr_decimal(PyObject* obj, ClrDecimal* out)
{
    PyObject* tuple = PyObject_CallMethodObjArgs(obj, PyWrpIdDecimal_AsTuple, nullptr);
    if (!tuple)
        return 0;
    int result = fn_conv_py_decimal_tuple_to_clr_decimal(tuple, out);
    Py_DECREF(tuple);
    return result;
}

int fn_conv_py_long_to_clr_decimal(PyObject* obj, ClrDecimal* out)
{
    DecimalArgOutBuilder builder(out);
    long long value = PyLong_AsLongLong(obj);
    if (value == -1 && PyErr_Occurred()) {
        if (!PyErr_ExceptionMatches(PyExc_OverflowError))
            return 0;
        // Beyond int64: one more try as uint64. Its own error, for a value
        // beyond that too, is what the caller gets.
        PyErr_Clear();
        builder.accept_long(PyLong_AsUnsignedLongLong(obj), false);
        return PyErr_Occurred() ? 0 : 1;
    }
    uint64_t magnitude = value < 0 ? uint64_t(0) - uint64_t(value) : uint64_t(value);
    builder.accept_long(magnitude, value < 0);
    return 1;
}

int fn_conv_py_float_to_clr_decimal(PyObject* obj, ClrDecimal* out)
{
    double value = PyFloat_AsDouble(obj);
    if (value == -1.0 && PyErr_Occurred())
        return 0;
    DecimalArgOutBuilder builder(out);
    switch (builder.accept_double(value)) {
    case 0:
        return 1;
    case -1:
        PyErr_SetString(PyExc_TypeError, "can't build Decimal from NaN");
        return 0;
    default:
        return raise_too_large();
    }
}

int fn_conv_py_decimal_to_clr_decimal(PyObject* obj, ClrDecimal* out)
{
    int is = fn_is_instance_of_module_type(obj, "decimal", PyWrpIdTypeName_DecimalTuple);
    if (is < 0)
        return 0;
    if (is)
        return fn_conv_py_decimal_tuple_to_clr_decimal(obj, out);
    is = fn_is_instance_of_module_type(obj, "decimal", PyWrpIdTypeName_Decimal);
    if (is < 0)
        return 0;
    if (is)
        return fn_conv_py_decimal_obj_to_clr_decimal(obj, out);
    if (PyLong_Check(obj) && !PyBool_Check(obj))
        return fn_conv_py_long_to_clr_decimal(obj, out);
    if (PyFloat_Check(obj))
        return fn_conv_py_float_to_clr_decimal(obj, out);
    PyErr_Format(PyExc_TypeError, "can't build Decimal from '%s'", Py_TYPE(obj)->tp_name);
    return 0;
}

int fn_read_py_decimal(PyObject* obj, ClrDecimal* out)
{
    return fn_conv_py_decimal_to_clr_decimal(obj, out);
}

int fn_read_py_decimal_tuple(PyObject* tuple, ClrDecimal* out)
{
    return fn_conv_py_decimal_tuple_to_clr_decimal(tuple, out);
}

// --- managed -> Python ---

PyObject* fn_conv_clr_decimal_to_py_decimal(const ClrDecimal* value)
{
    ClrDecimal words = *value;
    DecimalArgInBuilder digits(&words);

    PyObject* digit_tuple = PyTuple_New(digits.length());
    if (!digit_tuple)
        return nullptr;
    for (int32_t i = 0; i < digits.length(); ++i) {
        PyObject* digit = PyLong_FromLong(digits.digits()[i]);
        if (!digit) {
            Py_DECREF(digit_tuple);
            return nullptr;
        }
        PyTuple_SET_ITEM(digit_tuple, i, digit);
    }
    // "N" takes over the digit tuple, also when building fails.
    PyObject* args = Py_BuildValue("(iNi)", digits.sign(), digit_tuple, -digits.exponent());
    if (!args)
        return nullptr;
    PyObject* result = nullptr;
    PyObject* cls = fn_import_type_from_module("decimal", PyWrpIdTypeName_Decimal);
    if (cls) {
        result = PyObject_CallFunctionObjArgs(cls, args, nullptr);
        Py_DECREF(cls);
    }
    Py_DECREF(args);
    return result;
}

PyObject* fn_write_py_decimal(const ClrDecimal* value)
{
    return fn_conv_clr_decimal_to_py_decimal(value);
}
