using System;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

/// <summary>A rectangle of grid cells shown as one cell: its top-left position and its spans.</summary>
internal readonly record struct CellRegion(int Row, int Column, int RowSpan, int ColSpan)
{
    internal bool IsMerged => RowSpan > 1 || ColSpan > 1;

    internal bool Contains(int row, int column) => row >= Row && row < Row + RowSpan && column >= Column && column < Column + ColSpan;

    internal bool Intersects(CellRegion o) =>
        o.Row < Row + RowSpan && Row < o.Row + o.RowSpan && o.Column < Column + ColSpan && Column < o.Column + o.ColSpan;

    internal bool Within(CellRegion o) =>
        Row >= o.Row && Column >= o.Column && Row + RowSpan <= o.Row + o.RowSpan && Column + ColSpan <= o.Column + o.ColSpan;

    public override string ToString() => $"rows {Row}..{Row + RowSpan - 1}, columns {Column}..{Column + ColSpan - 1}";
}

// One reading of an a:tbl: its grid columns, rows and cells, and the merged regions the cells
// form. A merge is stored on its first cell (gridSpan, rowSpan) and on the cells it covers
// (hMerge to the right of the first column, vMerge below the first row). Cells that claim to be
// covered by a region that does not cover them are read as cells of their own, so every grid
// position belongs to exactly one region and the regions never overlap.
internal sealed class TableGrid
{
    private readonly OpenXmlElement _table;
    private CellRegion[][] _regions = Array.Empty<CellRegion[]>();

    private TableGrid(OpenXmlElement table)
    {
        _table = table;
        Refresh();
        ReadRegions();
    }

    internal List<OpenXmlElement> Columns { get; private set; } = new();

    internal List<OpenXmlElement> Rows { get; private set; } = new();

    internal List<List<OpenXmlElement>> Cells { get; private set; } = new();

    internal static TableGrid Read(OpenXmlElement table) => new(table);

    internal static IEnumerable<OpenXmlElement> RowsOf(OpenXmlElement table) => table.Elements<A.TableRow>();

    internal static IEnumerable<OpenXmlElement> CellsOf(OpenXmlElement row) => row.Elements<A.TableCell>();

    internal static IEnumerable<OpenXmlElement> GridColumnsOf(OpenXmlElement table) =>
        table.GetFirstChild<A.TableGrid>() is { } grid ? grid.Elements<A.GridColumn>() : Enumerable.Empty<OpenXmlElement>();

    internal CellRegion RegionAt(int row, int column) =>
        row >= 0 && row < _regions.Length && column >= 0 && column < _regions[row].Length ? _regions[row][column] : new CellRegion(row, column, 1, 1);

    /// <summary>The merged regions (more than one cell), top to bottom, left to right.</summary>
    internal List<CellRegion> Merges()
    {
        var result = new List<CellRegion>();
        for (int r = 0; r < _regions.Length; r++)
            for (int c = 0; c < _regions[r].Length; c++)
                if (_regions[r][c] is { IsMerged: true } region && region.Row == r && region.Column == c)
                    result.Add(region);
        return result;
    }

    internal long ColumnWidth(int column) => AttributeAccess.Long(Columns[column], "w") ?? 0;

    internal long RowHeight(int row) => AttributeAccess.Long(Rows[row], "h") ?? 0;

    /// <summary>Edits need every row to hold one cell per grid column.</summary>
    internal void CheckRegular(string where)
    {
        for (int r = 0; r < Cells.Count; r++)
            if (Cells[r].Count != Columns.Count)
                throw new PptxEditException($"{where}: row {r} has {Cells[r].Count} cells for {Columns.Count} grid columns, so the table cannot be edited");
    }

    // Re-reads the element lists after rows, columns or cells were added or removed.
    internal void Refresh()
    {
        Columns = GridColumnsOf(_table).ToList();
        Rows = RowsOf(_table).ToList();
        Cells = Rows.Select(r => CellsOf(r).ToList()).ToList();
    }

    private void ReadRegions()
    {
        int rows = Cells.Count;
        var origin = new (int R, int C)[rows][];
        for (int r = 0; r < rows; r++)
        {
            origin[r] = new (int, int)[Cells[r].Count];
            for (int c = 0; c < Cells[r].Count; c++)
            {
                var cell = Cells[r][c];
                if (c > 0 && Flag(cell, "hMerge"))
                    origin[r][c] = origin[r][c - 1];
                else if (r > 0 && c < origin[r - 1].Length && Flag(cell, "vMerge"))
                    origin[r][c] = origin[r - 1][c];
                else
                    origin[r][c] = (r, c);
            }
        }
        _regions = new CellRegion[rows][];
        for (int r = 0; r < rows; r++)
            _regions[r] = new CellRegion[Cells[r].Count];
        for (int r = 0; r < rows; r++)
        {
            for (int c = 0; c < Cells[r].Count; c++)
            {
                if (origin[r][c] != (r, c))
                    continue;
                var cell = Cells[r][c];
                int rowSpan = Math.Clamp((int)(AttributeAccess.Long(cell, "rowSpan") ?? 1), 1, rows - r);
                int colSpan = Math.Clamp((int)(AttributeAccess.Long(cell, "gridSpan") ?? 1), 1, Cells[r].Count - c);
                var region = new CellRegion(r, c, rowSpan, colSpan);
                if (!Covers(origin, region))
                    region = new CellRegion(r, c, 1, 1);
                for (int rr = r; rr < r + region.RowSpan; rr++)
                    for (int cc = c; cc < c + region.ColSpan; cc++)
                        _regions[rr][cc] = region;
            }
        }
        // Cells that point at a region that does not take them stand alone.
        for (int r = 0; r < rows; r++)
            for (int c = 0; c < Cells[r].Count; c++)
                if (_regions[r][c].RowSpan == 0)
                    _regions[r][c] = new CellRegion(r, c, 1, 1);
    }

    private static bool Covers((int R, int C)[][] origin, CellRegion region)
    {
        for (int r = region.Row; r < region.Row + region.RowSpan; r++)
        {
            if (region.Column + region.ColSpan > origin[r].Length)
                return false;
            for (int c = region.Column; c < region.Column + region.ColSpan; c++)
                if (origin[r][c] != (region.Row, region.Column))
                    return false;
        }
        return true;
    }

    private static bool Flag(OpenXmlElement cell, string name) => AttributeAccess.Attr(cell, name) is "1" or "true";

    /// <summary>Rewrites the span attributes of every cell so that exactly <paramref name="merges"/> are merged.</summary>
    internal void WriteSpans(IEnumerable<CellRegion> merges)
    {
        foreach (var row in Cells)
            foreach (var cell in row)
                foreach (var name in SpanAttributes)
                    cell.RemoveAttribute(name, string.Empty);
        var written = new List<CellRegion>();
        foreach (var m in merges)
        {
            if (!m.IsMerged)
                continue;
            for (int r = m.Row; r < m.Row + m.RowSpan; r++)
            {
                for (int c = m.Column; c < m.Column + m.ColSpan; c++)
                {
                    var cell = Cells[r][c];
                    // As editors write them: the first row's cells carry the row span, the
                    // first column's the column span, the rest both merge flags.
                    if (r == m.Row && m.RowSpan > 1)
                        AttributeAccess.SetAttr(cell, "rowSpan", AttributeAccess.Text(m.RowSpan));
                    if (c == m.Column && m.ColSpan > 1)
                        AttributeAccess.SetAttr(cell, "gridSpan", AttributeAccess.Text(m.ColSpan));
                    if (c > m.Column)
                        AttributeAccess.SetAttr(cell, "hMerge", "1");
                    if (r > m.Row)
                        AttributeAccess.SetAttr(cell, "vMerge", "1");
                }
            }
            written.Add(m);
        }
        _regions = new CellRegion[Cells.Count][];
        for (int r = 0; r < Cells.Count; r++)
        {
            _regions[r] = new CellRegion[Cells[r].Count];
            for (int c = 0; c < Cells[r].Count; c++)
                _regions[r][c] = new CellRegion(r, c, 1, 1);
        }
        foreach (var m in written)
            for (int r = m.Row; r < m.Row + m.RowSpan; r++)
                for (int c = m.Column; c < m.Column + m.ColSpan; c++)
                    _regions[r][c] = m;
    }

    private static readonly string[] SpanAttributes = { "rowSpan", "gridSpan", "hMerge", "vMerge" };

    // --- rows and columns -----------------------------------------------------------

    /// <summary>
    /// Inserts a copy of row <paramref name="template"/> (of this table, in its current
    /// numbering) at <paramref name="index"/>. Merges that the new row falls inside grow over
    /// it; the template's own one-row merges are repeated where nothing else covers them.
    /// </summary>
    internal OpenXmlElement InsertRow(int index, int template, OpenXmlElement copy)
    {
        var merges = Merges();
        var moved = new List<CellRegion>();
        foreach (var m in merges)
        {
            if (m.Row < index && m.Row + m.RowSpan > index)
                moved.Add(m with { RowSpan = m.RowSpan + 1 });
            else if (m.Row >= index)
                moved.Add(m with { Row = m.Row + 1 });
            else
                moved.Add(m);
        }
        foreach (var m in merges.Where(m => m.Row == template && m.RowSpan == 1))
        {
            var repeat = new CellRegion(index, m.Column, 1, m.ColSpan);
            if (!moved.Any(o => o.Intersects(repeat)))
                moved.Add(repeat);
        }
        if (index < Rows.Count)
            _table.InsertBefore(copy, Rows[index]);
        else if (Rows.Count > 0)
            _table.InsertAfter(copy, Rows[^1]);
        else
            _table.AppendChild(copy);
        Refresh();
        WriteSpans(moved);
        return copy;
    }

    /// <summary>Inserts a grid column and one cell per row (made by <paramref name="cellFor"/> from the row's cell at <paramref name="template"/>).</summary>
    internal void InsertColumn(int index, int template, OpenXmlElement gridColumn, Func<OpenXmlElement, OpenXmlElement> cellFor, bool spreadSingles)
    {
        var merges = Merges();
        var regions = new List<CellRegion>(merges);
        // Splitting column index - 1 in two: every cell of it spans both halves.
        if (spreadSingles)
            for (int r = 0; r < Cells.Count; r++)
                if (!merges.Any(m => m.Contains(r, index - 1)))
                    regions.Add(new CellRegion(r, index - 1, 1, 1));
        var moved = new List<CellRegion>();
        foreach (var m in regions)
        {
            if (m.Column < index && m.Column + m.ColSpan > index || spreadSingles && m.Column + m.ColSpan == index)
                moved.Add(m with { ColSpan = m.ColSpan + 1 });
            else if (m.Column >= index)
                moved.Add(m with { Column = m.Column + 1 });
            else
                moved.Add(m);
        }
        if (!spreadSingles)
        {
            foreach (var m in merges.Where(m => m.Column == template && m.ColSpan == 1))
            {
                var repeat = new CellRegion(m.Row, index, m.RowSpan, 1);
                if (!moved.Any(o => o.Intersects(repeat)))
                    moved.Add(repeat);
            }
        }
        var grid = _table.GetFirstChild<A.TableGrid>() ?? throw new PptxEditException("the table has no grid");
        if (index < Columns.Count)
            grid.InsertBefore(gridColumn, Columns[index]);
        else if (Columns.Count > 0)
            grid.InsertAfter(gridColumn, Columns[^1]);
        else
            grid.AppendChild(gridColumn);
        for (int r = 0; r < Cells.Count; r++)
        {
            var made = cellFor(Cells[r][template]);
            if (index < Cells[r].Count)
                Rows[r].InsertBefore(made, Cells[r][index]);
            else
                Rows[r].InsertAfter(made, Cells[r][^1]);
        }
        Refresh();
        WriteSpans(moved);
    }

    /// <summary>Removes a row; merges over it shrink, and one that began in it begins in the next row, text and format moved there.</summary>
    internal void RemoveRow(int index)
    {
        var moved = new List<CellRegion>();
        foreach (var m in Merges())
        {
            if (m.Row > index)
                moved.Add(m with { Row = m.Row - 1 });
            else if (m.Row + m.RowSpan <= index)
                moved.Add(m);
            else if (m.RowSpan > 1)
            {
                if (m.Row == index)
                    TableCells.MoveContent(Cells[index][m.Column], Cells[index + 1][m.Column]);
                moved.Add(m with { RowSpan = m.RowSpan - 1 });
            }
        }
        Rows[index].Remove();
        Refresh();
        WriteSpans(moved);
    }

    internal void RemoveColumn(int index)
    {
        var moved = new List<CellRegion>();
        foreach (var m in Merges())
        {
            if (m.Column > index)
                moved.Add(m with { Column = m.Column - 1 });
            else if (m.Column + m.ColSpan <= index)
                moved.Add(m);
            else if (m.ColSpan > 1)
            {
                if (m.Column == index)
                    TableCells.MoveContent(Cells[m.Row][index], Cells[m.Row][index + 1]);
                moved.Add(m with { ColSpan = m.ColSpan - 1 });
            }
        }
        Columns[index].Remove();
        foreach (var row in Cells)
            row[index].Remove();
        Refresh();
        WriteSpans(moved);
    }

    /// <summary>
    /// Merges the cells of <paramref name="target"/>. Merged cells inside it join it; one that
    /// lies partly outside is split back into single cells when <paramref name="allowSplitting"/>,
    /// else the merge is refused. Text of the joined cells moves to the first cell.
    /// </summary>
    internal void Merge(CellRegion target, bool allowSplitting, string where)
    {
        var merges = Merges();
        var kept = new List<CellRegion>();
        foreach (var m in merges)
        {
            if (!m.Intersects(target))
                kept.Add(m);
            else if (!m.Within(target) && !allowSplitting)
                throw new ArgumentException(
                    $"{where}: merging {target} would cut the merged cell at {m}; pass allowSplitting=true to split that cell");
        }
        kept.Add(target);
        var first = Cells[target.Row][target.Column];
        for (int r = target.Row; r < target.Row + target.RowSpan; r++)
            for (int c = target.Column; c < target.Column + target.ColSpan; c++)
                if (r != target.Row || c != target.Column)
                    TableCells.AppendText(Cells[r][c], first);
        WriteSpans(kept);
    }

    /// <summary>Divides a merged region in two before grid column <paramref name="column"/> (or row), the new part formatted as the first cell.</summary>
    internal CellRegion SplitRegion(CellRegion region, int at, bool vertical)
    {
        var merges = Merges().Where(m => m != region).ToList();
        CellRegion head, tail;
        if (vertical)
        {
            head = region with { RowSpan = at - region.Row };
            tail = region with { Row = at, RowSpan = region.Row + region.RowSpan - at };
        }
        else
        {
            head = region with { ColSpan = at - region.Column };
            tail = region with { Column = at, ColSpan = region.Column + region.ColSpan - at };
        }
        merges.Add(head);
        merges.Add(tail);
        TableCells.CopyFormat(Cells[region.Row][region.Column], Cells[tail.Row][tail.Column]);
        WriteSpans(merges);
        return tail;
    }

    /// <summary>Splits a grid row in two: every region over it spans both halves (the new row is row + 1).</summary>
    internal void SplitRow(int row, long firstHeight, Func<OpenXmlElement, OpenXmlElement> rowFor)
    {
        var merges = Merges();
        var regions = new List<CellRegion>(merges);
        for (int c = 0; c < Cells[row].Count; c++)
            if (!merges.Any(m => m.Contains(row, c)))
                regions.Add(new CellRegion(row, c, 1, 1));
        var moved = new List<CellRegion>();
        foreach (var m in regions)
        {
            if (m.Row <= row && m.Row + m.RowSpan > row)
                moved.Add(m with { RowSpan = m.RowSpan + 1 });
            else if (m.Row > row)
                moved.Add(m with { Row = m.Row + 1 });
            else
                moved.Add(m);
        }
        long rest = Math.Max(0, RowHeight(row) - firstHeight);
        var copy = rowFor(Rows[row]);
        AttributeAccess.SetAttr(copy, "h", AttributeAccess.Text(rest));
        AttributeAccess.SetAttr(Rows[row], "h", AttributeAccess.Text(firstHeight));
        _table.InsertAfter(copy, Rows[row]);
        Refresh();
        WriteSpans(moved);
    }
}
