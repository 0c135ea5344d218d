// Python decimal.Decimal, DecimalTuple, int and float <-> managed Decimal.
// Converters return 1 on success, 0 with a Python exception set.
#pragma once

#include <Python.h>
#include <cstdint>

// Managed Decimal as exchanged: a 96-bit mantissa in lo/mid/hi; flags holds
// the sign in bit 31 and the scale (0..28) in bits 16-23, all else 0. The
// value is (-1)^sign * mantissa / 10^scale.
// On the way in only, flags == 1 means lo (low half) and mid (high half) hold
// the bits of a double that managed code converts itself.
struct ClrDecimal {
    uint32_t lo;
    uint32_t mid;
    uint32_t hi;
    uint32_t flags;
};
static_assert(sizeof(ClrDecimal) == 16, "managed Decimal is four 32-bit words");

constexpr uint32_t kClrDecimalDoubleForm = 1;

struct TenPow {
    // 10^n by square-and-multiply; n up to 19.
    static uint64_t pow(uint32_t n);
};

// Builds a managed Decimal from decimal digits, an int or a float, writing
// into the caller's four words (zeroed on construction).
class DecimalArgOutBuilder {
public:
    explicit DecimalArgOutBuilder(ClrDecimal* out);

    // Decimal digits: begin, then the digits most significant first in
    // groups of up to 9 (each group as a number), then end. round_at is the
    // digit count whose last digit is only used to round with (-1: never).
    void begin_accept_decimal(uint32_t sign, int64_t exponent, int32_t round_at);
    void accept_decimal_mantissa(uint32_t group, int32_t length);
    // false when the value does not fit the 96-bit mantissa.
    bool end_accept_decimal();

    bool accept_long(uint64_t magnitude, bool negative);
    // -1 NaN, 1 magnitude of 2^96 or more (infinities included), 0 stored in
    // the double form for managed code to finish.
    int accept_double(double value);

private:
    void imul_and_add(uint32_t multiplier, uint32_t addend);
    uint32_t round_last(uint32_t group, uint32_t limit);
    bool is_overflow_estimated(uint32_t group) const;
    bool move_exponent_to_mantissa();
    bool is_zero() const;

    ClrDecimal* m_out;
    bool m_overflow;
    int32_t m_round_at;
    int64_t m_exponent;
    uint32_t m_sign;
    int32_t m_accepted;
};

// Reads a managed Decimal as decimal digits. Consumes the mantissa words of
// `in` (they are zero afterwards).
class DecimalArgInBuilder {
public:
    explicit DecimalArgInBuilder(ClrDecimal* in);

    const ClrDecimal* in() const { return m_in; }
    const uint8_t* digits() const { return m_digits; }
    int32_t length() const { return m_length; }
    int32_t exponent() const { return m_exponent; }
    int32_t sign() const { return m_sign; }

private:
    ClrDecimal* m_in;
    uint8_t m_digits[32];  // most significant first
    int32_t m_length;      // at least 1
    int32_t m_exponent;    // the scale
    int32_t m_sign;
};

// DecimalTuple, Decimal, int (not bool), float or subclass, in that order;
// TypeError "can't build Decimal from '%s'" for anything else.
int fn_conv_py_decimal_to_clr_decimal(PyObject* obj, ClrDecimal* out);
int fn_conv_py_decimal_tuple_to_clr_decimal(PyObject* tuple, ClrDecimal* out);
// A decimal.Decimal, through its as_tuple().
int fn_conv_py_decimal_obj_to_clr_decimal(PyObject* obj, ClrDecimal* out);
int fn_conv_py_long_to_clr_decimal(PyObject* obj, ClrDecimal* out);
int fn_conv_py_float_to_clr_decimal(PyObject* obj, ClrDecimal* out);

// A new decimal.Decimal; `value` is left unchanged.
PyObject* fn_conv_clr_decimal_to_py_decimal(const ClrDecimal* value);

// Read table slots (variant tags 7 and 8) and the write table slot.
int fn_read_py_decimal(PyObject* obj, ClrDecimal* out);
int fn_read_py_decimal_tuple(PyObject* tuple, ClrDecimal* out);
PyObject* fn_write_py_decimal(const ClrDecimal* value);
