using System;

namespace Orvane.Folaro.Dom.Ole;

/// <summary>The file embedded in an OLE object, with the extension that tells its kind.</summary>
public sealed class OleEmbeddedDataInfo : IOleEmbeddedDataInfo
{
    private readonly byte[] _data;

    public OleEmbeddedDataInfo(byte[] data, string fileExtension)
    {
        ArgumentNullException.ThrowIfNull(data);
        ArgumentNullException.ThrowIfNull(fileExtension);
        _data = (byte[])data.Clone();
        EmbeddedFileExtension = fileExtension.TrimStart('.');
    }

    public byte[] EmbeddedFileData => (byte[])_data.Clone();

    /// <summary>The extension without its dot ("xlsx", "docx").</summary>
    public string EmbeddedFileExtension { get; }
}
