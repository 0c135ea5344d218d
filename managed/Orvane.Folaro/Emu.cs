using System;

namespace Orvane.Folaro;

// English Metric Units: 12,700 to the point, 914,400 to the inch.
internal static class Emu
{
    internal const long PerPoint = 12700;

    internal static float ToPoints(long emu) => (float)(emu / (double)PerPoint);

    internal static long FromPoints(float points) => (long)Math.Round(points * (double)PerPoint, MidpointRounding.AwayFromZero);
}
