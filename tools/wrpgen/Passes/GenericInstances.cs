using System;
using System.Collections.Generic;
using System.Linq;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Passes
{
    /// <summary>
    /// Finds the element types the bound API uses in typed lists, arrays,
    /// collections, enumerables and enumerators, gives each one typed
    /// instantiation, and points every such parameter and result (and every
    /// type implementing IEnumerable&lt;T&gt;) at it. Tables of typed callbacks are
    /// numbered here, in generation order.
    /// </summary>
    internal static class GenericInstances
    {
        public static void Run(BindingModel model)
        {
            var byElement = new Dictionary<Type, GenericInstance>();
            GenericInstance For(TypeRef element)
            {
                if (!byElement.TryGetValue(element.Clr, out var instance))
                {
                    instance = new GenericInstance(element);
                    byElement.Add(element.Clr, instance);
                }
                return instance;
            }

            void Use(TypeRef t, bool parameter)
            {
                if (t.Kind != BindKind.Collection || t.Element == null || !IsElement(t.Element))
                    return;
                var instance = For(t.Element);
                t.Generic = instance;
                switch (t.Collection)
                {
                    case CollectionKind.GenericList:
                    case CollectionKind.GenericCollection:
                        instance.HasList = true;
                        break;
                    case CollectionKind.TypedArray:
                        instance.HasArray = true;
                        instance.ArrayParameter |= parameter;
                        break;
                    case CollectionKind.GenericEnumerable:
                        instance.EnumerableParameter |= parameter;
                        break;
                }
            }

            foreach (var type in model.ObjectTypes)
            {
                foreach (var m in type.Constructors.Concat(type.Methods).Where(m => m.IsBound))
                {
                    foreach (var p in m.Parameters)
                        Use(p.Type, parameter: true);
                    Use(m.Result, parameter: false);
                }
                foreach (var p in type.Properties.Where(p => p.IsBound))
                {
                    Use(p.Type, parameter: false);
                    if (p.CanWrite)
                        Use(p.Type, parameter: true);
                }
                foreach (var s in type.StaticMembers.Where(s => s.IsBound))
                    Use(s.Type, parameter: false);
                if (type.EnumerableElement is { } element && IsElement(element))
                    type.IterableOf = For(element);
            }

            model.Generics.AddRange(byElement.Values.OrderBy(g => g.Element.Clr.FullName, StringComparer.Ordinal));

            int table = 0;
            foreach (var g in model.Generics.Where(g => g.ArrayParameter))
            {
                g.PyListTable = table++;
                g.PySeqTable = table++;
            }
            foreach (var g in model.Generics.Where(g => g.EnumerableParameter))
                g.PyIterTable = table++;
        }

        /// <summary>Element kinds with a typed instantiation: the module's own classes, structs and interfaces, strings and numbers.</summary>
        public static bool IsElement(TypeRef t) => t.Kind switch
        {
            BindKind.Object => true,
            BindKind.String or BindKind.Bool or BindKind.Int8 or BindKind.UInt8 or BindKind.Int16 or BindKind.UInt16
                or BindKind.Int32 or BindKind.UInt32 or BindKind.Int64 or BindKind.UInt64 or BindKind.Float
                or BindKind.Double => true,
            _ => false,
        };
    }
}
