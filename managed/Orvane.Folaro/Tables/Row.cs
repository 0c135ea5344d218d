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
    private readonly TableLineCells _cells;

    internal Row(Table table, OpenXmlElement element)
    {
        _cells = new TableLineCells(table, element, row: true);
    }

    internal OpenXmlElement Element => _cells.Element;

    public int Count => _cells.Count;

    public ICell this[int columnIndex] => _cells.At(columnIndex, nameof(columnIndex));

    public double Height => TableCells.Points(AttributeAccess.Long(Element, "h") ?? 0);

    public double MinimalHeight
    {
        get => Height;
        set
        {
            if (!(value >= 0 && value <= 100_000))
                throw new ArgumentOutOfRangeException(nameof(value), value, "Row.MinimalHeight must be between 0 and 100,000 points");
            AttributeAccess.SetAttr(Element, "h", AttributeAccess.Text((long)Math.Round(value * Emu.PerPoint, MidpointRounding.AwayFromZero)));
            _cells.Resized();
        }
    }

    public IEnumerator<ICell> GetEnumerator() => _cells.GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<ICell> IRow.AsIEnumerable => this;

    public override string ToString() => $"Row [{Count} cells, {Height} pt]";
}
