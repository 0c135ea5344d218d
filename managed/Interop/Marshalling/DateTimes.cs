using System;
using System.Runtime.InteropServices;

namespace Orvane.WrpGen.Interop
{
    /// <summary>
    /// A managed DateTime or DateTimeOffset as native code exchanges it
    /// (marshal/datetime.h): ticks in the low 62 bits of <see cref="TicksAndKind"/>,
    /// the kind in the top two (0 unspecified, 1 UTC, 2 local), and an offset
    /// from UTC in ticks. For a DateTimeOffset the ticks are the clock time at
    /// the offset.
    /// </summary>
    [StructLayout(LayoutKind.Sequential)]
    public struct DateTimeArg
    {
        public ulong TicksAndKind;
        public long Offset;
    }

    /// <summary>Dates, times and TimeSpans across the boundary.</summary>
    public static unsafe class DateTimes
    {
        private const ulong TicksMask = (1UL << 62) - 1;
        private const int KindShift = 62;

        /// <summary>Results of the variant readers: which layout they wrote.</summary>
        public const int ReadAsDateTime = 1, ReadAsDateTimeOffset = 2;

        // Read and write table slots (marshal/callback_tables.cpp).
        private const int ReadDateTimeSlot = 6, ReadDateSlot = 7, ReadTimeSlot = 8, ReadTimeDeltaSlot = 9;
        private const int WriteDateTimeSlot = 8, WriteDateTimeOffsetSlot = 9, WriteTimeDeltaSlot = 10;

        public static DateTime ToDateTime(in DateTimeArg arg) =>
            new DateTime(Ticks(arg.TicksAndKind), Kind(arg.TicksAndKind));

        /// <summary>
        /// A naive Python value arrives as local time (kind 2) and takes the
        /// local zone's offset; any other kind carries its own offset, which
        /// .NET requires in whole minutes within ±14 hours.
        /// </summary>
        public static DateTimeOffset ToDateTimeOffset(in DateTimeArg arg)
        {
            long ticks = Ticks(arg.TicksAndKind);
            if (Kind(arg.TicksAndKind) == DateTimeKind.Local)
                return new DateTimeOffset(new DateTime(ticks, DateTimeKind.Local));
            return new DateTimeOffset(ticks, new TimeSpan(arg.Offset));
        }

        /// <summary>A local value carries the local zone's offset at that time, for an aware Python result.</summary>
        public static DateTimeArg FromDateTime(DateTime value)
        {
            ulong kind = value.Kind switch
            {
                DateTimeKind.Utc => 1UL,
                DateTimeKind.Local => 2UL,
                _ => 0UL,
            };
            long offset = value.Kind == DateTimeKind.Local ? TimeZoneInfo.Local.GetUtcOffset(value).Ticks : 0;
            return new DateTimeArg { TicksAndKind = (ulong)value.Ticks | (kind << KindShift), Offset = offset };
        }

        public static DateTimeArg FromDateTimeOffset(DateTimeOffset value) =>
            new DateTimeArg { TicksAndKind = (ulong)value.Ticks, Offset = value.Offset.Ticks };

        /// <summary>The value a variant reader wrote, by its result code.</summary>
        public static object FromVariantRead(int code, in DateTimeArg arg) => code switch
        {
            // Boxed one by one: a DateTime would otherwise convert to the
            // switch's common type, DateTimeOffset.
            ReadAsDateTime => (object)ToDateTime(arg),
            ReadAsDateTimeOffset => (object)ToDateTimeOffset(arg),
            _ => throw new ArgumentException($"unknown date/time layout code {code}", nameof(code)),
        };

        /// <summary>
        /// Reads a variant's Python date (tag 10), datetime (tag 9) or time
        /// (tag 11): a DateTime, or a DateTimeOffset for an aware value.
        /// </summary>
        public static object ReadVariant(int tag, IntPtr obj)
        {
            int slot = tag switch
            {
                9 => ReadDateTimeSlot,
                10 => ReadDateSlot,
                11 => ReadTimeSlot,
                _ => throw new ArgumentException($"variant tag {tag} is not a date or time", nameof(tag)),
            };
            DateTimeArg arg;
            int code = ((delegate* unmanaged<IntPtr, DateTimeArg*, int>)CallbackSlots.Read(slot))(obj, &arg);
            if (code == 0)
                throw ErrorBridge.FromPython("can't read the Python date or time");
            return FromVariantRead(code, arg);
        }

        /// <summary>Reads a variant's Python timedelta (tag 12).</summary>
        public static TimeSpan ReadTimeSpan(IntPtr obj)
        {
            long ticks;
            if (((delegate* unmanaged<IntPtr, long*, int>)CallbackSlots.Read(ReadTimeDeltaSlot))(obj, &ticks) == 0)
                throw ErrorBridge.FromPython("can't read the Python timedelta");
            return new TimeSpan(ticks);
        }

        /// <summary>A new Python datetime; 0 with the Python error pending on failure.</summary>
        public static IntPtr ToPy(DateTime value)
        {
            DateTimeArg arg = FromDateTime(value);
            return ((delegate* unmanaged<DateTimeArg*, IntPtr>)CallbackSlots.Write(WriteDateTimeSlot))(&arg);
        }

        /// <summary>A new aware Python datetime; 0 with the Python error pending on failure.</summary>
        public static IntPtr ToPy(DateTimeOffset value)
        {
            DateTimeArg arg = FromDateTimeOffset(value);
            return ((delegate* unmanaged<DateTimeArg*, IntPtr>)CallbackSlots.Write(WriteDateTimeOffsetSlot))(&arg);
        }

        /// <summary>A new Python timedelta (sub-microsecond ticks are dropped); 0 with the error pending.</summary>
        public static IntPtr ToPy(TimeSpan value) =>
            ((delegate* unmanaged<long, IntPtr>)CallbackSlots.Write(WriteTimeDeltaSlot))(value.Ticks);

        private static long Ticks(ulong ticksAndKind)
        {
            ulong ticks = ticksAndKind & TicksMask;
            if (ticks > (ulong)DateTime.MaxValue.Ticks)
                throw new ArgumentException($"{ticks} ticks lie beyond the DateTime range");
            return (long)ticks;
        }

        private static DateTimeKind Kind(ulong ticksAndKind) => (ticksAndKind >> KindShift) switch
        {
            0 => DateTimeKind.Unspecified,
            1 => DateTimeKind.Utc,
            2 => DateTimeKind.Local,
            _ => throw new ArgumentException("unknown DateTime kind 3"),
        };
    }
}
