using System;
using System.Linq;
using System.Text;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Passes
{
    /// <summary>The skipped-member report: one line per type or member not bound, with its missing kind.</summary>
    internal static class SkippedReport
    {
        public static void Collect(BindingModel model)
        {
            foreach (var t in model.ObjectTypes)
            {
                foreach (var m in t.Constructors.Concat(t.Methods).Where(m => !m.IsBound))
                    model.Skipped.Add(new SkippedEntry(m.ReportSignature, m.SkipKind!));
                foreach (var p in t.Properties.Where(p => !p.IsBound))
                    model.Skipped.Add(new SkippedEntry(p.ReportSignature, p.SkipKind!));
                foreach (var s in t.StaticMembers.Where(s => !s.IsBound))
                    model.Skipped.Add(new SkippedEntry(s.ReportSignature, s.SkipKind!));
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
