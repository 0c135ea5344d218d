namespace Orvane.Folaro;

public enum HyperlinkActionType
{
    NoAction,
    Hyperlink,
    JumpFirstSlide,
    JumpPreviousSlide,
    JumpNextSlide,
    JumpLastSlide,
    JumpEndShow,
    JumpLastViewedSlide,
    JumpSpecificSlide,
    EndShow,
    OpenFile,
    StartProgram,
    StartMacro,
    Unknown,
}
