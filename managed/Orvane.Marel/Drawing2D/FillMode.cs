namespace Orvane.Marel.Drawing2D;

/// <summary>How the inside of a path with crossing figures is decided.</summary>
public enum FillMode
{
    Alternate,
    Winding,
}
