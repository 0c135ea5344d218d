using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro.Internal;

// The layout "type" attribute and SlideLayoutType.
internal static class LayoutTypes
{
    private static readonly Dictionary<string, SlideLayoutType> ByXml = new()
    {
        ["cust"] = SlideLayoutType.Custom, ["title"] = SlideLayoutType.Title, ["tx"] = SlideLayoutType.Text,
        ["twoColTx"] = SlideLayoutType.TwoColumnText, ["tbl"] = SlideLayoutType.Table, ["txAndChart"] = SlideLayoutType.TextAndChart,
        ["chartAndTx"] = SlideLayoutType.ChartAndText, ["dgm"] = SlideLayoutType.Diagram, ["chart"] = SlideLayoutType.Chart,
        ["txAndClipArt"] = SlideLayoutType.TextAndClipArt, ["clipArtAndTx"] = SlideLayoutType.ClipArtAndText,
        ["titleOnly"] = SlideLayoutType.TitleOnly, ["blank"] = SlideLayoutType.Blank, ["txAndObj"] = SlideLayoutType.TextAndObject,
        ["objAndTx"] = SlideLayoutType.ObjectAndText, ["objOnly"] = SlideLayoutType.Object, ["obj"] = SlideLayoutType.TitleAndObject,
        ["txAndMedia"] = SlideLayoutType.TextAndMedia, ["mediaAndTx"] = SlideLayoutType.MediaAndText,
        ["objOverTx"] = SlideLayoutType.ObjectOverText, ["txOverObj"] = SlideLayoutType.TextOverObject,
        ["txAndTwoObj"] = SlideLayoutType.TextAndTwoObjects, ["twoObjAndTx"] = SlideLayoutType.TwoObjectsAndText,
        ["twoObjOverTx"] = SlideLayoutType.TwoObjectsOverText, ["fourObj"] = SlideLayoutType.FourObjects,
        ["vertTx"] = SlideLayoutType.VerticalText, ["clipArtAndVertTx"] = SlideLayoutType.ClipArtAndVerticalText,
        ["vertTitleAndTx"] = SlideLayoutType.VerticalTitleAndText, ["vertTitleAndTxOverChart"] = SlideLayoutType.VerticalTitleAndTextOverChart,
        ["twoObj"] = SlideLayoutType.TwoObjects, ["objAndTwoObj"] = SlideLayoutType.ObjectAndTwoObject,
        ["twoObjAndObj"] = SlideLayoutType.TwoObjectsAndObject, ["secHead"] = SlideLayoutType.SectionHeader,
        ["twoTxTwoObj"] = SlideLayoutType.TwoTextAndTwoObjects, ["objTx"] = SlideLayoutType.TitleObjectAndCaption,
        ["picTx"] = SlideLayoutType.PictureAndCaption,
    };

    internal static string ToXml(SlideLayoutType type) =>
        ByXml.First(pair => pair.Value == type).Key;

    // An absent attribute means "cust".
    internal static SlideLayoutType FromXml(SlideLayoutValues? value)
    {
        if (value is not { } v)
            return SlideLayoutType.Custom;
        var text = ((DocumentFormat.OpenXml.IEnumValue)v).Value;
        return ByXml.TryGetValue(text, out var type) ? type : SlideLayoutType.Custom;
    }
}
