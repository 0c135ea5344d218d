// Decimal marshalling: the digit feed with its cut, rounding and 29-digit
// estimate, ints and floats, the exponent checks, and managed -> Python.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "marshal/decimal.h"
#include "runtime_python.h"

using runtimetest::eval;
using runtimetest::PyError;
using runtimetest::take_error;
using runtimetest::to_utf8;

namespace {

using u128 = unsigned __int128;

u128 mantissa(const ClrDecimal& d)
{
    return (u128(d.hi) << 64) | (u128(d.mid) << 32) | d.lo;
}

u128 parse_u128(const char* digits)
{
    u128 value = 0;
    for (const char* p = digits; *p; ++p)
        value = value * 10 + u128(*p - '0');
    return value;
}

uint32_t flags_of(bool negative, uint32_t scale)
{
    return (negative ? 0x80000000u : 0u) | (scale << 16);
}

class DecimalMarshal : public runtimetest::PythonTest {
protected:
    // Converts the value of `expression` with the general converter.
    static int convert(const std::string& expression, ClrDecimal* out)
    {
        std::memset(out, 0xAB, sizeof(*out));
        PyObject* obj = eval(expression);
        if (!obj)
            return -1;
        int result = fn_conv_py_decimal_to_clr_decimal(obj, out);
        Py_DECREF(obj);
        return result;
    }

    static void expect_value(const std::string& expression, const char* digits, uint32_t scale, bool negative = false)
    {
        ClrDecimal out;
        ASSERT_EQ(convert(expression, &out), 1) << expression;
        EXPECT_TRUE(mantissa(out) == parse_u128(digits)) << expression;
        EXPECT_EQ(out.flags, flags_of(negative, scale)) << expression;
    }

    static void expect_error(const std::string& expression, const char* type, const std::string& message)
    {
        ClrDecimal out;
        EXPECT_EQ(convert(expression, &out), 0) << expression;
        PyError error;
        take_error(error);
        EXPECT_EQ(error.type, type) << expression;
        EXPECT_EQ(error.message, message) << expression;
    }

    static std::string to_python(ClrDecimal value)
    {
        PyObject* result = fn_write_py_decimal(&value);
        std::string text = result ? "Decimal('" + to_utf8(result) + "')" : "<null>";
        Py_XDECREF(result);
        return text;
    }
};

TEST(TenPowTest, Powers)
{
    EXPECT_EQ(TenPow::pow(0), 1u);
    EXPECT_EQ(TenPow::pow(1), 10u);
    EXPECT_EQ(TenPow::pow(9), 1000000000u);
    EXPECT_EQ(TenPow::pow(19), 10000000000000000000u);
}

TEST_F(DecimalMarshal, PlainValues)
{
    expect_value("Decimal('123.45')", "12345", 2);
    expect_value("Decimal('-1.5')", "15", 1, true);
    expect_value("Decimal('0.0000000000000000000000000001')", "1", 28);
    expect_value("Decimal('12E+20')", "1200000000000000000000", 0);
    expect_value("Decimal('1E+28')", "10000000000000000000000000000", 0);
    expect_value("decimal.DecimalTuple(0, (1, 2), -1)", "12", 1);
    expect_value("decimal.DecimalTuple(1, [4, 0, 0], 0)", "400", 0, true);
}

TEST_F(DecimalMarshal, ZeroesDropTheirSign)
{
    for (const char* text : {"Decimal('-0')", "Decimal('0E+40')", "Decimal('-0.000')", "Decimal('0E-50')", "0"}) {
        ClrDecimal out;
        ASSERT_EQ(convert(text, &out), 1) << text;
        EXPECT_EQ(out.lo | out.mid | out.hi | out.flags, 0u) << text;
    }
}

TEST_F(DecimalMarshal, DigitsBelowTheLastPlaceAreCutWithOneRoundingDigit)
{
    expect_value("Decimal('1E-29')", "0", 0);
    expect_value("Decimal('5E-29')", "0", 0);
    expect_value("Decimal('6E-29')", "1", 28);
    // Half to even on the one dropped digit: 1|5 -> 2, 2|5 -> 2, 3|5 -> 4.
    expect_value("Decimal('0.00000000000000000000000000015')", "2", 28);
    expect_value("Decimal('0.00000000000000000000000000025')", "2", 28);
    expect_value("Decimal('0.00000000000000000000000000035')", "4", 28);
    // Only that digit counts: 2|51 still rounds down.
    expect_value("Decimal('0.000000000000000000000000000251')", "2", 28);
    expect_value("Decimal('-0.00000000000000000000000000016')", "2", 28, true);
}

TEST_F(DecimalMarshal, MoreThan29DigitsLoseTheirTail)
{
    expect_value("Decimal('11111111111111111111111111111.1')", "11111111111111111111111111111", 0);
    expect_error("Decimal('111111111111111111111111111111')", "OverflowError", "value too large for .Net decimal");
    // 40 digits, 12 of them integer: rounded at the 30th digit read.
    expect_value("Decimal('123456789012.3456789012345678901234567891')", "12345678901234567890123456789", 17);
    // A rounding carry through a whole group: 9.999...95 becomes 10.
    expect_value("Decimal('9.99999999999999999999999999995')", "10000000000000000000000000000", 27);
}

TEST_F(DecimalMarshal, MantissaLimit)
{
    expect_value("Decimal('79228162514264337593543950335')", "79228162514264337593543950335", 0);
    expect_value("Decimal('-79228162514264337593543950335')", "79228162514264337593543950335", 0, true);
    expect_error("Decimal('79228162514264337593543950336')", "OverflowError", "value too large for .Net decimal");
    expect_error("Decimal('1E+29')", "OverflowError", "value too large for .Net decimal");
    expect_error("Decimal('1E+1000000')", "OverflowError", "value too large for .Net decimal");
    // 29 digits whose mantissa would not fit: one place is given up, rounding.
    expect_value("Decimal('7.9228162514264337593543950336')", "7922816251426433759354395034", 27);
    expect_value("Decimal('7.9228162514264337593543950335')", "79228162514264337593543950335", 28);
}

TEST_F(DecimalMarshal, SpecialAndMalformedExponents)
{
    expect_error("Decimal('Infinity')", "OverflowError", "value too large for .Net 'Decimal'");
    expect_error("Decimal('-Infinity')", "OverflowError", "value too large for .Net 'Decimal'");
    expect_error("Decimal('NaN')", "OverflowError", "value is not a number");
    expect_error("Decimal('sNaN')", "OverflowError", "value is not a number");
    expect_error("decimal.DecimalTuple(0, (1,), 'x')", "TypeError", "can't build 'Decimal' from exponent value 'x'");
    expect_error("decimal.DecimalTuple(0, (1,), 1.5)", "TypeError", "unknown exponent type 'float'");
    expect_error("decimal.DecimalTuple(0, (1, 10), 0)", "ValueError", "invalid digit 10 in DecimalTuple");
}

TEST_F(DecimalMarshal, Integers)
{
    expect_value("-5", "5", 0, true);
    expect_value("MyInt(7)", "7", 0);
    expect_value("2**63", "9223372036854775808", 0);
    expect_value("2**64 - 1", "18446744073709551615", 0);
    expect_value("-2**63", "9223372036854775808", 0, true);
    ClrDecimal out;
    EXPECT_EQ(convert("2**64", &out), 0);
    PyError error;
    take_error(error);
    EXPECT_EQ(error.type, "OverflowError");
    EXPECT_EQ(convert("-2**63 - 1", &out), 0);
    take_error(error);
    EXPECT_EQ(error.type, "OverflowError");
}

TEST_F(DecimalMarshal, FloatsTravelAsDoubleBits)
{
    ClrDecimal out;
    ASSERT_EQ(convert("0.1", &out), 1);
    double value = 0.1;
    uint64_t bits;
    std::memcpy(&bits, &value, sizeof(bits));
    EXPECT_EQ(out.lo, uint32_t(bits));
    EXPECT_EQ(out.mid, uint32_t(bits >> 32));
    EXPECT_EQ(out.hi, 0u);
    EXPECT_EQ(out.flags, kClrDecimalDoubleForm);

    ASSERT_EQ(convert("MyFloat(-(2.0**96 - 2.0**43))", &out), 1);  // the largest magnitude below 2^96
    EXPECT_EQ(out.flags, kClrDecimalDoubleForm);
    for (const char* text : {"float('inf')", "float('-inf')", "2.0**96"})
        expect_error(text, "OverflowError", "value too large for .Net decimal");
    expect_error("float('nan')", "TypeError", "can't build Decimal from NaN");
}

TEST_F(DecimalMarshal, OtherTypesAreRefused)
{
    expect_error("True", "TypeError", "can't build Decimal from 'bool'");
    expect_error("'1.5'", "TypeError", "can't build Decimal from 'str'");
    expect_error("(0, (1,), 0)", "TypeError", "can't build Decimal from 'tuple'");
}

TEST_F(DecimalMarshal, ManagedDecimalsToPython)
{
    EXPECT_EQ(to_python({12345, 0, 0, flags_of(true, 2)}), "Decimal('-123.45')");
    EXPECT_EQ(to_python({0xFFFFFFFFu, 0xFFFFFFFFu, 0xFFFFFFFFu, flags_of(false, 28)}),
              "Decimal('7.9228162514264337593543950335')");
    EXPECT_EQ(to_python({0, 0, 0, flags_of(false, 3)}), "Decimal('0.000')");
    EXPECT_EQ(to_python({0, 0, 1, 0}), "Decimal('18446744073709551616')");

    ClrDecimal value = {7, 8, 9, flags_of(false, 4)};
    PyObject* result = fn_conv_clr_decimal_to_py_decimal(&value);
    Py_XDECREF(result);
    EXPECT_EQ(value.lo, 7u);  // the caller's words are left alone
    EXPECT_EQ(value.hi, 9u);

    ClrDecimal consumed = {123, 0, 0, flags_of(true, 1)};
    DecimalArgInBuilder in(&consumed);
    ASSERT_EQ(in.length(), 3);
    EXPECT_EQ(in.digits()[0], 1);
    EXPECT_EQ(in.digits()[2], 3);
    EXPECT_EQ(in.exponent(), 1);
    EXPECT_EQ(in.sign(), 1);
    EXPECT_EQ(consumed.lo | consumed.mid | consumed.hi, 0u);
}

TEST_F(DecimalMarshal, RoundTrips)
{
    for (const char* text : {"1", "-0.5", "3.1415926535897932384626433833", "-79228162514264337593543950335",
                             "0.0000000000000000000000000001", "4294967296.00000000001", "1E+20"}) {
        ClrDecimal out;
        std::string expression = std::string("Decimal('") + text + "')";
        ASSERT_EQ(convert(expression, &out), 1) << text;
        PyObject* back = fn_conv_clr_decimal_to_py_decimal(&out);
        PyObject* original = eval(expression);
        ASSERT_TRUE(back && original);
        EXPECT_EQ(PyObject_RichCompareBool(back, original, Py_EQ), 1) << text << " came back as " << to_utf8(back);
        Py_DECREF(back);
        Py_DECREF(original);
    }
}

}  // namespace
