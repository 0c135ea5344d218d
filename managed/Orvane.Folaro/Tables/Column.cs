using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

/// <summary>A column of a table (a view over a:gridCol): its cells, top to bottom, and its width in points.</summary>
public interface IColumn : IEnumerable<ICell>
{
    int Count { get; }

    ICell this[int rowIndex] { get; }

    /// <summary>The width in points; the table's width follows.</summary>
    double Width { get; set; }

    IEnumerable<ICell> AsIEnumerable { get; }
}

public sealed class Column : IColumn
{
    private readonly Table _table;

    internal Column(Table table, OpenXmlElement element)
    {
        _table = table;
        Element = element;
    }

    internal OpenXmlElement Element { get; }

    public int Count => TableGrid.RowsOf(_table.Tbl).Count();

    public ICell this[int rowIndex]
    {
        get
        {
            int column = Index();
            var row = rowIndex < 0 ? null : TableGrid.RowsOf(_table.Tbl).ElementAtOrDefault(rowIndex);
            if (row == null)
                throw new ArgumentOutOfRangeException(nameof(rowIndex), rowIndex, $"Column[rowIndex]: index must be in [0, {Count})");
            var cell = TableGrid.CellsOf(row).ElementAtOrDefault(column)
                ?? throw new PptxEditException($"{_table.Where}: row {rowIndex} has no cell in column {column}");
            return _table.CellView(cell);
        }
    }

    public double Width
    {
        get => TableCells.Points(AttributeAccess.Long(Element, "w") ?? 0);
        set
        {
            long w = TableCells.Length(value, nameof(value), "Column.Width");
            AttributeAccess.SetAttr(Element, "w", AttributeAccess.Text(w));
            if (Element.Parent != null)
                _table.FitFrame();
        }
    }

    public IEnumerator<ICell> GetEnumerator()
    {
        int column = Index();
        return TableGrid.RowsOf(_table.Tbl)
            .Select(r => TableGrid.CellsOf(r).ElementAtOrDefault(column))
            .Where(c => c != null)
            .Select(c => (ICell)_table.CellView(c!))
            .ToList()
            .GetEnumerator();
    }

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<ICell> IColumn.AsIEnumerable => this;

    public override string ToString() => $"Column [{Width} pt]";

    private int Index()
    {
        int index = TableGrid.GridColumnsOf(_table.Tbl).ToList().IndexOf(Element);
        return index >= 0 ? index : throw new PptxEditException($"{_table.Where}: the column was removed from its table");
    }
}
