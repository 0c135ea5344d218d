namespace Orvane.Probe
{
    /// <summary>Members whose managed side does next to nothing, for timing the binding itself.</summary>
    public static class Calls
    {
        public static int StringLength(string value) => value.Length;
    }
}
