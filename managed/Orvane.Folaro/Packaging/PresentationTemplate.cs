using System;
using System.IO;
using System.Linq;
using System.Text;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;

namespace Orvane.Folaro;

// Builds the package of a new presentation: one master with the eleven usual layouts,
// the "Orvane" theme, presentation/view/table-style properties and the document
// properties. Everything is written here; no template file is read.
internal static class PresentationTemplate
{
    internal const long SlideWidth = 12192000;  // 13.333 in: the 16:9 "widescreen" size
    internal const long SlideHeight = 6858000;  // 7.5 in
    internal const uint FirstMasterId = 2147483648;

    private const string NsDecl =
        "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" " +
        "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\" " +
        "xmlns:p=\"http://schemas.openxmlformats.org/presentationml/2006/main\"";

    // Building the package costs more than copying it, so it is built once per process; every
    // new deck starts from a copy and gets its own document properties when it is opened.
    private static readonly Lazy<byte[]> Package = new(Build);

    internal static MemoryStream Create()
    {
        var bytes = Package.Value;
        var stream = new MemoryStream(bytes.Length + 4096);
        stream.Write(bytes);
        stream.Position = 0;
        return stream;
    }

    /// <summary>Gives an opened copy of the template its core properties, created now.</summary>
    internal static void Stamp(PresentationDocument doc) => CoreProperties.WriteNew(doc.AddCoreFilePropertiesPart());

    private static byte[] Build()
    {
        var stream = new MemoryStream();
        using (var doc = PresentationDocument.Create(stream, PresentationDocumentType.Presentation))
        {
            var pres = doc.AddPresentationPart();
            var master = pres.AddNewPart<SlideMasterPart>("rId1");
            var theme = master.AddNewPart<ThemePart>("rId" + (Layouts.Length + 1));
            pres.AddPart(theme, "rId2");
            Feed(theme, ThemeXml());

            var layoutIds = new StringBuilder();
            for (int i = 0; i < Layouts.Length; i++)
            {
                var layout = master.AddNewPart<SlideLayoutPart>("rId" + (i + 1));
                Feed(layout, LayoutXml(Layouts[i]));
                layout.AddPart(master, "rId1");
                layoutIds.Append($"<p:sldLayoutId id=\"{FirstMasterId + 1 + i}\" r:id=\"rId{i + 1}\"/>");
            }
            Feed(master, MasterXml(layoutIds.ToString()));

            Feed(pres.AddNewPart<PresentationPropertiesPart>("rId3"), $"<p:presentationPr {NsDecl}/>");
            Feed(pres.AddNewPart<ViewPropertiesPart>("rId4"),
                $"<p:viewPr {NsDecl}><p:normalViewPr><p:restoredLeft sz=\"15620\"/><p:restoredTop sz=\"94660\"/></p:normalViewPr>" +
                "<p:gridSpacing cx=\"76200\" cy=\"76200\"/></p:viewPr>");
            Feed(pres.AddNewPart<TableStylesPart>("rId5"),
                "<a:tblStyleLst xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" def=\"{5C22544A-7EE6-4342-B048-85BDC9FD1C3A}\"/>");
            Feed(pres, PresentationXml());

            var app = doc.AddExtendedFilePropertiesPart();
            Feed(app,
                "<Properties xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/extended-properties\" " +
                "xmlns:vt=\"http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes\">" +
                $"<Application>{BuildVersionInfo.Product}</Application><Slides>0</Slides><AppVersion>00.0001</AppVersion></Properties>");
        }
        return stream.ToArray();
    }

    internal static void Feed(OpenXmlPart part, string xml)
    {
        using var s = part.GetStream(FileMode.Create, FileAccess.Write);
        var bytes = Encoding.UTF8.GetBytes("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n" + xml);
        s.Write(bytes, 0, bytes.Length);
    }

    private static string PresentationXml()
    {
        var levels = new StringBuilder("<a:defPPr><a:defRPr lang=\"en-US\"/></a:defPPr>");
        for (int lvl = 1; lvl <= 9; lvl++)
            levels.Append(Level(lvl, (lvl - 1) * 457200, 1800, "tx1"));
        return $"<p:presentation {NsDecl} saveSubsetFonts=\"1\">" +
               $"<p:sldMasterIdLst><p:sldMasterId id=\"{FirstMasterId}\" r:id=\"rId1\"/></p:sldMasterIdLst>" +
               $"<p:sldSz cx=\"{SlideWidth}\" cy=\"{SlideHeight}\"/><p:notesSz cx=\"6858000\" cy=\"9144000\"/>" +
               $"<p:defaultTextStyle>{levels}</p:defaultTextStyle></p:presentation>";
    }

    private static string Level(int lvl, long marL, int size, string color, string extra = "", long? indent = null) =>
        $"<a:lvl{lvl}pPr marL=\"{marL}\"{(indent is long i ? $" indent=\"{i}\"" : "")} algn=\"l\" defTabSz=\"914400\" rtl=\"0\" eaLnBrk=\"1\" latinLnBrk=\"0\" hangingPunct=\"1\">{extra}" +
        $"<a:defRPr sz=\"{size}\" kern=\"1200\"><a:solidFill><a:schemeClr val=\"{color}\"/></a:solidFill>" +
        "<a:latin typeface=\"+mn-lt\"/><a:ea typeface=\"+mn-ea\"/><a:cs typeface=\"+mn-cs\"/></a:defRPr>" +
        $"</a:lvl{lvl}pPr>";

    // --- theme -------------------------------------------------------------------------

    private static readonly (string Slot, string Rgb)[] ThemeColors =
    {
        ("dk1", "000000"), ("lt1", "FFFFFF"), ("dk2", "243447"), ("lt2", "E9EDF2"),
        ("accent1", "2E6DB4"), ("accent2", "E07A2E"), ("accent3", "3A9D5D"),
        ("accent4", "C23B3B"), ("accent5", "7E57C2"), ("accent6", "1FA2A8"),
        ("hlink", "2563EB"), ("folHlink", "7C3AED"),
    };

    internal const string ThemeName = "Orvane";

    private static string ThemeXml()
    {
        var colors = new StringBuilder();
        foreach (var (slot, rgb) in ThemeColors)
            colors.Append($"<a:{slot}><a:srgbClr val=\"{rgb}\"/></a:{slot}>");
        const string solid = "<a:solidFill><a:schemeClr val=\"phClr\"/></a:solidFill>";
        string tinted(int lum) => $"<a:solidFill><a:schemeClr val=\"phClr\"><a:lumMod val=\"{lum}\"/></a:schemeClr></a:solidFill>";
        string line(int w) => $"<a:ln w=\"{w}\" cap=\"flat\" cmpd=\"sng\" algn=\"ctr\">{solid}<a:prstDash val=\"solid\"/><a:miter lim=\"800000\"/></a:ln>";
        const string effect = "<a:effectStyle><a:effectLst/></a:effectStyle>";
        return "<a:theme xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" name=\"" + ThemeName + "\">" +
               "<a:themeElements>" +
               $"<a:clrScheme name=\"{ThemeName}\">{colors}</a:clrScheme>" +
               $"<a:fontScheme name=\"{ThemeName}\">" +
               "<a:majorFont><a:latin typeface=\"Calibri Light\"/><a:ea typeface=\"\"/><a:cs typeface=\"\"/></a:majorFont>" +
               "<a:minorFont><a:latin typeface=\"Calibri\"/><a:ea typeface=\"\"/><a:cs typeface=\"\"/></a:minorFont>" +
               "</a:fontScheme>" +
               $"<a:fmtScheme name=\"{ThemeName}\">" +
               $"<a:fillStyleLst>{solid}{tinted(90000)}{tinted(75000)}</a:fillStyleLst>" +
               $"<a:lnStyleLst>{line(6350)}{line(12700)}{line(19050)}</a:lnStyleLst>" +
               $"<a:effectStyleLst>{effect}{effect}{effect}</a:effectStyleLst>" +
               $"<a:bgFillStyleLst>{solid}{tinted(95000)}{tinted(85000)}</a:bgFillStyleLst>" +
               "</a:fmtScheme></a:themeElements><a:objectDefaults/><a:extraClrSchemeLst/></a:theme>";
    }

    // --- master ------------------------------------------------------------------------

    private const string GroupProps =
        "<p:nvGrpSpPr><p:cNvPr id=\"1\" name=\"\"/><p:cNvGrpSpPr/><p:nvPr/></p:nvGrpSpPr>" +
        "<p:grpSpPr><a:xfrm><a:off x=\"0\" y=\"0\"/><a:ext cx=\"0\" cy=\"0\"/><a:chOff x=\"0\" y=\"0\"/><a:chExt cx=\"0\" cy=\"0\"/></a:xfrm></p:grpSpPr>";

    private const string DateFieldId = "{6B3F9B0E-2C41-4D1E-9A57-0F3C1D2A8B10}";
    private const string SlideNumberFieldId = "{B0C8E5A4-7D21-4F63-8E19-5A2D4C6F1E37}";

    private readonly record struct Box(long X, long Y, long Cx, long Cy);

    private sealed record Placeholder(string? Type, uint? Index, string Name, Box? Box, string? Size = null, bool Vertical = false, string? Prompt = null);

    private static readonly Box MasterTitle = new(838200, 365125, 10515600, 1325563);
    private static readonly Box MasterBody = new(838200, 1825625, 10515600, 4351338);
    private static readonly Box MasterDate = new(838200, 6356350, 2743200, 365125);
    private static readonly Box MasterFooter = new(4038600, 6356350, 4114800, 365125);
    private static readonly Box MasterNumber = new(8610600, 6356350, 2743200, 365125);

    private static string MasterXml(string layoutIds)
    {
        var tree = new StringBuilder(GroupProps);
        tree.Append(Shape(2, new Placeholder("title", null, "Title Placeholder 1", MasterTitle), master: true,
            Paragraph("Click to edit the master title style"), anchor: "ctr"));
        var body = new StringBuilder();
        string[] levels = { "Click to edit the master text styles", "Second level", "Third level", "Fourth level", "Fifth level" };
        for (int i = 0; i < levels.Length; i++)
            body.Append(Paragraph(levels[i], i));
        tree.Append(Shape(3, new Placeholder("body", 1, "Text Placeholder 2", MasterBody), master: true, body.ToString()));
        tree.Append(Shape(4, new Placeholder("dt", 10, "Date Placeholder 3", MasterDate, "half"), master: true,
            $"<a:p><a:fld id=\"{DateFieldId}\" type=\"datetimeFigureOut\"><a:rPr lang=\"en-US\"/><a:t>1/1/2026</a:t></a:fld><a:endParaRPr lang=\"en-US\"/></a:p>",
            anchor: "ctr", align: "l"));
        tree.Append(Shape(5, new Placeholder("ftr", 11, "Footer Placeholder 4", MasterFooter, "quarter"), master: true,
            "<a:p><a:endParaRPr lang=\"en-US\"/></a:p>", anchor: "ctr", align: "ctr"));
        tree.Append(Shape(6, new Placeholder("sldNum", 12, "Slide Number Placeholder 5", MasterNumber, "quarter"), master: true,
            $"<a:p><a:fld id=\"{SlideNumberFieldId}\" type=\"slidenum\"><a:rPr lang=\"en-US\"/><a:t>‹#›</a:t></a:fld><a:endParaRPr lang=\"en-US\"/></a:p>",
            anchor: "ctr", align: "r"));

        string title = "<a:lvl1pPr algn=\"l\" defTabSz=\"914400\" rtl=\"0\" eaLnBrk=\"1\" latinLnBrk=\"0\" hangingPunct=\"1\">" +
                       "<a:lnSpc><a:spcPct val=\"90000\"/></a:lnSpc><a:spcBef><a:spcPct val=\"0\"/></a:spcBef><a:buNone/>" +
                       "<a:defRPr sz=\"4400\" kern=\"1200\"><a:solidFill><a:schemeClr val=\"tx1\"/></a:solidFill>" +
                       "<a:latin typeface=\"+mj-lt\"/><a:ea typeface=\"+mj-ea\"/><a:cs typeface=\"+mj-cs\"/></a:defRPr></a:lvl1pPr>";
        var bodyStyle = new StringBuilder();
        int[] sizes = { 2800, 2400, 2000, 1800, 1800, 1800, 1800, 1800, 1800 };
        for (int lvl = 1; lvl <= 9; lvl++)
        {
            long marL = 228600 + (lvl - 1) * 457200;
            string bullets = "<a:lnSpc><a:spcPct val=\"90000\"/></a:lnSpc><a:spcBef><a:spcPts val=\"" + (lvl == 1 ? 1000 : 500) +
                             "\"/></a:spcBef><a:buFont typeface=\"Arial\"/><a:buChar char=\"•\"/>";
            bodyStyle.Append(Level(lvl, marL, sizes[lvl - 1], "tx1", bullets, indent: -228600));
        }
        var other = new StringBuilder("<a:defPPr><a:defRPr lang=\"en-US\"/></a:defPPr>");
        for (int lvl = 1; lvl <= 9; lvl++)
            other.Append(Level(lvl, (lvl - 1) * 457200, 1800, "tx1"));

        return $"<p:sldMaster {NsDecl}><p:cSld><p:bg><p:bgRef idx=\"1001\"><a:schemeClr val=\"bg1\"/></p:bgRef></p:bg>" +
               $"<p:spTree>{tree}</p:spTree></p:cSld>" +
               "<p:clrMap bg1=\"lt1\" tx1=\"dk1\" bg2=\"lt2\" tx2=\"dk2\" accent1=\"accent1\" accent2=\"accent2\" accent3=\"accent3\" " +
               "accent4=\"accent4\" accent5=\"accent5\" accent6=\"accent6\" hlink=\"hlink\" folHlink=\"folHlink\"/>" +
               $"<p:sldLayoutIdLst>{layoutIds}</p:sldLayoutIdLst>" +
               $"<p:txStyles><p:titleStyle>{title}</p:titleStyle><p:bodyStyle>{bodyStyle}</p:bodyStyle><p:otherStyle>{other}</p:otherStyle></p:txStyles>" +
               "</p:sldMaster>";
    }

    private static string Paragraph(string text, int level = 0) =>
        "<a:p>" + (level > 0 ? $"<a:pPr lvl=\"{level}\"/>" : "") +
        $"<a:r><a:rPr lang=\"en-US\"/><a:t>{text}</a:t></a:r></a:p>";

    private static string Shape(uint id, Placeholder ph, bool master, string paragraphs, string? anchor = null, string? align = null)
    {
        var attrs = new StringBuilder();
        if (ph.Type != null)
            attrs.Append($" type=\"{ph.Type}\"");
        if (ph.Vertical)
            attrs.Append(" orient=\"vert\"");
        if (ph.Size != null)
            attrs.Append($" sz=\"{ph.Size}\"");
        if (ph.Index is uint idx)
            attrs.Append($" idx=\"{idx}\"");
        string xfrm = ph.Box is Box b
            ? $"<a:xfrm><a:off x=\"{b.X}\" y=\"{b.Y}\"/><a:ext cx=\"{b.Cx}\" cy=\"{b.Cy}\"/></a:xfrm>"
            : "";
        string geometry = master ? "<a:prstGeom prst=\"rect\"><a:avLst/></a:prstGeom>" : "";
        string bodyPr = master
            ? $"<a:bodyPr vert=\"horz\" lIns=\"91440\" tIns=\"45720\" rIns=\"91440\" bIns=\"45720\" rtlCol=\"0\"{(anchor != null ? $" anchor=\"{anchor}\"" : "")}><a:normAutofit/></a:bodyPr>"
            : ph.Vertical ? "<a:bodyPr vert=\"eaVert\"/>" : "<a:bodyPr/>";
        string lstStyle = align != null
            ? $"<a:lstStyle><a:lvl1pPr algn=\"{align}\"><a:defRPr sz=\"1200\"><a:solidFill><a:schemeClr val=\"tx1\"><a:tint val=\"75000\"/></a:schemeClr></a:solidFill></a:defRPr></a:lvl1pPr></a:lstStyle>"
            : "<a:lstStyle/>";
        return $"<p:sp><p:nvSpPr><p:cNvPr id=\"{id}\" name=\"{ph.Name}\"/><p:cNvSpPr><a:spLocks noGrp=\"1\"/></p:cNvSpPr>" +
               $"<p:nvPr><p:ph{attrs}/></p:nvPr></p:nvSpPr><p:spPr>{xfrm}{geometry}</p:spPr>" +
               $"<p:txBody>{bodyPr}{lstStyle}{paragraphs}</p:txBody></p:sp>";
    }

    // --- layouts -----------------------------------------------------------------------

    private sealed record LayoutDefinition(string Type, string Name, Placeholder[] Placeholders);

    private static readonly Placeholder Date = new("dt", 10, "Date Placeholder", null, "half");
    private static readonly Placeholder Footer = new("ftr", 11, "Footer Placeholder", null, "quarter");
    private static readonly Placeholder Number = new("sldNum", 12, "Slide Number Placeholder", null, "quarter");
    private static readonly Placeholder Title = new("title", null, "Title", null);

    private static readonly LayoutDefinition[] Layouts =
    {
        new("title", "Title Slide", new[]
        {
            new Placeholder("ctrTitle", null, "Title", new Box(1524000, 1122363, 9144000, 2387600)),
            new Placeholder("subTitle", 1, "Subtitle", new Box(1524000, 3602038, 9144000, 1655762)),
            Date, Footer, Number,
        }),
        new("obj", "Title and Content", new[] { Title, new Placeholder(null, 1, "Content Placeholder", null), Date, Footer, Number }),
        new("secHead", "Section Header", new[]
        {
            new Placeholder("title", null, "Title", new Box(831850, 1709738, 10515600, 2852737)),
            new Placeholder("body", 1, "Text Placeholder", new Box(831850, 4589463, 10515600, 1500187)),
            Date, Footer, Number,
        }),
        new("twoObj", "Two Content", new[]
        {
            Title,
            new Placeholder(null, 1, "Content Placeholder", new Box(838200, 1825625, 5181600, 4351338), "half"),
            new Placeholder(null, 2, "Content Placeholder", new Box(6172200, 1825625, 5181600, 4351338), "half"),
            Date, Footer, Number,
        }),
        new("twoTxTwoObj", "Comparison", new[]
        {
            new Placeholder("title", null, "Title", new Box(839788, 365125, 10515600, 1325563)),
            new Placeholder("body", 1, "Text Placeholder", new Box(839788, 1681163, 5157787, 823912)),
            new Placeholder(null, 2, "Content Placeholder", new Box(839788, 2505075, 5157787, 3684588), "half"),
            new Placeholder("body", 3, "Text Placeholder", new Box(6172200, 1681163, 5183188, 823912), "quarter"),
            new Placeholder(null, 4, "Content Placeholder", new Box(6172200, 2505075, 5183188, 3684588), "quarter"),
            Date, Footer, Number,
        }),
        new("titleOnly", "Title Only", new[] { Title, Date, Footer, Number }),
        new("blank", "Blank", new[] { Date, Footer, Number }),
        new("objTx", "Content with Caption", new[]
        {
            new Placeholder("title", null, "Title", new Box(839788, 457200, 3932237, 1600200)),
            new Placeholder(null, 1, "Content Placeholder", new Box(5183188, 987425, 6172200, 4873625)),
            new Placeholder("body", 2, "Text Placeholder", new Box(839788, 2057400, 3932237, 3811588), "half"),
            Date, Footer, Number,
        }),
        new("picTx", "Picture with Caption", new[]
        {
            new Placeholder("title", null, "Title", new Box(839788, 457200, 3932237, 1600200)),
            new Placeholder("pic", 1, "Picture Placeholder", new Box(5183188, 987425, 6172200, 4873625)),
            new Placeholder("body", 2, "Text Placeholder", new Box(839788, 2057400, 3932237, 3811588), "half"),
            Date, Footer, Number,
        }),
        new("vertTx", "Title and Vertical Text", new[]
        {
            Title, new Placeholder("body", 1, "Vertical Text Placeholder", null, null, Vertical: true), Date, Footer, Number,
        }),
        new("vertTitleAndTx", "Vertical Title and Text", new[]
        {
            new Placeholder("title", null, "Vertical Title", new Box(8724900, 365125, 2628900, 5811838), null, Vertical: true),
            new Placeholder("body", 1, "Vertical Text Placeholder", new Box(838200, 365125, 7734300, 5811838), null, Vertical: true),
            Date, Footer, Number,
        }),
    };

    private static string LayoutXml(LayoutDefinition layout)
    {
        var tree = new StringBuilder(GroupProps);
        uint id = 2;
        foreach (var ph in layout.Placeholders)
        {
            var named = ph with { Name = $"{ph.Name} {id - 1}" };
            string text = ph.Type switch
            {
                "dt" or "ftr" => "<a:p><a:endParaRPr lang=\"en-US\"/></a:p>",
                "sldNum" => $"<a:p><a:fld id=\"{SlideNumberFieldId}\" type=\"slidenum\"><a:rPr lang=\"en-US\"/><a:t>‹#›</a:t></a:fld><a:endParaRPr lang=\"en-US\"/></a:p>",
                "title" or "ctrTitle" => Paragraph("Click to edit the master title style"),
                "subTitle" => Paragraph("Click to edit the master subtitle style"),
                "pic" => "<a:p><a:endParaRPr lang=\"en-US\"/></a:p>",
                _ => Paragraph("Click to edit the master text styles"),
            };
            tree.Append(Shape(id, named, master: false, text));
            id++;
        }
        return $"<p:sldLayout {NsDecl} type=\"{layout.Type}\" preserve=\"1\"><p:cSld name=\"{layout.Name}\"><p:spTree>{tree}</p:spTree></p:cSld>" +
               "<p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr></p:sldLayout>";
    }

    // A layout of the given type ("title", "obj", "tbl", ...): the template's own layout for the
    // eleven usual types, otherwise a title and a content placeholder under that type.
    internal static string NewLayoutXml(string type, string name)
    {
        var known = Layouts.FirstOrDefault(l => l.Type == type);
        var placeholders = known?.Placeholders ?? new[] { Title, new Placeholder(null, 1, "Content Placeholder", null), Date, Footer, Number };
        return LayoutXml(new LayoutDefinition(type, name, placeholders));
    }

    internal static string ThemeXmlFor(string name) => ThemeXml().Replace($"name=\"{ThemeName}\"", $"name=\"{name}\"");

    // --- notes ---------------------------------------------------------------------------

    private const string SlideImageShape =
        "<p:sp><p:nvSpPr><p:cNvPr id=\"{0}\" name=\"Slide Image Placeholder {1}\"/><p:cNvSpPr><a:spLocks noGrp=\"1\" noRot=\"1\" noChangeAspect=\"1\"/></p:cNvSpPr>" +
        "<p:nvPr><p:ph type=\"sldImg\"{2}/></p:nvPr></p:nvSpPr><p:spPr>{3}</p:spPr></p:sp>";

    // The notes master of a portrait letter notes page: header, date, slide image, notes body, footer, number.
    internal static string NotesMasterXml()
    {
        var tree = new StringBuilder(GroupProps);
        tree.Append(Shape(2, new Placeholder("hdr", null, "Header Placeholder 1", new Box(0, 0, 2971800, 458788), "quarter"), master: true,
            "<a:p><a:endParaRPr lang=\"en-US\"/></a:p>", align: "l"));
        tree.Append(Shape(3, new Placeholder("dt", 1, "Date Placeholder 2", new Box(3884613, 0, 2971800, 458788)), master: true,
            "<a:p><a:endParaRPr lang=\"en-US\"/></a:p>", align: "r"));
        tree.Append(string.Format(SlideImageShape, 4, 3, " idx=\"2\"",
            "<a:xfrm><a:off x=\"685800\" y=\"1143000\"/><a:ext cx=\"5486400\" cy=\"3086100\"/></a:xfrm><a:prstGeom prst=\"rect\"><a:avLst/></a:prstGeom>" +
            "<a:noFill/><a:ln w=\"12700\"><a:solidFill><a:prstClr val=\"black\"/></a:solidFill></a:ln>"));
        tree.Append(Shape(5, new Placeholder("body", 3, "Notes Placeholder 4", new Box(685800, 4400550, 5486400, 3600450), "quarter"), master: true,
            Paragraph("Click to edit the master text styles")));
        tree.Append(Shape(6, new Placeholder("ftr", 4, "Footer Placeholder 5", new Box(0, 8685213, 2971800, 458787), "quarter"), master: true,
            "<a:p><a:endParaRPr lang=\"en-US\"/></a:p>", anchor: "b", align: "l"));
        tree.Append(Shape(7, new Placeholder("sldNum", 5, "Slide Number Placeholder 6", new Box(3884613, 8685213, 2971800, 458787), "quarter"), master: true,
            $"<a:p><a:fld id=\"{SlideNumberFieldId}\" type=\"slidenum\"><a:rPr lang=\"en-US\"/><a:t>‹#›</a:t></a:fld><a:endParaRPr lang=\"en-US\"/></a:p>",
            anchor: "b", align: "r"));
        var style = new StringBuilder();
        for (int lvl = 1; lvl <= 9; lvl++)
            style.Append(Level(lvl, (lvl - 1) * 457200, 1200, "tx1"));
        return $"<p:notesMaster {NsDecl}><p:cSld><p:bg><p:bgRef idx=\"1001\"><a:schemeClr val=\"bg1\"/></p:bgRef></p:bg>" +
               $"<p:spTree>{tree}</p:spTree></p:cSld>" +
               "<p:clrMap bg1=\"lt1\" tx1=\"dk1\" bg2=\"lt2\" tx2=\"dk2\" accent1=\"accent1\" accent2=\"accent2\" accent3=\"accent3\" " +
               "accent4=\"accent4\" accent5=\"accent5\" accent6=\"accent6\" hlink=\"hlink\" folHlink=\"folHlink\"/>" +
               $"<p:notesStyle>{style}</p:notesStyle></p:notesMaster>";
    }

    // A notes page with the slide image and an empty notes body.
    internal static string NotesSlideXml() =>
        $"<p:notes {NsDecl}><p:cSld><p:spTree>{GroupProps}" +
        string.Format(SlideImageShape, 2, 1, "", "") +
        "<p:sp><p:nvSpPr><p:cNvPr id=\"3\" name=\"Notes Placeholder 2\"/><p:cNvSpPr><a:spLocks noGrp=\"1\"/></p:cNvSpPr>" +
        "<p:nvPr><p:ph type=\"body\" idx=\"1\"/></p:nvPr></p:nvSpPr><p:spPr/>" +
        "<p:txBody><a:bodyPr/><a:lstStyle/><a:p><a:endParaRPr lang=\"en-US\"/></a:p></p:txBody></p:sp>" +
        "</p:spTree></p:cSld><p:clrMapOvr><a:masterClrMapping/></p:clrMapOvr></p:notes>";
}
