using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>The shapes of a slide or group, in z-order (back to front).</summary>
public interface IShapeCollection : IEnumerable<IShape>
{
    int Count { get; }

    IShape this[int index] { get; }

    int IndexOf(IShape shape);

    /// <summary>Adds a preset shape in front of the others. Position and size in points.</summary>
    IAutoShape AddAutoShape(ShapeType shapeType, float x, float y, float width, float height);

    /// <summary>Adds a connector line of a line or connector geometry (straight, bent, curved).</summary>
    IConnector AddConnector(ShapeType shapeType, float x, float y, float width, float height);

    /// <summary>Adds an empty group; shapes added to its collection grow it.</summary>
    IGroupShape AddGroupShape();

    /// <summary>
    /// Adds a table at (x, y) with one column per width and one row per height (points), its
    /// cells empty, styled as editors start one (Medium Style 2 - Accent 1, header row, banded rows).
    /// </summary>
    ITable AddTable(float x, float y, double[] columnWidths, double[] rowHeights);

    /// <summary>Adds a picture of an image of the presentation (one of another is copied in), clipped to a preset geometry and stretched over the frame.</summary>
    IPictureFrame AddPictureFrame(ShapeType shapeType, float x, float y, float width, float height, IPPImage image);

    /// <summary>Adds a sound stored in the presentation, shown as an icon.</summary>
    IAudioFrame AddAudioFrameEmbedded(float x, float y, float width, float height, IAudio audio);

    /// <summary>Adds a sound linked by path or URL, shown as an icon.</summary>
    IAudioFrame AddAudioFrameLinked(float x, float y, float width, float height, string fname);

    /// <summary>Adds a video stored in the presentation, shown by a plain poster frame until one is set.</summary>
    IVideoFrame AddVideoFrame(float x, float y, float width, float height, IVideo video);

    /// <summary>Adds a video linked by path or URL.</summary>
    IVideoFrame AddVideoFrame(float x, float y, float width, float height, string fname);

    /// <summary>Adds a copy of a shape (of this or another slide or presentation) in front of the others.</summary>
    IShape AddClone(IShape sourceShape);

    IShape InsertClone(int index, IShape sourceShape);

    void Remove(IShape shape);
    void RemoveAt(int index);

    /// <summary>Moves the shape to this place in the z-order (0 is at the back).</summary>
    void Reorder(int index, IShape shape);

    /// <summary>Moves shapes of this collection into a new group at the z-order place of the frontmost one; they keep their places on the slide.</summary>
    IGroupShape Group(IShape[] shapes);

    /// <summary>Moves a group's shapes back into this collection at the group's z-order place, with their places on the slide, and removes the group.</summary>
    void Ungroup(IGroupShape group);

    IEnumerable<IShape> AsIEnumerable { get; }
}

public sealed partial class ShapeCollection : IShapeCollection
{
    private readonly BaseSlide _slide;
    private readonly OpenXmlCompositeElement? _container;

    internal ShapeCollection(BaseSlide slide, OpenXmlCompositeElement? container = null)
    {
        _slide = slide;
        _container = container;
    }

    public int Count => Items().Count;

    public IShape this[int index]
    {
        get
        {
            var items = Items();
            Indexes.Check(index, items.Count, "ShapeCollection[index]");
            return items[index];
        }
    }

    public int IndexOf(IShape shape) => Items().FindIndex(s => ReferenceEquals(s, shape));

    public IAutoShape AddAutoShape(ShapeType shapeType, float x, float y, float width, float height) =>
        (IAutoShape)Append(ShapeFactory.AutoShape(PresetGeometries.PresetName(Known(shapeType, nameof(AddAutoShape))), NextId(), $"{shapeType} {NextId() - 1}"), x, y, width, height);

    public IConnector AddConnector(ShapeType shapeType, float x, float y, float width, float height) =>
        (IConnector)Append(ShapeFactory.Connector(PresetGeometries.PresetName(Known(shapeType, nameof(AddConnector))), NextId(), $"Connector {NextId() - 1}"), x, y, width, height);

    public IGroupShape AddGroupShape()
    {
        CheckWritable();
        var group = ShapeFactory.Group(NextId(), $"Group {NextId() - 1}");
        Insert(group, Count);
        return (IGroupShape)Make(group)!;
    }

    public ITable AddTable(float x, float y, double[] columnWidths, double[] rowHeights)
    {
        var widths = TableCells.Lengths(columnWidths, nameof(columnWidths), "ShapeCollection.AddTable");
        var heights = TableCells.Lengths(rowHeights, nameof(rowHeights), "ShapeCollection.AddTable");
        uint id = NextId();
        var table = (Table)Append(TableCells.Frame(id, $"Table {id - 1}", widths, heights), x, y,
            Emu.ToPoints(widths.Sum()), Emu.ToPoints(heights.Sum()));
        table.FitFrame();
        return table;
    }

    public IPictureFrame AddPictureFrame(ShapeType shapeType, float x, float y, float width, float height, IPPImage image)
    {
        ArgumentNullException.ThrowIfNull(image);
        string preset = PresetGeometries.PresetName(Known(shapeType, nameof(AddPictureFrame)));
        uint id = NextId();
        return AddPicture(MediaFrameMarkup.NewPicture(id, $"Picture {id - 1}", preset, null), x, y, width, height,
            f => f.PictureFormat.Picture.Image = image);
    }

    public IAudioFrame AddAudioFrameEmbedded(float x, float y, float width, float height, IAudio audio)
    {
        ArgumentNullException.ThrowIfNull(audio);
        return AddPicture<AudioFrame>(NewMediaFrame(audio: true), x, y, width, height,
            f => f.EmbeddedAudio = audio);
    }

    public IAudioFrame AddAudioFrameLinked(float x, float y, float width, float height, string fname)
    {
        ArgumentNullException.ThrowIfNull(fname);
        return AddPicture<AudioFrame>(NewMediaFrame(audio: true), x, y, width, height,
            f => f.LinkPathLong = fname);
    }

    public IVideoFrame AddVideoFrame(float x, float y, float width, float height, IVideo video)
    {
        ArgumentNullException.ThrowIfNull(video);
        return AddPicture<VideoFrame>(NewMediaFrame(audio: false), x, y, width, height,
            f => f.EmbeddedVideo = video);
    }

    public IVideoFrame AddVideoFrame(float x, float y, float width, float height, string fname)
    {
        ArgumentNullException.ThrowIfNull(fname);
        return AddPicture<VideoFrame>(NewMediaFrame(audio: false), x, y, width, height,
            f => f.LinkPathLong = fname);
    }

    public IShape AddClone(IShape sourceShape) => InsertClone(Count, sourceShape);

    public IShape InsertClone(int index, IShape sourceShape)
    {
        ArgumentNullException.ThrowIfNull(sourceShape);
        CheckWritable();
        Indexes.CheckPlace(index, Count, "ShapeCollection.InsertClone");
        if (sourceShape is not Shape source || source.Element.Parent == null)
            throw new ArgumentException("ShapeCollection.InsertClone: the shape is not part of a slide", nameof(sourceShape));
        var copy = (OpenXmlCompositeElement)source.Element.CloneNode(true);
        ShapeFactory.Renumber(copy, NextId());
        ShapeFactory.CopyRelationships(copy, source.SlideView.PartBase, _slide.PartBase);
        Insert(copy, index);
        Grow();
        return Make(copy)!;
    }

    public void Remove(IShape shape)
    {
        var node = TopLevel(shape, nameof(Remove));
        node.Remove();
        Grow();
    }

    public void RemoveAt(int index) => Remove(this[index]);

    public void Reorder(int index, IShape shape)
    {
        var node = TopLevel(shape, nameof(Reorder));
        int count = Count;
        Indexes.Check(index, count, "ShapeCollection.Reorder");
        node.Remove();
        Insert(node, index);
    }

    // --- editing helpers ----------------------------------------------------------------

    private OpenXmlCompositeElement Tree =>
        _container ?? _slide.ShapeTree ?? throw new PptxEditException($"{_slide.Where}: the slide has no shape tree");

    private static ShapeType Known(ShapeType type, string member) =>
        type >= 0 && Enum.IsDefined(type)
            ? type
            : throw new ArgumentOutOfRangeException(nameof(type), type, $"ShapeCollection.{member}: the shape type must be a preset geometry");

    private void CheckWritable() => _ = Tree;

    // Shape ids are unique within the slide, groups included.
    private uint NextId() => (_slide.ShapeTree is { } tree ? MaxId(tree, 1u) : 1u) + 1;

    // The ids sit on the cNvPr of each shape's non-visual properties. The walk goes through
    // shapes, groups and markup-compatibility wrappers only, not through text and tables.
    private static uint MaxId(OpenXmlElement element, uint max)
    {
        foreach (var child in element.ChildElements)
        {
            string name = child.LocalName;
            if (name == "cNvPr")
            {
                if (uint.TryParse(child.GetAttribute("id", string.Empty).Value, out var id) && id > max)
                    max = id;
            }
            else if (name is "sp" or "grpSp" or "pic" or "cxnSp" or "graphicFrame" or "contentPart"
                         or "AlternateContent" or "Choice" or "Fallback"
                     || (name.StartsWith("nv", StringComparison.Ordinal) && name.EndsWith("Pr", StringComparison.Ordinal)))
            {
                max = MaxId(child, max);
            }
        }
        return max;
    }

    private IShape Append(OpenXmlCompositeElement element, float x, float y, float width, float height)
    {
        CheckWritable();
        Insert(element, Count);
        var shape = Make(element)!;
        try
        {
            shape.Frame = new ShapeFrame(x, y, width, height, NullableBool.NotDefined, NullableBool.NotDefined, 0f);
        }
        catch (ArgumentOutOfRangeException)
        {
            element.Remove();
            throw;
        }
        Grow();
        return shape;
    }

    // A picture or media frame is placed, then given its picture and media; a failure there takes it out again.
    private T AddPicture<T>(OpenXmlCompositeElement element, float x, float y, float width, float height, Action<T> fill) where T : PictureFrame
    {
        var frame = (T)Append(element, x, y, width, height);
        try
        {
            fill(frame);
            if (frame is not (AudioFrame or VideoFrame))
                return frame;
            frame.PictureFormat.Picture.Image = DocumentState.Of(_slide.PartBase).Media.AddImage(MediaFrameMarkup.DefaultPoster(frame is AudioFrame), "poster");
        }
        catch
        {
            element.Remove();
            Grow();
            throw;
        }
        return frame;
    }

    private OpenXmlCompositeElement NewMediaFrame(bool audio)
    {
        uint id = NextId();
        return MediaFrameMarkup.NewMediaFrame(id, $"{(audio ? "Audio" : "Video")} {id - 1}", audio);
    }

    private IPictureFrame AddPicture(OpenXmlCompositeElement element, float x, float y, float width, float height, Action<PictureFrame> fill) =>
        AddPicture<PictureFrame>(element, x, y, width, height, fill);

    // Places a node so that it becomes the shape at this index (the header elements of a
    // tree — its own non-visual and group properties — stay first, an extension list last).
    private void Insert(OpenXmlElement node, int index)
    {
        var tree = Tree;
        var tops = TopLevelNodes();
        if (index < tops.Count)
        {
            tree.InsertBefore(node, tops[index]);
            return;
        }
        var ext = tree.Elements<P.ExtensionListWithModification>().LastOrDefault();
        if (ext != null)
            tree.InsertBefore(node, ext);
        else
            tree.AppendChild(node);
    }

    private List<OpenXmlElement> TopLevelNodes()
    {
        var result = new List<OpenXmlElement>();
        foreach (var child in Tree.ChildElements)
        {
            var element = child is AlternateContent ? Chosen(child) : child;
            if (element is OpenXmlCompositeElement composite && Make(composite) != null)
                result.Add(child);
        }
        return result;
    }

    private OpenXmlElement TopLevel(IShape shape, string member)
    {
        ArgumentNullException.ThrowIfNull(shape);
        if (shape is Shape own)
        {
            OpenXmlElement? node = own.Element;
            while (node != null && !ReferenceEquals(node.Parent, Tree))
                node = node.Parent;
            if (node != null)
                return node;
        }
        throw new ArgumentException($"ShapeCollection.{member}: the shape is not in this collection", nameof(shape));
    }

    // A group's box follows its children while it maps them one to one (as a group made here does).
    private void Grow()
    {
        if (_container?.LocalName != "grpSp")
            return;
        ShapePlacement.FitGroup(_container);
    }

    public IEnumerator<IShape> GetEnumerator() => Items().GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();

    IEnumerable<IShape> IShapeCollection.AsIEnumerable => this;

    private List<IShape> Items()
    {
        var result = new List<IShape>();
        var container = _container ?? _slide.ShapeTree;
        if (container == null)
            return result;
        foreach (var child in container.ChildElements)
        {
            var element = child is AlternateContent ? Chosen(child) : child;
            if (element is OpenXmlCompositeElement composite && Make(composite) is { } shape)
                result.Add(shape);
        }
        return result;
    }

    // Of an mc:AlternateContent, the first choice's shape (the form the newer readers use), else the fallback's.
    private static OpenXmlElement? Chosen(OpenXmlElement alternate)
    {
        foreach (var branch in alternate.ChildElements)
            if (branch.FirstChild != null)
                return branch.FirstChild;
        return null;
    }

    /// <summary>The view of a shape element of this slide, or null for an element that is not a shape.</summary>
    internal IShape? ViewOf(OpenXmlCompositeElement element) => Make(element);

    // Unknown elements (extension lists, foreign markup) are not shapes and are left alone.
    private IShape? Make(OpenXmlCompositeElement element) => element.LocalName switch
    {
        "sp" => _slide.Owner.ElementView(element, () => new AutoShape(_slide, element)),
        "pic" => _slide.Owner.ElementView(element, () => PictureFrame.Create(_slide, element)),
        "cxnSp" => _slide.Owner.ElementView(element, () => new Connector(_slide, element)),
        "grpSp" => _slide.Owner.ElementView(element, () => new GroupShape(_slide, element)),
        "graphicFrame" => TableCells.TableOf(element) != null
            ? _slide.Owner.ElementView(element, () => new Table(_slide, element))
            : _slide.Owner.ElementView(element, () => new GraphicalObject(_slide, element)),
        "contentPart" => _slide.Owner.ElementView(element, () => new Ink.Ink(_slide, element)),
        _ => null,
    };
}
