using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using Orvane.Folaro.Theme;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>A slide master: the design shared by its layouts and their slides.</summary>
public interface IMasterSlide : IBaseSlide
{
    /// <summary>The layouts of this master.</summary>
    ILayoutSlideCollection LayoutSlides { get; }

    IMasterTheme Theme { get; }

    /// <summary>The master's theme and the theme in force for it.</summary>
    IMasterThemeManager ThemeManager { get; }

    /// <summary>True when at least one slide uses one of this master's layouts.</summary>
    bool HasDependingSlides { get; }

    IBaseSlide AsIBaseSlide { get; }
}

public sealed class MasterSlide : BaseSlide, IMasterSlide
{
    internal MasterSlide(Presentation presentation, SlideMasterPart part) : base(presentation, part)
    {
        Part = part;
    }

    public override uint SlideId =>
        Owner.Root.SlideMasterIdList?.Elements<P.SlideMasterId>()
            .FirstOrDefault(m => m.RelationshipId?.Value is { } id && Owner.PresentationPart.TryGetPartById(id, out var p) && ReferenceEquals(p, Part))
            ?.Id?.Value ?? 0;

    public ILayoutSlideCollection LayoutSlides => new LayoutSlideCollection(Owner, this);

    public IMasterTheme Theme
    {
        get
        {
            var themePart = Part.ThemePart ?? throw new PptxReadException($"{Where}: the master has no theme");
            return Owner.ViewOf(themePart, () => new MasterTheme(Owner, themePart));
        }
    }

    public IMasterThemeManager ThemeManager => new MasterThemeManager(this);

    public bool HasDependingSlides => LayoutList.Any(l => l.HasDependingSlides);

    IBaseSlide IMasterSlide.AsIBaseSlide => this;

    internal SlideMasterPart Part { get; }

    // The layouts in the order of the master's layout id list; dangling entries are skipped.
    internal IEnumerable<LayoutSlide> LayoutList
    {
        get
        {
            var ids = Part.SlideMaster.SlideLayoutIdList?.Elements<P.SlideLayoutId>() ?? Enumerable.Empty<P.SlideLayoutId>();
            foreach (var entry in ids.ToList())
            {
                if (entry.RelationshipId?.Value is not { } relId || !Part.TryGetPartById(relId, out var p) || p is not SlideLayoutPart layoutPart)
                    continue;
                yield return Owner.ViewOf(layoutPart, () => new LayoutSlide(Owner, layoutPart, this));
            }
        }
    }

    public override string ToString() => $"Master '{Name}'";
}
