using System;

namespace Orvane.Folaro;

/// <summary>An edit was refused because it would leave the document broken.</summary>
public sealed class PptxEditException : Exception
{
    public PptxEditException(string message) : base(message)
    {
    }

    public PptxEditException(string message, Exception innerException) : base(message, innerException)
    {
    }
}
