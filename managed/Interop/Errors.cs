using System;

namespace Orvane.WrpGen.Interop
{
    /// <summary>A Python error raised inside a callback, carried through managed code as text.</summary>
    public sealed class PythonException : Exception
    {
        public PythonException(string message) : base(message) { }
    }

    /// <summary>Errors in both directions between managed code and Python.</summary>
    public static unsafe class ErrorBridge
    {
        /// <summary>
        /// Reports a managed exception to Python: native code sets a pending
        /// RuntimeError "Proxy error(type): message". Must never throw: it runs
        /// inside the catch block of every proxy entry.
        /// </summary>
        public static void Report(Exception exception)
        {
            var callback = ExchangeHost.ExceptionCallback;
            if (callback == null)
                return;
            try
            {
                IntPtr type = Strings.ToPyUnraisable(exception.GetType().FullName);
                IntPtr message = Strings.ToPyUnraisable(exception.Message);
                callback(type, message);
            }
            catch
            {
                // Nothing may cross back into native code from here.
            }
        }

        /// <summary>
        /// Takes the pending Python error (clearing it) as text; null when none
        /// is pending. Used after a callback into Python reported failure.
        /// </summary>
        public static string? TakePythonError()
        {
            var callback = ExchangeHost.CatchAndClearErrorCallback;
            if (callback == null)
                return null;
            IntPtr holder = IntPtr.Zero;
            PyStringArg text = default;
            if (callback(&holder, &text) != 0)
                return null;
            try
            {
                return Strings.FromArg(&text);
            }
            finally
            {
                PyObjects.DecRef(holder);
            }
        }

        /// <summary>An exception carrying the pending Python error, for managed code to throw.</summary>
        public static Exception FromPython(string fallback) =>
            new PythonException(TakePythonError() ?? fallback);
    }

    /// <summary>
    /// Thrown where a native callback failed and its Python error is to stay
    /// pending for the caller (entries then return their failure result
    /// without reporting anything else).
    /// </summary>
    public sealed class PythonErrorPendingException : Exception
    {
        public PythonErrorPendingException() : base("a Python error is pending") { }
    }

    /// <summary>The error handling every interop entry shares.</summary>
    public static class EntryErrors
    {
        /// <summary>Reports a managed exception, leaving an already pending Python error as it is.</summary>
        public static void Report(Exception e)
        {
            if (e is PythonErrorPendingException)
                return;
            ErrorBridge.Report(e);
        }
    }

    /// <summary>Failures of callbacks into Python, turned into managed exceptions.</summary>
    internal static class PyFailures
    {
        /// <summary>The Python error as a <see cref="PythonException"/> (the error is cleared).</summary>
        public static Exception Error(string what) => ErrorBridge.FromPython(what);

        /// <summary>An index error: the Python IndexError is cleared and replaced by .NET's own exception.</summary>
        public static Exception OutOfRange(string parameter)
        {
            ErrorBridge.TakePythonError();
            return new ArgumentOutOfRangeException(parameter, "Index was out of range. Must be non-negative and less than the size of the collection.");
        }
    }
}
