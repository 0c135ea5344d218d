using System;

namespace Orvane.Folaro;

/// <summary>A shape's position, size, flips and rotation, as a value. Lengths in points, rotation in degrees.</summary>
public interface IShapeFrame
{
    float X { get; }
    float Y { get; }
    float Width { get; }
    float Height { get; }
    NullableBool FlipH { get; }
    NullableBool FlipV { get; }
    float Rotation { get; }

    /// <summary>The values in use: for a placeholder without its own position, those of the layout or master placeholder it inherits from; flips resolved to true or false.</summary>
    IShapeFrameEffectiveData GetEffective();
}

public sealed class ShapeFrame : IShapeFrame, IEquatable<ShapeFrame>
{
    /// <summary>A frame; a flip of <see cref="NullableBool.NotDefined"/> keeps the shape's own flip when applied.</summary>
    public ShapeFrame(float x, float y, float width, float height, NullableBool flipH, NullableBool flipV, float rotation)
        : this(x, y, width, height, flipH, flipV, rotation, null)
    {
    }

    internal ShapeFrame(float x, float y, float width, float height, NullableBool flipH, NullableBool flipV, float rotation, IShapeFrameEffectiveData? effective)
    {
        if (!float.IsFinite(x) || !float.IsFinite(y))
            throw new ArgumentOutOfRangeException(nameof(x), "ShapeFrame: the position must be finite");
        if (!(width >= 0) || !(height >= 0) || float.IsInfinity(width) || float.IsInfinity(height))
            throw new ArgumentOutOfRangeException(nameof(width), "ShapeFrame: the size must be finite and not negative");
        if (!float.IsFinite(rotation))
            throw new ArgumentOutOfRangeException(nameof(rotation), rotation, "ShapeFrame: the rotation must be finite");
        X = x;
        Y = y;
        Width = width;
        Height = height;
        FlipH = flipH;
        FlipV = flipV;
        Rotation = rotation;
        _effective = effective;
    }

    private readonly IShapeFrameEffectiveData? _effective;

    public IShapeFrameEffectiveData GetEffective() =>
        _effective ?? new ShapeFrameEffectiveData(X, Y, Width, Height, Rotation, FlipH == NullableBool.True, FlipV == NullableBool.True);

    public float X { get; }
    public float Y { get; }
    public float Width { get; }
    public float Height { get; }
    public NullableBool FlipH { get; }
    public NullableBool FlipV { get; }
    public float Rotation { get; }

    public bool Equals(ShapeFrame? other) =>
        other != null && X == other.X && Y == other.Y && Width == other.Width && Height == other.Height
        && FlipH == other.FlipH && FlipV == other.FlipV && Rotation == other.Rotation;

    public override bool Equals(object? obj) => Equals(obj as ShapeFrame);

    public override int GetHashCode() => HashCode.Combine(X, Y, Width, Height, FlipH, FlipV, Rotation);

    public override string ToString() => $"ShapeFrame({X}, {Y}, {Width}, {Height}, flipH={FlipH}, flipV={FlipV}, rotation={Rotation})";
}
