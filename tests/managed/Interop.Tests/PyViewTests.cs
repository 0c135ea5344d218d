using System;
using System.IO;
using Orvane.WrpGen.Interop;
using Xunit;

namespace Orvane.Interop.Tests
{
    // Managed streams and collections over (fake) Python objects.
    public unsafe class PyViewTests
    {
        public PyViewTests() => FakePython.Install();

        [Fact]
        public void FileStreamWritesEverythingInPiecesAndReadsBack()
        {
            var file = new FakePython.FakeFile { MaxChunk = 3 };
            IntPtr obj = FakePython.New(file);
            var arg = new VariantArg { Type = 1, Value = obj };
            using (Stream stream = Collections.StreamFromArg(&arg)!)
            {
                byte[] data = new byte[10];
                for (int i = 0; i < data.Length; i++)
                    data[i] = (byte)i;
                stream.Write(data, 0, data.Length);
                Assert.Equal(data, file.Data.ToArray());
                Assert.Equal(10, stream.Length);
                stream.Position = 2;
                byte[] back = new byte[4];
                Assert.Equal(4, stream.Read(back, 0, 4));
                Assert.Equal(new byte[] { 2, 3, 4, 5 }, back);
            }
            Assert.True(file.Flushed, "disposing flushes the Python file");
            Assert.False(file.Closed, "a file passed in stays open for its owner");
        }

        [Fact]
        public void AFailingPythonWriteKeepsWhatWasWritten()
        {
            var file = new FakePython.FakeFile { FailWriteAfter = 4, MaxChunk = 3 };
            var stream = new PyFileStream(FakePython.New(file));
            var error = Assert.Throws<PythonException>(() => stream.Write(new byte[] { 1, 2, 3, 4, 5, 6 }));
            Assert.Equal("OSError: disk full\n", error.Message);
            Assert.Equal(new byte[] { 1, 2, 3, 4 }, file.Data.ToArray());
            Assert.Null(FakePython.PendingError);
        }

        [Fact]
        public void ClosedFilesAndOwnership()
        {
            var file = new FakePython.FakeFile { Closed = true };
            var stream = new PyFileStream(FakePython.New(file));
            Assert.Throws<ObjectDisposedException>(() => stream.Length);

            var owned = new FakePython.FakeFile();
            var owning = new PyFileStream(FakePython.New(owned), ownsFile: true);
            owning.Dispose();
            Assert.True(owned.Closed);
            Assert.Throws<ObjectDisposedException>(() => owning.WriteByte(1));
            Assert.Throws<NotSupportedException>(() => stream.SetLength(3));
        }

        [Fact]
        public void ResultsOfViewsGoBackAsTheirPythonObject()
        {
            var file = new FakePython.FakeFile();
            IntPtr obj = FakePython.New(file);
            PyCollectionArg result = default;
            Collections.WriteResult(&result, new PyFileStream(obj));
            Assert.Equal(1, result.Kind);
            Assert.Equal(obj, result.Value);

            var managed = new MemoryStream();
            Collections.WriteStreamResult(&result, managed);
            Assert.Equal(0, result.Kind);
            Assert.Same(managed, Handles.Target(result.Value));
            Assert.Equal(Handles.TypeKey(managed), result.TypeKey);
            Handles.Free(result.Value);

            Collections.WriteResult(&result, null);
            Assert.Equal(IntPtr.Zero, result.Value);
            var none = new VariantArg { Type = 0, Value = IntPtr.Zero };
            Assert.Null(Collections.ListFromArg(&none));
            Assert.Null(Collections.StreamFromArg(&none));
        }

        [Fact]
        public void ManagedArgumentsPassThroughAndTypedArraysConvert()
        {
            var list = new System.Collections.ArrayList { 1 };
            IntPtr h = Handles.Alloc(list);
            var arg = new VariantArg { Type = 0, Value = h };
            Assert.Same(list, Collections.ListFromArg(&arg));
            Assert.Same(list, Collections.ArrayListFromArg(&arg));
            Handles.Free(h);
            Assert.Equal(new long[] { 1, 2 }, new[] { (long)Elements.Coerce(1, typeof(long))!, (long)Elements.Coerce(2L, typeof(long))! });
            Assert.Throws<OverflowException>(() => Elements.Coerce(300, typeof(byte)));
            Assert.Equal(1.5, Elements.Coerce(1.5, typeof(int)));
        }
    }
}
