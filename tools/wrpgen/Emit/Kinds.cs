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

        /// <summary>The parameter type of the native entry (two, comma-separated, for a by-reference parameter).</summary>
        public static string CppParamType(TypeRef t) => t.Kind switch
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
            _ => CppScalar(Scalar(t)),
        };

        /// <summary>Native parameter types of one managed parameter: a by-reference one also takes its out slot.</summary>
        public static IEnumerable<string> CppParamTypes(TypeRef t) =>
            t.Kind == BindKind.ByRef ? new[] { "PyParamByRef*", "PyObject**" } : new[] { CppParamType(t) };

        /// <summary>The native storage of a value that a nullable or by-reference record points at.</summary>
        public static string CppStorage(TypeRef t) => t.Kind switch
        {
            BindKind.String => "PyStringArg",
            BindKind.Object or BindKind.SiblingObject => "void*",
            BindKind.DateTime => "ClrDateTime",
            BindKind.DateTimeOffset => "ClrDateTimeOffset",
            BindKind.TimeSpan => "int64_t",
            BindKind.Decimal => "ClrDecimal",
            BindKind.Guid => "ClrGuid",
            BindKind.Variant => "VariantArg",
            _ => CppScalar(Scalar(t)),
        };

        private static string CppStorageInit(TypeRef t) => t.Kind switch
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
        public static string CppDecl(TypeRef t, string name) => t.Kind switch
        {
            BindKind.String => $"PyStringArg {name} = {{-1, 0, nullptr}};",
            BindKind.Bytes => $"PyBytesArgBuilder {name};",
            BindKind.Object or BindKind.SiblingObject or BindKind.Disposable => $"void* {name} = nullptr;",
            BindKind.Bool => $"bool {name} = false;",
            BindKind.TimeSpan => $"int64_t {name} = 0;",
            BindKind.DateTime or BindKind.DateTimeOffset or BindKind.Decimal or BindKind.Guid or BindKind.Variant
                => $"{CppStorage(t)} {name}{CppStorageInit(t)};",
            BindKind.Stream or BindKind.Collection => $"VariantArg {name} = {{0, nullptr}};",
            BindKind.Nullable =>
                $"{CppStorage(t.Element!)} {name}_v{CppStorageInit(t.Element!)};\n" +
                $"PyNullableArg {name} = {{0, &fn_nullable_convert<{CppStorage(t.Element!)}, {CppConverter(t.Element!)}>, &{name}_v}};",
            BindKind.ByRef =>
                $"{CppStorage(t.Element!)} {name}_v{CppStorageInit(t.Element!)};\n" +
                $"PyParamByRef {name} = {{nullptr, &fn_parbyref_convert<{CppStorage(t.Element!)}, {CppConverter(t.Element!)}>, &{name}_v}};\n" +
                $"PyObject* {name}_out = nullptr;",
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
            BindKind.DateTime => "fn_conv_py_datetime_to_clr_datetime",
            BindKind.DateTimeOffset => "fn_conv_py_datetime_to_clr_datetimeoffset",
            BindKind.TimeSpan => "fn_conv_py_datetimedelta_to_clr_timespan",
            BindKind.Decimal => "fn_conv_py_decimal_to_clr_decimal",
            BindKind.Guid => "fn_conv_py_uuid_to_clr_guid",
            BindKind.Variant => "fn_conv_py_variant_to_clr_variant",
            BindKind.Stream => "wrpPye_conv_py_to_clr_stream",
            BindKind.Collection when GenericNames.ConverterOf(t) is { } typed => typed,
            BindKind.Collection => "wrpPye_conv_py_to_clr_" + NativeCollectionKind(t),
            BindKind.Nullable => NullableConverter,
            BindKind.ByRef => "fn_conv_py_parbyref_to_clr_parbyref",
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

        /// <summary>The generated O&amp; adapter over the runtime's three-argument nullable converter.</summary>
        public const string NullableConverter = "wrpPy_conv_py_to_clr_nullable";

        /// <summary>The runtime's name of a collection kind (wrpPye_conv_py_to_clr_&lt;kind&gt;, ..._&lt;kind&gt;_to_py).</summary>
        public static string NativeCollectionKind(TypeRef t) => t.Collection switch
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
        public static string CppCallArg(TypeRef t, string name) => t.Kind switch
        {
            BindKind.String or BindKind.DateTime or BindKind.DateTimeOffset or BindKind.Decimal or BindKind.Guid
                or BindKind.Variant or BindKind.Stream or BindKind.Collection or BindKind.Nullable => "&" + name,
            BindKind.Bytes => name + ".get_info()",
            BindKind.ByRef => $"&{name}, &{name}_out",
            _ => name,
        };

        /// <summary>How a result comes back from the entry.</summary>
        public enum ResultShape { Void, Scalar, PyObjectOut, Handle, ObjectOut, ValueOut, CollectionOut }

        public static ResultShape Shape(TypeRef r) => r.Kind switch
        {
            BindKind.Void => ResultShape.Void,
            BindKind.String or BindKind.Bytes or BindKind.Variant or BindKind.Nullable => ResultShape.PyObjectOut,
            BindKind.Object when r.Bound!.IsStruct || (!r.Bound.IsInterface && r.Bound.IsSealed) => ResultShape.Handle,
            BindKind.Object or BindKind.SiblingObject or BindKind.Disposable => ResultShape.ObjectOut,
            BindKind.DateTime or BindKind.DateTimeOffset or BindKind.Decimal or BindKind.Guid => ResultShape.ValueOut,
            BindKind.Stream or BindKind.Collection => ResultShape.CollectionOut,
            _ => ResultShape.Scalar,
        };

        public static string CppReturnType(TypeRef r) => Shape(r) switch
        {
            ResultShape.Void or ResultShape.PyObjectOut or ResultShape.ObjectOut or ResultShape.ValueOut
                or ResultShape.CollectionOut => "void",
            ResultShape.Handle => "void*",
            _ when r.Kind == BindKind.TimeSpan => "int64_t",
            _ => Scalar(r) == BindKind.Bool ? "uint8_t" : CppScalar(Scalar(r)),
        };

        /// <summary>The extra last parameter of entries that write their result, or null.</summary>
        public static string? CppResultParam(TypeRef r) => Shape(r) switch
        {
            ResultShape.PyObjectOut => "PyObject**",
            ResultShape.ObjectOut => "PyObjectOutArg*",
            ResultShape.ValueOut => CppStorage(r) + "*",
            ResultShape.CollectionOut => "PyCollectionArg*",
            _ => null,
        };

        /// <summary>Python object from a scalar result held in <paramref name="v"/>.</summary>
        public static string CppScalarToPy(TypeRef r, string v) => r.Kind == BindKind.TimeSpan
            ? $"fn_conv_clr_timespan_to_py_datetimedelta({v})"
            : Scalar(r) switch
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
        public static string CppValueToPy(TypeRef r, string v) => r.Kind switch
        {
            BindKind.DateTime => $"fn_conv_clr_datetime_to_py_datetime(&{v})",
            BindKind.DateTimeOffset => $"fn_conv_clr_datetimeoffset_to_py_datetime(&{v})",
            BindKind.Decimal => $"fn_conv_clr_decimal_to_py_decimal(&{v})",
            BindKind.Guid => $"fn_conv_clr_guid_to_py_uuid(&{v})",
            var k => throw new ArgumentOutOfRangeException(nameof(r), k, null),
        };

        /// <summary>Python object from a collection or stream result record <paramref name="v"/>.</summary>
        public static string CppCollectionToPy(TypeRef r, string v) =>
            r.Kind == BindKind.Stream ? $"wrpPye_conv_clr_stream_to_py({v})"
            : r.Generic != null ? $"wrpPye_gn_result_to_py({v}, &{GenericNames.GnType(r.Generic, GenericNames.WrapperOf(r))})"
            : $"wrpPye_conv_clr_{NativeCollectionKind(r)}_to_py({v})";

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
        /// <paramref name="byRefs"/> names the locals of by-reference parameters, whose out
        /// values are pushed into the caller's lists once the call succeeded.
        /// </summary>
        public static void EmitCallAndReturn(CodeWriter w, TypeRef result, string call, IReadOnlyList<string> args,
                                             IReadOnlyList<string>? byRefs = null)
        {
            byRefs ??= Array.Empty<string>();
            string Call(string? extra) => call + string.Join(", ", extra == null ? args : args.Append(extra)) + ")";
            void CheckError(string? release = null)
            {
                w.Open("if (PyErr_Occurred())");
                if (release != null)
                    w.Line(release);
                foreach (var b in byRefs)
                    w.Line($"Py_XDECREF({b}_out);");
                w.Line("return nullptr;");
                w.Close();
                // The out values go to the lists before the result is built, so that
                // a failure there cannot leave a converted result behind.
                foreach (var b in byRefs)
                {
                    w.Open($"if (fn_push_parbyref_outvalue({b}.list, {b}_out) < 0)");
                    foreach (var other in byRefs.SkipWhile(o => o != b).Skip(1))
                        w.Line($"Py_XDECREF({other}_out);");
                    if (release != null)
                        w.Line(release);
                    w.Line("return nullptr;");
                    w.Close();
                }
            }
            switch (Shape(result))
            {
                case ResultShape.Void:
                    w.Line(Call(null) + ";");
                    CheckError();
                    w.Line("Py_RETURN_NONE;");
                    break;
                case ResultShape.Scalar:
                    w.Line($"const {CppReturnType(result)} result = {Call(null)};");
                    CheckError();
                    w.Line($"return {CppScalarToPy(result, "result")};");
                    break;
                case ResultShape.PyObjectOut:
                    w.Line("PyObject* result = nullptr;");
                    w.Line(Call("&result") + ";");
                    if (byRefs.Count > 0)
                        CheckError("Py_XDECREF(result);");
                    w.Line("return fn_take_py_string_result(result);");
                    break;
                case ResultShape.Handle:
                    w.Line($"void* result = {Call(null)};");
                    CheckError();
                    w.Line($"return {CppObjectToPy(result, "result")};");
                    break;
                case ResultShape.ObjectOut:
                    w.Line("PyObjectOutArg result = {nullptr, 0};");
                    w.Line(Call("&result") + ";");
                    CheckError(byRefs.Count > 0 ? "if (result.handle) ExchangeHost::get_instance()->free_instance(result.handle);" : null);
                    w.Line($"return {CppObjectToPy(result, "result")};");
                    break;
                case ResultShape.ValueOut:
                    w.Line($"{CppStorage(result)} result{CppStorageInit(result)};");
                    w.Line(Call("&result") + ";");
                    CheckError();
                    w.Line($"return {CppValueToPy(result, "result")};");
                    break;
                case ResultShape.CollectionOut:
                    w.Line("PyCollectionArg result = {0, nullptr, 0};");
                    w.Line(Call("&result") + ";");
                    CheckError(byRefs.Count > 0 ? "if (result.value && result.kind == 0) ExchangeHost::get_instance()->free_instance(result.value);" : null);
                    w.Line($"return {CppCollectionToPy(result, "result")};");
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
            BindKind.DateTime or BindKind.DateTimeOffset => "DateTimeArg*",
            BindKind.TimeSpan => "long",
            BindKind.Decimal => "DecimalArg*",
            BindKind.Guid => "byte*",
            BindKind.Variant or BindKind.Stream or BindKind.Collection => "VariantArg*",
            BindKind.Nullable => "PyNullableArg*",
            BindKind.ByRef => "PyParamByRef*",
            _ => CsScalar(Scalar(t)),
        };

        /// <summary>The proxy's parameters for one managed parameter: a by-reference one also gets its out slot.</summary>
        public static IEnumerable<string> CsParams(TypeRef t, string name) =>
            t.Kind == BindKind.ByRef
                ? new[] { $"PyParamByRef* {name}", $"IntPtr* {name}_out" }
                : new[] { $"{CsParamType(t)} {name}" };

        private static bool IsValueType(TypeRef t) =>
            (t.Kind == BindKind.Object && t.Bound!.IsStruct) || (t.Kind == BindKind.SiblingObject && t.Sibling!.Kind == TypeKind.Struct);

        /// <summary>The managed type as C# source.</summary>
        public static string CsType(Type t)
        {
            if (t.IsByRef) return CsType(t.GetElementType()!);
            if (t.IsArray) return CsType(t.GetElementType()!) + "[]";
            if (t.IsGenericType)
            {
                string name = t.GetGenericTypeDefinition().FullName!;
                name = name.Substring(0, name.IndexOf('`'));
                return "global::" + name.Replace('+', '.') + "<" + string.Join(", ", t.GetGenericArguments().Select(CsType)) + ">";
            }
            return CsName(t);
        }

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
            BindKind.DateTime => $"DateTimes.ToDateTime(*{name})",
            BindKind.DateTimeOffset => $"DateTimes.ToDateTimeOffset(*{name})",
            BindKind.TimeSpan => $"new global::System.TimeSpan({name})",
            BindKind.Decimal => $"Decimals.ToDecimal(*{name})",
            BindKind.Guid => $"Guids.FromBytes({name})",
            BindKind.Variant => $"Variants.FromArg({name})",
            BindKind.Stream when t.Clr.FullName == "System.IO.Stream" => $"Collections.StreamFromArg({name})",
            BindKind.Stream => $"({CsName(t.Clr)})Collections.StreamFromArg({name})",
            BindKind.Collection => CsCollectionArg(t, name),
            BindKind.Nullable =>
                $"({name} == null || {name}->HasValue == 0 ? default({CsType(t.Clr)}) : {CsFromStorage(t.Element!, name + "->Value")})",
            _ => name,
        };

        private static string CsCollectionArg(TypeRef t, string name)
        {
            string element = t.Element != null ? CsType(t.Element.Clr) : "";
            switch (t.Collection)
            {
                case CollectionKind.IList: return $"Collections.ListFromArg({name})";
                case CollectionKind.ICollection: return $"Collections.CollectionFromArg({name})";
                case CollectionKind.IEnumerable: return $"Collections.EnumerableFromArg({name})";
                case CollectionKind.IEnumerator: return $"Collections.EnumeratorFromArg({name})";
                case CollectionKind.Array: return $"Collections.ArrayFromArg({name})";
                case CollectionKind.ArrayList: return $"Collections.ArrayListFromArg({name})";
                case CollectionKind.CollectionBase: return $"Collections.CollectionBaseFromArg({name})";
                case CollectionKind.ReadOnlyCollectionBase: return $"Collections.ReadOnlyCollectionBaseFromArg({name})";
                case CollectionKind.TypedArray when t.Generic is { ArrayParameter: true } g:
                    return $"GenericArgs.ArrayFromArg<{element}>({name}, {g.PyListTable}, {g.PySeqTable}, &{GenericNames.ElementClass(g)}.Read)";
                case CollectionKind.TypedArray: return $"Collections.ArrayFromArg<{element}>({name})";
                case CollectionKind.GenericList:
                    return t.Clr.GetGenericTypeDefinition().FullName == "System.Collections.Generic.List`1"
                        ? $"TypedCollections.ListObjectFromArg<{element}>({name})"
                        : $"TypedCollections.ListFromArg<{element}>({name})";
                case CollectionKind.GenericCollection: return $"TypedCollections.ListFromArg<{element}>({name})";
                case CollectionKind.GenericEnumerable when t.Generic is { EnumerableParameter: true } g:
                    return $"GenericArgs.EnumerableFromArg<{element}>({name}, {g.PyIterTable}, &{GenericNames.ElementClass(g)}.Read)";
                case CollectionKind.GenericEnumerable: return $"TypedCollections.EnumerableFromArg<{element}>({name})";
                case CollectionKind.GenericEnumerator: return $"TypedCollections.EnumeratorFromArg<{element}>({name})";
                default: throw new ArgumentOutOfRangeException(nameof(t), t.Collection, null);
            }
        }

        /// <summary>The managed value read from native storage (<see cref="CppStorage"/>) at the void* <paramref name="ptr"/>.</summary>
        public static string CsFromStorage(TypeRef t, string ptr) => t.Kind switch
        {
            BindKind.Bool => $"(*(byte*){ptr} != 0)",
            BindKind.Char => $"(char)(*(ushort*){ptr})",
            BindKind.Enum => $"({CsName(t.Clr)})(*({CsScalar(t.Underlying)}*){ptr})",
            BindKind.String => $"Strings.FromArg((PyStringArg*){ptr})",
            BindKind.Object or BindKind.SiblingObject when IsValueType(t) => $"Handles.Unbox<{CsName(t.Clr)}>(*(IntPtr*){ptr})",
            BindKind.Object or BindKind.SiblingObject => $"Handles.Get<{CsName(t.Clr)}>(*(IntPtr*){ptr})",
            BindKind.DateTime => $"DateTimes.ToDateTime(*(DateTimeArg*){ptr})",
            BindKind.DateTimeOffset => $"DateTimes.ToDateTimeOffset(*(DateTimeArg*){ptr})",
            BindKind.TimeSpan => $"new global::System.TimeSpan(*(long*){ptr})",
            BindKind.Decimal => $"Decimals.ToDecimal(*(DecimalArg*){ptr})",
            BindKind.Guid => $"Guids.FromBytes((byte*){ptr})",
            BindKind.Variant => $"Variants.FromArg((VariantArg*){ptr})",
            _ => $"(*({CsScalar(Scalar(t))}*){ptr})",
        };

        public static string CsReturnType(TypeRef r) => Shape(r) switch
        {
            ResultShape.Void or ResultShape.PyObjectOut or ResultShape.ObjectOut or ResultShape.ValueOut
                or ResultShape.CollectionOut => "void",
            ResultShape.Handle => "IntPtr",
            _ when r.Kind == BindKind.TimeSpan => "long",
            _ => CsScalar(Scalar(r)),
        };

        public static string? CsResultParam(TypeRef r) => Shape(r) switch
        {
            ResultShape.PyObjectOut => "IntPtr* result",
            ResultShape.ObjectOut => "PyObjectOutArg* result",
            ResultShape.ValueOut => r.Kind switch
            {
                BindKind.DateTime or BindKind.DateTimeOffset => "DateTimeArg* result",
                BindKind.Decimal => "DecimalArg* result",
                _ => "byte* result",
            },
            ResultShape.CollectionOut => "PyCollectionArg* result",
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
            BindKind.Variant or BindKind.Nullable => $"*result = Variants.ToPy({value});",
            BindKind.DateTime => $"*result = DateTimes.FromDateTime({value});",
            BindKind.DateTimeOffset => $"*result = DateTimes.FromDateTimeOffset({value});",
            BindKind.TimeSpan => $"return {value}.Ticks;",
            BindKind.Decimal => $"*result = Decimals.FromDecimal({value});",
            BindKind.Guid => $"Guids.ToBytes({value}, result);",
            BindKind.Stream => $"Collections.WriteStreamResult(result, {value});",
            BindKind.Collection when r.Generic != null && GenericNames.WrapperOf(r) == GenericWrapper.List =>
                $"GenericEntries<{CsType(r.Element!.Clr)}>.WriteListResult(result, {value});",
            BindKind.Collection when r.Generic != null => $"Collections.WriteResult(result, {value});",
            BindKind.Collection when r.Element != null && r.Collection != CollectionKind.TypedArray =>
                $"TypedCollections.WriteResult<{CsType(r.Element.Clr)}>(result, {value});",
            BindKind.Collection => $"Collections.WriteResult(result, {value});",
            _ when Shape(r) == ResultShape.Handle => $"return Handles.Alloc({value});",
            _ when Shape(r) == ResultShape.ObjectOut => $"Handles.WriteOut(result, {value});",
            _ => $"return {value};",
        };
    }
}
