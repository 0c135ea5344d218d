namespace Orvane.Folaro.Theme;

/// <summary>The theme of a master. A master always uses its own theme, so its override is that theme.</summary>
public interface IMasterThemeManager : IThemeManager
{
    IMasterTheme OverrideTheme { get; }

    bool IsOverrideThemeEnabled { get; }

    IThemeManager AsIThemeManager { get; }
}

public sealed class MasterThemeManager : IMasterThemeManager
{
    private readonly MasterSlide _master;

    internal MasterThemeManager(MasterSlide master)
    {
        _master = master;
    }

    public IMasterTheme OverrideTheme => _master.Theme;

    public bool IsOverrideThemeEnabled => true;

    public IThemeEffectiveData GetEffective() => ThemeEffectiveData.Of(_master);

    IThemeManager IMasterThemeManager.AsIThemeManager => this;

    public override string ToString() => $"MasterThemeManager of {_master}";
}
