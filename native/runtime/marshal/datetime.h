// Python date, datetime and time <-> managed DateTime and DateTimeOffset.
// Managed time values are ticks of 100 ns since 0001-01-01 00:00:00 of the
// proleptic Gregorian calendar. Converters return 1 on success, 0 with a
// Python exception set.
#pragma once

#include <Python.h>
#include <cstdint>

// Managed DateTime as exchanged: the low 62 bits of ticks_and_kind are the
// ticks, the top two the kind (0 unspecified, 1 UTC, 2 local). offset (UTC
// offset in ticks) is only read on the way to Python when the kind is
// neither 0 nor 1; converters producing a DateTime write the first word only.
struct ClrDateTime {
    uint64_t ticks_and_kind;
    int64_t offset;
};

// Managed DateTimeOffset as exchanged: the clock time as seen at the offset
// (not shifted to UTC) with kind bits as above, and the offset in ticks.
struct ClrDateTimeOffset {
    uint64_t ticks_and_kind;
    int64_t offset;
};

static_assert(sizeof(ClrDateTime) == 16 && sizeof(ClrDateTimeOffset) == 16, "exchange layouts are 16 bytes");

constexpr uint64_t kDateTimeTicksMask = (uint64_t(1) << 62) - 1;
constexpr uint64_t kDateTimeMaxTicks = 3155378975999999999ULL;  // 9999-12-31 23:59:59.9999999
constexpr uint32_t kDateTimeKindUnspecified = 0;
constexpr uint32_t kDateTimeKindUtc = 1;
constexpr uint32_t kDateTimeKindLocal = 2;

// Calendar fields of one date and time of day, and their tick arithmetic.
class DateTimeArgBuilder {
public:
    DateTimeArgBuilder();
    explicit DateTimeArgBuilder(uint64_t ticks_and_kind);

    bool is_leap_year() const;
    // Ticks without kind bits; false outside 0001-01-01..9999-12-31 or when
    // the total reaches the end of year 9999. A second of 60 (a leap second)
    // counts as second 59. Hour, minute and second are not range-checked.
    bool to_ticks_non_kind(uint64_t* ticks) const;
    // As above, with the kind in the top two bits.
    bool to_ticks(uint64_t* ticks) const;
    // The local clock time minus a UTC offset; false when the result leaves
    // the DateTime range.
    bool to_utc_ticks(int64_t offset, uint64_t* ticks) const;
    // The time of day (date fields ignored) shifted by the offset and wrapped
    // into one day; cannot fail.
    void to_time_ticks(int64_t offset, uint64_t* ticks) const;
    // Splits ticks with kind bits into the fields; sub-microsecond ticks are dropped.
    void from_ticks(uint64_t ticks_and_kind);

    // Days before each month and, at index 12, the length of the year.
    static const int32_t m_days_to_month365[13];
    static const int32_t m_days_to_month366[13];

    uint32_t kind;
    int32_t year;
    int32_t month;
    int32_t day;
    int32_t hour;
    int32_t minute;
    int32_t second;
    int32_t microsecond;

private:
    uint64_t add_shift(uint64_t ticks) const { return ticks | (uint64_t(kind) << 62); }
};

// The UTC offset of a date, datetime or time through its tzinfo and
// utcoffset(). failed: an exception is set (a raising utcoffset(), TypeError
// "instance utcoffset() return wrong value" for a result that is not a
// timedelta, OverflowError "value too large or too small utc offset").
struct PyUtcOffset {
    bool failed;
    bool has_offset;
    int64_t ticks;
};
PyUtcOffset get_utc_offset(PyObject* obj);

// To DateTime: a datetime (or subclass) first, then a date, then a time;
// anything else raises TypeError "can't build DateTime from '%s'".
int fn_conv_py_datetime_to_clr_datetime(PyObject* obj, ClrDateTime* out);

// To DateTimeOffset, with the same dispatch and refusal.
int fn_conv_py_datetime_to_clr_datetimeoffset(PyObject* obj, ClrDateTimeOffset* out);

// Managed results to new datetime objects: DateTime by kind (naive, UTC, or
// at the offset in the second word); DateTimeOffset always aware at its offset.
PyObject* fn_conv_clr_datetime_to_py_datetime(const ClrDateTime* value);
PyObject* fn_conv_clr_datetimeoffset_to_py_datetime(const ClrDateTimeOffset* value);

// Read table slots for variant tags 10, 9 and 11. out is 16 bytes; the
// result tells which layout was written: 1 ClrDateTime, 2 ClrDateTimeOffset
// (aware values), 0 failure.
int fn_read_py_vers_date(PyObject* obj, void* out);
int fn_read_py_vers_datetime(PyObject* obj, void* out);
int fn_read_py_vers_time(PyObject* obj, void* out);

// Write table slots.
PyObject* fn_write_py_date_time(const ClrDateTime* value);
PyObject* fn_write_py_date_time_offset(const ClrDateTimeOffset* value);
