namespace Orvane.Folaro.Warnings;

public interface IWarningInfo
{
    WarningType WarningType { get; }

    string Description { get; }

    /// <summary>Passes this warning on to another receiver.</summary>
    void SendWarning(IWarningCallback receiver);
}
