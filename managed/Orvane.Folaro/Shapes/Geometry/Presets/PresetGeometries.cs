using System;
using System.Collections.Generic;
using System.Globalization;
using System.Linq;
using System.Xml.Linq;

namespace Orvane.Folaro;

// The preset geometries of the embedded presetShapeDefinitions.xml, read once on first use.
internal static class PresetGeometries
{
    internal sealed record Adjustment(string Name, long Default);

    private static readonly Lazy<Dictionary<string, Adjustment[]>> Table = new(Load);

    internal static IReadOnlyCollection<string> Names => Table.Value.Keys;

    /// <summary>The adjust values of a preset with their defaults; empty for an unknown preset.</summary>
    internal static Adjustment[] AdjustmentsOf(string preset) =>
        Table.Value.TryGetValue(preset, out var list) ? list : Array.Empty<Adjustment>();

    internal static string PresetName(ShapeType type)
    {
        if (type < 0 || !Enum.IsDefined(type))
            throw new ArgumentOutOfRangeException(nameof(type), type, "the shape type must be a preset geometry");
        var name = type.ToString();
        return char.ToLowerInvariant(name[0]) + name[1..];
    }

    internal static ShapeType TypeOf(string? preset)
    {
        if (string.IsNullOrEmpty(preset))
            return ShapeType.NotDefined;
        return Enum.TryParse<ShapeType>(char.ToUpperInvariant(preset[0]) + preset[1..], false, out var type) && type >= 0
            ? type
            : ShapeType.NotDefined;
    }

    private static Dictionary<string, Adjustment[]> Load()
    {
        using var stream = typeof(PresetGeometries).Assembly.GetManifestResourceStream("Orvane.Folaro.presetShapeDefinitions.xml")
            ?? throw new InvalidOperationException("the preset geometry resource is missing from the assembly");
        var root = XDocument.Load(stream).Root!;
        var result = new Dictionary<string, Adjustment[]>(StringComparer.Ordinal);
        foreach (var preset in root.Elements())
        {
            var adjustments = preset.Elements().FirstOrDefault(e => e.Name.LocalName == "avLst")?.Elements()
                .Select(gd => new Adjustment((string)gd.Attribute("name")!, ParseVal((string?)gd.Attribute("fmla"))))
                .ToArray() ?? Array.Empty<Adjustment>();
            result[preset.Name.LocalName] = adjustments;
        }
        return result;
    }

    /// <summary>The number of an adjust formula "val N"; 0 for anything else.</summary>
    internal static long ParseVal(string? formula)
    {
        if (formula == null || !formula.StartsWith("val ", StringComparison.Ordinal))
            return 0;
        return long.TryParse(formula.AsSpan(4).Trim(), NumberStyles.Integer, CultureInfo.InvariantCulture, out var v) ? v : 0;
    }
}
