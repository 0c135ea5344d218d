using System;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

// The rows (a:tr) or the columns (a:gridCol) of a table as a list: counting, indexing, adding
// and cloning a line formatted as its neighbour, removing one. RowCollection and
// ColumnCollection are this list on one axis each; what differs between the axes (the plain
// line of an empty table, how cells follow a new column) is kept in the few places below that
// ask which axis they are on.
internal sealed class TableLines<T> where T : class
{
    private readonly Table _table;
    private readonly bool _rows;
    private readonly Func<OpenXmlElement, T> _view;
    private readonly Func<T?, OpenXmlElement?> _elementOf;
    private readonly string _collection;
    private readonly string _noun;

    internal TableLines(Table table, bool rows, Func<OpenXmlElement, T> view, Func<T?, OpenXmlElement?> elementOf)
    {
        _table = table;
        _rows = rows;
        _view = view;
        _elementOf = elementOf;
        _collection = rows ? "RowCollection" : "ColumnCollection";
        _noun = rows ? "row" : "column";
    }

    internal int Count => Elements().Count();

    internal T At(int index)
    {
        var lines = Elements().ToList();
        Indexes.Check(index, lines.Count, $"{_collection}[index]");
        return _view(lines[index]);
    }

    internal int IndexOf(T? line) => _elementOf(line) is { } element ? Elements().ToList().IndexOf(element) : -1;

    /// <summary>An empty line at <paramref name="index"/>, formatted as the one before it, <paramref name="size"/> points high (rows) or wide (columns).</summary>
    internal T Insert(int index, double size)
    {
        string member = $"{_collection}.Insert";
        long length = TableCells.Length(size, _rows ? "height" : "width", member);
        var grid = _table.Grid(member);
        var lines = Lines(grid);
        Indexes.CheckPlace(index, lines.Count, member);
        int template = Math.Max(0, index - 1);
        var copy = _rows ? NewRow(grid, template, length) : NewColumn(grid, template, length);
        return Place(grid, index, template, copy, keepText: false);
    }

    internal T InsertClone(int index, T? line)
    {
        string member = $"{_collection}.InsertClone";
        var grid = _table.Grid(member);
        var lines = Lines(grid);
        Indexes.CheckPlace(index, lines.Count, member);
        int template = lines.IndexOf(Own(line, "InsertClone"));
        // A column's cells are copied as the column is placed; a row carries its own.
        var copy = TableCells.CopyLine(lines[template], _rows ? tc => TableCells.CopyCell(tc, keepText: true) : c => c);
        return Place(grid, index, template, copy, keepText: true);
    }

    internal void RemoveAt(int index)
    {
        string member = $"{_collection}.RemoveAt";
        var grid = _table.Grid(member);
        var lines = Lines(grid);
        Indexes.Check(index, lines.Count, member);
        if (lines.Count == 1)
            throw new PptxEditException($"{_table.Where}: {member}: a table keeps at least one {_noun}; remove the table shape instead");
        if (_rows)
            grid.RemoveRow(index);
        else
            grid.RemoveColumn(index);
        _table.FitFrame();
    }

    internal void Remove(T? line) => RemoveAt(Elements().ToList().IndexOf(Own(line, "Remove")));

    internal IEnumerator<T> GetEnumerator() => Elements().ToList().Select(_view).GetEnumerator();

    private IEnumerable<OpenXmlElement> Elements() => _rows ? TableGrid.RowsOf(_table.Tbl) : TableGrid.GridColumnsOf(_table.Tbl);

    private List<OpenXmlElement> Lines(TableGrid grid) => _rows ? grid.Rows : grid.Columns;

    private OpenXmlElement NewRow(TableGrid grid, int template, long h)
    {
        // A table without rows gets a plain one.
        var copy = grid.Rows.Count == 0
            ? new DocumentFormat.OpenXml.Drawing.TableRow(grid.Columns.Select(_ => TableCells.NewCell()))
            : TableCells.CopyLine(grid.Rows[template], tc => TableCells.CopyCell(tc, keepText: false));
        AttributeAccess.SetAttr(copy, "h", AttributeAccess.Text(h));
        return copy;
    }

    private OpenXmlElement NewColumn(TableGrid grid, int template, long w)
    {
        if (grid.Columns.Count == 0)
            throw new PptxEditException($"{_table.Where}: ColumnCollection.Insert: the table has no column to take a format from");
        var copy = TableCells.CopyLine(grid.Columns[template], c => c);
        AttributeAccess.SetAttr(copy, "w", AttributeAccess.Text(w));
        return copy;
    }

    private T Place(TableGrid grid, int index, int template, OpenXmlElement copy, bool keepText)
    {
        if (_rows)
            grid.InsertRow(index, template, copy);
        else
            grid.InsertColumn(index, template, copy, tc => TableCells.CopyCell(tc, keepText), spreadSingles: false);
        _table.FitFrame();
        return _view(copy);
    }

    private OpenXmlElement Own(T? line, string member)
    {
        ArgumentNullException.ThrowIfNull(line, _noun);
        if (_elementOf(line) is { } element && ReferenceEquals(_rows ? element.Parent : element.Parent?.Parent, _table.Tbl))
            return element;
        throw new ArgumentException($"{_table.Where}: {_collection}.{member}: the {_noun} is not a {_noun} of this table", _noun);
    }
}

// The cells along one row or one column of a table, for Row and Column.
internal sealed class TableLineCells
{
    private readonly Table _table;
    private readonly bool _row;

    internal TableLineCells(Table table, OpenXmlElement element, bool row)
    {
        _table = table;
        Element = element;
        _row = row;
    }

    /// <summary>The a:tr of a row, the a:gridCol of a column.</summary>
    internal OpenXmlElement Element { get; }

    // A column has a place in every row, whether or not the row has a cell there.
    internal int Count => _row ? TableGrid.CellsOf(Element).Count() : TableGrid.RowsOf(_table.Tbl).Count();

    internal ICell At(int index, string paramName)
    {
        int column = _row ? -1 : ColumnIndex();
        var line = index < 0 ? null
            : _row ? TableGrid.CellsOf(Element).ElementAtOrDefault(index)
            : TableGrid.RowsOf(_table.Tbl).ElementAtOrDefault(index);
        if (line == null)
            throw new ArgumentOutOfRangeException(paramName, index, $"{(_row ? "Row" : "Column")}[{paramName}]: index must be in [0, {Count})");
        var cell = _row ? line : TableGrid.CellsOf(line).ElementAtOrDefault(column)
            ?? throw new PptxEditException($"{_table.Where}: row {index} has no cell in column {column}");
        return _table.CellView(cell);
    }

    internal IEnumerator<ICell> GetEnumerator()
    {
        if (_row)
            return TableGrid.CellsOf(Element).ToList().Select(c => (ICell)_table.CellView(c)).GetEnumerator();
        int column = ColumnIndex();
        return TableGrid.RowsOf(_table.Tbl)
            .Select(r => TableGrid.CellsOf(r).ElementAtOrDefault(column))
            .Where(c => c != null)
            .Select(c => (ICell)_table.CellView(c!))
            .ToList()
            .GetEnumerator();
    }

    /// <summary>After the size changed: the table's frame follows, unless the line was removed.</summary>
    internal void Resized()
    {
        if (Element.Parent != null)
            _table.FitFrame();
    }

    private int ColumnIndex()
    {
        int index = TableGrid.GridColumnsOf(_table.Tbl).ToList().IndexOf(Element);
        return index >= 0 ? index : throw new PptxEditException($"{_table.Where}: the column was removed from its table");
    }
}
