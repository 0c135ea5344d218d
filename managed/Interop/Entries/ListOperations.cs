using System;
using System.Collections;
using System.Collections.Concurrent;
using System.Collections.Generic;

namespace Orvane.WrpGen.Interop
{
    /// <summary>
    /// Element values for typed collections: a Python int arrives as int,
    /// long or ulong and is converted (checked) to the collection's numeric
    /// element type, as a C# caller's implicit conversion would be. Other
    /// values pass unchanged and the collection applies its own type checks.
    /// </summary>
    public static class Elements
    {
        private static readonly ConcurrentDictionary<Type, Type> ElementTypes = new();

        /// <summary>The element type of a list-like object: T of T[] or IList&lt;T&gt;, else object.</summary>
        public static Type ElementTypeOf(object collection) =>
            ElementTypes.GetOrAdd(collection.GetType(), static type =>
            {
                if (type.IsArray)
                    return type.GetElementType()!;
                foreach (Type ifc in type.GetInterfaces())
                    if (ifc.IsGenericType && ifc.GetGenericTypeDefinition() == typeof(IList<>))
                        return ifc.GetGenericArguments()[0];
                return typeof(object);
            });

        public static object? Coerce(object? value, Type elementType)
        {
            if (value is null || elementType == typeof(object) || elementType.IsInstanceOfType(value))
                return value;
            Type target = Nullable.GetUnderlyingType(elementType) ?? elementType;
            bool integral = value is int or long or ulong or bool;
            if (target.IsEnum && value is int or long or ulong)
                return Enum.ToObject(target, value);
            if (integral && value is not bool && IsNumeric(target))
                return Convert.ChangeType(value, target, System.Globalization.CultureInfo.InvariantCulture);
            if (value is double d && target == typeof(float))
                return (float)d;
            if (value is double && target == typeof(decimal))
                return Convert.ToDecimal(value, System.Globalization.CultureInfo.InvariantCulture);
            if (value is string s && target == typeof(char) && s.Length == 1)
                return s[0];
            return value;
        }

        private static bool IsNumeric(Type type) =>
            type == typeof(int) || type == typeof(long) || type == typeof(short) || type == typeof(byte) ||
            type == typeof(sbyte) || type == typeof(ushort) || type == typeof(uint) || type == typeof(ulong) ||
            type == typeof(double) || type == typeof(float) || type == typeof(decimal);

        /// <summary>The variant value converted for <paramref name="collection"/>'s elements.</summary>
        public static unsafe object? FromArg(object collection, VariantArg* arg) =>
            Coerce(Variants.FromArg(arg), ElementTypeOf(collection));

        /// <summary>Equality as the collection itself would test it (EqualityComparer.Default semantics).</summary>
        public static bool AreEqual(object? item, object? value) => Equals(item, value);
    }

    /// <summary>
    /// The list operations behind the SiApi list, array and array-list proxies,
    /// on any <see cref="IList"/>. Index rules follow .NET's collections; the
    /// Python-facing extras (negative pop index, start/stop of index()) follow Python.
    /// </summary>
    internal static unsafe class ListOperations
    {
        public const int Ok = 0, Empty = 1, OutOfRange = 2, Failed = -1;

        public static int GetItem(IList list, int index, IntPtr* result)
        {
            if ((uint)index >= (uint)list.Count)
                return OutOfRange;
            *result = Variants.ToPyChecked(list[index]);
            return Ok;
        }

        public static int SetItem(IList list, int index, VariantArg* value)
        {
            if ((uint)index >= (uint)list.Count)
                return OutOfRange;
            list[index] = Elements.FromArg(list, value);
            return Ok;
        }

        public static int RemoveAt(IList list, int index)
        {
            if ((uint)index >= (uint)list.Count)
                return OutOfRange;
            list.RemoveAt(index);
            return Ok;
        }

        public static bool Remove(IList list, VariantArg* value)
        {
            int index = IndexOf(list, Elements.FromArg(list, value), 0, list.Count);
            if (index < 0)
                return false;
            list.RemoveAt(index);
            return true;
        }

        public static int Pop(IList list, bool hasIndex, int index, IntPtr* result)
        {
            int count = list.Count;
            if (count == 0)
                return Empty;
            int at = hasIndex ? index : count - 1;
            if (at < 0)
                at += count;
            if ((uint)at >= (uint)count)
                return OutOfRange;
            IntPtr item = Variants.ToPyChecked(list[at]);
            try
            {
                list.RemoveAt(at);
            }
            catch
            {
                PyObjects.DecRef(item);
                throw;
            }
            *result = item;
            return Ok;
        }

        private static object?[] Snapshot(IEnumerable source)
        {
            var items = new List<object?>();
            foreach (object? item in source)
                items.Add(item);
            return items.ToArray();
        }

        /// <summary>list += other for a managed other: 1 when handled.</summary>
        public static int InplaceConcat(IList list, object? other)
        {
            if (other is not IEnumerable source)
                return 0;
            // A snapshot first: other may be the list itself.
            Type elementType = Elements.ElementTypeOf(list);
            foreach (object? item in Snapshot(source))
                list.Add(Elements.Coerce(item, elementType));
            return 1;
        }

        public static void InplaceRepeat(IList list, int times)
        {
            if (times <= 0)
            {
                list.Clear();
                return;
            }
            object?[] items = Snapshot(list);
            for (int k = 1; k < times; k++)
                foreach (object? item in items)
                    list.Add(item);
        }

        /// <summary>list[start::step] = source (slice length fixed): 1 when handled.</summary>
        public static int SetItems(IList list, object? source, int start, int length, int step)
        {
            if (source is not IEnumerable enumerable)
                return 0;
            object?[] items = Snapshot(enumerable);
            if (items.Length != length)
                return 0;
            Type elementType = Elements.ElementTypeOf(list);
            for (int k = 0; k < length; k++)
                list[start + k * step] = Elements.Coerce(items[k], elementType);
            return 1;
        }

        /// <summary>Removes the slice's items, highest index first.</summary>
        public static void RemoveItems(IList list, int start, int length, int step)
        {
            var indices = new int[length];
            for (int k = 0; k < length; k++)
                indices[k] = start + k * step;
            Array.Sort(indices);
            for (int k = length - 1; k >= 0; k--)
                list.RemoveAt(indices[k]);
        }

        public static void Reverse(IList list)
        {
            switch (list)
            {
                case Array array:
                    Array.Reverse(array);
                    return;
                case ArrayList arrayList:
                    arrayList.Reverse();
                    return;
            }
            for (int i = 0, j = list.Count - 1; i < j; i++, j--)
                (list[i], list[j]) = (list[j], list[i]);
        }

        /// <summary>Sorts with the default comparer, as List&lt;T&gt;.Sort and Array.Sort do.</summary>
        public static void Sort(IList list, bool reverse)
        {
            switch (list)
            {
                case Array array when array.Rank == 1:
                    Array.Sort(array);
                    break;
                case ArrayList arrayList:
                    arrayList.Sort();
                    break;
                default:
                    {
                        object?[] items = Snapshot(list);
                        Array.Sort(items, Comparer.Default);
                        for (int i = 0; i < items.Length; i++)
                            list[i] = items[i];
                        break;
                    }
            }
            if (reverse)
                Reverse(list);
        }

        /// <summary>index(value[, start[, stop]]) with Python's reading of start and stop.</summary>
        public static int IndexBy(IList list, bool hasStart, int start, bool hasStop, int stop, VariantArg* value)
        {
            int count = list.Count;
            int from = hasStart ? Clamp(start, count) : 0;
            int to = hasStop ? Clamp(stop, count) : count;
            return IndexOf(list, Elements.FromArg(list, value), from, to);
        }

        private static int Clamp(int index, int count)
        {
            if (index < 0)
                index = Math.Max(0, index + count);
            return Math.Min(index, count);
        }

        private static int IndexOf(IList list, object? value, int from, int to)
        {
            for (int i = from; i < to; i++)
                if (Elements.AreEqual(list[i], value))
                    return i;
            return -1;
        }

        public static bool Contains(IEnumerable collection, object? value)
        {
            if (collection is IList list)
                return IndexOf(list, value, 0, list.Count) >= 0;
            foreach (object? item in collection)
                if (Elements.AreEqual(item, value))
                    return true;
            return false;
        }

        public static int CountOf(IEnumerable collection, object? value)
        {
            int count = 0;
            foreach (object? item in collection)
                if (Elements.AreEqual(item, value))
                    count++;
            return count;
        }
    }
}
