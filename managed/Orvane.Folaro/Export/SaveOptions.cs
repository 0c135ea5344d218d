using Orvane.Folaro.Warnings;

namespace Orvane.Folaro.Export;

/// <summary>Options common to every save and export.</summary>
public interface ISaveOptions
{
    /// <summary>The font used where a text's font is not available; empty for the built-in fallback.</summary>
    string DefaultRegularFont { get; set; }

    IWarningCallback? WarningCallback { get; set; }
}

/// <summary>The base of the option classes.</summary>
public abstract class SaveOptions : ISaveOptions
{
    private protected SaveOptions()
    {
    }

    public string DefaultRegularFont { get; set; } = string.Empty;

    public IWarningCallback? WarningCallback { get; set; }
}
