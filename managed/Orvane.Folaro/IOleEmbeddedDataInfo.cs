namespace Orvane.Folaro;

/// <summary>The data of a file embedded as an OLE object.</summary>
public interface IOleEmbeddedDataInfo
{
    byte[] EmbeddedFileData { get; }

    string EmbeddedFileExtension { get; }
}
