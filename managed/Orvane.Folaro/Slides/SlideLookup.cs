namespace Orvane.Folaro;

// Finding a slide, layout or master of a presentation by its id.
internal static class SlideLookup
{
    /// <summary>The slide, layout or master with this id, or null: slides first, then each master followed by its layouts.</summary>
    internal static IBaseSlide? ById(Presentation owner, uint id)
    {
        foreach (var slide in owner.SlideList)
            if (slide.SlideId == id)
                return slide;
        foreach (MasterSlide master in owner.MasterList)
        {
            if (master.SlideId == id)
                return master;
            foreach (var layout in master.LayoutList)
                if (layout.SlideId == id)
                    return layout;
        }
        return null;
    }
}
