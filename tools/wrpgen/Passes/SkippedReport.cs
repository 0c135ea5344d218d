using System;
using System.Linq;
using System.Text;
using Orvane.WrpGen.Metadata;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Passes
{
    /// <summary>
    /// The skipped-member report: one line per type or member not bound, with
    /// its missing kind. The only writer of <see cref="BindingModel.Skipped"/>;
    /// the passes before it leave their decisions on the model.
    /// </summary>
    internal static class SkippedReport
    {
        public static void Collect(BindingModel model)
        {
            model.Skipped.Clear();
            foreach (var u in model.UnboundTypes)
                model.Skipped.Add(new SkippedEntry(DisplayNames.Of(u.Clr), u.Kind));
            foreach (var t in model.Types)
            {
                foreach (var e in t.EnumMembers.Where(e => !e.IsBound))
                    model.Skipped.Add(new SkippedEntry($"{t.FullName}.{e.Name}({t.FullName})", e.SkipKind!));
                foreach (var m in t.Constructors.Concat(t.Methods).Where(m => !m.IsBound))
                    model.Skipped.Add(new SkippedEntry(m.ReportSignature, m.SkipKind!));
                foreach (var p in t.Properties.Where(p => !p.IsBound))
                    model.Skipped.Add(new SkippedEntry(p.ReportSignature, p.SkipKind!));
                foreach (var s in t.StaticMembers.Where(s => !s.IsBound))
                    model.Skipped.Add(new SkippedEntry(s.ReportSignature, s.SkipKind!));
                // Operators and events have no binding at all.
                foreach (string op in t.Operators)
                    model.Skipped.Add(new SkippedEntry(op, "unsupported"));
                foreach (string ev in t.Events)
                    model.Skipped.Add(new SkippedEntry(ev, "delegate"));
            }
        }

        public static string Format(BindingModel model)
        {
            var sb = new StringBuilder();
            foreach (var e in model.Skipped.Distinct()
                         .OrderBy(e => e.What, StringComparer.Ordinal).ThenBy(e => e.Kind, StringComparer.Ordinal))
                sb.Append(e.What).Append('\t').Append(e.Kind).Append('\n');
            return sb.ToString();
        }
    }
}
