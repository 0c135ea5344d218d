using System;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Passes
{
    /// <summary>
    /// Gives every parameter, result, property, static member, enum and
    /// enumerable element its binding kind, and turns the first int indexer of
    /// an object element on a type with a Count into the type's element access
    /// (its accessors stop being methods).
    /// </summary>
    internal static class BindingKinds
    {
        private static readonly TypeRef VoidRef = new(BindKind.Void, typeof(void));

        public static void Run(BindingModel model)
        {
            var classifier = new TypeClassifier(
                model.Types.ToDictionary(t => t.Clr),
                model.SiblingTypes.ToDictionary(s => s.Clr));
            foreach (var t in model.Types)
            {
                if (t.IsEnum)
                {
                    t.EnumUnderlying = TypeClassifier.ScalarKind(t.EnumUnderlyingClr?.FullName) ?? BindKind.Int32;
                    continue;
                }
                if (t.EnumerableElementClr != null)
                    t.EnumerableElement = classifier.Classify(t.EnumerableElementClr);
                foreach (var m in t.Constructors.Concat(t.Methods))
                {
                    foreach (var p in m.Parameters)
                        p.Type = classifier.Classify(p.Clr, p.IsOut);
                    m.Result = m.ResultClr == null ? VoidRef : classifier.Classify(m.ResultClr);
                }
                foreach (var p in t.Properties)
                    p.Type = classifier.Classify(p.Clr);
                foreach (var s in t.StaticMembers)
                    s.Type = classifier.Classify(s.Clr);
                ChooseElementAccess(t, classifier);
            }
        }

        private static void ChooseElementAccess(BoundType t, TypeClassifier classifier)
        {
            if (!t.HasCount)
                return;
            foreach (var ip in t.IndexedProperties.Where(ip => ip.IsIntIndex))
            {
                var element = classifier.Classify(ip.ElementClr);
                if (element.Kind is not (BindKind.Object or BindKind.SiblingObject))
                    continue;
                t.Indexer = new IndexerModel(element, ip.CanWrite);
                t.Methods.Remove(ip.Getter!);
                if (ip.Setter != null)
                    t.Methods.Remove(ip.Setter);
                return;
            }
        }
    }
}
