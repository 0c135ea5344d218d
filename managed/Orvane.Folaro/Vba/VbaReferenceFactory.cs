namespace Orvane.Folaro.Vba;

public interface IVbaReferenceFactory
{
    IVbaReferenceOleTypeLib CreateOleTypeLibReference(string name, string libid);
}

public sealed class VbaReferenceFactory : IVbaReferenceFactory
{
    private VbaReferenceFactory()
    {
    }

    public static IVbaReferenceFactory Instance { get; } = new VbaReferenceFactory();

    public IVbaReferenceOleTypeLib CreateOleTypeLibReference(string name, string libid)
    {
        System.ArgumentException.ThrowIfNullOrEmpty(name);
        System.ArgumentException.ThrowIfNullOrEmpty(libid);
        return new VbaReferenceOleTypeLib(name, libid);
    }
}
