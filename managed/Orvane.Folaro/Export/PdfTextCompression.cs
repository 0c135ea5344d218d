namespace Orvane.Folaro.Export;

public enum PdfTextCompression
{
    None,
    Flate,
}
