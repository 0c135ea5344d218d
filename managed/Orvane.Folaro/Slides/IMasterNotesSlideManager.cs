namespace Orvane.Folaro;

/// <summary>The notes master: the design of notes pages.</summary>
public interface IMasterNotesSlide : IBaseSlide
{
    IBaseSlide AsIBaseSlide { get; }
}

public interface IMasterNotesSlideManager
{
    /// <summary>The notes master, or null when the presentation has none.</summary>
    IMasterNotesSlide? MasterNotesSlide { get; }
    IMasterNotesSlide SetDefaultMasterNotesSlide();
    void RemoveMasterNotesSlide();
}
