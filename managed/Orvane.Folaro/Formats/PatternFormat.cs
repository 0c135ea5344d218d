using System;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

/// <summary>A pattern fill: a preset pattern drawn in a fore colour over a back colour.</summary>
public interface IPatternFormat
{
    PatternStyle PatternStyle { get; set; }

    IColorFormat ForeColor { get; }

    IColorFormat BackColor { get; }
}

public sealed class PatternFormat : IPatternFormat
{
    private readonly FillFormat _fill;

    internal PatternFormat(FillFormat fill)
    {
        _fill = fill;
    }

    private OpenXmlElement? Existing => _fill.Fill(false) as A.PatternFill;

    public PatternStyle PatternStyle
    {
        get => Existing is { } p ? FormatTokens.PatternStyles.Member(AttributeAccess.Attr(p, "prst") ?? "pct5", PatternStyle.NotDefined) : PatternStyle.NotDefined;
        set
        {
            if (value < 0 || !Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "PatternFormat.PatternStyle must be a preset pattern");
            AttributeAccess.SetAttr(_fill.Ensure(FillType.Pattern), "prst", FormatTokens.PatternStyles.Token(value));
        }
    }

    public IColorFormat ForeColor => Color("fgClr", () => new A.ForegroundColor());

    public IColorFormat BackColor => Color("bgClr", () => new A.BackgroundColor());

    private IColorFormat Color(string name, Func<OpenXmlElement> make) =>
        new ColorFormat(create => create
            ? SchemaOrder.Ensure(_fill.Ensure(FillType.Pattern), name, make, SchemaOrder.PatternFill)
            : Existing is { } p ? SchemaOrder.First(p, name) : null, _fill.Context);

    public override string ToString() => $"PatternFormat [{PatternStyle}]";
}
