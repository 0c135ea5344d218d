using System;
using System.Collections;
using System.Globalization;
using System.Linq;
using System.Reflection;
using System.Text;

namespace Orvane.Probe
{
    /// <summary>Echoes and inspects values of every marshalled kind.</summary>
    public static class Marshal
    {
        public static bool EchoBool(bool value) => value;
        public static sbyte EchoSByte(sbyte value) => value;
        public static byte EchoByte(byte value) => value;
        public static short EchoInt16(short value) => value;
        public static ushort EchoUInt16(ushort value) => value;
        public static int EchoInt32(int value) => value;
        public static uint EchoUInt32(uint value) => value;
        public static long EchoInt64(long value) => value;
        public static ulong EchoUInt64(ulong value) => value;
        public static float EchoSingle(float value) => value;
        public static double EchoDouble(double value) => value;
        public static char EchoChar(char value) => value;
        public static string EchoString(string value) => value;
        public static byte[] EchoBytes(byte[] value) => value;
        public static decimal EchoDecimal(decimal value) => value;
        public static DateTime EchoDateTime(DateTime value) => value;
        public static DateTimeOffset EchoDateTimeOffset(DateTimeOffset value) => value;
        public static TimeSpan EchoTimeSpan(TimeSpan value) => value;
        public static Guid EchoGuid(Guid value) => value;
        public static int? EchoNullableInt32(int? value) => value;
        public static double? EchoNullableDouble(double? value) => value;
        public static object EchoObject(object value) => value;

        /// <summary>"FullTypeName:value" as managed code sees the argument; "null" for null.</summary>
        public static string DescribeObject(object value)
        {
            if (value is null)
                return "null";
            return value.GetType().FullName + ":" + Format(value);
        }

        /// <summary>Ticks with the kind in the top two bits, as the value is stored.</summary>
        public static ulong DateTimeRaw(DateTime value) =>
            (ulong)value.Ticks | ((ulong)value.Kind << 62);

        /// <summary>"ticks|kind|offsetTicks" of the clock time and its offset.</summary>
        public static string DateTimeOffsetRaw(DateTimeOffset value) =>
            string.Join("|", value.Ticks.ToString(CultureInfo.InvariantCulture),
                        ((int)value.DateTime.Kind).ToString(CultureInfo.InvariantCulture),
                        value.Offset.Ticks.ToString(CultureInfo.InvariantCulture));

        public static long TimeSpanTicks(TimeSpan value) => value.Ticks;

        /// <summary>The four words lo,mid,hi,flags in lower-case hex.</summary>
        public static string DecimalBits(decimal value)
        {
            int[] bits = decimal.GetBits(value);
            return string.Join(",", bits.Select(b => ((uint)b).ToString("x", CultureInfo.InvariantCulture)));
        }

        /// <summary>The 16 bytes in memory order, lower-case hex.</summary>
        public static string GuidBytes(Guid value) => Hex(value.ToByteArray());

        /// <summary>A DateTime from ticks with kind bits. For the local kind the ticks are
        /// the clock time at <paramref name="offsetTicks"/>: the result is that instant in
        /// the process's local zone (a DateTime carries no offset of its own).</summary>
        public static DateTime DateTimeFromRaw(ulong raw, long offsetTicks)
        {
            long ticks = (long)(raw & 0x3FFF_FFFF_FFFF_FFFFUL);
            var kind = (DateTimeKind)(raw >> 62);
            if (kind == DateTimeKind.Local)
                return new DateTimeOffset(ticks, new TimeSpan(offsetTicks)).LocalDateTime;
            return new DateTime(ticks, kind);
        }

        public static DateTimeOffset DateTimeOffsetFromParts(long ticks, long offsetTicks) =>
            new DateTimeOffset(ticks, new TimeSpan(offsetTicks));

        public static TimeSpan TimeSpanFromTicks(long ticks) => new TimeSpan(ticks);

        public static decimal DecimalFromBits(int lo, int mid, int hi, int flags) =>
            new decimal(new[] { lo, mid, hi, flags });

        public static void OutInt32(out int value) => value = 42;
        public static void RefInt32(ref int value) => value += 1;
        public static void RefString(ref string value) => value += "!";

        /// <summary>Throws a new exception of the named type with the message.</summary>
        public static void Throw(string typeName, string message)
        {
            Type type = Type.GetType(typeName, throwOnError: false)
                        ?? AppDomain.CurrentDomain.GetAssemblies()
                               .Select(a => a.GetType(typeName, throwOnError: false))
                               .FirstOrDefault(t => t != null);
            if (type is null || !typeof(Exception).IsAssignableFrom(type))
                throw new ArgumentException("not an exception type: " + typeName, nameof(typeName));
            ConstructorInfo ctor = type.GetConstructor(new[] { typeof(string) })
                ?? throw new ArgumentException("no (string) constructor: " + typeName, nameof(typeName));
            throw (Exception)ctor.Invoke(new object[] { message });
        }

        internal static string Format(object value)
        {
            switch (value)
            {
                case null: return "null";
                case string s: return s;
                case char c: return c.ToString();
                case bool b: return b ? "True" : "False";
                case byte[] bytes: return Hex(bytes);
                case DateTime dt: return dt.ToString("o", CultureInfo.InvariantCulture);
                case DateTimeOffset dto: return dto.ToString("o", CultureInfo.InvariantCulture);
                case TimeSpan ts: return ts.ToString("c", CultureInfo.InvariantCulture);
                case IFormattable f: return f.ToString(null, CultureInfo.InvariantCulture);
                case IEnumerable e: return "[" + string.Join(",", e.Cast<object>().Select(Format)) + "]";
                default: return value.ToString() ?? "";
            }
        }

        private static string Hex(byte[] bytes)
        {
            var sb = new StringBuilder(bytes.Length * 2);
            foreach (byte b in bytes)
                sb.Append(b.ToString("x2", CultureInfo.InvariantCulture));
            return sb.ToString();
        }
    }
}
