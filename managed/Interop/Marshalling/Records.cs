using System;
using System.Runtime.InteropServices;

namespace Orvane.WrpGen.Interop
{
    // Plain records that native code fills for one managed call. Layouts are
    // shared with the native runtime (marshal/records.h) and must not change.

    /// <summary>A tagged untyped value: a Python object (borrowed) or a managed handle (tag 1).</summary>
    [StructLayout(LayoutKind.Sequential)]
    public struct VariantArg
    {
        public int Type;
        public IntPtr Value;
    }

    /// <summary>A Python string's own storage: code-point count (-1 for None) and width of one character.</summary>
    [StructLayout(LayoutKind.Sequential)]
    public unsafe struct PyStringArg
    {
        public int Length;
        public int CharSize;
        public void* Data;
    }

    /// <summary>An exporter's bytes seen through the buffer protocol; Length -1 stands for None.</summary>
    [StructLayout(LayoutKind.Sequential)]
    public unsafe struct PyBytesArg
    {
        public uint NeedRelease;
        public int Length;
        public byte* Data;
    }

    /// <summary>An object result: a new handle (0 for null) and its runtime type's key.</summary>
    [StructLayout(LayoutKind.Sequential)]
    public struct PyObjectOutArg
    {
        public IntPtr Handle;
        public IntPtr TypeKey;
    }

    /// <summary>A result that may already be a Python object (Kind 1) rather than a handle.</summary>
    [StructLayout(LayoutKind.Sequential)]
    public struct PyCollectionArg
    {
        public int Kind;
        public IntPtr Value;
        public IntPtr TypeKey;
    }
}
