using System;

namespace Orvane.Folaro;

// The range checks of the collections' indexers and index arguments, with one message shape:
// "<member>: index must be in [0, count)" (or "[0, count]" where the end itself is a place).
internal static class Indexes
{
    /// <summary>An index of an existing element: 0 to count - 1.</summary>
    internal static void Check(int index, int count, string member)
    {
        if (index < 0 || index >= count)
            throw new ArgumentOutOfRangeException(nameof(index), index, $"{member}: index must be in [0, {count})");
    }

    /// <summary>The element at an index, checked as <see cref="Check"/> does.</summary>
    internal static T At<T>(System.Collections.Generic.IReadOnlyList<T> items, int index, string member)
    {
        Check(index, items.Count, member);
        return items[index];
    }

    /// <summary>A place to insert at: 0 to count.</summary>
    internal static void CheckPlace(int index, int count, string member)
    {
        if (index < 0 || index > count)
            throw new ArgumentOutOfRangeException(nameof(index), index, $"{member}: index must be in [0, {count}]");
    }
}
