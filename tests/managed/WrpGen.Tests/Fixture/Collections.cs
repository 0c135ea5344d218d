using System;
using System.Collections;
using System.Collections.Generic;
using System.IO;

namespace Wrp.Fixture
{
    /// <summary>A read-only collection interface: an int indexer beside a Count.</summary>
    public interface IPageCollection : IEnumerable<IPage>
    {
        int Count { get; }
        IPage this[int index] { get; }
    }

    /// <summary>A writable collection class.</summary>
    public sealed class PageCollection : IPageCollection
    {
        private readonly List<IPage> _pages = new();
        public int Count => _pages.Count;
        public IPage this[int index] { get => _pages[index]; set => _pages[index] = value; }
        public IEnumerator<IPage> GetEnumerator() => _pages.GetEnumerator();
        IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();
    }

    /// <summary>Parameters and results of the kinds that travel in records, lists and views.</summary>
    public static class Kinds
    {
        private static int _slot;

        public static void Swap(ref string text, out Point point) { text += "!"; point = new Point(1, 2); }
        public static Point? Find(Point? point) => point;
        public static DateTime? When(DateTimeOffset? at) => at?.UtcDateTime;
        public static IEnumerable<IPage> Pages(IList<IPage> pages) => pages;
        public static List<string> Names(string[] names, IEnumerable<int> numbers) => new(names);
        public static ArrayList Mixed(IEnumerator items, ICollection sizes, CollectionBase more) => new();
        public static MemoryStream Buffer(Stream source) => new();
        public static IDictionary<string, int> Map() => new Dictionary<string, int>();
        public static ref int Slot() => ref _slot;
        public static void Ranges(int[,] grid) { }
    }
}

namespace Wrp.Fixture
{
    /// <summary>Typed arrays, enumerators and read-only lists of the fixture's own types.</summary>
    public static class Shelf
    {
        public static IPage[] Reversed(IPage[] pages)
        {
            var copy = (IPage[])pages.Clone();
            Array.Reverse(copy);
            return copy;
        }

        public static IEnumerator<IPage> Walk(IEnumerable<IPage> pages) => pages.GetEnumerator();
        public static IReadOnlyList<IPage> Snapshot(ICollection<IPage> pages) => new List<IPage>(pages);
    }
}

namespace Wrp.Fixture
{
    /// <summary>A keyed indexer of two indices, readable and writable, through an interface.</summary>
    public interface IGrid
    {
        string this[int column, int row] { get; set; }
    }

    /// <summary>The interface's indexer and one more by another key: x[...] dispatches between them.</summary>
    public sealed class Grid : IGrid
    {
        private readonly Dictionary<(int, int), string> _cells = new();
        public string this[int column, int row] { get => _cells[(column, row)]; set => _cells[(column, row)] = value; }
        public int this[string name] => name.Length;
    }
}
