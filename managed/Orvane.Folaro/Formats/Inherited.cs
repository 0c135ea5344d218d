using System.Collections.Generic;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

// Look-ups along a chain of property elements, nearest first: the first that sets a value wins.
internal static class Inherited
{
    internal static string? Attr(IEnumerable<OpenXmlElement> chain, string name)
    {
        foreach (var e in chain)
            if (AttributeAccess.Attr(e, name) is { } v)
                return v;
        return null;
    }

    internal static long? Long(IEnumerable<OpenXmlElement> chain, string name) =>
        long.TryParse(Attr(chain, name), System.Globalization.NumberStyles.Integer, System.Globalization.CultureInfo.InvariantCulture, out var v) ? v : null;

    internal static bool Flag(IEnumerable<OpenXmlElement> chain, string name, bool fallback) =>
        Attr(chain, name) switch { "1" or "true" => true, "0" or "false" => false, _ => fallback };

    /// <summary>The first child named in <paramref name="names"/> of the nearest element that has one.</summary>
    internal static OpenXmlElement? Child(IEnumerable<OpenXmlElement> chain, string[] names)
    {
        foreach (var e in chain)
            if (SchemaOrder.FirstOf(e, names) is { } c)
                return c;
        return null;
    }

    internal static OpenXmlElement? Child(IEnumerable<OpenXmlElement> chain, string name) => Child(chain, new[] { name });
}
