using System;
using System.Text;

namespace Orvane.WrpGen.Emit
{
    /// <summary>Indented text with '\n' line ends, the same on every platform.</summary>
    internal sealed class CodeWriter
    {
        private readonly StringBuilder _sb = new();

        /// <summary>A C/C++ string literal.</summary>
        public static string Quote(string s) => "\"" + s.Replace("\\", "\\\\").Replace("\"", "\\\"") + "\"";
        private int _indent;

        public CodeWriter Line(string text = "")
        {
            if (text.Length > 0)
                _sb.Append(' ', _indent * 4).Append(text);
            _sb.Append('\n');
            return this;
        }

        public CodeWriter Open(string text)
        {
            if (text.Length > 0)
                Line(text);
            Line("{");
            _indent++;
            return this;
        }

        public CodeWriter Close(string suffix = "")
        {
            _indent--;
            Line("}" + suffix);
            return this;
        }

        public CodeWriter Indent() { _indent++; return this; }
        public CodeWriter Outdent() { _indent = Math.Max(0, _indent - 1); return this; }

        public bool IsEmpty => _sb.Length == 0;
        public override string ToString() => _sb.ToString();
    }
}
