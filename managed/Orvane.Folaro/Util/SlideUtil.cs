using System;

namespace Orvane.Folaro.Util;

/// <summary>Searches over slides.</summary>
public static class SlideUtil
{
    /// <summary>The first shape of the slide (groups searched too) whose alternative text is <paramref name="altText"/>, or null.</summary>
    public static IShape? FindShape(IBaseSlide slide, string altText)
    {
        ArgumentNullException.ThrowIfNull(slide);
        ArgumentNullException.ThrowIfNull(altText);
        return Find(slide.Shapes, altText);
    }

    /// <summary>The first shape of any slide of the presentation with that alternative text, or null.</summary>
    public static IShape? FindShape(IPresentation pres, string altText)
    {
        ArgumentNullException.ThrowIfNull(pres);
        foreach (var slide in pres.Slides)
            if (FindShape(slide, altText) is { } found)
                return found;
        return null;
    }

    private static IShape? Find(IShapeCollection shapes, string altText)
    {
        foreach (var shape in shapes)
        {
            if (shape.AlternativeText == altText)
                return shape;
            if (shape is IGroupShape group && Find(group.Shapes, altText) is { } inner)
                return inner;
        }
        return null;
    }
}
