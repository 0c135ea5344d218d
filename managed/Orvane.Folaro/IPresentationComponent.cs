namespace Orvane.Folaro;

/// <summary>An object that belongs to a presentation.</summary>
public interface IPresentationComponent
{
    IPresentation Presentation { get; }
}
