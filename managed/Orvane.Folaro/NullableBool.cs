namespace Orvane.Folaro;

/// <summary>A boolean that may be left undefined (and then inherited).</summary>
public enum NullableBool
{
    NotDefined,
    False,
    True,
}
