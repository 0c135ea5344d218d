using System;
using System.Linq;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

/// <summary>
/// A cell of a table (a view over a:tc). A cell covered by a merged cell stands for it: its
/// text, margins and format are the merged cell's, and its spans, position and size are those
/// of the merged cell. Lengths are in points.
/// </summary>
public interface ICell
{
    ITextFrame TextFrame { get; }

    /// <summary>The inner margins in points (7.2 left and right, 3.6 top and bottom unless set); NaN resets one.</summary>
    double MarginLeft { get; set; }
    double MarginRight { get; set; }
    double MarginTop { get; set; }
    double MarginBottom { get; set; }

    /// <summary>Where the text sits vertically; NotDefined (top) unless set.</summary>
    TextAnchorType TextAnchorType { get; set; }

    /// <summary>The direction of the text; NotDefined (horizontal) unless set.</summary>
    TextVerticalType TextVerticalType { get; set; }

    ICellFormat CellFormat { get; }

    /// <summary>The number of grid columns of the (merged) cell.</summary>
    int ColSpan { get; }

    /// <summary>The number of rows of the (merged) cell.</summary>
    int RowSpan { get; }

    /// <summary>True when the cell is part of a merged cell.</summary>
    bool IsMergedCell { get; }

    /// <summary>The row of the (merged) cell's top-left cell.</summary>
    int FirstRowIndex { get; }

    /// <summary>The column of the (merged) cell's top-left cell.</summary>
    int FirstColumnIndex { get; }

    double Width { get; }
    double Height { get; }

    /// <summary>The left edge of the (merged) cell from the table's left edge.</summary>
    double OffsetX { get; }

    /// <summary>The top edge of the (merged) cell from the table's top edge.</summary>
    double OffsetY { get; }

    /// <summary>
    /// Splits the cell in two side by side, the left part <paramref name="width"/> points wide,
    /// and returns the right part. A merged cell whose column border lies there is simply split
    /// there; otherwise the grid column under that place is divided and the cells of other rows
    /// in it span both halves.
    /// </summary>
    ICell SplitByWidth(double width);

    /// <summary>Splits the cell in two, one above the other, the top part <paramref name="height"/> points high; returns the lower part.</summary>
    ICell SplitByHeight(double height);

    /// <summary>Splits a merged cell after its first <paramref name="colSpan"/> columns; returns the right part.</summary>
    ICell SplitByColSpan(int colSpan);

    /// <summary>Splits a merged cell after its first <paramref name="rowSpan"/> rows; returns the lower part.</summary>
    ICell SplitByRowSpan(int rowSpan);

    ITable Table { get; }
}

public sealed class Cell : ICell
{
    internal Cell(Table table, OpenXmlElement element)
    {
        TableView = table;
        Element = element;
    }

    internal Table TableView { get; }

    internal OpenXmlElement Element { get; }

    public ITable Table => TableView;

    public ITextFrame TextFrame
    {
        get
        {
            var target = Target();
            return new TextFrame(create => create ? TableCells.EnsureBody(target) : TableCells.Body(target), Context(), target);
        }
    }

    public double MarginLeft { get => Margin("marL", 91440); set => SetMargin("marL", value, nameof(MarginLeft)); }
    public double MarginRight { get => Margin("marR", 91440); set => SetMargin("marR", value, nameof(MarginRight)); }
    public double MarginTop { get => Margin("marT", 45720); set => SetMargin("marT", value, nameof(MarginTop)); }
    public double MarginBottom { get => Margin("marB", 45720); set => SetMargin("marB", value, nameof(MarginBottom)); }

    public TextAnchorType TextAnchorType
    {
        get => TextTokens.Anchors.Member(Attr("anchor"), TextAnchorType.NotDefined);
        set => SetAttr("anchor", TextTokens.Anchors.TokenOrNull(value, TextAnchorType.NotDefined, "Cell." + nameof(TextAnchorType)));
    }

    public TextVerticalType TextVerticalType
    {
        get => TextTokens.Verticals.Member(Attr("vert"), TextVerticalType.NotDefined);
        set => SetAttr("vert", TextTokens.Verticals.TokenOrNull(value, TextVerticalType.NotDefined, "Cell." + nameof(TextVerticalType)));
    }

    public ICellFormat CellFormat => new CellFormat(Target(), Context());

    public int ColSpan => Region().ColSpan;
    public int RowSpan => Region().RowSpan;
    public bool IsMergedCell => Region().IsMerged;
    public int FirstRowIndex => Region().Row;
    public int FirstColumnIndex => Region().Column;

    public double Width
    {
        get
        {
            var (grid, region) = Read();
            return TableCells.Points(Enumerable.Range(region.Column, region.ColSpan).Where(c => c < grid.Columns.Count).Sum(grid.ColumnWidth));
        }
    }

    public double Height
    {
        get
        {
            var (grid, region) = Read();
            return TableCells.Points(Enumerable.Range(region.Row, region.RowSpan).Sum(grid.RowHeight));
        }
    }

    public double OffsetX
    {
        get
        {
            var (grid, region) = Read();
            return TableCells.Points(Enumerable.Range(0, Math.Min(region.Column, grid.Columns.Count)).Sum(grid.ColumnWidth));
        }
    }

    public double OffsetY
    {
        get
        {
            var (grid, region) = Read();
            return TableCells.Points(Enumerable.Range(0, region.Row).Sum(grid.RowHeight));
        }
    }

    public ICell SplitByWidth(double width) => SplitBy(width, vertical: false, nameof(SplitByWidth));

    public ICell SplitByHeight(double height) => SplitBy(height, vertical: true, nameof(SplitByHeight));

    public ICell SplitByColSpan(int colSpan) => SplitBySpan(colSpan, vertical: false, nameof(SplitByColSpan));

    public ICell SplitByRowSpan(int rowSpan) => SplitBySpan(rowSpan, vertical: true, nameof(SplitByRowSpan));

    public override string ToString() => $"Cell (row {RowIndex()}, column {ColumnIndex()}) \"{TextFrame.Text}\"";

    // --- position --------------------------------------------------------------------

    internal int RowIndex() =>
        Element.Parent is { } row && TableGrid.RowsOf(TableView.Tbl).ToList().IndexOf(row) is var r and >= 0
            ? r
            : throw new PptxEditException($"{TableView.Where}: the cell was removed from its table");

    internal int ColumnIndex() => Element.Parent is { } row ? TableGrid.CellsOf(row).ToList().IndexOf(Element) : -1;

    private (TableGrid Grid, CellRegion Region) Read()
    {
        int r = RowIndex();
        var grid = TableGrid.Read(TableView.Tbl);
        return (grid, grid.RegionAt(r, ColumnIndex()));
    }

    private CellRegion Region() => Read().Region;

    // The element that holds the text and format: the merged cell's first cell for a covered one.
    private OpenXmlElement Target()
    {
        if (AttributeAccess.Attr(Element, "hMerge") is null or "0" or "false" && AttributeAccess.Attr(Element, "vMerge") is null or "0" or "false")
            return Element;
        var (grid, region) = Read();
        return grid.Cells[region.Row][region.Column];
    }

    private FormatContext Context() =>
        new(TableView.SlideView.PartBase, () => $"{TableView.Where}, cell (row {RowIndex()}, column {ColumnIndex()})");

    // --- splitting -------------------------------------------------------------------

    private ICell SplitBy(double length, bool vertical, string member)
    {
        string where = $"{TableView.Where}: Cell.{member}";
        var grid = TableView.Grid($"Cell.{member}");
        var region = grid.RegionAt(RowIndex(), ColumnIndex());
        int first = vertical ? region.Row : region.Column;
        int span = vertical ? region.RowSpan : region.ColSpan;
        long Size(int i) => vertical ? grid.RowHeight(i) : grid.ColumnWidth(i);
        long total = Enumerable.Range(first, span).Sum(Size);
        long at = double.IsFinite(length) ? (long)Math.Round(length * Emu.PerPoint, MidpointRounding.AwayFromZero) : -1;
        if (at <= 0 || at >= total)
            throw new ArgumentOutOfRangeException(vertical ? "height" : "width", length,
                $"{where}: the split must fall inside the cell, between 0 and {TableCells.Points(total)} points");
        long before = 0;
        for (int i = first; i < first + span; i++)
        {
            if (i > first && Math.Abs(before - at) <= 1)
                return Tail(grid, grid.SplitRegion(region, i, vertical));
            long size = Size(i);
            if (at < before + size)
            {
                if (vertical)
                {
                    grid.SplitRow(i, at - before, tr => TableCells.CopyLine(tr, tc => TableCells.CopyCell(tc, keepText: false)));
                    region = region with { RowSpan = region.RowSpan + 1 };
                }
                else
                {
                    var column = TableCells.CopyLine(grid.Columns[i], c => c);
                    AttributeAccess.SetAttr(column, "w", AttributeAccess.Text(before + size - at));
                    AttributeAccess.SetAttr(grid.Columns[i], "w", AttributeAccess.Text(at - before));
                    grid.InsertColumn(i + 1, i, column, tc => TableCells.CopyCell(tc, keepText: false), spreadSingles: true);
                    region = region with { ColSpan = region.ColSpan + 1 };
                }
                var tail = grid.SplitRegion(region, i + 1, vertical);
                TableView.FitFrame();
                return Tail(grid, tail);
            }
            before += size;
        }
        throw new InvalidOperationException("unreachable: the split place lies inside the cell");
    }

    private ICell SplitBySpan(int count, bool vertical, string member)
    {
        var grid = TableView.Grid($"Cell.{member}");
        var region = grid.RegionAt(RowIndex(), ColumnIndex());
        int span = vertical ? region.RowSpan : region.ColSpan;
        if (count < 1 || count >= span)
            throw new ArgumentOutOfRangeException(vertical ? "rowSpan" : "colSpan", count,
                $"{TableView.Where}: Cell.{member}: the cell spans {span} {(vertical ? "rows" : "columns")}, so the first part must span 1 to {span - 1}");
        return Tail(grid, grid.SplitRegion(region, (vertical ? region.Row : region.Column) + count, vertical));
    }

    private Cell Tail(TableGrid grid, CellRegion tail) => TableView.CellView(grid.Cells[tail.Row][tail.Column]);

    // --- a:tcPr attributes -----------------------------------------------------------

    private string? Attr(string name) => TableCells.Properties(Target()) is { } props ? AttributeAccess.Attr(props, name) : null;

    private void SetAttr(string name, string? value)
    {
        var target = Target();
        if (value == null && TableCells.Properties(target) == null)
            return;
        AttributeAccess.SetAttr(TableCells.EnsureProperties(target), name, value);
    }

    private double Margin(string name, long defaultEmu) =>
        TableCells.Points(TableCells.Properties(Target()) is { } props && AttributeAccess.Long(props, name) is long v ? v : defaultEmu);

    private void SetMargin(string name, double value, string member)
    {
        if (double.IsNaN(value))
        {
            SetAttr(name, null);
            return;
        }
        if (!(value >= 0 && value <= 4000))
            throw new ArgumentOutOfRangeException(nameof(value), value, $"Cell.{member} must be between 0 and 4,000 points (NaN for the default)");
        SetAttr(name, AttributeAccess.Text((long)Math.Round(value * Emu.PerPoint, MidpointRounding.AwayFromZero)));
    }
}
