using System;
using System.Collections.Concurrent;
using System.Threading;

namespace Orvane.WrpGen.Interop
{
    /// <summary>
    /// A strong reference to a Python object held by managed code. Released at
    /// once by <see cref="Dispose"/>; when only the finalizer runs (a thread
    /// without the GIL) the release is queued and done by the next holder
    /// created, which always runs inside a call from Python.
    /// </summary>
    public sealed class PyObjectHandle : IDisposable
    {
        private static readonly ConcurrentQueue<IntPtr> Pending = new();
        private IntPtr _obj;

        /// <summary>Holds <paramref name="obj"/>: a new reference of its own, or the
        /// caller's reference when <paramref name="steal"/> is set.</summary>
        public PyObjectHandle(IntPtr obj, bool steal = false)
        {
            DrainPending();
            if (!steal)
                PyObjects.IncRef(obj);
            _obj = obj;
        }

        public IntPtr Object => _obj;

        public void Dispose()
        {
            IntPtr obj = Interlocked.Exchange(ref _obj, IntPtr.Zero);
            PyObjects.DecRef(obj);
            GC.SuppressFinalize(this);
        }

        ~PyObjectHandle()
        {
            IntPtr obj = Interlocked.Exchange(ref _obj, IntPtr.Zero);
            if (obj != IntPtr.Zero)
                Pending.Enqueue(obj);
        }

        public static void DrainPending()
        {
            while (Pending.TryDequeue(out IntPtr obj))
                PyObjects.DecRef(obj);
        }
    }
}
