using System;

namespace Orvane.Folaro;

/// <summary>The input cannot be read as a presentation: damaged, hostile or of an unsupported kind.</summary>
public class PptxReadException : Exception
{
    public PptxReadException(string message) : base(message)
    {
    }

    public PptxReadException(string message, Exception innerException) : base(message, innerException)
    {
    }
}
