using System;
using System.Collections;
using System.Collections.Generic;
using System.Globalization;
using System.IO;
using System.Linq;
using System.Threading;

namespace Orvane.Probe
{
    /// <summary>Managed collections, enumerables and streams handed to Python, and
    /// members that take Python values where managed code expects them.</summary>
    public static class Collections
    {
        public static IList ListOfInts(int n) => Enumerable.Range(0, n).ToList();

        public static ArrayList ArrayListOf(int n) => new ArrayList(Enumerable.Range(0, n).ToArray());

        public static int[] IntArray(int n) => Enumerable.Range(0, n).ToArray();

        public static string[] StringArray(string[] items) => items;

        /// <summary>Enumerates <paramref name="actual"/> items but reports <paramref name="reported"/>.</summary>
        public static ICollection Miscounted(int actual, int reported) => new MiscountedCollection(actual, reported);

        public static IEnumerable Range(int n) => new RangeEnumerable(n);

        public static IEnumerator RangeEnumerator(int n) => new RangeEnumerable(n).GetEnumerator();

        public static IDisposable NewDisposable() => new CountingDisposable();

        /// <summary>How often the object from <see cref="NewDisposable"/> was disposed; -1 for another object.</summary>
        public static int DisposeCount(IDisposable d) => d is CountingDisposable c ? c.Count : -1;

        public static Stream MemoryStreamOf(byte[] data) => new MemoryStream(data ?? Array.Empty<byte>(), writable: true);

        public static Stream NonSeekableStreamOf(byte[] data) => new NonSeekableStream(data ?? Array.Empty<byte>());

        public static CollectionBase NewCollectionBase(int n) => new IntCollection(n);

        public static ReadOnlyCollectionBase NewReadOnlyCollectionBase(int n) => new ReadOnlyIntCollection(n);

        public static int CountOf(ICollection c) => c.Count;

        public static string JoinList(IList l)
        {
            var parts = new List<string>(l.Count);
            for (int i = 0; i < l.Count; i++)
                parts.Add(Invariant(l[i]));
            return string.Join(",", parts);
        }

        public static string JoinEnumerable(IEnumerable e) => string.Join(",", e.Cast<object>().Select(Invariant));

        public static string JoinEnumerator(IEnumerator e)
        {
            var parts = new List<string>();
            while (e.MoveNext())
                parts.Add(Invariant(e.Current));
            return string.Join(",", parts);
        }

        public static void AppendToList(IList l, object item) => l.Add(item);

        /// <summary>Reads from the current position until a read returns 0 bytes. A seekable
        /// stream is asked for its remaining length first (to size the result), so its
        /// length and position are exercised too.</summary>
        public static byte[] ReadAll(Stream s)
        {
            if (!s.CanRead)
                throw new NotSupportedException("Stream does not support reading.");
            int capacity = 0;
            if (s.CanSeek)
                capacity = (int)Math.Clamp(s.Length - s.Position, 0, int.MaxValue / 2);
            var result = new MemoryStream(capacity);
            var buffer = new byte[64 * 1024];
            int n;
            while ((n = s.Read(buffer, 0, buffer.Length)) > 0)
                result.Write(buffer, 0, n);
            return result.ToArray();
        }

        /// <summary>Writes <paramref name="total"/> bytes of the pattern i % 251 in pieces of
        /// <paramref name="chunk"/>, flushes, and returns the position (for a stream that
        /// cannot seek, the count written).</summary>
        public static long WriteChunks(Stream s, int total, int chunk)
        {
            if (chunk <= 0)
                throw new ArgumentOutOfRangeException(nameof(chunk));
            var buffer = new byte[Math.Min(chunk, Math.Max(total, 1))];
            int written = 0;
            while (written < total)
            {
                int n = Math.Min(buffer.Length, total - written);
                for (int k = 0; k < n; k++)
                    buffer[k] = (byte)((written + k) % 251);
                s.Write(buffer, 0, n);
                written += n;
            }
            s.Flush();
            return s.CanSeek ? s.Position : written;
        }

        public static int SumTyped(IList<int> l)
        {
            int sum = 0;
            for (int i = 0; i < l.Count; i++)
                sum += l[i];
            return sum;
        }

        public static int SumArray(int[] a) => a.Sum();

        public static string JoinTyped(IEnumerable<string> e) => string.Join(",", e);

        private static string Invariant(object item) => Convert.ToString(item, CultureInfo.InvariantCulture) ?? "";

        private sealed class MiscountedCollection : ICollection
        {
            private readonly int _actual, _reported;
            public MiscountedCollection(int actual, int reported) { _actual = actual; _reported = reported; }
            public int Count => _reported;
            public bool IsSynchronized => false;
            public object SyncRoot => this;
            public void CopyTo(Array array, int index)
            {
                for (int i = 0; i < _actual; i++)
                    array.SetValue(i, index + i);
            }
            public IEnumerator GetEnumerator() => Enumerable.Range(0, _actual).GetEnumerator();
        }

        private sealed class RangeEnumerable : IEnumerable
        {
            private readonly int _n;
            public RangeEnumerable(int n) { _n = n; }
            public IEnumerator GetEnumerator()
            {
                for (int i = 0; i < _n; i++)
                    yield return i;
            }
        }

        private sealed class IntCollection : CollectionBase
        {
            public IntCollection(int n)
            {
                for (int i = 0; i < n; i++)
                    InnerList.Add(i);
            }
        }

        private sealed class ReadOnlyIntCollection : ReadOnlyCollectionBase
        {
            public ReadOnlyIntCollection(int n)
            {
                for (int i = 0; i < n; i++)
                    InnerList.Add(i);
            }
        }

        /// <summary>A read/write stream over a buffer that refuses every seek.</summary>
        private sealed class NonSeekableStream : Stream
        {
            private readonly MemoryStream _inner;
            public NonSeekableStream(byte[] data) { _inner = new MemoryStream(data, writable: false); }
            public override bool CanRead => true;
            public override bool CanSeek => false;
            public override bool CanWrite => false;
            public override long Length => throw new NotSupportedException("Stream does not support seeking.");
            public override long Position
            {
                get => throw new NotSupportedException("Stream does not support seeking.");
                set => throw new NotSupportedException("Stream does not support seeking.");
            }
            public override void Flush() { }
            public override int Read(byte[] buffer, int offset, int count) => _inner.Read(buffer, offset, count);
            public override long Seek(long offset, SeekOrigin origin) => throw new NotSupportedException("Stream does not support seeking.");
            public override void SetLength(long value) => throw new NotSupportedException("Stream does not support seeking.");
            public override void Write(byte[] buffer, int offset, int count) => throw new NotSupportedException("Stream does not support writing.");
        }
    }

    /// <summary>Counts its own disposals and the instances still alive (finalizer-tracked).</summary>
    internal sealed class CountingDisposable : IDisposable
    {
        private static long s_alive;
        private int _count;

        public CountingDisposable() { Interlocked.Increment(ref s_alive); }
        ~CountingDisposable() { Interlocked.Decrement(ref s_alive); }

        public int Count => _count;
        public void Dispose() => _count++;
        internal static long Alive => Interlocked.Read(ref s_alive);
    }
}
