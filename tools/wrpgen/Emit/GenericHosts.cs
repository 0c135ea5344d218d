using System.Collections.Generic;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// One entry of a generic host: the managed method's name, the field of
    /// PyGnEntries it binds to, and the proxy method's C# signature, body and
    /// failure value (null: the entry returns nothing).
    /// </summary>
    internal sealed record GenericHostEntry(string Name, string Field, string CsReturn, string CsParams, string Body, string? Fail);

    /// <summary>A generic host of an instantiation: its names and its entries.</summary>
    internal sealed record GenericHost(GenericHostNames Names, List<GenericHostEntry> Entries);

    /// <summary>
    /// The hosts of one typed instantiation, as both sides see them: the host
    /// emitter binds these entries by name, the proxy emitter defines them.
    /// </summary>
    internal static class GenericHosts
    {
        private static string Read(GenericInstance g) => $"{g.ElementClass}.Read(element)";

        public static List<GenericHost> Of(GenericInstance g)
        {
            string t = CsTypes.TypeName(g.Element.Clr);
            string ops = $"GenericEntries<{t}>";
            string write = $"&{g.ElementClass}.Write";
            var hosts = new List<GenericHost>();
            if (g.HasList)
            {
                hosts.Add(new GenericHost(g.Hosts["ICol"], new List<GenericHostEntry>
                {
                    new("SqLength", "sq_length", "int", "IntPtr handle", $"return {ops}.Collection(handle).Count;", "-1"),
                    new("SqContains", "sq_contains", "int", "IntPtr handle, void* element", $"return {ops}.Collection(handle).Contains({Read(g)}) ? 1 : 0;", "0"),
                    new("Add", "add", "void", "IntPtr handle, void* element", $"{ops}.Collection(handle).Add({Read(g)});", null),
                    new("Remove", "remove", "byte", "IntPtr handle, void* element", $"return {ops}.Collection(handle).Remove({Read(g)}) ? (byte)1 : (byte)0;", "0"),
                    new("Clear", "clear", "void", "IntPtr handle", $"{ops}.Collection(handle).Clear();", null),
                    new("IsAssignableTo", "is_assignable_to", "byte", "IntPtr handle", $"return Handles.Target(handle) is global::System.Collections.Generic.ICollection<{t}> ? (byte)1 : (byte)0;", "0"),
                }));
                hosts.Add(new GenericHost(g.Hosts["IList"], new List<GenericHostEntry>
                {
                    new("SqGetItem", "sq_getitem", "int", "IntPtr handle, int index, PyObjectOutArg* result", $"return {ops}.GetItem(handle, index, result, {write});", "-1"),
                    new("SqGetItemNoCheck", "sq_getitem_nocheck", "int", "IntPtr handle, int index, PyObjectOutArg* result", $"{ops}.GetItemNoCheck(handle, index, result, {write}); return 0;", "-1"),
                    new("SqSetItem", "sq_setitem", "int", "IntPtr handle, int index, void* element", $"return {ops}.SetItem(handle, index, {Read(g)});", "-1"),
                    new("SqSetItemNoChek", "sq_setitem_nocheck", "void", "IntPtr handle, int index, void* element", $"{ops}.List(handle)[index] = {Read(g)};", null),
                    new("Insert", "insert", "void", "IntPtr handle, int index, void* element", $"{ops}.Insert(handle, index, {Read(g)});", null),
                    new("RemoveAt", "remove_at", "int", "IntPtr handle, int index", $"return {ops}.RemoveAt(handle, index);", "-1"),
                    new("Pop", "pop", "int", "IntPtr handle, int hasIndex, int index, PyObjectOutArg* result", $"return {ops}.Pop(handle, hasIndex, index, result, {write});", "-1"),
                    new("SqInplaceConcat", "sq_inplace_concat", "int", "IntPtr handle, IntPtr other", $"return {ops}.InplaceConcat(handle, other);", "-1"),
                    new("SqInplaceRepeat", "sq_inplace_repeat", "void", "IntPtr handle, int times", $"{ops}.InplaceRepeat(handle, times);", null),
                    new("MpSetItems", "mp_set_items", "int", "IntPtr handle, IntPtr source, int start, int sliceLength, int step", $"return {ops}.MpSetItems(handle, source, start, sliceLength, step);", "-1"),
                    new("MpRemoveItems", "mp_remove_items", "void", "IntPtr handle, int start, int sliceLength, int step", $"{ops}.MpRemoveItems(handle, start, sliceLength, step);", null),
                    new("Reverse", "reverse", "void", "IntPtr handle", $"{ops}.Reverse(handle);", null),
                    new("Sort", "sort", "void", "IntPtr handle, int reverse", $"{ops}.Sort(handle, reverse);", null),
                    new("IndexBy", "index_by", "int", "IntPtr handle, int hasStart, int start, int hasStop, int stop, void* element", $"return {ops}.IndexBy(handle, hasStart, start, hasStop, stop, {Read(g)});", "-1"),
                    new("CountOf", "count_of", "int", "IntPtr handle, void* element", $"return {ops}.CountOf(handle, {Read(g)});", "0"),
                    new("IsAssignableTo", "is_assignable_to", "byte", "IntPtr handle", $"return Handles.Target(handle) is global::System.Collections.Generic.IList<{t}> ? (byte)1 : (byte)0;", "0"),
                }));
            }
            if (g.HasArray)
            {
                hosts.Add(new GenericHost(g.Hosts["Array"], new List<GenericHostEntry>
                {
                    new("SqLength", "sq_length", "int", "IntPtr handle", $"return {ops}.List(handle).Count;", "-1"),
                    new("SqContains", "sq_contains", "int", "IntPtr handle, void* element", $"return {ops}.List(handle).Contains({Read(g)}) ? 1 : 0;", "0"),
                    new("SqGetItem", "sq_getitem", "int", "IntPtr handle, int index, PyObjectOutArg* result", $"return {ops}.GetItem(handle, index, result, {write});", "-1"),
                    new("SqGetItemNoCheck", "sq_getitem_nocheck", "int", "IntPtr handle, int index, PyObjectOutArg* result", $"{ops}.GetItemNoCheck(handle, index, result, {write}); return 0;", "-1"),
                    new("SqSetItem", "sq_setitem", "int", "IntPtr handle, int index, void* element", $"return {ops}.SetItem(handle, index, {Read(g)});", "-1"),
                    new("SqSetItemNoChek", "sq_setitem_nocheck", "void", "IntPtr handle, int index, void* element", $"{ops}.List(handle)[index] = {Read(g)};", null),
                    new("MpSetItems", "mp_set_items", "int", "IntPtr handle, IntPtr source, int start, int sliceLength, int step", $"return {ops}.MpSetItems(handle, source, start, sliceLength, step);", "-1"),
                    new("Reverse", "reverse", "void", "IntPtr handle", $"{ops}.Reverse(handle);", null),
                    new("Sort", "sort", "void", "IntPtr handle, int reverse", $"{ops}.Sort(handle, reverse);", null),
                    new("IndexBy", "index_by", "int", "IntPtr handle, int hasStart, int start, int hasStop, int stop, void* element", $"return {ops}.IndexBy(handle, hasStart, start, hasStop, stop, {Read(g)});", "-1"),
                    new("CountOf", "count_of", "int", "IntPtr handle, void* element", $"return {ops}.CountOf(handle, {Read(g)});", "0"),
                    new("IsAssignableTo", "is_assignable_to", "byte", "IntPtr handle", $"return Handles.Target(handle) is {t}[] ? (byte)1 : (byte)0;", "0"),
                }));
            }
            hosts.Add(new GenericHost(g.Hosts["Iterable"], new List<GenericHostEntry>
            {
                new("GetEnumerator", "get_enumerator", "int", "IntPtr handle, PyObjectOutArg* result", $"return {ops}.GetEnumerator(handle, result);", "-1"),
                new("IsAssignableTo", "is_assignable_to", "byte", "IntPtr handle", $"return Handles.Target(handle) is global::System.Collections.Generic.IEnumerable<{t}> ? (byte)1 : (byte)0;", "0"),
            }));
            hosts.Add(new GenericHost(g.Hosts["Iter"], new List<GenericHostEntry>
            {
                new("MoveNext", "move_next", "int", "IntPtr handle, PyObjectOutArg* result", $"return {ops}.MoveNext(handle, result, {write});", "-1"),
                new("IsAssignableTo", "is_assignable_to", "byte", "IntPtr handle", $"return Handles.Target(handle) is global::System.Collections.Generic.IEnumerator<{t}> ? (byte)1 : (byte)0;", "0"),
            }));
            return hosts;
        }
    }
}
