using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;

namespace Orvane.Folaro;

/// <summary>A row of a table (a view over a:tr): its cells, left to right, and its height in points.</summary>
public interface IRow : IEnumerable<ICell>
{
    int Count { get; }

    ICell this[int columnIndex] { get; }

    /// <summary>The row's height as stored: editors keep it at the height the text needs, and never below <see cref="MinimalHeight"/>.</summary>
    double Height { get; }

    /// <summary>The least height of the row in points; text that needs more makes the row taller when drawn.</summary>
    double MinimalHeight { get; set; }

    IEnumerable<ICell> AsIEnumerable { get; }
}

public sealed class Row : IRow
{
    private readonly Table _table;

    internal Row(Table table, OpenXmlElement element)
    {
        _table = table;
        Element = element;
    }

    internal OpenXmlElement Element { get; }

    public int Count => TableGrid.CellsOf(Element).Count();

    public ICell this[int columnIndex]
    {
        get
        {
            var cell = columnIndex < 0 ? null : TableGrid.CellsOf(Element).ElementAtOrDefault(columnIndex);
            if (cell == null)
                throw new ArgumentOutOfRangeException(nameof(columnIndex), columnIndex, $"Row[columnIndex]: index must be in [0, {Count})");
            return _table.CellView(cell);
        }
    }

    public double Height => TableCells.Points(AttributeAccess.Long(Element, "h") ?? 0);

    public double MinimalHeight
    {
        get => Height;
        set
        {
            if (!(value >= 0 && value <= 100_000))
                throw new ArgumentOutOfRangeException(nameof(value), value, "Row.MinimalHeight must be between 0 and 100,000 points");
            AttributeAccess.SetAttr(Element, "h", AttributeAccess.Text((long)Math.Round(value * Emu.PerPoint, MidpointRounding.AwayFromZero)));
            if (Element.Parent != null)
                _table.FitFrame();
        }
    }

    public IEnumerator<ICell> GetEnumerator() => TableGrid.CellsOf(Element).ToList().Select(c => (ICell)_table.CellView(c)).GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<ICell> IRow.AsIEnumerable => this;

    public override string ToString() => $"Row [{Count} cells, {Height} pt]";
}
