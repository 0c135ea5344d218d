namespace Orvane.Folaro.Export;

public enum NotesPositions
{
    None,
    BottomFull,
    BottomTruncated,
}
