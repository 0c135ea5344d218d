using System;
using Orvane.WrpGen.Interop;
using Xunit;

namespace Orvane.Interop.Tests
{
    public class DecimalsTests
    {
        [Fact]
        public void DecodesMantissaSignAndScale()
        {
            Assert.Equal(-123.45m, Decimals.ToDecimal(new DecimalArg { Lo = 12345, Flags = 0x80020000 }));
            Assert.Equal(decimal.MaxValue, Decimals.ToDecimal(new DecimalArg { Lo = uint.MaxValue, Mid = uint.MaxValue, Hi = uint.MaxValue }));
            Assert.Equal(0.0000000000000000000000000001m, Decimals.ToDecimal(new DecimalArg { Lo = 1, Flags = 28u << 16 }));
        }

        [Fact]
        public void DoubleFormUsesTheRuntimeConversion()
        {
            foreach (double value in new[] { 0.1, -2.5e-10, 123456789.125, Math.Pow(2, 96) - Math.Pow(2, 43), -0.0 })
            {
                ulong bits = (ulong)BitConverter.DoubleToInt64Bits(value);
                var arg = new DecimalArg { Lo = (uint)bits, Mid = (uint)(bits >> 32), Flags = Decimals.DoubleForm };
                Assert.Equal((decimal)value, Decimals.ToDecimal(arg));
            }
        }

        [Fact]
        public void RefusesMalformedFlags()
        {
            Assert.Throws<ArgumentException>(() => Decimals.ToDecimal(new DecimalArg { Lo = 1, Flags = 29u << 16 }));
            Assert.Throws<ArgumentException>(() => Decimals.ToDecimal(new DecimalArg { Lo = 1, Flags = 0x80000001 }));
        }

        [Fact]
        public void EncodesWhatItDecodes()
        {
            foreach (decimal value in new[] { 0m, -0.5m, 1.000m, decimal.MinValue, 79228162514264.337593543950335m })
            {
                DecimalArg arg = Decimals.FromDecimal(value);
                decimal back = Decimals.ToDecimal(arg);
                Assert.Equal(value, back);
                Assert.Equal(value.Scale, back.Scale);
            }
            DecimalArg words = Decimals.FromDecimal(-123.45m);
            Assert.Equal(12345u, words.Lo);
            Assert.Equal(0x80020000u, words.Flags);
        }
    }

    public unsafe class GuidsAndValueArgsTests
    {
        private static readonly byte[] ManagedOrder =
            { 0x33, 0x22, 0x11, 0x00, 0x55, 0x44, 0x77, 0x66, 0x88, 0x99, 0xaa, 0xbb, 0xcc, 0xdd, 0xee, 0xff };

        [Fact]
        public void GuidBytesAreInMemoryOrder()
        {
            var guid = new Guid("00112233-4455-6677-8899-aabbccddeeff");
            fixed (byte* bytes = ManagedOrder)
                Assert.Equal(guid, Guids.FromBytes(bytes));
            byte* written = stackalloc byte[16];
            Guids.ToBytes(guid, written);
            Assert.Equal(ManagedOrder, new ReadOnlySpan<byte>(written, 16).ToArray());
        }

        [Fact]
        public void NullableArguments()
        {
            int storage = 5;
            var arg = new PyNullableArg { HasValue = 0, Value = &storage };
            Assert.Null(Nullables.FromArg<int>(&arg));
            arg.HasValue = 1;
            Assert.Equal(5, Nullables.FromArg<int>(&arg));
        }

        [Fact]
        public void ByRefStorageCarriesValuesBothWays()
        {
            long storage = 7;
            var arg = new PyParamByRef { Value = &storage };
            Assert.Equal(7, ByRefs.In<long>(&arg));
            ByRefs.Out(&arg, 42L);
            Assert.Equal(42, storage);
            PyParamByRef* empty = stackalloc PyParamByRef[1];
            *empty = default;
            Assert.Equal(0, ByRefs.In<long>(empty));
            Assert.Throws<ArgumentException>(() => ByRefs.Out(empty, 1L));
        }
    }
}
