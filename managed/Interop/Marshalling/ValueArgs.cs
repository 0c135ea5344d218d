using System;
using System.Runtime.InteropServices;

namespace Orvane.WrpGen.Interop
{
    // Nullable<T> and ref/out arguments. Layouts are shared with
    // marshal/records.h and must not change.

    /// <summary>A Nullable&lt;T&gt; argument: HasValue 0 for None, else Value points at the converted value.</summary>
    [StructLayout(LayoutKind.Sequential)]
    public unsafe struct PyNullableArg
    {
        public int HasValue;
        public IntPtr Convert;  // native converter; not for managed use
        public void* Value;
    }

    /// <summary>
    /// A ref/out argument: the caller's list (borrowed) and the storage of the
    /// value. Native code initialises the storage to the type's default and
    /// converts item 0 of the list into it when present and not None; after
    /// the call it converts the storage back and puts it into the list.
    /// </summary>
    [StructLayout(LayoutKind.Sequential)]
    public unsafe struct PyParamByRef
    {
        public IntPtr List;
        public IntPtr Convert;  // native converter; not for managed use
        public void* Value;
    }

    public static unsafe class Nullables
    {
        /// <summary>The value in its native form <typeparamref name="T"/>, or null.</summary>
        public static T? FromArg<T>(PyNullableArg* arg) where T : unmanaged =>
            arg == null || arg->HasValue == 0 ? null : *(T*)arg->Value;
    }

    public static unsafe class ByRefs
    {
        /// <summary>The value passed in, in its native form (the default for [] and [None]).</summary>
        public static T In<T>(PyParamByRef* arg) where T : unmanaged =>
            arg == null || arg->Value == null ? default : *(T*)arg->Value;

        /// <summary>Stores the value passed out, in its native form, for native code to hand back.</summary>
        public static void Out<T>(PyParamByRef* arg, T value) where T : unmanaged
        {
            if (arg == null || arg->Value == null)
                throw new ArgumentException("a by-reference argument without storage");
            *(T*)arg->Value = value;
        }
    }
}
