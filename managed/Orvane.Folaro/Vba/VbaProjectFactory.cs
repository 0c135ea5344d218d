using System;

namespace Orvane.Folaro.Vba;

public interface IVbaProjectFactory
{
    /// <summary>A new, empty project named "VBAProject".</summary>
    IVbaProject CreateVbaProject();

    /// <summary>A project over an existing vbaProject.bin, kept as it is.</summary>
    IVbaProject ReadVbaProject(byte[] data);
}

public sealed class VbaProjectFactory : IVbaProjectFactory
{
    private VbaProjectFactory()
    {
    }

    public static IVbaProjectFactory Instance { get; } = new VbaProjectFactory();

    public IVbaProject CreateVbaProject() => new VbaProject();

    public IVbaProject ReadVbaProject(byte[] data)
    {
        ArgumentNullException.ThrowIfNull(data);
        if (!CompoundFile.HasSignature(data))
            throw new ArgumentException("VbaProjectFactory.ReadVbaProject: the data is not a compound file", nameof(data));
        return new VbaProject((byte[])data.Clone());
    }
}
