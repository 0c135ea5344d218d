namespace Orvane.Folaro;

/// <summary>The format a presentation was loaded from; a new presentation is <see cref="Pptx"/>.</summary>
public enum SourceFormat
{
    Pptx,
    Pptm,
    Ppsx,
    Ppsm,
    Potx,
    Potm,
}
