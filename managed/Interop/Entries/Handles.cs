using System;
using System.Runtime.CompilerServices;
using System.Runtime.InteropServices;

namespace Orvane.WrpGen.Interop
{
    /// <summary>
    /// Managed handles as native code holds them: GCHandle.ToIntPtr of a normal
    /// handle; value types travel boxed. 0 stands for null.
    /// </summary>
    public static unsafe class Handles
    {
        [MethodImpl(MethodImplOptions.AggressiveInlining)]
        public static IntPtr Alloc(object? value) =>
            value is null ? IntPtr.Zero : GCHandle.ToIntPtr(GCHandle.Alloc(value));

        [MethodImpl(MethodImplOptions.AggressiveInlining)]
        public static object? Target(IntPtr handle) =>
            handle == IntPtr.Zero ? null : GCHandle.FromIntPtr(handle).Target;

        /// <summary>The object behind a handle as <typeparamref name="T"/>; null for a null handle.</summary>
        [MethodImpl(MethodImplOptions.AggressiveInlining)]
        public static T? Get<T>(IntPtr handle) where T : class =>
            handle == IntPtr.Zero ? null : (T)GCHandle.FromIntPtr(handle).Target!;

        /// <summary>The instance a proxy entry operates on; a null handle is an error.</summary>
        [MethodImpl(MethodImplOptions.AggressiveInlining)]
        public static T Self<T>(IntPtr handle) where T : class =>
            handle == IntPtr.Zero
                ? throw new NullReferenceException("the object is not bound to a managed instance")
                : (T)GCHandle.FromIntPtr(handle).Target!;

        /// <summary>A boxed value type behind a handle; a null handle gives the default value.</summary>
        [MethodImpl(MethodImplOptions.AggressiveInlining)]
        public static T Unbox<T>(IntPtr handle) where T : struct =>
            handle == IntPtr.Zero ? default : (T)GCHandle.FromIntPtr(handle).Target!;

        /// <summary>Stable key of an object's runtime type for the native type cache.</summary>
        [MethodImpl(MethodImplOptions.AggressiveInlining)]
        public static IntPtr TypeKey(object value) => value.GetType().TypeHandle.Value;

        /// <summary>Writes an object result: a new handle and its type key (both 0 for null).</summary>
        [MethodImpl(MethodImplOptions.AggressiveInlining)]
        public static void WriteOut(PyObjectOutArg* result, object? value)
        {
            if (value is null)
            {
                result->Handle = IntPtr.Zero;
                result->TypeKey = IntPtr.Zero;
                return;
            }
            result->Handle = GCHandle.ToIntPtr(GCHandle.Alloc(value));
            result->TypeKey = value.GetType().TypeHandle.Value;
        }

        public static void Free(IntPtr handle)
        {
            if (handle != IntPtr.Zero)
                GCHandle.FromIntPtr(handle).Free();
        }
    }
}
