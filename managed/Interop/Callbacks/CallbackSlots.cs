using System;

namespace Orvane.WrpGen.Interop
{
    /// <summary>Function pointers of the native read and write tables, by slot.</summary>
    internal static unsafe class CallbackSlots
    {
        internal static IntPtr Read(int slot) => Slot(ExchangeHost.ReadTable, slot);

        internal static IntPtr Write(int slot) => Slot(ExchangeHost.WriteTable, slot);

        private static IntPtr Slot(int table, int slot)
        {
            IntPtr** tables = ExchangeHost.StaticTables;
            IntPtr fn = tables == null ? IntPtr.Zero : tables[table][slot];
            if (fn == IntPtr.Zero)
                throw new InvalidOperationException($"native callback {table}/{slot} is not registered");
            return fn;
        }
    }
}
