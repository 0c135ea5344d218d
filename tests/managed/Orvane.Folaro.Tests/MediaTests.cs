using System;
using System.Collections.Generic;
using System.IO;
using System.IO.Compression;
using System.Linq;
using System.Text;
using System.Xml.Linq;
using Orvane.Marel;
using Orvane.Marel.Imaging;
using Xunit;

namespace Orvane.Folaro.Tests;

// Pictures and media: the image, audio and video collections, picture frames with crop and
// tile, audio and video frames, and the SVG picture with its PNG rendition.
public class MediaTests
{
    private static readonly XNamespace A = "http://schemas.openxmlformats.org/drawingml/2006/main";
    private static readonly XNamespace Rel = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    private static readonly XNamespace PkgRel = "http://schemas.openxmlformats.org/package/2006/relationships";
    private static readonly XNamespace Asvg = "http://schemas.microsoft.com/office/drawing/2016/SVG/main";

    // --- test images made here --------------------------------------------------------

    internal static byte[] Raster(int width, int height, ImageFormat format, Color color)
    {
        using var bitmap = new Bitmap(width, height);
        using (var g = Graphics.FromImage(bitmap))
            g.Clear(color);
        using var ms = new MemoryStream();
        bitmap.Save(ms, format);
        return ms.ToArray();
    }

    internal static readonly byte[] Gif = Convert.FromBase64String("R0lGODlhAQABAIAAAAAAAP///yH5BAEAAAAALAAAAAABAAEAAAICRAEAOw==");

    // An uncompressed 8-bit grey TIFF with its tags in the first IFD.
    internal static byte[] Tiff(int width, int height)
    {
        var ms = new MemoryStream();
        var w = new BinaryWriter(ms);
        w.Write(Encoding.ASCII.GetBytes("II"));
        w.Write((short)42);
        w.Write(8);
        var tags = new (short Tag, short Type, int Value)[]
        {
            (256, 3, width), (257, 3, height), (258, 3, 8), (259, 3, 1), (262, 3, 1),
            (273, 4, 8 + 2 + 8 * 12 + 4), (278, 3, height), (279, 4, width * height),
        };
        w.Write((short)tags.Length);
        foreach (var (tag, type, value) in tags)
        {
            w.Write(tag);
            w.Write(type);
            w.Write(1);
            if (type == 3)
            {
                w.Write((short)value);
                w.Write((short)0);
            }
            else
                w.Write(value);
        }
        w.Write(0);
        for (int i = 0; i < width * height; i++)
            w.Write((byte)(i * 37));
        return ms.ToArray();
    }

    internal static byte[] Svg(int width, int height) => Encoding.UTF8.GetBytes(
        $"<?xml version=\"1.0\"?>\n<!-- test -->\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"{width}\" height=\"{height}\"><rect width=\"10\" height=\"10\" fill=\"red\"/></svg>");

    internal static byte[] Wav()
    {
        var ms = new MemoryStream();
        var w = new BinaryWriter(ms);
        int samples = 800;
        w.Write(Encoding.ASCII.GetBytes("RIFF"));
        w.Write(36 + samples);
        w.Write(Encoding.ASCII.GetBytes("WAVEfmt "));
        w.Write(16);
        w.Write((short)1);
        w.Write((short)1);
        w.Write(8000);
        w.Write(8000);
        w.Write((short)1);
        w.Write((short)8);
        w.Write(Encoding.ASCII.GetBytes("data"));
        w.Write(samples);
        for (int i = 0; i < samples; i++)
            w.Write((byte)(128 + 60 * Math.Sin(i / 4.0)));
        return ms.ToArray();
    }

    // An ISO media file's type box followed by an empty free box: enough to be told apart as MP4.
    internal static byte[] Mp4() =>
        new byte[] { 0, 0, 0, 24 }.Concat(Encoding.ASCII.GetBytes("ftypisom")).Concat(new byte[] { 0, 0, 2, 0 })
            .Concat(Encoding.ASCII.GetBytes("isomiso2")).Concat(new byte[] { 0, 0, 0, 8 }).Concat(Encoding.ASCII.GetBytes("free")).ToArray();

    // --- the deck with every picture and media kind ---------------------------------------

    internal static byte[] MediaDeck()
    {
        using IPresentation pres = new Presentation();
        var images = new[]
        {
            pres.Images.AddImage(Raster(40, 30, ImageFormat.Png, Color.Red)),
            pres.Images.AddImage(Raster(41, 31, ImageFormat.Jpeg, Color.Green)),
            pres.Images.AddImage(Gif),
            pres.Images.AddImage(Raster(42, 32, ImageFormat.Bmp, Color.Blue)),
            pres.Images.AddImage(Tiff(6, 4)),
            pres.Images.AddImage(Svg(120, 80)),
        };
        foreach (var image in images)
        {
            var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides[6]);
            slide.Shapes.AddPictureFrame(ShapeType.Rect, 50, 60, 200, 150, image);
        }
        var crop = pres.Slides.AddEmptySlide(pres.LayoutSlides[6]);
        var cropped = crop.Shapes.AddPictureFrame(ShapeType.Ellipse, 10, 10, 300, 200, images[0]);
        cropped.PictureFormat.CropLeft = 0.1f;
        cropped.PictureFormat.CropTop = 0.05f;
        cropped.PictureFormat.CropRight = 0.2f;
        cropped.PictureFormat.CropBottom = 0.125f;
        var tiled = crop.Shapes.AddPictureFrame(ShapeType.Rect, 320, 10, 300, 200, images[1]);
        tiled.PictureFormat.PictureFillMode = PictureFillMode.Tile;
        tiled.PictureFormat.TileScaleX = 0.5f;
        tiled.PictureFormat.TileScaleY = 0.25f;
        tiled.PictureFormat.TileOffsetX = 12f;
        tiled.PictureFormat.TileOffsetY = 6f;
        tiled.PictureFormat.TileAlignment = RectangleAlignment.Center;
        tiled.PictureFormat.TileFlip = TileFlip.FlipBoth;
        var media = pres.Slides.AddEmptySlide(pres.LayoutSlides[6]);
        media.Shapes.AddAudioFrameEmbedded(20, 20, 48, 48, pres.Audios.AddAudio(Wav()));
        media.Shapes.AddVideoFrame(100, 20, 320, 180, pres.Videos.AddVideo(Mp4()));
        media.Shapes.AddVideoFrame(100, 220, 320, 180, "https://example.com/clip.mp4");
        return TestFiles.SaveToBytes(pres);
    }

    [Fact]
    public void MediaDeckValidatesAndReadsBack()
    {
        var bytes = MediaDeck();
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));

        using IPresentation back = new Presentation(new MemoryStream(bytes));
        Assert.Equal(8, back.Slides.Count);
        var expected = new[]
        {
            ("image/png", 40, 30), ("image/jpeg", 41, 31), ("image/gif", 1, 1), ("image/bmp", 42, 32), ("image/tiff", 6, 4), ("image/svg+xml", 120, 80),
        };
        for (int i = 0; i < expected.Length; i++)
        {
            var frame = Assert.IsAssignableFrom<IPictureFrame>(back.Slides[i].Shapes[0]);
            var image = frame.PictureFormat.Picture.Image!;
            Assert.Equal(expected[i], (image.ContentType, image.Width, image.Height));
            Assert.Equal((50f, 60f, 200f, 150f), (frame.X, frame.Y, frame.Width, frame.Height));
            Assert.Equal(PictureFillMode.Stretch, frame.PictureFormat.PictureFillMode);
        }
        Assert.Equal(Tiff(6, 4), ((IPictureFrame)back.Slides[4].Shapes[0]).PictureFormat.Picture.Image!.BinaryData);
        Assert.Equal(Svg(120, 80), ((IPictureFrame)back.Slides[5].Shapes[0]).PictureFormat.Picture.Image!.BinaryData);
        // Six images and the audio icon and video poster; the SVG's rendition is not listed.
        Assert.Equal(8, back.Images.Count);
        Assert.Equal(new[] { "image/png", "image/jpeg", "image/gif", "image/bmp", "image/tiff", "image/svg+xml" }.OrderBy(s => s),
            back.Images.Where(i => i.Width != 320 && i.Width != 64).Select(i => i.ContentType).OrderBy(s => s));

        var cropped = (IPictureFrame)back.Slides[6].Shapes[0];
        Assert.Equal(ShapeType.Ellipse, cropped.ShapeType);
        Assert.Equal((0.1f, 0.05f, 0.2f, 0.125f), (cropped.PictureFormat.CropLeft, cropped.PictureFormat.CropTop, cropped.PictureFormat.CropRight, cropped.PictureFormat.CropBottom));
        var tiled = ((IPictureFrame)back.Slides[6].Shapes[1]).PictureFormat;
        Assert.Equal((PictureFillMode.Tile, 0.5f, 0.25f, 12f, 6f, RectangleAlignment.Center, TileFlip.FlipBoth),
            (tiled.PictureFillMode, tiled.TileScaleX, tiled.TileScaleY, tiled.TileOffsetX, tiled.TileOffsetY, tiled.TileAlignment, tiled.TileFlip));

        var shapes = back.Slides[7].Shapes;
        var audio = Assert.IsAssignableFrom<IAudioFrame>(shapes[0]);
        Assert.Equal("audio/wav", audio.EmbeddedAudio!.ContentType);
        Assert.Equal(Wav(), audio.EmbeddedAudio.BinaryData);
        Assert.Equal(string.Empty, audio.LinkPathLong);
        var video = Assert.IsAssignableFrom<IVideoFrame>(shapes[1]);
        Assert.Equal("video/mp4", video.EmbeddedVideo!.ContentType);
        Assert.Equal(Mp4(), video.EmbeddedVideo.BinaryData);
        Assert.Equal("image/png", video.PictureFormat.Picture.Image!.ContentType);
        var linked = Assert.IsAssignableFrom<IVideoFrame>(shapes[2]);
        Assert.Null(linked.EmbeddedVideo);
        Assert.Equal("https://example.com/clip.mp4", linked.LinkPathLong);
        Assert.Equal(1, back.Audios.Count);
        Assert.Equal(1, back.Videos.Count);
    }

    [LibreOfficeTests.SkippableFactIfNoSoffice]
    public void MediaDeckConvertsToPdf()
    {
        Assert.Equal(8, LibreOfficeTests.PdfPages(MediaDeck()));
    }

    // --- the rules that are easy to get wrong ----------------------------------------------

    [Fact]
    public void TheSameBytesAreOneImageAndOnePartHoweverOftenTheyAreShown()
    {
        using IPresentation pres = new Presentation();
        var png = Raster(8, 8, ImageFormat.Png, Color.Orange);
        for (int i = 0; i < 100; i++)
        {
            var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides[6]);
            slide.Shapes.AddPictureFrame(ShapeType.Rect, 0, 0, 10, 10, pres.Images.AddImage(png));
        }
        Assert.Same(pres.Images.AddImage(png), pres.Images.AddImage(new MemoryStream(png)));
        Assert.Equal(1, pres.Images.Count);
        var bytes = TestFiles.SaveToBytes(pres);
        Assert.Single(TestFiles.PartNames(bytes), n => n.StartsWith("ppt/media/", StringComparison.Ordinal));

        // A loaded deck's images take part in the same deduplication.
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        var again = back.Images.AddImage(png);
        Assert.Same(back.Images[0], again);
        back.Slides[0].Shapes.AddPictureFrame(ShapeType.Rect, 0, 0, 5, 5, again);
        Assert.Single(TestFiles.PartNames(TestFiles.SaveToBytes(back)), n => n.StartsWith("ppt/media/", StringComparison.Ordinal));
    }

    [Fact]
    public void FormatsAreToldFromTheBytesAndOthersAreRefused()
    {
        using IPresentation pres = new Presentation();
        var drawn = pres.Images.AddImage((Orvane.Marel.Image)new Bitmap(7, 5));
        Assert.Equal(("image/png", 7, 5), (drawn.ContentType, drawn.Width, drawn.Height));
        using (var decoded = pres.Images.AddImage(Raster(9, 4, ImageFormat.Jpeg, Color.Gray)).Image)
            Assert.Equal((9, 4), (decoded.Width, decoded.Height));
        // An SVG's size comes from its viewBox when it declares no width and height; it decodes as its rendition.
        var boxed = pres.Images.AddImage(Encoding.UTF8.GetBytes("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 300 100'/>"));
        Assert.Equal(("image/svg+xml", 300, 100), (boxed.ContentType, boxed.Width, boxed.Height));
        using (var rendition = boxed.Image)
            Assert.Equal((300, 100), (rendition.Width, rendition.Height));
        Assert.Throws<NotSupportedException>(() => pres.Images.AddImage(Tiff(2, 2)).Image);

        var ex = Assert.Throws<ArgumentException>(() => pres.Images.AddImage(Encoding.ASCII.GetBytes("<html><body/></html>")));
        Assert.Contains("PNG, JPEG, GIF, BMP, TIFF or SVG", ex.Message);
        Assert.Throws<ArgumentException>(() => pres.Images.AddImage(Array.Empty<byte>()));
        Assert.Throws<ArgumentException>(() => pres.Audios.AddAudio(Mp4()));
        Assert.Throws<ArgumentException>(() => pres.Videos.AddVideo(Wav()));
        Assert.Equal(4, pres.Images.Count);
    }

    [Fact]
    public void AnSvgPictureShowsItsPngRenditionAndNamesTheSvgInTheExtension()
    {
        using IPresentation pres = new Presentation();
        var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides[6]);
        slide.Shapes.AddPictureFrame(ShapeType.Rect, 0, 0, 120, 80, pres.Images.AddImage(Svg(120, 80)));
        var bytes = TestFiles.SaveToBytes(pres);
        using var zip = new ZipArchive(new MemoryStream(bytes));
        var xml = XDocument.Load(zip.GetEntry("ppt/slides/slide1.xml")!.Open());
        var rels = XDocument.Load(zip.GetEntry("ppt/slides/_rels/slide1.xml.rels")!.Open()).Root!.Elements(PkgRel + "Relationship")
            .ToDictionary(r => (string)r.Attribute("Id")!, r => (string)r.Attribute("Target")!);
        var blip = xml.Descendants(A + "blip").Single();
        Assert.EndsWith(".png", rels[(string)blip.Attribute(Rel + "embed")!]);
        var ext = blip.Element(A + "extLst")!.Element(A + "ext")!;
        Assert.Equal("{96DAC541-7B7A-43D3-8B79-37D633B846F1}", (string)ext.Attribute("uri")!);
        var svgTarget = rels[(string)ext.Element(Asvg + "svgBlip")!.Attribute(Rel + "embed")!];
        Assert.EndsWith(".svg", svgTarget);
        Assert.Equal(Svg(120, 80), Read(zip, svgTarget));
        using var png = new Bitmap(new MemoryStream(Read(zip, rels[(string)blip.Attribute(Rel + "embed")!])));
        Assert.Equal((120, 80), (png.Width, png.Height));

        // Showing a raster image in its place takes the SVG extension away.
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        var frame = (IPictureFrame)back.Slides[0].Shapes[0];
        frame.PictureFormat.Picture.Image = back.Images.AddImage(Gif);
        var after = XDocument.Load(new ZipArchive(new MemoryStream(TestFiles.SaveToBytes(back))).GetEntry("ppt/slides/slide1.xml")!.Open());
        Assert.Empty(after.Descendants(Asvg + "svgBlip"));
        Assert.Equal("image/gif", ((IPictureFrame)back.Slides[0].Shapes[0]).PictureFormat.Picture.Image!.ContentType);
    }

    [Fact]
    public void CropsAreStoredInThousandthsOfAPercentAndZeroRemovesThem()
    {
        using IPresentation pres = new Presentation();
        var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides[6]);
        var frame = slide.Shapes.AddPictureFrame(ShapeType.Rect, 0, 0, 10, 10, pres.Images.AddImage(Gif));
        frame.PictureFormat.CropLeft = 0.125f;
        frame.PictureFormat.CropBottom = -0.25f;
        var srcRect = SlideXml(pres).Descendants(A + "srcRect").Single();
        Assert.Equal(("12500", "-25000"), ((string)srcRect.Attribute("l")!, (string)srcRect.Attribute("b")!));
        frame.PictureFormat.CropLeft = 0;
        frame.PictureFormat.CropBottom = 0;
        Assert.Empty(SlideXml(pres).Descendants(A + "srcRect"));
        Assert.Throws<ArgumentOutOfRangeException>(() => frame.PictureFormat.CropTop = 1f);
        Assert.Throws<ArgumentOutOfRangeException>(() => frame.PictureFormat.TileScaleX = 0f);
        // A tile property makes the picture tiled; stretch again drops the tile.
        frame.PictureFormat.TileOffsetX = 3;
        Assert.Equal(PictureFillMode.Tile, frame.PictureFormat.PictureFillMode);
        frame.PictureFormat.PictureFillMode = PictureFillMode.Stretch;
        Assert.Equal((TileFlip.NotDefined, 0f), (frame.PictureFormat.TileFlip, frame.PictureFormat.TileOffsetX));
    }

    [Fact]
    public void ReplaceImageChangesEveryPlaceThatShowsIt()
    {
        using IPresentation pres = new Presentation();
        var image = pres.Images.AddImage(Raster(4, 4, ImageFormat.Png, Color.Red));
        var one = pres.Slides.AddEmptySlide(pres.LayoutSlides[6]).Shapes.AddPictureFrame(ShapeType.Rect, 0, 0, 10, 10, image);
        var two = pres.Slides.AddEmptySlide(pres.LayoutSlides[6]).Shapes.AddPictureFrame(ShapeType.Rect, 0, 0, 10, 10, image);
        var jpeg = Raster(6, 3, ImageFormat.Jpeg, Color.Blue);
        image.ReplaceImage(jpeg);
        Assert.Equal(("image/jpeg", 6, 3), (image.ContentType, image.Width, image.Height));
        var bytes = TestFiles.SaveToBytes(pres);
        Assert.Empty(TestFiles.Validate(bytes));
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        foreach (var slide in back.Slides)
            Assert.Equal(jpeg, ((IPictureFrame)slide.Shapes[0]).PictureFormat.Picture.Image!.BinaryData);
        Assert.Single(TestFiles.PartNames(bytes), n => n.StartsWith("ppt/media/", StringComparison.Ordinal));
        Assert.Throws<ArgumentException>(() => image.ReplaceImage(Svg(10, 10)));
        Assert.Same(one.PictureFormat.Picture.Image, two.PictureFormat.Picture.Image);
    }

    [Fact]
    public void ReplacingAPlacedSvgRedrawsTheRenditionThePicturesShow()
    {
        using IPresentation pres = new Presentation();
        var svg = pres.Images.AddImage(Svg(40, 20));
        pres.Slides.AddEmptySlide(pres.LayoutSlides[6]).Shapes.AddPictureFrame(ShapeType.Rect, 0, 0, 40, 20, svg);
        svg.ReplaceImage(Svg(30, 60));
        var bytes = TestFiles.SaveToBytes(pres);
        using var zip = new ZipArchive(new MemoryStream(bytes));
        var blip = XDocument.Load(zip.GetEntry("ppt/slides/slide1.xml")!.Open()).Descendants(A + "blip").Single();
        var rels = XDocument.Load(zip.GetEntry("ppt/slides/_rels/slide1.xml.rels")!.Open()).Root!.Elements(PkgRel + "Relationship")
            .ToDictionary(r => (string)r.Attribute("Id")!, r => (string)r.Attribute("Target")!);
        using var png = new Bitmap(new MemoryStream(Read(zip, rels[(string)blip.Attribute(Rel + "embed")!])));
        Assert.Equal((30, 60), (png.Width, png.Height));
        Assert.Equal((30, 60), (svg.Width, svg.Height));
    }

    [Fact]
    public void AnImageRemovedWithItsSlideCanBeAddedAgain()
    {
        using IPresentation pres = new Presentation();
        var png = Raster(3, 3, ImageFormat.Png, Color.Red);
        pres.Slides.AddEmptySlide(pres.LayoutSlides[6]).Shapes.AddPictureFrame(ShapeType.Rect, 0, 0, 10, 10, pres.Images.AddImage(png));
        pres.Slides.RemoveAt(0);
        var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides[6]);
        var frame = slide.Shapes.AddPictureFrame(ShapeType.Rect, 0, 0, 10, 10, pres.Images.AddImage(png));
        Assert.Equal(png, frame.PictureFormat.Picture.Image!.BinaryData);
        Assert.Empty(TestFiles.Validate(TestFiles.SaveToBytes(pres)));
    }

    [Fact]
    public void ImagesOfAnotherPresentationAreCopiedAndFillsAndBulletsTakeImages()
    {
        using IPresentation source = new Presentation();
        var foreign = source.Images.AddImage(Svg(30, 20));
        using IPresentation pres = new Presentation();
        var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides[6]);
        var frame = slide.Shapes.AddPictureFrame(ShapeType.Rect, 0, 0, 10, 10, foreign);
        Assert.NotSame(foreign, frame.PictureFormat.Picture.Image);
        Assert.Equal(foreign.BinaryData, frame.PictureFormat.Picture.Image!.BinaryData);

        var box = slide.Shapes.AddAutoShape(ShapeType.Rect, 20, 20, 100, 50);
        box.FillFormat.PictureFillFormat.Picture.Image = pres.Images.AddImage(Gif);
        Assert.Equal(FillType.Picture, box.FillFormat.FillType);
        Assert.Equal(Gif, box.FillFormat.PictureFillFormat.ImageData);
        box.TextFrame.Text = "item";
        var bullet = box.TextFrame.Paragraphs[0].ParagraphFormat.Bullet;
        bullet.SetPicture(pres.Images.AddImage(Svg(16, 16)));
        Assert.Equal(BulletType.Picture, bullet.Type);
        var bytes = TestFiles.SaveToBytes(pres);
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        // The bullet's blip names the SVG too.
        var xml = XDocument.Load(new ZipArchive(new MemoryStream(bytes)).GetEntry("ppt/slides/slide1.xml")!.Open());
        Assert.Equal(2, xml.Descendants(Asvg + "svgBlip").Count());
    }

    [Fact]
    public void MediaAreStoredOnceAndLinksNeedATarget()
    {
        using IPresentation pres = new Presentation();
        var wav = Wav();
        var audio = pres.Audios.AddAudio(wav);
        Assert.Same(audio, pres.Audios.AddAudio(new MemoryStream(wav)));
        var slide = pres.Slides.AddEmptySlide(pres.LayoutSlides[6]);
        slide.Shapes.AddAudioFrameEmbedded(0, 0, 40, 40, audio);
        slide.Shapes.AddAudioFrameEmbedded(50, 0, 40, 40, audio);
        int before = slide.Shapes.Count;
        Assert.Throws<ArgumentException>(() => slide.Shapes.AddAudioFrameLinked(0, 0, 10, 10, " "));
        Assert.Equal(before, slide.Shapes.Count);
        var linked = slide.Shapes.AddAudioFrameLinked(0, 60, 40, 40, "sound.mp3");
        Assert.Equal("sound.mp3", linked.LinkPathLong);
        // Embedding a linked frame turns it into an embedded one.
        linked.EmbeddedAudio = audio;
        Assert.Equal(string.Empty, linked.LinkPathLong);
        var bytes = TestFiles.SaveToBytes(pres);
        Assert.Empty(TestFiles.Validate(bytes));
        Assert.Single(TestFiles.PartNames(bytes), n => n.EndsWith(".wav", StringComparison.Ordinal));
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        Assert.Equal(3, back.Slides[0].Shapes.OfType<IAudioFrame>().Count(f => f.EmbeddedAudio != null));
    }

    [Fact]
    public void PicturesAndMediaClonedIntoAnotherDeckBringTheirParts()
    {
        using IPresentation source = new Presentation();
        var slide = source.Slides.AddEmptySlide(source.LayoutSlides[6]);
        slide.Shapes.AddPictureFrame(ShapeType.Rect, 0, 0, 40, 20, source.Images.AddImage(Svg(40, 20)));
        slide.Shapes.AddVideoFrame(50, 0, 160, 90, source.Videos.AddVideo(Mp4()));
        slide.Shapes.AddAudioFrameLinked(0, 100, 32, 32, "chime.wav");
        using IPresentation target = new Presentation();
        target.Slides.AddClone(slide);
        var other = target.Slides.AddEmptySlide(target.LayoutSlides[6]);
        foreach (var shape in slide.Shapes)
            other.Shapes.AddClone(shape);
        var bytes = TestFiles.SaveToBytes(target);
        var errors = TestFiles.Validate(bytes);
        Assert.True(errors.Count == 0, TestFiles.Describe(errors));
        using IPresentation back = new Presentation(new MemoryStream(bytes));
        foreach (var copy in back.Slides)
        {
            Assert.Equal(Svg(40, 20), ((IPictureFrame)copy.Shapes[0]).PictureFormat.Picture.Image!.BinaryData);
            Assert.Equal(Mp4(), ((IVideoFrame)copy.Shapes[1]).EmbeddedVideo!.BinaryData);
            Assert.Equal("chime.wav", ((IAudioFrame)copy.Shapes[2]).LinkPathLong);
        }
        Assert.Equal(1, back.Videos.Count);
    }

    // --- the corpus -------------------------------------------------------------------

    [Fact]
    public void EveryPictureAndMediaOfTheCorpusReads()
    {
        int pictures = 0, videos = 0, audios = 0, images = 0, fills = 0;
        foreach (var (deck, pres) in TestFiles.LoadableCorpusDecks())
        {
            foreach (var image in pres.Images)
            {
                Assert.NotEmpty(image.ContentType);
                Assert.True(image.Width >= 0 && image.Height >= 0);
                _ = image.BinaryData;
                images++;
            }
            foreach (var media in pres.Audios.Select(a => (a.ContentType, a.BinaryData)).Concat(pres.Videos.Select(v => (v.ContentType, v.BinaryData))))
                Assert.NotEmpty(media.ContentType);
            var slides = TestFiles.AllSlides(pres).ToList();
            foreach (var shape in slides.SelectMany(s => TestFiles.AllShapes(s.Shapes)).Where(s => s.FillFormat.FillType == FillType.Picture))
            {
                var fill = shape.FillFormat.PictureFillFormat;
                _ = (fill.Picture.Image?.ContentType, fill.Picture.Image?.Height, fill.ImageData.Length, fill.CropTop, fill.TileAlignment);
                fills++;
            }
            foreach (var frame in slides.SelectMany(s => Frames(s.Shapes)))
            {
                var format = frame.PictureFormat;
                var picture = format.Picture.Image;
                _ = (picture?.ContentType, picture?.Width, picture?.BinaryData.Length, format.CropLeft, format.CropRight, format.PictureFillMode, format.TileScaleX, frame.ShapeType);
                pictures++;
                if (frame is IVideoFrame video)
                {
                    _ = (video.EmbeddedVideo?.ContentType, video.LinkPathLong);
                    videos++;
                }
                if (frame is IAudioFrame audio)
                {
                    _ = (audio.EmbeddedAudio?.ContentType, audio.LinkPathLong);
                    audios++;
                }
            }
        }
        if (TestFiles.HasCorpus)
        {
            Assert.True(pictures > 50 && images > 50, $"{pictures} pictures, {images} images");
            Assert.True(videos >= 2, $"{videos} videos");
            Assert.True(fills > 0, "no picture fill was read");
        }
    }

    [Fact]
    public void CorpusVideoFrameReadsItsEmbeddedVideo()
    {
        if (!TestFiles.HasCorpus)
            return;
        using IPresentation pres = new Presentation(TestFiles.CorpusFile("python-pptx/shp-movie-props.pptx"));
        var video = Assert.IsAssignableFrom<IVideoFrame>(pres.Slides[0].Shapes[0]);
        // The deck states its own (unusual) content type for the MP4.
        Assert.Equal("video/unknown", video.EmbeddedVideo!.ContentType);
        Assert.Equal("ftyp", Encoding.ASCII.GetString(video.EmbeddedVideo.BinaryData, 4, 4));
        Assert.Equal(string.Empty, video.LinkPathLong);
        Assert.Equal("image/png", video.PictureFormat.Picture.Image!.ContentType);
        Assert.Equal(1, pres.Videos.Count);
        Assert.Same(pres.Videos[0], video.EmbeddedVideo);
    }

    private static IEnumerable<IPictureFrame> Frames(IShapeCollection shapes)
    {
        foreach (var shape in shapes)
        {
            if (shape is IPictureFrame frame)
                yield return frame;
            else if (shape is IGroupShape group)
                foreach (var inner in Frames(group.Shapes))
                    yield return inner;
        }
    }

    private static XDocument SlideXml(IPresentation pres) =>
        XDocument.Load(new ZipArchive(new MemoryStream(TestFiles.SaveToBytes(pres))).GetEntry("ppt/slides/slide1.xml")!.Open());

    private static byte[] Read(ZipArchive zip, string path)
    {
        var normal = Path.GetFullPath(path.StartsWith('/') ? path : "/ppt/slides/" + path).TrimStart('/');
        var entry = zip.GetEntry(normal) ?? throw new InvalidOperationException($"{normal} is not in [{string.Join(", ", zip.Entries.Select(e => e.FullName))}]");
        using var s = entry.Open();
        using var ms = new MemoryStream();
        s.CopyTo(ms);
        return ms.ToArray();
    }
}
