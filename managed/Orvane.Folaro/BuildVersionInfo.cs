namespace Orvane.Folaro;

/// <summary>The library's product name and version.</summary>
public static class BuildVersionInfo
{
    public const string Product = "Orvane.Folaro";
    public const int ProductMajor = 0;
    public const int ProductMinor = 1;
    public const int ProductBuild = 0;
    public const string AssemblyVersion = "0.1.0.0";
    public const string FileVersion = "0.1.0.0";
    public const string ReleaseDate = "2026-11-23";
}
