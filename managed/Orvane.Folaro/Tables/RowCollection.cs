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
    private readonly TableLines<IRow> _lines;

    internal RowCollection(Table table)
    {
        _lines = new TableLines<IRow>(table, rows: true, table.RowView, r => (r as Row)?.Element);
    }

    public int Count => _lines.Count;

    public IRow this[int index] => _lines.At(index);

    public int IndexOf(IRow row) => _lines.IndexOf(row);

    public IRow Add(double height) => _lines.Insert(_lines.Count, height);

    public IRow Insert(int index, double height) => _lines.Insert(index, height);

    public IRow AddClone(IRow row) => _lines.InsertClone(_lines.Count, row);

    public IRow InsertClone(int index, IRow row) => _lines.InsertClone(index, row);

    public void RemoveAt(int index) => _lines.RemoveAt(index);

    public void Remove(IRow row) => _lines.Remove(row);

    public IEnumerator<IRow> GetEnumerator() => _lines.GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IRow> IRowCollection.AsIEnumerable => this;
}
