using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

/// <summary>The columns of a table, left to right. The table's width follows the columns.</summary>
public interface IColumnCollection : IEnumerable<IColumn>
{
    int Count { get; }

    IColumn this[int index] { get; }

    int IndexOf(IColumn column);

    /// <summary>Adds an empty column at the right, formatted as the last column, <paramref name="width"/> points wide.</summary>
    IColumn Add(double width);

    /// <summary>
    /// Inserts an empty column at <paramref name="index"/>, formatted as the column left of it (the
    /// first column for index 0). A merged cell the new column falls inside grows over it.
    /// </summary>
    IColumn Insert(int index, double width);

    /// <summary>Adds a copy of a column of this table (text, format and one-column merges) at the right.</summary>
    IColumn AddClone(IColumn column);

    IColumn InsertClone(int index, IColumn column);

    /// <summary>
    /// Removes a column. Merged cells over it shrink; one that begins in it then begins in the
    /// next column, with its text and format. The last column cannot be removed (remove the table).
    /// </summary>
    void RemoveAt(int index);

    void Remove(IColumn column);

    IEnumerable<IColumn> AsIEnumerable { get; }
}

public sealed class ColumnCollection : IColumnCollection
{
    private readonly Table _table;

    internal ColumnCollection(Table table)
    {
        _table = table;
    }

    public int Count => TableGrid.GridColumnsOf(_table.Tbl).Count();

    public IColumn this[int index]
    {
        get
        {
            var columns = TableGrid.GridColumnsOf(_table.Tbl).ToList();
            Indexes.Check(index, columns.Count, "ColumnCollection[index]");
            return _table.ColumnView(columns[index]);
        }
    }

    public int IndexOf(IColumn column) =>
        column is Column own ? TableGrid.GridColumnsOf(_table.Tbl).ToList().IndexOf(own.Element) : -1;

    public IColumn Add(double width) => Insert(Count, width);

    public IColumn Insert(int index, double width)
    {
        long w = TableCells.Length(width, nameof(width), "ColumnCollection.Insert");
        var grid = _table.Grid("ColumnCollection.Insert");
        Indexes.CheckPlace(index, grid.Columns.Count, "ColumnCollection.Insert");
        if (grid.Columns.Count == 0)
            throw new PptxEditException($"{_table.Where}: ColumnCollection.Insert: the table has no column to take a format from");
        int template = Math.Max(0, index - 1);
        var copy = TableCells.CopyLine(grid.Columns[template], c => c);
        AttributeAccess.SetAttr(copy, "w", AttributeAccess.Text(w));
        return Place(grid, index, template, copy, keepText: false);
    }

    public IColumn AddClone(IColumn column) => InsertClone(Count, column);

    public IColumn InsertClone(int index, IColumn column)
    {
        var grid = _table.Grid("ColumnCollection.InsertClone");
        Indexes.CheckPlace(index, grid.Columns.Count, "ColumnCollection.InsertClone");
        int template = grid.Columns.IndexOf(Own(column, "InsertClone"));
        var copy = TableCells.CopyLine(grid.Columns[template], c => c);
        return Place(grid, index, template, copy, keepText: true);
    }

    public void RemoveAt(int index)
    {
        var grid = _table.Grid("ColumnCollection.RemoveAt");
        Indexes.Check(index, grid.Columns.Count, "ColumnCollection.RemoveAt");
        if (grid.Columns.Count == 1)
            throw new PptxEditException($"{_table.Where}: ColumnCollection.RemoveAt: a table keeps at least one column; remove the table shape instead");
        grid.RemoveColumn(index);
        _table.FitFrame();
    }

    public void Remove(IColumn column) => RemoveAt(TableGrid.GridColumnsOf(_table.Tbl).ToList().IndexOf(Own(column, "Remove")));

    public IEnumerator<IColumn> GetEnumerator() =>
        TableGrid.GridColumnsOf(_table.Tbl).ToList().Select(c => (IColumn)_table.ColumnView(c)).GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IColumn> IColumnCollection.AsIEnumerable => this;

    private IColumn Place(TableGrid grid, int index, int template, OpenXmlElement copy, bool keepText)
    {
        grid.InsertColumn(index, template, copy, tc => TableCells.CopyCell(tc, keepText), spreadSingles: false);
        _table.FitFrame();
        return _table.ColumnView(copy);
    }

    private OpenXmlElement Own(IColumn column, string member)
    {
        ArgumentNullException.ThrowIfNull(column);
        if (column is Column own && ReferenceEquals(own.Element.Parent?.Parent, _table.Tbl))
            return own.Element;
        throw new ArgumentException($"{_table.Where}: ColumnCollection.{member}: the column is not a column of this table", nameof(column));
    }
}
