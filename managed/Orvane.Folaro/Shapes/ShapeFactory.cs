using System;
using System.Globalization;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

// New shape elements, and the fix-ups a copied shape needs in its new place.
internal static class ShapeFactory
{
    private const string R = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

    // A preset shape styled from the theme (accent fill, darker outline, light centred text), as editors make one.
    internal static P.Shape AutoShape(string preset, uint id, string name) =>
        new(
            new P.NonVisualShapeProperties(
                new P.NonVisualDrawingProperties { Id = id, Name = name },
                new P.NonVisualShapeDrawingProperties(),
                new P.ApplicationNonVisualDrawingProperties()),
            new P.ShapeProperties(
                new A.Transform2D(new A.Offset { X = 0, Y = 0 }, new A.Extents { Cx = 0, Cy = 0 }),
                new A.PresetGeometry(new A.AdjustValueList()) { Preset = new EnumValue<A.ShapeTypeValues>(new A.ShapeTypeValues(preset)) }),
            Style(),
            new P.TextBody(
                new A.BodyProperties { RightToLeftColumns = false, Anchor = A.TextAnchoringTypeValues.Center },
                new A.ListStyle(),
                new A.Paragraph(new A.ParagraphProperties { Alignment = A.TextAlignmentTypeValues.Center }, new A.EndParagraphRunProperties { Language = "en-US" })));

    internal static P.ConnectionShape Connector(string preset, uint id, string name) =>
        new(
            new P.NonVisualConnectionShapeProperties(
                new P.NonVisualDrawingProperties { Id = id, Name = name },
                new P.NonVisualConnectorShapeDrawingProperties(),
                new P.ApplicationNonVisualDrawingProperties()),
            new P.ShapeProperties(
                new A.Transform2D(new A.Offset { X = 0, Y = 0 }, new A.Extents { Cx = 0, Cy = 0 }),
                new A.PresetGeometry(new A.AdjustValueList()) { Preset = new EnumValue<A.ShapeTypeValues>(new A.ShapeTypeValues(preset)) }),
            new P.ShapeStyle(
                new A.LineReference(SchemeColor(A.SchemeColorValues.Accent1)) { Index = 1 },
                new A.FillReference(SchemeColor(A.SchemeColorValues.Accent1)) { Index = 0 },
                new A.EffectReference(SchemeColor(A.SchemeColorValues.Accent1)) { Index = 0 },
                new A.FontReference(SchemeColor(A.SchemeColorValues.Text1)) { Index = A.FontCollectionIndexValues.Minor }));

    internal static P.GroupShape Group(uint id, string name) =>
        new(
            new P.NonVisualGroupShapeProperties(
                new P.NonVisualDrawingProperties { Id = id, Name = name },
                new P.NonVisualGroupShapeDrawingProperties(),
                new P.ApplicationNonVisualDrawingProperties()),
            new P.GroupShapeProperties(
                new A.TransformGroup(
                    new A.Offset { X = 0, Y = 0 }, new A.Extents { Cx = 0, Cy = 0 },
                    new A.ChildOffset { X = 0, Y = 0 }, new A.ChildExtents { Cx = 0, Cy = 0 })));

    private static P.ShapeStyle Style() =>
        new(
            new A.LineReference(new A.SchemeColor(new A.Shade { Val = 50000 }) { Val = A.SchemeColorValues.Accent1 }) { Index = 2 },
            new A.FillReference(SchemeColor(A.SchemeColorValues.Accent1)) { Index = 1 },
            new A.EffectReference(SchemeColor(A.SchemeColorValues.Accent1)) { Index = 0 },
            new A.FontReference(SchemeColor(A.SchemeColorValues.Light1)) { Index = A.FontCollectionIndexValues.Minor });

    private static A.SchemeColor SchemeColor(A.SchemeColorValues value) => new() { Val = value };

    /// <summary>Gives every shape id in a copied subtree a fresh id from <paramref name="next"/> up.</summary>
    internal static void Renumber(OpenXmlElement root, uint next)
    {
        // By name: ink (content parts) keeps its cNvPr in another namespace.
        foreach (var nv in root.Descendants().Where(e => e.LocalName == "cNvPr").ToList())
            nv.SetAttribute(new OpenXmlAttribute("id", string.Empty, (next++).ToString(CultureInfo.InvariantCulture)));
    }

    /// <summary>
    /// Points the r:id-style attributes of a copied subtree at relationships of the target
    /// part: the same part when both are the same, else a new relationship to the referenced
    /// part (copied when it belongs to another package), hyperlink or external target.
    /// </summary>
    internal static void CopyRelationships(OpenXmlElement root, OpenXmlPart source, OpenXmlPart target)
    {
        if (ReferenceEquals(source, target))
            return;
        foreach (var element in root.Descendants().Prepend(root).ToList())
        {
            foreach (var attr in element.GetAttributes().Where(a => a.NamespaceUri == R).ToList())
            {
                string? newId = Relate(source, target, attr.Value ?? string.Empty);
                if (newId == null)
                    element.RemoveAttribute(attr.LocalName, R);
                else
                    element.SetAttribute(new OpenXmlAttribute(attr.Prefix, attr.LocalName, R, newId));
            }
        }
    }

    private static string? Relate(OpenXmlPart source, OpenXmlPart target, string id)
    {
        if (id.Length == 0)
            return null;
        if (source.Parts.FirstOrDefault(p => p.RelationshipId == id) is { OpenXmlPart: { } part })
        {
            // A jump to another slide has no meaning outside its own presentation.
            if (part is SlidePart && !ReferenceEquals(part.OpenXmlPackage, target.OpenXmlPackage))
                return null;
            // A picture of another package is stored once per content, as media are.
            if (part is ImagePart image && !ReferenceEquals(part.OpenXmlPackage, target.OpenXmlPackage))
                return DocumentState.Of(target).Media.ImportImage(target, image);
            var existing = target.Parts.FirstOrDefault(p => ReferenceEquals(p.OpenXmlPart, part));
            if (existing.OpenXmlPart != null)
                return existing.RelationshipId;
            var added = target.AddPart(part);
            return target.GetIdOfPart(added);
        }
        if (source.HyperlinkRelationships.FirstOrDefault(h => h.Id == id) is { } link)
            return target.AddHyperlinkRelationship(link.Uri, link.IsExternal).Id;
        if (source.ExternalRelationships.FirstOrDefault(e => e.Id == id) is { } ext)
            return target.AddExternalRelationship(ext.RelationshipType, ext.Uri).Id;
        if (source.DataPartReferenceRelationships.FirstOrDefault(d => d.Id == id) is { DataPart: MediaDataPart sourceMedia } data && target is SlidePart slide)
        {
            // Media of another package is copied in, once per content.
            var media = ReferenceEquals(sourceMedia.OpenXmlPackage, target.OpenXmlPackage)
                ? sourceMedia
                : DocumentState.Of(target).Media.ImportMedia(sourceMedia);
            return data switch
            {
                AudioReferenceRelationship => slide.AddAudioReferenceRelationship(media).Id,
                VideoReferenceRelationship => slide.AddVideoReferenceRelationship(media).Id,
                _ => slide.AddMediaReferenceRelationship(media).Id,
            };
        }
        return null;
    }
}
