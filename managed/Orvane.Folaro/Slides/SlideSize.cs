using System;
using System.Collections.Generic;
using System.Linq;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using Orvane.Marel;
using A = DocumentFormat.OpenXml.Drawing;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>The size of the slides, in points.</summary>
public interface ISlideSize
{
    SizeF Size { get; }

    SlideSizeType Type { get; }

    SlideOrientation Orientation { get; }

    void SetSize(SlideSizeType type, SlideSizeScaleType scaleType);

    void SetSize(float width, float height, SlideSizeScaleType scaleType);
}

public sealed class SlideSize : ISlideSize
{
    // Limits of the slide size in the file format: 1 inch to 56 inches.
    private const long MinEmu = 914400;
    private const long MaxEmu = 51206400;

    private static readonly Dictionary<SlideSizeType, (long Cx, long Cy, P.SlideSizeValues? Xml)> Presets = new()
    {
        [SlideSizeType.OnScreen] = (9144000, 6858000, P.SlideSizeValues.Screen4x3),
        [SlideSizeType.LetterPaper] = (9144000, 6858000, P.SlideSizeValues.Letter),
        [SlideSizeType.A4Paper] = (9906000, 6858000, P.SlideSizeValues.A4),
        [SlideSizeType.Slide35mm] = (10287000, 6858000, P.SlideSizeValues.Film35mm),
        [SlideSizeType.Overhead] = (9144000, 6858000, P.SlideSizeValues.Overhead),
        [SlideSizeType.Banner] = (7315200, 914400, P.SlideSizeValues.Banner),
        [SlideSizeType.Ledger] = (12179300, 9134475, P.SlideSizeValues.Ledger),
        [SlideSizeType.A3Paper] = (12801600, 9601200, P.SlideSizeValues.A3),
        [SlideSizeType.B4IsoPaper] = (10826750, 8120063, P.SlideSizeValues.B4ISO),
        [SlideSizeType.B5IsoPaper] = (7169150, 5376863, P.SlideSizeValues.B5ISO),
        [SlideSizeType.OnScreen16x9] = (9144000, 5143500, P.SlideSizeValues.Screen16x9),
        [SlideSizeType.OnScreen16x10] = (9144000, 5715000, P.SlideSizeValues.Screen16x10),
        [SlideSizeType.Widescreen] = (12192000, 6858000, null),
    };

    private readonly Presentation _owner;

    internal SlideSize(Presentation owner)
    {
        _owner = owner;
    }

    public SizeF Size
    {
        get
        {
            var (cx, cy) = Current;
            return new SizeF(Emu.ToPoints(cx), Emu.ToPoints(cy));
        }
    }

    /// <summary>The preset the size was set from; an untyped 13.333 x 7.5 in size reads as <see cref="SlideSizeType.Widescreen"/>.</summary>
    public SlideSizeType Type
    {
        get
        {
            var element = _owner.Root.SlideSize;
            var xml = element?.Type?.Value;
            var (cx, cy) = Current;
            if (xml == null || xml == P.SlideSizeValues.Custom)
                return cx == 12192000 && cy == 6858000 ? SlideSizeType.Widescreen : SlideSizeType.Custom;
            foreach (var (type, preset) in Presets)
                if (preset.Xml == xml)
                    return type;
            return SlideSizeType.Custom;
        }
    }

    public SlideOrientation Orientation
    {
        get
        {
            var (cx, cy) = Current;
            return cy > cx ? SlideOrientation.Portrait : SlideOrientation.Landscape;
        }
    }

    public void SetSize(SlideSizeType type, SlideSizeScaleType scaleType)
    {
        if (type == SlideSizeType.Custom)
            throw new ArgumentException("SlideSize.SetSize: give a custom size as width and height", nameof(type));
        if (!Presets.TryGetValue(type, out var preset))
            throw new ArgumentOutOfRangeException(nameof(type), type, "SlideSize.SetSize: unknown slide size type");
        Apply(preset.Cx, preset.Cy, preset.Xml, scaleType);
    }

    public void SetSize(float width, float height, SlideSizeScaleType scaleType)
    {
        long cx = CheckDimension(width, nameof(width));
        long cy = CheckDimension(height, nameof(height));
        Apply(cx, cy, P.SlideSizeValues.Custom, scaleType);
    }

    private (long Cx, long Cy) Current
    {
        get
        {
            var element = _owner.Root.SlideSize;
            return (element?.Cx?.Value ?? PresentationTemplate.SlideWidth, element?.Cy?.Value ?? PresentationTemplate.SlideHeight);
        }
    }

    private static long CheckDimension(float points, string name)
    {
        if (float.IsNaN(points) || points < Emu.ToPoints(MinEmu) || points > Emu.ToPoints(MaxEmu))
            throw new ArgumentOutOfRangeException(name, points, $"SlideSize.SetSize: {name} must be between {Emu.ToPoints(MinEmu)} and {Emu.ToPoints(MaxEmu)} points");
        return Emu.FromPoints(points);
    }

    private void Apply(long cx, long cy, P.SlideSizeValues? xml, SlideSizeScaleType scaleType)
    {
        var (oldCx, oldCy) = Current;
        if (scaleType != SlideSizeScaleType.DoNotScale && (oldCx != cx || oldCy != cy))
        {
            double fx = (double)cx / oldCx, fy = (double)cy / oldCy;
            double f = scaleType == SlideSizeScaleType.EnsureFit ? Math.Min(fx, fy) : Math.Max(fx, fy);
            double dx = (cx - oldCx * f) / 2, dy = (cy - oldCy * f) / 2;
            foreach (var tree in ShapeTrees())
                ContentScaler.Scale(tree, f, dx, dy);
        }
        var root = _owner.Root;
        var element = root.SlideSize;
        if (element == null)
        {
            element = new P.SlideSize();
            root.InsertAfter(element, (OpenXmlElement?)root.SlideIdList ?? (OpenXmlElement?)root.HandoutMasterIdList ?? (OpenXmlElement?)root.NotesMasterIdList ?? root.SlideMasterIdList);
        }
        element.Cx = (int)cx;
        element.Cy = (int)cy;
        element.Type = xml == P.SlideSizeValues.Custom ? (cx == 12192000 && cy == 6858000 ? null : P.SlideSizeValues.Custom) : xml;
    }

    private IEnumerable<P.ShapeTree> ShapeTrees()
    {
        var pres = _owner.PresentationPart;
        var parts = pres.SlideParts.Cast<OpenXmlPart>()
            .Concat(pres.SlideMasterParts)
            .Concat(pres.SlideMasterParts.SelectMany(m => m.SlideLayoutParts))
            .Distinct();
        foreach (var part in parts)
        {
            if (part.RootElement?.GetFirstChild<P.CommonSlideData>()?.ShapeTree is { } tree)
                yield return tree;
        }
    }
}
