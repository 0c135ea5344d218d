using System;
using System.Runtime.CompilerServices;
using System.Runtime.InteropServices;

namespace Orvane.WrpGen.Interop
{
    /// <summary>Interop proxy of IDisposable: which managed objects native code may treat as disposable.</summary>
    public static class SiApiDisposable
    {
        /// <summary>1 when the object behind the handle implements IDisposable; a null handle gives 0.</summary>
        [UnmanagedCallersOnly]
        [MethodImpl(MethodImplOptions.AggressiveOptimization)]
        public static byte IsAssignableTo(IntPtr handle)
        {
            try
            {
                return Handles.Target(handle) is IDisposable ? (byte)1 : (byte)0;
            }
            catch (Exception e)
            {
                ErrorBridge.Report(e);
                return 0;
            }
        }
    }
}
