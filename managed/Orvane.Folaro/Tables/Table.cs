using System;
using System.Linq;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>
/// A table: a graphic frame holding an a:tbl. Its width and height follow its columns and rows.
/// Cells are reached as <c>table[column, row]</c>, <c>table.Rows[row][column]</c> or
/// <c>table.Columns[column][row]</c>; every cell of a merged region stands for the merged cell.
/// </summary>
public interface ITable : IGraphicalObject
{
    IRowCollection Rows { get; }

    IColumnCollection Columns { get; }

    ICell this[int columnIndex, int rowIndex] { get; }

    /// <summary>
    /// Merges the rectangle that holds both cells (and the merged cells they belong to) into one
    /// cell; the text of the merged cells is joined in the first. A merged cell that lies partly
    /// outside the rectangle is split back into single cells when <paramref name="allowSplitting"/>
    /// is true, else the merge raises ArgumentException.
    /// </summary>
    void MergeCells(ICell cell1, ICell cell2, bool allowSplitting);

    /// <summary>The first row is a header row, formatted apart by the table style.</summary>
    bool FirstRow { get; set; }

    bool LastRow { get; set; }

    bool FirstCol { get; set; }

    bool LastCol { get; set; }

    /// <summary>Rows are banded (alternately formatted) by the table style.</summary>
    bool HorizontalBanding { get; set; }

    bool VerticalBanding { get; set; }

    /// <summary>Columns run from right to left.</summary>
    bool RightToLeft { get; set; }

    /// <summary>The built-in style of the table; Custom for a style of the deck's own (which cannot be set).</summary>
    TableStylePreset StylePreset { get; set; }

    IGraphicalObject AsIGraphicalObject { get; }
}

public sealed class Table : GraphicalObject, ITable
{
    internal Table(BaseSlide slide, OpenXmlCompositeElement element) : base(slide, element)
    {
    }

    public IRowCollection Rows => new RowCollection(this);

    public IColumnCollection Columns => new ColumnCollection(this);

    public ICell this[int columnIndex, int rowIndex]
    {
        get
        {
            var row = TableGrid.RowsOf(Tbl).ElementAtOrDefault(rowIndex);
            if (rowIndex < 0 || row == null)
                throw new ArgumentOutOfRangeException(nameof(rowIndex), rowIndex, $"Table[column, row]: row must be in [0, {TableGrid.RowsOf(Tbl).Count()})");
            var cell = TableGrid.CellsOf(row).ElementAtOrDefault(columnIndex);
            if (columnIndex < 0 || cell == null)
                throw new ArgumentOutOfRangeException(nameof(columnIndex), columnIndex, $"Table[column, row]: column must be in [0, {TableGrid.CellsOf(row).Count()})");
            return CellView(cell);
        }
    }

    public void MergeCells(ICell cell1, ICell cell2, bool allowSplitting)
    {
        var a = Own(cell1, nameof(cell1));
        var b = Own(cell2, nameof(cell2));
        var grid = Grid(nameof(MergeCells));
        var ra = grid.RegionAt(a.RowIndex(), a.ColumnIndex());
        var rb = grid.RegionAt(b.RowIndex(), b.ColumnIndex());
        int top = Math.Min(ra.Row, rb.Row), left = Math.Min(ra.Column, rb.Column);
        int bottom = Math.Max(ra.Row + ra.RowSpan, rb.Row + rb.RowSpan), right = Math.Max(ra.Column + ra.ColSpan, rb.Column + rb.ColSpan);
        var target = new CellRegion(top, left, bottom - top, right - left);
        if (!target.IsMerged)
            return;
        grid.Merge(target, allowSplitting, $"{Where}: Table.MergeCells");
    }

    public bool FirstRow { get => Flag("firstRow"); set => SetFlag("firstRow", value); }
    public bool LastRow { get => Flag("lastRow"); set => SetFlag("lastRow", value); }
    public bool FirstCol { get => Flag("firstCol"); set => SetFlag("firstCol", value); }
    public bool LastCol { get => Flag("lastCol"); set => SetFlag("lastCol", value); }
    public bool HorizontalBanding { get => Flag("bandRow"); set => SetFlag("bandRow", value); }
    public bool VerticalBanding { get => Flag("bandCol"); set => SetFlag("bandCol", value); }
    public bool RightToLeft { get => Flag("rtl"); set => SetFlag("rtl", value); }

    public TableStylePreset StylePreset
    {
        get
        {
            var props = Tbl.GetFirstChild<A.TableProperties>();
            if (props == null)
                return TableStylePreset.None;
            if (props.GetFirstChild<A.TableStyleId>() is { } id)
                return id.InnerText.Trim().Length == 0 ? TableStylePreset.None : TableStyleIds.PresetOf(id.InnerText);
            return props.GetFirstChild<A.TableStyle>() != null ? TableStylePreset.Custom : TableStylePreset.None;
        }
        set
        {
            if (value == TableStylePreset.Custom || !Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "Table.StylePreset must be a built-in style or None");
            var props = Properties();
            foreach (var old in props.ChildElements.Where(c => c is A.TableStyleId or A.TableStyle).ToList())
                old.Remove();
            if (value != TableStylePreset.None)
                SchemaOrder.Insert(props, new A.TableStyleId(TableStyleIds.IdOf(value)), TablePropertiesOrder);
        }
    }

    IGraphicalObject ITable.AsIGraphicalObject => this;

    private static readonly string[] TablePropertiesOrder =
        { "noFill", "solidFill", "gradFill", "blipFill", "pattFill", "grpFill", "effectLst", "effectDag", "tableStyle", "tableStyleId", "extLst" };

    // --- internals used by rows, columns and cells ---------------------------------------

    internal OpenXmlElement Tbl => TableCells.TableOf(Element) ?? throw new PptxEditException($"{SlideView.Where}: shape '{Name}' no longer holds a table");

    internal string Where => $"{SlideView.Where}, table '{Name}'";

    internal Row RowView(OpenXmlElement tr) => SlideView.Owner.ElementView(tr, () => new Row(this, tr));

    internal Column ColumnView(OpenXmlElement gridCol) => SlideView.Owner.ElementView(gridCol, () => new Column(this, gridCol));

    internal Cell CellView(OpenXmlElement tc) => SlideView.Owner.ElementView(tc, () => new Cell(this, tc));

    /// <summary>The table read for an edit: every row must have one cell per column.</summary>
    internal TableGrid Grid(string member)
    {
        var grid = TableGrid.Read(Tbl);
        grid.CheckRegular($"{Where}: {member}");
        return grid;
    }

    /// <summary>Sets the frame's size to the sum of the column widths and of the row heights.</summary>
    internal void FitFrame()
    {
        var xfrm = Element.GetFirstChild<P.Transform>();
        var ext = xfrm?.GetFirstChild<A.Extents>();
        if (ext == null)
            return;
        long width = TableGrid.GridColumnsOf(Tbl).Sum(c => AttributeAccess.Long(c, "w") ?? 0);
        long height = TableGrid.RowsOf(Tbl).Sum(r => AttributeAccess.Long(r, "h") ?? 0);
        AttributeAccess.SetAttr(ext, "cx", AttributeAccess.Text(width));
        AttributeAccess.SetAttr(ext, "cy", AttributeAccess.Text(height));
    }

    private Cell Own(ICell cell, string name)
    {
        ArgumentNullException.ThrowIfNull(cell, name);
        if (cell is Cell own && ReferenceEquals(own.TableView.Tbl, Tbl) && own.Element.Parent != null)
            return own;
        throw new ArgumentException($"{Where}: Table.MergeCells: the cell is not a cell of this table", name);
    }

    private OpenXmlElement Properties()
    {
        var tbl = Tbl;
        if (tbl.GetFirstChild<A.TableProperties>() is { } props)
            return props;
        return tbl.PrependChild(new A.TableProperties());
    }

    private bool Flag(string name) =>
        Tbl.GetFirstChild<A.TableProperties>() is { } props && AttributeAccess.Attr(props, name) is "1" or "true";

    private void SetFlag(string name, bool value)
    {
        if (!value && Tbl.GetFirstChild<A.TableProperties>() == null)
            return;
        AttributeAccess.SetAttr(Properties(), name, value ? "1" : null);
    }
}
