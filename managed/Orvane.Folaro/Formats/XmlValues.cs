namespace Orvane.Folaro;

// The XML values of the enums generated from the format's value lists, in member order.
internal static class XmlValues
{
    internal static readonly string[] PresetColor =
    {
        "aliceBlue", "antiqueWhite", "aqua", "aquamarine", "azure", "beige", "bisque", "black",
        "blanchedAlmond", "blue", "blueViolet", "brown", "burlyWood", "cadetBlue", "chartreuse", "chocolate",
        "coral", "cornflowerBlue", "cornsilk", "crimson", "cyan", "dkBlue", "dkCyan", "dkGoldenrod",
        "dkGray", "dkGreen", "dkKhaki", "dkMagenta", "dkOliveGreen", "dkOrange", "dkOrchid", "dkRed",
        "dkSalmon", "dkSeaGreen", "dkSlateBlue", "dkSlateGray", "dkTurquoise", "dkViolet", "deepPink", "deepSkyBlue",
        "dimGray", "dodgerBlue", "firebrick", "floralWhite", "forestGreen", "fuchsia", "gainsboro", "ghostWhite",
        "gold", "goldenrod", "gray", "green", "greenYellow", "honeydew", "hotPink", "indianRed",
        "indigo", "ivory", "khaki", "lavender", "lavenderBlush", "lawnGreen", "lemonChiffon", "ltBlue",
        "ltCoral", "ltCyan", "ltGoldenrodYellow", "ltGray", "ltGreen", "ltPink", "ltSalmon", "ltSeaGreen",
        "ltSkyBlue", "ltSlateGray", "ltSteelBlue", "ltYellow", "lime", "limeGreen", "linen", "magenta",
        "maroon", "medAquamarine", "medBlue", "medOrchid", "medPurple", "medSeaGreen", "medSlateBlue", "medSpringGreen",
        "medTurquoise", "medVioletRed", "midnightBlue", "mintCream", "mistyRose", "moccasin", "navajoWhite", "navy",
        "oldLace", "olive", "oliveDrab", "orange", "orangeRed", "orchid", "paleGoldenrod", "paleGreen",
        "paleTurquoise", "paleVioletRed", "papayaWhip", "peachPuff", "peru", "pink", "plum", "powderBlue",
        "purple", "red", "rosyBrown", "royalBlue", "saddleBrown", "salmon", "sandyBrown", "seaGreen",
        "seaShell", "sienna", "silver", "skyBlue", "slateBlue", "slateGray", "snow", "springGreen",
        "steelBlue", "tan", "teal", "thistle", "tomato", "turquoise", "violet", "wheat",
        "white", "whiteSmoke", "yellow", "yellowGreen", "darkBlue", "darkCyan", "darkGoldenrod", "darkGray",
        "darkGrey", "darkGreen", "darkKhaki", "darkMagenta", "darkOliveGreen", "darkOrange", "darkOrchid", "darkRed",
        "darkSalmon", "darkSeaGreen", "darkSlateBlue", "darkSlateGray", "darkSlateGrey", "darkTurquoise", "darkViolet", "lightBlue",
        "lightCoral", "lightCyan", "lightGoldenrodYellow", "lightGray", "lightGrey", "lightGreen", "lightPink", "lightSalmon",
        "lightSeaGreen", "lightSkyBlue", "lightSlateGray", "lightSlateGrey", "lightSteelBlue", "lightYellow", "mediumAquamarine", "mediumBlue",
        "mediumOrchid", "mediumPurple", "mediumSeaGreen", "mediumSlateBlue", "mediumSpringGreen", "mediumTurquoise", "mediumVioletRed", "dkGrey",
        "dimGrey", "dkSlateGrey", "grey", "ltGrey", "ltSlateGrey", "slateGrey",
    };

    internal static readonly string[] SystemColor =
    {
        "scrollBar", "background", "activeCaption", "inactiveCaption", "menu", "window", "windowFrame", "menuText",
        "windowText", "captionText", "activeBorder", "inactiveBorder", "appWorkspace", "highlight", "highlightText", "btnFace",
        "btnShadow", "grayText", "btnText", "inactiveCaptionText", "btnHighlight", "3dDkShadow", "3dLight", "infoText",
        "infoBk", "hotLight", "gradientActiveCaption", "gradientInactiveCaption", "menuHighlight", "menuBar",
    };

    internal static readonly string[] PatternStyle =
    {
        "pct5", "pct10", "pct20", "pct25", "pct30", "pct40", "pct50", "pct60",
        "pct70", "pct75", "pct80", "pct90", "horz", "vert", "ltHorz", "ltVert",
        "dkHorz", "dkVert", "narHorz", "narVert", "dashHorz", "dashVert", "cross", "dnDiag",
        "upDiag", "ltDnDiag", "ltUpDiag", "dkDnDiag", "dkUpDiag", "wdDnDiag", "wdUpDiag", "dashDnDiag",
        "dashUpDiag", "diagCross", "smCheck", "lgCheck", "smGrid", "lgGrid", "dotGrid", "smConfetti",
        "lgConfetti", "horzBrick", "diagBrick", "solidDmnd", "openDmnd", "dotDmnd", "plaid", "sphere",
        "weave", "divot", "shingle", "wave", "trellis", "zigZag",
    };

    internal static readonly string[] NumberedBulletStyle =
    {
        "alphaLcParenBoth", "alphaUcParenBoth", "alphaLcParenR", "alphaUcParenR", "alphaLcPeriod", "alphaUcPeriod", "arabicParenBoth", "arabicParenR",
        "arabicPeriod", "arabicPlain", "romanLcParenBoth", "romanUcParenBoth", "romanLcParenR", "romanUcParenR", "romanLcPeriod", "romanUcPeriod",
        "circleNumDbPlain", "circleNumWdBlackPlain", "circleNumWdWhitePlain", "arabicDbPeriod", "arabicDbPlain", "ea1ChsPeriod", "ea1ChsPlain", "ea1ChtPeriod",
        "ea1ChtPlain", "ea1JpnChsDbPeriod", "ea1JpnKorPlain", "ea1JpnKorPeriod", "arabic1Minus", "arabic2Minus", "hebrew2Minus", "thaiAlphaPeriod",
        "thaiAlphaParenR", "thaiAlphaParenBoth", "thaiNumPeriod", "thaiNumParenR", "thaiNumParenBoth", "hindiAlphaPeriod", "hindiNumPeriod", "hindiNumParenR",
        "hindiAlpha1Period",
    };
}
