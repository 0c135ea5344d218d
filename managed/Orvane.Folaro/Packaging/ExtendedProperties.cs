using DocumentFormat.OpenXml.Packaging;

namespace Orvane.Folaro;

// The extended (app.xml) properties that follow the content.
internal static class ExtendedProperties
{
    internal static void UpdateSlideCount(PresentationDocument doc)
    {
        if (doc.ExtendedFilePropertiesPart?.Properties is not { } props)
            return;
        int count = doc.PresentationPart?.Presentation.SlideIdList?.ChildElements.Count ?? 0;
        var text = count.ToString(System.Globalization.CultureInfo.InvariantCulture);
        if (props.Slides != null && props.Slides.Text != text)
            props.Slides.Text = text;
    }
}
