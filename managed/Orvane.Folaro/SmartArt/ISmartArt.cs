namespace Orvane.Folaro.SmartArt;

/// <summary>A SmartArt diagram placed on a slide.</summary>
public interface ISmartArt : IGraphicalObject
{
    SmartArtLayoutType Layout { get; }

    IGraphicalObject AsIGraphicalObject { get; }
}
