using System;

namespace Orvane.Folaro.Animation;

/// <summary>A property an animation behaviour changes, named as the file format names it ("ppt_x", "style.rotation").</summary>
public interface IBehaviorProperty
{
    string Value { get; }

    /// <summary>True for a name outside the predefined set.</summary>
    bool IsCustom { get; }
}

public sealed class BehaviorProperty : IBehaviorProperty, IEquatable<BehaviorProperty>
{
    private BehaviorProperty(string value, bool isCustom)
    {
        Value = value;
        IsCustom = isCustom;
    }

    public static IBehaviorProperty PptX { get; } = new BehaviorProperty("ppt_x", false);
    public static IBehaviorProperty PptY { get; } = new BehaviorProperty("ppt_y", false);
    public static IBehaviorProperty PptW { get; } = new BehaviorProperty("ppt_w", false);
    public static IBehaviorProperty PptH { get; } = new BehaviorProperty("ppt_h", false);
    public static IBehaviorProperty PptR { get; } = new BehaviorProperty("ppt_r", false);
    public static IBehaviorProperty Rotation { get; } = new BehaviorProperty("style.rotation", false);
    public static IBehaviorProperty Visibility { get; } = new BehaviorProperty("style.visibility", false);
    public static IBehaviorProperty Opacity { get; } = new BehaviorProperty("style.opacity", false);
    public static IBehaviorProperty FillColor { get; } = new BehaviorProperty("fillcolor", false);
    public static IBehaviorProperty FillOn { get; } = new BehaviorProperty("fill.on", false);
    public static IBehaviorProperty LineColor { get; } = new BehaviorProperty("stroke.color", false);
    public static IBehaviorProperty LineOn { get; } = new BehaviorProperty("stroke.on", false);
    public static IBehaviorProperty FontColor { get; } = new BehaviorProperty("style.color", false);
    public static IBehaviorProperty FontSize { get; } = new BehaviorProperty("style.fontSize", false);
    public static IBehaviorProperty FontWeight { get; } = new BehaviorProperty("style.fontWeight", false);
    public static IBehaviorProperty FontName { get; } = new BehaviorProperty("style.fontFamily", false);

    private static readonly IBehaviorProperty[] Predefined =
    {
        PptX, PptY, PptW, PptH, PptR, Rotation, Visibility, Opacity, FillColor, FillOn, LineColor, LineOn,
        FontColor, FontSize, FontWeight, FontName,
    };

    /// <summary>The predefined property of that name, or a custom one.</summary>
    public static IBehaviorProperty GetOrCreateByValue(string value)
    {
        ArgumentException.ThrowIfNullOrEmpty(value);
        foreach (var p in Predefined)
            if (p.Value == value)
                return p;
        return new BehaviorProperty(value, true);
    }

    public string Value { get; }

    public bool IsCustom { get; }

    public bool Equals(BehaviorProperty? other) => other is not null && Value == other.Value;

    public override bool Equals(object? obj) => Equals(obj as BehaviorProperty);

    public override int GetHashCode() => Value.GetHashCode(StringComparison.Ordinal);

    public override string ToString() => Value;
}
