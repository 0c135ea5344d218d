using System;

namespace Orvane.WrpGen.Interop
{
    /// <summary>Implemented by managed views over a Python object.</summary>
    public interface IPyObjectView
    {
        /// <summary>The Python object the view operates on (borrowed).</summary>
        IntPtr PyObject { get; }
    }
}
