// Date, time and TimeSpan marshalling: the calendar and tick arithmetic, the
// Python -> managed converters with their range and offset rules, and the
// managed -> Python results.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>

#include "marshal/datetime.h"
#include "marshal/timespan.h"
#include "runtime_python.h"

using runtimetest::eval;
using runtimetest::exec;
using runtimetest::PyError;
using runtimetest::take_error;
using runtimetest::to_utf8;

namespace {

constexpr uint64_t kKindUtc = uint64_t(1) << 62;
constexpr uint64_t kKindLocal = uint64_t(2) << 62;

class DateTimeMarshal : public runtimetest::PythonTest {
protected:
    static void SetUpTestSuite()
    {
        runtimetest::PythonTest::SetUpTestSuite();
        exec("from datetime import date, time, timedelta, timezone\n"
             "from datetime import datetime as dt\n"
             "plus1 = timezone(timedelta(hours=1))\n"
             "minus2 = timezone(timedelta(hours=-2))\n"
             "class BadOffset(dt):\n"
             "    def utcoffset(self): return 5\n"
             "class HugeOffset(dt):\n"
             "    def utcoffset(self): return timedelta(days=10**8)\n"
             "class RaisingZone(datetime.tzinfo):\n"
             "    def utcoffset(self, d): raise KeyError('zone')\n"
             "class NoneZone(datetime.tzinfo):\n"
             "    def utcoffset(self, d): return None\n"
             "def ticks_of(d):\n"
             "    return (d - dt(1, 1, 1)) // timedelta(microseconds=1) * 10\n");
    }

    // Expects failure with `type` and exactly `message`.
    static void expect_error(int result, const char* type, const std::string& message)
    {
        EXPECT_EQ(result, 0);
        PyError error;
        take_error(error);
        EXPECT_EQ(error.type, type);
        EXPECT_EQ(error.message, message);
    }

    static int64_t py_ticks(const std::string& expression)
    {
        PyObject* value = eval("ticks_of(" + expression + ")");
        int64_t ticks = value ? PyLong_AsLongLong(value) : -1;
        Py_XDECREF(value);
        return ticks;
    }

    static std::string repr(PyObject* obj)
    {
        PyObject* text = obj ? PyObject_Repr(obj) : nullptr;
        std::string result = text ? PyUnicode_AsUTF8(text) : "<null>";
        Py_XDECREF(text);
        return result;
    }

    template <typename Out, typename Fn>
    static int convert(Fn fn, const std::string& expression, Out* out)
    {
        PyObject* obj = eval(expression);
        if (!obj)
            return -1;
        int result = fn(obj, out);
        Py_DECREF(obj);
        return result;
    }
};

// --- calendar helpers ---

TEST(DateTimeArgBuilderTest, LeapYearsAndMonthLengths)
{
    DateTimeArgBuilder b;
    uint64_t ticks = 0;
    for (int year : {1900, 2019, 2100})
        EXPECT_FALSE((b.year = year, b.month = 2, b.day = 29, b.to_ticks_non_kind(&ticks))) << year;
    for (int year : {2000, 2020, 4})
        EXPECT_TRUE((b.year = year, b.month = 2, b.day = 29, b.to_ticks_non_kind(&ticks))) << year;
    b.year = 2021;
    b.month = 4;
    b.day = 31;
    EXPECT_FALSE(b.to_ticks_non_kind(&ticks));
    b.day = 0;
    EXPECT_FALSE(b.to_ticks_non_kind(&ticks));
    b.day = 1;
    for (int month : {0, 13}) {
        b.month = month;
        EXPECT_FALSE(b.to_ticks_non_kind(&ticks)) << month;
    }
    b.month = 1;
    for (int year : {0, 10000}) {
        b.year = year;
        EXPECT_FALSE(b.to_ticks_non_kind(&ticks)) << year;
    }
}

TEST(DateTimeArgBuilderTest, CalendarLimitsAndTheLastTick)
{
    DateTimeArgBuilder b;
    uint64_t ticks = 99;
    ASSERT_TRUE(b.to_ticks(&ticks));
    EXPECT_EQ(ticks, 0u);

    b.year = 9999;
    b.month = 12;
    b.day = 31;
    b.hour = 23;
    b.minute = 59;
    b.second = 59;
    b.microsecond = 999999;
    ASSERT_TRUE(b.to_ticks_non_kind(&ticks));
    EXPECT_EQ(ticks, 3155378975999999990u);
    // Hours are not range-checked, but the total must stay inside year 9999.
    b.hour = 24;
    EXPECT_FALSE(b.to_ticks_non_kind(&ticks));
}

TEST(DateTimeArgBuilderTest, LeapSecondFoldsIntoSecond59)
{
    DateTimeArgBuilder b;
    b.year = 2016;
    b.month = 12;
    b.day = 31;
    b.hour = 23;
    b.minute = 59;
    b.second = 59;
    b.microsecond = 250000;
    uint64_t at59 = 0, at60 = 0;
    ASSERT_TRUE(b.to_ticks_non_kind(&at59));
    b.second = 60;
    ASSERT_TRUE(b.to_ticks_non_kind(&at60));
    EXPECT_EQ(at60, at59);
}

TEST(DateTimeArgBuilderTest, TimeOfDayWrapsAroundMidnight)
{
    DateTimeArgBuilder b;
    b.kind = 1;
    b.minute = 30;
    uint64_t ticks = 0;
    b.to_time_ticks(kTicksPerHour, &ticks);
    EXPECT_EQ(ticks, kKindUtc | uint64_t(23 * kTicksPerHour + 30 * kTicksPerMinute));
    b.to_time_ticks(3 * kTicksPerDay + kTicksPerHour, &ticks);
    EXPECT_EQ(ticks, kKindUtc | uint64_t(23 * kTicksPerHour + 30 * kTicksPerMinute));
    b.hour = 23;
    b.to_time_ticks(-2 * kTicksPerHour, &ticks);
    EXPECT_EQ(ticks & kDateTimeTicksMask, uint64_t(1 * kTicksPerHour + 30 * kTicksPerMinute));
    // Whole-day offsets leave the time of day alone.
    b.to_time_ticks(-3 * kTicksPerDay, &ticks);
    EXPECT_EQ(ticks & kDateTimeTicksMask, uint64_t(23 * kTicksPerHour + 30 * kTicksPerMinute));
}

TEST_F(DateTimeMarshal, FromTicksAgreesWithPythonAcrossTheWholeRange)
{
    // Every 997th day plus the days where cycle arithmetic turns: ends of
    // leap years, of centuries and of 400-year cycles.
    ASSERT_TRUE(
        exec("probe_days = list(range(0, 3652059, 997)) + [\n"
             "    (date(y, 12, 31) - date(1, 1, 1)).days + k\n"
             "    for y in (4, 100, 400, 1600, 1900, 2000, 2004, 2100, 9996, 9998) for k in (0, 1)] + [3652058]\n"));
    PyObject* days = PyDict_GetItemString(runtimetest::globals(), "probe_days");
    ASSERT_NE(days, nullptr);
    for (Py_ssize_t i = 0; i < PyList_GET_SIZE(days); ++i) {
        int64_t day = PyLong_AsLongLong(PyList_GET_ITEM(days, i));
        // Odd time of day, with 7 sub-microsecond ticks that must vanish.
        uint64_t t =
            uint64_t(day * kTicksPerDay + 13 * kTicksPerHour + 7 * kTicksPerMinute + 5 * kTicksPerSecond + 1234567);
        DateTimeArgBuilder b(t | kKindLocal);
        PyObject* expected = eval("(dt(1, 1, 1) + timedelta(microseconds=" + std::to_string(t / 10) + ")).isoformat()");
        ASSERT_NE(expected, nullptr);
        char fields[64];
        std::snprintf(fields, sizeof(fields), "%04d-%02d-%02dT%02d:%02d:%02d.%06d", b.year, b.month, b.day, b.hour,
                      b.minute, b.second, b.microsecond);
        EXPECT_EQ(fields, to_utf8(expected)) << day;
        Py_DECREF(expected);
        EXPECT_EQ(b.kind, 2u);
        EXPECT_EQ(b.hour, 13);
        EXPECT_EQ(b.minute, 7);
        EXPECT_EQ(b.second, 5);
        EXPECT_EQ(b.microsecond, 123456);
        uint64_t back = 0;
        ASSERT_TRUE(b.to_ticks(&back));
        EXPECT_EQ(back, (t - 7) | kKindLocal) << day;
    }
}

// --- Python -> DateTime ---

TEST_F(DateTimeMarshal, DatesAndNaiveDateTimesKeepTheirClockTime)
{
    ClrDateTime out{};
    ASSERT_EQ(convert(fn_conv_py_datetime_to_clr_datetime, "date(1, 1, 1)", &out), 1);
    EXPECT_EQ(out.ticks_and_kind, 0u);
    ASSERT_EQ(convert(fn_conv_py_datetime_to_clr_datetime, "dt(9999, 12, 31, 23, 59, 59, 999999)", &out), 1);
    EXPECT_EQ(out.ticks_and_kind, 3155378975999999990u);
    ASSERT_EQ(convert(fn_conv_py_datetime_to_clr_datetime, "MyDate(2024, 2, 29)", &out), 1);
    EXPECT_EQ(out.ticks_and_kind, uint64_t(py_ticks("dt(2024, 2, 29)")));
    // A datetime takes the datetime path, not the date path.
    ASSERT_EQ(convert(fn_conv_py_datetime_to_clr_datetime, "dt(2024, 2, 29, 12)", &out), 1);
    EXPECT_EQ(out.ticks_and_kind, uint64_t(py_ticks("dt(2024, 2, 29, 12)")));
}

TEST_F(DateTimeMarshal, AwareDateTimesBecomeUtc)
{
    ClrDateTime out{};
    ASSERT_EQ(convert(fn_conv_py_datetime_to_clr_datetime, "dt(2020, 3, 1, 0, 30, tzinfo=plus1)", &out), 1);
    EXPECT_EQ(out.ticks_and_kind, kKindUtc | uint64_t(py_ticks("dt(2020, 2, 29, 23, 30)")));
    ASSERT_EQ(convert(fn_conv_py_datetime_to_clr_datetime, "dt(2020, 1, 1, tzinfo=NoneZone())", &out), 1);
    EXPECT_EQ(out.ticks_and_kind, uint64_t(py_ticks("dt(2020, 1, 1)")));

    const std::string range = "value too large or too small for .Net DateTime";
    expect_error(convert(fn_conv_py_datetime_to_clr_datetime, "dt(1, 1, 1, 0, 30, tzinfo=plus1)", &out),
                 "OverflowError", range);
    expect_error(convert(fn_conv_py_datetime_to_clr_datetime, "dt(9999, 12, 31, 23, tzinfo=minus2)", &out),
                 "OverflowError", range);
}

TEST_F(DateTimeMarshal, MisbehavingUtcOffsets)
{
    ClrDateTime out{};
    expect_error(convert(fn_conv_py_datetime_to_clr_datetime, "BadOffset(2020, 1, 1, tzinfo=plus1)", &out), "TypeError",
                 "instance utcoffset() return wrong value");
    expect_error(convert(fn_conv_py_datetime_to_clr_datetime, "HugeOffset(2020, 1, 1, tzinfo=plus1)", &out),
                 "OverflowError", "value too large or too small utc offset");
    expect_error(convert(fn_conv_py_datetime_to_clr_datetime, "dt(2020, 1, 1, tzinfo=RaisingZone())", &out), "KeyError",
                 "'zone'");
}

TEST_F(DateTimeMarshal, TimesLandOnTheFirstDayShiftedOverMidnight)
{
    ClrDateTime out{};
    ASSERT_EQ(convert(fn_conv_py_datetime_to_clr_datetime, "time(0, 30, tzinfo=plus1)", &out), 1);
    EXPECT_EQ(out.ticks_and_kind, kKindUtc | uint64_t(23 * kTicksPerHour + 30 * kTicksPerMinute));
    ASSERT_EQ(convert(fn_conv_py_datetime_to_clr_datetime, "time(23, 0, 0, 5, tzinfo=minus2)", &out), 1);
    EXPECT_EQ(out.ticks_and_kind, kKindUtc | uint64_t(1 * kTicksPerHour + 50));
    ASSERT_EQ(convert(fn_conv_py_datetime_to_clr_datetime, "time(12, 1)", &out), 1);
    EXPECT_EQ(out.ticks_and_kind, uint64_t(12 * kTicksPerHour + kTicksPerMinute));
}

TEST_F(DateTimeMarshal, WrongTypesAreRefused)
{
    ClrDateTime out{};
    ClrDateTimeOffset out_offset{};
    expect_error(convert(fn_conv_py_datetime_to_clr_datetime, "'2020-01-01'", &out), "TypeError",
                 "can't build DateTime from 'str'");
    expect_error(convert(fn_conv_py_datetime_to_clr_datetimeoffset, "timedelta(1)", &out_offset), "TypeError",
                 "can't build DateTime from 'datetime.timedelta'");
}

// --- Python -> DateTimeOffset ---

TEST_F(DateTimeMarshal, DateTimeOffsetKeepsClockTimeAndOffset)
{
    ClrDateTimeOffset out{1, 1};
    ASSERT_EQ(convert(fn_conv_py_datetime_to_clr_datetimeoffset, "date(2000, 1, 2)", &out), 1);
    EXPECT_EQ(out.ticks_and_kind, kKindLocal | uint64_t(py_ticks("dt(2000, 1, 2)")));
    EXPECT_EQ(out.offset, 0);

    out = {1, 1};
    ASSERT_EQ(convert(fn_conv_py_datetime_to_clr_datetimeoffset, "dt(2000, 1, 2, 3, 4)", &out), 1);
    EXPECT_EQ(out.ticks_and_kind, kKindLocal | uint64_t(py_ticks("dt(2000, 1, 2, 3, 4)")));
    EXPECT_EQ(out.offset, 0);

    ASSERT_EQ(convert(fn_conv_py_datetime_to_clr_datetimeoffset, "dt(2000, 1, 2, 3, 4, tzinfo=minus2)", &out), 1);
    EXPECT_EQ(out.ticks_and_kind, uint64_t(py_ticks("dt(2000, 1, 2, 3, 4)")));
    EXPECT_EQ(out.offset, -2 * kTicksPerHour);

    // The aware value's UTC time must be representable too; the message is DateTime's.
    expect_error(convert(fn_conv_py_datetime_to_clr_datetimeoffset, "dt(1, 1, 1, 0, 30, tzinfo=plus1)", &out),
                 "OverflowError", "value too large or too small for .Net DateTime");
}

TEST_F(DateTimeMarshal, TimeToDateTimeOffsetNeverLeavesTheRange)
{
    ClrDateTimeOffset out{};
    ASSERT_EQ(convert(fn_conv_py_datetime_to_clr_datetimeoffset, "time(0, 30, tzinfo=plus1)", &out), 1);
    EXPECT_EQ(out.ticks_and_kind, uint64_t(30 * kTicksPerMinute));
    EXPECT_EQ(out.offset, kTicksPerHour);
    ASSERT_EQ(convert(fn_conv_py_datetime_to_clr_datetimeoffset, "time(0, 30)", &out), 1);
    EXPECT_EQ(out.ticks_and_kind, kKindLocal | uint64_t(30 * kTicksPerMinute));
    EXPECT_EQ(out.offset, 0);
}

// --- read table ---

TEST_F(DateTimeMarshal, VariantReadersTellWhichLayoutTheyWrote)
{
    ClrDateTimeOffset out{};
    EXPECT_EQ(convert(fn_read_py_vers_date, "date(2001, 1, 1)", static_cast<void*>(&out)), 1);
    EXPECT_EQ(out.ticks_and_kind, uint64_t(py_ticks("dt(2001, 1, 1)")));
    EXPECT_EQ(convert(fn_read_py_vers_datetime, "dt(2001, 1, 1, 5)", static_cast<void*>(&out)), 1);
    EXPECT_EQ(out.ticks_and_kind, uint64_t(py_ticks("dt(2001, 1, 1, 5)")));

    EXPECT_EQ(convert(fn_read_py_vers_datetime, "dt(2001, 1, 1, 5, tzinfo=plus1)", static_cast<void*>(&out)), 2);
    EXPECT_EQ(out.ticks_and_kind, uint64_t(py_ticks("dt(2001, 1, 1, 5)")));
    EXPECT_EQ(out.offset, kTicksPerHour);

    EXPECT_EQ(convert(fn_read_py_vers_time, "time(5)", static_cast<void*>(&out)), 1);
    EXPECT_EQ(out.ticks_and_kind, uint64_t(5 * kTicksPerHour));
    EXPECT_EQ(convert(fn_read_py_vers_time, "time(0, 30, tzinfo=plus1)", static_cast<void*>(&out)), 2);
    EXPECT_EQ(out.ticks_and_kind, uint64_t(30 * kTicksPerMinute));
    EXPECT_EQ(out.offset, kTicksPerHour);

    expect_error(convert(fn_read_py_vers_datetime, "dt(1, 1, 1, 0, 30, tzinfo=plus1)", static_cast<void*>(&out)),
                 "OverflowError", "value too large or too small for .Net DateTimeOffSet");
}

// --- managed -> Python ---

TEST_F(DateTimeMarshal, ManagedDateTimesByKind)
{
    uint64_t ticks = uint64_t(py_ticks("dt(2021, 7, 8, 9, 10, 11, 121314)"));
    ClrDateTime naive{ticks + 5, 0};  // 5 ticks past the microsecond are lost
    PyObject* result = fn_write_py_date_time(&naive);
    EXPECT_EQ(repr(result), "datetime.datetime(2021, 7, 8, 9, 10, 11, 121314)");
    Py_XDECREF(result);

    ClrDateTime utc{ticks | kKindUtc, 12345};  // the offset word is ignored for UTC
    result = fn_conv_clr_datetime_to_py_datetime(&utc);
    EXPECT_EQ(repr(result), "datetime.datetime(2021, 7, 8, 9, 10, 11, 121314, tzinfo=datetime.timezone.utc)");
    Py_XDECREF(result);

    ClrDateTime local{ticks | kKindLocal, 2 * kTicksPerHour};
    result = fn_conv_clr_datetime_to_py_datetime(&local);
    EXPECT_EQ(repr(result), "datetime.datetime(2021, 7, 8, 9, 10, 11, 121314, "
                            "tzinfo=datetime.timezone(datetime.timedelta(seconds=7200)))");
    Py_XDECREF(result);

    ClrDateTime first{0, 0};
    result = fn_conv_clr_datetime_to_py_datetime(&first);
    EXPECT_EQ(repr(result), "datetime.datetime(1, 1, 1, 0, 0)");
    Py_XDECREF(result);
}

TEST_F(DateTimeMarshal, ManagedDateTimeOffsetIsAlwaysAware)
{
    uint64_t ticks = uint64_t(py_ticks("dt(2021, 7, 8, 9, 10)"));
    ClrDateTimeOffset value{ticks | kKindUtc, -(5 * kTicksPerHour + 30 * kTicksPerMinute)};
    PyObject* result = fn_write_py_date_time_offset(&value);
    EXPECT_EQ(repr(result), "datetime.datetime(2021, 7, 8, 9, 10, "
                            "tzinfo=datetime.timezone(datetime.timedelta(days=-1, seconds=66600)))");
    Py_XDECREF(result);

    // An offset Python refuses (a day or more) fails with Python's error.
    ClrDateTimeOffset bad{ticks, kTicksPerDay};
    EXPECT_EQ(fn_conv_clr_datetimeoffset_to_py_datetime(&bad), nullptr);
    PyError error;
    take_error(error);
    EXPECT_EQ(error.type, "ValueError");
}

// --- TimeSpan ---

TEST(TimeSpanArgBuilderTest, NegativeValuesAndBounds)
{
    int64_t ticks = 0;
    TimeSpanArgBuilder day(-1, 0, 0);
    ASSERT_TRUE(day.to_ticks(&ticks));
    EXPECT_EQ(ticks, -864000000000);
    TimeSpanArgBuilder micro(-1, 86399, 999999);  // timedelta(microseconds=-1)
    ASSERT_TRUE(micro.to_ticks(&ticks));
    EXPECT_EQ(ticks, -10);

    // 922,337,203,685 s and 477,580 us as Python stores them.
    TimeSpanArgBuilder largest(10675199, 10085, 477580);
    ASSERT_TRUE(largest.to_ticks(&ticks));
    EXPECT_EQ(ticks, 9223372036854775800);
    TimeSpanArgBuilder one_more(10675199, 10085, 477581);
    EXPECT_FALSE(one_more.to_ticks(&ticks));
    TimeSpanArgBuilder next_second(10675199, 10086, 0);
    EXPECT_FALSE(next_second.to_ticks(&ticks));

    TimeSpanArgBuilder smallest(-10675200, 76314, 522420);  // -922,337,203,685 s - 477,580 us
    ASSERT_TRUE(smallest.to_ticks(&ticks));
    EXPECT_EQ(ticks, -9223372036854775800);
    TimeSpanArgBuilder one_less(-10675200, 76314, 522419);
    EXPECT_FALSE(one_less.to_ticks(&ticks));

    TimeSpanArgBuilder max(999999999, 86399, 999999);
    EXPECT_FALSE(max.to_ticks(&ticks));
    TimeSpanArgBuilder min(-999999999, 0, 0);
    EXPECT_FALSE(min.to_ticks(&ticks));
}

TEST(TimeSpanArgBuilderTest, FromTicksTruncatesEveryPartTowardZero)
{
    TimeSpanArgBuilder b(int64_t(-(kTicksPerDay + kTicksPerSecond + 15)));
    EXPECT_EQ(b.days, -1);
    EXPECT_EQ(b.seconds, -1);
    EXPECT_EQ(b.microseconds, -1);
    b.from_ticks(std::numeric_limits<int64_t>::max());
    EXPECT_EQ(b.days, 10675199);
    EXPECT_EQ(b.seconds, 10085);
    EXPECT_EQ(b.microseconds, 477580);
}

TEST_F(DateTimeMarshal, TimeDeltaConverters)
{
    int64_t ticks = 0;
    ASSERT_EQ(convert(fn_conv_py_datetimedelta_to_clr_timespan, "timedelta(seconds=922337203685, microseconds=477580)",
                      &ticks),
              1);
    EXPECT_EQ(ticks, 9223372036854775800);
    ASSERT_EQ(convert(fn_read_py_datetimedelta, "timedelta(days=1, hours=1)", &ticks), 1);
    EXPECT_EQ(ticks, 25 * kTicksPerHour);

    const std::string range = "value too large or too small for .Net TimeSpan";
    expect_error(convert(fn_conv_py_datetimedelta_to_clr_timespan,
                         "timedelta(seconds=922337203685, microseconds=477581)", &ticks),
                 "OverflowError", range);
    expect_error(convert(fn_conv_py_datetimedelta_to_clr_timespan, "timedelta.max", &ticks), "OverflowError", range);
    expect_error(convert(fn_conv_py_datetimedelta_to_clr_timespan, "timedelta.min", &ticks), "OverflowError", range);
    expect_error(convert(fn_conv_py_datetimedelta_to_clr_timespan, "1.5", &ticks), "TypeError",
                 "can't build TimeSpan from 'float'");
}

TEST_F(DateTimeMarshal, ManagedTimeSpansLoseSubMicrosecondTicks)
{
    struct Case {
        int64_t ticks;
        const char* expected;
    } cases[] = {
        {15, "timedelta(microseconds=1)"},
        {-15, "timedelta(microseconds=-1)"},
        {-kTicksPerDay - 10, "timedelta(days=-1, microseconds=-1)"},
        {std::numeric_limits<int64_t>::max(), "timedelta(seconds=922337203685, microseconds=477580)"},
        {std::numeric_limits<int64_t>::min(), "timedelta(seconds=-922337203685, microseconds=-477580)"},
    };
    for (const Case& c : cases) {
        PyObject* result = fn_write_py_datetimedelta(c.ticks);
        PyObject* expected = eval(c.expected);
        ASSERT_TRUE(result && expected);
        EXPECT_EQ(PyObject_RichCompareBool(result, expected, Py_EQ), 1) << c.ticks << " gave " << repr(result);
        Py_DECREF(result);
        Py_DECREF(expected);
    }
}

}  // namespace
