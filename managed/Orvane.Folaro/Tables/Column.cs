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
    private readonly TableLineCells _cells;

    internal Column(Table table, OpenXmlElement element)
    {
        _cells = new TableLineCells(table, element, row: false);
    }

    internal OpenXmlElement Element => _cells.Element;

    public int Count => _cells.Count;

    public ICell this[int rowIndex] => _cells.At(rowIndex, nameof(rowIndex));

    public double Width
    {
        get => TableCells.Points(AttributeAccess.Long(Element, "w") ?? 0);
        set
        {
            long w = TableCells.Length(value, nameof(value), "Column.Width");
            AttributeAccess.SetAttr(Element, "w", AttributeAccess.Text(w));
            _cells.Resized();
        }
    }

    public IEnumerator<ICell> GetEnumerator() => _cells.GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<ICell> IColumn.AsIEnumerable => this;

    public override string ToString() => $"Column [{Width} pt]";
}
