using DocumentFormat.OpenXml;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>A connector line (a p:cxnSp element), whose ends can be attached to connection sites of shapes.</summary>
public interface IConnector : IGeometryShape
{
    /// <summary>The line's geometry (straight, bent or curved connector).</summary>
    ShapeType ShapeType { get; set; }

    /// <summary>The shape the start is attached to, or null. Setting attaches (and reroutes) the start; null detaches it.</summary>
    IShape? StartShapeConnectedTo { get; set; }

    /// <summary>The shape the end is attached to, or null. Setting attaches (and reroutes) the end; null detaches it.</summary>
    IShape? EndShapeConnectedTo { get; set; }

    /// <summary>The connection site of the start shape the start sits on (0 when not attached).</summary>
    uint StartShapeConnectionSiteIndex { get; set; }

    /// <summary>The connection site of the end shape the end sits on (0 when not attached).</summary>
    uint EndShapeConnectionSiteIndex { get; set; }

    /// <summary>Moves the connector so that its ends sit on the sites they are attached to; an unattached end stays in place.</summary>
    void Reroute();

    IShape AsIShape { get; }
}

public sealed class Connector : GeometryShape, IConnector
{
    internal Connector(BaseSlide slide, OpenXmlCompositeElement element) : base(slide, element)
    {
    }

    public ShapeType ShapeType
    {
        get => GeometryAccess.TypeOf(Element);
        set
        {
            if (value < 0 || !System.Enum.IsDefined(value))
                throw new System.ArgumentOutOfRangeException(nameof(value), value, "Connector.ShapeType must be a preset geometry");
            GeometryAccess.SetType(Element, value, SlideView.Where);
        }
    }

    public IShape? StartShapeConnectedTo
    {
        get => Connected(start: true);
        set => Connect(start: true, value, nameof(StartShapeConnectedTo));
    }

    public IShape? EndShapeConnectedTo
    {
        get => Connected(start: false);
        set => Connect(start: false, value, nameof(EndShapeConnectedTo));
    }

    public uint StartShapeConnectionSiteIndex
    {
        get => Link(start: true)?.Index?.Value ?? 0;
        set => SetSite(start: true, value, nameof(StartShapeConnectionSiteIndex));
    }

    public uint EndShapeConnectionSiteIndex
    {
        get => Link(start: false)?.Index?.Value ?? 0;
        set => SetSite(start: false, value, nameof(EndShapeConnectionSiteIndex));
    }

    public void Reroute() => ShapePlacement.Reroute(SlideView, Element);

    IShape IConnector.AsIShape => this;

    private P.NonVisualConnectorShapeDrawingProperties? Properties(bool create)
    {
        var nv = Element.GetFirstChild<P.NonVisualConnectionShapeProperties>();
        if (nv == null)
            return create ? throw new PptxEditException($"{SlideView.Where}: connector '{Name}' has no non-visual properties") : null;
        var props = nv.NonVisualConnectorShapeDrawingProperties;
        if (props == null && create)
            props = nv.NonVisualConnectorShapeDrawingProperties = new P.NonVisualConnectorShapeDrawingProperties();
        return props;
    }

    // a:stCxn or a:endCxn
    private DocumentFormat.OpenXml.Drawing.ConnectionType? Link(bool start) =>
        start ? Properties(false)?.StartConnection : Properties(false)?.EndConnection;

    private IShape? Connected(bool start) =>
        Link(start) is { } link && ShapePlacement.FindById(SlideView, link.Id?.Value ?? 0) is { } element
            ? new ShapeCollection(SlideView).ViewOf(element)
            : null;

    private void Connect(bool start, IShape? shape, string member)
    {
        var props = Properties(create: shape != null);
        if (shape == null)
        {
            if (start)
                props?.StartConnection?.Remove();
            else
                props?.EndConnection?.Remove();
            return;
        }
        if (shape is not Shape target || !ReferenceEquals(target.SlideView.PartBase, SlideView.PartBase) || target.Element.Parent == null)
            throw new System.ArgumentException($"Connector.{member}: the shape must be on the same slide as the connector", nameof(shape));
        if (ReferenceEquals(target.Element, Element))
            throw new System.ArgumentException($"Connector.{member}: a connector cannot be attached to itself", nameof(shape));
        if (target.UniqueId == 0)
            throw new PptxEditException($"{SlideView.Where}: shape '{target.Name}' has no id to attach a connector to");
        uint index = Link(start)?.Index?.Value ?? 0;
        if (index >= (uint)target.ConnectionSiteCount)
            index = 0;
        if (start)
            props!.StartConnection = new DocumentFormat.OpenXml.Drawing.StartConnection { Id = target.UniqueId, Index = index };
        else
            props!.EndConnection = new DocumentFormat.OpenXml.Drawing.EndConnection { Id = target.UniqueId, Index = index };
        Reroute();
    }

    private void SetSite(bool start, uint index, string member)
    {
        var link = Link(start) ?? throw new PptxEditException($"Connector.{member}: connector '{Name}' is not attached at its {(start ? "start" : "end")}; attach a shape first");
        var shape = Connected(start);
        int count = shape?.ConnectionSiteCount ?? 0;
        if (shape != null && index >= count)
            throw new System.ArgumentOutOfRangeException(nameof(index), index, $"Connector.{member}: shape '{shape.Name}' has {count} connection sites");
        link.Index = index;
        Reroute();
    }
}
