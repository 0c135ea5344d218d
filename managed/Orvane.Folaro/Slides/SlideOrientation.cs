namespace Orvane.Folaro;

public enum SlideOrientation
{
    Landscape,
    Portrait,
}
