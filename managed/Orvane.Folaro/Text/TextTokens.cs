namespace Orvane.Folaro;

// The XML token of each member of the text enums.
internal static class TextTokens
{
    // a:pPr/@algn
    internal static readonly EnumTokens<TextAlignment> Alignments = new(
        (TextAlignment.Left, "l"),
        (TextAlignment.Center, "ctr"),
        (TextAlignment.Right, "r"),
        (TextAlignment.Justify, "just"),
        (TextAlignment.JustifyLow, "justLow"),
        (TextAlignment.Distributed, "dist"),
        (TextAlignment.ThaiDistributed, "thaiDist"));

    // a:bodyPr/@anchor and a:tcPr/@anchor
    internal static readonly EnumTokens<TextAnchorType> Anchors = new(
        (TextAnchorType.Top, "t"),
        (TextAnchorType.Center, "ctr"),
        (TextAnchorType.Bottom, "b"),
        (TextAnchorType.Justified, "just"),
        (TextAnchorType.Distributed, "dist"));

    // a:bodyPr/@vert and a:tcPr/@vert
    internal static readonly EnumTokens<TextVerticalType> Verticals = new(
        (TextVerticalType.Horizontal, "horz"),
        (TextVerticalType.Vertical, "vert"),
        (TextVerticalType.Vertical270, "vert270"),
        (TextVerticalType.WordArtVertical, "wordArtVert"),
        (TextVerticalType.EastAsianVertical, "eaVert"),
        (TextVerticalType.MongolianVertical, "mongolianVert"),
        (TextVerticalType.WordArtVerticalRightToLeft, "wordArtVertRtl"));

    // the autofit element inside a:bodyPr
    internal static readonly EnumTokens<TextAutofitType> Autofits = new(
        (TextAutofitType.None, "noAutofit"),
        (TextAutofitType.Normal, "normAutofit"),
        (TextAutofitType.Shape, "spAutoFit"));

    // a:rPr/@u
    internal static readonly EnumTokens<TextUnderlineType> Underlines = new(
        (TextUnderlineType.None, "none"),
        (TextUnderlineType.Words, "words"),
        (TextUnderlineType.Single, "sng"),
        (TextUnderlineType.Double, "dbl"),
        (TextUnderlineType.Heavy, "heavy"),
        (TextUnderlineType.Dotted, "dotted"),
        (TextUnderlineType.HeavyDotted, "dottedHeavy"),
        (TextUnderlineType.Dashed, "dash"),
        (TextUnderlineType.HeavyDashed, "dashHeavy"),
        (TextUnderlineType.LongDashed, "dashLong"),
        (TextUnderlineType.HeavyLongDashed, "dashLongHeavy"),
        (TextUnderlineType.DotDash, "dotDash"),
        (TextUnderlineType.HeavyDotDash, "dotDashHeavy"),
        (TextUnderlineType.DotDotDash, "dotDotDash"),
        (TextUnderlineType.HeavyDotDotDash, "dotDotDashHeavy"),
        (TextUnderlineType.Wavy, "wavy"),
        (TextUnderlineType.HeavyWavy, "wavyHeavy"),
        (TextUnderlineType.DoubleWavy, "wavyDbl"));

    // a:rPr/@strike
    internal static readonly EnumTokens<TextStrikethroughType> Strikes = new(
        (TextStrikethroughType.None, "noStrike"),
        (TextStrikethroughType.Single, "sngStrike"),
        (TextStrikethroughType.Double, "dblStrike"));

    // a:rPr/@cap
    internal static readonly EnumTokens<TextCapType> Caps = new(
        (TextCapType.None, "none"),
        (TextCapType.Small, "small"),
        (TextCapType.All, "all"));
}
