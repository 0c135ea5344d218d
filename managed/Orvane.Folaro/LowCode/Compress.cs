using System;

namespace Orvane.Folaro.LowCode;

/// <summary>One-call clean-ups that make a presentation smaller.</summary>
public static class Compress
{
    /// <summary>Removes every layout that no slide uses.</summary>
    public static void RemoveUnusedLayoutSlides(IPresentation pres)
    {
        ArgumentNullException.ThrowIfNull(pres);
        pres.LayoutSlides.RemoveUnused();
    }

    /// <summary>Removes every master that no slide uses (one master always stays).</summary>
    public static void RemoveUnusedMasterSlides(IPresentation pres)
    {
        ArgumentNullException.ThrowIfNull(pres);
        pres.Masters.RemoveUnused();
    }
}
