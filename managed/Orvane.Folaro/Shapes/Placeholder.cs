using System;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

public enum PlaceholderType
{
    Object, Body, CenteredTitle, Chart, ClipArt, DateAndTime, Diagram, Footer, Header, Media, Picture,
    SlideImage, SlideNumber, Subtitle, Table, Title,
}

public enum PlaceholderSize
{
    Full, Half, Quarter,
}

public enum Direction
{
    Horizontal, Vertical,
}

/// <summary>What a placeholder shape stands for: its kind, index, orientation and size (a view over p:ph).</summary>
public interface IPlaceholder
{
    PlaceholderType Type { get; }

    /// <summary>The index that matches the placeholder to the one of its layout.</summary>
    uint Index { get; }

    Direction Orientation { get; }

    PlaceholderSize Size { get; }
}

public sealed class Placeholder : IPlaceholder
{
    private readonly P.PlaceholderShape _ph;

    internal Placeholder(P.PlaceholderShape ph)
    {
        _ph = ph;
    }

    public PlaceholderType Type =>
        _ph.Type?.Value is not { } t ? PlaceholderType.Object
        : t == P.PlaceholderValues.Title ? PlaceholderType.Title
        : t == P.PlaceholderValues.Body ? PlaceholderType.Body
        : t == P.PlaceholderValues.CenteredTitle ? PlaceholderType.CenteredTitle
        : t == P.PlaceholderValues.SubTitle ? PlaceholderType.Subtitle
        : t == P.PlaceholderValues.DateAndTime ? PlaceholderType.DateAndTime
        : t == P.PlaceholderValues.SlideNumber ? PlaceholderType.SlideNumber
        : t == P.PlaceholderValues.Footer ? PlaceholderType.Footer
        : t == P.PlaceholderValues.Header ? PlaceholderType.Header
        : t == P.PlaceholderValues.Chart ? PlaceholderType.Chart
        : t == P.PlaceholderValues.Table ? PlaceholderType.Table
        : t == P.PlaceholderValues.ClipArt ? PlaceholderType.ClipArt
        : t == P.PlaceholderValues.Diagram ? PlaceholderType.Diagram
        : t == P.PlaceholderValues.Media ? PlaceholderType.Media
        : t == P.PlaceholderValues.SlideImage ? PlaceholderType.SlideImage
        : t == P.PlaceholderValues.Picture ? PlaceholderType.Picture
        : PlaceholderType.Object;

    public uint Index => _ph.Index?.Value ?? 0;

    public Direction Orientation =>
        _ph.Orientation?.Value == P.DirectionValues.Vertical ? Direction.Vertical : Direction.Horizontal;

    public PlaceholderSize Size =>
        _ph.Size?.Value is not { } s || s == P.PlaceholderSizeValues.Full ? PlaceholderSize.Full
        : s == P.PlaceholderSizeValues.Half ? PlaceholderSize.Half
        : PlaceholderSize.Quarter;

    public override string ToString() => $"Placeholder {Type} #{Index}";
}
