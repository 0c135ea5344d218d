// Python timedelta <-> managed TimeSpan (signed 64-bit ticks of 100 ns).
// Converters return 1 on success, 0 with a Python exception set.
#pragma once

#include <Python.h>
#include <cstdint>

// Tick units shared with the date and time converters.
constexpr int64_t kTicksPerMicrosecond = 10;
constexpr int64_t kTicksPerSecond = 10000000;
constexpr int64_t kTicksPerMinute = 600000000;
constexpr int64_t kTicksPerHour = 36000000000;
constexpr int64_t kTicksPerDay = 864000000000;

// The three fields of a Python timedelta and their tick arithmetic.
class TimeSpanArgBuilder {
public:
    TimeSpanArgBuilder() : days(0), seconds(0), microseconds(0) {}
    TimeSpanArgBuilder(int32_t d, int32_t s, int32_t us) : days(d), seconds(s), microseconds(us) {}
    explicit TimeSpanArgBuilder(int64_t ticks) { from_ticks(ticks); }

    // false when the value lies outside the TimeSpan range.
    bool to_ticks(int64_t* ticks);
    // Splits ticks into days, seconds and microseconds, each truncated toward
    // zero (so all three carry the sign of the value); sub-microsecond ticks are dropped.
    void from_ticks(int64_t ticks);
    // For negative days: moves one day into the seconds and microseconds so
    // that every part carries the same sign.
    void normalize();
    static bool is_overflow(int64_t total_seconds, int32_t microseconds);

    int32_t days;
    int32_t seconds;
    int32_t microseconds;
};

// timedelta or subclass, else TypeError "can't build TimeSpan from '%s'".
int fn_conv_py_datetimedelta_to_clr_timespan(PyObject* obj, int64_t* out);
// The caller has checked that obj is a timedelta.
int fn_conv_py_datetimedelta_to_clr_timespan_value(PyObject* obj, int64_t* out);
// Read table slot: a value known to be a timedelta (variant tag 12).
int fn_read_py_datetimedelta(PyObject* obj, int64_t* out);

// New timedelta (normalised by Python); sub-microsecond ticks are lost.
PyObject* fn_conv_clr_timespan_to_py_datetimedelta(int64_t ticks);
// Write table slot.
PyObject* fn_write_py_datetimedelta(int64_t ticks);
