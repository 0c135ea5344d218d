namespace Orvane.Folaro.Charts;

public enum LegendPositionType
{
    Bottom,
    Left,
    Right,
    Top,
    TopRight,
}
