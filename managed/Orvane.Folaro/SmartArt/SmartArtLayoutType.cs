namespace Orvane.Folaro.SmartArt;

public enum SmartArtLayoutType
{
    BasicBlockList,
    BasicProcess,
    BasicCycle,
    BasicPyramid,
    BasicVenn,
    Hierarchy,
    OrganizationChart,
    VerticalBulletList,
    Custom,
}
