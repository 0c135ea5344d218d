using System.Collections.Generic;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>The Python wrapper types of one instantiation.</summary>
    internal enum GenericWrapper { List, Array, Iterable, Iter }

    /// <summary>Names of the pieces of a typed instantiation; every emitter asks here.</summary>
    internal static class GenericNames
    {
        public const string ManagedNamespace = "Orvane.WrpGen.Generic";
        public const string ReadyTypes = "wrpPygn_tyrd_FFFFFFFF_generic_types";

        public static string PyName(GenericWrapper w) => w switch
        {
            GenericWrapper.List => "_IListWrapper",
            GenericWrapper.Array => "_ArrayWrapper",
            GenericWrapper.Iterable => "_IterableWrapper",
            _ => "_IterWrapper",
        };

        public static string PyName(GenericInstance g, GenericWrapper w) => $"{PyName(w)}_{g.Id}";
        public static string TypeObject(GenericInstance g, GenericWrapper w) => $"wrpPygn_tyds_{g.Id}{PyName(w)}.type";
        public static string GnType(GenericInstance g, GenericWrapper w) => $"wrpPygn_tyds_{g.Id}{PyName(w)}";
        public static string TpIter(GenericInstance g) => $"wrpPygn_tp_iter_{g.Id}";
        public static string ElementClass(GenericInstance g) => $"global::{ManagedNamespace}.Element_{g.Id}";

        /// <summary>The wrapper a typed parameter or result crosses as.</summary>
        public static GenericWrapper WrapperOf(TypeRef t) => t.Collection switch
        {
            CollectionKind.GenericList or CollectionKind.GenericCollection => GenericWrapper.List,
            CollectionKind.TypedArray => GenericWrapper.Array,
            CollectionKind.GenericEnumerable => GenericWrapper.Iterable,
            _ => GenericWrapper.Iter,
        };

        /// <summary>The typed O&amp; converter of a parameter, or null where the untyped one serves (enumerators).</summary>
        public static string? ConverterOf(TypeRef t)
        {
            if (t.Generic == null)
                return null;
            return WrapperOf(t) switch
            {
                GenericWrapper.List => $"wrpPygn_conv_py_to_clr_list_{t.Generic.Id}",
                GenericWrapper.Array => $"wrpPygn_conv_py_to_clr_array_{t.Generic.Id}",
                GenericWrapper.Iterable => $"wrpPygn_conv_py_to_clr_iterable_{t.Generic.Id}",
                _ => null,
            };
        }

        public static IEnumerable<GenericWrapper> Wrappers(GenericInstance g)
        {
            if (g.HasList) yield return GenericWrapper.List;
            if (g.HasArray) yield return GenericWrapper.Array;
            yield return GenericWrapper.Iterable;
            yield return GenericWrapper.Iter;
        }
    }
}
