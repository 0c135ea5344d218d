namespace Orvane.Folaro;

/// <summary>The handout master: the design of printed handouts.</summary>
public interface IMasterHandoutSlide : IBaseSlide
{
    IBaseSlide AsIBaseSlide { get; }
}

public interface IMasterHandoutSlideManager
{
    /// <summary>The handout master, or null when the presentation has none.</summary>
    IMasterHandoutSlide? MasterHandoutSlide { get; }
    IMasterHandoutSlide SetDefaultMasterHandoutSlide();
    void RemoveMasterHandoutSlide();
}
