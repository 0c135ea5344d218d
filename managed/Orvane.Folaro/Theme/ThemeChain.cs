using System.Collections.Generic;
using DocumentFormat.OpenXml.Packaging;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Theme;

// The theme a part sees: each scheme (colours, fonts, formats) comes from the nearest theme
// override along slide → layout, else from the master's theme.
internal static class ThemeChain
{
    /// <summary>The part, then the parts it inherits from (slide → layout → master, notes → notes master).</summary>
    internal static IEnumerable<OpenXmlPart> Parts(OpenXmlPart part)
    {
        yield return part;
        switch (part)
        {
            case SlidePart s when s.SlideLayoutPart is { } layout:
                yield return layout;
                if (layout.SlideMasterPart is { } master)
                    yield return master;
                break;
            case SlideLayoutPart l when l.SlideMasterPart is { } m:
                yield return m;
                break;
            case NotesSlidePart n when n.NotesMasterPart is { } nm:
                yield return nm;
                break;
        }
    }

    /// <summary>The theme override a slide or layout carries, or null.</summary>
    internal static A.ThemeOverride? Override(OpenXmlPart part) => OverridePart(part)?.ThemeOverride;

    internal static ThemeOverridePart? OverridePart(OpenXmlPart part) => part switch
    {
        SlidePart s => s.ThemeOverridePart,
        SlideLayoutPart l => l.ThemeOverridePart,
        NotesSlidePart n => n.ThemeOverridePart,
        _ => null,
    };

    /// <summary>The theme part of the master a part belongs to (or the theme part itself).</summary>
    internal static ThemePart? MasterTheme(OpenXmlPart? part)
    {
        if (part == null)
            return null;
        foreach (var p in Parts(part))
        {
            switch (p)
            {
                case ThemePart t: return t;
                case SlideMasterPart m: return m.ThemePart;
                case NotesMasterPart n: return n.ThemePart;
                case HandoutMasterPart h: return h.ThemePart;
            }
        }
        return null;
    }

    internal static A.ColorScheme? ColorScheme(OpenXmlPart? part, bool skipOwn = false) =>
        Nearest(part, skipOwn, o => o.ColorScheme, t => t.ColorScheme);

    internal static A.FontScheme? FontScheme(OpenXmlPart? part, bool skipOwn = false) =>
        Nearest(part, skipOwn, o => o.FontScheme, t => t.FontScheme);

    internal static A.FormatScheme? FormatScheme(OpenXmlPart? part, bool skipOwn = false) =>
        Nearest(part, skipOwn, o => o.FormatScheme, t => t.FormatScheme);

    private static T? Nearest<T>(OpenXmlPart? part, bool skipOwn, System.Func<A.ThemeOverride, T?> fromOverride, System.Func<A.ThemeElements, T?> fromTheme)
        where T : class
    {
        if (part == null)
            return null;
        if (part is ThemeOverridePart op)
            return op.ThemeOverride is { } own ? fromOverride(own) : null;
        bool first = true;
        foreach (var p in Parts(part))
        {
            if (!(first && skipOwn) && Override(p) is { } o && fromOverride(o) is { } found)
                return found;
            first = false;
        }
        return MasterTheme(part)?.Theme?.ThemeElements is { } elements ? fromTheme(elements) : null;
    }
}
