using System;
using System.Collections.Generic;
using System.Linq;

namespace Orvane.WrpGen.Model
{
    /// <summary>A public class, struct, interface or enum of the input assembly.</summary>
    internal sealed class BoundType
    {
        public BoundType(Type clr, TypeKind kind) { Clr = clr; Kind = kind; FullName = clr.FullName!; Name = clr.Name; Namespace = clr.Namespace ?? ""; }
        public Type Clr { get; }
        public TypeKind Kind { get; }
        public string FullName { get; }
        public string Name { get; }
        public string Namespace { get; }
        public bool IsSealed => Clr.IsSealed;
        public bool IsInterface => Kind == TypeKind.Interface;
        public bool IsEnum => Kind == TypeKind.Enum;
        public bool IsStruct => Kind == TypeKind.Struct;

        public string Id { get; set; } = "";
        public ModuleNode Module { get; set; } = null!;
        /// <summary>The type's dotted Python name (its tp_name).</summary>
        public string PythonFullName { get; set; } = "";
        public string ProxyNamespace { get; set; } = "";
        public string ProxyClass { get; set; } = "";
        public string ProxyFullName => ProxyNamespace + "." + ProxyClass;
        /// <summary>Identifier infix used by every generated symbol of the type.</summary>
        public string Tag => Id + "_" + Name;
        /// <summary>The C++ names of the type's generated code.</summary>
        public TypeSymbols Cpp { get; set; } = null!;
        /// <summary>Interfaces export their member functions to every implementing type.</summary>
        public bool SharesMembers => IsInterface;

        public BoundType? Base { get; set; }
        /// <summary>Bound interfaces the type implements, directly or through bases, in metadata order.</summary>
        public List<BoundType> Interfaces { get; } = new();
        public bool IsDisposable { get; set; }
        /// <summary>A readable int Count on the type or one of its interfaces.</summary>
        public bool HasCount { get; set; }
        /// <summary>Every public indexer, in metadata order.</summary>
        public List<IndexedProperty> IndexedProperties { get; } = new();
        /// <summary>Report signatures of public operators and events, which have no binding.</summary>
        public List<string> Operators { get; } = new();
        public List<string> Events { get; } = new();
        /// <summary>Position of System.IDisposable among the implemented interfaces (-1: not disposable).</summary>
        public int DisposableIndex { get; set; } = -1;

        /// <summary>An int indexer beside a Count: the type gets the collection protocol slots.</summary>
        public IndexerModel? Indexer { get; set; }
        /// <summary>
        /// Any other indexer, bound as get_item (and set_item when writable), own or from an
        /// interface or base: the type's x[k] and x[a, b] call them. A collection's x[i] is its element access.
        /// </summary>
        public PyMethodSlot? KeyedGet => KeyedSlot(MemberAccess.IndexGet);
        public PyMethodSlot? KeyedSet => KeyedSlot(MemberAccess.IndexSet);

        private PyMethodSlot? KeyedSlot(MemberAccess access) => Indexer != null ? null
            : PyMethods.FirstOrDefault(m => !m.IsStatic && m.Candidates.Any(c => c.Method.Access == access));
        /// <summary>Whether the managed type is enumerable (iteration goes through its enumerator).</summary>
        public bool IsEnumerable { get; set; }
        /// <summary>T of the IEnumerable&lt;T&gt; the type implements, if any, and how it crosses.</summary>
        public Type? EnumerableElementClr { get; set; }
        public TypeRef? EnumerableElement { get; set; }
        /// <summary>The typed wrappers of T when the type implements IEnumerable&lt;T&gt; of a bindable T.</summary>
        public GenericInstance? IterableOf { get; set; }

        public List<MethodModel> Constructors { get; } = new();
        public List<MethodModel> Methods { get; } = new();
        public List<PropertyModel> Properties { get; } = new();
        public List<StaticMemberModel> StaticMembers { get; } = new();
        public List<EnumMemberModel> EnumMembers { get; } = new();
        public Type? EnumUnderlyingClr { get; set; }
        public BindKind EnumUnderlying { get; set; } = BindKind.Int32;
        /// <summary>The managed entries of the type's proxy, in binding order (set by the entry-plan pass).</summary>
        public List<Entry> Entries { get; } = new();

        /// <summary>Python tables, filled by the sharing pass.</summary>
        public List<PyPropertySlot> PyProperties { get; } = new();
        public List<PyMethodSlot> PyMethods { get; } = new();
        /// <summary>Overloads other types' dispatchers call through this type's htgn functions.</summary>
        public HashSet<MethodModel> ExportedCandidates { get; } = new();

        public IEnumerable<MethodModel> BoundConstructors => Constructors.Where(c => c.IsBound);
        public IEnumerable<EnumMemberModel> BoundEnumMembers => EnumMembers.Where(e => e.IsBound);
        public IEnumerable<StaticMemberModel> BoundStaticMembers => StaticMembers.Where(s => s.IsBound);
        public bool HasStaticInitialiser => !IsEnum && BoundStaticMembers.Any();

        public override string ToString() => FullName;
    }

    /// <summary>A public type of a sibling module; this module converts it through the sibling's capsule.</summary>
    internal sealed class SiblingType
    {
        public SiblingType(Type clr, TypeKind kind, string rootModule, string rootNamespace)
        { Clr = clr; FullName = clr.FullName!; Name = clr.Name; Kind = kind; RootModule = rootModule; RootNamespace = rootNamespace; }
        public Type Clr { get; }
        public string FullName { get; }
        public string Name { get; }
        public TypeKind Kind { get; }
        /// <summary>The sibling extension module itself (imported before its capsules).</summary>
        public string RootModule { get; }
        /// <summary>The managed namespace the sibling module's root maps to.</summary>
        public string RootNamespace { get; }
        public string Id { get; set; } = "";
        /// <summary>The Python module that holds the type.</summary>
        public string PythonModule { get; set; } = "";
        /// <summary>The sibling's capsule holding the type's converters.</summary>
        public string CapsuleName { get; set; } = "";
        /// <summary>The function pointers filled from the capsule.</summary>
        public string PyToClrSlot { get; set; } = "";
        public string ClrToPySlot { get; set; } = "";
        /// <summary>The functions this module calls, which go through the slots.</summary>
        public string PyToClrTrampoline { get; set; } = "";
        public string ClrToPyTrampoline { get; set; } = "";
    }
}
