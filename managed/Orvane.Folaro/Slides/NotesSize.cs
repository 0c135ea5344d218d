using Orvane.Marel;

namespace Orvane.Folaro;

/// <summary>The size of notes pages, in points.</summary>
public interface INotesSize
{
    SizeF Size { get; }
}

public sealed class NotesSize : INotesSize
{
    private readonly Presentation _owner;

    internal NotesSize(Presentation owner)
    {
        _owner = owner;
    }

    /// <summary>The notes page size; portrait US letter when the deck does not say.</summary>
    public SizeF Size
    {
        get
        {
            var element = _owner.Root.NotesSize;
            return new SizeF(Emu.ToPoints(element?.Cx?.Value ?? 6858000), Emu.ToPoints(element?.Cy?.Value ?? 9144000));
        }
    }
}
