using System;
using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// The C++ printer: how each binding kind is spelled on the native side of
    /// an entry (parameter and result types, argument locals, converters, and
    /// the conversion of results to Python objects).
    /// </summary>
    internal static class CppTypes
    {
        public const string DisposableType = "wrpPye_tyds_FFFFFFFF_IDisposableWrapper";
        public const string DisposableConverter = "wrpPy_conv_py_to_clr_FFFFFFFF_IDisposable";
        /// <summary>The generated O&amp; adapter over the runtime's three-argument nullable converter.</summary>
        public const string NullableConverter = "wrpPy_conv_py_to_clr_nullable";

        public static string Scalar(BindKind k) => k switch
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

        /// <summary>The parameter type of the native entry (two, comma-separated, for a by-reference parameter).</summary>
        public static string ParamType(TypeRef t) => t.Kind switch
        {
            BindKind.String => "const PyStringArg*",
            BindKind.Bytes => "const PyBytesArg*",
            BindKind.Object or BindKind.SiblingObject or BindKind.Disposable => "void*",
            BindKind.DateTime => "const ClrDateTime*",
            BindKind.DateTimeOffset => "const ClrDateTimeOffset*",
            BindKind.TimeSpan => "int64_t",
            BindKind.Decimal => "const ClrDecimal*",
            BindKind.Guid => "const ClrGuid*",
            BindKind.Variant or BindKind.Stream or BindKind.Collection => "const VariantArg*",
            BindKind.Nullable => "const PyNullableArg*",
            BindKind.ByRef => "PyParamByRef*, PyObject**",
            _ => Scalar(Kinds.ScalarOf(t)),
        };

        /// <summary>Native parameter types of one managed parameter: a by-reference one also takes its out slot.</summary>
        public static IEnumerable<string> ParamTypes(TypeRef t) =>
            t.Kind == BindKind.ByRef ? new[] { "PyParamByRef*", "PyObject**" } : new[] { ParamType(t) };

        /// <summary>The native storage of a value that a nullable or by-reference record points at.</summary>
        public static string Storage(TypeRef t) => t.Kind switch
        {
            BindKind.String => "PyStringArg",
            BindKind.Object or BindKind.SiblingObject => "void*",
            BindKind.DateTime => "ClrDateTime",
            BindKind.DateTimeOffset => "ClrDateTimeOffset",
            BindKind.TimeSpan => "int64_t",
            BindKind.Decimal => "ClrDecimal",
            BindKind.Guid => "ClrGuid",
            BindKind.Variant => "VariantArg",
            _ => Scalar(Kinds.ScalarOf(t)),
        };

        public static string StorageInit(TypeRef t) => t.Kind switch
        {
            BindKind.String => " = {-1, 0, nullptr}",
            BindKind.Object or BindKind.SiblingObject => " = nullptr",
            BindKind.DateTime or BindKind.DateTimeOffset or BindKind.Guid => " = {}",
            BindKind.Decimal => " = {0, 0, 0, 0}",
            BindKind.Variant => " = {0, nullptr}",
            BindKind.Bool => " = false",
            _ => " = 0",
        };

        /// <summary>The local that receives the converted argument, in its empty state.</summary>
        public static string Decl(TypeRef t, string name) => t.Kind switch
        {
            BindKind.String => $"PyStringArg {name} = {{-1, 0, nullptr}};",
            BindKind.Bytes => $"PyBytesArgBuilder {name};",
            BindKind.Object or BindKind.SiblingObject or BindKind.Disposable => $"void* {name} = nullptr;",
            BindKind.Bool => $"bool {name} = false;",
            BindKind.TimeSpan => $"int64_t {name} = 0;",
            BindKind.DateTime or BindKind.DateTimeOffset or BindKind.Decimal or BindKind.Guid or BindKind.Variant
                => $"{Storage(t)} {name}{StorageInit(t)};",
            BindKind.Stream or BindKind.Collection => $"VariantArg {name} = {{0, nullptr}};",
            BindKind.Nullable =>
                $"{Storage(t.Element!)} {name}_v{StorageInit(t.Element!)};\n" +
                $"PyNullableArg {name} = {{0, &fn_nullable_convert<{Storage(t.Element!)}, {Converter(t.Element!)}>, &{name}_v}};",
            BindKind.ByRef =>
                $"{Storage(t.Element!)} {name}_v{StorageInit(t.Element!)};\n" +
                $"PyParamByRef {name} = {{nullptr, &fn_parbyref_convert<{Storage(t.Element!)}, {Converter(t.Element!)}>, &{name}_v}};\n" +
                $"PyObject* {name}_out = nullptr;",
            _ => $"{Scalar(Kinds.ScalarOf(t))} {name} = 0;",
        };

        /// <summary>The O&amp; converter that fills the local.</summary>
        public static string Converter(TypeRef t) => t.Kind switch
        {
            BindKind.String => "fn_conv_py_string_to_clr_string",
            BindKind.Bytes => "fn_conv_py_bytes_to_clr_bytes",
            BindKind.Object => t.Bound!.Cpp.PyToClr,
            BindKind.SiblingObject => t.Sibling!.PyToClrTrampoline,
            BindKind.Disposable => DisposableConverter,
            BindKind.DateTime => "fn_conv_py_datetime_to_clr_datetime",
            BindKind.DateTimeOffset => "fn_conv_py_datetime_to_clr_datetimeoffset",
            BindKind.TimeSpan => "fn_conv_py_datetimedelta_to_clr_timespan",
            BindKind.Decimal => "fn_conv_py_decimal_to_clr_decimal",
            BindKind.Guid => "fn_conv_py_uuid_to_clr_guid",
            BindKind.Variant => "fn_conv_py_variant_to_clr_variant",
            BindKind.Stream => "wrpPye_conv_py_to_clr_stream",
            BindKind.Collection when t.Wrapper?.Converter is { } typed => typed,
            BindKind.Collection => "wrpPye_conv_py_to_clr_" + CollectionKindName(t),
            BindKind.Nullable => NullableConverter,
            BindKind.ByRef => "fn_conv_py_parbyref_to_clr_parbyref",
            _ => Kinds.ScalarOf(t) switch
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

        /// <summary>The runtime's name of a collection kind (wrpPye_conv_py_to_clr_&lt;kind&gt;, ..._&lt;kind&gt;_to_py).</summary>
        public static string CollectionKindName(TypeRef t) => t.Collection switch
        {
            CollectionKind.IList or CollectionKind.GenericList => "ilist",
            CollectionKind.ICollection or CollectionKind.GenericCollection => "icol",
            CollectionKind.IEnumerable or CollectionKind.GenericEnumerable => "iter",
            CollectionKind.IEnumerator or CollectionKind.GenericEnumerator => "iterator",
            CollectionKind.Array or CollectionKind.TypedArray => "array",
            CollectionKind.ArrayList => "arrlist",
            CollectionKind.CollectionBase => "colbase",
            CollectionKind.ReadOnlyCollectionBase => "rocolbase",
            var k => throw new ArgumentOutOfRangeException(nameof(t), k, null),
        };

        /// <summary>The argument passed to the entry once the local is filled.</summary>
        public static string CallArg(TypeRef t, string name) => t.Kind switch
        {
            BindKind.String or BindKind.DateTime or BindKind.DateTimeOffset or BindKind.Decimal or BindKind.Guid
                or BindKind.Variant or BindKind.Stream or BindKind.Collection or BindKind.Nullable => "&" + name,
            BindKind.Bytes => name + ".get_info()",
            BindKind.ByRef => $"&{name}, &{name}_out",
            _ => name,
        };

        public static string ReturnType(TypeRef r) => Kinds.Shape(r) switch
        {
            ResultShape.Void or ResultShape.PyObjectOut or ResultShape.ObjectOut or ResultShape.ValueOut
                or ResultShape.CollectionOut => "void",
            ResultShape.Handle => "void*",
            _ when r.Kind == BindKind.TimeSpan => "int64_t",
            _ => Kinds.ScalarOf(r) == BindKind.Bool ? "uint8_t" : Scalar(Kinds.ScalarOf(r)),
        };

        /// <summary>The extra last parameter of entries that write their result, or null.</summary>
        public static string? ResultParam(TypeRef r) => Kinds.Shape(r) switch
        {
            ResultShape.PyObjectOut => "PyObject**",
            ResultShape.ObjectOut => "PyObjectOutArg*",
            ResultShape.ValueOut => Storage(r) + "*",
            ResultShape.CollectionOut => "PyCollectionArg*",
            _ => null,
        };

        /// <summary>Python object from a scalar result held in <paramref name="v"/>.</summary>
        public static string ScalarToPy(TypeRef r, string v) => r.Kind == BindKind.TimeSpan
            ? $"fn_conv_clr_timespan_to_py_datetimedelta({v})"
            : Kinds.ScalarOf(r) switch
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

        /// <summary>Python object from a value record <paramref name="v"/> written by the entry.</summary>
        public static string ValueToPy(TypeRef r, string v) => r.Kind switch
        {
            BindKind.DateTime => $"fn_conv_clr_datetime_to_py_datetime(&{v})",
            BindKind.DateTimeOffset => $"fn_conv_clr_datetimeoffset_to_py_datetime(&{v})",
            BindKind.Decimal => $"fn_conv_clr_decimal_to_py_decimal(&{v})",
            BindKind.Guid => $"fn_conv_clr_guid_to_py_uuid(&{v})",
            var k => throw new ArgumentOutOfRangeException(nameof(r), k, null),
        };

        /// <summary>Python object from a collection or stream result record <paramref name="v"/>.</summary>
        public static string CollectionToPy(TypeRef r, string v) =>
            r.Kind == BindKind.Stream ? $"wrpPye_conv_clr_stream_to_py({v})"
            : r.Generic != null ? $"wrpPye_gn_result_to_py({v}, &{r.Wrapper!.Type})"
            : $"wrpPye_conv_clr_{CollectionKindName(r)}_to_py({v})";

        /// <summary>Python object from an object result record <paramref name="v"/>.</summary>
        public static string ObjectToPy(TypeRef r, string v) => r.Kind switch
        {
            BindKind.Object when Kinds.Shape(r) == ResultShape.Handle => $"fn_conv_clr_clsobj_to_py_clsobj({v}, &{r.Bound!.Cpp.TypeObject})",
            BindKind.Object => $"{r.Bound!.Cpp.ClrToPy}({v})",
            BindKind.SiblingObject => $"{r.Sibling!.ClrToPyTrampoline}({v})",
            BindKind.Disposable => $"fn_conv_clr_ifcimpl_to_py_ifcimpl({v}, &{DisposableType})",
            var k => throw new ArgumentOutOfRangeException(nameof(r), k, null),
        };

        /// <summary>The return type of a planned entry.</summary>
        public static string EntryReturnType(Entry e) => e.NativeReturn ?? e.Kind switch
        {
            EntryKind.Ctor => "void*",
            EntryKind.AssignableTo => "uint8_t",
            _ => ReturnType(e.Result),
        };

        /// <summary>Parameter types of a planned entry, the handle of the instance first and the result record last.</summary>
        public static IEnumerable<string> EntryParamTypes(Entry e)
        {
            if (e.HasSelf) yield return "void*";
            if (e.NativeParams != null)
            {
                foreach (var p in e.NativeParams)
                    yield return p;
                yield break;
            }
            foreach (var p in e.Parameters)
                foreach (var native in ParamTypes(p))
                    yield return native;
            if (e.Kind != EntryKind.Ctor && e.Kind != EntryKind.AssignableTo && ResultParam(e.Result) is { } extra)
                yield return extra;
        }
    }
}
