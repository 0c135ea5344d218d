namespace Orvane.Marel.Printing;

/// <summary>Which pages to print.</summary>
public enum PrintRange
{
    AllPages,
    SomePages,
    Selection,
    CurrentPage,
}
