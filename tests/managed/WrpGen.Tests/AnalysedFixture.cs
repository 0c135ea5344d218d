using System;
using System.Linq;
using System.Text;
using Orvane.WrpGen;
using Orvane.WrpGen.Emit;
using Orvane.WrpGen.Metadata;
using Orvane.WrpGen.Model;

namespace WrpGen.Tests
{
    /// <summary>
    /// The fixture assembly analysed once, its metadata kept open so that
    /// emitters can still read it: the model the pass and golden tests look at.
    /// </summary>
    public sealed class AnalysedFixture : IDisposable
    {
        private readonly AssemblyLoader _loader;

        public AnalysedFixture()
        {
            var o = GeneratedFixture.OptionsFor(System.IO.Path.GetTempPath());
            o.ExportCapsules = true;  // so that the capsule emitter has something to show
            _loader = new AssemblyLoader(o.Assembly, Array.Empty<string>());
            Model = Generator.Analyse(_loader, o);
        }

        internal BindingModel Model { get; }

        internal BoundType Type(string fullName) => Model.Types.Single(t => t.FullName == fullName);

        /// <summary>
        /// Everything the given emitters produce, in one text: each unit, the
        /// declarations of wrp_module.h, then the other files, under their paths.
        /// </summary>
        internal string Render(params Action<EmitContext>[] emitters)
        {
            var ctx = new EmitContext(Model);
            foreach (var run in emitters)
                run(ctx);
            var sb = new StringBuilder();
            foreach (var unit in ctx.Units)
                sb.Append("==== cpp/").Append(unit.FileName).Append('\n').Append(unit.Render());
            if (ctx.Declarations.Count > 0)
            {
                sb.Append("==== cpp/wrp_module.h (declarations)\n");
                foreach (string d in ctx.Declarations)
                    sb.Append(d).Append('\n');
            }
            foreach (var (root, files) in new[] { ("cpp", ctx.CppFiles), ("cs", ctx.CsFiles), ("pyi", ctx.PyiFiles) })
                foreach (var (path, content) in files)
                    sb.Append("==== ").Append(root).Append('/').Append(path).Append('\n').Append(content);
            return sb.ToString();
        }

        public void Dispose() => _loader.Dispose();
    }
}
