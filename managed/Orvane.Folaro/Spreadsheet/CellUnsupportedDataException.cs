using System;

namespace Orvane.Folaro.Spreadsheet;

/// <summary>A chart's worksheet cell holds data of a kind the calculation does not handle.</summary>
public sealed class CellUnsupportedDataException : Exception
{
    public CellUnsupportedDataException(string message) : base(message)
    {
    }
}
