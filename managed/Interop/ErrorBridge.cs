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
}
