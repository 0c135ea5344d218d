using System;
using System.IO;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using Orvane.Marel;
using Xunit;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Tests;

public class TableTests
{
    private static (IPresentation Pres, ISlide Slide) BlankSlide()
    {
        IPresentation pres = new Presentation();
        var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides.GetByType(SlideLayoutType.Blank)!);
        return (pres, slide);
    }

    private static ITable Grid(ISlide slide, int columns, int rows)
    {
        var table = slide.Shapes.AddTable(50, 60, Enumerable.Repeat(100.0, columns).ToArray(), Enumerable.Repeat(40.0, rows).ToArray());
        for (int r = 0; r < rows; r++)
            for (int c = 0; c < columns; c++)
                table[c, r].TextFrame.Text = $"{r}{c}";
        return table;
    }

    // The merged regions as "row,column,rowSpan,colSpan" read through every cell they cover.
    private static string Layout(ITable table)
    {
        var regions = new System.Collections.Generic.SortedSet<string>(StringComparer.Ordinal);
        for (int r = 0; r < table.Rows.Count; r++)
            for (int c = 0; c < table.Columns.Count; c++)
            {
                var cell = table[c, r];
                if (cell.IsMergedCell)
                    regions.Add($"{cell.FirstRowIndex},{cell.FirstColumnIndex},{cell.RowSpan},{cell.ColSpan}");
            }
        return string.Join(" ", regions);
    }

    private static System.Xml.Linq.XElement TableXml(ITable table) =>
        System.Xml.Linq.XElement.Parse(((Table)table).Tbl.OuterXml);

    private static string Attrs(System.Xml.Linq.XElement tc) =>
        string.Join(" ", new[] { "rowSpan", "gridSpan", "hMerge", "vMerge" }.Where(a => tc.Attribute(a) != null).Select(a => $"{a}={tc.Attribute(a)!.Value}"));

    // A table with every item: merges both ways, a border of each side, fills, a split cell,
    // rows and columns inserted and removed, flags and a style. It validates, LibreOffice
    // converts it, and it reads back as written.
    internal static byte[] TableDeck()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var table = Grid(slide, 4, 5);
            table.MergeCells(table[0, 0], table[1, 0], false);
            table.MergeCells(table[3, 1], table[3, 4], false);
            var format = table[1, 1].CellFormat;
            (ILineFormat Line, float Width, Color Color)[] borders =
            {
                (format.BorderLeft, 1, Color.Red), (format.BorderTop, 2, Color.Green), (format.BorderRight, 3, Color.Blue),
                (format.BorderBottom, 4, Color.Orange), (format.BorderDiagonalDown, 0.5f, Color.Purple), (format.BorderDiagonalUp, 1.5f, Color.Black),
            };
            foreach (var (line, width, color) in borders)
            {
                line.Width = width;
                line.FillFormat.FillType = FillType.Solid;
                line.FillFormat.SolidFillColor.Color = color;
            }
            table[2, 1].CellFormat.FillFormat.FillType = FillType.Solid;
            table[2, 1].CellFormat.FillFormat.SolidFillColor.Color = Color.Yellow;
            table[1, 2].CellFormat.FillFormat.FillType = FillType.NoFill;
            table[2, 2].MarginLeft = 12;
            table[2, 2].TextAnchorType = TextAnchorType.Bottom;
            table[1, 3].TextVerticalType = TextVerticalType.Vertical270;
            // Column 2 becomes 30 + 70 points; the other rows' cells in it span both halves.
            table[2, 3].SplitByWidth(30).TextFrame.Text = "split";
            table.Rows.Insert(1, 25).Single(c => !c.IsMergedCell).TextFrame.Text = "new row";
            table.Columns.Add(60);
            table.Rows.RemoveAt(5);
            // Removing the first column moves the horizontal merge's text to the next one.
            table.Columns.RemoveAt(0);
            table.LastRow = true;
            table.VerticalBanding = true;
            table.StylePreset = TableStylePreset.LightStyle2Accent3;
            return TestFiles.SaveToBytes(pres);
        }
    }

    [Fact]
    public void TableDeckValidatesAndReadsBack()
    {
        var bytes = TableDeck();
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        var table = Assert.IsType<Table>(Assert.Single(back.Slides[0].Shapes));
        Assert.Equal(new[] { 100.0, 30, 70, 100, 60 }, table.Columns.Select(c => Math.Round(c.Width, 3)));
        Assert.Equal(new[] { 40.0, 25, 40, 40, 40 }, table.Rows.Select(r => Math.Round(r.Height, 3)));
        Assert.Equal((360f, 185f), (table.Width, table.Height));
        Assert.Equal((50f, 60f), (table.X, table.Y));
        Assert.Equal("0,1,1,2 1,1,1,2 2,1,1,2 2,3,3,1 2,4,3,1 3,1,1,2", Layout(table));
        Assert.Equal("00\n01", table[0, 0].TextFrame.Text);
        Assert.Equal("new row", table[3, 1].TextFrame.Text);
        Assert.Equal("13\n23\n33\n43", table[3, 2].TextFrame.Text);
        Assert.Equal(("32", "split"), (table[1, 4].TextFrame.Text, table[2, 4].TextFrame.Text));
        var format = table[0, 2].CellFormat;
        var lines = new[] { format.BorderLeft, format.BorderTop, format.BorderRight, format.BorderBottom, format.BorderDiagonalDown, format.BorderDiagonalUp };
        Assert.Equal(new[] { 1f, 2, 3, 4, 0.5f, 1.5f }, lines.Select(l => l.Width));
        Assert.Equal(new[] { Color.Red, Color.Green, Color.Blue, Color.Orange, Color.Purple, Color.Black }.Select(c => c.ToArgb()),
            lines.Select(l => l.FillFormat.SolidFillColor.Color.ToArgb()));
        // The yellow cell was split with its column: both halves show the merged cell's fill.
        Assert.Equal(Color.Yellow.ToArgb(), table[2, 2].CellFormat.FillFormat.SolidFillColor.Color.ToArgb());
        Assert.Equal(FillType.NoFill, table[0, 3].CellFormat.FillFormat.FillType);
        Assert.Equal(FillType.NotDefined, table[3, 3].CellFormat.FillFormat.FillType);
        Assert.Equal((12.0, 7.2), (table[1, 3].MarginLeft, table[1, 3].MarginRight));
        Assert.Equal(TextAnchorType.Bottom, table[2, 3].TextAnchorType);
        Assert.Equal(TextVerticalType.Vertical270, table[0, 4].TextVerticalType);
        Assert.Equal((true, true, true, false, true, false), (table.FirstRow, table.HorizontalBanding, table.LastRow, table.FirstCol, table.VerticalBanding, table.RightToLeft));
        Assert.Equal(TableStylePreset.LightStyle2Accent3, table.StylePreset);
    }

    [LibreOfficeTests.SkippableFactIfNoSoffice]
    public void TableDeckConvertsWithLibreOffice() => Assert.Equal(1, LibreOfficeTests.PdfPages(TableDeck()));

    [Fact]
    public void NewTableHasTheShapeOfItsArgumentsAndEmptyCells()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var table = slide.Shapes.AddTable(10, 20, new[] { 50.5, 70.25 }, new[] { 20.0, 30, 40 });
            Assert.Same(table, slide.Shapes[0]);
            Assert.Equal((2, 3), (table.Columns.Count, table.Rows.Count));
            Assert.Equal((120.75f, 90f), (table.Width, table.Height));
            Assert.All(table.Rows, r => Assert.All(r, c => Assert.Equal("", c.TextFrame.Text)));
            Assert.Equal(TableStylePreset.MediumStyle2Accent1, table.StylePreset);
            Assert.Equal((true, true), (table.FirstRow, table.HorizontalBanding));
            Assert.Same(table[1, 2], table.Rows[2][1]);
            Assert.Same(table[1, 2], table.Columns[1][2]);
            var cell = table[1, 2];
            Assert.Equal((50.5, 50.0, 70.25, 40.0), (cell.OffsetX, cell.OffsetY, cell.Width, cell.Height));
            Assert.Equal((7.2, 7.2, 3.6, 3.6), (cell.MarginLeft, cell.MarginRight, cell.MarginTop, cell.MarginBottom));
            Assert.Equal((TextAnchorType.NotDefined, TextVerticalType.NotDefined), (cell.TextAnchorType, cell.TextVerticalType));

            table.Columns[0].Width = 60;
            table.Rows[1].MinimalHeight = 10;
            Assert.Equal((130.25f, 70f), (table.Width, table.Height));

            Assert.Throws<ArgumentException>(() => slide.Shapes.AddTable(0, 0, Array.Empty<double>(), new[] { 10.0 }));
            Assert.Throws<ArgumentOutOfRangeException>(() => slide.Shapes.AddTable(0, 0, new[] { 10.0, 0 }, new[] { 10.0 }));
            Assert.Throws<ArgumentOutOfRangeException>(() => slide.Shapes.AddTable(0, 0, new[] { 10.0 }, new[] { double.NaN }));
            Assert.Throws<ArgumentNullException>(() => slide.Shapes.AddTable(0, 0, null!, new[] { 10.0 }));
            Assert.Throws<ArgumentOutOfRangeException>(() => table[2, 0]);
            Assert.Throws<ArgumentOutOfRangeException>(() => table[0, -1]);
            Assert.Equal(1, slide.Shapes.Count);
        }
    }

    [Fact]
    public void InconsistentTablesReadAsSingleCellsAndRefuseEditsClearly()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var table = Grid(slide, 3, 2);
            var tbl = ((Table)table).Tbl;
            var rows = tbl.Elements<A.TableRow>().ToList();
            // A span that its neighbours do not confirm, and a merge flag with no span before it.
            rows[0].Elements<A.TableCell>().First().GridSpan = 9;
            rows[1].Elements<A.TableCell>().ElementAt(1).HorizontalMerge = true;
            Assert.All(table.Rows.SelectMany(r => r), c => Assert.Equal((false, 1, 1), (c.IsMergedCell, c.ColSpan, c.RowSpan)));
            Assert.Equal("11", table[1, 1].TextFrame.Text);
            rows[1].Elements<A.TableCell>().Last().Remove();
            Assert.Equal(2, table.Rows[1].Count);
            var ex = Assert.Throws<PptxEditException>(() => table.Rows.Add(10));
            Assert.Contains("row 1 has 2 cells for 3 grid columns", ex.Message);
            Assert.Throws<PptxEditException>(() => table.MergeCells(table[0, 0], table[1, 0], false));
            // A table without rows gets a plain row.
            foreach (var row in rows)
                row.Remove();
            Assert.Equal(3, table.Rows.Add(20).Count);
            Assert.Equal((300f, 20f), (table.Width, table.Height));
        }
    }

    [Fact]
    public void MergeWritesSpansAsEditorsDoAndJoinsText()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var table = Grid(slide, 3, 3);
            table.MergeCells(table[2, 2], table[1, 1], false);
            var rows = TableXml(table).Elements().Where(e => e.Name.LocalName == "tr").Select(tr => tr.Elements().Where(e => e.Name.LocalName == "tc").Select(Attrs).ToList()).ToList();
            Assert.Equal(new[] { "rowSpan=2 gridSpan=2", "rowSpan=2 hMerge=1" }, rows[1].Skip(1));
            Assert.Equal(new[] { "gridSpan=2 vMerge=1", "hMerge=1 vMerge=1" }, rows[2].Skip(1));
            Assert.All(rows[0].Concat(rows[1].Take(1)).Concat(rows[2].Take(1)), a => Assert.Equal("", a));
            // Every covered cell stands for the merged one.
            foreach (var (c, r) in new[] { (1, 1), (2, 1), (1, 2), (2, 2) })
            {
                var cell = table[c, r];
                Assert.Equal((true, 1, 1, 2, 2), (cell.IsMergedCell, cell.FirstRowIndex, cell.FirstColumnIndex, cell.RowSpan, cell.ColSpan));
                Assert.Equal((100.0, 40.0, 200.0, 80.0), (cell.OffsetX, cell.OffsetY, cell.Width, cell.Height));
                Assert.Equal("11\n12\n21\n22", cell.TextFrame.Text);
            }
            table[2, 2].TextFrame.Text = "merged";
            Assert.Equal("merged", table[1, 1].TextFrame.Text);
            Assert.False(table[0, 1].IsMergedCell);
            // Merging a cell with itself, or with a cell already in its merge, changes nothing.
            table.MergeCells(table[0, 0], table[0, 0], false);
            table.MergeCells(table[1, 1], table[2, 2], false);
            Assert.Equal("1,1,2,2", Layout(table));
        }
    }

    [Fact]
    public void MergingAcrossAMergedCellNeedsAllowSplitting()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var table = Grid(slide, 4, 4);
            table.MergeCells(table[1, 1], table[2, 2], false);
            var ex = Assert.Throws<ArgumentException>(() => table.MergeCells(table[0, 0], table[3, 1], false));
            Assert.Contains("merging rows 0..1, columns 0..3 would cut the merged cell at rows 1..2, columns 1..2", ex.Message);
            Assert.Contains("allowSplitting", ex.Message);
            Assert.Equal("1,1,2,2", Layout(table));
            // A merge that holds the whole merged cell takes it in without splitting.
            table.MergeCells(table[0, 1], table[3, 2], false);
            Assert.Equal("1,0,2,4", Layout(table));
            Assert.Equal("10\n11\n12\n21\n22\n13\n20\n23", table[2, 2].TextFrame.Text);
            // With splitting allowed the cut merge falls apart into single cells.
            table.MergeCells(table[0, 0], table[0, 3], true);
            Assert.Equal("0,0,4,1", Layout(table));
            Assert.False(table[2, 1].IsMergedCell);
            Assert.Equal("00\n10\n11\n12\n21\n22\n13\n20\n23\n30", table[0, 0].TextFrame.Text);
            var other = Grid(slide, 2, 2);
            Assert.Throws<ArgumentException>(() => table.MergeCells(table[0, 0], other[1, 1], false));
        }
    }

    [Fact]
    public void SplittingInsideAColumnDividesItAndNeighboursSpanBothHalves()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var table = Grid(slide, 3, 3);
            var right = table[1, 1].SplitByWidth(25);
            Assert.Equal(4, table.Columns.Count);
            Assert.Equal(new[] { 100.0, 25, 75, 100 }, table.Columns.Select(c => c.Width));
            Assert.Equal(300f, table.Width, 3);
            Assert.Same(right, table[2, 1]);
            Assert.Equal(("11", "", 75.0), (table[1, 1].TextFrame.Text, right.TextFrame.Text, right.Width));
            Assert.Equal("0,1,1,2 2,1,1,2", Layout(table));
            Assert.Equal("01", table[2, 0].TextFrame.Text);

            var lower = table[3, 0].SplitByHeight(10);
            Assert.Equal(new[] { 10.0, 30, 40, 40 }, table.Rows.Select(r => r.Height));
            Assert.Equal(120f, table.Height, 3);
            Assert.Same(lower, table[3, 1]);
            Assert.Equal("0,0,2,1 0,1,2,2 3,1,1,2", Layout(table));
            // Splitting a merged cell where a grid line lies adds no column or row.
            var back = table[1, 0].SplitByWidth(25);
            Assert.Equal((4, 4), (table.Columns.Count, table.Rows.Count));
            Assert.Equal((2, 1, 2), (back.FirstColumnIndex, back.ColSpan, back.RowSpan));
            Assert.Equal("0,0,2,1 0,1,2,1 0,2,2,1 3,1,1,2", Layout(table));
            var bottom = table[0, 0].SplitByRowSpan(1);
            Assert.Equal((1, 0, false), (bottom.FirstRowIndex, bottom.FirstColumnIndex, bottom.IsMergedCell));

            Assert.Throws<ArgumentOutOfRangeException>(() => table[0, 3].SplitByWidth(100));
            Assert.Throws<ArgumentOutOfRangeException>(() => table[0, 3].SplitByHeight(0));
            Assert.Throws<ArgumentOutOfRangeException>(() => table[0, 3].SplitByColSpan(1));
            var errors = TestFiles.Validate(TestFiles.SaveToBytes(pres));
            Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        }
    }

    [Fact]
    public void SplitPartsTakeTheFormatOfTheSplitCell()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var table = Grid(slide, 2, 2);
            table.MergeCells(table[0, 0], table[1, 0], false);
            table[0, 0].CellFormat.FillFormat.FillType = FillType.Solid;
            table[0, 0].CellFormat.FillFormat.SolidFillColor.Color = Color.Teal;
            table[0, 0].MarginTop = 9;
            var right = table[0, 0].SplitByColSpan(1);
            Assert.Equal((FillType.Solid, Color.Teal.ToArgb(), 9.0), (right.CellFormat.FillFormat.FillType, right.CellFormat.FillFormat.SolidFillColor.Color.ToArgb(), right.MarginTop));
            Assert.Equal("", Layout(table));
        }
    }

    [Fact]
    public void RowsAndColumnsInsideMergesGrowThemAndRemovingTheFirstMovesTheText()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var table = Grid(slide, 3, 3);
            table.MergeCells(table[0, 0], table[0, 1], false);
            table.MergeCells(table[1, 2], table[2, 2], false);
            table.Rows.Insert(1, 15);
            Assert.Equal("0,0,3,1 3,1,1,2", Layout(table));
            // The row copies the format of the row above; its cells are empty.
            Assert.Equal(new[] { "", "" }, table.Rows[1].Skip(1).Select(c => c.TextFrame.Text));
            table.Columns.Insert(2, 20);
            Assert.Equal("0,0,3,1 3,1,1,3", Layout(table));
            Assert.Equal(4, table.Rows[3].Count);
            table.Rows.Insert(4, 15);
            // A new last row copies the last row's one-row merges.
            Assert.Equal("0,0,3,1 3,1,1,3 4,1,1,3", Layout(table));

            table.Rows.RemoveAt(0);
            Assert.Equal("0,0,2,1 2,1,1,3 3,1,1,3", Layout(table));
            Assert.Equal("00\n10", table[0, 1].TextFrame.Text);
            table.Columns.RemoveAt(1);
            Assert.Equal("0,0,2,1 2,1,1,2 3,1,1,2", Layout(table));
            Assert.Equal("21\n22", table[2, 2].TextFrame.Text);
            table.Columns.Remove(table.Columns[1]);
            Assert.Equal("0,0,2,1", Layout(table));
            Assert.Equal("21\n22", table[1, 2].TextFrame.Text);
            Assert.Equal(new[] { 100.0, 100 }, table.Columns.Select(c => c.Width));
            Assert.Equal(200f, table.Width, 3);
            Assert.Equal(110f, table.Height, 3);

            var clone = table.Rows.AddClone(table.Rows[0]);
            // Row 0 is now the row inserted empty, its first cell the merged cell's new first cell.
            Assert.Equal(new[] { "00\n10", "" }, clone.Select(c => c.TextFrame.Text));
            Assert.Equal(table.Rows.Count - 1, table.Rows.IndexOf(clone));
            var column = table.Columns.InsertClone(0, table.Columns[1]);
            Assert.Equal(0, table.Columns.IndexOf(column));
            Assert.Equal(new[] { "", "12", "21\n22", "", "" }, column.Select(c => c.TextFrame.Text));

            while (table.Rows.Count > 1)
                table.Rows.RemoveAt(0);
            Assert.Throws<PptxEditException>(() => table.Rows.RemoveAt(0));
            Assert.Throws<ArgumentOutOfRangeException>(() => table.Rows.Insert(5, 10));
            Assert.Throws<ArgumentException>(() => table.Rows.Remove(Grid(slide, 1, 1).Rows[0]));
            var errors = TestFiles.Validate(TestFiles.SaveToBytes(pres));
            Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        }
    }

    [Fact]
    public void StylePresetsMapToDistinctIdsAndUnknownIdsReadAsCustom()
    {
        var presets = Enum.GetValues<TableStylePreset>().Where(p => p > TableStylePreset.None).ToList();
        Assert.Equal(presets.Count, TableStyleIds.Count);
        Assert.Equal(presets.Count, presets.Select(TableStyleIds.IdOf).Distinct(StringComparer.OrdinalIgnoreCase).Count());
        Assert.All(presets, p => Assert.Equal(p, TableStyleIds.PresetOf(TableStyleIds.IdOf(p))));
        // Ids that the corpus decks' style parts name.
        Assert.Equal(TableStylePreset.MediumStyle2Accent4, TableStyleIds.PresetOf("{00A15C55-8517-42AA-B614-E9B94910E393}"));
        Assert.Equal(TableStylePreset.MediumStyle4, TableStyleIds.PresetOf("{d7ac3cca-c797-4891-be02-d94e43425b78}"));
        Assert.Equal(TableStylePreset.NoStyleTableGrid, TableStyleIds.PresetOf("{5940675A-B579-460E-94D1-54222C63F5DA}"));

        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var table = Grid(slide, 1, 1);
            table.StylePreset = TableStylePreset.None;
            Assert.Equal(TableStylePreset.None, table.StylePreset);
            Assert.DoesNotContain("tableStyleId", ((Table)table).Tbl.OuterXml);
            table.StylePreset = TableStylePreset.DarkStyle1Accent6;
            Assert.Equal(TableStylePreset.DarkStyle1Accent6, table.StylePreset);
            Assert.Throws<ArgumentOutOfRangeException>(() => table.StylePreset = TableStylePreset.Custom);
            ((Table)table).Tbl.Descendants<A.TableStyleId>().Single().Text = "{80500D46-97BE-4507-B105-7B12F621EFCF}";
            Assert.Equal(TableStylePreset.Custom, table.StylePreset);
        }
    }

    [Fact]
    public void CellTextTakesTheMastersStyleForOtherText()
    {
        byte[] bytes;
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            Grid(slide, 2, 2);
            bytes = TestFiles.SaveToBytes(pres);
        }
        using (var ms = new MemoryStream())
        {
            ms.Write(bytes);
            using (var doc = PresentationDocument.Open(ms, true))
            {
                var other = doc.PresentationPart!.SlideMasterParts.First().SlideMaster.TextStyles!.OtherStyle!;
                var level = other.GetFirstChild<A.Level1ParagraphProperties>() ?? other.AppendChild(new A.Level1ParagraphProperties());
                var def = level.GetFirstChild<A.DefaultRunProperties>() ?? level.AppendChild(new A.DefaultRunProperties());
                def.FontSize = 2600;
            }
            bytes = ms.ToArray();
        }
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        var table = (ITable)back.Slides[0].Shapes[0];
        var portion = table[1, 1].TextFrame.Paragraphs[0].Portions[0];
        Assert.Equal(26f, portion.PortionFormat.GetEffective().FontHeight);
        Assert.NotNull(table[1, 1].TextFrame.Paragraphs[0].ParagraphFormat.GetEffective());
        Assert.NotNull(table[1, 1].TextFrame.TextFrameFormat.GetEffective());
    }

    [Fact]
    public void TablesSurviveCloningAndGraphicFramesWithoutATableStayGraphicalObjects()
    {
        var (pres, slide) = BlankSlide();
        using (pres)
        {
            var table = Grid(slide, 2, 2);
            table.MergeCells(table[0, 0], table[1, 0], false);
            var copy = Assert.IsType<Table>(slide.Shapes.AddClone(table));
            Assert.Equal(("0001", "0,0,1,2"), (copy[0, 0].TextFrame.Text.Replace("\n", ""), Layout(copy)));
            copy[0, 1].TextFrame.Text = "changed";
            Assert.Equal("10", table[0, 1].TextFrame.Text);
            Assert.NotEqual(table.UniqueId, copy.UniqueId);
        }
        using IPresentation chart = new Presentation(TestFiles.CorpusFile("python-pptx/shp-access-chart.pptx"));
        var frames = chart.Slides.SelectMany(s => s.Shapes).OfType<IGraphicalObject>().ToList();
        Assert.Contains(frames, f => f is not ITable);
    }

    // Every table of every corpus deck (slides, layouts, masters, groups) reads: rows, columns,
    // cells, spans, geometry, text and formats; the known tables give the values of their XML.
    [Fact]
    public void EveryCorpusTableReads()
    {
        int tables = 0, merged = 0;
        foreach (var (deck, pres) in TestFiles.LoadableCorpusDecks())
        {
            var slides = TestFiles.AllSlides(pres);
            foreach (var s in slides)
                foreach (var table in TestFiles.AllShapes(s.Shapes).OfType<ITable>())
                {
                    tables++;
                    _ = (table.StylePreset, table.FirstRow, table.LastRow, table.FirstCol, table.LastCol, table.HorizontalBanding, table.VerticalBanding, table.RightToLeft);
                    Assert.All(table.Columns, c => Assert.True(c.Width >= 0));
                    foreach (var row in table.Rows)
                    {
                        Assert.True(row.Height >= 0);
                        foreach (var cell in row)
                        {
                            Assert.InRange(cell.RowSpan, 1, table.Rows.Count);
                            Assert.InRange(cell.ColSpan, 1, table.Columns.Count);
                            merged += cell.IsMergedCell ? 1 : 0;
                            _ = (cell.TextFrame.Text, cell.Width, cell.Height, cell.OffsetX, cell.OffsetY, cell.MarginLeft, cell.MarginBottom, cell.TextAnchorType, cell.TextVerticalType);
                            _ = (cell.CellFormat.FillFormat.FillType, cell.CellFormat.BorderLeft.Width, cell.CellFormat.BorderDiagonalUp.DashStyle);
                            foreach (var p in cell.TextFrame.Paragraphs)
                                foreach (var portion in p.Portions)
                                    _ = portion.PortionFormat.GetEffective().FontHeight;
                        }
                    }
                }
        }
        Assert.True(tables >= 20, $"only {tables} tables found");
        Assert.True(merged >= 20, $"only {merged} merged cells found");

        using IPresentation known = new Presentation(TestFiles.CorpusFile("python-pptx/tbl-cell.pptx"));
        var t = (ITable)known.Slides[0].Shapes[0];
        Assert.Equal((4, 4, TableStylePreset.MediumStyle4), (t.Columns.Count, t.Rows.Count, t.StylePreset));
        Assert.Equal((14.4, 28.8, 21.6, 36.0), (t[0, 0].MarginLeft, t[0, 0].MarginRight, t[0, 0].MarginTop, t[0, 0].MarginBottom));
        Assert.Equal((TextAnchorType.NotDefined, TextAnchorType.Center, TextAnchorType.Bottom), (t[1, 0].TextAnchorType, t[2, 0].TextAnchorType, t[3, 0].TextAnchorType));
        Assert.Equal("vert anchor is inherited", t[1, 0].TextFrame.Text);
        Assert.Equal(29.2, t.Rows[1].Height, 3);
        using IPresentation spans = new Presentation(TestFiles.CorpusFile("poi/table_test2.pptx"));
        var st = spans.Slides.SelectMany(s => s.Shapes).OfType<ITable>().First();
        Assert.Contains(st.Rows.SelectMany(r => r), c => c.RowSpan == 3);
        Assert.Contains(st.Rows.SelectMany(r => r), c => c.ColSpan == 2);
    }
}
