using System.Collections.Generic;

namespace Orvane.Folaro;

/// <summary>Name/value tags attached to a presentation, slide or shape.</summary>
public interface ITagCollection : IEnumerable<string>
{
    int Count { get; }
    string GetNameByIndex(int index);
    string GetValueByIndex(int index);
    /// <summary>The value of a tag, or null when there is none of that name.</summary>
    string? GetValue(string name);
    void Add(string name, string value);
    void Remove(string name);
    void Clear();

    IEnumerable<string> AsIEnumerable { get; }
}

/// <summary>Data attached by programs: tags and custom XML parts.</summary>
public interface ICustomData
{
    ITagCollection Tags { get; }

    ICustomXmlPartCollection CustomXmlParts { get; }
}
