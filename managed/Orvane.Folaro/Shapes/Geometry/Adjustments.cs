using System;
using System.Collections;
using System.Collections.Generic;
using System.Globalization;
using System.Linq;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

/// <summary>One adjust value of a preset geometry (a corner radius, an arrow-head length, an angle).</summary>
public interface IShapeAdjustment
{
    /// <summary>The value's name in the geometry ("adj", "adj1", ...).</summary>
    string Name { get; }

    /// <summary>The stored number: most adjust values are in 1/100,000 of the shape's size, angles in 1/60,000 degree.</summary>
    long RawValue { get; set; }

    /// <summary>The value as a fraction (RawValue / 100,000).</summary>
    float FractionValue { get; set; }

    /// <summary>The value as an angle in degrees (RawValue / 60,000).</summary>
    float AngleValue { get; set; }
}

/// <summary>The adjust values of a shape's preset geometry, in the geometry's order, defaults filled in.</summary>
public interface IAdjustValueCollection : IEnumerable<IShapeAdjustment>
{
    int Count { get; }
    IShapeAdjustment this[int index] { get; }

    IEnumerable<IShapeAdjustment> AsIEnumerable { get; }
}

/// <summary>A view over the a:gd of an a:prstGeom/a:avLst, or the preset's default when there is none.</summary>
public sealed class ShapeAdjustment : IShapeAdjustment
{
    private readonly A.PresetGeometry _geometry;
    private readonly long _default;

    internal ShapeAdjustment(A.PresetGeometry geometry, string name, long defaultValue)
    {
        _geometry = geometry;
        Name = name;
        _default = defaultValue;
    }

    public string Name { get; }

    public long RawValue
    {
        get => Guide() is { } gd ? PresetGeometries.ParseVal(gd.Formula?.Value) : _default;
        set
        {
            var list = _geometry.AdjustValueList ??= new A.AdjustValueList();
            var gd = Guide();
            if (gd == null)
            {
                gd = new A.ShapeGuide { Name = Name };
                list.AppendChild(gd);
            }
            gd.Formula = "val " + value.ToString(CultureInfo.InvariantCulture);
        }
    }

    public float FractionValue
    {
        get => RawValue / 100000f;
        set => RawValue = Scaled(value, 100000);
    }

    public float AngleValue
    {
        get => RawValue / 60000f;
        set => RawValue = Scaled(value, 60000);
    }

    private static long Scaled(float value, double scale) =>
        float.IsFinite(value)
            ? (long)Math.Round(value * scale, MidpointRounding.AwayFromZero)
            : throw new ArgumentOutOfRangeException(nameof(value), value, "ShapeAdjustment: the value must be finite");

    private A.ShapeGuide? Guide() =>
        _geometry.AdjustValueList?.Elements<A.ShapeGuide>().FirstOrDefault(g => g.Name?.Value == Name);
}

public sealed class AdjustValueCollection : IAdjustValueCollection
{
    private readonly List<ShapeAdjustment> _items;

    internal AdjustValueCollection(A.PresetGeometry? geometry)
    {
        _items = geometry == null
            ? new List<ShapeAdjustment>()
            : PresetGeometries.AdjustmentsOf(geometry.Preset?.InnerText ?? string.Empty)
                .Select(a => new ShapeAdjustment(geometry, a.Name, a.Default)).ToList();
    }

    public int Count => _items.Count;

    public IShapeAdjustment this[int index] => Indexes.At(_items, index, "AdjustValueCollection[index]");

    public IEnumerator<IShapeAdjustment> GetEnumerator() => _items.Cast<IShapeAdjustment>().GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IShapeAdjustment> IAdjustValueCollection.AsIEnumerable => this;
}
