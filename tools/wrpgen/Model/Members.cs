using System;
using System.Collections.Generic;
using System.Linq;

namespace Orvane.WrpGen.Model
{
    internal sealed class ParameterModel
    {
        public ParameterModel(string name, Type clr, bool isOut) { Name = name; Clr = clr; IsOut = isOut; }
        public string Name { get; }
        /// <summary>The declared parameter type (a by-reference type for ref and out).</summary>
        public Type Clr { get; }
        public bool IsOut { get; }
        /// <summary>How the parameter crosses (set by the binding-kind pass).</summary>
        public TypeRef Type { get; set; } = null!;
        public string PyName { get; set; } = "";
    }

    /// <summary>How managed code reaches a bound method.</summary>
    internal enum MemberAccess
    {
        Call,
        /// <summary>An indexer read, obj[i, ...]: bound as get_item, which the type's x[...] calls.</summary>
        IndexGet,
        /// <summary>An indexer write, obj[i, ...] = value (the last parameter): bound as set_item.</summary>
        IndexSet,
    }

    /// <summary>A constructor or method; also the entry that binds it.</summary>
    internal sealed class MethodModel
    {
        public MethodModel(BoundType owner, string name, bool isCtor, bool isStatic, List<ParameterModel> parameters, Type? resultClr)
        { Owner = owner; Name = name; IsCtor = isCtor; IsStatic = isStatic; Parameters = parameters; ResultClr = resultClr; }
        public BoundType Owner { get; }
        /// <summary>Managed name (the class name for constructors).</summary>
        public string Name { get; }
        public bool IsCtor { get; }
        public bool IsStatic { get; }
        public List<ParameterModel> Parameters { get; }
        /// <summary>The declared return type; null for constructors.</summary>
        public Type? ResultClr { get; }
        /// <summary>How the result crosses (set by the binding-kind pass; void for constructors).</summary>
        public TypeRef Result { get; set; } = null!;
        /// <summary>A struct's implicit parameterless constructor, absent from metadata.</summary>
        public bool IsImplicitDefault { get; init; }
        public bool IsGenericDefinition { get; init; }
        public bool IsAbstract { get; init; }
        public MemberAccess Access { get; set; } = MemberAccess.Call;
        public string? SkipKind { get; set; }
        public bool IsBound => SkipKind == null;
        /// <summary>Index among the overloads of this managed name, skipped ones included.</summary>
        public int Number { get; set; }
        public string PyName { get; set; } = "";
        /// <summary>The name of the proxy entry that binds the overload.</summary>
        public string EntryName { get; set; } = "";
        /// <summary>Index of this overload inside its Python-name group of the owner.</summary>
        public int GroupIndex { get; set; }
        /// <summary>The function through which other types' dispatchers call the overload (exported candidates only).</summary>
        public string? ExportedFunction { get; set; }
        /// <summary>Managed parameter types, the identity used to tell overloads apart across types.</summary>
        public string SignatureKey => string.Join(",", Parameters.Select(p => p.Clr.FullName ?? p.Clr.Name));
        public string ReportSignature { get; init; } = "";
    }

    /// <summary>An instance property (or public instance field) of a bound type.</summary>
    internal sealed class PropertyModel
    {
        public PropertyModel(BoundType owner, string name, Type clr, bool canRead, bool canWrite, bool isField)
        { Owner = owner; Name = name; Clr = clr; CanRead = canRead; CanWrite = canWrite; IsField = isField; }
        public BoundType Owner { get; }
        public string Name { get; }
        public Type Clr { get; }
        public TypeRef Type { get; set; } = null!;
        public bool CanRead { get; }
        public bool CanWrite { get; }
        public bool IsField { get; }
        public string? SkipKind { get; set; }
        public bool IsBound => SkipKind == null;
        public string PyName { get; set; } = "";
        /// <summary>The accessor functions, defined in the owner's unit (null: no such accessor).</summary>
        public CppSymbol? Getter { get; set; }
        public CppSymbol? Setter { get; set; }
        public string ReportSignature { get; init; } = "";
    }

    /// <summary>A static field, constant or static property: a class attribute filled at import.</summary>
    internal sealed class StaticMemberModel
    {
        public StaticMemberModel(BoundType owner, string name, Type clr, bool isField)
        { Owner = owner; Name = name; Clr = clr; IsField = isField; }
        public BoundType Owner { get; }
        public string Name { get; }
        public Type Clr { get; }
        public TypeRef Type { get; set; } = null!;
        public bool IsField { get; }
        /// <summary>A field, or a property with a public, concrete getter: something to read at import.</summary>
        public bool IsReadable { get; init; } = true;
        public string? SkipKind { get; set; }
        public bool IsBound => SkipKind == null;
        /// <summary>The key in the type's dictionary: UPPER_SNAKE for fields, snake_case for properties.</summary>
        public string Key { get; set; } = "";
        /// <summary>The function reading the member at import, private to the owner's unit.</summary>
        public CppSymbol Getter { get; set; } = null!;
        public string ReportSignature { get; init; } = "";
    }

    /// <summary>
    /// An indexer as metadata has it. The binding-kind pass makes the first int
    /// indexer of an object element on a type with a Count its element access;
    /// any other is reached by key through its accessor methods.
    /// </summary>
    internal sealed class IndexedProperty
    {
        public IndexedProperty(Type elementClr, bool isIntIndex, bool canWrite, MethodModel? getter, MethodModel? setter)
        { ElementClr = elementClr; IsIntIndex = isIntIndex; CanWrite = canWrite; Getter = getter; Setter = setter; }
        public Type ElementClr { get; }
        /// <summary>One int index and a public instance getter.</summary>
        public bool IsIntIndex { get; }
        public bool CanWrite { get; }
        /// <summary>The keyed accessors, already among the type's methods (null: static or absent).</summary>
        public MethodModel? Getter { get; }
        public MethodModel? Setter { get; }
    }

    /// <summary>The element access of a collection type: this[int] with its element type.</summary>
    internal sealed class IndexerModel
    {
        public IndexerModel(TypeRef element, bool canWrite) { Element = element; CanWrite = canWrite; }
        public TypeRef Element { get; }
        public bool CanWrite { get; }
    }

    internal sealed class EnumMemberModel
    {
        public EnumMemberModel(string name, object? rawValue) { Name = name; RawValue = rawValue; }
        public string Name { get; }
        public object? RawValue { get; }
        public string PyName { get; set; } = "";
        public string? SkipKind { get; set; }
        public bool IsBound => SkipKind == null;
    }
}
