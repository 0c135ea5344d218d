using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

/// <summary>The rows of a table, top to bottom. The table's height follows the rows.</summary>
public interface IRowCollection : IEnumerable<IRow>
{
    int Count { get; }

    IRow this[int index] { get; }

    int IndexOf(IRow row);

    /// <summary>Adds an empty row at the bottom, formatted as the last row, <paramref name="height"/> points high.</summary>
    IRow Add(double height);

    /// <summary>
    /// Inserts an empty row at <paramref name="index"/>, formatted as the row above it (the first
    /// row for index 0). A merged cell the new row falls inside grows over it.
    /// </summary>
    IRow Insert(int index, double height);

    /// <summary>Adds a copy of a row of this table (text, format and one-row merges) at the bottom.</summary>
    IRow AddClone(IRow row);

    IRow InsertClone(int index, IRow row);

    /// <summary>
    /// Removes a row. Merged cells over it shrink; one that begins in it then begins in the
    /// next row, with its text and format. The last row cannot be removed (remove the table).
    /// </summary>
    void RemoveAt(int index);

    void Remove(IRow row);

    IEnumerable<IRow> AsIEnumerable { get; }
}

public sealed class RowCollection : IRowCollection
{
    private readonly Table _table;

    internal RowCollection(Table table)
    {
        _table = table;
    }

    public int Count => TableGrid.RowsOf(_table.Tbl).Count();

    public IRow this[int index]
    {
        get
        {
            var rows = TableGrid.RowsOf(_table.Tbl).ToList();
            Indexes.Check(index, rows.Count, "RowCollection[index]");
            return _table.RowView(rows[index]);
        }
    }

    public int IndexOf(IRow row) =>
        row is Row own ? TableGrid.RowsOf(_table.Tbl).ToList().IndexOf(own.Element) : -1;

    public IRow Add(double height) => Insert(Count, height);

    public IRow Insert(int index, double height)
    {
        long h = TableCells.Length(height, nameof(height), "RowCollection.Insert");
        var grid = _table.Grid("RowCollection.Insert");
        Indexes.CheckPlace(index, grid.Rows.Count, "RowCollection.Insert");
        int template = Math.Max(0, index - 1);
        // A table without rows gets a plain one.
        var copy = grid.Rows.Count == 0
            ? new DocumentFormat.OpenXml.Drawing.TableRow(grid.Columns.Select(_ => TableCells.NewCell()))
            : TableCells.CopyLine(grid.Rows[template], tc => TableCells.CopyCell(tc, keepText: false));
        AttributeAccess.SetAttr(copy, "h", AttributeAccess.Text(h));
        return Place(grid, index, template, copy);
    }

    public IRow AddClone(IRow row) => InsertClone(Count, row);

    public IRow InsertClone(int index, IRow row)
    {
        var grid = _table.Grid("RowCollection.InsertClone");
        Indexes.CheckPlace(index, grid.Rows.Count, "RowCollection.InsertClone");
        int template = grid.Rows.IndexOf(Own(row, "InsertClone"));
        var copy = TableCells.CopyLine(grid.Rows[template], tc => TableCells.CopyCell(tc, keepText: true));
        return Place(grid, index, template, copy);
    }

    public void RemoveAt(int index)
    {
        var grid = _table.Grid("RowCollection.RemoveAt");
        Indexes.Check(index, grid.Rows.Count, "RowCollection.RemoveAt");
        if (grid.Rows.Count == 1)
            throw new PptxEditException($"{_table.Where}: RowCollection.RemoveAt: a table keeps at least one row; remove the table shape instead");
        grid.RemoveRow(index);
        _table.FitFrame();
    }

    public void Remove(IRow row) => RemoveAt(TableGrid.RowsOf(_table.Tbl).ToList().IndexOf(Own(row, "Remove")));

    public IEnumerator<IRow> GetEnumerator() => TableGrid.RowsOf(_table.Tbl).ToList().Select(r => (IRow)_table.RowView(r)).GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IRow> IRowCollection.AsIEnumerable => this;

    private IRow Place(TableGrid grid, int index, int template, OpenXmlElement copy)
    {
        grid.InsertRow(index, template, copy);
        _table.FitFrame();
        return _table.RowView(copy);
    }

    private OpenXmlElement Own(IRow row, string member)
    {
        ArgumentNullException.ThrowIfNull(row);
        if (row is Row own && ReferenceEquals(own.Element.Parent, _table.Tbl))
            return own.Element;
        throw new ArgumentException($"{_table.Where}: RowCollection.{member}: the row is not a row of this table", nameof(row));
    }
}
