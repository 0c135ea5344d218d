using System;
using DocumentFormat.OpenXml.Packaging;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>A view over the view properties part; the part is made when first written.</summary>
public sealed class ViewProperties : IViewProperties
{
    private const long DefaultGrid = 76200; // 6 pt, the usual grid

    private readonly Presentation _owner;

    internal ViewProperties(Presentation owner)
    {
        _owner = owner;
    }

    public NullableBool ShowComments
    {
        get => Root?.ShowComments?.Value switch
        {
            true => NullableBool.True,
            false => NullableBool.False,
            null => NullableBool.NotDefined,
        };
        set => Ensure().ShowComments = value switch
        {
            NullableBool.True => true,
            NullableBool.False => false,
            NullableBool.NotDefined => null,
            _ => throw new ArgumentOutOfRangeException(nameof(value), value, "ViewProperties.ShowComments: unknown value"),
        };
    }

    /// <summary>The grid spacing in points (6 when the deck does not say).</summary>
    public float GridSpacing
    {
        get => Emu.ToPoints(Root?.GridSpacing?.Cx?.Value ?? DefaultGrid);
        set
        {
            if (!(value > 0f) || value > 4000f)
                throw new ArgumentOutOfRangeException(nameof(value), value, "ViewProperties.GridSpacing must be between 0 and 4000 points");
            long emu = Emu.FromPoints(value);
            var root = Ensure();
            root.GridSpacing ??= new P.GridSpacing();
            root.GridSpacing.Cx = emu;
            root.GridSpacing.Cy = emu;
        }
    }

    private P.ViewProperties? Root => _owner.PresentationPart.ViewPropertiesPart?.ViewProperties;

    private P.ViewProperties Ensure()
    {
        var pres = _owner.PresentationPart;
        var part = pres.ViewPropertiesPart ?? pres.AddNewPart<ViewPropertiesPart>();
        part.ViewProperties ??= new P.ViewProperties();
        return part.ViewProperties;
    }
}
