using System;

namespace Orvane.Folaro;

// What may be written as text: no control characters but tab and the break characters, and
// no half of a surrogate pair on its own (XML can store neither).
internal static class TextRules
{
    internal static void Check(string text, string member)
    {
        for (int i = 0; i < text.Length; i++)
        {
            char c = text[i];
            if (c < 0x20 && c is not ('\t' or '\n' or '\r' or '\v') || c is '\uFFFE' or '\uFFFF')
                throw new ArgumentException($"{member}: the text holds the control character U+{(int)c:X4}, which a document cannot store", "value");
            if (char.IsHighSurrogate(c) && i + 1 < text.Length && char.IsLowSurrogate(text[i + 1]))
            {
                i++;
                continue;
            }
            if (char.IsSurrogate(c))
                throw new ArgumentException($"{member}: the text holds an unpaired surrogate U+{(int)c:X4} at {i}", "value");
        }
    }
}
