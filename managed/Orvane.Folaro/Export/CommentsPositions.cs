namespace Orvane.Folaro.Export;

public enum CommentsPositions
{
    None,
    Bottom,
    Right,
}
