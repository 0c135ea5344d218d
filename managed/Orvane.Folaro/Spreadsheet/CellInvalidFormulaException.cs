using System;

namespace Orvane.Folaro.Spreadsheet;

/// <summary>A chart's worksheet formula cannot be parsed.</summary>
public sealed class CellInvalidFormulaException : Exception
{
    public CellInvalidFormulaException(string message) : base(message)
    {
    }
}
