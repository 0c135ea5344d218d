namespace Orvane.Folaro.Export;

public enum PdfCompliance
{
    Pdf15,
    Pdf16,
    Pdf17,
    PdfA1b,
    PdfA2b,
    PdfA3b,
}
