using System;
using System.Collections.Generic;

namespace Orvane.Folaro;

public interface IDigitalSignature
{
    string Comments { get; }
    DateTime SignTime { get; }
    bool IsValid { get; }
}

/// <summary>The digital signatures of the package.</summary>
public interface IDigitalSignatureCollection : IEnumerable<IDigitalSignature>
{
    int Count { get; }
    IDigitalSignature this[int index] { get; }

    IEnumerable<IDigitalSignature> AsIEnumerable { get; }
}
