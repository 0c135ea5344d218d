namespace Orvane.Folaro.Theme;

/// <summary>The theme overrides of a layout or slide.</summary>
public interface IOverrideThemeManager : IThemeManager
{
    IOverrideTheme OverrideTheme { get; }

    /// <summary>True when the layout or slide overrides at least one scheme of its theme.</summary>
    bool IsOverrideThemeEnabled { get; }

    IThemeManager AsIThemeManager { get; }
}

public sealed class OverrideThemeManager : IOverrideThemeManager
{
    private readonly BaseSlide _slide;

    internal OverrideThemeManager(BaseSlide slide)
    {
        _slide = slide;
    }

    public IOverrideTheme OverrideTheme => new OverrideTheme(_slide);

    public bool IsOverrideThemeEnabled => !new OverrideTheme(_slide).IsEmpty;

    public IThemeEffectiveData GetEffective() => ThemeEffectiveData.Of(_slide);

    IThemeManager IOverrideThemeManager.AsIThemeManager => this;

    public override string ToString() => $"OverrideThemeManager of {_slide}";
}
