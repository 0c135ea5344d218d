namespace Orvane.Folaro;

/// <summary>An anchor point of a rectangle: where a tiled picture starts or a shadow is aligned.</summary>
public enum RectangleAlignment
{
    NotDefined = -1,
    TopLeft,
    Top,
    TopRight,
    Left,
    Center,
    Right,
    BottomLeft,
    Bottom,
    BottomRight,
}
