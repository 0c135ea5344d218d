namespace Orvane.Folaro;

/// <summary>The format of a presentation to load; <see cref="Auto"/> detects it from the content.</summary>
public enum LoadFormat
{
    Auto,
    Unknown,
    Pptx,
    Pptm,
    Ppsx,
    Ppsm,
    Potx,
    Potm,
    Ppt,
    Odp,
}
