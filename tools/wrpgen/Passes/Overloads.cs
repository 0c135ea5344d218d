using System;
using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Passes
{
    /// <summary>
    /// Settles name clashes inside one type: places each overload in its
    /// Python-name group, keeps one attribute per Python name, and drops enum
    /// members whose Python name an earlier member already has.
    /// </summary>
    internal static class Overloads
    {
        public static void Run(BindingModel model)
        {
            foreach (var t in model.Types)
            {
                if (t.IsEnum)
                {
                    DropDuplicateEnumNames(t);
                    continue;
                }
                for (int i = 0; i < t.Constructors.Count; i++)
                    t.Constructors[i].GroupIndex = i;
                var properties = new HashSet<string>(t.Properties.Where(p => p.IsBound).Select(p => p.PyName), StringComparer.Ordinal);
                foreach (var group in t.Methods.GroupBy(m => m.PyName, StringComparer.Ordinal))
                {
                    int n = 0;
                    bool? isStatic = null;
                    foreach (var m in group)
                    {
                        m.GroupIndex = n++;
                        if (!m.IsBound)
                            continue;
                        // One Python name is one attribute: a property wins over
                        // methods, and a group is either static or instance.
                        if (properties.Contains(m.PyName) || (isStatic != null && isStatic != m.IsStatic))
                            m.SkipKind = "unsupported";
                        else
                            isStatic = m.IsStatic;
                    }
                }
            }
        }

        private static void DropDuplicateEnumNames(BoundType t)
        {
            var seen = new HashSet<string>(StringComparer.Ordinal);
            foreach (var e in t.EnumMembers)
                if (!seen.Add(e.PyName))
                    e.SkipKind = "unsupported";
        }

        /// <summary>The candidates of a method group, bound overloads only, in declaration order.</summary>
        public static IEnumerable<IGrouping<string, MethodModel>> BoundGroups(BoundType t, bool isStatic) =>
            t.Methods.Where(m => m.IsBound && m.IsStatic == isStatic).GroupBy(m => m.PyName, StringComparer.Ordinal);
    }
}
