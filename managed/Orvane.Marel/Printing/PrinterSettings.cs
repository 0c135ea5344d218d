using System;

namespace Orvane.Marel.Printing;

/// <summary>Plain settings of a print job; nothing here talks to a printer.</summary>
public sealed class PrinterSettings
{
    private short _copies = 1;
    private int _fromPage;
    private int _toPage;
    private int _minimumPage;
    private int _maximumPage = 9999;

    public PrinterSettings()
    {
    }

    /// <summary>The printer to use; empty for the default printer.</summary>
    public string PrinterName { get; set; } = string.Empty;

    public bool IsDefaultPrinter => PrinterName.Length == 0;

    public short Copies
    {
        get => _copies;
        set => _copies = value >= 0 ? value : throw new ArgumentOutOfRangeException(nameof(value), value, "PrinterSettings.Copies must not be negative");
    }

    public bool Collate { get; set; }

    public int FromPage
    {
        get => _fromPage;
        set => _fromPage = NonNegative(value, nameof(FromPage));
    }

    public int ToPage
    {
        get => _toPage;
        set => _toPage = NonNegative(value, nameof(ToPage));
    }

    public int MinimumPage
    {
        get => _minimumPage;
        set => _minimumPage = NonNegative(value, nameof(MinimumPage));
    }

    public int MaximumPage
    {
        get => _maximumPage;
        set => _maximumPage = NonNegative(value, nameof(MaximumPage));
    }

    public PrintRange PrintRange { get; set; } = PrintRange.AllPages;

    public Duplex Duplex { get; set; } = Duplex.Default;

    public bool PrintToFile { get; set; }

    public string PrintFileName { get; set; } = string.Empty;

    public PrinterSettings Clone() => (PrinterSettings)MemberwiseClone();

    private static int NonNegative(int value, string name) =>
        value >= 0 ? value : throw new ArgumentOutOfRangeException(name, value, $"PrinterSettings.{name} must not be negative");
}
