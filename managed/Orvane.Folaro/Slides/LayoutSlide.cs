using System.Linq;
using DocumentFormat.OpenXml.Packaging;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>A layout: the placeholders and design a slide is based on.</summary>
public interface ILayoutSlide : IBaseSlide
{
    SlideLayoutType LayoutType { get; }

    IMasterSlide MasterSlide { get; }

    /// <summary>The layout's theme overrides and the theme in force for it.</summary>
    Theme.IOverrideThemeManager ThemeManager { get; }

    /// <summary>True when at least one slide uses this layout.</summary>
    bool HasDependingSlides { get; }

    IBaseSlide AsIBaseSlide { get; }
}

public sealed class LayoutSlide : BaseSlide, ILayoutSlide
{
    private readonly MasterSlide _master;

    internal LayoutSlide(Presentation presentation, SlideLayoutPart part, MasterSlide master) : base(presentation, part)
    {
        Part = part;
        _master = master;
    }

    public override uint SlideId =>
        _master.Part.SlideMaster.SlideLayoutIdList?.Elements<P.SlideLayoutId>()
            .FirstOrDefault(l => l.RelationshipId?.Value is { } id && _master.Part.TryGetPartById(id, out var p) && ReferenceEquals(p, Part))
            ?.Id?.Value ?? 0;

    public SlideLayoutType LayoutType => LayoutTypes.Of(Part);

    public IMasterSlide MasterSlide => _master;

    public Theme.IOverrideThemeManager ThemeManager => new Theme.OverrideThemeManager(this);

    public bool HasDependingSlides => Owner.SlideList.Any(s => ReferenceEquals(((Slide)s).Part.SlideLayoutPart, Part));

    IBaseSlide ILayoutSlide.AsIBaseSlide => this;

    internal SlideLayoutPart Part { get; }

    internal MasterSlide Master => _master;

    public override string ToString() => $"Layout '{Name}' ({LayoutType})";
}
