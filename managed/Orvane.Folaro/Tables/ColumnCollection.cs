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
    private readonly TableLines<IColumn> _lines;

    internal ColumnCollection(Table table)
    {
        _lines = new TableLines<IColumn>(table, rows: false, table.ColumnView, c => (c as Column)?.Element);
    }

    public int Count => _lines.Count;

    public IColumn this[int index] => _lines.At(index);

    public int IndexOf(IColumn column) => _lines.IndexOf(column);

    public IColumn Add(double width) => _lines.Insert(_lines.Count, width);

    public IColumn Insert(int index, double width) => _lines.Insert(index, width);

    public IColumn AddClone(IColumn column) => _lines.InsertClone(_lines.Count, column);

    public IColumn InsertClone(int index, IColumn column) => _lines.InsertClone(index, column);

    public void RemoveAt(int index) => _lines.RemoveAt(index);

    public void Remove(IColumn column) => _lines.Remove(column);

    public IEnumerator<IColumn> GetEnumerator() => _lines.GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IColumn> IColumnCollection.AsIEnumerable => this;
}
