using System;
using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Passes
{
    /// <summary>
    /// Numbers overloads and settles name clashes inside one type. Numbers count
    /// every overload of a managed name in declaration order, skipped ones
    /// included, so an entry keeps its name when a neighbour becomes bindable.
    /// </summary>
    internal static class Overloads
    {
        public static void Run(BindingModel model)
        {
            foreach (var t in model.Types)
            {
                if (t.IsEnum)
                {
                    DropDuplicateEnumNames(model, t);
                    continue;
                }
                for (int i = 0; i < t.Constructors.Count; i++)
                {
                    t.Constructors[i].Number = i;
                    t.Constructors[i].GroupIndex = i;
                }
                foreach (var group in t.Methods.GroupBy(m => m.Name, StringComparer.Ordinal))
                {
                    int n = 0;
                    foreach (var m in group)
                        m.Number = n++;
                }
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

        private static void DropDuplicateEnumNames(BindingModel model, BoundType t)
        {
            var seen = new HashSet<string>(StringComparer.Ordinal);
            foreach (var e in t.EnumMembers.ToList())
            {
                if (seen.Add(e.PyName))
                    continue;
                t.EnumMembers.Remove(e);
                model.Skipped.Add(new SkippedEntry($"{t.FullName}.{e.Name}({t.FullName})", "unsupported"));
            }
        }

        /// <summary>The candidates of a method group, bound overloads only, in declaration order.</summary>
        public static IEnumerable<IGrouping<string, MethodModel>> BoundGroups(BoundType t, bool isStatic) =>
            t.Methods.Where(m => m.IsBound && m.IsStatic == isStatic).GroupBy(m => m.PyName, StringComparer.Ordinal);
    }
}
