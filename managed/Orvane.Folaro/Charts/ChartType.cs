namespace Orvane.Folaro.Charts;

public enum ChartType
{
    ClusteredColumn,
    StackedColumn,
    PercentsStackedColumn,
    ClusteredBar,
    StackedBar,
    PercentsStackedBar,
    Line,
    StackedLine,
    LineWithMarkers,
    Pie,
    Doughnut,
    Area,
    StackedArea,
    ScatterWithMarkers,
    ScatterWithSmoothLines,
    Bubble,
    Radar,
    HighLowClose,
    Treemap,
    Sunburst,
    Histogram,
    Waterfall,
    Funnel,
}
