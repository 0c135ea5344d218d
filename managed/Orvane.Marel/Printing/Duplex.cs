namespace Orvane.Marel.Printing;

/// <summary>Two-sided printing.</summary>
public enum Duplex
{
    Default,
    Simplex,
    Horizontal,
    Vertical,
}
