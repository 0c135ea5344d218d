namespace Orvane.Folaro.Animation;

/// <summary>What starts an effect.</summary>
public enum EffectTriggerType
{
    OnClick,
    WithPrevious,
    AfterPrevious,
}
