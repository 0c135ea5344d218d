namespace Orvane.Folaro;

/// <summary>The format a presentation is saved in.</summary>
public enum SaveFormat
{
    Pptx,
    Pptm,
    Ppsx,
    Ppsm,
    Potx,
    Potm,
    Pdf,
    Xps,
    Html,
    Svg,
    Tiff,
    Odp,
    Xaml,
}
