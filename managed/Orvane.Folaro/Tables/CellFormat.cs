using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

/// <summary>The format of a table cell (a view over a:tcPr): its fill and its borders, each a line of its own.</summary>
public interface ICellFormat
{
    IFillFormat FillFormat { get; }

    ILineFormat BorderLeft { get; }
    ILineFormat BorderTop { get; }
    ILineFormat BorderRight { get; }
    ILineFormat BorderBottom { get; }

    /// <summary>The diagonal from the top-left corner to the bottom-right one.</summary>
    ILineFormat BorderDiagonalDown { get; }

    /// <summary>The diagonal from the bottom-left corner to the top-right one.</summary>
    ILineFormat BorderDiagonalUp { get; }
}

public sealed class CellFormat : ICellFormat
{
    // The children of a:tcPr in schema order.
    internal static readonly string[] Order =
        { "lnL", "lnR", "lnT", "lnB", "lnTlToBr", "lnBlToTr", "cell3D", "noFill", "solidFill", "gradFill", "blipFill", "pattFill", "grpFill", "headers", "extLst" };

    private readonly OpenXmlElement _cell;
    private readonly FormatContext _context;

    internal CellFormat(OpenXmlElement cell, FormatContext context)
    {
        _cell = cell;
        _context = context;
    }

    public IFillFormat FillFormat =>
        new FillFormat(create => create ? TableCells.EnsureProperties(_cell) : TableCells.Properties(_cell), Order, SchemaOrder.Fills, _context);

    public ILineFormat BorderLeft => Border("lnL", () => new A.LeftBorderLineProperties());
    public ILineFormat BorderTop => Border("lnT", () => new A.TopBorderLineProperties());
    public ILineFormat BorderRight => Border("lnR", () => new A.RightBorderLineProperties());
    public ILineFormat BorderBottom => Border("lnB", () => new A.BottomBorderLineProperties());
    public ILineFormat BorderDiagonalDown => Border("lnTlToBr", () => new A.TopLeftToBottomRightBorderLineProperties());
    public ILineFormat BorderDiagonalUp => Border("lnBlToTr", () => new A.BottomLeftToTopRightBorderLineProperties());

    public override string ToString() => $"CellFormat [{FillFormat.FillType}]";

    private LineFormat Border(string name, System.Func<OpenXmlElement> make) =>
        new(create =>
        {
            if (!create)
                return TableCells.Properties(_cell) is { } props ? SchemaOrder.First(props, name) : null;
            return SchemaOrder.Ensure(TableCells.EnsureProperties(_cell), name, make, Order);
        }, new FormatContext(_context.Part, $"{_context.Where}, border {name}"));
}
