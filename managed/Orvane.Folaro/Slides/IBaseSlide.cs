namespace Orvane.Folaro;

/// <summary>What slides, layout slides and masters have in common.</summary>
public interface IBaseSlide : IPresentationComponent
{
    /// <summary>The id that names this slide in its presentation (unique among slides, layouts and masters).</summary>
    uint SlideId { get; }

    string Name { get; set; }

    IShapeCollection Shapes { get; }

    IPresentationComponent AsIPresentationComponent { get; }
}
