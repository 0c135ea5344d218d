using System;
using System.Runtime.CompilerServices;
using System.Runtime.InteropServices;
using Orvane.WrpGen.Interop;
using Xunit;

namespace Orvane.Interop.Tests
{
    // The only tests that touch the process-wide native tables: one class, so
    // xunit runs them one after another.
    public unsafe class CallbackSlotsTests
    {
        private static DateTimeArg s_lastDateTime;
        private static DecimalArg s_lastDecimal;
        private static long s_lastTicks;
        private static readonly IntPtr Marker = new IntPtr(0x1234);

        [UnmanagedCallersOnly]
        private static IntPtr WriteDateTime(DateTimeArg* arg)
        {
            s_lastDateTime = *arg;
            return Marker;
        }

        [UnmanagedCallersOnly]
        private static IntPtr WriteDecimal(DecimalArg* arg)
        {
            s_lastDecimal = *arg;
            return Marker;
        }

        [UnmanagedCallersOnly]
        private static IntPtr WriteTimeDelta(long ticks)
        {
            s_lastTicks = ticks;
            return Marker;
        }

        [UnmanagedCallersOnly]
        private static int ReadAwareTime(IntPtr obj, DateTimeArg* arg)
        {
            arg->TicksAndKind = (ulong)TimeSpan.TicksPerHour;
            arg->Offset = -TimeSpan.TicksPerHour * 2;
            return 2;
        }

        [Fact]
        public void ResultsGoThroughTheirWriteSlots()
        {
            IntPtr* read = stackalloc IntPtr[11];
            IntPtr* write = stackalloc IntPtr[13];
            IntPtr** tables = stackalloc IntPtr*[2];
            for (int i = 0; i < 13; i++)
                write[i] = IntPtr.Zero;
            for (int i = 0; i < 11; i++)
                read[i] = IntPtr.Zero;
            write[7] = (IntPtr)(delegate* unmanaged<DecimalArg*, IntPtr>)&WriteDecimal;
            write[9] = (IntPtr)(delegate* unmanaged<DateTimeArg*, IntPtr>)&WriteDateTime;
            write[10] = (IntPtr)(delegate* unmanaged<long, IntPtr>)&WriteTimeDelta;
            read[8] = (IntPtr)(delegate* unmanaged<IntPtr, DateTimeArg*, int>)&ReadAwareTime;
            tables[0] = read;
            tables[1] = write;
            ExchangeHost.StaticTables = tables;
            try
            {
                var value = new DateTimeOffset(2020, 1, 2, 3, 4, 5, TimeSpan.FromHours(-3));
                Assert.Equal(Marker, DateTimes.ToPy(value));
                Assert.Equal((ulong)value.Ticks, s_lastDateTime.TicksAndKind);
                Assert.Equal(TimeSpan.FromHours(-3).Ticks, s_lastDateTime.Offset);

                Assert.Equal(Marker, Decimals.ToPy(-1.5m));
                Assert.Equal(15u, s_lastDecimal.Lo);
                Assert.Equal(0x80010000u, s_lastDecimal.Flags);

                Assert.Equal(Marker, DateTimes.ToPy(TimeSpan.FromDays(-1)));
                Assert.Equal(-TimeSpan.TicksPerDay, s_lastTicks);

                object time = DateTimes.ReadVariant(11, IntPtr.Zero);
                Assert.Equal(new DateTimeOffset(TimeSpan.TicksPerHour, TimeSpan.FromHours(-2)), time);

                // Slot 8 of the write table was left empty.
                Assert.Throws<InvalidOperationException>(() => DateTimes.ToPy(DateTime.UnixEpoch));
                Assert.Throws<ArgumentException>(() => DateTimes.ReadVariant(12, IntPtr.Zero));
            }
            finally
            {
                ExchangeHost.StaticTables = null;
            }
            Assert.Throws<InvalidOperationException>(() => Guids.ToPy(Guid.Empty));
        }
    }
}
