using System;

namespace Orvane.Folaro;

/// <summary>The kind of a text field: what the application fills in when it shows the slide.</summary>
public interface IFieldType
{
    /// <summary>The kind's name in the file ("slidenum", "datetime", "datetime1" ... "datetime13").</summary>
    string Name { get; }
}

public sealed class FieldType : IFieldType, IEquatable<FieldType>
{
    internal FieldType(string name)
    {
        Name = name;
    }

    public string Name { get; }

    public static IFieldType SlideNumber { get; } = new FieldType("slidenum");

    /// <summary>The date and time in the application's default format.</summary>
    public static IFieldType DateTime { get; } = new FieldType("datetime");

    /// <summary>The date as 10/12/2025.</summary>
    public static IFieldType DateTime1 { get; } = new FieldType("datetime1");
    /// <summary>The date as Wednesday, October 12, 2025.</summary>
    public static IFieldType DateTime2 { get; } = new FieldType("datetime2");
    /// <summary>The date as 12 October 2025.</summary>
    public static IFieldType DateTime3 { get; } = new FieldType("datetime3");
    /// <summary>The date as October 12, 2025.</summary>
    public static IFieldType DateTime4 { get; } = new FieldType("datetime4");
    /// <summary>The date as 12-Oct-25.</summary>
    public static IFieldType DateTime5 { get; } = new FieldType("datetime5");
    /// <summary>The date as October 25.</summary>
    public static IFieldType DateTime6 { get; } = new FieldType("datetime6");
    /// <summary>The date as Oct-25.</summary>
    public static IFieldType DateTime7 { get; } = new FieldType("datetime7");
    /// <summary>Date and time as 10/12/2025 4:28 PM.</summary>
    public static IFieldType DateTime8 { get; } = new FieldType("datetime8");
    /// <summary>Date and time as 10/12/2025 4:28:34 PM.</summary>
    public static IFieldType DateTime9 { get; } = new FieldType("datetime9");
    /// <summary>The time as 16:28.</summary>
    public static IFieldType DateTime10 { get; } = new FieldType("datetime10");
    /// <summary>The time as 16:28:34.</summary>
    public static IFieldType DateTime11 { get; } = new FieldType("datetime11");
    /// <summary>The time as 4:28 PM.</summary>
    public static IFieldType DateTime12 { get; } = new FieldType("datetime12");
    /// <summary>The time as 4:28:34 PM.</summary>
    public static IFieldType DateTime13 { get; } = new FieldType("datetime13");

    public bool Equals(FieldType? other) => other is not null && string.Equals(Name, other.Name, StringComparison.OrdinalIgnoreCase);

    public override bool Equals(object? obj) => Equals(obj as FieldType);

    public override int GetHashCode() => StringComparer.OrdinalIgnoreCase.GetHashCode(Name);

    public override string ToString() => Name;

    // The text a new field shows until the application updates it.
    internal static string Placeholder(string name, System.DateTime now) => name.ToLowerInvariant() switch
    {
        "slidenum" => "\u2039#\u203A",
        "datetime2" => now.ToString("dddd, MMMM d, yyyy", System.Globalization.CultureInfo.InvariantCulture),
        "datetime3" => now.ToString("d MMMM yyyy", System.Globalization.CultureInfo.InvariantCulture),
        "datetime4" => now.ToString("MMMM d, yyyy", System.Globalization.CultureInfo.InvariantCulture),
        "datetime5" => now.ToString("d-MMM-yy", System.Globalization.CultureInfo.InvariantCulture),
        "datetime6" => now.ToString("MMMM yy", System.Globalization.CultureInfo.InvariantCulture),
        "datetime7" => now.ToString("MMM-yy", System.Globalization.CultureInfo.InvariantCulture),
        "datetime8" => now.ToString("M/d/yyyy h:mm tt", System.Globalization.CultureInfo.InvariantCulture),
        "datetime9" => now.ToString("M/d/yyyy h:mm:ss tt", System.Globalization.CultureInfo.InvariantCulture),
        "datetime10" => now.ToString("H:mm", System.Globalization.CultureInfo.InvariantCulture),
        "datetime11" => now.ToString("H:mm:ss", System.Globalization.CultureInfo.InvariantCulture),
        "datetime12" => now.ToString("h:mm tt", System.Globalization.CultureInfo.InvariantCulture),
        "datetime13" => now.ToString("h:mm:ss tt", System.Globalization.CultureInfo.InvariantCulture),
        _ => now.ToString("M/d/yyyy", System.Globalization.CultureInfo.InvariantCulture),
    };
}

/// <summary>A text field of a portion.</summary>
public interface IField
{
    IFieldType Type { get; }
}

public sealed class Field : IField
{
    internal Field(IFieldType type)
    {
        Type = type;
    }

    public IFieldType Type { get; }

    public override string ToString() => $"Field [{Type.Name}]";
}
