using System;
using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Passes
{
    /// <summary>
    /// Decides how one managed parameter or result type crosses the boundary, or
    /// which missing kind keeps it from being bound this round.
    /// </summary>
    internal sealed class TypeClassifier
    {
        private readonly IReadOnlyDictionary<Type, BoundType> _bound;
        private readonly IReadOnlyDictionary<Type, SiblingType> _siblings;

        public TypeClassifier(IReadOnlyDictionary<Type, BoundType> bound, IReadOnlyDictionary<Type, SiblingType> siblings)
        {
            _bound = bound;
            _siblings = siblings;
        }

        public TypeRef Classify(Type t, bool isOut = false)
        {
            if (t.IsByRef)
            {
                var inner = Classify(t.GetElementType()!);
                return IsByRefValue(inner) ? new TypeRef(BindKind.ByRef, t) { Element = inner, IsOut = isOut } : Skip(t, "byref");
            }
            if (t.IsPointer || t.IsFunctionPointer) return Skip(t, "pointer");
            if (t.IsGenericParameter || t.ContainsGenericParameters) return Skip(t, "generic");
            if (t.IsArray)
            {
                var element = t.GetElementType()!;
                if (!t.IsSZArray) return Skip(t, "array");
                if (element.FullName == "System.Byte") return new TypeRef(BindKind.Bytes, t);
                var inner = Classify(element);
                return IsElement(inner)
                    ? new TypeRef(BindKind.Collection, t) { Collection = CollectionKind.TypedArray, Element = inner }
                    : Skip(t, "array");
            }
            var scalar = ScalarKind(t.FullName);
            if (scalar != null)
                return new TypeRef(scalar.Value, t);
            if (t.IsEnum)
            {
                var underlying = ScalarKind(t.GetEnumUnderlyingType().FullName);
                if (underlying == null || underlying == BindKind.Bool || underlying == BindKind.Char)
                    return Skip(t, "unsupported");
                return new TypeRef(BindKind.Enum, t) { Underlying = underlying.Value };
            }
            switch (t.FullName)
            {
                case "System.String": return new TypeRef(BindKind.String, t);
                case "System.IDisposable": return new TypeRef(BindKind.Disposable, t);
                case "System.DateTime": return new TypeRef(BindKind.DateTime, t);
                case "System.DateTimeOffset": return new TypeRef(BindKind.DateTimeOffset, t);
                case "System.TimeSpan": return new TypeRef(BindKind.TimeSpan, t);
                case "System.Decimal": return new TypeRef(BindKind.Decimal, t);
                case "System.Guid": return new TypeRef(BindKind.Guid, t);
                case "System.Object": return new TypeRef(BindKind.Variant, t);
            }
            if (t.IsGenericType && t.GetGenericTypeDefinition().FullName == "System.Nullable`1")
            {
                var inner = Classify(t.GetGenericArguments()[0]);
                return IsNullableValue(inner) ? new TypeRef(BindKind.Nullable, t) { Element = inner } : Skip(t, "nullable");
            }
            if (_bound.TryGetValue(t, out var bound) && !bound.IsEnum)
                return new TypeRef(BindKind.Object, t) { Bound = bound };
            if (_siblings.TryGetValue(t, out var sibling))
                return new TypeRef(BindKind.SiblingObject, t) { Sibling = sibling };
            if (IsDelegate(t)) return Skip(t, "delegate");
            if (IsStream(t)) return new TypeRef(BindKind.Stream, t);
            if (CollectionOf(t) is { } collection)
            {
                if (!t.IsGenericType)
                    return new TypeRef(BindKind.Collection, t) { Collection = collection };
                var inner = Classify(t.GetGenericArguments()[0]);
                return IsElement(inner)
                    ? new TypeRef(BindKind.Collection, t) { Collection = collection, Element = inner }
                    : Skip(t, "collection");
            }
            if (IsCollection(t)) return Skip(t, "collection");
            if (t.IsGenericType) return Skip(t, "generic");
            return Skip(t, "unsupported");
        }

        /// <summary>Kinds a ref/out parameter may carry: values with a typed converter both ways.</summary>
        public static bool IsByRefValue(TypeRef t) => t.Kind switch
        {
            BindKind.Void or BindKind.Skipped or BindKind.Bytes or BindKind.Disposable or BindKind.Nullable
                or BindKind.ByRef or BindKind.Stream or BindKind.Collection => false,
            _ => true,
        };

        /// <summary>Kinds a Nullable may wrap: value types.</summary>
        public static bool IsNullableValue(TypeRef t) => t.Kind switch
        {
            BindKind.Bool or BindKind.Int8 or BindKind.UInt8 or BindKind.Int16 or BindKind.UInt16 or BindKind.Int32
                or BindKind.UInt32 or BindKind.Int64 or BindKind.UInt64 or BindKind.Float or BindKind.Double
                or BindKind.Char or BindKind.Enum or BindKind.DateTime or BindKind.DateTimeOffset or BindKind.TimeSpan
                or BindKind.Decimal or BindKind.Guid => true,
            BindKind.Object => t.Bound!.IsStruct,
            BindKind.SiblingObject => t.Sibling!.Kind == TypeKind.Struct,
            _ => false,
        };

        /// <summary>Element kinds of typed arrays and generic collections.</summary>
        public static bool IsElement(TypeRef t) => IsByRefValue(t);

        private static CollectionKind? CollectionOf(Type t)
        {
            string? name = t.IsGenericType ? t.GetGenericTypeDefinition().FullName : t.FullName;
            return name switch
            {
                "System.Collections.IList" => CollectionKind.IList,
                "System.Collections.ICollection" => CollectionKind.ICollection,
                "System.Collections.IEnumerable" => CollectionKind.IEnumerable,
                "System.Collections.IEnumerator" => CollectionKind.IEnumerator,
                "System.Array" => CollectionKind.Array,
                "System.Collections.ArrayList" => CollectionKind.ArrayList,
                "System.Collections.CollectionBase" => CollectionKind.CollectionBase,
                "System.Collections.ReadOnlyCollectionBase" => CollectionKind.ReadOnlyCollectionBase,
                "System.Collections.Generic.IList`1" or "System.Collections.Generic.List`1"
                    or "System.Collections.Generic.IReadOnlyList`1" => CollectionKind.GenericList,
                "System.Collections.Generic.ICollection`1"
                    or "System.Collections.Generic.IReadOnlyCollection`1" => CollectionKind.GenericCollection,
                "System.Collections.Generic.IEnumerable`1" => CollectionKind.GenericEnumerable,
                "System.Collections.Generic.IEnumerator`1" => CollectionKind.GenericEnumerator,
                _ => null,
            };
        }

        private static TypeRef Skip(Type t, string kind) => new(BindKind.Skipped, t) { SkipKind = kind };

        public static BindKind? ScalarKind(string? fullName) => fullName switch
        {
            "System.Void" => BindKind.Void,
            "System.Boolean" => BindKind.Bool,
            "System.SByte" => BindKind.Int8,
            "System.Byte" => BindKind.UInt8,
            "System.Int16" => BindKind.Int16,
            "System.UInt16" => BindKind.UInt16,
            "System.Int32" => BindKind.Int32,
            "System.UInt32" => BindKind.UInt32,
            "System.Int64" => BindKind.Int64,
            "System.UInt64" => BindKind.UInt64,
            "System.Single" => BindKind.Float,
            "System.Double" => BindKind.Double,
            "System.Char" => BindKind.Char,
            _ => null,
        };

        private static bool IsDelegate(Type t)
        {
            for (var b = t.BaseType; b != null; b = b.BaseType)
                if (b.FullName == "System.MulticastDelegate" || b.FullName == "System.Delegate")
                    return true;
            return false;
        }

        private static bool IsStream(Type t)
        {
            for (var b = t; b != null; b = b.BaseType)
                if (b.FullName == "System.IO.Stream")
                    return true;
            return false;
        }

        private static readonly HashSet<string> CollectionInterfaces = new(StringComparer.Ordinal)
        {
            "System.Collections.IEnumerable", "System.Collections.IEnumerator", "System.Collections.ICollection",
            "System.Collections.IList", "System.Collections.IDictionary",
            "System.Collections.Generic.IEnumerable`1", "System.Collections.Generic.IEnumerator`1",
        };

        private static bool IsCollection(Type t)
        {
            string? Def(Type x) => x.IsGenericType ? x.GetGenericTypeDefinition().FullName : x.FullName;
            if (CollectionInterfaces.Contains(Def(t) ?? ""))
                return true;
            return t.GetInterfaces().Any(i => CollectionInterfaces.Contains(Def(i) ?? ""));
        }
    }
}
