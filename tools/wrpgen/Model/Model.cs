using System;
using System.Collections.Generic;
using System.Linq;
using System.Reflection;

namespace Orvane.WrpGen.Model
{
    internal enum TypeKind { Class, Struct, Interface, Enum }

    /// <summary>How a parameter or result crosses the boundary.</summary>
    internal enum BindKind
    {
        Void, Bool, Int8, UInt8, Int16, UInt16, Int32, UInt32, Int64, UInt64, Float, Double, Char,
        Enum, String, Bytes,
        /// <summary>A class, struct or interface bound by this module.</summary>
        Object,
        /// <summary>A class or struct of a sibling module, reached through its capsule.</summary>
        SiblingObject,
        /// <summary>System.IDisposable, seen through the runtime's disposable wrapper.</summary>
        Disposable,
        DateTime, DateTimeOffset, TimeSpan, Decimal, Guid,
        /// <summary>System.Object: a tagged variant on the way in, any Python value on the way out.</summary>
        Variant,
        /// <summary>Nullable&lt;T&gt;; <see cref="TypeRef.Element"/> is T.</summary>
        Nullable,
        /// <summary>A ref or out parameter carried by a Python list; <see cref="TypeRef.Element"/> is the referenced type.</summary>
        ByRef,
        /// <summary>System.IO.Stream or a type derived from it.</summary>
        Stream,
        /// <summary>An array or collection interface; <see cref="TypeRef.Collection"/> says which.</summary>
        Collection,
        /// <summary>Not bindable this round; <see cref="TypeRef.SkipKind"/> says why.</summary>
        Skipped,
    }

    /// <summary>The collection shapes parameters and results may have.</summary>
    internal enum CollectionKind
    {
        IList, ICollection, IEnumerable, IEnumerator, Array, ArrayList, CollectionBase, ReadOnlyCollectionBase,
        /// <summary>T[] of a bindable element type other than byte.</summary>
        TypedArray,
        /// <summary>IList&lt;T&gt;, List&lt;T&gt; and IReadOnlyList&lt;T&gt;.</summary>
        GenericList,
        /// <summary>ICollection&lt;T&gt; and IReadOnlyCollection&lt;T&gt;.</summary>
        GenericCollection,
        GenericEnumerable,
        GenericEnumerator,
    }

    /// <summary>A parameter or result type together with its binding kind.</summary>
    internal sealed class TypeRef
    {
        public TypeRef(BindKind kind, Type clr) { Kind = kind; Clr = clr; }
        public BindKind Kind { get; }
        public Type Clr { get; }
        /// <summary>Underlying integer kind of an enum.</summary>
        public BindKind Underlying { get; init; }
        public BoundType? Bound { get; init; }
        public SiblingType? Sibling { get; init; }
        public string? SkipKind { get; init; }
        public bool IsSkipped => Kind == BindKind.Skipped;
        /// <summary>The inner type of a nullable or by-reference type, the element type of a typed collection.</summary>
        public TypeRef? Element { get; init; }
        public CollectionKind Collection { get; init; }
        /// <summary>An out parameter (as opposed to ref): the list's item 0 is still read when present.</summary>
        public bool IsOut { get; init; }
        /// <summary>The typed instantiation a typed collection crosses as (set by the generic-instances pass).</summary>
        public GenericInstance? Generic { get; set; }
    }

    /// <summary>
    /// The typed wrappers of one element type: managed proxies, native hosts,
    /// Python types and callback tables that share the identifier <see cref="Id"/>.
    /// </summary>
    internal sealed class GenericInstance
    {
        public GenericInstance(TypeRef element) { Element = element; }
        public TypeRef Element { get; }
        /// <summary>Eight upper-case hex digits derived from the element type (set by the naming pass).</summary>
        public string Id { get; set; } = "";
        /// <summary>Used as IList&lt;T&gt;, List&lt;T&gt;, IReadOnlyList&lt;T&gt; or a collection of T.</summary>
        public bool HasList { get; set; }
        public bool HasArray { get; set; }
        /// <summary>An array parameter: Python lists and sequences are read through typed callbacks.</summary>
        public bool ArrayParameter { get; set; }
        /// <summary>An enumerable parameter: Python iterables are read through a typed callback.</summary>
        public bool EnumerableParameter { get; set; }
        /// <summary>Positions in the generic callback table list (-1: no such table).</summary>
        public int PyListTable { get; set; } = -1;
        public int PySeqTable { get; set; } = -1;
        public int PyIterTable { get; set; } = -1;
        public override string ToString() => Element.Clr.FullName + " " + Id;
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
        public string CapsuleName => PythonModule + "._C_APIT_" + Name;
        public string PyToClrSlot => $"wrpPyl_convcaps_py_to_clr_{Id}_{Name}";
        public string ClrToPySlot => $"wrpPyl_convcaps_clr_to_py_{Id}_{Name}";
        /// <summary>The O&amp; trampoline that calls <see cref="PyToClrSlot"/>.</summary>
        public string PyToClrTrampoline => $"wrpPyl_conv_py_to_clr_{Id}_{Name}";
    }

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

    /// <summary>One overload as a candidate of a Python method: where it is defined decides how it is called.</summary>
    internal sealed class Candidate
    {
        public Candidate(MethodModel method) { Method = method; }
        public MethodModel Method { get; }
        public BoundType Owner => Method.Owner;
    }

    /// <summary>Where the function behind a Python member of a type comes from.</summary>
    internal enum SlotSource
    {
        /// <summary>Generated in the type's own unit.</summary>
        Local,
        /// <summary>Another type's exported (shared) function.</summary>
        Shared,
        /// <summary>Provided by the Python base type; no table entry.</summary>
        Inherited,
    }

    internal sealed class PyPropertySlot
    {
        public PyPropertySlot(string pyName, PropertyModel property, SlotSource source, BoundType provider)
        { PyName = pyName; Property = property; Source = source; Provider = provider; }
        public string PyName { get; }
        public PropertyModel Property { get; }
        public SlotSource Source { get; }
        /// <summary>The type whose unit defines the functions (the property's owner).</summary>
        public BoundType Provider { get; }
    }

    internal sealed class PyMethodSlot
    {
        public PyMethodSlot(string pyName, bool isStatic, List<Candidate> candidates, SlotSource source, BoundType provider)
        { PyName = pyName; IsStatic = isStatic; Candidates = candidates; Source = source; Provider = provider; }
        public string PyName { get; }
        public bool IsStatic { get; }
        public List<Candidate> Candidates { get; }
        public SlotSource Source { get; }
        /// <summary>The type whose unit defines the function.</summary>
        public BoundType Provider { get; }
        public bool IsDispatcher => Candidates.Count > 1;
        /// <summary>A single parameterless instance overload: called with METH_NOARGS.</summary>
        public bool IsNoArgs => !IsStatic && Candidates.Count == 1 && Candidates[0].Method.Parameters.Count == 0;
    }

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
        public string PythonFullName => Module.PyName + "." + Name;
        public string ProxyNamespace { get; set; } = "";
        public string ProxyClass { get; set; } = "";
        public string ProxyFullName => ProxyNamespace + "." + ProxyClass;
        /// <summary>Identifier infix used by every generated symbol of the type.</summary>
        public string Tag => Id + "_" + Name;

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

    /// <summary>A Python module of the generated tree (one per managed namespace, plus empty parents).</summary>
    internal sealed class ModuleNode
    {
        public ModuleNode(string pyName, string ns, ModuleNode? parent) { PyName = pyName; Namespace = ns; Parent = parent; }
        public string PyName { get; }
        public string Namespace { get; }
        public ModuleNode? Parent { get; }
        public string Segment => PyName.Substring(PyName.LastIndexOf('.') + 1);
        public string Id { get; set; } = "";
        public string Tag => Id + "_" + Segment;
        public List<ModuleNode> Children { get; } = new();
        /// <summary>Classes, structs and interfaces, in generator order.</summary>
        public List<BoundType> Types { get; } = new();
        public List<BoundType> Enums { get; } = new();

        public IEnumerable<ModuleNode> SelfAndDescendants()
        {
            yield return this;
            foreach (var c in Children)
                foreach (var d in c.SelfAndDescendants())
                    yield return d;
        }

        /// <summary>Whether this module or one below it has static-field initialisers.</summary>
        public bool HasStaticFields => Types.Any(t => t.HasStaticInitialiser) || Children.Any(c => c.HasStaticFields);
    }

    /// <summary>A type or member that is not bound, as written to the report.</summary>
    internal sealed record SkippedEntry(string What, string Kind);

    /// <summary>A public type of the input that gets no Python type, and why.</summary>
    internal sealed record UnboundType(Type Clr, string Kind);

    /// <summary>Everything one run binds.</summary>
    internal sealed class BindingModel
    {
        public BindingModel(string pythonModule, string rootNamespace, string proxyAssembly, string company)
        { PythonModule = pythonModule; RootNamespace = rootNamespace; ProxyAssembly = proxyAssembly; Company = company; }
        public string PythonModule { get; }
        public string RootNamespace { get; }
        public string ProxyAssembly { get; }
        public string Company { get; }
        /// <summary>The product word: the last segment of the Python module name.</summary>
        public string Product => PythonModule.Substring(PythonModule.LastIndexOf('.') + 1);
        public bool ExportCapsules { get; set; }

        public ModuleNode Root { get; set; } = null!;
        /// <summary>Every bound type, sorted by full name.</summary>
        public List<BoundType> Types { get; } = new();
        public List<SiblingType> SiblingTypes { get; } = new();
        /// <summary>Public types of the input that are not bound (set by the type-selection pass).</summary>
        public List<UnboundType> UnboundTypes { get; } = new();
        /// <summary>The report: written by the skipped-report pass only.</summary>
        public List<SkippedEntry> Skipped { get; } = new();
        /// <summary>Typed collection instantiations, in generation order.</summary>
        public List<GenericInstance> Generics { get; } = new();

        public IEnumerable<BoundType> ObjectTypes => Types.Where(t => !t.IsEnum);
        public IEnumerable<BoundType> EnumTypes => Types.Where(t => t.IsEnum);
        public IEnumerable<ModuleNode> Modules => Root.SelfAndDescendants();
    }
}
