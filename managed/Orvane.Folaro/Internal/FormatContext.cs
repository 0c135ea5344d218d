using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;

namespace Orvane.Folaro.Internal;

/// <summary>An element a format views, found on demand and made (with what must hold it) when <c>create</c> is true.</summary>
internal delegate OpenXmlElement? ElementSlot(bool create);

/// <summary>Where a format's element lives: the part (for theme colours and relationships) and a place for messages.</summary>
internal sealed class FormatContext
{
    internal FormatContext(OpenXmlPart? part, string where)
    {
        Part = part;
        Where = where;
    }

    internal OpenXmlPart? Part { get; }

    internal string Where { get; }

    /// <summary>The presentation, where known (hyperlinks to slides name their target through it).</summary>
    internal Presentation? Owner { get; init; }

    internal ThemeColors? Theme => ThemeColors.Of(Part);
}
