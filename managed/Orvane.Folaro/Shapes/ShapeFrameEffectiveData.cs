namespace Orvane.Folaro;

/// <summary>The position, size, rotation and flips a shape is drawn with. Lengths in points, rotation in degrees.</summary>
public interface IShapeFrameEffectiveData
{
    float X { get; }
    float Y { get; }
    float Width { get; }
    float Height { get; }
    float Rotation { get; }
    bool FlipH { get; }
    bool FlipV { get; }
}

public sealed class ShapeFrameEffectiveData : IShapeFrameEffectiveData
{
    internal ShapeFrameEffectiveData(float x, float y, float width, float height, float rotation, bool flipH, bool flipV)
    {
        X = x;
        Y = y;
        Width = width;
        Height = height;
        Rotation = rotation;
        FlipH = flipH;
        FlipV = flipV;
    }

    public float X { get; }
    public float Y { get; }
    public float Width { get; }
    public float Height { get; }
    public float Rotation { get; }
    public bool FlipH { get; }
    public bool FlipV { get; }

    public override string ToString() => $"ShapeFrameEffectiveData({X}, {Y}, {Width}, {Height}, rotation={Rotation}, flipH={FlipH}, flipV={FlipV})";
}
