namespace Orvane.Folaro;

/// <summary>A custom XML part of the package.</summary>
public interface ICustomXmlPart
{
    byte[] XmlData { get; set; }
    void Remove();
}
