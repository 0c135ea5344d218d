using System;
using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Passes
{
    /// <summary>
    /// Builds each type's Python tables. A type's own members get functions of
    /// their own; members it only has through an interface (explicit
    /// implementations, inherited interfaces) point at the interface's shared
    /// functions; members of a bound base class come through Python inheritance.
    /// Where a type declares a method that a base or interface also has with
    /// other overloads, its dispatcher tries its own overloads first, then the
    /// others through their owners' exported candidates.
    /// </summary>
    internal static class MemberSharing
    {
        private sealed class Slot
        {
            public required string Name;
            public PropertyModel? Property;
            public List<Candidate>? Candidates;
            public bool IsStatic;
            public SlotSource Source;
            public required BoundType Provider;
            /// <summary>Whether the type declares the member itself (its own overloads come first).</summary>
            public bool Own;
        }

        public static void Run(BindingModel model)
        {
            var done = new Dictionary<BoundType, List<Slot>>();
            foreach (var t in model.ObjectTypes)
                Process(t, done);
            foreach (var (t, slots) in done)
            {
                foreach (var s in slots)
                {
                    if (s.Property != null)
                        t.PyProperties.Add(new PyPropertySlot(s.Name, s.Property, s.Source, s.Provider));
                    else
                        t.PyMethods.Add(new PyMethodSlot(s.Name, s.IsStatic, s.Candidates!, s.Source, s.Provider));
                }
                foreach (var m in t.PyMethods.Where(m => m.Source == SlotSource.Local))
                    foreach (var c in m.Candidates.Where(c => c.Owner != t))
                        c.Owner.ExportedCandidates.Add(c.Method);
            }
        }

        /// <summary>Types a type takes members from, in order: the bound base, then interfaces the base does not already bring.</summary>
        public static IEnumerable<BoundType> Sources(BoundType t)
        {
            if (t.Base != null)
            {
                yield return t.Base;
                foreach (var i in t.Interfaces.Where(i => !t.Base.Interfaces.Contains(i)))
                    yield return i;
            }
            else
            {
                foreach (var i in t.Interfaces)
                    yield return i;
            }
        }

        private static List<Slot> Process(BoundType t, Dictionary<BoundType, List<Slot>> done)
        {
            if (done.TryGetValue(t, out var ready))
                return ready;
            var slots = new List<Slot>();
            var byName = new Dictionary<string, Slot>(StringComparer.Ordinal);
            void Add(Slot s) { slots.Add(s); byName.Add(s.Name, s); }

            foreach (var p in t.Properties.Where(p => p.IsBound))
                if (!byName.ContainsKey(p.PyName))
                    Add(new Slot { Name = p.PyName, Property = p, Source = SlotSource.Local, Provider = t, Own = true });
            foreach (bool isStatic in new[] { false, true })
                foreach (var g in Overloads.BoundGroups(t, isStatic))
                    if (!byName.ContainsKey(g.Key))
                        Add(new Slot
                        {
                            Name = g.Key,
                            IsStatic = isStatic,
                            Candidates = g.Select(m => new Candidate(m)).ToList(),
                            Source = SlotSource.Local,
                            Provider = t,
                            Own = true,
                        });

            foreach (var source in Sources(t))
            {
                bool isBase = source == t.Base;
                foreach (var inherited in Process(source, done))
                {
                    if (inherited.IsStatic)
                        continue;  // static members stay with their declaring type
                    if (!byName.TryGetValue(inherited.Name, out var mine))
                    {
                        Add(new Slot
                        {
                            Name = inherited.Name,
                            Property = inherited.Property,
                            Candidates = inherited.Candidates?.ToList(),
                            Source = isBase ? SlotSource.Inherited : SlotSource.Shared,
                            Provider = isBase ? source : inherited.Source == SlotSource.Local ? source : inherited.Provider,
                        });
                        continue;
                    }
                    if (mine.Candidates == null || inherited.Candidates == null || mine.IsStatic)
                        continue;  // a property or a static group keeps the name
                    var extras = inherited.Candidates
                        .Where(c => mine.Candidates.All(o => o.Method.SignatureKey != c.Method.SignatureKey))
                        .ToList();
                    if (extras.Count == 0)
                        continue;
                    mine.Candidates.AddRange(extras);
                    // A merged set of overloads needs a dispatcher of this type's own.
                    mine.Source = SlotSource.Local;
                    mine.Provider = t;
                }
            }
            done[t] = slots;
            return slots;
        }
    }
}
