using System;
using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// What each binding kind looks like on both sides of an entry: the native
    /// types, argument records and converters, and the C# proxy's types and
    /// conversions. Every emitter asks here, so the two sides cannot disagree.
    /// </summary>
    internal static class Kinds
    {
        public const string DisposableType = "wrpPye_tyds_FFFFFFFF_IDisposableWrapper";
        public const string DisposableConverter = "wrpPy_conv_py_to_clr_FFFFFFFF_IDisposable";

        private static BindKind Scalar(TypeRef t) => t.Kind == BindKind.Enum ? t.Underlying : t.Kind;

        // ---- native side -------------------------------------------------

        public static string CppScalar(BindKind k) => k switch
        {
            BindKind.Bool => "bool",
            BindKind.Int8 => "int8_t",
            BindKind.UInt8 => "uint8_t",
            BindKind.Int16 => "int16_t",
            BindKind.UInt16 => "uint16_t",
            BindKind.Int32 => "int32_t",
            BindKind.UInt32 => "uint32_t",
            BindKind.Int64 => "int64_t",
            BindKind.UInt64 => "uint64_t",
            BindKind.Float => "float",
            BindKind.Double => "double",
            BindKind.Char => "uint16_t",
            _ => throw new ArgumentOutOfRangeException(nameof(k), k, null),
        };

        /// <summary>The parameter type of the native entry.</summary>
        public static string CppParamType(TypeRef t) => t.Kind switch
        {
            BindKind.String => "const PyStringArg*",
            BindKind.Bytes => "const PyBytesArg*",
            BindKind.Object or BindKind.SiblingObject or BindKind.Disposable => "void*",
            _ => CppScalar(Scalar(t)),
        };

        /// <summary>The local that receives the converted argument, in its empty state.</summary>
        public static string CppDecl(TypeRef t, string name) => t.Kind switch
        {
            BindKind.String => $"PyStringArg {name} = {{-1, 0, nullptr}};",
            BindKind.Bytes => $"PyBytesArgBuilder {name};",
            BindKind.Object or BindKind.SiblingObject or BindKind.Disposable => $"void* {name} = nullptr;",
            BindKind.Bool => $"bool {name} = false;",
            _ => $"{CppScalar(Scalar(t))} {name} = 0;",
        };

        /// <summary>The O&amp; converter that fills the local.</summary>
        public static string CppConverter(TypeRef t) => t.Kind switch
        {
            BindKind.String => "fn_conv_py_string_to_clr_string",
            BindKind.Bytes => "fn_conv_py_bytes_to_clr_bytes",
            BindKind.Object => $"wrpPy_conv_py_to_clr_{t.Bound!.Tag}",
            BindKind.SiblingObject => t.Sibling!.PyToClrTrampoline,
            BindKind.Disposable => DisposableConverter,
            _ => Scalar(t) switch
            {
                BindKind.Bool => "fn_conv_py_bool_to_clr_bool",
                BindKind.Int8 => "fn_conv_py_long_to_clr_int8",
                BindKind.UInt8 => "fn_conv_py_ulong_to_clr_uint8",
                BindKind.Int16 => "fn_conv_py_long_to_clr_int16",
                BindKind.UInt16 => "fn_conv_py_ulong_to_clr_uint16",
                BindKind.Int32 => "fn_conv_py_long_to_clr_int32",
                BindKind.UInt32 => "fn_conv_py_ulong_to_clr_uint32",
                BindKind.Int64 => "fn_conv_py_long_to_clr_int64",
                BindKind.UInt64 => "fn_conv_py_ulong_to_clr_uint64",
                BindKind.Float => "fn_conv_py_float_to_clr_float<float>",
                BindKind.Double => "fn_conv_py_float_to_clr_float<double>",
                BindKind.Char => "fn_conv_py_string_to_clr_char",
                var k => throw new ArgumentOutOfRangeException(nameof(t), k, null),
            },
        };

        /// <summary>The argument passed to the entry once the local is filled.</summary>
        public static string CppCallArg(TypeRef t, string name) => t.Kind switch
        {
            BindKind.String => "&" + name,
            BindKind.Bytes => name + ".get_info()",
            _ => name,
        };

        /// <summary>How a result comes back from the entry.</summary>
        public enum ResultShape { Void, Scalar, PyObjectOut, Handle, ObjectOut }

        public static ResultShape Shape(TypeRef r) => r.Kind switch
        {
            BindKind.Void => ResultShape.Void,
            BindKind.String or BindKind.Bytes => ResultShape.PyObjectOut,
            BindKind.Object when r.Bound!.IsStruct || (!r.Bound.IsInterface && r.Bound.IsSealed) => ResultShape.Handle,
            BindKind.Object or BindKind.SiblingObject or BindKind.Disposable => ResultShape.ObjectOut,
            _ => ResultShape.Scalar,
        };

        public static string CppReturnType(TypeRef r) => Shape(r) switch
        {
            ResultShape.Void or ResultShape.PyObjectOut or ResultShape.ObjectOut => "void",
            ResultShape.Handle => "void*",
            _ => Scalar(r) == BindKind.Bool ? "uint8_t" : CppScalar(Scalar(r)),
        };

        /// <summary>The extra last parameter of entries that write their result, or null.</summary>
        public static string? CppResultParam(TypeRef r) => Shape(r) switch
        {
            ResultShape.PyObjectOut => "PyObject**",
            ResultShape.ObjectOut => "PyObjectOutArg*",
            _ => null,
        };

        /// <summary>Python object from a scalar result held in <paramref name="v"/>.</summary>
        public static string CppScalarToPy(TypeRef r, string v) => Scalar(r) switch
        {
            BindKind.Bool => $"PyBool_FromLong({v})",
            BindKind.Int8 or BindKind.Int16 or BindKind.Int32 => $"PyLong_FromLong({v})",
            BindKind.UInt8 or BindKind.UInt16 or BindKind.UInt32 => $"PyLong_FromUnsignedLong({v})",
            BindKind.Int64 => $"PyLong_FromLongLong({v})",
            BindKind.UInt64 => $"PyLong_FromUnsignedLongLong({v})",
            BindKind.Float or BindKind.Double => $"PyFloat_FromDouble({v})",
            BindKind.Char => $"fn_conv_clr_char_to_py_string({v})",
            var k => throw new ArgumentOutOfRangeException(nameof(r), k, null),
        };

        /// <summary>Python object from an object result record <paramref name="v"/>.</summary>
        public static string CppObjectToPy(TypeRef r, string v) => r.Kind switch
        {
            BindKind.Object when Shape(r) == ResultShape.Handle => $"fn_conv_clr_clsobj_to_py_clsobj({v}, &wrpPy_tyds_{r.Bound!.Tag})",
            BindKind.Object => $"wrpPy_conv_clr_to_py_{r.Bound!.Tag}({v})",
            BindKind.SiblingObject => $"wrpPyl_conv_clr_to_py_{r.Sibling!.Id}_{r.Sibling.Name}({v})",
            BindKind.Disposable => $"fn_conv_clr_ifcimpl_to_py_ifcimpl({v}, &{DisposableType})",
            var k => throw new ArgumentOutOfRangeException(nameof(r), k, null),
        };

        /// <summary>
        /// Calls an entry and returns its converted result from a function returning PyObject*.
        /// <paramref name="call"/> is the call up to its arguments, e.g. "host->call_000_Save(".
        /// </summary>
        public static void EmitCallAndReturn(CodeWriter w, TypeRef result, string call, IReadOnlyList<string> args)
        {
            string Call(string? extra) => call + string.Join(", ", extra == null ? args : args.Append(extra)) + ")";
            switch (Shape(result))
            {
                case ResultShape.Void:
                    w.Line(Call(null) + ";");
                    w.Line("if (PyErr_Occurred())").Indent().Line("return nullptr;").Outdent();
                    w.Line("Py_RETURN_NONE;");
                    break;
                case ResultShape.Scalar:
                    w.Line($"const {CppReturnType(result)} result = {Call(null)};");
                    w.Line("if (PyErr_Occurred())").Indent().Line("return nullptr;").Outdent();
                    w.Line($"return {CppScalarToPy(result, "result")};");
                    break;
                case ResultShape.PyObjectOut:
                    w.Line("PyObject* result = nullptr;");
                    w.Line(Call("&result") + ";");
                    w.Line("return fn_take_py_string_result(result);");
                    break;
                case ResultShape.Handle:
                    w.Line($"void* result = {Call(null)};");
                    w.Line("if (PyErr_Occurred())").Indent().Line("return nullptr;").Outdent();
                    w.Line($"return {CppObjectToPy(result, "result")};");
                    break;
                case ResultShape.ObjectOut:
                    w.Line("PyObjectOutArg result = {nullptr, 0};");
                    w.Line(Call("&result") + ";");
                    w.Line("if (PyErr_Occurred())").Indent().Line("return nullptr;").Outdent();
                    w.Line($"return {CppObjectToPy(result, "result")};");
                    break;
            }
        }

        // ---- managed side ------------------------------------------------

        public static string CsScalar(BindKind k) => k switch
        {
            BindKind.Bool => "byte",
            BindKind.Int8 => "sbyte",
            BindKind.UInt8 => "byte",
            BindKind.Int16 => "short",
            BindKind.UInt16 => "ushort",
            BindKind.Int32 => "int",
            BindKind.UInt32 => "uint",
            BindKind.Int64 => "long",
            BindKind.UInt64 => "ulong",
            BindKind.Float => "float",
            BindKind.Double => "double",
            BindKind.Char => "ushort",
            _ => throw new ArgumentOutOfRangeException(nameof(k), k, null),
        };

        public static string CsName(Type t) => "global::" + (t.FullName ?? t.Name).Replace('+', '.');

        public static string CsParamType(TypeRef t) => t.Kind switch
        {
            BindKind.String => "PyStringArg*",
            BindKind.Bytes => "PyBytesArg*",
            BindKind.Object or BindKind.SiblingObject or BindKind.Disposable => "IntPtr",
            _ => CsScalar(Scalar(t)),
        };

        private static bool IsValueType(TypeRef t) =>
            (t.Kind == BindKind.Object && t.Bound!.IsStruct) || (t.Kind == BindKind.SiblingObject && t.Sibling!.Kind == TypeKind.Struct);

        /// <summary>The managed argument built from the proxy parameter <paramref name="name"/>.</summary>
        public static string CsArg(TypeRef t, string name) => t.Kind switch
        {
            BindKind.Bool => $"{name} != 0",
            BindKind.Char => $"(char){name}",
            BindKind.Enum => $"({CsName(t.Clr)}){name}",
            BindKind.String => $"Strings.FromArg({name})",
            BindKind.Bytes => $"Bytes.FromArg({name})",
            BindKind.Object or BindKind.SiblingObject when IsValueType(t) => $"Handles.Unbox<{CsName(t.Clr)}>({name})",
            BindKind.Object or BindKind.SiblingObject => $"Handles.Get<{CsName(t.Clr)}>({name})",
            BindKind.Disposable => $"Handles.Get<global::System.IDisposable>({name})",
            _ => name,
        };

        public static string CsReturnType(TypeRef r) => Shape(r) switch
        {
            ResultShape.Void or ResultShape.PyObjectOut or ResultShape.ObjectOut => "void",
            ResultShape.Handle => "IntPtr",
            _ => CsScalar(Scalar(r)),
        };

        public static string? CsResultParam(TypeRef r) => Shape(r) switch
        {
            ResultShape.PyObjectOut => "IntPtr* result",
            ResultShape.ObjectOut => "PyObjectOutArg* result",
            _ => null,
        };

        /// <summary>The statement that hands the managed value <paramref name="value"/> back to native code.</summary>
        public static string CsReturn(TypeRef r, string value) => r.Kind switch
        {
            BindKind.Void => value + ";",
            BindKind.Bool => $"return {value} ? (byte)1 : (byte)0;",
            BindKind.Char => $"return (ushort){value};",
            BindKind.Enum => $"return ({CsScalar(r.Underlying)}){value};",
            BindKind.String => $"*result = Strings.ToPy({value});",
            BindKind.Bytes => $"*result = Bytes.ToPy({value});",
            _ when Shape(r) == ResultShape.Handle => $"return Handles.Alloc({value});",
            _ when Shape(r) == ResultShape.ObjectOut => $"Handles.WriteOut(result, {value});",
            _ => $"return {value};",
        };
    }
}
