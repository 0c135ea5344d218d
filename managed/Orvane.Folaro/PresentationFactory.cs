using System;
using System.IO;

namespace Orvane.Folaro;

/// <summary>What a presentation file is, found without loading it as a whole.</summary>
public interface IPresentationInfo
{
    /// <summary>True when the input is a presentation this library can load.</summary>
    bool IsPresentation { get; }

    LoadFormat LoadFormat { get; }

    bool IsEncrypted { get; }
}

public sealed class PresentationInfo : IPresentationInfo
{
    internal PresentationInfo(bool isPresentation, LoadFormat loadFormat, bool isEncrypted)
    {
        IsPresentation = isPresentation;
        LoadFormat = loadFormat;
        IsEncrypted = isEncrypted;
    }

    public bool IsPresentation { get; }

    public LoadFormat LoadFormat { get; }

    public bool IsEncrypted { get; }
}

public interface IPresentationFactory
{
    IPresentation CreatePresentation();
    IPresentation CreatePresentation(LoadOptions options);
    IPresentationInfo GetPresentationInfo(string file);
    IPresentationInfo GetPresentationInfo(Stream stream);
    IPresentation ReadPresentation(string file);
    IPresentation ReadPresentation(Stream stream);
}

/// <summary>Creates and inspects presentations; <see cref="Instance"/> is the one factory.</summary>
public sealed class PresentationFactory : IPresentationFactory
{
    private PresentationFactory()
    {
    }

    public static IPresentationFactory Instance { get; } = new PresentationFactory();

    public IPresentation CreatePresentation() => new Presentation();

    public IPresentation CreatePresentation(LoadOptions options) => new Presentation(options);

    public IPresentationInfo GetPresentationInfo(string file)
    {
        ArgumentNullException.ThrowIfNull(file);
        using var stream = new FileStream(file, FileMode.Open, FileAccess.Read, FileShare.ReadWrite);
        return GetPresentationInfo(stream);
    }

    public IPresentationInfo GetPresentationInfo(Stream stream)
    {
        ArgumentNullException.ThrowIfNull(stream);
        return PackageProbe.Probe(stream);
    }

    public IPresentation ReadPresentation(string file) => new Presentation(file);

    public IPresentation ReadPresentation(Stream stream) => new Presentation(stream);
}
