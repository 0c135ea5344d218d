using System;
using System.Collections.Generic;
using System.Linq;

namespace Orvane.WrpGen.Model
{
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
        /// <summary>The function behind the method, defined in the provider's unit.</summary>
        public CppSymbol Function { get; set; } = null!;
        /// <summary>A single parameterless instance overload: called with METH_NOARGS.</summary>
        public bool IsNoArgs => !IsStatic && Candidates.Count == 1 && Candidates[0].Method.Parameters.Count == 0;
    }
}
