using System;

namespace Orvane.Folaro.Spreadsheet;

/// <summary>A chart's worksheet formula refers, directly or not, to its own cell.</summary>
public sealed class CellCircularReferenceException : Exception
{
    public CellCircularReferenceException(string message) : base(message)
    {
    }
}
