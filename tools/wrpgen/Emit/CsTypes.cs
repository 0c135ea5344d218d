using System;
using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// The C# printer: how each binding kind is spelled in the proxies (parameter
    /// and result types, the managed argument built from a native one, and the
    /// statement that hands a managed value back).
    /// </summary>
    internal static class CsTypes
    {
        private static readonly HashSet<string> Keywords = new(StringComparer.Ordinal)
        {
            "abstract", "as", "base", "bool", "break", "byte", "case", "catch", "char", "checked", "class", "const",
            "continue", "decimal", "default", "delegate", "do", "double", "else", "enum", "event", "explicit", "extern",
            "false", "finally", "fixed", "float", "for", "foreach", "goto", "if", "implicit", "in", "int", "interface",
            "internal", "is", "lock", "long", "namespace", "new", "null", "object", "operator", "out", "override",
            "params", "private", "protected", "public", "readonly", "ref", "return", "sbyte", "sealed", "short",
            "sizeof", "stackalloc", "static", "string", "struct", "switch", "this", "throw", "true", "try", "typeof",
            "uint", "ulong", "unchecked", "unsafe", "ushort", "using", "virtual", "void", "volatile", "while",
        };

        /// <summary>A member name as a C# identifier (keywords escaped).</summary>
        public static string Identifier(string name) => Keywords.Contains(name) ? "@" + name : name;

        public static string Scalar(BindKind k) => k switch
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

        public static string GlobalName(Type t) => "global::" + (t.FullName ?? t.Name).Replace('+', '.');

        public static string ParamType(TypeRef t) => t.Kind switch
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
            _ => Scalar(Kinds.ScalarOf(t)),
        };

        /// <summary>The proxy's parameters for one managed parameter: a by-reference one also gets its out slot.</summary>
        public static IEnumerable<string> Params(TypeRef t, string name) =>
            t.Kind == BindKind.ByRef
                ? new[] { $"PyParamByRef* {name}", $"IntPtr* {name}_out" }
                : new[] { $"{ParamType(t)} {name}" };

        private static bool IsValueType(TypeRef t) =>
            (t.Kind == BindKind.Object && t.Bound!.IsStruct) || (t.Kind == BindKind.SiblingObject && t.Sibling!.Kind == TypeKind.Struct);

        /// <summary>The managed type as C# source.</summary>
        public static string TypeName(Type t)
        {
            if (t.IsByRef) return TypeName(t.GetElementType()!);
            if (t.IsArray) return TypeName(t.GetElementType()!) + "[]";
            if (t.IsGenericType)
            {
                string name = t.GetGenericTypeDefinition().FullName!;
                name = name.Substring(0, name.IndexOf('`'));
                return "global::" + name.Replace('+', '.') + "<" + string.Join(", ", t.GetGenericArguments().Select(TypeName)) + ">";
            }
            return GlobalName(t);
        }

        /// <summary>The managed argument built from the proxy parameter <paramref name="name"/>.</summary>
        public static string Arg(TypeRef t, string name) => t.Kind switch
        {
            BindKind.Bool => $"{name} != 0",
            BindKind.Char => $"(char){name}",
            BindKind.Enum => $"({GlobalName(t.Clr)}){name}",
            BindKind.String => $"Strings.FromArg({name})",
            BindKind.Bytes => $"Bytes.FromArg({name})",
            BindKind.Object or BindKind.SiblingObject when IsValueType(t) => $"Handles.Unbox<{GlobalName(t.Clr)}>({name})",
            BindKind.Object or BindKind.SiblingObject => $"Handles.Get<{GlobalName(t.Clr)}>({name})",
            BindKind.Disposable => $"Handles.Get<global::System.IDisposable>({name})",
            BindKind.DateTime => $"DateTimes.ToDateTime(*{name})",
            BindKind.DateTimeOffset => $"DateTimes.ToDateTimeOffset(*{name})",
            BindKind.TimeSpan => $"new global::System.TimeSpan({name})",
            BindKind.Decimal => $"Decimals.ToDecimal(*{name})",
            BindKind.Guid => $"Guids.FromBytes({name})",
            BindKind.Variant => $"Variants.FromArg({name})",
            BindKind.Stream when t.Clr.FullName == "System.IO.Stream" => $"Collections.StreamFromArg({name})",
            BindKind.Stream => $"({GlobalName(t.Clr)})Collections.StreamFromArg({name})",
            BindKind.Collection => CollectionArg(t, name),
            BindKind.Nullable =>
                $"({name} == null || {name}->HasValue == 0 ? default({TypeName(t.Clr)}) : {FromStorage(t.Element!, name + "->Value")})",
            _ => name,
        };

        private static string CollectionArg(TypeRef t, string name)
        {
            string element = t.Element != null ? TypeName(t.Element.Clr) : "";
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
                    return $"GenericArgs.ArrayFromArg<{element}>({name}, {g.PyListTable}, {g.PySeqTable}, &{g.ElementClassFullName}.Read)";
                case CollectionKind.TypedArray: return $"Collections.ArrayFromArg<{element}>({name})";
                case CollectionKind.GenericList:
                    return t.Clr.GetGenericTypeDefinition().FullName == "System.Collections.Generic.List`1"
                        ? $"TypedCollections.ListObjectFromArg<{element}>({name})"
                        : $"TypedCollections.ListFromArg<{element}>({name})";
                case CollectionKind.GenericCollection: return $"TypedCollections.ListFromArg<{element}>({name})";
                case CollectionKind.GenericEnumerable when t.Generic is { EnumerableParameter: true } g:
                    return $"GenericArgs.EnumerableFromArg<{element}>({name}, {g.PyIterTable}, &{g.ElementClassFullName}.Read)";
                case CollectionKind.GenericEnumerable: return $"TypedCollections.EnumerableFromArg<{element}>({name})";
                case CollectionKind.GenericEnumerator: return $"TypedCollections.EnumeratorFromArg<{element}>({name})";
                default: throw new ArgumentOutOfRangeException(nameof(t), t.Collection, null);
            }
        }

        /// <summary>The managed value read from native storage (<see cref="CppStorage"/>) at the void* <paramref name="ptr"/>.</summary>
        public static string FromStorage(TypeRef t, string ptr) => t.Kind switch
        {
            BindKind.Bool => $"(*(byte*){ptr} != 0)",
            BindKind.Char => $"(char)(*(ushort*){ptr})",
            BindKind.Enum => $"({GlobalName(t.Clr)})(*({Scalar(t.Underlying)}*){ptr})",
            BindKind.String => $"Strings.FromArg((PyStringArg*){ptr})",
            BindKind.Object or BindKind.SiblingObject when IsValueType(t) => $"Handles.Unbox<{GlobalName(t.Clr)}>(*(IntPtr*){ptr})",
            BindKind.Object or BindKind.SiblingObject => $"Handles.Get<{GlobalName(t.Clr)}>(*(IntPtr*){ptr})",
            BindKind.DateTime => $"DateTimes.ToDateTime(*(DateTimeArg*){ptr})",
            BindKind.DateTimeOffset => $"DateTimes.ToDateTimeOffset(*(DateTimeArg*){ptr})",
            BindKind.TimeSpan => $"new global::System.TimeSpan(*(long*){ptr})",
            BindKind.Decimal => $"Decimals.ToDecimal(*(DecimalArg*){ptr})",
            BindKind.Guid => $"Guids.FromBytes((byte*){ptr})",
            BindKind.Variant => $"Variants.FromArg((VariantArg*){ptr})",
            _ => $"(*({Scalar(Kinds.ScalarOf(t))}*){ptr})",
        };

        public static string ReturnType(TypeRef r) => Kinds.Shape(r) switch
        {
            ResultShape.Void or ResultShape.PyObjectOut or ResultShape.ObjectOut or ResultShape.ValueOut
                or ResultShape.CollectionOut => "void",
            ResultShape.Handle => "IntPtr",
            _ when r.Kind == BindKind.TimeSpan => "long",
            _ => Scalar(Kinds.ScalarOf(r)),
        };

        public static string? ResultParam(TypeRef r) => Kinds.Shape(r) switch
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
        public static string Return(TypeRef r, string value) => r.Kind switch
        {
            BindKind.Void => value + ";",
            BindKind.Bool => $"return {value} ? (byte)1 : (byte)0;",
            BindKind.Char => $"return (ushort){value};",
            BindKind.Enum => $"return ({Scalar(r.Underlying)}){value};",
            BindKind.String => $"*result = Strings.ToPy({value});",
            BindKind.Bytes => $"*result = Bytes.ToPy({value});",
            BindKind.Variant or BindKind.Nullable => $"*result = Variants.ToPy({value});",
            BindKind.DateTime => $"*result = DateTimes.FromDateTime({value});",
            BindKind.DateTimeOffset => $"*result = DateTimes.FromDateTimeOffset({value});",
            BindKind.TimeSpan => $"return {value}.Ticks;",
            BindKind.Decimal => $"*result = Decimals.FromDecimal({value});",
            BindKind.Guid => $"Guids.ToBytes({value}, result);",
            BindKind.Stream => $"Collections.WriteStreamResult(result, {value});",
            BindKind.Collection when r.Generic != null && r.WrapperKind == GenericWrapper.List =>
                $"GenericEntries<{TypeName(r.Element!.Clr)}>.WriteListResult(result, {value});",
            BindKind.Collection when r.Generic != null => $"Collections.WriteResult(result, {value});",
            BindKind.Collection when r.Element != null && r.Collection != CollectionKind.TypedArray =>
                $"TypedCollections.WriteResult<{TypeName(r.Element.Clr)}>(result, {value});",
            BindKind.Collection => $"Collections.WriteResult(result, {value});",
            _ when Kinds.Shape(r) == ResultShape.Handle => $"return Handles.Alloc({value});",
            _ when Kinds.Shape(r) == ResultShape.ObjectOut => $"Handles.WriteOut(result, {value});",
            _ => $"return {value};",
        };

        /// <summary>A new Python object for a string or number element of a typed collection, without boxing it.</summary>
        public static string ElementToPy(TypeRef e, string v) => e.Kind switch
        {
            BindKind.String => $"Strings.ToPy({v})",
            BindKind.Bool => $"PyCallbacks.WriteBool({v})",
            BindKind.Int8 or BindKind.UInt8 or BindKind.Int16 or BindKind.UInt16 or BindKind.Int32 => $"PyCallbacks.WriteInt({v})",
            BindKind.UInt32 => $"PyCallbacks.WriteUInt({v})",
            BindKind.Int64 => $"PyCallbacks.WriteLong({v})",
            BindKind.UInt64 => $"PyCallbacks.WriteULong({v})",
            BindKind.Float or BindKind.Double => $"PyCallbacks.WriteDouble({v})",
            _ => $"Variants.ToPy({v})",
        };
    }
}
