using System;
using DocumentFormat.OpenXml.Packaging;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Theme;

/// <summary>The theme of a master: its name, colour, font and format schemes.</summary>
public interface IMasterTheme : IPresentationComponent
{
    string Name { get; set; }

    IColorScheme ColorScheme { get; }

    IFontScheme FontScheme { get; }

    /// <summary>The fill, line, effect and background styles that shape styles refer to.</summary>
    IFormatScheme FormatScheme { get; }

    IPresentationComponent AsIPresentationComponent { get; }
}

public sealed class MasterTheme : IMasterTheme
{
    private readonly Presentation _owner;

    internal MasterTheme(Presentation owner, ThemePart part)
    {
        _owner = owner;
        Part = part;
    }

    public string Name
    {
        get => Root.Name?.Value ?? string.Empty;
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            Root.Name = value;
        }
    }

    public IColorScheme ColorScheme => new ColorScheme(Elements.ColorScheme ?? throw Missing("colour scheme"), Where);

    public IFontScheme FontScheme => new FontScheme(Elements.FontScheme ?? throw Missing("font scheme"));

    public IFormatScheme FormatScheme => new FormatScheme(Elements.FormatScheme ?? throw Missing("format scheme"), Part, Where);

    public IPresentation Presentation => _owner;

    IPresentationComponent IMasterTheme.AsIPresentationComponent => this;

    internal ThemePart Part { get; }

    private A.Theme Root => Part.Theme;

    private A.ThemeElements Elements => Root.ThemeElements ?? throw Missing("theme elements");

    public override string ToString() => $"MasterTheme '{Name}'";

    private string Where => $"{_owner.Origin}, part '{Part.Uri}'";

    private PptxReadException Missing(string what) => new($"{_owner.Origin}, part '{Part.Uri}': the theme has no {what}");
}
