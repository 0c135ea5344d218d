using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;
using Orvane.Marel;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

/// <summary>How a gradient spreads: along a line, or outwards from the centre as a circle, a rectangle or the shape's outline.</summary>
public enum GradientShape
{
    NotDefined = -1,
    Linear,
    Radial,
    Rectangle,
    Path,
}

/// <summary>A gradient fill: its stops and how they spread.</summary>
public interface IGradientFormat
{
    GradientShape GradientShape { get; set; }

    /// <summary>The direction of a linear gradient in degrees, clockwise from left-to-right; NaN when not linear.</summary>
    float LinearGradientAngle { get; set; }

    IGradientStopCollection GradientStops { get; }
}

/// <summary>A colour at a position (0 to 1) of a gradient.</summary>
public interface IGradientStop
{
    float Position { get; set; }

    IColorFormat Color { get; }
}

/// <summary>The stops of a gradient, in document order; a gradient keeps at least two.</summary>
public interface IGradientStopCollection : IEnumerable<IGradientStop>
{
    int Count { get; }

    IGradientStop this[int index] { get; }

    IGradientStop Add(float position, Color color);

    IGradientStop Add(float position, SchemeColor color);

    IGradientStop Insert(int index, float position, Color color);

    void RemoveAt(int index);

    IEnumerable<IGradientStop> AsIEnumerable { get; }
}

public sealed class GradientFormat : IGradientFormat
{
    private readonly FillFormat _fill;

    internal GradientFormat(FillFormat fill)
    {
        _fill = fill;
    }

    private OpenXmlElement? Existing => _fill.Fill(false) as A.GradientFill;

    public GradientShape GradientShape
    {
        get
        {
            if (Existing is not { } g)
                return GradientShape.NotDefined;
            if (g.GetFirstChild<A.PathGradientFill>() is { } path)
                return AttributeAccess.Attr(path, "path") switch { "circle" => GradientShape.Radial, "rect" => GradientShape.Rectangle, _ => GradientShape.Path };
            return GradientShape.Linear;
        }
        set
        {
            if (value < 0 || !Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "GradientFormat.GradientShape must be a gradient shape");
            var g = _fill.Ensure(FillType.Gradient);
            OpenXmlElement made = value == GradientShape.Linear
                ? new A.LinearGradientFill { Angle = 0, Scaled = false }
                : new A.PathGradientFill(new A.FillToRectangle { Left = 50000, Top = 50000, Right = 50000, Bottom = 50000 })
                {
                    Path = value switch { GradientShape.Radial => A.PathShadeValues.Circle, GradientShape.Rectangle => A.PathShadeValues.Rectangle, _ => A.PathShadeValues.Shape },
                };
            SchemaOrder.Replace(g, new[] { "lin", "path" }, made, SchemaOrder.GradientFill);
        }
    }

    public float LinearGradientAngle
    {
        get
        {
            if (Existing is not { } g || g.GetFirstChild<A.PathGradientFill>() != null)
                return float.NaN;
            return AttributeAccess.Long(g.GetFirstChild<A.LinearGradientFill>(), "ang") is long a ? (float)(a / 60000.0) : 0f;
        }
        set
        {
            if (!float.IsFinite(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "GradientFormat.LinearGradientAngle must be finite");
            var g = _fill.Ensure(FillType.Gradient);
            double degrees = value % 360.0;
            if (degrees < 0)
                degrees += 360.0;
            var lin = g.GetFirstChild<A.LinearGradientFill>();
            if (lin == null)
            {
                lin = new A.LinearGradientFill { Scaled = false };
                SchemaOrder.Replace(g, new[] { "lin", "path" }, lin, SchemaOrder.GradientFill);
            }
            AttributeAccess.SetAttr(lin, "ang", AttributeAccess.Text((long)Math.Round(degrees * 60000) % 21600000));
        }
    }

    public IGradientStopCollection GradientStops => new GradientStopCollection(_fill);

    public override string ToString() => $"GradientFormat [{GradientShape}, {GradientStops.Count} stops]";
}

public sealed class GradientStopCollection : IGradientStopCollection
{
    private readonly FillFormat _fill;

    internal GradientStopCollection(FillFormat fill)
    {
        _fill = fill;
    }

    public int Count => Stops().Count;

    public IGradientStop this[int index]
    {
        get
        {
            var stops = Stops();
            Indexes.Check(index, stops.Count, "GradientStopCollection[index]");
            return new GradientStop(stops[index], _fill.Context);
        }
    }

    // Adding to a fill that is not yet a gradient adds after the two stops a new gradient has.
    public IGradientStop Add(float position, Color color)
    {
        CheckPosition(position);
        _ = List(true);
        return Insert(Count, position, color);
    }

    public IGradientStop Add(float position, SchemeColor color)
    {
        if (color < 0 || !Enum.IsDefined(color))
            throw new ArgumentOutOfRangeException(nameof(color), color, "GradientStopCollection.Add: the colour must be a scheme colour");
        var stop = Add(position, Color.Black);
        stop.Color.SchemeColor = color;
        return stop;
    }

    public IGradientStop Insert(int index, float position, Color color)
    {
        CheckPosition(position);
        if (color.IsEmpty)
            throw new ArgumentException("GradientStopCollection.Insert: the colour must not be empty", nameof(color));
        var list = List(true)!;
        var stops = Stops();
        Indexes.CheckPlace(index, stops.Count, "GradientStopCollection.Insert");
        var made = new A.GradientStop { Position = (int)Math.Round(position * 100000.0) };
        if (index < stops.Count)
            list.InsertBefore(made, stops[index]);
        else
            list.AppendChild(made);
        var stop = new GradientStop(made, _fill.Context);
        stop.Color.Color = color;
        return stop;
    }

    public void RemoveAt(int index)
    {
        var stops = Stops();
        Indexes.Check(index, stops.Count, "GradientStopCollection.RemoveAt");
        if (stops.Count <= 2)
            throw new PptxEditException($"{_fill.Context.Where}: a gradient keeps at least two stops");
        stops[index].Remove();
    }

    public IEnumerator<IGradientStop> GetEnumerator() => Stops().Select(s => (IGradientStop)new GradientStop(s, _fill.Context)).GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IGradientStop> IGradientStopCollection.AsIEnumerable => this;

    internal static void CheckPosition(float position)
    {
        if (!(position >= 0 && position <= 1))
            throw new ArgumentOutOfRangeException(nameof(position), position, "GradientStop.Position must be between 0 and 1");
    }

    private OpenXmlElement? List(bool create)
    {
        var g = create ? _fill.Ensure(FillType.Gradient) : _fill.Fill(false) as A.GradientFill;
        if (g == null)
            return null;
        return g.GetFirstChild<A.GradientStopList>() ?? (create ? SchemaOrder.Insert(g, new A.GradientStopList(), SchemaOrder.GradientFill) : null);
    }

    private List<OpenXmlElement> Stops() => List(false)?.Elements<A.GradientStop>().ToList<OpenXmlElement>() ?? new List<OpenXmlElement>();

    private sealed class GradientStop : IGradientStop
    {
        private readonly OpenXmlElement _element;
        private readonly FormatContext _context;

        internal GradientStop(OpenXmlElement element, FormatContext context)
        {
            _element = element;
            _context = context;
        }

        public float Position
        {
            get => (float)((AttributeAccess.Long(_element, "pos") ?? 0) / 100000.0);
            set
            {
                CheckPosition(value);
                AttributeAccess.SetAttr(_element, "pos", AttributeAccess.Text((long)Math.Round(value * 100000.0)));
            }
        }

        public IColorFormat Color => new ColorFormat(_ => _element, _context);

        public override string ToString() => $"GradientStop [{Position}: {Color.Color}]";
    }
}
