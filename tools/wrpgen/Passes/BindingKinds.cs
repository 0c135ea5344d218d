using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Passes
{
    /// <summary>
    /// Marks every member whose parameters or result have no binding this round
    /// with the first missing kind (parameters in order, then the result).
    /// Ref returns and ref-typed properties have no binding.
    /// </summary>
    internal static class BindingKinds
    {
        public static void Run(BindingModel model)
        {
            foreach (var t in model.ObjectTypes)
            {
                foreach (var m in t.Constructors.Concat(t.Methods))
                    m.SkipKind ??= FirstMissing(m);
                foreach (var p in t.Properties)
                    p.SkipKind ??= p.Type.Kind == BindKind.ByRef ? "byref" : p.Type.SkipKind;
                foreach (var s in t.StaticMembers)
                    s.SkipKind ??= s.Type.Kind == BindKind.ByRef ? "byref" : s.Type.SkipKind;
            }
        }

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
