using System;

namespace Orvane.Probe
{
    /// <summary>A level with a checked range: an assignment out of range throws.</summary>
    public sealed class Gauge
    {
        private int _level;

        public int Level
        {
            get => _level;
            set => _level = value >= 0 && value <= 100
                ? value
                : throw new ArgumentOutOfRangeException(nameof(value), value, "Gauge.Level must be in [0, 100]");
        }
    }
}
