using System;

namespace Orvane.Probe
{
    /// <summary>Static members read at import: the first three throw, the fourth would read fine.</summary>
    public static class BrokenStatics
    {
        public static int First => throw new InvalidOperationException("BrokenStatics.First is unavailable");

        public static int Second => throw new InvalidOperationException("BrokenStatics.Second is unavailable");

        public static int Third => throw new InvalidOperationException("BrokenStatics.Third is unavailable");

        public static int Fourth => 4;
    }

    /// <summary>A second class whose first static member throws, initialised after <see cref="BrokenStatics"/>.</summary>
    public static class LaterBrokenStatics
    {
        public static int Only => throw new InvalidOperationException("LaterBrokenStatics.Only is unavailable");

        public static int After => 8;
    }

    /// <summary>Static members that all read fine, initialised after the failing classes.</summary>
    public static class ReadyStatics
    {
        public static int Answer => 42;

        public static string Name => "ready";
    }
}
