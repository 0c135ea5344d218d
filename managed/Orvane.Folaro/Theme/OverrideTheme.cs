using System;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Theme;

/// <summary>
/// The theme overrides of a layout or slide (its theme-override part): a colour, font or
/// format scheme that replaces the master theme's for that layout or slide (and, for a layout,
/// for its slides). A scheme reads as null until it is overridden.
/// </summary>
public interface IOverrideTheme
{
    /// <summary>True when no scheme is overridden.</summary>
    bool IsEmpty { get; }

    IColorScheme? ColorScheme { get; }

    IFontScheme? FontScheme { get; }

    IFormatScheme? FormatScheme { get; }

    /// <summary>Overrides the colour scheme with a copy of the one the layout or slide inherits, to edit.</summary>
    void InitColorScheme();

    void InitFontScheme();

    void InitFormatScheme();

    /// <summary>Removes every override (and the theme-override part).</summary>
    void Clear();
}

public sealed class OverrideTheme : IOverrideTheme
{
    private static readonly string[] Order = { "clrScheme", "fontScheme", "fmtScheme" };
    private readonly BaseSlide _slide;

    internal OverrideTheme(BaseSlide slide)
    {
        _slide = slide;
    }

    public bool IsEmpty => Root is not { } root || SchemaOrder.FirstOf(root, Order) == null;

    public IColorScheme? ColorScheme => Root?.ColorScheme is { } s ? new ColorScheme(s, Where) : null;

    public IFontScheme? FontScheme => Root?.FontScheme is { } s ? new FontScheme(s) : null;

    public IFormatScheme? FormatScheme =>
        Root?.FormatScheme is { } s && ThemeChain.OverridePart(_slide.PartBase) is { } part ? new FormatScheme(s, part, Where) : null;

    public void InitColorScheme() => Init(ThemeChain.ColorScheme(_slide.PartBase, skipOwn: true), "colour scheme");

    public void InitFontScheme() => Init(ThemeChain.FontScheme(_slide.PartBase, skipOwn: true), "font scheme");

    public void InitFormatScheme()
    {
        var inherited = ThemeChain.FormatScheme(_slide.PartBase, skipOwn: true);
        // Picture fills of a format scheme refer to images of the theme part; a copy elsewhere would lose them.
        // By name, so that a picture inside an extension the SDK does not know counts too.
        if (inherited != null && inherited.Descendants().Any(e => e.LocalName == "blip"))
            throw new NotSupportedException($"OverrideTheme.InitFormatScheme ({Where}): copying a format scheme with picture fills is not supported yet");
        Init(inherited, "format scheme");
    }

    public void Clear()
    {
        if (ThemeChain.OverridePart(_slide.PartBase) is { } part)
            _slide.PartBase.DeletePart(part);
    }

    public override string ToString() => IsEmpty ? "OverrideTheme [empty]" : "OverrideTheme";

    private string Where => $"{_slide.Where}, theme override";

    private A.ThemeOverride? Root => ThemeChain.Override(_slide.PartBase);

    private void Init(OpenXmlElement? inherited, string what)
    {
        if (inherited == null)
            throw new PptxEditException($"{_slide.Where}: there is no {what} to start the override from");
        var root = Root ?? Create();
        var copy = inherited.CloneNode(true);
        var old = SchemaOrder.First(root, copy.LocalName);
        if (old != null)
        {
            old.InsertBeforeSelf(copy);
            old.Remove();
        }
        else
            SchemaOrder.Insert(root, copy, Order);
    }

    private A.ThemeOverride Create()
    {
        ThemeOverridePart part = _slide.PartBase switch
        {
            SlidePart s => s.ThemeOverridePart ?? s.AddNewPart<ThemeOverridePart>(),
            SlideLayoutPart l => l.ThemeOverridePart ?? l.AddNewPart<ThemeOverridePart>(),
            _ => throw new PptxEditException($"{_slide.Where}: only layouts and slides carry theme overrides"),
        };
        part.ThemeOverride ??= new A.ThemeOverride();
        return part.ThemeOverride;
    }
}
