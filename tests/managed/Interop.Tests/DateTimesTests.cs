using System;
using Orvane.WrpGen.Interop;
using Xunit;

namespace Orvane.Interop.Tests
{
    public class DateTimesTests
    {
        private const ulong Utc = 1UL << 62, Local = 2UL << 62;
        private static readonly long Ticks2021 = new DateTime(2021, 7, 8, 9, 10, 11).Ticks;

        [Fact]
        public void DecodesEachKind()
        {
            DateTime plain = DateTimes.ToDateTime(new DateTimeArg { TicksAndKind = (ulong)Ticks2021 });
            Assert.Equal(Ticks2021, plain.Ticks);
            Assert.Equal(DateTimeKind.Unspecified, plain.Kind);
            Assert.Equal(DateTimeKind.Utc, DateTimes.ToDateTime(new DateTimeArg { TicksAndKind = (ulong)Ticks2021 | Utc }).Kind);
            Assert.Equal(DateTimeKind.Local, DateTimes.ToDateTime(new DateTimeArg { TicksAndKind = (ulong)Ticks2021 | Local }).Kind);
            Assert.Equal(DateTime.MaxValue, DateTimes.ToDateTime(new DateTimeArg { TicksAndKind = (ulong)DateTime.MaxValue.Ticks }));
        }

        [Fact]
        public void RefusesMalformedValues()
        {
            Assert.Throws<ArgumentException>(() => DateTimes.ToDateTime(new DateTimeArg { TicksAndKind = 3UL << 62 }));
            Assert.Throws<ArgumentException>(() =>
                DateTimes.ToDateTime(new DateTimeArg { TicksAndKind = (ulong)DateTime.MaxValue.Ticks + 1 }));
        }

        [Fact]
        public void EncodesKindAndLocalOffset()
        {
            var utc = new DateTime(Ticks2021, DateTimeKind.Utc);
            DateTimeArg arg = DateTimes.FromDateTime(utc);
            Assert.Equal((ulong)Ticks2021 | Utc, arg.TicksAndKind);
            Assert.Equal(0, arg.Offset);
            Assert.Equal(utc, DateTimes.ToDateTime(arg));

            var local = new DateTime(Ticks2021, DateTimeKind.Local);
            arg = DateTimes.FromDateTime(local);
            Assert.Equal((ulong)Ticks2021 | Local, arg.TicksAndKind);
            Assert.Equal(TimeZoneInfo.Local.GetUtcOffset(local).Ticks, arg.Offset);
        }

        [Fact]
        public void DateTimeOffsetKeepsClockTimeAndOffset()
        {
            var offset = TimeSpan.FromMinutes(-330);
            var value = new DateTimeOffset(Ticks2021, offset);
            DateTimeArg arg = DateTimes.FromDateTimeOffset(value);
            Assert.Equal((ulong)Ticks2021, arg.TicksAndKind);
            Assert.Equal(offset.Ticks, arg.Offset);
            DateTimeOffset back = DateTimes.ToDateTimeOffset(arg);
            Assert.Equal(value, back);
            Assert.Equal(offset, back.Offset);
        }

        [Fact]
        public void NaiveValuesBecomeLocalTime()
        {
            DateTimeOffset value = DateTimes.ToDateTimeOffset(new DateTimeArg { TicksAndKind = (ulong)Ticks2021 | Local });
            Assert.Equal(Ticks2021, value.Ticks);
            Assert.Equal(TimeZoneInfo.Local.GetUtcOffset(new DateTime(Ticks2021, DateTimeKind.Local)), value.Offset);
        }

        [Fact]
        public void OffsetsDotNetCannotHoldAreRefused()
        {
            // Seconds in the offset, and a UTC time before year 1.
            Assert.Throws<ArgumentException>(() =>
                DateTimes.ToDateTimeOffset(new DateTimeArg { TicksAndKind = (ulong)Ticks2021, Offset = TimeSpan.TicksPerSecond * 30 }));
            Assert.ThrowsAny<ArgumentException>(() =>
                DateTimes.ToDateTimeOffset(new DateTimeArg { TicksAndKind = (ulong)TimeSpan.TicksPerMinute * 30, Offset = TimeSpan.TicksPerHour }));
        }

        [Fact]
        public void VariantResultCodesPickTheLayout()
        {
            var arg = new DateTimeArg { TicksAndKind = (ulong)Ticks2021, Offset = TimeSpan.TicksPerHour };
            Assert.Equal(new DateTime(Ticks2021), Assert.IsType<DateTime>(DateTimes.FromVariantRead(DateTimes.ReadAsDateTime, arg)));
            Assert.Equal(new DateTimeOffset(Ticks2021, TimeSpan.FromHours(1)),
                Assert.IsType<DateTimeOffset>(DateTimes.FromVariantRead(DateTimes.ReadAsDateTimeOffset, arg)));
            Assert.Throws<ArgumentException>(() => DateTimes.FromVariantRead(0, arg));
        }
    }
}
