namespace Orvane.Folaro;

/// <summary>How the presentation is shown when opened for editing.</summary>
public interface IViewProperties
{
    NullableBool ShowComments { get; set; }
    /// <summary>The grid spacing in points.</summary>
    float GridSpacing { get; set; }
}
