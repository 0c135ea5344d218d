// Python date, datetime and time <-> managed DateTime and DateTimeOffset.
#include "marshal/datetime.h"

#include <datetime.h>

#include "marshal/timespan.h"
#include "module/identifiers.h"
#include "module/import_errors.h"

const int32_t DateTimeArgBuilder::m_days_to_month365[13] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334, 365};
const int32_t DateTimeArgBuilder::m_days_to_month366[13] = {0, 31, 60, 91, 121, 152, 182, 213, 244, 274, 305, 335, 366};

namespace {

const char kDateTimeRange[] = "value too large or too small for .Net DateTime";
const char kDateTimeOffsetRange[] = "value too large or too small for .Net DateTimeOffset";
// The read callback's own text, spelled differently from its sibling above.
const char kReadDateTimeOffsetRange[] = "value too large or too small for .Net DateTimeOffSet";

constexpr int32_t kDaysPer400Years = 146097;
constexpr int32_t kDaysPer100Years = 36524;
constexpr int32_t kDaysPer4Years = 1461;

// Sets this file's PyDateTimeAPI from the capsule, on every call.
bool import_datetime_api()
{
    PyDateTime_IMPORT;
    return PyDateTimeAPI != nullptr;
}

int64_t time_of_day_ticks(const DateTimeArgBuilder& b)
{
    // A leap second (60) is folded into second 59.
    int64_t second_part = b.second == 60 ? 59 * kTicksPerSecond : int64_t(b.second) * kTicksPerSecond;
    return int64_t(b.hour) * kTicksPerHour + int64_t(b.minute) * kTicksPerMinute + second_part +
           int64_t(b.microsecond) * kTicksPerMicrosecond;
}

DateTimeArgBuilder date_fields(PyObject* date)
{
    DateTimeArgBuilder b;
    b.year = PyDateTime_GET_YEAR(date);
    b.month = PyDateTime_GET_MONTH(date);
    b.day = PyDateTime_GET_DAY(date);
    return b;
}

DateTimeArgBuilder datetime_fields(PyObject* dt)
{
    DateTimeArgBuilder b = date_fields(dt);
    b.hour = PyDateTime_DATE_GET_HOUR(dt);
    b.minute = PyDateTime_DATE_GET_MINUTE(dt);
    b.second = PyDateTime_DATE_GET_SECOND(dt);
    b.microsecond = PyDateTime_DATE_GET_MICROSECOND(dt);
    return b;
}

// On 0001-01-01.
DateTimeArgBuilder time_fields(PyObject* time)
{
    DateTimeArgBuilder b;
    b.hour = PyDateTime_TIME_GET_HOUR(time);
    b.minute = PyDateTime_TIME_GET_MINUTE(time);
    b.second = PyDateTime_TIME_GET_SECOND(time);
    b.microsecond = PyDateTime_TIME_GET_MICROSECOND(time);
    return b;
}

int raise_overflow(const char* message)
{
    PyErr_SetString(PyExc_OverflowError, message);
    return 0;
}

int raise_wrong_type(PyObject* obj)
{
    PyErr_Format(PyExc_TypeError, "can't build DateTime from '%s'", Py_TYPE(obj)->tp_name);
    return 0;
}

// The clock time of an aware value at its offset, after checking that its
// UTC time lies in the DateTime range too (managed DateTimeOffset requires both).
bool aware_clock_ticks(DateTimeArgBuilder& b, int64_t offset, uint64_t* ticks)
{
    b.kind = kDateTimeKindUnspecified;
    uint64_t utc;
    return b.to_utc_ticks(offset, &utc) && b.to_ticks(ticks);
}

// --- to DateTime; the input type has been checked ---

int date_to_datetime(PyObject* obj, ClrDateTime* out)
{
    DateTimeArgBuilder b = date_fields(obj);
    if (!b.to_ticks(&out->ticks_and_kind))
        return raise_overflow(kDateTimeRange);
    return 1;
}

int datetime_to_datetime(PyObject* obj, ClrDateTime* out)
{
    PyUtcOffset offset = get_utc_offset(obj);
    if (offset.failed)
        return 0;
    DateTimeArgBuilder b = datetime_fields(obj);
    bool ok;
    if (offset.has_offset) {
        b.kind = kDateTimeKindUtc;
        ok = b.to_utc_ticks(offset.ticks, &out->ticks_and_kind);
    } else {
        ok = b.to_ticks(&out->ticks_and_kind);
    }
    return ok ? 1 : raise_overflow(kDateTimeRange);
}

int time_to_datetime(PyObject* obj, ClrDateTime* out)
{
    PyUtcOffset offset = get_utc_offset(obj);
    if (offset.failed)
        return 0;
    DateTimeArgBuilder b = time_fields(obj);
    if (offset.has_offset) {
        b.kind = kDateTimeKindUtc;
        b.to_time_ticks(offset.ticks, &out->ticks_and_kind);
        return 1;
    }
    return b.to_ticks(&out->ticks_and_kind) ? 1 : raise_overflow(kDateTimeRange);
}

// --- to DateTimeOffset; the input type has been checked ---

int date_to_datetimeoffset(PyObject* obj, ClrDateTimeOffset* out)
{
    DateTimeArgBuilder b = date_fields(obj);
    b.kind = kDateTimeKindLocal;
    if (!b.to_ticks(&out->ticks_and_kind))
        return raise_overflow(kDateTimeOffsetRange);
    out->offset = 0;
    return 1;
}

int datetime_to_datetimeoffset(PyObject* obj, ClrDateTimeOffset* out, const char* aware_range_message)
{
    PyUtcOffset offset = get_utc_offset(obj);
    if (offset.failed)
        return 0;
    DateTimeArgBuilder b = datetime_fields(obj);
    if (offset.has_offset) {
        if (!aware_clock_ticks(b, offset.ticks, &out->ticks_and_kind))
            return raise_overflow(aware_range_message);
        out->offset = offset.ticks;
        return 1;
    }
    b.kind = kDateTimeKindLocal;
    if (!b.to_ticks(&out->ticks_and_kind))
        return raise_overflow(kDateTimeOffsetRange);
    out->offset = 0;
    return 1;
}

// A time of day never leaves the range, so only reading the offset can fail.
int time_to_datetimeoffset(PyObject* obj, ClrDateTimeOffset* out)
{
    PyUtcOffset offset = get_utc_offset(obj);
    if (offset.failed)
        return 0;
    DateTimeArgBuilder b = time_fields(obj);
    uint64_t kind = offset.has_offset ? kDateTimeKindUnspecified : kDateTimeKindLocal;
    out->ticks_and_kind = (kind << 62) | uint64_t(time_of_day_ticks(b));
    out->offset = offset.has_offset ? offset.ticks : 0;
    return 1;
}

// --- to Python ---

// datetime.datetime(fields..., tz): a new reference, or null with the error.
PyObject* make_aware_datetime(const DateTimeArgBuilder& b, PyObject* tz)
{
    PyObject* cls = fn_import_type_from_module("datetime", PyWrpIdTypeName_DateTime);
    if (!cls)
        return nullptr;
    PyObject* result = nullptr;
    PyObject* args = Py_BuildValue("iiiiiiiO", b.year, b.month, b.day, b.hour, b.minute, b.second, b.microsecond, tz);
    if (args) {
        result = PyObject_Call(cls, args, nullptr);
        Py_DECREF(args);
    }
    Py_DECREF(cls);
    return result;
}

// datetime.timezone(timedelta(ticks)): a new reference, or null with the error.
PyObject* make_fixed_timezone(int64_t offset_ticks)
{
    PyObject* delta = fn_conv_clr_timespan_to_py_datetimedelta(offset_ticks);
    if (!delta)
        return nullptr;
    PyObject* result = nullptr;
    PyObject* cls = fn_import_type_from_module("datetime", PyWrpIdTypeName_TimeZone);
    if (cls) {
        result = PyObject_CallFunctionObjArgs(cls, delta, nullptr);
        Py_DECREF(cls);
    }
    Py_DECREF(delta);
    return result;
}

PyObject* make_datetime_at_offset(const DateTimeArgBuilder& b, int64_t offset_ticks)
{
    PyObject* tz = make_fixed_timezone(offset_ticks);
    if (!tz)
        return nullptr;
    PyObject* result = make_aware_datetime(b, tz);
    Py_DECREF(tz);
    return result;
}

}  // namespace

// --- DateTimeArgBuilder ---

DateTimeArgBuilder::DateTimeArgBuilder()
    : kind(0), year(1), month(1), day(1), hour(0), minute(0), second(0), microsecond(0)
{
}

DateTimeArgBuilder::DateTimeArgBuilder(uint64_t ticks_and_kind) : DateTimeArgBuilder()
{
    from_ticks(ticks_and_kind);
}

bool DateTimeArgBuilder::is_leap_year() const
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

bool DateTimeArgBuilder::to_ticks_non_kind(uint64_t* ticks) const
{
    if (year < 1 || year > 9999 || month < 1 || month > 12)
        return false;
    const int32_t* table = is_leap_year() ? m_days_to_month366 : m_days_to_month365;
    if (day < 1 || day > table[month] - table[month - 1])
        return false;
    int64_t y = year - 1;
    int64_t days = y * 365 + y / 4 - y / 100 + y / 400 + table[month - 1] + day - 1;
    int64_t total = days * kTicksPerDay + time_of_day_ticks(*this);
    if (total < 0 || uint64_t(total) > kDateTimeMaxTicks)
        return false;
    *ticks = uint64_t(total);
    return true;
}

bool DateTimeArgBuilder::to_ticks(uint64_t* ticks) const
{
    uint64_t plain;
    if (!to_ticks_non_kind(&plain))
        return false;
    *ticks = add_shift(plain);
    return true;
}

bool DateTimeArgBuilder::to_utc_ticks(int64_t offset, uint64_t* ticks) const
{
    uint64_t local;
    if (!to_ticks_non_kind(&local))
        return false;
    int64_t utc = int64_t(local) - offset;
    if (utc < 0 || uint64_t(utc) > kDateTimeMaxTicks)
        return false;
    *ticks = add_shift(uint64_t(utc));
    return true;
}

void DateTimeArgBuilder::to_time_ticks(int64_t offset, uint64_t* ticks) const
{
    int64_t shifted = (kTicksPerDay + time_of_day_ticks(*this) - offset % kTicksPerDay) % kTicksPerDay;
    *ticks = add_shift(uint64_t(shifted));
}

void DateTimeArgBuilder::from_ticks(uint64_t ticks_and_kind)
{
    kind = uint32_t(ticks_and_kind >> 62);
    int64_t t = int64_t(ticks_and_kind & kDateTimeTicksMask);
    int32_t n = int32_t(t / kTicksPerDay);
    int32_t y400 = n / kDaysPer400Years;
    n -= y400 * kDaysPer400Years;
    int32_t y100 = n / kDaysPer100Years;
    if (y100 == 4)  // the last day of a 400-year cycle
        y100 = 3;
    n -= y100 * kDaysPer100Years;
    int32_t y4 = n / kDaysPer4Years;
    n -= y4 * kDaysPer4Years;
    int32_t y1 = n / 365;
    if (y1 == 4)  // the last day of a leap year
        y1 = 3;
    n -= y1 * 365;
    year = y400 * 400 + y100 * 100 + y4 * 4 + y1 + 1;
    bool leap = y1 == 3 && (y4 != 24 || y100 == 3);
    const int32_t* table = leap ? m_days_to_month366 : m_days_to_month365;
    int32_t m = (n >> 5) + 1;
    while (n >= table[m])
        ++m;
    month = m;
    day = n - table[m - 1] + 1;
    hour = int32_t(t / kTicksPerHour % 24);
    minute = int32_t(t / kTicksPerMinute % 60);
    second = int32_t(t / kTicksPerSecond % 60);
    microsecond = int32_t(t / kTicksPerMicrosecond % 1000000);
}

// --- UTC offset ---

PyUtcOffset get_utc_offset(PyObject* obj)
{
    PyUtcOffset result = {false, false, 0};
    if (!PyDateTimeAPI && !import_datetime_api()) {
        result.failed = true;
        return result;
    }
    PyObject* tzinfo = PyObject_GetAttr(obj, PyWrpIdDateTime_Tzinfo);
    if (!tzinfo) {
        result.failed = true;
        return result;
    }
    bool naive = tzinfo == Py_None;
    Py_DECREF(tzinfo);
    if (naive)
        return result;

    PyObject* delta = PyObject_CallMethodObjArgs(obj, PyWrpIdDateTime_UtcOffset, nullptr);
    if (!delta) {
        result.failed = true;
        return result;
    }
    if (delta == Py_None) {
        Py_DECREF(delta);
        return result;
    }
    if (!PyDelta_Check(delta)) {
        Py_DECREF(delta);
        PyErr_SetString(PyExc_TypeError, "instance utcoffset() return wrong value");
        result.failed = true;
        return result;
    }
    TimeSpanArgBuilder span(PyDateTime_DELTA_GET_DAYS(delta), PyDateTime_DELTA_GET_SECONDS(delta),
                            PyDateTime_DELTA_GET_MICROSECONDS(delta));
    Py_DECREF(delta);
    if (!span.to_ticks(&result.ticks)) {
        PyErr_SetString(PyExc_OverflowError, "value too large or too small utc offset");
        result.failed = true;
        return result;
    }
    result.has_offset = true;
    return result;
}

// --- Python -> DateTime ---

int fn_conv_py_datetime_to_clr_datetime(PyObject* obj, ClrDateTime* out)
{
    if (!import_datetime_api())
        return 0;
    if (PyDateTime_Check(obj))
        return datetime_to_datetime(obj, out);
    if (PyDate_Check(obj))
        return date_to_datetime(obj, out);
    if (PyTime_Check(obj))
        return time_to_datetime(obj, out);
    return raise_wrong_type(obj);
}

// --- Python -> DateTimeOffset ---

int fn_conv_py_datetime_to_clr_datetimeoffset(PyObject* obj, ClrDateTimeOffset* out)
{
    if (!import_datetime_api())
        return 0;
    if (PyDateTime_Check(obj))
        return datetime_to_datetimeoffset(obj, out, kDateTimeRange);
    if (PyDate_Check(obj))
        return date_to_datetimeoffset(obj, out);
    if (PyTime_Check(obj))
        return time_to_datetimeoffset(obj, out);
    return raise_wrong_type(obj);
}

// --- read table ---

int fn_read_py_vers_date(PyObject* obj, void* out)
{
    if (!import_datetime_api())
        return 0;
    ClrDateTime* value = static_cast<ClrDateTime*>(out);
    value->offset = 0;
    return date_to_datetime(obj, value);
}

int fn_read_py_vers_datetime(PyObject* obj, void* out)
{
    if (!import_datetime_api())
        return 0;
    PyUtcOffset offset = get_utc_offset(obj);
    if (offset.failed)
        return 0;
    DateTimeArgBuilder b = datetime_fields(obj);
    if (offset.has_offset) {
        ClrDateTimeOffset* value = static_cast<ClrDateTimeOffset*>(out);
        if (!aware_clock_ticks(b, offset.ticks, &value->ticks_and_kind))
            return raise_overflow(kReadDateTimeOffsetRange);
        value->offset = offset.ticks;
        return 2;
    }
    ClrDateTime* value = static_cast<ClrDateTime*>(out);
    if (!b.to_ticks(&value->ticks_and_kind))
        return raise_overflow(kDateTimeRange);
    value->offset = 0;
    return 1;
}

int fn_read_py_vers_time(PyObject* obj, void* out)
{
    if (!import_datetime_api())
        return 0;
    PyUtcOffset offset = get_utc_offset(obj);
    if (offset.failed)
        return 0;
    DateTimeArgBuilder b = time_fields(obj);
    ClrDateTimeOffset* value = static_cast<ClrDateTimeOffset*>(out);
    value->ticks_and_kind = uint64_t(time_of_day_ticks(b));
    value->offset = offset.has_offset ? offset.ticks : 0;
    return offset.has_offset ? 2 : 1;
}

// --- managed -> Python ---

PyObject* fn_conv_clr_datetime_to_py_datetime(const ClrDateTime* value)
{
    if (!import_datetime_api())
        return nullptr;
    DateTimeArgBuilder b(value->ticks_and_kind);
    switch (b.kind) {
    case kDateTimeKindUnspecified:
        return PyDateTimeAPI->DateTime_FromDateAndTime(b.year, b.month, b.day, b.hour, b.minute, b.second,
                                                       b.microsecond, Py_None, PyDateTimeAPI->DateTimeType);
    case kDateTimeKindUtc:
        return make_aware_datetime(b, PyDateTimeAPI->TimeZone_UTC);
    default:
        return make_datetime_at_offset(b, value->offset);
    }
}

PyObject* fn_conv_clr_datetimeoffset_to_py_datetime(const ClrDateTimeOffset* value)
{
    if (!import_datetime_api())
        return nullptr;
    DateTimeArgBuilder b(value->ticks_and_kind);
    return make_datetime_at_offset(b, value->offset);
}

PyObject* fn_write_py_date_time(const ClrDateTime* value)
{
    return fn_conv_clr_datetime_to_py_datetime(value);
}

PyObject* fn_write_py_date_time_offset(const ClrDateTimeOffset* value)
{
    return fn_conv_clr_datetimeoffset_to_py_datetime(value);
}
