namespace Orvane.Folaro.Charts;

/// <summary>A chart placed on a slide.</summary>
public interface IChart : IGraphicalObject
{
    ChartType Type { get; }

    bool HasTitle { get; set; }

    bool HasLegend { get; set; }

    IGraphicalObject AsIGraphicalObject { get; }
}
