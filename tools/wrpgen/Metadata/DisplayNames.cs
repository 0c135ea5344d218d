using System;
using System.Linq;

namespace Orvane.WrpGen.Metadata
{
    /// <summary>How the report writes managed types.</summary>
    internal static class DisplayNames
    {
        /// <summary>A C#-like display name for the report: System.Collections.Generic.IList&lt;Orvane.Folaro.ISlide&gt;.</summary>
        public static string Of(Type t)
        {
            if (t.IsByRef) return Of(t.GetElementType()!) + "&";
            if (t.IsPointer) return Of(t.GetElementType()!) + "*";
            if (t.IsArray) return Of(t.GetElementType()!) + "[" + new string(',', t.GetArrayRank() - 1) + "]";
            if (t.IsGenericParameter) return t.Name;
            if (t.IsGenericType)
            {
                string name = t.GetGenericTypeDefinition().FullName ?? t.Name;
                int tick = name.IndexOf('`');
                if (tick >= 0) name = name.Substring(0, tick);
                return name + "<" + string.Join(", ", t.GetGenericArguments().Select(Of)) + ">";
            }
            return (t.FullName ?? t.Name).Replace('+', '.');
        }
    }
}
