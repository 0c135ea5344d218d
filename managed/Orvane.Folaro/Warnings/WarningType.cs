namespace Orvane.Folaro.Warnings;

public enum WarningType
{
    SourceFileCorruption,
    DataLoss,
    MajorFormattingLoss,
    MinorFormattingLoss,
    CompatibilityIssue,
    UnexpectedContent,
}
