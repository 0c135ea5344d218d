using System;
using System.Collections.Generic;
using System.Linq;
using System.Text;
using System.Threading.Tasks;
using Orvane.WrpGen.Interop;
using Xunit;

namespace Orvane.Interop.Tests
{
    public unsafe class StringsTests
    {
        private static string? Read(byte[] latin1)
        {
            fixed (byte* data = latin1)
            {
                var arg = new PyStringArg { Length = latin1.Length, CharSize = 1, Data = data };
                return Strings.FromArg(&arg);
            }
        }

        // Short arguments come from a table of recent strings: whatever shares a slot, each
        // read must give back exactly its own text, and a repeated one the same string object.
        [Fact]
        public void RecentShortStringsAreReusedAndNeverConfused()
        {
            var texts = new List<string>();
            for (int length = 1; length <= 20; length++)
                for (int c = 0; c < 40; c++)
                    texts.Add(new string((char)('a' + c % 26), length - 1) + (char)(0xC0 + c));
            texts.Add("ab");
            texts.Add("ba");
            foreach (var text in texts.Concat(texts))
                Assert.Equal(text, Read(Encoding.Latin1.GetBytes(text)));
            var again = Read(Encoding.Latin1.GetBytes("name"));
            Assert.Same(again, Read(Encoding.Latin1.GetBytes("name")));
            // Only copies of the bytes are kept: changing the caller's buffer changes nothing.
            var buffer = Encoding.Latin1.GetBytes("key1");
            var first = Read(buffer);
            buffer[3] = (byte)'2';
            Assert.Equal("key1", first);
            Assert.Equal("key2", Read(buffer));
        }

        [Fact]
        public void ThreadsSharingTheTableReadTheirOwnText()
        {
            Parallel.For(0, 8, worker =>
            {
                for (int i = 0; i < 20_000; i++)
                {
                    var text = $"w{worker}-{i % 97}";
                    Assert.Equal(text, Read(Encoding.Latin1.GetBytes(text)));
                }
            });
        }

        [Fact]
        public void NoneEmptyAndWideStringsKeepTheirMeaning()
        {
            var none = new PyStringArg { Length = -1 };
            Assert.Null(Strings.FromArg(&none));
            Assert.Equal(string.Empty, Read(Array.Empty<byte>()));
            var long40 = new string('x', 40);
            Assert.Equal(long40, Read(Encoding.Latin1.GetBytes(long40)));
            fixed (char* wide = "ж€")
            {
                var arg = new PyStringArg { Length = 2, CharSize = 2, Data = wide };
                Assert.Equal("ж€", Strings.FromArg(&arg));
            }
        }
    }
}
