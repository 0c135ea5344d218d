namespace Orvane.Folaro;

/// <summary>Operations over all hyperlinks of a presentation.</summary>
public interface IHyperlinkQueries
{
    void RemoveAllHyperlinks();
}
