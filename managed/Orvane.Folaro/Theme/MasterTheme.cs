using System;
using DocumentFormat.OpenXml.Packaging;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Theme;

/// <summary>The theme of a master: its colour and font schemes.</summary>
public interface IMasterTheme : IPresentationComponent
{
    string Name { get; set; }

    IColorScheme ColorScheme { get; }

    IFontScheme FontScheme { get; }

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

    public IColorScheme ColorScheme => new ColorScheme(this, Elements.ColorScheme ?? throw Missing("colour scheme"));

    public IFontScheme FontScheme => new FontScheme(Elements.FontScheme ?? throw Missing("font scheme"));

    public IPresentation Presentation => _owner;

    IPresentationComponent IMasterTheme.AsIPresentationComponent => this;

    internal ThemePart Part { get; }

    private A.Theme Root => Part.Theme;

    private A.ThemeElements Elements => Root.ThemeElements ?? throw Missing("theme elements");

    private PptxReadException Missing(string what) => new($"{_owner.Origin}, part '{Part.Uri}': the theme has no {what}");
}
