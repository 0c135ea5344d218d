using System;
using Orvane.Marel;

namespace Orvane.Folaro.Export;

/// <summary>Where notes and comments go when a slide is rendered or exported.</summary>
public interface INotesCommentsLayoutingOptions
{
    NotesPositions NotesPosition { get; set; }
    CommentsPositions CommentsPosition { get; set; }
    /// <summary>Width of the comments area in points.</summary>
    float CommentsAreaWidth { get; set; }
    Color CommentsAreaColor { get; set; }
}

public sealed class NotesCommentsLayoutingOptions : INotesCommentsLayoutingOptions
{
    private float _commentsAreaWidth = 200f;

    public NotesCommentsLayoutingOptions()
    {
    }

    public NotesPositions NotesPosition { get; set; } = NotesPositions.None;
    public CommentsPositions CommentsPosition { get; set; } = CommentsPositions.None;

    public float CommentsAreaWidth
    {
        get => _commentsAreaWidth;
        set => _commentsAreaWidth = value >= 0f ? value : throw new ArgumentOutOfRangeException(nameof(value), value, "NotesCommentsLayoutingOptions.CommentsAreaWidth must not be negative");
    }

    public Color CommentsAreaColor { get; set; } = Color.Khaki;
}
