using System;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>How a result comes back from an entry.</summary>
    internal enum ResultShape { Void, Scalar, PyObjectOut, Handle, ObjectOut, ValueOut, CollectionOut }

    /// <summary>
    /// What both printers share about a binding kind: how a result comes back
    /// from an entry (returned, or written into a record the caller passes),
    /// decided once so that the native and managed sides cannot disagree.
    /// </summary>
    internal static class Kinds
    {
        /// <summary>The scalar a value travels as: an enum's underlying type, else the kind itself.</summary>
        public static BindKind ScalarOf(TypeRef t) => t.Kind == BindKind.Enum ? t.Underlying : t.Kind;

        public static ResultShape Shape(TypeRef r) => r.Kind switch
        {
            BindKind.Void => ResultShape.Void,
            BindKind.String or BindKind.Bytes or BindKind.Variant or BindKind.Nullable => ResultShape.PyObjectOut,
            BindKind.Object when r.Bound!.IsStruct || (!r.Bound.IsInterface && r.Bound.IsSealed) => ResultShape.Handle,
            BindKind.Object or BindKind.SiblingObject or BindKind.Disposable => ResultShape.ObjectOut,
            BindKind.DateTime or BindKind.DateTimeOffset or BindKind.Decimal or BindKind.Guid => ResultShape.ValueOut,
            BindKind.Stream or BindKind.Collection => ResultShape.CollectionOut,
            _ => ResultShape.Scalar,
        };
    }
}
