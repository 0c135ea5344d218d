using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Passes
{
    /// <summary>
    /// Marks every member that cannot be bound with the kind that is missing:
    /// generic methods, static abstract methods, static properties without a
    /// public concrete getter (static members are read once at import), and
    /// members whose parameters or result have no binding (parameters in order,
    /// then the result). Ref returns and ref-typed properties have no binding.
    /// </summary>
    internal static class Unbound
    {
        public static void Run(BindingModel model)
        {
            foreach (var t in model.ObjectTypes)
            {
                foreach (var m in t.Constructors.Concat(t.Methods))
                    m.SkipKind ??= m.IsGenericDefinition ? "generic"
                                 : m.IsStatic && m.IsAbstract ? "unsupported"
                                 : FirstMissing(m);
                foreach (var p in t.Properties)
                    p.SkipKind ??= ValueKindMissing(p.Type);
                foreach (var s in t.StaticMembers)
                    s.SkipKind ??= s.IsReadable ? ValueKindMissing(s.Type) : "unsupported";
            }
        }

        private static string? ValueKindMissing(TypeRef t) => t.Kind == BindKind.ByRef ? "byref" : t.SkipKind;

        private static string? FirstMissing(MethodModel m)
        {
            foreach (var p in m.Parameters)
                if (p.Type.IsSkipped)
                    return p.Type.SkipKind;
            if (m.Result.Kind == BindKind.ByRef)
                return "byref";  // ref returns
            return m.Result.IsSkipped ? m.Result.SkipKind : null;
        }
    }
}
