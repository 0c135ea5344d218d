using System;
using System.Collections.Generic;

namespace Orvane.Folaro;

/// <summary>A custom XML part of the package: data a program stores beside the document.</summary>
public interface ICustomXmlPart
{
    /// <summary>The part's content as bytes. Setting it checks that the bytes are well-formed XML.</summary>
    byte[] XmlData { get; set; }

    /// <summary>The part's content as a string (decoded as its XML declaration says).</summary>
    string Xml { get; set; }

    /// <summary>The item id of the part's properties, or the empty GUID when it has none.</summary>
    Guid ItemId { get; }

    /// <summary>Removes the part (and its properties part) from the package.</summary>
    void Remove();
}

/// <summary>The custom XML parts attached to a presentation or a slide.</summary>
public interface ICustomXmlPartCollection : IEnumerable<ICustomXmlPart>
{
    int Count { get; }
    ICustomXmlPart this[int index] { get; }

    /// <summary>Adds a part with this XML, which must be well-formed.</summary>
    ICustomXmlPart Add(string xml);
    ICustomXmlPart Add(byte[] xmlData);

    void Remove(ICustomXmlPart part);
    void RemoveAt(int index);
    int IndexOf(ICustomXmlPart part);
    void Clear();

    IEnumerable<ICustomXmlPart> AsIEnumerable { get; }
}
