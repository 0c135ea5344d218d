using System.Globalization;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

// Reads and writes unqualified attributes by name, whether the element is typed or was
// loaded as unknown markup, and formats the integers stored in them.
internal static class AttributeAccess
{
    internal static string? Attr(OpenXmlElement element, string name)
    {
        foreach (var a in element.GetAttributes())
            if (a.LocalName == name && a.NamespaceUri.Length == 0)
                return a.Value;
        return null;
    }

    internal static void SetAttr(OpenXmlElement element, string name, string? value)
    {
        if (value == null)
            element.RemoveAttribute(name, string.Empty);
        else
            element.SetAttribute(new OpenXmlAttribute(name, string.Empty, value));
    }

    internal static long? Long(OpenXmlElement? element, string name) =>
        element != null && long.TryParse(Attr(element, name), NumberStyles.Integer, CultureInfo.InvariantCulture, out var v) ? v : null;

    internal static string Text(long value) => value.ToString(CultureInfo.InvariantCulture);
}
