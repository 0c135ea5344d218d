using System;
using System.Globalization;
using System.Linq;
using System.Xml.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using Ap = DocumentFormat.OpenXml.ExtendedProperties;
using Op = DocumentFormat.OpenXml.CustomProperties;
using Vt = DocumentFormat.OpenXml.VariantTypes;

namespace Orvane.Folaro;

/// <summary>The document properties: core (title, author, ...), extended (company, ...) and custom ones by name.</summary>
public interface IDocumentProperties
{
    string Title { get; set; }
    string Subject { get; set; }
    string Author { get; set; }
    string Keywords { get; set; }
    string Comments { get; set; }
    string Category { get; set; }
    string ContentStatus { get; set; }
    string ContentType { get; set; }
    string LastSavedBy { get; set; }
    int RevisionNumber { get; set; }
    DateTime CreatedTime { get; set; }
    DateTime LastSavedTime { get; set; }
    DateTime LastPrinted { get; set; }

    string NameOfApplication { get; set; }
    string Company { get; set; }
    string Manager { get; set; }
    string HyperlinkBase { get; set; }

    int CountOfCustomProperties { get; }
    string GetCustomPropertyName(int index);
    bool ContainsCustomProperty(string name);
    bool RemoveCustomProperty(string name);
    void ClearCustomProperties();
    void SetCustomPropertyValue(string name, bool value);
    void SetCustomPropertyValue(string name, int value);
    void SetCustomPropertyValue(string name, double value);
    void SetCustomPropertyValue(string name, string value);
    void SetCustomPropertyValue(string name, DateTime value);
    string GetCustomPropertyValueAsString(string name);
    int GetCustomPropertyValueAsInt(string name);
    double GetCustomPropertyValueAsDouble(string name);
    bool GetCustomPropertyValueAsBool(string name);
    DateTime GetCustomPropertyValueAsDateTime(string name);
}

public sealed class DocumentProperties : IDocumentProperties
{
    private const string CustomFormatId = "{D5CDD505-2E9C-101B-9397-08002B2CF9AE}";
    private readonly Presentation _owner;

    internal DocumentProperties(Presentation owner)
    {
        _owner = owner;
    }

    private PresentationDocument Pkg => _owner.Document;

    // --- core ---------------------------------------------------------------------------

    public string Title { get => Core(CoreProperties.Dc + "title"); set => SetCore(CoreProperties.Dc + "title", value); }
    public string Subject { get => Core(CoreProperties.Dc + "subject"); set => SetCore(CoreProperties.Dc + "subject", value); }
    public string Author { get => Core(CoreProperties.Dc + "creator"); set => SetCore(CoreProperties.Dc + "creator", value); }
    public string Keywords { get => Core(CoreProperties.Cp + "keywords"); set => SetCore(CoreProperties.Cp + "keywords", value); }
    public string Comments { get => Core(CoreProperties.Dc + "description"); set => SetCore(CoreProperties.Dc + "description", value); }
    public string Category { get => Core(CoreProperties.Cp + "category"); set => SetCore(CoreProperties.Cp + "category", value); }
    public string ContentStatus { get => Core(CoreProperties.Cp + "contentStatus"); set => SetCore(CoreProperties.Cp + "contentStatus", value); }
    public string ContentType { get => Core(CoreProperties.Cp + "contentType"); set => SetCore(CoreProperties.Cp + "contentType", value); }
    public string LastSavedBy { get => Core(CoreProperties.Cp + "lastModifiedBy"); set => SetCore(CoreProperties.Cp + "lastModifiedBy", value); }

    /// <summary>The revision number; 0 when absent or not a number.</summary>
    public int RevisionNumber
    {
        get => int.TryParse(Core(CoreProperties.Cp + "revision"), NumberStyles.Integer, CultureInfo.InvariantCulture, out var n) ? n : 0;
        set
        {
            if (value < 0)
                throw new ArgumentOutOfRangeException(nameof(value), value, "DocumentProperties.RevisionNumber must not be negative");
            SetCore(CoreProperties.Cp + "revision", value.ToString(CultureInfo.InvariantCulture));
        }
    }

    /// <summary>Creation time in UTC; <see cref="DateTime.MinValue"/> when absent.</summary>
    public DateTime CreatedTime { get => Date(CoreProperties.DcTerms + "created"); set => CoreProperties.SetDate(Pkg, CoreProperties.DcTerms + "created", value); }
    public DateTime LastSavedTime { get => Date(CoreProperties.DcTerms + "modified"); set => CoreProperties.SetDate(Pkg, CoreProperties.DcTerms + "modified", value); }
    public DateTime LastPrinted { get => Date(CoreProperties.Cp + "lastPrinted"); set => CoreProperties.SetDate(Pkg, CoreProperties.Cp + "lastPrinted", value); }

    private string Core(XName name) => CoreProperties.Get(Pkg, name) ?? string.Empty;

    private void SetCore(XName name, string value)
    {
        ArgumentNullException.ThrowIfNull(value);
        CoreProperties.Set(Pkg, name, value.Length == 0 ? null : value);
    }

    private DateTime Date(XName name) => CoreProperties.GetDate(Pkg, name) ?? DateTime.MinValue;

    // --- extended -----------------------------------------------------------------------

    public string NameOfApplication
    {
        get => Extended?.Application?.Text ?? string.Empty;
        set => EditExtended(value, p => p.Application = value.Length == 0 ? null : new Ap.Application(value));
    }

    public string Company
    {
        get => Extended?.Company?.Text ?? string.Empty;
        set => EditExtended(value, p => p.Company = value.Length == 0 ? null : new Ap.Company(value));
    }

    public string Manager
    {
        get => Extended?.Manager?.Text ?? string.Empty;
        set => EditExtended(value, p => p.Manager = value.Length == 0 ? null : new Ap.Manager(value));
    }

    public string HyperlinkBase
    {
        get => Extended?.HyperlinkBase?.Text ?? string.Empty;
        set => EditExtended(value, p => p.HyperlinkBase = value.Length == 0 ? null : new Ap.HyperlinkBase(value));
    }

    private Ap.Properties? Extended => Pkg.ExtendedFilePropertiesPart?.Properties;

    private void EditExtended(string value, Action<Ap.Properties> edit)
    {
        ArgumentNullException.ThrowIfNull(value);
        var part = Pkg.ExtendedFilePropertiesPart ?? Pkg.AddExtendedFilePropertiesPart();
        part.Properties ??= new Ap.Properties();
        edit(part.Properties);
    }

    // --- custom -------------------------------------------------------------------------

    public int CountOfCustomProperties => CustomList().Length;

    public string GetCustomPropertyName(int index)
    {
        var all = CustomList();
        Indexes.Check(index, all.Length, "DocumentProperties.GetCustomPropertyName");
        return all[index].Name?.Value ?? string.Empty;
    }

    public bool ContainsCustomProperty(string name) => FindCustom(name) != null;

    public bool RemoveCustomProperty(string name)
    {
        var found = FindCustom(name);
        found?.Remove();
        return found != null;
    }

    public void ClearCustomProperties()
    {
        foreach (var p in CustomList())
            p.Remove();
    }

    public void SetCustomPropertyValue(string name, bool value) => SetCustom(name, new Vt.VTBool(value ? "true" : "false"));
    public void SetCustomPropertyValue(string name, int value) => SetCustom(name, new Vt.VTInt32(value.ToString(CultureInfo.InvariantCulture)));
    public void SetCustomPropertyValue(string name, double value) => SetCustom(name, new Vt.VTDouble(value.ToString("R", CultureInfo.InvariantCulture)));

    public void SetCustomPropertyValue(string name, string value)
    {
        ArgumentNullException.ThrowIfNull(value);
        SetCustom(name, new Vt.VTLPWSTR(value));
    }

    public void SetCustomPropertyValue(string name, DateTime value) =>
        SetCustom(name, new Vt.VTFileTime(value.ToUniversalTime().ToString("yyyy-MM-dd'T'HH:mm:ss'Z'", CultureInfo.InvariantCulture)));

    public string GetCustomPropertyValueAsString(string name) => CustomValue(name).InnerText;

    public int GetCustomPropertyValueAsInt(string name) =>
        int.TryParse(CustomValue(name).InnerText, NumberStyles.Integer, CultureInfo.InvariantCulture, out var v) ? v : throw NotOfType(name, "an integer");

    public double GetCustomPropertyValueAsDouble(string name) =>
        double.TryParse(CustomValue(name).InnerText, NumberStyles.Float, CultureInfo.InvariantCulture, out var v) ? v : throw NotOfType(name, "a number");

    public bool GetCustomPropertyValueAsBool(string name) => CustomValue(name).InnerText.Trim().ToLowerInvariant() switch
    {
        "true" or "1" => true,
        "false" or "0" => false,
        _ => throw NotOfType(name, "a boolean"),
    };

    public DateTime GetCustomPropertyValueAsDateTime(string name) =>
        DateTime.TryParse(CustomValue(name).InnerText, CultureInfo.InvariantCulture, DateTimeStyles.AdjustToUniversal | DateTimeStyles.AssumeUniversal, out var v)
            ? DateTime.SpecifyKind(v, DateTimeKind.Utc)
            : throw NotOfType(name, "a date");

    private Op.CustomDocumentProperty[] CustomList() =>
        Pkg.CustomFilePropertiesPart?.Properties?.Elements<Op.CustomDocumentProperty>().ToArray() ?? Array.Empty<Op.CustomDocumentProperty>();

    private Op.CustomDocumentProperty? FindCustom(string name)
    {
        ArgumentNullException.ThrowIfNull(name);
        return CustomList().FirstOrDefault(p => string.Equals(p.Name?.Value, name, StringComparison.OrdinalIgnoreCase));
    }

    private OpenXmlElement CustomValue(string name) =>
        FindCustom(name)?.FirstChild ?? throw new ArgumentException($"DocumentProperties: there is no custom property '{name}'", nameof(name));

    private static InvalidCastException NotOfType(string name, string what) =>
        new($"DocumentProperties: custom property '{name}' is not {what}");

    private void SetCustom(string name, OpenXmlElement value)
    {
        ArgumentNullException.ThrowIfNull(name);
        if (name.Length == 0)
            throw new ArgumentException("DocumentProperties: a custom property needs a name", nameof(name));
        var existing = FindCustom(name);
        if (existing != null)
        {
            existing.RemoveAllChildren();
            existing.AppendChild(value);
            return;
        }
        var part = Pkg.CustomFilePropertiesPart ?? Pkg.AddCustomFilePropertiesPart();
        part.Properties ??= new Op.Properties();
        // Property ids start at 2 (0 and 1 are reserved).
        int pid = part.Properties.Elements<Op.CustomDocumentProperty>().Select(p => p.PropertyId?.Value ?? 1).DefaultIfEmpty(1).Max() + 1;
        part.Properties.AppendChild(new Op.CustomDocumentProperty(value) { FormatId = CustomFormatId, PropertyId = pid, Name = name });
    }
}
