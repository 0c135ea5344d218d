namespace Orvane.WrpGen.Model
{
    /// <summary>
    /// A generated C++ function: its name where it is defined and the namespace
    /// of the unit that defines it (null: the global namespace, so any unit can call it).
    /// </summary>
    internal sealed record CppSymbol(string Name, string? Namespace = null)
    {
        public string Qualified => Namespace == null ? Name : Namespace + "::" + Name;

        /// <summary>How code inside the unit of namespace <paramref name="unit"/> refers to the symbol.</summary>
        public string From(string unit) => Namespace == unit ? Name : Qualified;
    }

    /// <summary>The C++ names of a bound type's generated code (set by the naming pass).</summary>
    internal sealed class TypeSymbols
    {
        /// <summary>The unit's file, below the generated C++ root.</summary>
        public string UnitFile { get; init; } = "";
        /// <summary>The namespace of the unit's private functions.</summary>
        public string UnitNamespace { get; init; } = "";
        /// <summary>The native host class of the type's managed proxy.</summary>
        public string Host { get; init; } = "";
        public string TypeObject { get; init; } = "";
        /// <summary>Whether the type, its bases or its interfaces failed to bind their hosts.</summary>
        public string IsNotValid { get; init; } = "";
        public string PyToClr { get; init; } = "";
        public string ClrToPy { get; init; } = "";
        /// <summary>Builds an enum type, or fills a class's static attributes.</summary>
        public string Initialiser { get; init; } = "";
        public string MethodTable { get; init; } = "";
        public string GetSetTable { get; init; } = "";
        /// <summary>The collection protocol tables (types with an int indexer).</summary>
        public string SequenceTable { get; init; } = "";
        public string MappingTable { get; init; } = "";
        /// <summary>The element reads a collection interface shares with the types implementing it.</summary>
        public string SharedItem { get; init; } = "";
        public string SharedSubscript { get; init; } = "";
        /// <summary>The converter table published in the type's capsule, its attribute and full name.</summary>
        public string CapsuleTable { get; init; } = "";
        public string CapsuleAttribute { get; init; } = "";
        public string CapsuleName { get; init; } = "";
    }

    /// <summary>The C++ names of a Python module's builder (set by the naming pass).</summary>
    internal sealed class ModuleSymbols
    {
        public string MethodTable { get; init; } = "";
        /// <summary>The PyModuleDef, defined in the module builders' unit.</summary>
        public CppSymbol Definition { get; init; } = null!;
        public string Builder { get; init; } = "";
        /// <summary>Fills the static attributes of the module's types and of its children's.</summary>
        public string StaticsInitialiser { get; init; } = "";
    }
}

namespace Orvane.WrpGen.Model
{
    /// <summary>A module-wide C++ unit: the key its shard is picked by, its file and the namespace of its private functions.</summary>
    internal sealed record UnitName(string Key, string File, string Namespace);

    /// <summary>The module-wide units (set by the naming pass).</summary>
    internal sealed class ModuleUnits
    {
        public UnitName Common { get; init; } = null!;
        public UnitName Generic { get; init; } = null!;
        public UnitName Modules { get; init; } = null!;
        public UnitName CapsuleImport { get; init; } = null!;
        public UnitName CapsuleExport { get; init; } = null!;
    }
}

namespace Orvane.WrpGen.Model
{
    /// <summary>The Python wrapper types of one typed instantiation.</summary>
    internal enum GenericWrapper { List, Array, Iterable, Iter }

    /// <summary>
    /// One wrapper type of an instantiation: its Python name, its PyGnType, the
    /// binding of its host entries and the typed O&amp; converter of parameters
    /// crossing as it (null: enumerators go through the untyped one).
    /// </summary>
    internal sealed record GenericWrapperNames(GenericWrapper Kind, string PyName, string Type, string Binding, string? Converter)
    {
        /// <summary>The PyTypeObject inside <see cref="Type"/>.</summary>
        public string TypeObject => Type + ".type";
    }

    /// <summary>A generic host of an instantiation: the native host class and its managed proxy class.</summary>
    internal sealed record GenericHostNames(string Native, string ManagedClass, string ManagedNamespace)
    {
        public string Managed => ManagedNamespace + "." + ManagedClass;
    }

    /// <summary>The names every instantiation shares (set by the naming pass).</summary>
    internal sealed class GenericModuleNames
    {
        /// <summary>Readies every wrapper type; the root module's builder calls it first.</summary>
        public string ReadyTypes { get; init; } = "";
        /// <summary>The C# namespace of the element classes and host proxies.</summary>
        public string ManagedNamespace { get; init; } = "";
    }

    /// <summary>A typed callback table managed code reads Python sequences through: its function and its table.</summary>
    internal sealed record CallbackNames(string Function, string Table);
}
