using System.Linq;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

// Text-run edits done directly on DrawingML paragraphs.
internal static class TextRuns
{
    /// <summary>Joins the runs of every slide of the presentation.</summary>
    internal static void JoinAll(Presentation owner)
    {
        foreach (var slide in owner.SlideList)
            Join(((Slide)slide).Part.Slide);
    }

    // Merges each run into the previous one when both are plain runs with equal properties.
    internal static void Join(OpenXmlElement root)
    {
        foreach (var paragraph in root.Descendants<A.Paragraph>().ToList())
        {
            A.Run? previous = null;
            foreach (var child in paragraph.ChildElements.ToList())
            {
                if (child is not A.Run run)
                {
                    previous = null;
                    continue;
                }
                if (previous != null && SameFormat(previous, run) && previous.Text != null && run.Text != null)
                {
                    previous.Text.Text += run.Text.Text;
                    run.Remove();
                    continue;
                }
                previous = run;
            }
        }
    }

    private static bool SameFormat(A.Run a, A.Run b)
    {
        if (a.ChildElements.Any(c => c is not A.RunProperties and not A.Text) || b.ChildElements.Any(c => c is not A.RunProperties and not A.Text))
            return false;
        var pa = a.RunProperties?.OuterXml ?? "";
        var pb = b.RunProperties?.OuterXml ?? "";
        return pa == pb;
    }
}
