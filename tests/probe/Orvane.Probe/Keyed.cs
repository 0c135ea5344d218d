using System.Collections.Generic;

namespace Orvane.Probe
{
    /// <summary>Cells by column and row; a cell never written is a missing key.</summary>
    public sealed class Grid
    {
        private readonly Dictionary<(int, int), string> _cells = new();

        public string this[int column, int row]
        {
            get => _cells[(column, row)];
            set => _cells[(column, row)] = value;
        }

        /// <summary>A second indexer by another kind of key: the length of the name.</summary>
        public int this[string name] => name.Length;
    }

    /// <summary>A read-only indexer of one key.</summary>
    public sealed class Lengths
    {
        public int this[string text] => text.Length;
    }
}
