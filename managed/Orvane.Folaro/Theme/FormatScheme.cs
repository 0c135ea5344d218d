using DocumentFormat.OpenXml.Packaging;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Theme;

/// <summary>
/// The style matrix of a theme (a:fmtScheme): the fills, lines and effects that shape styles
/// refer to by index. Colours written as the placeholder colour (phClr) take the colour of the
/// reference and read as empty here.
/// </summary>

public interface IFormatScheme
{
    string Name { get; }

    /// <summary>The fill styles (subtle, moderate, intense), referred to by indices 1, 2, 3.</summary>
    IFillFormatCollection FillStyles { get; }

    ILineFormatCollection LineStyles { get; }

    IEffectStyleCollection EffectStyles { get; }

    /// <summary>The background fill styles, referred to by indices 1001, 1002, 1003.</summary>
    IFillFormatCollection BackgroundFillStyles { get; }
}

public sealed class FormatScheme : IFormatScheme
{
    private readonly A.FormatScheme _element;
    private readonly FormatContext _context;

    internal FormatScheme(A.FormatScheme element, OpenXmlPart part, string where)
    {
        _element = element;
        _context = new FormatContext(part, where);
    }

    public string Name => _element.Name?.Value ?? string.Empty;

    public IFillFormatCollection FillStyles => new FillFormatCollection(() => _element.FillStyleList, _context, "fill style");

    public ILineFormatCollection LineStyles => new LineFormatCollection(() => _element.LineStyleList, _context);

    public IEffectStyleCollection EffectStyles => new EffectStyleCollection(() => _element.EffectStyleList);

    public IFillFormatCollection BackgroundFillStyles => new FillFormatCollection(() => _element.BackgroundFillStyleList, _context, "background fill style");

    public override string ToString() => $"FormatScheme '{Name}'";
}
