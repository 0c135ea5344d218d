"""Value conversions between Python and managed code, checked through real
calls of the test-only probe module (orvane_probe, class Marshal)."""
import array
import math
import os
import struct
import unittest
import uuid
from collections import namedtuple
from datetime import date, datetime, time, timedelta, timezone
from decimal import Decimal, DecimalTuple

# The managed runtime reads the zone once, at start-up: a fixed UTC+2 zone makes
# local-kind values deterministic.
os.environ["TZ"] = "Etc/GMT-2"
LOCAL_OFFSET = timedelta(hours=2)

import orvane_probe as probe  # noqa: E402

M = probe.Marshal

TICKS_PER_DAY = 864_000_000_000
TICKS_PER_SECOND = 10_000_000
KIND_UTC = 1 << 62
KIND_LOCAL = 2 << 62
EPOCH = datetime(1, 1, 1)


def ticks_of(dt):
    """Ticks of a naive datetime, computed on the Python side."""
    delta = dt - EPOCH
    return (delta.days * 86_400 + delta.seconds) * TICKS_PER_SECOND + delta.microseconds * 10


def decimal_words(mantissa, scale=0, negative=False):
    """The lo,mid,hi,flags text that managed code prints for a decimal."""
    words = [mantissa & 0xFFFFFFFF, (mantissa >> 32) & 0xFFFFFFFF, (mantissa >> 64) & 0xFFFFFFFF,
             (int(negative) << 31) | (scale << 16)]
    return ",".join("%x" % w for w in words)


def tz(hours=0, minutes=0):
    return timezone(timedelta(hours=hours, minutes=minutes))


class IntegerTests(unittest.TestCase):
    WIDTHS = [
        ("echo_sbyte", "SByte", -2 ** 7, 2 ** 7 - 1),
        ("echo_byte", "Byte", 0, 2 ** 8 - 1),
        ("echo_int16", "Int16", -2 ** 15, 2 ** 15 - 1),
        ("echo_uint16", "UInt16", 0, 2 ** 16 - 1),
        ("echo_int32", "Int32", -2 ** 31, 2 ** 31 - 1),
        ("echo_uint32", "UInt32", 0, 2 ** 32 - 1),
        ("echo_int64", "Int64", -2 ** 63, 2 ** 63 - 1),
        ("echo_uint64", "UInt64", 0, 2 ** 64 - 1),
    ]

    def test_every_width_round_trips_its_bounds(self):
        for name, _, lo, hi in self.WIDTHS:
            fn = getattr(M, name)
            for value in (lo, hi, (lo + hi) // 2):
                with self.subTest(name=name, value=value):
                    result = fn(value)
                    self.assertEqual(result, value)
                    self.assertIs(type(result), int)

    def test_small_widths_check_their_range(self):
        cases = [
            (M.echo_sbyte, 128, "value too big to convert to 'SByte'"),
            (M.echo_sbyte, -129, "value too small to convert to 'SByte'"),
            (M.echo_int16, 32768, "value too big to convert to 'Int16'"),
            (M.echo_int16, -32769, "value too small to convert to 'Int16'"),
            (M.echo_byte, 300, "value too big to convert to 'Byte'"),
            (M.echo_uint16, 65536, "value too big to convert to 'UInt16'"),
        ]
        for fn, value, message in cases:
            with self.subTest(value=value, message=message):
                with self.assertRaises(OverflowError) as cm:
                    fn(value)
                self.assertEqual(str(cm.exception), message)

    def test_negative_values_for_unsigned_targets_raise_the_runtime_overflow(self):
        for fn in (M.echo_byte, M.echo_uint16, M.echo_uint32, M.echo_uint64):
            with self.subTest(fn=fn.__name__):
                self.assertRaises(OverflowError, fn, -1)

    def test_32_bit_widths_keep_the_low_bits(self):
        self.assertEqual(M.echo_int32(2 ** 32 + 5), 5)
        self.assertEqual(M.echo_int32(2 ** 31), -2 ** 31)
        self.assertEqual(M.echo_int32(-2 ** 32 - 1), -1)
        self.assertEqual(M.echo_uint32(2 ** 32 + 7), 7)
        self.assertEqual(M.echo_uint32(2 ** 40 + 2 ** 31), 2 ** 31)

    def test_64_bit_widths_are_bounded_by_the_reader(self):
        self.assertRaises(OverflowError, M.echo_int64, 2 ** 63)
        self.assertRaises(OverflowError, M.echo_int64, -2 ** 63 - 1)
        self.assertRaises(OverflowError, M.echo_uint64, 2 ** 64)
        self.assertRaises(OverflowError, M.echo_int32, 2 ** 64)

    def test_bool_and_foreign_types_are_refused_with_the_target_name(self):
        for name, type_name, _, _ in self.WIDTHS:
            with self.subTest(name=name):
                with self.assertRaises(TypeError) as cm:
                    getattr(M, name)(True)
                self.assertEqual(str(cm.exception), "can't build '%s' from 'bool'" % type_name)
        for value, py_name in (("5", "str"), (None, "NoneType"), (b"5", "bytes"), ([5], "list")):
            with self.subTest(value=value):
                with self.assertRaises(TypeError) as cm:
                    M.echo_int32(value)
                self.assertEqual(str(cm.exception), "can't build 'Int32' from '%s'" % py_name)

    def test_int_subclasses_are_accepted(self):
        class Small(int):
            pass

        self.assertEqual(M.echo_int16(Small(-7)), -7)
        self.assertEqual(M.echo_uint64(Small(2 ** 64 - 1)), 2 ** 64 - 1)

    def test_floats_truncate_toward_zero_without_range_check(self):
        self.assertEqual(M.echo_int16(2.9), 2)
        self.assertEqual(M.echo_int16(-2.9), -2)
        self.assertEqual(M.echo_sbyte(-0.99), 0)
        # 8- and 16-bit targets keep the low bits of a 32-bit conversion.
        self.assertEqual(M.echo_byte(300.7), 300 & 0xFF)
        self.assertEqual(M.echo_sbyte(200.0), 200 - 256)
        self.assertEqual(M.echo_uint16(70000.0), 70000 & 0xFFFF)
        self.assertEqual(M.echo_int64(-1e18), -10 ** 18)
        self.assertEqual(M.echo_uint64(1.8e19), 18_000_000_000_000_000_000)

    def test_decimals_truncate_and_check_each_digit(self):
        self.assertEqual(M.echo_sbyte(Decimal("127.9")), 127)
        self.assertEqual(M.echo_sbyte(Decimal("-128.9")), -128)
        self.assertEqual(M.echo_byte(Decimal("1E2")), 100)
        self.assertEqual(M.echo_byte(Decimal("2.55E2")), 255)
        self.assertEqual(M.echo_byte(Decimal("0.999")), 0)
        self.assertEqual(M.echo_int64(Decimal("9223372036854775807")), 2 ** 63 - 1)
        self.assertEqual(M.echo_int64(Decimal("-9223372036854775808")), -2 ** 63)
        self.assertEqual(M.echo_uint64(Decimal("18446744073709551615.5")), 2 ** 64 - 1)
        self.assertEqual(M.echo_int32(DecimalTuple(1, (4, 2), 0)), -42)
        self.assertEqual(M.echo_int16(DecimalTuple(0, (1, 2, 3), 1)), 1230)
        cases = [
            (M.echo_sbyte, Decimal("128"), OverflowError, "value too large for 'SByte'"),
            (M.echo_sbyte, Decimal("-129"), OverflowError, "value too small for 'SByte'"),
            (M.echo_byte, Decimal("256"), OverflowError, "value too large for 'Byte'"),
            (M.echo_byte, Decimal("1E3"), OverflowError, "value too large for 'Byte'"),
            (M.echo_byte, Decimal("-0"), OverflowError, "value too small for 'Byte'"),
            (M.echo_uint32, Decimal("-0.5"), OverflowError, "value too small for 'UInt32'"),
            (M.echo_int64, Decimal("9223372036854775808"), OverflowError, "value too large for 'Int64'"),
            (M.echo_int64, Decimal("-9223372036854775809"), OverflowError, "value too small for 'Int64'"),
            (M.echo_int16, Decimal("-4E4"), OverflowError, "value too small for 'Int16'"),
            (M.echo_sbyte, Decimal("-Infinity"), OverflowError, "value too large for .Net 'SByte'"),
            (M.echo_uint64, Decimal("Infinity"), OverflowError, "value too large for .Net 'UInt64'"),
            (M.echo_int32, Decimal("NaN"), OverflowError, "value is not a number"),
            (M.echo_int32, Decimal("sNaN"), OverflowError, "value is not a number"),
        ]
        for fn, value, exc, message in cases:
            with self.subTest(fn=fn.__name__, value=value):
                with self.assertRaises(exc) as cm:
                    fn(value)
                self.assertEqual(str(cm.exception), message)

    def test_malformed_decimal_tuples(self):
        with self.assertRaises(TypeError) as cm:
            M.echo_int32(DecimalTuple(0, (1,), "x"))
        self.assertEqual(str(cm.exception), "can't build 'Int32' from exponent value 'x'")
        with self.assertRaises(TypeError) as cm:
            M.echo_int32(DecimalTuple(0, (1,), 1.5))
        self.assertEqual(str(cm.exception), "unknown exponent type 'float'")


class FloatAndBoolTests(unittest.TestCase):
    def test_bool_is_strict(self):
        self.assertIs(M.echo_bool(True), True)
        self.assertIs(M.echo_bool(False), False)
        for value, py_name in ((1, "int"), (None, "NoneType"), ("True", "str")):
            with self.subTest(value=value):
                with self.assertRaises(TypeError) as cm:
                    M.echo_bool(value)
                self.assertEqual(str(cm.exception), "can't build bool from '%s'" % py_name)

    def test_doubles_round_trip_exactly(self):
        for value in (0.0, -0.0, 0.1, -1.5e-308, 1.7976931348623157e308, 5e-324, math.inf, -math.inf):
            with self.subTest(value=value):
                result = M.echo_double(value)
                self.assertEqual(struct.pack("<d", result), struct.pack("<d", value))
        self.assertTrue(math.isnan(M.echo_double(math.nan)))

    def test_single_narrows_without_overflow_check(self):
        self.assertEqual(M.echo_single(0.1), struct.unpack("<f", struct.pack("<f", 0.1))[0])
        self.assertEqual(M.echo_single(1e39), math.inf)
        self.assertEqual(M.echo_single(-1e39), -math.inf)

    def test_ints_convert_to_floats_across_the_signed_range(self):
        self.assertEqual(M.echo_double(-2 ** 63), -9.223372036854775808e18)
        self.assertEqual(M.echo_double(2 ** 63), 9.223372036854775808e18)
        self.assertEqual(M.echo_double(2 ** 64 - 1), float(2 ** 64 - 1))
        self.assertEqual(M.echo_single(2 ** 63 + 2 ** 38), float(2 ** 63))
        self.assertEqual(M.echo_double(3), 3.0)
        self.assertIs(type(M.echo_double(3)), float)
        self.assertRaises(OverflowError, M.echo_double, 2 ** 64)

    def test_floats_refuse_bool_and_other_types(self):
        for fn, type_name in ((M.echo_double, "Double"), (M.echo_single, "Single")):
            for value, py_name in ((True, "bool"), ("1.0", "str"), (Decimal("1.5"), "decimal.Decimal"), (None, "NoneType")):
                with self.subTest(fn=fn.__name__, value=value):
                    with self.assertRaises(TypeError) as cm:
                        fn(value)
                    self.assertEqual(str(cm.exception), "can't build '%s' from '%s'" % (type_name, py_name))

    def test_float_subclass_is_accepted(self):
        class F(float):
            pass

        self.assertEqual(M.echo_double(F(2.25)), 2.25)


class CharTests(unittest.TestCase):
    def test_one_code_unit_round_trips(self):
        for ch in ("a", "\0", "\xe9", "\u20ac", "\uffff", "\ud7ff"):
            with self.subTest(ch=ch):
                self.assertEqual(M.echo_char(ch), ch)

    def test_anything_but_one_code_unit_is_refused(self):
        for value in ("", "ab", "\U0001F600", "\U00010000"):
            with self.subTest(value=value):
                with self.assertRaises(TypeError) as cm:
                    M.echo_char(value)
                self.assertEqual(str(cm.exception), "string must contain one UTF-16 code unit")

    def test_non_strings_and_lone_surrogates(self):
        with self.assertRaises(TypeError) as cm:
            M.echo_char(65)
        self.assertEqual(str(cm.exception), "can't build Char from 'int'")
        with self.assertRaises(TypeError) as cm:
            M.echo_char(b"a")
        self.assertEqual(str(cm.exception), "can't build Char from 'bytes'")
        # A lone surrogate cannot be encoded to UTF-16: the encoder's error comes through.
        self.assertRaises(UnicodeEncodeError, M.echo_char, "\ud800")


class StringTests(unittest.TestCase):
    def test_all_three_widths_round_trip(self):
        samples = {
            "latin-1": "h\xe9llo w\xf6rld \xff",
            "ucs-2": "\u20acuro \u4e2d\u6587 \uffff",
            "ucs-4": "a\U0001F600b\U0010FFFFc",
            "empty": "",
            "nul inside": "a\0b",
        }
        for label, text in samples.items():
            with self.subTest(label=label):
                self.assertEqual(M.echo_string(text), text)
        for text in ("x" * 300_000, "\u20ac" * 300_000, "\U0001F600" * 300_000):
            with self.subTest(length=len(text), width=max(map(ord, text[:1]))):
                self.assertEqual(M.echo_string(text), text)

    def test_none_is_null_and_other_types_are_refused(self):
        self.assertIsNone(M.echo_string(None))
        for value, py_name in ((b"x", "bytes"), (5, "int"), (bytearray(b"x"), "bytearray")):
            with self.subTest(value=value):
                with self.assertRaises(TypeError) as cm:
                    M.echo_string(value)
                self.assertEqual(str(cm.exception), "can't build String from '%s'" % py_name)

    def test_str_subclass_is_accepted(self):
        class S(str):
            pass

        result = M.echo_string(S("ab\u20ac"))
        self.assertEqual(result, "ab\u20ac")
        self.assertIs(type(result), str)

    def test_surrogates(self):
        # Two surrogate code points in a Python string form a pair in UTF-16,
        # so they come back as one astral character.
        self.assertEqual(M.echo_string("\ud83d\ude00"), "\U0001F600")
        # A lone surrogate reaches managed code but cannot be decoded on the way back
        # (the decoder is called with an empty error-handler name, which Python
        # reports as an unknown handler once decoding fails).
        for text in ("\ud800", "x\udfff", "\u20ac\udc00y"):
            with self.subTest(text=ascii(text)):
                with self.assertRaises((UnicodeDecodeError, LookupError)):
                    M.echo_string(text)
        self.assertEqual(M.echo_string("still fine"), "still fine")


class BytesTests(unittest.TestCase):
    def test_buffers_of_every_exporter_come_back_as_bytearray(self):
        cases = [
            (b"abc", b"abc"),
            (b"", b""),
            (bytearray(b"\x00\xff"), b"\x00\xff"),
            (memoryview(b"abcdef")[1:4], b"bcd"),
            (array.array("i", [1, 2]), struct.pack("=ii", 1, 2)),
        ]
        for value, expected in cases:
            with self.subTest(value=value):
                result = M.echo_bytes(value)
                self.assertIs(type(result), bytearray)
                self.assertEqual(result, expected)

    def test_large_buffer_round_trips(self):
        data = os.urandom(1 << 20)
        self.assertEqual(M.echo_bytes(data), data)

    def test_none_is_null(self):
        self.assertIsNone(M.echo_bytes(None))

    def test_non_contiguous_and_non_buffer_arguments(self):
        for view in (memoryview(b"abcdef")[::2], memoryview(b"abcdef")[::-1]):
            with self.subTest(view=view):
                with self.assertRaises(BufferError) as cm:
                    M.echo_bytes(view)
                self.assertEqual(str(cm.exception), "buffer is not contiguous")
        for value, py_name in (("abc", "str"), (5, "int"), ([1], "list")):
            with self.subTest(value=value):
                with self.assertRaises(TypeError) as cm:
                    M.echo_bytes(value)
                self.assertEqual(str(cm.exception), "can't build byte[] from '%s'" % py_name)

    def test_view_is_released_after_the_call(self):
        data = bytearray(b"xyz")
        M.echo_bytes(data)
        data.extend(b"!")  # refused while a buffer view is still exported
        self.assertEqual(data, b"xyz!")


class DateTimeTests(unittest.TestCase):
    MAX_TICKS = 3_155_378_975_999_999_999

    def test_calendar_limits(self):
        self.assertEqual(M.date_time_raw(date(1, 1, 1)), 0)
        self.assertEqual(M.date_time_raw(datetime(1, 1, 1)), 0)
        self.assertEqual(M.date_time_raw(datetime(9999, 12, 31, 23, 59, 59, 999999)), 3_155_378_975_999_999_990)
        self.assertEqual(M.date_time_raw(date(9999, 12, 31)), 3_155_378_976_000_000_000 - TICKS_PER_DAY)
        for value in (date(2000, 2, 29), date(1900, 3, 1), date(2024, 12, 31), datetime(1970, 1, 1, 0, 0, 0, 1)):
            with self.subTest(value=value):
                naive = value if isinstance(value, datetime) else datetime(value.year, value.month, value.day)
                self.assertEqual(M.date_time_raw(value), ticks_of(naive))

    def test_aware_values_become_utc(self):
        value = datetime(2000, 1, 1, 12, 0, tzinfo=tz(2))
        self.assertEqual(M.date_time_raw(value), ticks_of(datetime(2000, 1, 1, 10, 0)) | KIND_UTC)
        value = datetime(2000, 1, 1, 0, 15, tzinfo=tz(-5, -30))
        self.assertEqual(M.date_time_raw(value), ticks_of(datetime(2000, 1, 1, 5, 45)) | KIND_UTC)

    def test_aware_values_outside_the_range_after_shifting(self):
        for value in (datetime(1, 1, 1, 0, 30, tzinfo=tz(1)), datetime(9999, 12, 31, 23, 30, tzinfo=tz(-1))):
            with self.subTest(value=value):
                with self.assertRaises(OverflowError) as cm:
                    M.date_time_raw(value)
                self.assertEqual(str(cm.exception), "value too large or too small for .Net DateTime")

    def test_times_of_day(self):
        self.assertEqual(M.date_time_raw(time(12, 0, 0, 5)), 12 * 3600 * TICKS_PER_SECOND + 50)
        # Shifted to UTC across midnight, staying on 0001-01-01.
        self.assertEqual(M.date_time_raw(time(0, 30, tzinfo=tz(1))), (23 * 60 + 30) * 60 * TICKS_PER_SECOND | KIND_UTC)
        self.assertEqual(M.date_time_raw(time(23, 30, tzinfo=tz(-1))), 30 * 60 * TICKS_PER_SECOND | KIND_UTC)

    def test_utcoffset_misbehaving(self):
        class WrongOffset(datetime):
            def utcoffset(self):
                return 5

        class HugeOffset(datetime):
            def utcoffset(self):
                return timedelta(days=11_000_000)

        class NoOffset(datetime):
            def utcoffset(self):
                return None

        class Raising(datetime):
            def utcoffset(self):
                raise LookupError("no zone")

        with self.assertRaises(TypeError) as cm:
            M.date_time_raw(WrongOffset(2000, 1, 1, tzinfo=tz(1)))
        self.assertEqual(str(cm.exception), "instance utcoffset() return wrong value")
        with self.assertRaises(OverflowError) as cm:
            M.date_time_raw(HugeOffset(2000, 1, 1, tzinfo=tz(1)))
        self.assertEqual(str(cm.exception), "value too large or too small utc offset")
        self.assertEqual(M.date_time_raw(NoOffset(2000, 1, 1, tzinfo=tz(1))), ticks_of(datetime(2000, 1, 1)))
        with self.assertRaises(LookupError):
            M.date_time_raw(Raising(2000, 1, 1, tzinfo=tz(1)))

    def test_wrong_types(self):
        for value, py_name in (("2000-01-01", "str"), (0, "int"), (None, "NoneType"), (timedelta(1), "datetime.timedelta")):
            with self.subTest(value=value):
                with self.assertRaises(TypeError) as cm:
                    M.echo_date_time(value)
                self.assertEqual(str(cm.exception), "can't build DateTime from '%s'" % py_name)
        with self.assertRaises(TypeError) as cm:
            M.echo_date_time_offset("x")
        self.assertEqual(str(cm.exception), "can't build DateTime from 'str'")

    def test_echo_by_kind(self):
        naive = datetime(2021, 3, 4, 5, 6, 7, 890123)
        self.assertEqual(M.echo_date_time(naive), naive)
        self.assertIsNone(M.echo_date_time(naive).tzinfo)
        self.assertEqual(M.echo_date_time(date(2021, 3, 4)), datetime(2021, 3, 4))
        self.assertEqual(M.echo_date_time(time(1, 2, 3)), datetime(1, 1, 1, 1, 2, 3))
        aware = M.echo_date_time(datetime(2021, 3, 4, 5, 6, tzinfo=tz(3)))
        self.assertEqual(aware, datetime(2021, 3, 4, 2, 6, tzinfo=timezone.utc))
        self.assertEqual(aware.utcoffset(), timedelta(0))
        self.assertEqual(M.echo_date_time(datetime.max), datetime.max)

    def test_raw_values_back_to_python(self):
        base = ticks_of(datetime(2010, 6, 1, 8, 0, 0, 123456))
        self.assertEqual(M.date_time_from_raw(base, 0), datetime(2010, 6, 1, 8, 0, 0, 123456))
        utc = M.date_time_from_raw(base | KIND_UTC, 0)
        self.assertEqual(utc.tzinfo, timezone.utc)
        self.assertEqual(utc.replace(tzinfo=None), datetime(2010, 6, 1, 8, 0, 0, 123456))
        # Sub-microsecond ticks are dropped.
        self.assertEqual(M.date_time_from_raw(base + 9, 0), datetime(2010, 6, 1, 8, 0, 0, 123456))
        self.assertEqual(M.date_time_from_raw(self.MAX_TICKS, 0), datetime.max)
        self.assertEqual(M.date_time_from_raw(0, 0), datetime(1, 1, 1))
        for leap_day in (datetime(2000, 2, 29), datetime(2000, 12, 31), datetime(1900, 12, 31), datetime(2001, 1, 1)):
            with self.subTest(day=leap_day):
                self.assertEqual(M.date_time_from_raw(ticks_of(leap_day), 0), leap_day)

    def test_local_kind_carries_the_local_offset(self):
        # 10:00 at UTC+5 is 05:00 UTC, 07:00 in the process's UTC+2 zone.
        raw = ticks_of(datetime(2010, 6, 1, 10, 0)) | KIND_LOCAL
        result = M.date_time_from_raw(raw, 5 * 3600 * TICKS_PER_SECOND)
        self.assertEqual(result, datetime(2010, 6, 1, 5, 0, tzinfo=timezone.utc))
        self.assertEqual(result.utcoffset(), LOCAL_OFFSET)
        self.assertEqual(result.replace(tzinfo=None), datetime(2010, 6, 1, 7, 0))

    def test_date_time_offset_in(self):
        aware = datetime(2015, 7, 8, 9, 10, tzinfo=tz(5, 30))
        self.assertEqual(M.date_time_offset_raw(aware), "%d|0|%d" % (ticks_of(datetime(2015, 7, 8, 9, 10)), 19800 * TICKS_PER_SECOND))
        # Naive values and dates are local clock times at the local zone's offset.
        offset = int(LOCAL_OFFSET.total_seconds()) * TICKS_PER_SECOND
        self.assertEqual(M.date_time_offset_raw(datetime(2015, 7, 8, 9, 10)), "%d|0|%d" % (ticks_of(datetime(2015, 7, 8, 9, 10)), offset))
        self.assertEqual(M.date_time_offset_raw(date(2015, 7, 8)), "%d|0|%d" % (ticks_of(datetime(2015, 7, 8)), offset))
        with self.assertRaises(OverflowError) as cm:
            M.echo_date_time_offset(datetime(1, 1, 1, 0, 30, tzinfo=tz(1)))
        self.assertEqual(str(cm.exception), "value too large or too small for .Net DateTime")

    def test_date_time_offset_out(self):
        aware = datetime(2015, 7, 8, 9, 10, 11, 12, tzinfo=tz(-3, -30))
        result = M.echo_date_time_offset(aware)
        self.assertEqual(result, aware)
        self.assertEqual(result.utcoffset(), timedelta(hours=-3, minutes=-30))
        self.assertEqual(result.replace(tzinfo=None), aware.replace(tzinfo=None))
        built = M.date_time_offset_from_parts(ticks_of(datetime(2000, 1, 1, 12)), 2 * 3600 * TICKS_PER_SECOND)
        self.assertEqual(built, datetime(2000, 1, 1, 12, tzinfo=tz(2)))
        self.assertEqual(built.utcoffset(), timedelta(hours=2))
        zero = M.date_time_offset_from_parts(ticks_of(datetime(2000, 1, 1)), 0)
        self.assertEqual(zero.utcoffset(), timedelta(0))


class TimeSpanTests(unittest.TestCase):
    LIMIT_SECONDS = 922_337_203_685

    def test_ticks_of_timedeltas(self):
        cases = [
            (timedelta(0), 0),
            (timedelta(days=-1), -TICKS_PER_DAY),
            (timedelta(microseconds=-1), -10),
            (timedelta(days=1, seconds=2, microseconds=3), TICKS_PER_DAY + 2 * TICKS_PER_SECOND + 30),
            (timedelta(days=-3, hours=5), -3 * TICKS_PER_DAY + 5 * 3600 * TICKS_PER_SECOND),
            (timedelta(seconds=self.LIMIT_SECONDS, microseconds=477_580), 9_223_372_036_854_775_800),
            (-timedelta(seconds=self.LIMIT_SECONDS, microseconds=477_580), -9_223_372_036_854_775_800),
            (timedelta(seconds=self.LIMIT_SECONDS - 1, microseconds=999_999), (self.LIMIT_SECONDS * 10 ** 6 - 1) * 10),
        ]
        for value, ticks in cases:
            with self.subTest(value=value):
                self.assertEqual(M.time_span_ticks(value), ticks)

    def test_range_limits(self):
        for value in (timedelta.max, timedelta.min,
                      timedelta(seconds=self.LIMIT_SECONDS, microseconds=477_581),
                      -timedelta(seconds=self.LIMIT_SECONDS, microseconds=477_581),
                      timedelta(seconds=self.LIMIT_SECONDS + 1)):
            with self.subTest(value=value):
                with self.assertRaises(OverflowError) as cm:
                    M.echo_time_span(value)
                self.assertEqual(str(cm.exception), "value too large or too small for .Net TimeSpan")

    def test_back_to_python(self):
        self.assertEqual(M.time_span_from_ticks(15), timedelta(microseconds=1))
        self.assertEqual(M.time_span_from_ticks(-15), timedelta(microseconds=-1))
        self.assertEqual(M.time_span_from_ticks(-TICKS_PER_DAY - 10), timedelta(days=-1, microseconds=-1))
        self.assertEqual(M.time_span_from_ticks(2 ** 63 - 1), timedelta(days=10675199, seconds=10085, microseconds=477580))
        self.assertEqual(M.time_span_from_ticks(-2 ** 63), -timedelta(days=10675199, seconds=10085, microseconds=477580))
        for value in (timedelta(days=-5, microseconds=7), timedelta(hours=-1), timedelta(days=3, seconds=86399)):
            with self.subTest(value=value):
                self.assertEqual(M.echo_time_span(value), value)

    def test_wrong_types(self):
        class Span(timedelta):
            pass

        self.assertEqual(M.echo_time_span(Span(seconds=3)), timedelta(seconds=3))
        for value, py_name in ((5, "int"), (None, "NoneType"), (datetime(2000, 1, 1), "datetime.datetime")):
            with self.subTest(value=value):
                with self.assertRaises(TypeError) as cm:
                    M.echo_time_span(value)
                self.assertEqual(str(cm.exception), "can't build TimeSpan from '%s'" % py_name)


class DecimalTests(unittest.TestCase):
    def assertBits(self, value, mantissa, scale=0, negative=False):
        self.assertEqual(M.decimal_bits(value), decimal_words(mantissa, scale, negative))

    def test_digits_below_the_smallest_scale(self):
        self.assertBits(Decimal("1E-29"), 0)
        self.assertBits(Decimal("5E-29"), 0)
        self.assertBits(Decimal("6E-29"), 1, 28)
        self.assertBits(Decimal("1E-40"), 0)

    def test_rounding_looks_at_the_dropped_digit_only(self):
        # Half to even on the dropped 5: odd 1 rounds up, even 0 and 2 stay.
        self.assertBits(Decimal("0.00000000000000000000000000015"), 2, 28)
        self.assertBits(Decimal("0.00000000000000000000000000025"), 2, 28)
        self.assertBits(Decimal("1.00000000000000000000000000005"), 10 ** 28, 28)
        # Digits beyond the dropped one are never looked at: .251 rounds like .25.
        self.assertBits(Decimal("0.000000000000000000000000000251"), 2, 28)
        self.assertBits(Decimal("0.00000000000000000000000000026"), 3, 28)

    def test_too_many_digits(self):
        self.assertBits(Decimal("11111111111111111111111111111.1"), int("1" * 29))
        self.assertBits(Decimal("7.9228162514264337593543950336"), 7922816251426433759354395034, 27)
        for text in ("1" * 30, "79228162514264337593543950336", "1E29", "-79228162514264337593543950336"):
            with self.subTest(text=text):
                with self.assertRaises(OverflowError) as cm:
                    M.echo_decimal(Decimal(text))
                self.assertEqual(str(cm.exception), "value too large for .Net decimal")

    def test_limits_and_signs(self):
        self.assertBits(Decimal("79228162514264337593543950335"), 2 ** 96 - 1)
        self.assertBits(Decimal("-79228162514264337593543950335"), 2 ** 96 - 1, negative=True)
        self.assertBits(Decimal("-0"), 0)
        self.assertBits(Decimal("-0.00"), 0)
        self.assertBits(Decimal("-123.45"), 12345, 2, True)
        self.assertBits(Decimal("1E28"), 10 ** 28)
        self.assertBits(Decimal("0.0000000000000000000000000001"), 1, 28)

    def test_round_trips_keep_the_scale(self):
        for text in ("0", "1.50", "-123.45", "79228162514264337593543950335", "0.0000000000000000000000000001",
                     "-7.922816251426433759354395034", "100"):
            with self.subTest(text=text):
                result = M.echo_decimal(Decimal(text))
                self.assertIsInstance(result, Decimal)
                self.assertEqual(str(result), str(Decimal(text)))
        self.assertEqual(M.echo_decimal(DecimalTuple(1, (1, 2, 3, 4, 5), -2)), Decimal("-123.45"))

    def test_ints_and_floats(self):
        self.assertBits(-5, 5, negative=True)
        self.assertBits(2 ** 63 - 1, 2 ** 63 - 1)
        self.assertBits(2 ** 64 - 1, 2 ** 64 - 1)
        self.assertEqual(M.echo_decimal(-2 ** 63), Decimal(-2 ** 63))
        self.assertEqual(M.echo_decimal(0.1), Decimal("0.1"))
        self.assertEqual(M.echo_decimal(-2.5), Decimal("-2.5"))
        self.assertRaises(OverflowError, M.echo_decimal, 2 ** 64)

    def test_special_values_and_wrong_types(self):
        cases = [
            (math.inf, OverflowError, "value too large for .Net decimal"),
            (2.0 ** 96, OverflowError, "value too large for .Net decimal"),
            (math.nan, TypeError, "can't build Decimal from NaN"),
            (Decimal("Infinity"), OverflowError, "value too large for .Net 'Decimal'"),
            (Decimal("NaN"), OverflowError, "value is not a number"),
            (True, TypeError, "can't build Decimal from 'bool'"),
            ("1.5", TypeError, "can't build Decimal from 'str'"),
            (None, TypeError, "can't build Decimal from 'NoneType'"),
        ]
        for value, exc, message in cases:
            with self.subTest(value=value):
                with self.assertRaises(exc) as cm:
                    M.echo_decimal(value)
                self.assertEqual(str(cm.exception), message)

    def test_managed_decimals_back_to_python(self):
        result = M.decimal_from_bits(12345, 0, 0, -0x80000000 | (2 << 16))
        self.assertEqual(str(result), "-123.45")
        self.assertEqual(M.decimal_from_bits(-1, -1, -1, 0), Decimal(2 ** 96 - 1))
        self.assertEqual(str(M.decimal_from_bits(0, 0, 0, 28 << 16)), "0E-28")
        self.assertEqual(str(M.decimal_from_bits(1, 0, 0, 28 << 16)), "1E-28")
        self.assertEqual(M.decimal_from_bits(0, 1, 0, 0), Decimal(2 ** 32))


class GuidTests(unittest.TestCase):
    def test_memory_order_is_bytes_le(self):
        value = uuid.UUID("00112233-4455-6677-8899-aabbccddeeff")
        self.assertEqual(M.guid_bytes(value), "33221100554477668899aabbccddeeff")
        self.assertEqual(M.guid_bytes(value), value.bytes_le.hex())

    def test_round_trip(self):
        for value in (uuid.UUID(int=0), uuid.UUID(int=2 ** 128 - 1), uuid.uuid4(),
                      uuid.UUID("00112233-4455-6677-8899-aabbccddeeff")):
            with self.subTest(value=value):
                result = M.echo_guid(value)
                self.assertIsInstance(result, uuid.UUID)
                self.assertEqual(result, value)

    def test_wrong_types(self):
        for value, py_name in (("00112233-4455-6677-8899-aabbccddeeff", "str"), (None, "NoneType"), (b"0" * 16, "bytes")):
            with self.subTest(value=value):
                with self.assertRaises(TypeError) as cm:
                    M.echo_guid(value)
                self.assertEqual(str(cm.exception), "can't build Guid from '%s'" % py_name)


class NullableTests(unittest.TestCase):
    def test_none_and_values(self):
        self.assertIsNone(M.echo_nullable_int32(None))
        self.assertEqual(M.echo_nullable_int32(5), 5)
        self.assertEqual(M.echo_nullable_int32(0), 0)
        self.assertEqual(M.echo_nullable_int32(2 ** 32 + 1), 1)
        self.assertIsNone(M.echo_nullable_double(None))
        self.assertEqual(M.echo_nullable_double(2.5), 2.5)
        self.assertEqual(M.echo_nullable_double(3), 3.0)

    def test_inner_conversion_errors(self):
        with self.assertRaises(TypeError) as cm:
            M.echo_nullable_int32(True)
        self.assertEqual(str(cm.exception), "can't build 'Int32' from 'bool'")
        with self.assertRaises(TypeError) as cm:
            M.echo_nullable_double("x")
        self.assertEqual(str(cm.exception), "can't build 'Double' from 'str'")


class ByRefTests(unittest.TestCase):
    def test_out_parameter(self):
        for initial in ([], [7], [None], [1, "ignored"]):
            with self.subTest(initial=initial):
                box = list(initial)
                self.assertIsNone(M.out_int32(box))
                self.assertEqual(box[0], 42)
                self.assertEqual(len(box), max(1, len(initial)))

    def test_ref_parameters(self):
        box = [7]
        M.ref_int32(box)
        self.assertEqual(box, [8])
        M.ref_int32(box)
        self.assertEqual(box, [9])
        for initial, expected in (([], [1]), ([None], [1]), ([1, "junk"], [2, "junk"])):
            with self.subTest(initial=initial):
                M.ref_int32(initial)
                self.assertEqual(initial, expected)
        for initial, expected in ((["a"], ["a!"]), ([], ["!"]), ([None], ["!"]), (["\U0001F600"], ["\U0001F600!"])):
            with self.subTest(initial=initial):
                M.ref_string(initial)
                self.assertEqual(initial, expected)

    def test_only_a_plain_list_is_accepted(self):
        class Box(list):
            pass

        for value, py_name in (((7,), "tuple"), (Box([7]), "Box"), (7, "int"), (None, "NoneType")):
            with self.subTest(value=value):
                with self.assertRaises(TypeError) as cm:
                    M.ref_int32(value)
                self.assertEqual(str(cm.exception),
                                 "argument should be empty list or list contains default value, not '%s'" % py_name)

    def test_inner_conversion_failure_leaves_the_list_alone(self):
        box = ["x"]
        with self.assertRaises(TypeError) as cm:
            M.ref_int32(box)
        self.assertEqual(str(cm.exception), "can't build 'Int32' from 'str'")
        self.assertEqual(box, ["x"])


class VariantTests(unittest.TestCase):
    def describe(self, value):
        return M.describe_object(value)

    def test_scalars_are_classified_in_order(self):
        class MyInt(int):
            pass

        cases = [
            (None, "null"),
            (True, "System.Boolean:True"),
            (1, "System.Int32:1"),
            (-2 ** 31, "System.Int32:-2147483648"),
            (2 ** 31, "System.Int64:2147483648"),
            (1 << 40, "System.Int64:1099511627776"),
            (-2 ** 63, "System.Int64:-9223372036854775808"),
            (2 ** 63, "System.UInt64:9223372036854775808"),
            (MyInt(3), "System.Int32:3"),
            (0.5, "System.Double:0.5"),
            (Decimal("1.50"), "System.Decimal:1.50"),
            (DecimalTuple(1, (2, 5), -1), "System.Decimal:-2.5"),
            (uuid.UUID("00112233-4455-6677-8899-aabbccddeeff"), "System.Guid:00112233-4455-6677-8899-aabbccddeeff"),
            (timedelta(days=1, seconds=1), "System.TimeSpan:1.00:00:01"),
            (datetime(2000, 1, 2, 3, 4, 5, 6), "System.DateTime:2000-01-02T03:04:05.0000060"),
            (date(2000, 1, 2), "System.DateTime:2000-01-02T00:00:00.0000000"),
            (time(3, 4), "System.DateTime:0001-01-01T03:04:00.0000000"),
            (datetime(2000, 1, 2, 3, 4, tzinfo=tz(1)), "System.DateTimeOffset:2000-01-02T03:04:00.0000000+01:00"),
            (time(3, 4, tzinfo=tz(-2)), "System.DateTimeOffset:0001-01-01T03:04:00.0000000-02:00"),
            ("h\xe9\U0001F600", "System.String:h\xe9\U0001F600"),
            (b"ab", "System.Byte[]:6162"),
            (bytearray(b"\x01"), "System.Byte[]:01"),
            (memoryview(b"xyz")[1:], "System.Byte[]:797a"),
        ]
        for value, expected in cases:
            with self.subTest(value=value):
                self.assertEqual(self.describe(value), expected)

    # Managed code reads variant values through the read callbacks: a failure there
    # becomes a managed exception and comes back through the error bridge.
    def assertReadFails(self, value, text):
        with self.assertRaises(RuntimeError) as cm:
            self.describe(value)
        self.assertRegex(str(cm.exception), r"^Proxy error\([\w.]+\): ")
        self.assertTrue(str(cm.exception).rstrip("\n").endswith(text), str(cm.exception))
        self.assertEqual(M.echo_int32(1), 1)

    def test_integers_beyond_64_bits_are_refused(self):
        self.assertReadFails(2 ** 64, "TypeError: can't build integer value from 'int'")
        self.assertReadFails(-2 ** 63 - 1, "TypeError: can't build integer value from 'int'")

    def test_aware_datetime_outside_the_range(self):
        self.assertReadFails(datetime(1, 1, 1, 0, 30, tzinfo=tz(1)),
                             "OverflowError: value too large or too small for .Net DateTimeOffSet")

    def test_sequences(self):
        self.assertTrue(self.describe([1, "a", None]).endswith(":[1,a,null]"))
        self.assertTrue(self.describe((2.5, True)).endswith(":[2.5,True]"))

    def test_unknown_variant_types(self):
        Point = namedtuple("Point", "x y")

        class L(list):
            pass

        for value in (object(), {1}, {"a": 1}, Point(1, 2), L([1]), 1j):
            with self.subTest(value=value):
                with self.assertRaises(TypeError) as cm:
                    self.describe(value)
                self.assertEqual(str(cm.exception), "unknown variant type")

    def test_non_contiguous_buffer_as_object(self):
        self.assertReadFails(memoryview(b"abcdef")[::2], "BufferError: buffer is not contiguous")

    def test_echo_restores_the_python_kind(self):
        cases = [None, True, False, 7, -2 ** 63, 2 ** 64 - 1, 0.25, "text\u20ac", Decimal("-1.25"),
                 uuid.UUID(int=12345), timedelta(hours=-3), datetime(2001, 2, 3, 4, 5, 6, 7)]
        for value in cases:
            with self.subTest(value=value):
                result = M.echo_object(value)
                self.assertEqual(result, value)
                self.assertIs(type(result), type(value))
        self.assertEqual(M.echo_object(b"ab"), bytearray(b"ab"))
        self.assertEqual(M.echo_object(date(2001, 2, 3)), datetime(2001, 2, 3))
        aware = datetime(2001, 2, 3, 4, 5, tzinfo=tz(5))
        self.assertEqual(M.echo_object(aware).utcoffset(), timedelta(hours=5))
        self.assertEqual(M.echo_object(aware), aware)
        self.assertEqual(list(M.echo_object([1, 2])), [1, 2])

    def test_managed_objects_travel_as_handles(self):
        managed = probe.Collections.list_of_ints(3)
        text = self.describe(managed)
        self.assertTrue(text.startswith("System.Collections.Generic.List`1"), text)
        self.assertTrue(text.endswith(":[0,1,2]"), text)
        self.assertEqual(list(M.echo_object(managed)), [0, 1, 2])


class ErrorBridgeTests(unittest.TestCase):
    def test_managed_exceptions_become_runtime_errors(self):
        cases = [
            ("System.ArgumentException", "bad"),
            ("System.InvalidOperationException", "state \u20ac\U0001F600"),
            ("System.IO.IOException", ""),
            ("System.NotSupportedException", "line one\nline two"),
        ]
        for type_name, message in cases:
            with self.subTest(type_name=type_name):
                with self.assertRaises(RuntimeError) as cm:
                    M.throw(type_name, message)
                self.assertEqual(str(cm.exception), "Proxy error(%s): %s" % (type_name, message))
        # Nothing stays pending: the next call works.
        self.assertEqual(M.echo_int32(3), 3)

    def test_arguments_are_parsed_by_position_and_keyword(self):
        self.assertEqual(M.echo_int32(value=5), 5)
        self.assertEqual(M.decimal_from_bits(1, 0, hi=0, flags=1 << 16), Decimal("0.1"))
        with self.assertRaisesRegex(TypeError, r"required argument 'value'"):
            M.echo_int32()
        with self.assertRaisesRegex(TypeError, r"takes at most 1 argument \(2 given\)"):
            M.echo_int32(1, 2)


if __name__ == "__main__":
    unittest.main()
