using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using Orvane.Folaro.Theme;

namespace Orvane.Folaro;

/// <summary>An element a format views, found on demand and made (with what must hold it) when <c>create</c> is true.</summary>
internal delegate OpenXmlElement? ElementSlot(bool create);

/// <summary>Where a format's element lives: the part (for theme colours and relationships) and a place for messages.</summary>
internal sealed class FormatContext
{
    private readonly System.Func<string>? _describe;
    private string? _where;

    internal FormatContext(OpenXmlPart? part, string where)
    {
        Part = part;
        _where = where;
    }

    // Where the format sits, worked out only when a message needs it: views made in bulk
    // (the cells of a table) would otherwise build a string each that is never read.
    internal FormatContext(OpenXmlPart? part, System.Func<string> describe)
    {
        Part = part;
        _describe = describe;
    }

    internal OpenXmlPart? Part { get; }

    internal string Where => _where ??= _describe!();

    /// <summary>The presentation, where known (hyperlinks to slides name their target through it).</summary>
    internal Presentation? Owner { get; init; }

    internal ThemeColors? Theme => ThemeColors.Of(Part);
}
