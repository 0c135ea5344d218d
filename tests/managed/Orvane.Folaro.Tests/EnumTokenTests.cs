using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using DocumentFormat.OpenXml;
using Xunit;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Tests;

// Every public enum stored in XML has its member-to-token table written out here, member by
// member: reordering an enum, adding a member without a token or mistyping a token fails.
// Each token is also checked against the Open XML SDK's own list for the attribute (or the
// element class it names), so the two tables cannot agree on a wrong value.
public class EnumTokenTests
{
    // Checks the library's table against the expected pairs, both ways, and that every member
    // of the enum is either in the table or one of those known to have no token.
    private static void Pins<TEnum>(EnumTokens<TEnum> table, Func<string, bool> known, (TEnum Member, string Token)[] expected, params TEnum[] withoutToken)
        where TEnum : struct, Enum
    {
        var unknown = expected.Where(p => !known(p.Token)).Select(p => $"{p.Member}=\"{p.Token}\"").ToList();
        Assert.True(unknown.Count == 0, $"{typeof(TEnum).Name}: not values the format defines: {string.Join(", ", unknown)}");
        foreach (var (member, token) in expected)
        {
            Assert.True(table.Has(member), $"{typeof(TEnum).Name}.{member} has no token");
            Assert.Equal(token, table.Token(member));
            Assert.Equal(member, table.Member(token));
        }
        Assert.Equal(expected.Length, table.Pairs.Count);
        Assert.Equal(expected.Select(p => p.Token).OrderBy(t => t, StringComparer.Ordinal), table.Tokens.OrderBy(t => t, StringComparer.Ordinal));
        var covered = expected.Select(p => p.Member).Concat(withoutToken).OrderBy(m => m).ToArray();
        Assert.Equal(Enum.GetValues<TEnum>().OrderBy(m => m).ToArray(), covered);
        foreach (var member in withoutToken)
            Assert.False(table.Has(member), $"{typeof(TEnum).Name}.{member} should have no token");
        Assert.Null(table.Member("noSuchToken"));
        Assert.Null(table.Member(null));
    }

    // A token the SDK's value type for the attribute accepts, or one of the format's values
    // that the SDK's list leaves out (named explicitly, so nothing else slips through).
    private static Func<string, bool> Valid<TValue>(Func<string, TValue> make, params string[] beyondSdk) where TValue : IEnumValue =>
        token => make(token).IsValid || beyondSdk.Contains(token);

    // A token that is the local name of one of the given element classes.
    private static Func<string, bool> Elements(params OpenXmlElement[] elements) =>
        token => elements.Any(e => e.LocalName == token && e.NamespaceUri == "http://schemas.openxmlformats.org/drawingml/2006/main");

    [Fact]
    public void ColorTokens()
    {
        Pins(FormatTokens.PresetColors, Valid<A.PresetColorValues>(t => new A.PresetColorValues(t)), new[]
        {
            (PresetColor.AliceBlue, "aliceBlue"), (PresetColor.AntiqueWhite, "antiqueWhite"), (PresetColor.Aqua, "aqua"),
            (PresetColor.Aquamarine, "aquamarine"), (PresetColor.Azure, "azure"), (PresetColor.Beige, "beige"), (PresetColor.Bisque, "bisque"),
            (PresetColor.Black, "black"), (PresetColor.BlanchedAlmond, "blanchedAlmond"), (PresetColor.Blue, "blue"),
            (PresetColor.BlueViolet, "blueViolet"), (PresetColor.Brown, "brown"), (PresetColor.BurlyWood, "burlyWood"),
            (PresetColor.CadetBlue, "cadetBlue"), (PresetColor.Chartreuse, "chartreuse"), (PresetColor.Chocolate, "chocolate"),
            (PresetColor.Coral, "coral"), (PresetColor.CornflowerBlue, "cornflowerBlue"), (PresetColor.Cornsilk, "cornsilk"),
            (PresetColor.Crimson, "crimson"), (PresetColor.Cyan, "cyan"), (PresetColor.DarkBlue, "dkBlue"), (PresetColor.DarkCyan, "dkCyan"),
            (PresetColor.DarkGoldenrod, "dkGoldenrod"), (PresetColor.DarkGray, "dkGray"), (PresetColor.DarkGreen, "dkGreen"),
            (PresetColor.DarkKhaki, "dkKhaki"), (PresetColor.DarkMagenta, "dkMagenta"), (PresetColor.DarkOliveGreen, "dkOliveGreen"),
            (PresetColor.DarkOrange, "dkOrange"), (PresetColor.DarkOrchid, "dkOrchid"), (PresetColor.DarkRed, "dkRed"),
            (PresetColor.DarkSalmon, "dkSalmon"), (PresetColor.DarkSeaGreen, "dkSeaGreen"), (PresetColor.DarkSlateBlue, "dkSlateBlue"),
            (PresetColor.DarkSlateGray, "dkSlateGray"), (PresetColor.DarkTurquoise, "dkTurquoise"), (PresetColor.DarkViolet, "dkViolet"),
            (PresetColor.DeepPink, "deepPink"), (PresetColor.DeepSkyBlue, "deepSkyBlue"), (PresetColor.DimGray, "dimGray"),
            (PresetColor.DodgerBlue, "dodgerBlue"), (PresetColor.Firebrick, "firebrick"), (PresetColor.FloralWhite, "floralWhite"),
            (PresetColor.ForestGreen, "forestGreen"), (PresetColor.Fuchsia, "fuchsia"), (PresetColor.Gainsboro, "gainsboro"),
            (PresetColor.GhostWhite, "ghostWhite"), (PresetColor.Gold, "gold"), (PresetColor.Goldenrod, "goldenrod"), (PresetColor.Gray, "gray"),
            (PresetColor.Green, "green"), (PresetColor.GreenYellow, "greenYellow"), (PresetColor.Honeydew, "honeydew"),
            (PresetColor.HotPink, "hotPink"), (PresetColor.IndianRed, "indianRed"), (PresetColor.Indigo, "indigo"), (PresetColor.Ivory, "ivory"),
            (PresetColor.Khaki, "khaki"), (PresetColor.Lavender, "lavender"), (PresetColor.LavenderBlush, "lavenderBlush"),
            (PresetColor.LawnGreen, "lawnGreen"), (PresetColor.LemonChiffon, "lemonChiffon"), (PresetColor.LightBlue, "ltBlue"),
            (PresetColor.LightCoral, "ltCoral"), (PresetColor.LightCyan, "ltCyan"), (PresetColor.LightGoldenrodYellow, "ltGoldenrodYellow"),
            (PresetColor.LightGray, "ltGray"), (PresetColor.LightGreen, "ltGreen"), (PresetColor.LightPink, "ltPink"),
            (PresetColor.LightSalmon, "ltSalmon"), (PresetColor.LightSeaGreen, "ltSeaGreen"), (PresetColor.LightSkyBlue, "ltSkyBlue"),
            (PresetColor.LightSlateGray, "ltSlateGray"), (PresetColor.LightSteelBlue, "ltSteelBlue"), (PresetColor.LightYellow, "ltYellow"),
            (PresetColor.Lime, "lime"), (PresetColor.LimeGreen, "limeGreen"), (PresetColor.Linen, "linen"), (PresetColor.Magenta, "magenta"),
            (PresetColor.Maroon, "maroon"), (PresetColor.MedAquamarine, "medAquamarine"), (PresetColor.MediumBlue, "medBlue"),
            (PresetColor.MediumOrchid, "medOrchid"), (PresetColor.MediumPurple, "medPurple"), (PresetColor.MediumSeaGreen, "medSeaGreen"),
            (PresetColor.MediumSlateBlue, "medSlateBlue"), (PresetColor.MediumSpringGreen, "medSpringGreen"),
            (PresetColor.MediumTurquoise, "medTurquoise"), (PresetColor.MediumVioletRed, "medVioletRed"), (PresetColor.MidnightBlue, "midnightBlue"),
            (PresetColor.MintCream, "mintCream"), (PresetColor.MistyRose, "mistyRose"), (PresetColor.Moccasin, "moccasin"),
            (PresetColor.NavajoWhite, "navajoWhite"), (PresetColor.Navy, "navy"), (PresetColor.OldLace, "oldLace"), (PresetColor.Olive, "olive"),
            (PresetColor.OliveDrab, "oliveDrab"), (PresetColor.Orange, "orange"), (PresetColor.OrangeRed, "orangeRed"),
            (PresetColor.Orchid, "orchid"), (PresetColor.PaleGoldenrod, "paleGoldenrod"), (PresetColor.PaleGreen, "paleGreen"),
            (PresetColor.PaleTurquoise, "paleTurquoise"), (PresetColor.PaleVioletRed, "paleVioletRed"), (PresetColor.PapayaWhip, "papayaWhip"),
            (PresetColor.PeachPuff, "peachPuff"), (PresetColor.Peru, "peru"), (PresetColor.Pink, "pink"), (PresetColor.Plum, "plum"),
            (PresetColor.PowderBlue, "powderBlue"), (PresetColor.Purple, "purple"), (PresetColor.Red, "red"), (PresetColor.RosyBrown, "rosyBrown"),
            (PresetColor.RoyalBlue, "royalBlue"), (PresetColor.SaddleBrown, "saddleBrown"), (PresetColor.Salmon, "salmon"),
            (PresetColor.SandyBrown, "sandyBrown"), (PresetColor.SeaGreen, "seaGreen"), (PresetColor.SeaShell, "seaShell"),
            (PresetColor.Sienna, "sienna"), (PresetColor.Silver, "silver"), (PresetColor.SkyBlue, "skyBlue"), (PresetColor.SlateBlue, "slateBlue"),
            (PresetColor.SlateGray, "slateGray"), (PresetColor.Snow, "snow"), (PresetColor.SpringGreen, "springGreen"),
            (PresetColor.SteelBlue, "steelBlue"), (PresetColor.Tan, "tan"), (PresetColor.Teal, "teal"), (PresetColor.Thistle, "thistle"),
            (PresetColor.Tomato, "tomato"), (PresetColor.Turquoise, "turquoise"), (PresetColor.Violet, "violet"), (PresetColor.Wheat, "wheat"),
            (PresetColor.White, "white"), (PresetColor.WhiteSmoke, "whiteSmoke"), (PresetColor.Yellow, "yellow"),
            (PresetColor.YellowGreen, "yellowGreen"), (PresetColor.DarkBlue2010, "darkBlue"), (PresetColor.DarkCyan2010, "darkCyan"),
            (PresetColor.DarkGoldenrod2010, "darkGoldenrod"), (PresetColor.DarkGray2010, "darkGray"), (PresetColor.DarkGrey2010, "darkGrey"),
            (PresetColor.DarkGreen2010, "darkGreen"), (PresetColor.DarkKhaki2010, "darkKhaki"), (PresetColor.DarkMagenta2010, "darkMagenta"),
            (PresetColor.DarkOliveGreen2010, "darkOliveGreen"), (PresetColor.DarkOrange2010, "darkOrange"),
            (PresetColor.DarkOrchid2010, "darkOrchid"), (PresetColor.DarkRed2010, "darkRed"), (PresetColor.DarkSalmon2010, "darkSalmon"),
            (PresetColor.DarkSeaGreen2010, "darkSeaGreen"), (PresetColor.DarkSlateBlue2010, "darkSlateBlue"),
            (PresetColor.DarkSlateGray2010, "darkSlateGray"), (PresetColor.DarkSlateGrey2010, "darkSlateGrey"),
            (PresetColor.DarkTurquoise2010, "darkTurquoise"), (PresetColor.DarkViolet2010, "darkViolet"), (PresetColor.LightBlue2010, "lightBlue"),
            (PresetColor.LightCoral2010, "lightCoral"), (PresetColor.LightCyan2010, "lightCyan"),
            (PresetColor.LightGoldenrodYellow2010, "lightGoldenrodYellow"), (PresetColor.LightGray2010, "lightGray"),
            (PresetColor.LightGrey2010, "lightGrey"), (PresetColor.LightGreen2010, "lightGreen"), (PresetColor.LightPink2010, "lightPink"),
            (PresetColor.LightSalmon2010, "lightSalmon"), (PresetColor.LightSeaGreen2010, "lightSeaGreen"),
            (PresetColor.LightSkyBlue2010, "lightSkyBlue"), (PresetColor.LightSlateGray2010, "lightSlateGray"),
            (PresetColor.LightSlateGrey2010, "lightSlateGrey"), (PresetColor.LightSteelBlue2010, "lightSteelBlue"),
            (PresetColor.LightYellow2010, "lightYellow"), (PresetColor.MediumAquamarine2010, "mediumAquamarine"),
            (PresetColor.MediumBlue2010, "mediumBlue"), (PresetColor.MediumOrchid2010, "mediumOrchid"),
            (PresetColor.MediumPurple2010, "mediumPurple"), (PresetColor.MediumSeaGreen2010, "mediumSeaGreen"),
            (PresetColor.MediumSlateBlue2010, "mediumSlateBlue"), (PresetColor.MediumSpringGreen2010, "mediumSpringGreen"),
            (PresetColor.MediumTurquoise2010, "mediumTurquoise"), (PresetColor.MediumVioletRed2010, "mediumVioletRed"),
            (PresetColor.DarkGrey, "dkGrey"), (PresetColor.DimGrey, "dimGrey"), (PresetColor.DarkSlateGrey, "dkSlateGrey"),
            (PresetColor.Grey, "grey"), (PresetColor.LightGrey, "ltGrey"), (PresetColor.LightSlateGrey, "ltSlateGrey"),
            (PresetColor.SlateGrey, "slateGrey"),
        }, PresetColor.NotDefined);
        Pins(FormatTokens.SystemColors, Valid<A.SystemColorValues>(t => new A.SystemColorValues(t)), new[]
        {
            (SystemColor.ScrollBar, "scrollBar"), (SystemColor.Background, "background"), (SystemColor.ActiveCaption, "activeCaption"),
            (SystemColor.InactiveCaption, "inactiveCaption"), (SystemColor.Menu, "menu"), (SystemColor.Window, "window"),
            (SystemColor.WindowFrame, "windowFrame"), (SystemColor.MenuText, "menuText"), (SystemColor.WindowText, "windowText"),
            (SystemColor.CaptionText, "captionText"), (SystemColor.ActiveBorder, "activeBorder"), (SystemColor.InactiveBorder, "inactiveBorder"),
            (SystemColor.ApplicationWorkspace, "appWorkspace"), (SystemColor.Highlight, "highlight"), (SystemColor.HighlightText, "highlightText"),
            (SystemColor.ButtonFace, "btnFace"), (SystemColor.ButtonShadow, "btnShadow"), (SystemColor.GrayText, "grayText"),
            (SystemColor.ButtonText, "btnText"), (SystemColor.InactiveCaptionText, "inactiveCaptionText"),
            (SystemColor.ButtonHighlight, "btnHighlight"), (SystemColor.ThreeDDarkShadow, "3dDkShadow"), (SystemColor.ThreeDLight, "3dLight"),
            (SystemColor.InfoText, "infoText"), (SystemColor.InfoBack, "infoBk"), (SystemColor.HotLight, "hotLight"),
            (SystemColor.GradientActiveCaption, "gradientActiveCaption"), (SystemColor.GradientInactiveCaption, "gradientInactiveCaption"),
            (SystemColor.MenuHighlight, "menuHighlight"), (SystemColor.MenuBar, "menuBar"),
        }, SystemColor.NotDefined);
        Pins(FormatTokens.SchemeColors, Valid<A.SchemeColorValues>(t => new A.SchemeColorValues(t)), new[]
        {
            (SchemeColor.Background1, "bg1"), (SchemeColor.Text1, "tx1"), (SchemeColor.Background2, "bg2"), (SchemeColor.Text2, "tx2"),
            (SchemeColor.Accent1, "accent1"), (SchemeColor.Accent2, "accent2"), (SchemeColor.Accent3, "accent3"), (SchemeColor.Accent4, "accent4"),
            (SchemeColor.Accent5, "accent5"), (SchemeColor.Accent6, "accent6"), (SchemeColor.Hyperlink, "hlink"),
            (SchemeColor.FollowedHyperlink, "folHlink"), (SchemeColor.StyleColor, "phClr"), (SchemeColor.Dark1, "dk1"), (SchemeColor.Light1, "lt1"),
            (SchemeColor.Dark2, "dk2"), (SchemeColor.Light2, "lt2"),
        }, SchemeColor.NotDefined);
        Pins(ColorOperationCollection.Operations, Elements(new A.Tint(), new A.Shade(), new A.Complement(), new A.Inverse(), new A.Gray(),
            new A.Alpha(), new A.AlphaOffset(), new A.AlphaModulation(), new A.Hue(), new A.HueOffset(), new A.HueModulation(),
            new A.Saturation(), new A.SaturationOffset(), new A.SaturationModulation(), new A.Luminance(), new A.LuminanceOffset(), new A.LuminanceModulation(),
            new A.Red(), new A.RedOffset(), new A.RedModulation(), new A.Green(), new A.GreenOffset(), new A.GreenModulation(),
            new A.Blue(), new A.BlueOffset(), new A.BlueModulation(), new A.Gamma(), new A.InverseGamma()), new[]
        {
            (ColorTransformOperation.Tint, "tint"), (ColorTransformOperation.Shade, "shade"), (ColorTransformOperation.Complement, "comp"),
            (ColorTransformOperation.Inverse, "inv"), (ColorTransformOperation.Gray, "gray"), (ColorTransformOperation.Alpha, "alpha"),
            (ColorTransformOperation.AlphaOffset, "alphaOff"), (ColorTransformOperation.AlphaModulation, "alphaMod"),
            (ColorTransformOperation.Hue, "hue"), (ColorTransformOperation.HueOffset, "hueOff"), (ColorTransformOperation.HueModulation, "hueMod"),
            (ColorTransformOperation.Saturation, "sat"), (ColorTransformOperation.SaturationOffset, "satOff"),
            (ColorTransformOperation.SaturationModulation, "satMod"), (ColorTransformOperation.Luminance, "lum"),
            (ColorTransformOperation.LuminanceOffset, "lumOff"), (ColorTransformOperation.LuminanceModulation, "lumMod"),
            (ColorTransformOperation.Red, "red"), (ColorTransformOperation.RedOffset, "redOff"), (ColorTransformOperation.RedModulation, "redMod"),
            (ColorTransformOperation.Green, "green"), (ColorTransformOperation.GreenOffset, "greenOff"),
            (ColorTransformOperation.GreenModulation, "greenMod"), (ColorTransformOperation.Blue, "blue"),
            (ColorTransformOperation.BlueOffset, "blueOff"), (ColorTransformOperation.BlueModulation, "blueMod"),
            (ColorTransformOperation.Gamma, "gamma"), (ColorTransformOperation.InverseGamma, "invGamma"),
        });
    }

    [Fact]
    public void FillTokens()
    {
        Pins(FormatTokens.PatternStyles, Valid<A.PresetPatternValues>(t => new A.PresetPatternValues(t)), new[]
        {
            (PatternStyle.Percent5, "pct5"), (PatternStyle.Percent10, "pct10"), (PatternStyle.Percent20, "pct20"), (PatternStyle.Percent25, "pct25"),
            (PatternStyle.Percent30, "pct30"), (PatternStyle.Percent40, "pct40"), (PatternStyle.Percent50, "pct50"),
            (PatternStyle.Percent60, "pct60"), (PatternStyle.Percent70, "pct70"), (PatternStyle.Percent75, "pct75"),
            (PatternStyle.Percent80, "pct80"), (PatternStyle.Percent90, "pct90"), (PatternStyle.Horizontal, "horz"), (PatternStyle.Vertical, "vert"),
            (PatternStyle.LightHorizontal, "ltHorz"), (PatternStyle.LightVertical, "ltVert"), (PatternStyle.DarkHorizontal, "dkHorz"),
            (PatternStyle.DarkVertical, "dkVert"), (PatternStyle.NarrowHorizontal, "narHorz"), (PatternStyle.NarrowVertical, "narVert"),
            (PatternStyle.DashedHorizontal, "dashHorz"), (PatternStyle.DashedVertical, "dashVert"), (PatternStyle.Cross, "cross"),
            (PatternStyle.DownwardDiagonal, "dnDiag"), (PatternStyle.UpwardDiagonal, "upDiag"), (PatternStyle.LightDownwardDiagonal, "ltDnDiag"),
            (PatternStyle.LightUpwardDiagonal, "ltUpDiag"), (PatternStyle.DarkDownwardDiagonal, "dkDnDiag"),
            (PatternStyle.DarkUpwardDiagonal, "dkUpDiag"), (PatternStyle.WideDownwardDiagonal, "wdDnDiag"),
            (PatternStyle.WideUpwardDiagonal, "wdUpDiag"), (PatternStyle.DashedDownwardDiagonal, "dashDnDiag"),
            (PatternStyle.DashedUpwardDiagonal, "dashUpDiag"), (PatternStyle.DiagonalCross, "diagCross"), (PatternStyle.SmallCheck, "smCheck"),
            (PatternStyle.LargeCheck, "lgCheck"), (PatternStyle.SmallGrid, "smGrid"), (PatternStyle.LargeGrid, "lgGrid"),
            (PatternStyle.DotGrid, "dotGrid"), (PatternStyle.SmallConfetti, "smConfetti"), (PatternStyle.LargeConfetti, "lgConfetti"),
            (PatternStyle.HorizontalBrick, "horzBrick"), (PatternStyle.DiagonalBrick, "diagBrick"), (PatternStyle.SolidDiamond, "solidDmnd"),
            (PatternStyle.OpenDiamond, "openDmnd"), (PatternStyle.DottedDiamond, "dotDmnd"), (PatternStyle.Plaid, "plaid"),
            (PatternStyle.Sphere, "sphere"), (PatternStyle.Weave, "weave"), (PatternStyle.Divot, "divot"), (PatternStyle.Shingle, "shingle"),
            (PatternStyle.Wave, "wave"), (PatternStyle.Trellis, "trellis"), (PatternStyle.ZigZag, "zigZag"),
        }, PatternStyle.NotDefined);
        Pins(FormatTokens.RectangleAlignments, Valid<A.RectangleAlignmentValues>(t => new A.RectangleAlignmentValues(t)), new[]
        {
            (RectangleAlignment.TopLeft, "tl"), (RectangleAlignment.Top, "t"), (RectangleAlignment.TopRight, "tr"), (RectangleAlignment.Left, "l"),
            (RectangleAlignment.Center, "ctr"), (RectangleAlignment.Right, "r"), (RectangleAlignment.BottomLeft, "bl"),
            (RectangleAlignment.Bottom, "b"), (RectangleAlignment.BottomRight, "br"),
        }, RectangleAlignment.NotDefined);
        Pins(FormatTokens.TileFlips, Valid<A.TileFlipValues>(t => new A.TileFlipValues(t)), new[]
        {
            (TileFlip.NoFlip, "none"), (TileFlip.FlipX, "x"), (TileFlip.FlipY, "y"), (TileFlip.FlipBoth, "xy"),
        }, TileFlip.NotDefined);
        Pins(GeometryShape.FillModes, Valid<A.PathFillModeValues>(t => new A.PathFillModeValues(t)), new[]
        {
            (PathFillModeType.None, "none"), (PathFillModeType.Normal, "norm"), (PathFillModeType.Lighten, "lighten"),
            (PathFillModeType.LightenLess, "lightenLess"), (PathFillModeType.Darken, "darken"), (PathFillModeType.DarkenLess, "darkenLess"),
        });
    }

    [Fact]
    public void LineTokens()
    {
        Pins(FormatTokens.LineDashes, Valid<A.PresetLineDashValues>(t => new A.PresetLineDashValues(t)), new[]
        {
            (LineDashStyle.Solid, "solid"), (LineDashStyle.Dot, "dot"), (LineDashStyle.Dash, "dash"), (LineDashStyle.LargeDash, "lgDash"),
            (LineDashStyle.DashDot, "dashDot"), (LineDashStyle.LargeDashDot, "lgDashDot"), (LineDashStyle.LargeDashDotDot, "lgDashDotDot"),
            (LineDashStyle.SystemDash, "sysDash"), (LineDashStyle.SystemDot, "sysDot"), (LineDashStyle.SystemDashDot, "sysDashDot"),
            (LineDashStyle.SystemDashDotDot, "sysDashDotDot"),
        }, LineDashStyle.NotDefined, LineDashStyle.Custom);
        Pins(FormatTokens.LineCompounds, Valid<A.CompoundLineValues>(t => new A.CompoundLineValues(t)), new[]
        {
            (LineStyle.Single, "sng"), (LineStyle.ThinThin, "dbl"), (LineStyle.ThinThick, "thinThick"), (LineStyle.ThickThin, "thickThin"),
            (LineStyle.ThickBetweenThin, "tri"),
        }, LineStyle.NotDefined);
        Pins(FormatTokens.LineCaps, Valid<A.LineCapValues>(t => new A.LineCapValues(t)), new[]
        {
            (LineCapStyle.Round, "rnd"), (LineCapStyle.Square, "sq"), (LineCapStyle.Flat, "flat"),
        }, LineCapStyle.NotDefined);
        Pins(FormatTokens.LineJoins, Elements(new A.Round(), new A.LineJoinBevel(), new A.Miter()), new[]
        {
            (LineJoinStyle.Round, "round"), (LineJoinStyle.Bevel, "bevel"), (LineJoinStyle.Miter, "miter"),
        }, LineJoinStyle.NotDefined);
        Pins(FormatTokens.LineEndTypes, Valid<A.LineEndValues>(t => new A.LineEndValues(t)), new[]
        {
            (LineArrowheadStyle.None, "none"), (LineArrowheadStyle.Triangle, "triangle"), (LineArrowheadStyle.Stealth, "stealth"),
            (LineArrowheadStyle.Diamond, "diamond"), (LineArrowheadStyle.Oval, "oval"), (LineArrowheadStyle.Open, "arrow"),
        }, LineArrowheadStyle.NotDefined);
        Pins(FormatTokens.LineEndWidths, Valid<A.LineEndWidthValues>(t => new A.LineEndWidthValues(t)), new[]
        {
            (LineArrowheadWidth.Narrow, "sm"), (LineArrowheadWidth.Medium, "med"), (LineArrowheadWidth.Wide, "lg"),
        }, LineArrowheadWidth.NotDefined);
        Pins(FormatTokens.LineEndLengths, Valid<A.LineEndLengthValues>(t => new A.LineEndLengthValues(t)), new[]
        {
            (LineArrowheadLength.Short, "sm"), (LineArrowheadLength.Medium, "med"), (LineArrowheadLength.Long, "lg"),
        }, LineArrowheadLength.NotDefined);
    }

    [Fact]
    public void TextAndBulletTokens()
    {
        Pins(FormatTokens.NumberedBulletStyles, Valid<A.TextAutoNumberSchemeValues>(t => new A.TextAutoNumberSchemeValues(t)), new[]
        {
            (NumberedBulletStyle.AlphaLowerCharacterParenBoth, "alphaLcParenBoth"),
            (NumberedBulletStyle.AlphaUpperCharacterParenBoth, "alphaUcParenBoth"), (NumberedBulletStyle.AlphaLowerCharacterParenR, "alphaLcParenR"),
            (NumberedBulletStyle.AlphaUpperCharacterParenR, "alphaUcParenR"), (NumberedBulletStyle.AlphaLowerCharacterPeriod, "alphaLcPeriod"),
            (NumberedBulletStyle.AlphaUpperCharacterPeriod, "alphaUcPeriod"), (NumberedBulletStyle.ArabicParenBoth, "arabicParenBoth"),
            (NumberedBulletStyle.ArabicParenR, "arabicParenR"), (NumberedBulletStyle.ArabicPeriod, "arabicPeriod"),
            (NumberedBulletStyle.ArabicPlain, "arabicPlain"), (NumberedBulletStyle.RomanLowerCharacterParenBoth, "romanLcParenBoth"),
            (NumberedBulletStyle.RomanUpperCharacterParenBoth, "romanUcParenBoth"), (NumberedBulletStyle.RomanLowerCharacterParenR, "romanLcParenR"),
            (NumberedBulletStyle.RomanUpperCharacterParenR, "romanUcParenR"), (NumberedBulletStyle.RomanLowerCharacterPeriod, "romanLcPeriod"),
            (NumberedBulletStyle.RomanUpperCharacterPeriod, "romanUcPeriod"), (NumberedBulletStyle.CircleNumberDoubleBytePlain, "circleNumDbPlain"),
            (NumberedBulletStyle.CircleNumberWingdingsBlackPlain, "circleNumWdBlackPlain"),
            (NumberedBulletStyle.CircleNumberWingdingsWhitePlain, "circleNumWdWhitePlain"),
            (NumberedBulletStyle.ArabicDoubleBytePeriod, "arabicDbPeriod"), (NumberedBulletStyle.ArabicDoubleBytePlain, "arabicDbPlain"),
            (NumberedBulletStyle.EastAsianSimplifiedChinesePeriod, "ea1ChsPeriod"),
            (NumberedBulletStyle.EastAsianSimplifiedChinesePlain, "ea1ChsPlain"),
            (NumberedBulletStyle.EastAsianTraditionalChinesePeriod, "ea1ChtPeriod"),
            (NumberedBulletStyle.EastAsianTraditionalChinesePlain, "ea1ChtPlain"),
            (NumberedBulletStyle.EastAsianJapaneseDoubleBytePeriod, "ea1JpnChsDbPeriod"),
            (NumberedBulletStyle.EastAsianJapaneseKoreanPlain, "ea1JpnKorPlain"),
            (NumberedBulletStyle.EastAsianJapaneseKoreanPeriod, "ea1JpnKorPeriod"), (NumberedBulletStyle.Arabic1Minus, "arabic1Minus"),
            (NumberedBulletStyle.Arabic2Minus, "arabic2Minus"), (NumberedBulletStyle.Hebrew2Minus, "hebrew2Minus"),
            (NumberedBulletStyle.ThaiAlphaPeriod, "thaiAlphaPeriod"), (NumberedBulletStyle.ThaiAlphaParenthesisRight, "thaiAlphaParenR"),
            (NumberedBulletStyle.ThaiAlphaParenthesisBoth, "thaiAlphaParenBoth"), (NumberedBulletStyle.ThaiNumberPeriod, "thaiNumPeriod"),
            (NumberedBulletStyle.ThaiNumberParenthesisRight, "thaiNumParenR"), (NumberedBulletStyle.ThaiNumberParenthesisBoth, "thaiNumParenBoth"),
            (NumberedBulletStyle.HindiAlphaPeriod, "hindiAlphaPeriod"), (NumberedBulletStyle.HindiNumPeriod, "hindiNumPeriod"),
            (NumberedBulletStyle.HindiNumberParenthesisRight, "hindiNumParenR"), (NumberedBulletStyle.HindiAlpha1Period, "hindiAlpha1Period"),
        }, NumberedBulletStyle.NotDefined);
        Pins(TextTokens.Alignments, Valid<A.TextAlignmentTypeValues>(t => new A.TextAlignmentTypeValues(t)), new[]
        {
            (TextAlignment.Left, "l"), (TextAlignment.Center, "ctr"), (TextAlignment.Right, "r"), (TextAlignment.Justify, "just"),
            (TextAlignment.JustifyLow, "justLow"), (TextAlignment.Distributed, "dist"), (TextAlignment.ThaiDistributed, "thaiDist"),
        }, TextAlignment.NotDefined);
        Pins(TextTokens.Anchors, Valid<A.TextAnchoringTypeValues>(t => new A.TextAnchoringTypeValues(t), "just", "dist"), new[]
        {
            (TextAnchorType.Top, "t"), (TextAnchorType.Center, "ctr"), (TextAnchorType.Bottom, "b"), (TextAnchorType.Justified, "just"),
            (TextAnchorType.Distributed, "dist"),
        }, TextAnchorType.NotDefined);
        Pins(TextTokens.Verticals, Valid<A.TextVerticalValues>(t => new A.TextVerticalValues(t)), new[]
        {
            (TextVerticalType.Horizontal, "horz"), (TextVerticalType.Vertical, "vert"), (TextVerticalType.Vertical270, "vert270"),
            (TextVerticalType.WordArtVertical, "wordArtVert"), (TextVerticalType.EastAsianVertical, "eaVert"),
            (TextVerticalType.MongolianVertical, "mongolianVert"), (TextVerticalType.WordArtVerticalRightToLeft, "wordArtVertRtl"),
        }, TextVerticalType.NotDefined);
        Pins(TextTokens.Autofits, Elements(new A.NoAutoFit(), new A.NormalAutoFit(), new A.ShapeAutoFit()), new[]
        {
            (TextAutofitType.None, "noAutofit"), (TextAutofitType.Normal, "normAutofit"), (TextAutofitType.Shape, "spAutoFit"),
        }, TextAutofitType.NotDefined);
        Pins(TextTokens.Underlines, Valid<A.TextUnderlineValues>(t => new A.TextUnderlineValues(t)), new[]
        {
            (TextUnderlineType.None, "none"), (TextUnderlineType.Words, "words"), (TextUnderlineType.Single, "sng"),
            (TextUnderlineType.Double, "dbl"), (TextUnderlineType.Heavy, "heavy"), (TextUnderlineType.Dotted, "dotted"),
            (TextUnderlineType.HeavyDotted, "dottedHeavy"), (TextUnderlineType.Dashed, "dash"), (TextUnderlineType.HeavyDashed, "dashHeavy"),
            (TextUnderlineType.LongDashed, "dashLong"), (TextUnderlineType.HeavyLongDashed, "dashLongHeavy"), (TextUnderlineType.DotDash, "dotDash"),
            (TextUnderlineType.HeavyDotDash, "dotDashHeavy"), (TextUnderlineType.DotDotDash, "dotDotDash"),
            (TextUnderlineType.HeavyDotDotDash, "dotDotDashHeavy"), (TextUnderlineType.Wavy, "wavy"), (TextUnderlineType.HeavyWavy, "wavyHeavy"),
            (TextUnderlineType.DoubleWavy, "wavyDbl"),
        }, TextUnderlineType.NotDefined);
        Pins(TextTokens.Strikes, Valid<A.TextStrikeValues>(t => new A.TextStrikeValues(t)), new[]
        {
            (TextStrikethroughType.None, "noStrike"), (TextStrikethroughType.Single, "sngStrike"), (TextStrikethroughType.Double, "dblStrike"),
        }, TextStrikethroughType.NotDefined);
        Pins(TextTokens.Caps, Valid<A.TextCapsValues>(t => new A.TextCapsValues(t)), new[]
        {
            (TextCapType.None, "none"), (TextCapType.Small, "small"), (TextCapType.All, "all"),
        }, TextCapType.NotDefined);
    }

    [Fact]
    public void TokensGoThroughTheElementsBothWays()
    {
        IPresentation pres = new Presentation();
        using (pres)
        {
            var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!);
            var solid = slide.Shapes.AddAutoShape(ShapeType.Rect, 10, 10, 50, 50);
            var patterned = slide.Shapes.AddAutoShape(ShapeType.Rect, 80, 10, 50, 50);
            // Two members for the two spellings of the same colour: each writes its own.
            solid.FillFormat.SolidFillColor.PresetColor = PresetColor.DarkBlue;
            var preset = ((AutoShape)solid).Element.Descendants<A.PresetColor>().Single();
            Assert.Equal("dkBlue", preset.Val!.InnerText);
            solid.FillFormat.SolidFillColor.PresetColor = PresetColor.DarkBlue2010;
            preset = ((AutoShape)solid).Element.Descendants<A.PresetColor>().Single();
            Assert.Equal("darkBlue", preset.Val!.InnerText);
            patterned.FillFormat.PatternFormat.PatternStyle = PatternStyle.ZigZag;
            patterned.FillFormat.PatternFormat.ForeColor.SystemColor = SystemColor.ThreeDDarkShadow;
            patterned.LineFormat.BeginArrowheadStyle = LineArrowheadStyle.Open;
            patterned.LineFormat.EndArrowheadWidth = LineArrowheadWidth.Wide;
            var element = ((AutoShape)patterned).Element;
            Assert.Equal("zigZag", element.Descendants<A.PatternFill>().Single().Preset!.InnerText);
            Assert.Equal("3dDkShadow", element.Descendants<A.SystemColor>().Single().Val!.InnerText);
            Assert.Equal("arrow", element.Descendants<A.HeadEnd>().Single().Type!.InnerText);
            Assert.Equal("lg", element.Descendants<A.TailEnd>().Single().Width!.InnerText);

            using var back = new Presentation(new MemoryStream(TestFiles.SaveToBytes(pres)));
            var shapes = back.Slides[0].Shapes;
            Assert.Equal(PresetColor.DarkBlue2010, shapes[0].FillFormat.SolidFillColor.PresetColor);
            Assert.Equal(PatternStyle.ZigZag, shapes[1].FillFormat.PatternFormat.PatternStyle);
            Assert.Equal(SystemColor.ThreeDDarkShadow, shapes[1].FillFormat.PatternFormat.ForeColor.SystemColor);
            Assert.Equal((LineArrowheadStyle.Open, LineArrowheadWidth.Wide), (shapes[1].LineFormat.BeginArrowheadStyle, shapes[1].LineFormat.EndArrowheadWidth));

            // Tokens written by another producer read through the same table; unknown ones read as not defined.
            var color = shapes[0].FillFormat.SolidFillColor;
            var stored = ((AutoShape)shapes[0]).Element.Descendants<A.PresetColor>().Single();
            stored.Val = new A.PresetColorValues("ltSlateGrey");
            Assert.Equal(PresetColor.LightSlateGrey, color.PresetColor);
            AttributeAccess.SetAttr(stored, "val", "notAColour");
            Assert.Equal(PresetColor.NotDefined, color.PresetColor);
            Assert.Equal(ColorType.Preset, color.ColorType);
        }
    }
}
