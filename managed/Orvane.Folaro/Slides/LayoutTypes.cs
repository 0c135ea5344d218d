using System.Collections.Generic;
using System.IO;
using System.Linq;
using System.Xml;
using DocumentFormat.OpenXml.Packaging;
using DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

// The layout "type" attribute and SlideLayoutType.
internal static class LayoutTypes
{
    private static readonly Dictionary<string, SlideLayoutType> ByXml = new()
    {
        ["cust"] = SlideLayoutType.Custom,
        ["title"] = SlideLayoutType.Title,
        ["tx"] = SlideLayoutType.Text,
        ["twoColTx"] = SlideLayoutType.TwoColumnText,
        ["tbl"] = SlideLayoutType.Table,
        ["txAndChart"] = SlideLayoutType.TextAndChart,
        ["chartAndTx"] = SlideLayoutType.ChartAndText,
        ["dgm"] = SlideLayoutType.Diagram,
        ["chart"] = SlideLayoutType.Chart,
        ["txAndClipArt"] = SlideLayoutType.TextAndClipArt,
        ["clipArtAndTx"] = SlideLayoutType.ClipArtAndText,
        ["titleOnly"] = SlideLayoutType.TitleOnly,
        ["blank"] = SlideLayoutType.Blank,
        ["txAndObj"] = SlideLayoutType.TextAndObject,
        ["objAndTx"] = SlideLayoutType.ObjectAndText,
        ["objOnly"] = SlideLayoutType.Object,
        ["obj"] = SlideLayoutType.TitleAndObject,
        ["txAndMedia"] = SlideLayoutType.TextAndMedia,
        ["mediaAndTx"] = SlideLayoutType.MediaAndText,
        ["objOverTx"] = SlideLayoutType.ObjectOverText,
        ["txOverObj"] = SlideLayoutType.TextOverObject,
        ["txAndTwoObj"] = SlideLayoutType.TextAndTwoObjects,
        ["twoObjAndTx"] = SlideLayoutType.TwoObjectsAndText,
        ["twoObjOverTx"] = SlideLayoutType.TwoObjectsOverText,
        ["fourObj"] = SlideLayoutType.FourObjects,
        ["vertTx"] = SlideLayoutType.VerticalText,
        ["clipArtAndVertTx"] = SlideLayoutType.ClipArtAndVerticalText,
        ["vertTitleAndTx"] = SlideLayoutType.VerticalTitleAndText,
        ["vertTitleAndTxOverChart"] = SlideLayoutType.VerticalTitleAndTextOverChart,
        ["twoObj"] = SlideLayoutType.TwoObjects,
        ["objAndTwoObj"] = SlideLayoutType.ObjectAndTwoObject,
        ["twoObjAndObj"] = SlideLayoutType.TwoObjectsAndObject,
        ["secHead"] = SlideLayoutType.SectionHeader,
        ["twoTxTwoObj"] = SlideLayoutType.TwoTextAndTwoObjects,
        ["objTx"] = SlideLayoutType.TitleObjectAndCaption,
        ["picTx"] = SlideLayoutType.PictureAndCaption,
    };

    internal static string ToXml(SlideLayoutType type) =>
        ByXml.First(pair => pair.Value == type).Key;

    // An absent attribute means "cust".
    internal static SlideLayoutType FromXml(SlideLayoutValues? value) =>
        value is { } v ? FromXml(((DocumentFormat.OpenXml.IEnumValue)v).Value) : SlideLayoutType.Custom;

    private static SlideLayoutType FromXml(string? text) =>
        text != null && ByXml.TryGetValue(text, out var type) ? type : SlideLayoutType.Custom;

    // The type of a layout. Looking a layout up by type should not parse every layout of the
    // deck, so a part not parsed yet is read only as far as its root element's attributes.
    internal static SlideLayoutType Of(SlideLayoutPart part)
    {
        if (part.IsRootElementLoaded)
            return FromXml(part.SlideLayout.Type?.Value);
        using var stream = part.GetStream(FileMode.Open, FileAccess.Read);
        using var reader = XmlReader.Create(stream, new XmlReaderSettings { DtdProcessing = DtdProcessing.Prohibit, XmlResolver = null });
        return reader.MoveToContent() == XmlNodeType.Element ? FromXml(reader.GetAttribute("type")) : SlideLayoutType.Custom;
    }
}
