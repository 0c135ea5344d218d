using System;

namespace Orvane.Folaro;

/// <summary>A hyperlink: an external address or a jump within the show.</summary>
public interface IHyperlink
{
    /// <summary>The external address; empty for a jump within the show.</summary>
    string ExternalUrl { get; }

    HyperlinkActionType ActionType { get; }

    string Tooltip { get; }
}

public sealed class Hyperlink : IHyperlink, IEquatable<Hyperlink>
{
    /// <summary>A link to an external address (a web page, a file, a mail address).</summary>
    public Hyperlink(string url)
    {
        ArgumentException.ThrowIfNullOrEmpty(url);
        ExternalUrl = url;
        ActionType = HyperlinkActionType.Hyperlink;
    }

    internal Hyperlink(HyperlinkActionType action, string url = "", string tooltip = "")
    {
        ActionType = action;
        ExternalUrl = url;
        Tooltip = tooltip;
    }

    public static IHyperlink NoAction { get; } = new Hyperlink(HyperlinkActionType.NoAction);
    public static IHyperlink NextSlide { get; } = new Hyperlink(HyperlinkActionType.JumpNextSlide);
    public static IHyperlink PreviousSlide { get; } = new Hyperlink(HyperlinkActionType.JumpPreviousSlide);
    public static IHyperlink FirstSlide { get; } = new Hyperlink(HyperlinkActionType.JumpFirstSlide);
    public static IHyperlink LastSlide { get; } = new Hyperlink(HyperlinkActionType.JumpLastSlide);
    public static IHyperlink EndShow { get; } = new Hyperlink(HyperlinkActionType.EndShow);

    public string ExternalUrl { get; }

    public HyperlinkActionType ActionType { get; }

    public string Tooltip { get; } = string.Empty;

    public bool Equals(Hyperlink? other) =>
        other is not null && ActionType == other.ActionType && ExternalUrl == other.ExternalUrl;

    public override bool Equals(object? obj) => Equals(obj as Hyperlink);

    public override int GetHashCode() => HashCode.Combine(ActionType, ExternalUrl);

    public override string ToString() => ExternalUrl.Length > 0 ? ExternalUrl : ActionType.ToString();

    // The show-jump actions of the file format: "ppaction://hlinkshowjump?jump=nextslide" etc.
    internal static HyperlinkActionType ActionOf(string? action, bool hasTarget)
    {
        if (string.IsNullOrEmpty(action))
            return hasTarget ? HyperlinkActionType.Hyperlink : HyperlinkActionType.NoAction;
        if (action.StartsWith("ppaction://hlinkshowjump", StringComparison.OrdinalIgnoreCase))
        {
            var jump = action[(action.IndexOf("jump=", StringComparison.OrdinalIgnoreCase) + 5)..].ToLowerInvariant();
            return jump switch
            {
                "nextslide" => HyperlinkActionType.JumpNextSlide,
                "previousslide" => HyperlinkActionType.JumpPreviousSlide,
                "firstslide" => HyperlinkActionType.JumpFirstSlide,
                "lastslide" => HyperlinkActionType.JumpLastSlide,
                "lastslideviewed" => HyperlinkActionType.JumpLastViewedSlide,
                "endshow" => HyperlinkActionType.EndShow,
                _ => HyperlinkActionType.Unknown,
            };
        }
        if (action.StartsWith("ppaction://hlinksldjump", StringComparison.OrdinalIgnoreCase))
            return HyperlinkActionType.JumpSpecificSlide;
        if (action.StartsWith("ppaction://hlinkfile", StringComparison.OrdinalIgnoreCase))
            return HyperlinkActionType.OpenFile;
        if (action.StartsWith("ppaction://program", StringComparison.OrdinalIgnoreCase))
            return HyperlinkActionType.StartProgram;
        if (action.StartsWith("ppaction://macro", StringComparison.OrdinalIgnoreCase))
            return HyperlinkActionType.StartMacro;
        if (action.StartsWith("ppaction://noaction", StringComparison.OrdinalIgnoreCase))
            return HyperlinkActionType.NoAction;
        return HyperlinkActionType.Unknown;
    }
}
