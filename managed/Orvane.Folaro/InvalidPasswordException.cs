using System;

namespace Orvane.Folaro;

/// <summary>A protected presentation was opened without its password or with a wrong one.</summary>
public sealed class InvalidPasswordException : PptxReadException
{
    public InvalidPasswordException(string message) : base(message)
    {
    }

    public InvalidPasswordException(string message, Exception innerException) : base(message, innerException)
    {
    }
}
