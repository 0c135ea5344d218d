using System.Collections.Generic;

namespace Orvane.WrpGen.Model
{
    internal enum EntryKind
    {
        Ctor, Method, Getter, Setter, StaticGetter, EnumGetter, AssignableTo,
        /// <summary>The element entries of a collection type (its Count and int indexer).</summary>
        CollLength, CollItem, CollItemNoCheck, CollContains, CollSetItem, CollSetItemNoCheck, CollSetSlice,
    }

    /// <summary>One managed entry of a proxy class, as both the native host and the C# proxy see it.</summary>
    internal sealed class Entry
    {
        public Entry(string name, EntryKind kind, bool hasSelf, IReadOnlyList<TypeRef> parameters, TypeRef result)
        { Name = name; Kind = kind; HasSelf = hasSelf; Parameters = parameters; Result = result; }
        public string Name { get; }
        public EntryKind Kind { get; }
        public bool HasSelf { get; }
        public IReadOnlyList<TypeRef> Parameters { get; }
        /// <summary>The result; a constructor's is its own object type (returned as a handle).</summary>
        public TypeRef Result { get; }
        public MethodModel? Method { get; init; }
        public PropertyModel? Property { get; init; }
        public StaticMemberModel? Static { get; init; }
        public EnumMemberModel? EnumMember { get; init; }
        /// <summary>Fixed native signature of an element entry (parameters after the handle).</summary>
        public IReadOnlyList<string>? NativeParams { get; init; }
        public string? NativeReturn { get; init; }
        public override string ToString() => $"{Kind} {Name}";
    }
}
