using System;
using System.Runtime.CompilerServices;
using System.Runtime.InteropServices;

namespace Orvane.WrpGen.Interop
{
    /// <summary>Text, hash, equality and disposal of any managed object behind a handle.</summary>
    public static unsafe class ObjectHost
    {
        /// <summary>1: *result holds a new Python str; 0: the object gave no text; -1: a Python error is pending.</summary>
        [UnmanagedCallersOnly]
        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int InstanceToString(IntPtr handle, IntPtr* result)
        {
            try
            {
                string? text = Handles.Target(handle)?.ToString();
                if (text is null)
                    return 0;
                IntPtr str = Strings.ToPy(text);
                if (str == IntPtr.Zero)
                    return -1;
                *result = str;
                return 1;
            }
            catch (Exception e)
            {
                ErrorBridge.Report(e);
                return -1;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static int GetHash(IntPtr handle)
        {
            try
            {
                return Handles.Target(handle)?.GetHashCode() ?? 0;
            }
            catch (Exception e)
            {
                ErrorBridge.Report(e);
                return 0;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static byte IsEquals(IntPtr a, IntPtr b)
        {
            try
            {
                return Equals(Handles.Target(a), Handles.Target(b)) ? (byte)1 : (byte)0;
            }
            catch (Exception e)
            {
                ErrorBridge.Report(e);
                return 0;
            }
        }

        [UnmanagedCallersOnly]

        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static void Dispose(IntPtr handle)
        {
            try
            {
                (Handles.Target(handle) as IDisposable)?.Dispose();
            }
            catch (Exception e)
            {
                ErrorBridge.Report(e);
            }
        }
    }
}
