using System;
using System.IO;

namespace Orvane.WrpGen.Interop
{
    /// <summary>
    /// A Python binary file object (io.RawIOBase, io.BufferedIOBase,
    /// orvane.pyio.BufferStream) seen as a managed <see cref="Stream"/>
    /// through the raw-I/O callback table. The native side hands the file a
    /// copy of each buffer, so a file object that keeps what it was given
    /// never reaches managed memory after the call; a count it reports outside
    /// [0, requested] fails the call on the native side.
    /// A failing Python call throws a <see cref="PythonException"/> carrying
    /// the Python error text; bytes the file accepted before stay written.
    /// Disposing flushes the file; it closes the file only when the stream
    /// owns it (a file passed in by a Python caller stays open for the caller).
    /// </summary>
    public sealed unsafe class PyFileStream : Stream, IPyObjectView
    {
        private readonly PyObjectHandle _file;
        private readonly bool _ownsFile;
        private bool _disposed;

        public PyFileStream(IntPtr file, bool ownsFile = false)
        {
            _file = new PyObjectHandle(file);
            _ownsFile = ownsFile;
        }

        public IntPtr PyObject => _file.Object;

        private IntPtr File
        {
            get
            {
                if (_disposed)
                    throw new ObjectDisposedException(nameof(PyFileStream), "Cannot access a closed Stream.");
                return _file.Object;
            }
        }

        private static bool Capability(int answer, string what)
        {
            if (answer < 0)
                throw PyFailures.Error($"can't ask the Python file object whether it is {what}");
            return answer != 0;
        }

        public override bool CanRead => !_disposed && Capability(PyCallbacks.RawReadable(_file.Object), "readable");
        public override bool CanWrite => !_disposed && Capability(PyCallbacks.RawWritable(_file.Object), "writable");
        public override bool CanSeek => !_disposed && Capability(PyCallbacks.RawSeekable(_file.Object), "seekable");

        public override long Length
        {
            get
            {
                long length = PyCallbacks.RawLength(File);
                switch (length)
                {
                    case -1: throw PyFailures.Error("can't compute the length of the Python file object");
                    case -2: throw new NotSupportedException("Stream does not support seeking.");
                    case -3: throw new ObjectDisposedException(nameof(PyFileStream), "The Python file object is closed.");
                    default: return length;
                }
            }
        }

        public override long Position
        {
            get
            {
                long position = PyCallbacks.RawTell(File);
                if (position < 0)
                    throw PyFailures.Error("can't read the position of the Python file object");
                return position;
            }
            set => Seek(value, SeekOrigin.Begin);
        }

        public override long Seek(long offset, SeekOrigin origin)
        {
            if (origin < SeekOrigin.Begin || origin > SeekOrigin.End)
                throw new ArgumentException("Invalid seek origin.", nameof(origin));
            long position = PyCallbacks.RawSeek(File, offset, (int)origin);
            if (position < 0)
                throw PyFailures.Error("can't seek in the Python file object");
            return position;
        }

        public override int Read(byte[] buffer, int offset, int count)
        {
            ValidateBufferArguments(buffer, offset, count);
            return Read(buffer.AsSpan(offset, count));
        }

        public override int Read(Span<byte> buffer)
        {
            IntPtr file = File;
            if (buffer.Length == 0)
                return 0;
            fixed (byte* data = buffer)
            {
                int count = PyCallbacks.RawRead(file, data, buffer.Length);
                if (count < 0)
                    throw PyFailures.Error("can't read from the Python file object");
                return Math.Min(count, buffer.Length);
            }
        }

        public override int ReadByte()
        {
            int value = PyCallbacks.RawReadByte(File);
            if (value == -2)
                throw PyFailures.Error("can't read from the Python file object");
            return value;
        }

        public override void Write(byte[] buffer, int offset, int count)
        {
            ValidateBufferArguments(buffer, offset, count);
            Write(new ReadOnlySpan<byte>(buffer, offset, count));
        }

        public override void Write(ReadOnlySpan<byte> buffer)
        {
            IntPtr file = File;
            fixed (byte* data = buffer)
            {
                int done = 0;
                while (done < buffer.Length)
                {
                    int count = PyCallbacks.RawWrite(file, data + done, buffer.Length - done);
                    if (count < 0)
                        throw PyFailures.Error("can't write to the Python file object");
                    if (count == 0)
                        throw new IOException($"the Python file object accepted no bytes ({done} of {buffer.Length} written)");
                    done += Math.Min(count, buffer.Length - done);
                }
            }
        }

        public override void WriteByte(byte value)
        {
            int count = PyCallbacks.RawWriteByte(File, value);
            if (count < 0)
                throw PyFailures.Error("can't write to the Python file object");
            if (count == 0)
                throw new IOException("the Python file object accepted no bytes");
        }

        public override void Flush()
        {
            if (PyCallbacks.RawFlush(File) != 0)
                throw PyFailures.Error("can't flush the Python file object");
        }

        public override void SetLength(long value) =>
            throw new NotSupportedException("Stream does not support changing its length.");

        protected override void Dispose(bool disposing)
        {
            if (_disposed)
                return;
            try
            {
                if (disposing)
                {
                    if (_ownsFile)
                        PyCallbacks.RawClose(_file.Object);
                    else if (PyCallbacks.RawFlush(_file.Object) != 0)
                        throw PyFailures.Error("can't flush the Python file object");
                }
            }
            finally
            {
                _disposed = true;
                if (disposing)
                    _file.Dispose();
                base.Dispose(disposing);
            }
        }
    }
}
