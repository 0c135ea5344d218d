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

        public TypeRef Classify(Type t)
        {
            if (t.IsByRef) return Skip(t, "byref");
            if (t.IsPointer || t.IsFunctionPointer) return Skip(t, "pointer");
            if (t.IsGenericParameter || t.ContainsGenericParameters) return Skip(t, "generic");
            if (t.IsArray)
            {
                var element = t.GetElementType()!;
                return t.IsSZArray && element.FullName == "System.Byte" ? new TypeRef(BindKind.Bytes, t) : Skip(t, "array");
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
                case "System.DateTime": return Skip(t, "datetime");
                case "System.DateTimeOffset": return Skip(t, "datetimeoffset");
                case "System.TimeSpan": return Skip(t, "timespan");
                case "System.Decimal": return Skip(t, "decimal");
                case "System.Guid": return Skip(t, "guid");
                case "System.Object": return Skip(t, "variant");
            }
            if (t.IsGenericType && t.GetGenericTypeDefinition().FullName == "System.Nullable`1")
                return Skip(t, "nullable");
            if (_bound.TryGetValue(t, out var bound) && !bound.IsEnum)
                return new TypeRef(BindKind.Object, t) { Bound = bound };
            if (_siblings.TryGetValue(t, out var sibling))
                return new TypeRef(BindKind.SiblingObject, t) { Sibling = sibling };
            if (IsDelegate(t)) return Skip(t, "delegate");
            if (IsStream(t)) return Skip(t, "stream");
            if (IsCollection(t)) return Skip(t, "collection");
            if (t.IsGenericType) return Skip(t, "generic");
            return Skip(t, "unsupported");
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

        /// <summary>A C#-like display name for the report: System.Collections.Generic.IList&lt;Orvane.Folaro.ISlide&gt;.</summary>
        public static string DisplayName(Type t)
        {
            if (t.IsByRef) return DisplayName(t.GetElementType()!) + "&";
            if (t.IsPointer) return DisplayName(t.GetElementType()!) + "*";
            if (t.IsArray) return DisplayName(t.GetElementType()!) + "[" + new string(',', t.GetArrayRank() - 1) + "]";
            if (t.IsGenericParameter) return t.Name;
            if (t.IsGenericType)
            {
                string name = t.GetGenericTypeDefinition().FullName ?? t.Name;
                int tick = name.IndexOf('`');
                if (tick >= 0) name = name.Substring(0, tick);
                return name + "<" + string.Join(", ", t.GetGenericArguments().Select(DisplayName)) + ">";
            }
            return (t.FullName ?? t.Name).Replace('+', '.');
        }
    }
}
