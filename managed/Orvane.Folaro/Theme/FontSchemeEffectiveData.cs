using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Theme;

/// <summary>The theme fonts in force.</summary>
public interface IFontSchemeEffectiveData
{
    string Name { get; }
    string MajorLatinFont { get; }
    string MinorLatinFont { get; }
    string MajorEastAsianFont { get; }
    string MinorEastAsianFont { get; }
    string MajorComplexScriptFont { get; }
    string MinorComplexScriptFont { get; }
}

public sealed class FontSchemeEffectiveData : IFontSchemeEffectiveData
{
    internal FontSchemeEffectiveData(A.FontScheme? scheme)
    {
        Name = scheme?.Name?.Value ?? string.Empty;
        MajorLatinFont = Face(scheme?.MajorFont, "latin");
        MinorLatinFont = Face(scheme?.MinorFont, "latin");
        MajorEastAsianFont = Face(scheme?.MajorFont, "ea");
        MinorEastAsianFont = Face(scheme?.MinorFont, "ea");
        MajorComplexScriptFont = Face(scheme?.MajorFont, "cs");
        MinorComplexScriptFont = Face(scheme?.MinorFont, "cs");
    }

    public string Name { get; }
    public string MajorLatinFont { get; }
    public string MinorLatinFont { get; }
    public string MajorEastAsianFont { get; }
    public string MinorEastAsianFont { get; }
    public string MajorComplexScriptFont { get; }
    public string MinorComplexScriptFont { get; }

    public override string ToString() => $"FontSchemeEffectiveData '{Name}' ({MajorLatinFont} / {MinorLatinFont})";

    private static string Face(OpenXmlElement? fonts, string script) =>
        fonts != null && SchemaOrder.First(fonts, script) is { } f ? AttributeAccess.Attr(f, "typeface") ?? string.Empty : string.Empty;
}
