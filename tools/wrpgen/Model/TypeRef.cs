using System;
using System.Collections.Generic;
using System.Linq;

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

        /// <summary>The wrapper a typed collection crosses as.</summary>
        public GenericWrapper WrapperKind => Collection switch
        {
            CollectionKind.GenericList or CollectionKind.GenericCollection => GenericWrapper.List,
            CollectionKind.TypedArray => GenericWrapper.Array,
            CollectionKind.GenericEnumerable => GenericWrapper.Iterable,
            _ => GenericWrapper.Iter,
        };

        /// <summary>The names of the wrapper a typed collection crosses as (null: not a typed collection).</summary>
        public GenericWrapperNames? Wrapper => Generic?.Wrapper(WrapperKind);
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

        // Names, set by the naming pass.
        /// <summary>The wrapper types, in generation order: list, array (when used), iterable, iterator.</summary>
        public List<GenericWrapperNames> Wrappers { get; } = new();
        public GenericWrapperNames Wrapper(GenericWrapper kind) => Wrappers.First(w => w.Kind == kind);
        /// <summary>The generic hosts by kind (ICol, IList, Array, Iterable, Iter).</summary>
        public Dictionary<string, GenericHostNames> Hosts { get; } = new();
        /// <summary>The native element converters and their PyGnElement table.</summary>
        public string ElementToPy { get; set; } = "";
        public string ElementToClr { get; set; } = "";
        public string ElementTable { get; set; } = "";
        /// <summary>The tp_iter of the wrappers and of generated classes implementing IEnumerable&lt;T&gt;.</summary>
        public string TpIter { get; set; } = "";
        /// <summary>The C# class reading and writing elements, and the C# file of the instantiation.</summary>
        public string ElementClass { get; set; } = "";
        public string ElementClassFullName { get; set; } = "";
        public string ProxyFile { get; set; } = "";
        /// <summary>The typed callbacks behind <see cref="PyListTable"/>, <see cref="PySeqTable"/>, <see cref="PyIterTable"/>.</summary>
        public CallbackNames ListCallbacks { get; set; } = null!;
        public CallbackNames SeqCallbacks { get; set; } = null!;
        public CallbackNames IterCallbacks { get; set; } = null!;
        public override string ToString() => Element.Clr.FullName + " " + Id;
    }
}
