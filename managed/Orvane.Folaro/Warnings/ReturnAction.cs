namespace Orvane.Folaro.Warnings;

public enum ReturnAction
{
    Continue,
    Abort,
}
