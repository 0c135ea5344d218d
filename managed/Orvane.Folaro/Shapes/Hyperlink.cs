using System;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;

namespace Orvane.Folaro;

/// <summary>
/// A hyperlink: an external address (a web page, a mail address), a jump to a slide of the
/// show, or a show action. One read from a shape or text is a view: setting its tooltip,
/// highlight, history or frame writes the document. To change what it points to, assign a new one.
/// </summary>
public interface IHyperlink
{
    /// <summary>The external address ("https://…", "mailto:…"); empty for a jump within the show.</summary>
    string ExternalUrl { get; }

    HyperlinkActionType ActionType { get; }

    /// <summary>The slide jumped to (JumpSpecificSlide), or null.</summary>
    ISlide? TargetSlide { get; }

    /// <summary>The text shown when the pointer rests on the link; empty for none.</summary>
    string Tooltip { get; set; }

    /// <summary>True when the link is highlighted when clicked.</summary>
    bool HighlightClick { get; set; }

    /// <summary>True (the default) when the target is added to the list of visited links.</summary>
    bool History { get; set; }

    /// <summary>The frame of a browser the target opens in ("_blank", ...); empty for the default.</summary>
    string TargetFrame { get; set; }
}

public sealed class Hyperlink : IHyperlink, IEquatable<Hyperlink>
{
    private const string R = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

    // A link a user makes holds its values; one read from a document views its element.
    private readonly OpenXmlElement? _element;
    private readonly OpenXmlPart? _part;
    private readonly Presentation? _owner;
    private readonly ISlide? _slide;
    private string _tooltip = string.Empty;
    private bool _highlightClick;
    private bool _history = true;
    private string _targetFrame = string.Empty;

    /// <summary>A link to an external address: a web page, a file or "mailto:" a mail address.</summary>
    public Hyperlink(string url)
    {
        ArgumentException.ThrowIfNullOrEmpty(url);
        if (!Uri.TryCreate(url, UriKind.RelativeOrAbsolute, out _))
            throw new ArgumentException($"Hyperlink: '{url}' is not a valid address", nameof(url));
        ExternalUrl = url;
        ActionType = HyperlinkActionType.Hyperlink;
    }

    /// <summary>A jump to a slide of the same presentation.</summary>
    public Hyperlink(ISlide slide)
    {
        ArgumentNullException.ThrowIfNull(slide);
        if (slide is not Slide)
            throw new ArgumentException("Hyperlink: the target must be a slide of a presentation", nameof(slide));
        _slide = slide;
        ExternalUrl = string.Empty;
        ActionType = HyperlinkActionType.JumpSpecificSlide;
    }

    private Hyperlink(HyperlinkActionType action)
    {
        ActionType = action;
        ExternalUrl = string.Empty;
    }

    private Hyperlink(OpenXmlElement element, OpenXmlPart part, Presentation? owner)
    {
        _element = element;
        _part = part;
        _owner = owner;
        string? id = RelationshipId(element);
        string? action = AttributeAccess.Attr(element, "action");
        if (!string.IsNullOrEmpty(id) && part.HyperlinkRelationships.FirstOrDefault(h => h.Id == id) is { } rel)
            ExternalUrl = rel.Uri.OriginalString;
        else
            ExternalUrl = string.Empty;
        ActionType = ActionOf(action, ExternalUrl.Length > 0);
    }

    /// <summary>A link that does nothing when clicked.</summary>
    public static IHyperlink NoAction => new Hyperlink(HyperlinkActionType.NoAction);
    public static IHyperlink NextSlide => new Hyperlink(HyperlinkActionType.JumpNextSlide);
    public static IHyperlink PreviousSlide => new Hyperlink(HyperlinkActionType.JumpPreviousSlide);
    public static IHyperlink FirstSlide => new Hyperlink(HyperlinkActionType.JumpFirstSlide);
    public static IHyperlink LastSlide => new Hyperlink(HyperlinkActionType.JumpLastSlide);
    public static IHyperlink LastViewedSlide => new Hyperlink(HyperlinkActionType.JumpLastViewedSlide);
    public static IHyperlink EndShow => new Hyperlink(HyperlinkActionType.EndShow);

    /// <summary>A link that starts a mail to <paramref name="address"/>.</summary>
    public static IHyperlink Email(string address) => Email(address, string.Empty);

    /// <summary>A link that starts a mail to <paramref name="address"/> with a subject.</summary>
    public static IHyperlink Email(string address, string subject)
    {
        ArgumentException.ThrowIfNullOrEmpty(address);
        ArgumentNullException.ThrowIfNull(subject);
        if (address.Contains('?') || address.Any(char.IsWhiteSpace))
            throw new ArgumentException($"Hyperlink.Email: '{address}' is not a mail address", nameof(address));
        return new Hyperlink("mailto:" + address + (subject.Length > 0 ? "?subject=" + Uri.EscapeDataString(subject) : string.Empty));
    }

    public string ExternalUrl { get; }

    public HyperlinkActionType ActionType { get; }

    public ISlide? TargetSlide
    {
        get
        {
            if (_element == null)
                return _slide;
            if (ActionType != HyperlinkActionType.JumpSpecificSlide || _owner == null || _part == null)
                return null;
            var id = RelationshipId(_element);
            if (string.IsNullOrEmpty(id) || !_part.TryGetPartById(id, out var target) || target is not SlidePart slidePart)
                return null;
            // Only a slide of the deck's slide list is a target; a dangling or removed one reads as none.
            return _owner.SlideList.FirstOrDefault(s => ReferenceEquals(((Slide)s).Part, slidePart));
        }
    }

    public string Tooltip
    {
        get => _element != null ? AttributeAccess.Attr(_element, "tooltip") ?? string.Empty : _tooltip;
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            if (_element != null)
                AttributeAccess.SetAttr(_element, "tooltip", value.Length == 0 ? null : value);
            else
                _tooltip = value;
        }
    }

    public bool HighlightClick
    {
        get => _element != null ? AttributeAccess.Attr(_element, "highlightClick") is "1" or "true" : _highlightClick;
        set
        {
            if (_element != null)
                AttributeAccess.SetAttr(_element, "highlightClick", value ? "1" : null);
            else
                _highlightClick = value;
        }
    }

    public bool History
    {
        get => _element != null ? AttributeAccess.Attr(_element, "history") is not ("0" or "false") : _history;
        set
        {
            if (_element != null)
                AttributeAccess.SetAttr(_element, "history", value ? null : "0");
            else
                _history = value;
        }
    }

    public string TargetFrame
    {
        get => _element != null ? AttributeAccess.Attr(_element, "tgtFrame") ?? string.Empty : _targetFrame;
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            if (_element != null)
                AttributeAccess.SetAttr(_element, "tgtFrame", value.Length == 0 ? null : value);
            else
                _targetFrame = value;
        }
    }

    /// <summary>Links are equal when they go to the same place by the same action.</summary>
    public bool Equals(Hyperlink? other) =>
        other is not null && ActionType == other.ActionType && ExternalUrl == other.ExternalUrl && ReferenceEquals(TargetSlide, other.TargetSlide);

    public override bool Equals(object? obj) => Equals(obj as Hyperlink);

    public override int GetHashCode() => HashCode.Combine(ActionType, ExternalUrl);

    public override string ToString() => ExternalUrl.Length > 0 ? ExternalUrl
        : TargetSlide is { } s ? $"{ActionType} (slide {s.SlideNumber})"
        : ActionType.ToString();

    internal static Hyperlink View(OpenXmlElement element, OpenXmlPart part, Presentation? owner) => new(element, part, owner);

    internal static string? RelationshipId(OpenXmlElement element) =>
        element.GetAttributes().FirstOrDefault(a => a.LocalName == "id" && a.NamespaceUri == R).Value;

    // The actions of the file format: "ppaction://hlinkshowjump?jump=nextslide" and the like.
    internal static HyperlinkActionType ActionOf(string? action, bool hasTarget)
    {
        if (string.IsNullOrEmpty(action))
            return hasTarget ? HyperlinkActionType.Hyperlink : HyperlinkActionType.NoAction;
        if (action.StartsWith("ppaction://hlinkshowjump", StringComparison.OrdinalIgnoreCase))
        {
            int at = action.IndexOf("jump=", StringComparison.OrdinalIgnoreCase);
            var jump = at < 0 ? string.Empty : action[(at + 5)..].ToLowerInvariant();
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
        if (action.StartsWith("ppaction://hlinkfile", StringComparison.OrdinalIgnoreCase)
            || action.StartsWith("ppaction://hlinkpres", StringComparison.OrdinalIgnoreCase))
            return HyperlinkActionType.OpenFile;
        if (action.StartsWith("ppaction://program", StringComparison.OrdinalIgnoreCase))
            return HyperlinkActionType.StartProgram;
        if (action.StartsWith("ppaction://macro", StringComparison.OrdinalIgnoreCase))
            return HyperlinkActionType.StartMacro;
        if (action.StartsWith("ppaction://noaction", StringComparison.OrdinalIgnoreCase))
            return HyperlinkActionType.NoAction;
        return HyperlinkActionType.Unknown;
    }

    /// <summary>The action attribute written for a kind of link; null for a plain external link.</summary>
    internal static string? ActionText(HyperlinkActionType type, string member) => type switch
    {
        HyperlinkActionType.Hyperlink => null,
        HyperlinkActionType.NoAction => "ppaction://noaction",
        HyperlinkActionType.JumpNextSlide => "ppaction://hlinkshowjump?jump=nextslide",
        HyperlinkActionType.JumpPreviousSlide => "ppaction://hlinkshowjump?jump=previousslide",
        HyperlinkActionType.JumpFirstSlide => "ppaction://hlinkshowjump?jump=firstslide",
        HyperlinkActionType.JumpLastSlide => "ppaction://hlinkshowjump?jump=lastslide",
        HyperlinkActionType.JumpLastViewedSlide => "ppaction://hlinkshowjump?jump=lastslideviewed",
        HyperlinkActionType.EndShow or HyperlinkActionType.JumpEndShow => "ppaction://hlinkshowjump?jump=endshow",
        HyperlinkActionType.JumpSpecificSlide => "ppaction://hlinksldjump",
        // Opening files, starting programs and running macros need targets outside the deck.
        _ => throw new NotSupportedException($"{member}: setting a hyperlink that does {type} is not supported (only external addresses, slide jumps and show actions)"),
    };
}
