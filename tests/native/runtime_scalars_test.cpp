// Scalar converters: integers of every width with their range rules, decimals
// to integers, floats, chars, indices and the argument-count message.
#include <cmath>
#include <cstdint>

#include "marshal/scalars.h"
#include "runtime_python.h"

using namespace runtimetest;

namespace {

class ScalarsTest : public PythonTest {
protected:
    // Converts the value of `expression` with `convert`; on failure records the error.
    template <typename T>
    bool convert(int (*fn)(PyObject*, T*), const std::string& expression, T* out)
    {
        PyObject* obj = eval(expression);
        if (!obj)
            return false;
        int ok = fn(obj, out);
        Py_DECREF(obj);
        if (!ok)
            take_error(error_);
        return ok == 1;
    }

    PyError error_;
};

TEST_F(ScalarsTest, BoolAcceptsOnlyBool)
{
    bool value = false;
    EXPECT_TRUE(convert(fn_conv_py_bool_to_clr_bool, "True", &value));
    EXPECT_TRUE(value);
    EXPECT_TRUE(convert(fn_conv_py_bool_to_clr_bool, "False", &value));
    EXPECT_FALSE(value);
    EXPECT_FALSE(convert(fn_conv_py_bool_to_clr_bool, "1", &value));
    EXPECT_EQ(error_.type, "TypeError");
    EXPECT_EQ(error_.message, "can't build bool from 'int'");

    // The read callback takes any truth value.
    PyObject* empty = eval("[]");
    PyObject* full = eval("[0]");
    EXPECT_EQ(fn_read_py_bool(empty), 0);
    EXPECT_EQ(fn_read_py_bool(full), 1);
    Py_DECREF(empty);
    Py_DECREF(full);
}

TEST_F(ScalarsTest, SmallIntegersAreRangeChecked)
{
    int8_t i8 = 0;
    EXPECT_TRUE(convert(fn_conv_py_long_to_clr_int8, "-128", &i8));
    EXPECT_EQ(i8, -128);
    EXPECT_FALSE(convert(fn_conv_py_long_to_clr_int8, "128", &i8));
    EXPECT_EQ(error_.type, "OverflowError");
    EXPECT_EQ(error_.message, "value too big to convert to 'SByte'");
    EXPECT_FALSE(convert(fn_conv_py_long_to_clr_int8, "-129", &i8));
    EXPECT_EQ(error_.message, "value too small to convert to 'SByte'");
    EXPECT_EQ(i8, -128) << "a failed conversion leaves the target untouched";

    uint8_t u8 = 0;
    EXPECT_TRUE(convert(fn_conv_py_ulong_to_clr_uint8, "255", &u8));
    EXPECT_EQ(u8, 255);
    EXPECT_FALSE(convert(fn_conv_py_ulong_to_clr_uint8, "300", &u8));
    EXPECT_EQ(error_.message, "value too big to convert to 'Byte'");
    // A negative value fails in the runtime's own unsigned reader.
    EXPECT_FALSE(convert(fn_conv_py_ulong_to_clr_uint8, "-1", &u8));
    EXPECT_EQ(error_.type, "OverflowError");
    EXPECT_NE(error_.message.find("negative"), std::string::npos) << error_.message;

    int16_t i16 = 0;
    EXPECT_TRUE(convert(fn_conv_py_long_to_clr_int16, "32767", &i16));
    EXPECT_EQ(i16, 32767);
    EXPECT_FALSE(convert(fn_conv_py_long_to_clr_int16, "-32769", &i16));
    EXPECT_EQ(error_.message, "value too small to convert to 'Int16'");

    uint16_t u16 = 0;
    EXPECT_TRUE(convert(fn_conv_py_ulong_to_clr_uint16, "65535", &u16));
    EXPECT_EQ(u16, 65535);
    EXPECT_FALSE(convert(fn_conv_py_ulong_to_clr_uint16, "65536", &u16));
    EXPECT_EQ(error_.message, "value too big to convert to 'UInt16'");
}

TEST_F(ScalarsTest, ThirtyTwoBitIntegersKeepTheLowBits)
{
    int32_t i32 = 0;
    EXPECT_TRUE(convert(fn_conv_py_long_to_clr_int32, "2**32 + 5", &i32));
    EXPECT_EQ(i32, 5);
    EXPECT_TRUE(convert(fn_conv_py_long_to_clr_int32, "2**31", &i32));
    EXPECT_EQ(i32, INT32_MIN);
    EXPECT_TRUE(convert(fn_conv_py_long_to_clr_int32, "MyInt(-7)", &i32));
    EXPECT_EQ(i32, -7);

    uint32_t u32 = 0;
    EXPECT_TRUE(convert(fn_conv_py_ulong_to_clr_uint32, "2**32 - 1", &u32));
    EXPECT_EQ(u32, UINT32_MAX);
    EXPECT_FALSE(convert(fn_conv_py_ulong_to_clr_uint32, "-1", &u32));
    EXPECT_EQ(error_.type, "OverflowError");
}

TEST_F(ScalarsTest, SixtyFourBitIntegersUseTheRuntimeBounds)
{
    int64_t i64 = 0;
    EXPECT_TRUE(convert(fn_conv_py_long_to_clr_int64, "-2**63", &i64));
    EXPECT_EQ(i64, INT64_MIN);
    EXPECT_FALSE(convert(fn_conv_py_long_to_clr_int64, "2**63", &i64));
    EXPECT_EQ(error_.type, "OverflowError");

    uint64_t u64 = 0;
    EXPECT_TRUE(convert(fn_conv_py_ulong_to_clr_uint64, "2**64 - 1", &u64));
    EXPECT_EQ(u64, UINT64_MAX);
    EXPECT_FALSE(convert(fn_conv_py_ulong_to_clr_uint64, "2**64", &u64));
    EXPECT_EQ(error_.type, "OverflowError");
}

TEST_F(ScalarsTest, IntegersRefuseBoolAndOtherTypes)
{
    int32_t i32 = 0;
    EXPECT_FALSE(convert(fn_conv_py_long_to_clr_int32, "True", &i32));
    EXPECT_EQ(error_.type, "TypeError");
    EXPECT_EQ(error_.message, "can't build 'Int32' from 'bool'");
    uint64_t u64 = 0;
    EXPECT_FALSE(convert(fn_conv_py_ulong_to_clr_uint64, "'5'", &u64));
    EXPECT_EQ(error_.message, "can't build 'UInt64' from 'str'");
}

TEST_F(ScalarsTest, FloatsTruncateTowardZero)
{
    int16_t i16 = 0;
    EXPECT_TRUE(convert(fn_conv_py_long_to_clr_int16, "2.9", &i16));
    EXPECT_EQ(i16, 2);
    EXPECT_TRUE(convert(fn_conv_py_long_to_clr_int16, "-2.9", &i16));
    EXPECT_EQ(i16, -2);
    // No range check on the float path: the low bits are kept.
    uint8_t u8 = 0;
    EXPECT_TRUE(convert(fn_conv_py_ulong_to_clr_uint8, "258.5", &u8));
    EXPECT_EQ(u8, 2);
    uint64_t u64 = 0;
    EXPECT_TRUE(convert(fn_conv_py_ulong_to_clr_uint64, "1.5e19", &u64));
    EXPECT_EQ(u64, 15000000000000000000ULL);
    int32_t i32 = 0;
    EXPECT_TRUE(convert(fn_conv_py_long_to_clr_int32, "MyFloat(7.7)", &i32));
    EXPECT_EQ(i32, 7);
}

TEST_F(ScalarsTest, DecimalsConvertDigitByDigit)
{
    int8_t i8 = 0;
    EXPECT_TRUE(convert(fn_conv_py_long_to_clr_int8, "Decimal('127.9')", &i8));
    EXPECT_EQ(i8, 127);
    EXPECT_TRUE(convert(fn_conv_py_long_to_clr_int8, "Decimal('-128')", &i8));
    EXPECT_EQ(i8, -128);
    EXPECT_TRUE(convert(fn_conv_py_long_to_clr_int8, "Decimal('0.99')", &i8));
    EXPECT_EQ(i8, 0);
    EXPECT_FALSE(convert(fn_conv_py_long_to_clr_int8, "Decimal('128')", &i8));
    EXPECT_EQ(error_.type, "OverflowError");
    EXPECT_EQ(error_.message, "value too large for 'SByte'");
    EXPECT_FALSE(convert(fn_conv_py_long_to_clr_int8, "Decimal('-129')", &i8));
    EXPECT_EQ(error_.message, "value too small for 'SByte'");
    EXPECT_FALSE(convert(fn_conv_py_long_to_clr_int8, "Decimal('-13E1')", &i8));
    EXPECT_EQ(error_.message, "value too small for 'SByte'");
    EXPECT_FALSE(convert(fn_conv_py_long_to_clr_int8, "Decimal('-Infinity')", &i8));
    EXPECT_EQ(error_.message, "value too large for .Net 'SByte'");
    EXPECT_FALSE(convert(fn_conv_py_long_to_clr_int8, "Decimal('NaN')", &i8));
    EXPECT_EQ(error_.message, "value is not a number");

    uint8_t u8 = 0;
    EXPECT_TRUE(convert(fn_conv_py_ulong_to_clr_uint8, "Decimal('1E2')", &u8));
    EXPECT_EQ(u8, 100);
    EXPECT_TRUE(convert(fn_conv_py_ulong_to_clr_uint8, "Decimal('2.55E2')", &u8));
    EXPECT_EQ(u8, 255);
    EXPECT_FALSE(convert(fn_conv_py_ulong_to_clr_uint8, "Decimal('2.56E2')", &u8));
    EXPECT_EQ(error_.message, "value too large for 'Byte'");
    EXPECT_FALSE(convert(fn_conv_py_ulong_to_clr_uint8, "Decimal('3E2')", &u8));
    EXPECT_EQ(error_.message, "value too large for 'Byte'");
    EXPECT_FALSE(convert(fn_conv_py_ulong_to_clr_uint8, "Decimal('-0')", &u8));
    EXPECT_EQ(error_.message, "value too small for 'Byte'");

    uint64_t u64 = 0;
    EXPECT_TRUE(convert(fn_conv_py_ulong_to_clr_uint64, "Decimal('18446744073709551615.5')", &u64));
    EXPECT_EQ(u64, UINT64_MAX);
    int64_t i64 = 0;
    EXPECT_TRUE(convert(fn_conv_py_long_to_clr_int64, "Decimal('-9223372036854775808')", &i64));
    EXPECT_EQ(i64, INT64_MIN);
    EXPECT_TRUE(convert(fn_conv_py_long_to_clr_int64, "Decimal('0E+999999')", &i64));
    EXPECT_EQ(i64, 0);
}

TEST_F(ScalarsTest, DecimalTuplesAndTheirExponents)
{
    int32_t i32 = 0;
    EXPECT_TRUE(convert(fn_conv_py_long_to_clr_int32, "Decimal('-12.5').as_tuple()", &i32));
    EXPECT_EQ(i32, -12);
    EXPECT_FALSE(convert(fn_conv_py_decimal_tuple_to_clr_int<int32_t>,
                         "types.SimpleNamespace(exponent='x', sign=0, digits=(1,))", &i32));
    EXPECT_EQ(error_.type, "TypeError");
    EXPECT_EQ(error_.message, "can't build 'Int32' from exponent value 'x'");
    EXPECT_FALSE(convert(fn_conv_py_decimal_tuple_to_clr_int<int32_t>,
                         "types.SimpleNamespace(exponent=1.5, sign=0, digits=(1,))", &i32));
    EXPECT_EQ(error_.message, "unknown exponent type 'float'");
}

TEST_F(ScalarsTest, ReadVersLongPicksTheNarrowestReader)
{
    struct Case {
        const char* expression;
        int code;
        int64_t value;
    };
    const Case cases[] = {
        {"5", 1, 5},
        {"-2**31", 1, INT32_MIN},
        {"-2**31 - 1", 2, -2147483649LL},
        {"2**31", 2, 2147483648LL},
        {"2**63", 3, INT64_MIN},  // unsigned, bit for bit
        {"2**64 - 1", 3, -1},
    };
    for (const Case& c : cases) {
        PyObject* obj = eval(c.expression);
        int64_t value = 0;
        EXPECT_EQ(fn_read_py_vers_long(obj, &value), c.code) << c.expression;
        EXPECT_EQ(value, c.value) << c.expression;
        Py_DECREF(obj);
    }
    PyObject* huge = eval("2**64");
    int64_t value = 0;
    EXPECT_EQ(fn_read_py_vers_long(huge, &value), 0);
    Py_DECREF(huge);
    take_error(error_);
    EXPECT_EQ(error_.type, "TypeError");
    EXPECT_EQ(error_.message, "can't build integer value from 'int'");
}

TEST_F(ScalarsTest, FloatingPointConverters)
{
    double d = 0;
    EXPECT_TRUE(convert(fn_conv_py_float_to_clr_float<double>, "MyFloat(2.5)", &d));
    EXPECT_EQ(d, 2.5);
    EXPECT_TRUE(convert(fn_conv_py_float_to_clr_float<double>, "2**63 + 2**12", &d));
    EXPECT_EQ(d, 9223372036854779904.0) << "ints past Int64 are read as unsigned";
    EXPECT_FALSE(convert(fn_conv_py_float_to_clr_float<double>, "2**64", &d));
    EXPECT_EQ(error_.type, "OverflowError");
    EXPECT_FALSE(convert(fn_conv_py_float_to_clr_float<double>, "True", &d));
    EXPECT_EQ(error_.type, "TypeError");
    EXPECT_EQ(error_.message, "can't build 'Double' from 'bool'");

    float f = 0;
    EXPECT_TRUE(convert(fn_conv_py_float_to_clr_float<float>, "1e300", &f));
    EXPECT_TRUE(std::isinf(f));
    EXPECT_FALSE(convert(fn_conv_py_float_to_clr_float<float>, "'1.0'", &f));
    EXPECT_EQ(error_.message, "can't build 'Single' from 'str'");

    // The read callback takes anything with a float value.
    EXPECT_TRUE(convert(fn_read_py_double, "Decimal('0.25')", &d));
    EXPECT_EQ(d, 0.25);
    EXPECT_FALSE(convert(fn_read_py_double, "'x'", &d));
    EXPECT_EQ(error_.type, "TypeError");
}

TEST_F(ScalarsTest, CharIsOneUtf16Unit)
{
    uint16_t unit = 0;
    EXPECT_TRUE(convert(fn_conv_py_string_to_clr_char, "'a'", &unit));
    EXPECT_EQ(unit, 'a');
    EXPECT_TRUE(convert(fn_conv_py_string_to_clr_char, "'\\u20ac'", &unit));
    EXPECT_EQ(unit, 0x20AC);
    for (const char* bad : {"'ab'", "''", "'\\U0001F600'"}) {
        EXPECT_FALSE(convert(fn_conv_py_string_to_clr_char, bad, &unit)) << bad;
        EXPECT_EQ(error_.type, "TypeError");
        EXPECT_EQ(error_.message, "string must contain one UTF-16 code unit") << bad;
    }
    EXPECT_FALSE(convert(fn_conv_py_string_to_clr_char, "5", &unit));
    EXPECT_EQ(error_.message, "can't build Char from 'int'");

    PyObject* euro = fn_conv_clr_char_to_py_string(0x20AC);
    ASSERT_NE(euro, nullptr);
    EXPECT_EQ(to_utf8(euro), "\xE2\x82\xAC");
    Py_DECREF(euro);
    // A lone surrogate does not decode.
    EXPECT_EQ(fn_write_py_char(0xD800), nullptr);
    take_error(error_);
    EXPECT_EQ(error_.type, "UnicodeDecodeError");
}

TEST_F(ScalarsTest, IndicesAndOptionalIndices)
{
    Py_ssize_t index = -1;
    EXPECT_TRUE(convert(fn_conv_py_obj_to_ssize_t, "MyInt(42)", &index));
    EXPECT_EQ(index, 42);
    EXPECT_FALSE(convert(fn_conv_py_obj_to_ssize_t, "'x'", &index));
    EXPECT_EQ(error_.type, "TypeError");
    EXPECT_EQ(error_.message, "argument should be integer or None, not 'str'");
    EXPECT_FALSE(convert(fn_conv_py_obj_to_ssize_t, "2**70", &index));
    EXPECT_EQ(error_.type, "OverflowError");

    index = 99;
    EXPECT_TRUE(convert(fn_conv_py_optional_to_ssize_t, "(None,)", &index));
    EXPECT_EQ(index, 99) << "None leaves the output untouched";
    EXPECT_TRUE(convert(fn_conv_py_optional_to_ssize_t, "(-3, 'ignored')", &index));
    EXPECT_EQ(index, -3);
}

TEST_F(ScalarsTest, ArgumentCountMessages)
{
    EXPECT_EQ(fn_check_args_count_out_of_range(2, "f", 1, 3), 0);

    struct Case {
        Py_ssize_t given;
        const char* name;
        Py_ssize_t min, max;
        const char* message;
    };
    const Case cases[] = {
        {0, "f", 1, 1, "f() takes exactly 1 argument (0 given)"},
        {4, nullptr, 2, 3, "function takes at most 3 arguments (4 given)"},
        {1, "save", 2, 4, "save() takes at least 2 arguments (1 given)"},
        {2, "", 0, 1, "function takes at most 1 argument (2 given)"},
        {3, "g", 2, 2, "g() takes exactly 2 arguments (3 given)"},
    };
    for (const Case& c : cases) {
        EXPECT_NE(fn_check_args_count_out_of_range(c.given, c.name, c.min, c.max), 0);
        PyError error;
        take_error(error);
        EXPECT_EQ(error.type, "TypeError");
        EXPECT_EQ(error.message, c.message);
    }
}

}  // namespace
