// Python timedelta <-> managed TimeSpan ticks.
#include "marshal/timespan.h"

#include <datetime.h>

namespace {

constexpr int64_t kMaxTotalSeconds = 922337203685;    // int64 max ticks, whole seconds
constexpr int32_t kMaxBoundaryMicroseconds = 477580;  // and the microseconds left over at that second
constexpr int64_t kMicrosecondsPerDay = 86400000000;

}  // namespace

bool TimeSpanArgBuilder::to_ticks(int64_t* ticks)
{
    if (days < 0)
        normalize();
    int64_t total = int64_t(days) * 86400 + seconds;
    if (is_overflow(total, microseconds))
        return false;
    *ticks = (total * 1000000 + microseconds) * kTicksPerMicrosecond;
    return true;
}

void TimeSpanArgBuilder::from_ticks(int64_t ticks)
{
    days = int32_t(ticks / kTicksPerDay);
    seconds = int32_t((ticks / kTicksPerSecond) % 86400);
    microseconds = int32_t((ticks / kTicksPerMicrosecond) % 1000000);
}

void TimeSpanArgBuilder::normalize()
{
    days += 1;
    int64_t v = int64_t(seconds) * 1000000 + microseconds - kMicrosecondsPerDay;
    seconds = int32_t(v / 1000000);
    microseconds = int32_t(v % 1000000);
}

bool TimeSpanArgBuilder::is_overflow(int64_t total_seconds, int32_t us)
{
    if (total_seconds < -kMaxTotalSeconds || total_seconds > kMaxTotalSeconds)
        return true;
    if (total_seconds > -kMaxTotalSeconds && total_seconds < kMaxTotalSeconds)
        return false;
    return us < -kMaxBoundaryMicroseconds || us > kMaxBoundaryMicroseconds;
}

int fn_conv_py_datetimedelta_to_clr_timespan_value(PyObject* obj, int64_t* out)
{
    TimeSpanArgBuilder builder(PyDateTime_DELTA_GET_DAYS(obj), PyDateTime_DELTA_GET_SECONDS(obj),
                               PyDateTime_DELTA_GET_MICROSECONDS(obj));
    if (!builder.to_ticks(out)) {
        PyErr_SetString(PyExc_OverflowError, "value too large or too small for .Net TimeSpan");
        return 0;
    }
    return 1;
}

int fn_conv_py_datetimedelta_to_clr_timespan(PyObject* obj, int64_t* out)
{
    PyDateTime_IMPORT;
    if (!PyDateTimeAPI)
        return 0;
    if (!PyDelta_Check(obj)) {
        PyErr_Format(PyExc_TypeError, "can't build TimeSpan from '%s'", Py_TYPE(obj)->tp_name);
        return 0;
    }
    return fn_conv_py_datetimedelta_to_clr_timespan_value(obj, out);
}

int fn_read_py_datetimedelta(PyObject* obj, int64_t* out)
{
    return fn_conv_py_datetimedelta_to_clr_timespan_value(obj, out);
}

PyObject* fn_conv_clr_timespan_to_py_datetimedelta(int64_t ticks)
{
    PyDateTime_IMPORT;
    if (!PyDateTimeAPI)
        return nullptr;
    TimeSpanArgBuilder builder(ticks);
    // Normalisation on: Python carries the negative parts into its own form.
    return PyDateTimeAPI->Delta_FromDelta(builder.days, builder.seconds, builder.microseconds, 1,
                                          PyDateTimeAPI->DeltaType);
}

PyObject* fn_write_py_datetimedelta(int64_t ticks)
{
    return fn_conv_clr_timespan_to_py_datetimedelta(ticks);
}
