namespace Orvane.Folaro.Warnings;

/// <summary>Told about problems found while loading or saving that do not stop the work.</summary>
public interface IWarningCallback
{
    /// <summary>Called once per warning; <see cref="ReturnAction.Abort"/> stops the operation.</summary>
    ReturnAction Warning(IWarningInfo warning);
}
