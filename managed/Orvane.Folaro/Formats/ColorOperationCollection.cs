using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

/// <summary>An operation applied to a stored colour.</summary>
public enum ColorTransformOperation
{
    Tint, Shade, Complement, Inverse, Gray,
    Alpha, AlphaOffset, AlphaModulation,
    Hue, HueOffset, HueModulation,
    Saturation, SaturationOffset, SaturationModulation,
    Luminance, LuminanceOffset, LuminanceModulation,
    Red, RedOffset, RedModulation,
    Green, GreenOffset, GreenModulation,
    Blue, BlueOffset, BlueModulation,
    Gamma, InverseGamma,
}

/// <summary>One colour operation: hue and hue offset in degrees, the others as fractions (0.75 for 75%); NaN for those without a value.</summary>
public interface IColorOperation
{
    ColorTransformOperation OperationType { get; }

    float Parameter { get; set; }
}

/// <summary>The operations of a colour, applied in order.</summary>
public interface IColorOperationCollection : IEnumerable<IColorOperation>
{
    int Count { get; }

    IColorOperation this[int index] { get; }

    /// <summary>Adds an operation without a value (complement, inverse, gray, gamma, inverse gamma).</summary>
    IColorOperation Add(ColorTransformOperation operation);

    IColorOperation Add(ColorTransformOperation operation, float parameter);

    IColorOperation Insert(int index, ColorTransformOperation operation, float parameter);

    void RemoveAt(int index);

    void Clear();

    IEnumerable<IColorOperation> AsIEnumerable { get; }
}

public sealed class ColorOperationCollection : IColorOperationCollection
{
    // The element name of each operation inside a colour element.
    internal static readonly EnumTokens<ColorTransformOperation> Operations = new(
        (ColorTransformOperation.Tint, "tint"),
        (ColorTransformOperation.Shade, "shade"),
        (ColorTransformOperation.Complement, "comp"),
        (ColorTransformOperation.Inverse, "inv"),
        (ColorTransformOperation.Gray, "gray"),
        (ColorTransformOperation.Alpha, "alpha"),
        (ColorTransformOperation.AlphaOffset, "alphaOff"),
        (ColorTransformOperation.AlphaModulation, "alphaMod"),
        (ColorTransformOperation.Hue, "hue"),
        (ColorTransformOperation.HueOffset, "hueOff"),
        (ColorTransformOperation.HueModulation, "hueMod"),
        (ColorTransformOperation.Saturation, "sat"),
        (ColorTransformOperation.SaturationOffset, "satOff"),
        (ColorTransformOperation.SaturationModulation, "satMod"),
        (ColorTransformOperation.Luminance, "lum"),
        (ColorTransformOperation.LuminanceOffset, "lumOff"),
        (ColorTransformOperation.LuminanceModulation, "lumMod"),
        (ColorTransformOperation.Red, "red"),
        (ColorTransformOperation.RedOffset, "redOff"),
        (ColorTransformOperation.RedModulation, "redMod"),
        (ColorTransformOperation.Green, "green"),
        (ColorTransformOperation.GreenOffset, "greenOff"),
        (ColorTransformOperation.GreenModulation, "greenMod"),
        (ColorTransformOperation.Blue, "blue"),
        (ColorTransformOperation.BlueOffset, "blueOff"),
        (ColorTransformOperation.BlueModulation, "blueMod"),
        (ColorTransformOperation.Gamma, "gamma"),
        (ColorTransformOperation.InverseGamma, "invGamma"));

    private readonly Func<OpenXmlElement?> _color;
    private readonly FormatContext _context;

    internal ColorOperationCollection(Func<OpenXmlElement?> color, FormatContext context)
    {
        _color = color;
        _context = context;
    }

    public int Count => Items().Count;

    public IColorOperation this[int index]
    {
        get
        {
            var items = Items();
            Indexes.Check(index, items.Count, "ColorOperationCollection[index]");
            return items[index];
        }
    }

    public IColorOperation Add(ColorTransformOperation operation)
    {
        if (HasValue(Known(operation)))
            throw new ArgumentException($"ColorOperationCollection.Add: {operation} needs a parameter", nameof(operation));
        return Insert(Count, operation, float.NaN);
    }

    public IColorOperation Add(ColorTransformOperation operation, float parameter) => Insert(Count, operation, parameter);

    public IColorOperation Insert(int index, ColorTransformOperation operation, float parameter)
    {
        Known(operation);
        var color = _color() ?? throw new PptxEditException($"{_context.Where}: the colour is not defined; set a colour before adding operations");
        var items = Items();
        Indexes.CheckPlace(index, items.Count, "ColorOperationCollection.Insert");
        if (!HasValue(operation) && !float.IsNaN(parameter))
            throw new ArgumentException($"ColorOperationCollection.Insert: {operation} takes no parameter (give NaN)", nameof(parameter));
        var typed = Create(color, Operations.Token(operation));
        var op = new ColorOperation(typed, operation);
        // The value is checked before the operation joins the colour, so a bad one leaves nothing behind.
        if (HasValue(operation))
            op.Parameter = parameter;
        if (index < items.Count)
            color.InsertBefore(typed, ((ColorOperation)items[index]).Element);
        else
            color.AppendChild(typed);
        return op;
    }

    public void RemoveAt(int index) => ((ColorOperation)this[index]).Element.Remove();

    public void Clear()
    {
        foreach (ColorOperation op in Items())
            op.Element.Remove();
    }

    public IEnumerator<IColorOperation> GetEnumerator() => Items().GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IColorOperation> IColorOperationCollection.AsIEnumerable => this;

    private List<IColorOperation> Items() =>
        _color()?.ChildElements.Select(e => (e, op: Operations.Member(e.LocalName))).Where(x => x.op != null)
            .Select(x => (IColorOperation)new ColorOperation(x.e, x.op!.Value)).ToList()
        ?? new List<IColorOperation>();

    private static ColorTransformOperation Known(ColorTransformOperation op) =>
        Enum.IsDefined(op) ? op : throw new ArgumentOutOfRangeException(nameof(op), op, "ColorOperationCollection: unknown colour operation");

    // The typed element for a name (a:lumMod -> LuminanceModulation), made by parsing it under a copy of its parent.
    private static OpenXmlElement Create(OpenXmlElement parent, string localName)
    {
        var xml = $"<a:{localName} xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\"/>";
        var holder = (OpenXmlCompositeElement)parent.CloneNode(false);
        holder.InnerXml = xml;
        var child = holder.FirstChild!;
        child.Remove();
        return child;
    }

    internal static bool HasValue(ColorTransformOperation op) =>
        op is not (ColorTransformOperation.Complement or ColorTransformOperation.Inverse or ColorTransformOperation.Gray
            or ColorTransformOperation.Gamma or ColorTransformOperation.InverseGamma);

    private sealed class ColorOperation : IColorOperation
    {
        internal ColorOperation(OpenXmlElement element, ColorTransformOperation type)
        {
            Element = element;
            OperationType = type;
        }

        internal OpenXmlElement Element { get; }

        public ColorTransformOperation OperationType { get; }

        private bool IsAngle => OperationType is ColorTransformOperation.Hue or ColorTransformOperation.HueOffset;

        public float Parameter
        {
            get => !HasValue(OperationType) ? float.NaN
                : AttributeAccess.Long(Element, "val") is long v ? (float)(IsAngle ? v / 60000.0 : v / 100000.0) : float.NaN;
            set
            {
                if (!HasValue(OperationType))
                    throw new ArgumentException($"ColorOperation.Parameter: {OperationType} takes no parameter", nameof(value));
                if (!float.IsFinite(value))
                    throw new ArgumentOutOfRangeException(nameof(value), value, $"ColorOperation.Parameter: the {OperationType} parameter must be finite");
                if (OperationType == ColorTransformOperation.Hue && (value < 0 || value >= 360))
                    throw new ArgumentOutOfRangeException(nameof(value), value, "ColorOperation.Parameter: a hue must be in [0, 360)");
                bool nonNegative = OperationType is ColorTransformOperation.Tint or ColorTransformOperation.Shade or ColorTransformOperation.Alpha
                    or ColorTransformOperation.AlphaModulation or ColorTransformOperation.HueModulation;
                if (nonNegative && value < 0)
                    throw new ArgumentOutOfRangeException(nameof(value), value, $"ColorOperation.Parameter: the {OperationType} parameter must not be negative");
                long raw = (long)Math.Round(IsAngle ? value * 60000.0 : value * 100000.0);
                AttributeAccess.SetAttr(Element, "val", AttributeAccess.Text(raw));
            }
        }

        public override string ToString() => HasValue(OperationType) ? $"{OperationType}({Parameter})" : OperationType.ToString();
    }
}
