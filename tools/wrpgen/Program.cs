using System;
using System.IO;
using System.Linq;
using Orvane.WrpGen.Emit;
using Orvane.WrpGen.Metadata;
using Orvane.WrpGen.Model;
using Orvane.WrpGen.Output;
using Orvane.WrpGen.Passes;

namespace Orvane.WrpGen
{
    internal static class Program
    {
        public static int Main(string[] args)
        {
            Options options;
            try
            {
                options = Options.Parse(args);
            }
            catch (ArgumentException e)
            {
                Console.Error.WriteLine($"WrpGen: {e.Message}");
                Console.Error.WriteLine(Options.Usage);
                return 2;
            }
            try
            {
                var result = Generator.Run(options);
                Console.WriteLine($"WrpGen {options.Module}: {result.Model.ObjectTypes.Count()} types, " +
                                  $"{result.Model.EnumTypes.Count()} enums, {result.Model.Skipped.Count} skipped; " +
                                  $"{result.Writer.Written} files written, {result.Writer.Unchanged} unchanged, {result.Writer.Removed} removed");
                return 0;
            }
            catch (Exception e) when (e is IOException or BadImageFormatException or InvalidOperationException
                                           or ArgumentException or FileNotFoundException or UnauthorizedAccessException)
            {
                Console.Error.WriteLine($"WrpGen: {e.Message}");
                return 1;
            }
        }
    }

    /// <summary>One generator run: metadata, model, passes, emitters, writer.</summary>
    internal static class Generator
    {
        public sealed record Result(BindingModel Model, EmitContext Context, OutputWriter Writer);

        /// <summary>
        /// Builds the model from metadata and runs every pass over it: binding
        /// kinds, names, what cannot be bound, overload groups, typed collections,
        /// the report, the Python tables, the C++ symbol names and the entry plan.
        /// </summary>
        public static BindingModel Analyse(AssemblyLoader loader, Options o)
        {
            var siblings = loader.Siblings.Select((a, i) => (a, o.Siblings[i].PythonModule)).ToList();
            var model = ModelBuilder.Build(loader.Input, siblings, o.Module, o.RootNamespace, o.ProxyAssembly, o.Company);
            model.ExportCapsules = o.ExportCapsules;
            BindingKinds.Run(model);
            Naming.Run(model);
            Unbound.Run(model);
            Overloads.Run(model);
            GenericInstances.Run(model);
            Naming.NameInstances(model);
            SkippedReport.Collect(model);
            MemberSharing.Run(model);
            SymbolNaming.Run(model);
            EntryPlan.Run(model);
            return model;
        }

        /// <summary>
        /// One emitter per generated family. Each writes named sections, so the
        /// order they run in does not change the output.
        /// </summary>
        public static readonly (string Family, Action<EmitContext> Run)[] Emitters =
        {
            ("common", CommonEmitter.Run),
            ("hosts", HostEmitter.Run),
            ("type-objects", TypeObjectEmitter.Run),
            ("properties-methods", PropertyMethodEmitter.Run),
            ("dispatchers", DispatcherEmitter.Run),
            ("collection-slots", CollectionSlotEmitter.Run),
            ("enums", EnumEmitter.Run),
            ("static-fields", StaticFieldEmitter.Run),
            ("capsules", CapsuleEmitter.Run),
            ("generic-wrappers", GenericEmitter.Run),
            ("modules", ModuleEmitter.Run),
            ("proxies", ProxyEmitter.Run),
            ("stubs", StubEmitter.Run),
        };

        public static EmitContext Emit(BindingModel model)
        {
            var ctx = new EmitContext(model);
            foreach (var (_, run) in Emitters)
                run(ctx);
            return ctx;
        }

        public static Result Run(Options o)
        {
            using var loader = new AssemblyLoader(o.Assembly, o.Siblings.Select(s => s.AssemblyPath));
            var model = Analyse(loader, o);
            var ctx = Emit(model);
            var writer = new OutputWriter();
            if (o.CppOut != null)
                writer.WriteTree(o.CppOut, OutputWriter.CppTree(ctx, o.Shards), "*.inc", "shard_*.cpp");
            if (o.CsOut != null)
                writer.WriteTree(o.CsOut, ctx.CsFiles, "*.cs");
            if (o.PyiOut != null)
                writer.WriteTree(o.PyiOut, ctx.PyiFiles, "*.pyi");
            if (o.Report != null)
                writer.Write(o.Report, SkippedReport.Format(model));
            return new Result(model, ctx, writer);
        }
    }
}
