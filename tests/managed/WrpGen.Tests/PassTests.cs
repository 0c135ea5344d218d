using System;
using System.Collections.Generic;
using System.Linq;
using System.Text.RegularExpressions;
using Orvane.WrpGen;
using Orvane.WrpGen.Model;
using Orvane.WrpGen.Passes;
using Xunit;

namespace WrpGen.Tests
{
    /// <summary>What the passes leave on the model of the fixture assembly.</summary>
    public class PassTests : IClassFixture<AnalysedFixture>
    {
        private readonly AnalysedFixture _f;

        public PassTests(AnalysedFixture f) { _f = f; }

        private BoundType T(string name) => _f.Type("Wrp.Fixture." + name);

        private static MethodModel Method(BoundType t, string name, int overload = 0) =>
            t.Methods.Where(m => m.Name == name).ElementAt(overload);

        [Fact]
        public void TypeSelectionKeepsTopLevelTypesBelowTheRootAndNamesWhyTheOthersAreOut()
        {
            var unbound = _f.Model.UnboundTypes.ToDictionary(u => u.Clr.FullName!, u => u.Kind);
            Assert.Equal("generic", unbound["Wrp.Fixture.Box`1"]);
            Assert.Equal("unsupported", unbound["Wrp.Fixture.Document+Inner"]);
            Assert.Equal(2, unbound.Count);
            Assert.Equal(_f.Model.Types.Select(t => t.FullName).OrderBy(n => n, StringComparer.Ordinal),
                         _f.Model.Types.Select(t => t.FullName));
            Assert.Equal("Wrp.Fixture", _f.Model.RootNamespace);
        }

        [Fact]
        public void BindingKindsFollowTheDeclaredTypes()
        {
            var doc = T("Document");
            BindKind Prop(string name) => doc.Properties.Single(p => p.Name == name).Type.Kind;
            Assert.Equal(BindKind.DateTime, Prop("Created"));
            Assert.Equal(BindKind.DateTimeOffset, Prop("Stamp"));
            Assert.Equal(BindKind.TimeSpan, Prop("Elapsed"));
            Assert.Equal(BindKind.Decimal, Prop("Price"));
            Assert.Equal(BindKind.Guid, Prop("Id"));
            Assert.Equal(BindKind.Variant, Prop("Tag"));
            Assert.Equal(BindKind.Bytes, Prop("Data"));
            Assert.Equal(BindKind.Char, Prop("Letter"));
            var maybe = doc.Properties.Single(p => p.Name == "Maybe").Type;
            Assert.Equal((BindKind.Nullable, BindKind.Int32), (maybe.Kind, maybe.Element!.Kind));
            var flags = doc.Properties.Single(p => p.Name == "Flags").Type;
            Assert.Equal((BindKind.Enum, BindKind.Int64), (flags.Kind, flags.Underlying));
            Assert.Same(T("Page"), doc.Properties.Single(p => p.Name == "FirstPage").Type.Bound);
            Assert.Equal(BindKind.Int64, T("BigFlags").EnumUnderlying);

            var swap = Method(T("Kinds"), "Swap").Parameters.Select(p => p.Type).ToList();
            Assert.All(swap, p => Assert.Equal(BindKind.ByRef, p.Kind));
            Assert.Equal(new[] { false, true }, swap.Select(p => p.IsOut));
            Assert.Equal(new[] { BindKind.String, BindKind.Object }, swap.Select(p => p.Element!.Kind));
            var names = Method(T("Kinds"), "Names");
            Assert.Equal(new[] { CollectionKind.TypedArray, CollectionKind.GenericEnumerable },
                         names.Parameters.Select(p => p.Type.Collection));
            Assert.Equal(CollectionKind.GenericList, names.Result.Collection);
            Assert.Equal(BindKind.Stream, Method(T("Kinds"), "Buffer").Result.Kind);
            Assert.Equal(BindKind.Void, T("Document").Constructors[0].Result.Kind);
        }

        [Fact]
        public void AnIntIndexerOfObjectsBesideACountIsTheElementAccessAndAnyOtherIsKeyed()
        {
            var pages = T("PageCollection");
            Assert.Equal(T("IPage"), pages.Indexer!.Element.Bound);
            Assert.True(pages.Indexer.CanWrite);
            Assert.DoesNotContain(pages.Methods, m => m.Access != MemberAccess.Call);
            Assert.False(T("IPageCollection").Indexer!.CanWrite);
            // No Count: Document's int indexer is reached by key, read-only.
            var doc = T("Document");
            Assert.Null(doc.Indexer);
            Assert.Equal(new[] { MemberAccess.IndexGet }, doc.Methods.Where(m => m.Access != MemberAccess.Call).Select(m => m.Access));
            // Two keyed indexers: both read, one written, all named get_item/set_item.
            var grid = T("Grid").Methods.Where(m => m.Access != MemberAccess.Call).ToList();
            Assert.Equal(new[] { MemberAccess.IndexGet, MemberAccess.IndexSet, MemberAccess.IndexGet }, grid.Select(m => m.Access));
            Assert.Equal(new[] { "get_item", "set_item", "get_item" }, grid.Select(m => m.PyName));
            Assert.NotNull(T("Grid").KeyedGet);
            Assert.NotNull(T("Grid").KeyedSet);
        }

        [Fact]
        public void MembersThatCannotBeBoundCarryTheFirstMissingKind()
        {
            Assert.Equal("generic", Method(T("Document"), "Echo").SkipKind);
            Assert.Equal("collection", Method(T("Kinds"), "Map").SkipKind);
            Assert.Equal("array", Method(T("Kinds"), "Ranges").SkipKind);
            Assert.Equal("byref", Method(T("Kinds"), "Slot").SkipKind);
            Assert.Equal("delegate", T("Document").Properties.Single(p => p.Name == "Callback").SkipKind);
            Assert.Null(Method(T("Document"), "TryGet").SkipKind);
            Assert.Equal(new[] { "Wrp.Fixture.Document.Changed(System.EventHandler)" }, T("Document").Events);
            // The report is made of these decisions, and of nothing else.
            var expected = new[]
            {
                ("Wrp.Fixture.Box<T>", "generic"),
                ("Wrp.Fixture.Document.Callback(System.Action)", "delegate"),
                ("Wrp.Fixture.Document.Changed(System.EventHandler)", "delegate"),
                ("Wrp.Fixture.Document.Echo(T)", "generic"),
                ("Wrp.Fixture.Document.Inner", "unsupported"),
                ("Wrp.Fixture.Kinds.Map()", "collection"),
                ("Wrp.Fixture.Kinds.Ranges(System.Int32[,])", "array"),
                ("Wrp.Fixture.Kinds.Slot()", "byref"),
            };
            Assert.Equal(expected, _f.Model.Skipped.Select(s => (s.What, s.Kind)).OrderBy(s => s.What, StringComparer.Ordinal));
        }

        [Fact]
        public void NamesComeFromTheManagedNames()
        {
            var doc = T("Document");
            Assert.Equal(Naming.Id("Wrp.Fixture.Document"), doc.Id);
            Assert.Equal("WrpNs_Wrp.WrpNs_Fixture.WrpCs_Document", doc.ProxyFullName);
            Assert.Equal("orvane.fixture.Document", doc.PythonFullName);
            Assert.Equal("orvane.fixture.shapes", _f.Type("Wrp.Fixture.Shapes.Rectangle").Module.PyName);
            Assert.Equal("get3_dname", Method(doc, "Get3DName").PyName);
            Assert.Equal("get_htmltext", Method(doc, "GetHTMLText").PyName);
            Assert.Equal(new[] { "NOT_DEFINED", "PPTX", "PDF" }, T("SaveKind").EnumMembers.Select(e => e.PyName));
            // Fields are constants in capitals; static properties keep snake case.
            Assert.Equal(new[] { "MAX_SIZE", "PRODUCT_NAME", "first_page" }, T("Constants").StaticMembers.Select(s => s.Key));
            Assert.Equal(new[] { "call_000_Save", "call_001_Save", "call_002_Save", "call_003_Save" },
                         doc.Methods.Where(m => m.Name == "Save").Select(m => m.EntryName));
            Assert.All(_f.Model.Generics, g => Assert.Equal(Naming.InstanceId(g.Element.Clr), g.Id));
        }

        [Fact]
        public void TheEntryPlanListsEveryBoundMemberInBindingOrder()
        {
            var doc = T("Document").Entries;
            Assert.Equal(new[] { "ctor_000_Document", "ctor_001_Document" }, doc.Take(2).Select(e => e.Name));
            Assert.Equal("btp_IsAssignableTo", doc[^1].Name);
            Assert.Equal(doc.Count, doc.Select(e => e.Name).Distinct().Count());
            Assert.DoesNotContain(doc, e => e.Name.Contains("Echo"));
            Assert.Contains(doc, e => e.Name == "set_Title" && e.Kind == EntryKind.Setter);
            Assert.DoesNotContain(doc, e => e.Name == "set_Version");  // init-only: read-only here
            // A struct without a parameterless constructor gets the implicit one last.
            var point = T("Point").Entries.Where(e => e.Kind == EntryKind.Ctor).ToList();
            Assert.Equal(new[] { "ctor_000_Point", "ctor_001_Point" }, point.Select(e => e.Name));
            Assert.True(point[1].Method!.IsImplicitDefault);
            // A collection's element entries follow its ordinary entries.
            Assert.Equal(new[] { "get_Count", "sq_length", "sq_item", "sq_item_nocheck", "sq_contains", "sq_ssitem",
                                 "sq_ssitem_nocheck", "mp_ssubscript_sizable", "btp_IsAssignableTo" },
                         T("PageCollection").Entries.SkipWhile(e => e.Name != "get_Count").Select(e => e.Name));
            Assert.Equal(new[] { "get_None", "get_High" }, T("BigFlags").Entries.Select(e => e.Name));
            Assert.Equal(BindKind.Int64, T("BigFlags").Entries[0].Result.Kind);
        }

        [Fact]
        public void MemberSharingPointsTypesAtTheirInterfacesAndMergesBaseOverloads()
        {
            var doc = T("Document");
            var close = doc.PyMethods.Single(m => m.PyName == "close");
            Assert.Equal((SlotSource.Shared, T("IDocument")), (close.Source, close.Provider));
            Assert.Equal(2, close.Candidates.Count);
            Assert.Equal(SlotSource.Shared, doc.PyProperties.Single(p => p.PyName == "as_idisposable").Source);

            var rect = _f.Type("Wrp.Fixture.Shapes.Rectangle");
            var shape = _f.Type("Wrp.Fixture.Shapes.Shape");
            var move = rect.PyMethods.Single(m => m.PyName == "move");
            Assert.Equal(SlotSource.Local, move.Source);
            Assert.Equal(new[] { rect, shape }, move.Candidates.Select(c => c.Owner));
            Assert.Contains(move.Candidates[1].Method, shape.ExportedCandidates);
            Assert.Equal(SlotSource.Inherited, rect.PyProperties.Single(p => p.PyName == "x").Source);
        }

        /// <summary>Every C++ name the naming pass stored, each owner's once; functions private to a unit qualified by its namespace.</summary>
        private IEnumerable<string> StoredSymbols()
        {
            var m = _f.Model;
            foreach (var t in m.Types)
            {
                var c = t.Cpp;
                yield return c.Host;
                if (t.IsEnum || t.HasStaticInitialiser)
                    yield return c.Initialiser;
                if (t.IsEnum)
                    continue;
                yield return c.UnitNamespace;
                yield return c.TypeObject;
                yield return c.IsNotValid;
                yield return c.PyToClr;
                yield return c.ClrToPy;
                if (t.Indexer != null && t.IsInterface)
                {
                    yield return c.SharedItem;
                    yield return c.SharedSubscript;
                }
                foreach (var p in t.Properties.Where(p => p.IsBound))
                {
                    if (p.Getter != null) yield return p.Getter.Qualified;
                    if (p.Setter != null) yield return p.Setter.Qualified;
                }
                foreach (var slot in t.PyMethods.Where(s => s.Source == SlotSource.Local))
                    yield return slot.Function.Qualified;
                foreach (var e in t.ExportedCandidates)
                    yield return e.ExportedFunction!;
            }
            foreach (var mod in m.Modules)
            {
                yield return mod.Cpp.Builder;
                yield return mod.Cpp.MethodTable;
                yield return mod.Cpp.Definition.Name;
                if (mod.HasStaticFields)
                    yield return mod.Cpp.StaticsInitialiser;
            }
            yield return m.CapsuleExport;
            foreach (var u in new[] { m.Units.Generic, m.Units.Modules })
                yield return u.Namespace;
            yield return m.GenericNames.ReadyTypes;
            foreach (var g in m.Generics)
            {
                yield return g.TpIter;
                foreach (var w in g.Wrappers)
                {
                    yield return w.Type;
                    yield return w.Binding;
                    if (w.Converter != null)
                        yield return w.Converter;
                }
                foreach (var h in g.Hosts.Values)
                    yield return h.Native;
            }
        }

        [Fact]
        public void TheNamingPassNamesEveryCppSymbolOnceAndTheEmittersUseExactlyThoseNames()
        {
            var stored = StoredSymbols().ToList();
            var duplicates = stored.GroupBy(n => n).Where(g => g.Count() > 1).Select(g => g.Key).ToList();
            Assert.Empty(duplicates);
            Assert.DoesNotContain(stored, string.IsNullOrEmpty);

            // Every generated name of these families in the output is one the pass stored, and every stored one is used.
            var bare = stored.Select(n => n.Substring(n.LastIndexOf(':') + 1)).ToHashSet();
            string output = _f.Render(Generator.Emitters.Select(e => e.Run).ToArray());
            var family = new Regex(@"\b(?:PyHost_(?:cs|gn)_\w+|wrpu_\w+|wrpPy_(?:tyds|is_not_valid|eypi|blts|phfn|pafn|htfn|hgfn|mtfn|mgfn|htgn|mlit|mlmd|mlds|imtf|cexp)_\w+|wrpPygn_(?:tyds|bind|tyrd|tp_iter|conv_py_to_clr)_\w+)");
            var emitted = family.Matches(output).Select(x => x.Value).ToHashSet();
            Assert.Empty(emitted.Except(bare));
            Assert.Empty(bare.Where(n => family.IsMatch(n)).Except(emitted));
        }

        [Fact]
        public void SharedMembersAreNamedOnceByTheirProviderAndPrivateOnesInTheirTypesUnit()
        {
            var doc = T("Document");
            var idoc = T("IDocument");
            Assert.NotEqual(doc.Cpp.Host, idoc.Cpp.Host);
            Assert.Contains(doc.Id, doc.Cpp.TypeObject);

            // Document's close is IDocument's exported dispatcher: one global function both tables name.
            var close = doc.PyMethods.Single(m => m.PyName == "close");
            var own = idoc.PyMethods.Single(m => m.PyName == "close");
            Assert.Equal(own.Function, close.Function);
            Assert.Null(close.Function.Namespace);
            Assert.Equal(close.Function.Name, close.Function.From(doc.Cpp.UnitNamespace));

            // Rectangle's move is its own, private to its unit: named bare inside, qualified outside.
            var rect = _f.Type("Wrp.Fixture.Shapes.Rectangle");
            var move = rect.PyMethods.Single(m => m.PyName == "move").Function;
            Assert.Equal(rect.Cpp.UnitNamespace, move.Namespace);
            Assert.Equal(move.Name, move.From(rect.Cpp.UnitNamespace));
            Assert.Equal(rect.Cpp.UnitNamespace + "::" + move.Name, move.From(doc.Cpp.UnitNamespace));

            // The overload Rectangle's dispatcher borrows from Shape is exported under a name of Shape's.
            var shape = _f.Type("Wrp.Fixture.Shapes.Shape");
            Assert.All(shape.ExportedCandidates, m => Assert.Contains(shape.Id, m.ExportedFunction));
            Assert.All(shape.Methods.Where(m => !shape.ExportedCandidates.Contains(m)), m => Assert.Null(m.ExportedFunction));
        }

        [Fact]
        public void TypedCollectionsCrossAsTheNamedWrapperOfTheirInstance()
        {
            var page = T("IPage");
            var g = _f.Model.Generics.Single(x => x.Element.Bound == page);
            Assert.Equal(new[] { GenericWrapper.List, GenericWrapper.Array, GenericWrapper.Iterable, GenericWrapper.Iter },
                         g.Wrappers.Select(w => w.Kind));
            Assert.Equal(g.Wrappers.Count, g.Wrappers.Select(w => w.PyName).Distinct().Count());
            Assert.Null(g.Wrapper(GenericWrapper.Iter).Converter);

            var pages = Method(T("Kinds"), "Pages");
            Assert.Same(g.Wrapper(GenericWrapper.List), pages.Parameters[0].Type.Wrapper);
            Assert.Same(g.Wrapper(GenericWrapper.Iterable), pages.Result.Wrapper);
            Assert.Same(g, page.IterableOf == null ? T("IPageCollection").IterableOf : page.IterableOf);
        }
    }
}
