namespace Orvane.Folaro.Import;

/// <summary>Options of importing PDF pages as slides.</summary>
public interface IPdfImportOptions
{
    /// <summary>Recognise tables and import them as table shapes.</summary>
    bool DetectTables { get; set; }
}

public sealed class PdfImportOptions : IPdfImportOptions
{
    public PdfImportOptions()
    {
    }

    public bool DetectTables { get; set; }
}
