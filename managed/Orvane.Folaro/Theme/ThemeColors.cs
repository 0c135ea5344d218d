using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro.Theme;

// The theme colours seen from one part: scheme names (bg1, tx1, accent1, ...) go through the
// colour map — the part's own override, else its layout's, else its master's — to a slot of
// the master's theme.
internal sealed class ThemeColors
{
    private readonly A.ColorScheme? _scheme;
    private readonly OpenXmlElement? _map;

    private ThemeColors(A.ColorScheme? scheme, OpenXmlElement? map)
    {
        _scheme = scheme;
        _map = map;
    }

    internal static ThemeColors? Of(OpenXmlPart? part)
    {
        if (part == null)
            return null;
        OpenXmlElement? map = null;
        foreach (var p in ThemeChain.Parts(part))
        {
            map ??= Override(p);
            map ??= p switch
            {
                SlideMasterPart m => m.SlideMaster?.ColorMap,
                NotesMasterPart n => n.NotesMaster?.ColorMap,
                HandoutMasterPart h => h.HandoutMaster?.ColorMap,
                _ => null,
            };
        }
        return new ThemeColors(ThemeChain.ColorScheme(part), map);
    }

    /// <summary>The colours of a given scheme seen through a colour map (null for the default map).</summary>
    internal static ThemeColors With(A.ColorScheme? scheme, OpenXmlElement? map) => new(scheme, map);

    /// <summary>The colour map a part applies: its own override, else its layout's, else its master's; null when none.</summary>
    internal static OpenXmlElement? MapOf(OpenXmlPart part)
    {
        foreach (var p in ThemeChain.Parts(part))
        {
            if (Override(p) is { } o)
                return o;
            if (p is SlideMasterPart m)
                return m.SlideMaster?.ColorMap;
            if (p is NotesMasterPart n)
                return n.NotesMaster?.ColorMap;
        }
        return null;
    }

    private static OpenXmlElement? Override(OpenXmlPart part)
    {
        var root = part.RootElement;
        var ovr = root?.GetFirstChild<P.ColorMapOverride>();
        return ovr?.GetFirstChild<A.OverrideColorMapping>();
    }

    /// <summary>The colour element of a theme slot for a scheme name, or null.</summary>
    internal OpenXmlElement? Slot(string? name)
    {
        if (_scheme == null || string.IsNullOrEmpty(name))
            return null;
        string slot = name switch
        {
            "bg1" or "tx1" or "bg2" or "tx2" => (_map != null ? AttributeAccess.Attr(_map, name) : null) ?? Default(name),
            _ => name,
        };
        OpenXmlCompositeElement? holder = slot switch
        {
            "dk1" => _scheme.Dark1Color,
            "lt1" => _scheme.Light1Color,
            "dk2" => _scheme.Dark2Color,
            "lt2" => _scheme.Light2Color,
            "accent1" => _scheme.Accent1Color,
            "accent2" => _scheme.Accent2Color,
            "accent3" => _scheme.Accent3Color,
            "accent4" => _scheme.Accent4Color,
            "accent5" => _scheme.Accent5Color,
            "accent6" => _scheme.Accent6Color,
            "hlink" => _scheme.Hyperlink,
            "folHlink" => _scheme.FollowedHyperlinkColor,
            _ => null,
        };
        return holder?.ChildElements.FirstOrDefault(c => System.Array.IndexOf(ColorMath.ColorElements, c.LocalName) >= 0);
    }

    private static string Default(string name) => name switch { "bg1" => "lt1", "tx1" => "dk1", "bg2" => "lt2", _ => "dk2" };
}
