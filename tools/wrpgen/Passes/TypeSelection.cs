using System;
using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Passes
{
    /// <summary>
    /// Decides which public types of the input get a Python type: top-level,
    /// non-generic, non-delegate types below the root namespace. The others are
    /// recorded with the kind that keeps them out.
    /// </summary>
    internal static class TypeSelection
    {
        /// <summary>The selected types, sorted by full name.</summary>
        public static List<Type> Run(BindingModel model, IEnumerable<Type> exported)
        {
            var selected = new List<Type>();
            foreach (var t in exported.OrderBy(t => t.FullName, StringComparer.Ordinal))
            {
                string? kind = KindOf(t, model.RootNamespace);
                if (kind == null)
                    selected.Add(t);
                else
                    model.UnboundTypes.Add(new UnboundType(t, kind));
            }
            return selected;
        }

        private static string? KindOf(Type t, string root)
        {
            if (t.IsNested) return "unsupported";
            if (t.IsGenericTypeDefinition) return "generic";
            if (IsDelegateType(t)) return "delegate";
            string ns = t.Namespace ?? "";
            return ns == root || ns.StartsWith(root + ".", StringComparison.Ordinal) ? null : "unsupported";
        }

        public static bool IsDelegateType(Type t) =>
            t.BaseType?.FullName == "System.MulticastDelegate" || t.BaseType?.FullName == "System.Delegate";
    }
}
