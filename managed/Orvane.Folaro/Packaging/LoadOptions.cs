using Orvane.Folaro.Warnings;

namespace Orvane.Folaro;

/// <summary>How a presentation is loaded, and the limits that keep loading hostile input safe.</summary>
public interface ILoadOptions
{
    LoadFormat LoadFormat { get; set; }
    string? Password { get; set; }
    IWarningCallback? WarningCallback { get; set; }
    int MaxZipEntries { get; set; }
    long MaxUncompressedSize { get; set; }
    int MaxCompressionRatio { get; set; }
    int MaxXmlDepth { get; set; }
}

/// <summary>
/// Load settings. The limits are checked before any part is parsed; a package over any of
/// them is rejected with <see cref="PptxReadException"/>. DTDs are always refused.
/// </summary>
public sealed class LoadOptions : ILoadOptions
{
    private int _maxZipEntries = 20_000;
    private long _maxUncompressedSize = 1L << 30;
    private int _maxCompressionRatio = 1_000;
    private int _maxXmlDepth = 512;

    public LoadOptions()
    {
    }

    public LoadOptions(LoadFormat loadFormat)
    {
        LoadFormat = loadFormat;
    }

    public LoadFormat LoadFormat { get; set; } = LoadFormat.Auto;

    /// <summary>The password of an encrypted package; ignored for one that is not encrypted.</summary>
    public string? Password { get; set; }

    public IWarningCallback? WarningCallback { get; set; }

    /// <summary>The most entries the zip package may hold (default 20,000).</summary>
    public int MaxZipEntries
    {
        get => _maxZipEntries;
        set => _maxZipEntries = Positive(value, nameof(MaxZipEntries));
    }

    /// <summary>The most bytes all entries may expand to together (default 1 GiB).</summary>
    public long MaxUncompressedSize
    {
        get => _maxUncompressedSize;
        set => _maxUncompressedSize = value > 0 ? value : throw Bad(nameof(MaxUncompressedSize), value);
    }

    /// <summary>The highest ratio of expanded to compressed size for an entry over 1 MiB (default 1,000).</summary>
    public int MaxCompressionRatio
    {
        get => _maxCompressionRatio;
        set => _maxCompressionRatio = Positive(value, nameof(MaxCompressionRatio));
    }

    /// <summary>The deepest element nesting allowed in any XML part (default 512).</summary>
    public int MaxXmlDepth
    {
        get => _maxXmlDepth;
        set => _maxXmlDepth = Positive(value, nameof(MaxXmlDepth));
    }

    private static int Positive(int value, string name) => value > 0 ? value : throw Bad(name, value);

    private static System.ArgumentOutOfRangeException Bad(string name, object value) =>
        new(name, value, $"LoadOptions.{name} must be positive");
}
