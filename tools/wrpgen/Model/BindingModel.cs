using System;
using System.Collections.Generic;
using System.Linq;

namespace Orvane.WrpGen.Model
{
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
        /// <summary>The C++ names of the module's builder.</summary>
        public ModuleSymbols Cpp { get; set; } = null!;
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
        /// <summary>The names every typed instantiation shares.</summary>
        public GenericModuleNames GenericNames { get; set; } = null!;
        /// <summary>The module-wide C++ units.</summary>
        public ModuleUnits Units { get; set; } = null!;
        /// <summary>Imports the sibling modules' converter capsules; publishes this module's.</summary>
        public string CapsuleImport { get; set; } = "";
        public string CapsuleExport { get; set; } = "";

        public IEnumerable<BoundType> ObjectTypes => Types.Where(t => !t.IsEnum);
        public IEnumerable<BoundType> EnumTypes => Types.Where(t => t.IsEnum);
        public IEnumerable<ModuleNode> Modules => Root.SelfAndDescendants();
    }
}
