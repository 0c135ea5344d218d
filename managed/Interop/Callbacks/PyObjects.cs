using System;

namespace Orvane.WrpGen.Interop
{
    /// <summary>Reference counting of Python objects through the object-API table.</summary>
    public static unsafe class PyObjects
    {
        private static IntPtr Slot(int index) =>
            ExchangeHost.StaticTables == null ? IntPtr.Zero : ExchangeHost.StaticTables[ExchangeHost.ObjApiTable][index];

        public static void IncRef(IntPtr obj)
        {
            IntPtr fn = Slot(0);
            if (obj != IntPtr.Zero && fn != IntPtr.Zero)
                ((delegate* unmanaged<IntPtr, void>)fn)(obj);
        }

        public static void DecRef(IntPtr obj)
        {
            IntPtr fn = Slot(1);
            if (obj != IntPtr.Zero && fn != IntPtr.Zero)
                ((delegate* unmanaged<IntPtr, void>)fn)(obj);
        }

        /// <summary>A new reference to None.</summary>
        public static IntPtr None()
        {
            IntPtr fn = Slot(2);
            return fn == IntPtr.Zero ? IntPtr.Zero : ((delegate* unmanaged<IntPtr>)fn)();
        }
    }
}
