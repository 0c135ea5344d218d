using System;

namespace Orvane.Probe
{
    /// <summary>Figures for the leak check: a handle leaked by the binding keeps its
    /// object alive, so it shows as heap growth or as surviving instances.</summary>
    public static class Diagnostics
    {
        /// <summary>Bytes of the managed heap after a full collection and finalization.</summary>
        public static long ManagedHeapBytes()
        {
            Settle();
            return GC.GetTotalMemory(forceFullCollection: true);
        }

        /// <summary>Objects from <see cref="Collections.NewDisposable"/> still reachable.</summary>
        public static long LiveDisposables()
        {
            Settle();
            return CountingDisposable.Alive;
        }

        private static void Settle()
        {
            GC.Collect();
            GC.WaitForPendingFinalizers();
            GC.Collect();
        }
    }
}
