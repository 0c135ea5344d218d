using System;
using System.Collections.Generic;

namespace Orvane.Folaro;

/// <summary>
/// The XML token of each member of a public enum, written out member by member so that the
/// order of the enum's declaration never decides what is written. Members without a token
/// (NotDefined, read-only values such as a custom dash) are simply left out of the table.
/// </summary>
internal sealed class EnumTokens<TEnum> where TEnum : struct, Enum
{
    private readonly Dictionary<TEnum, string> _tokens = new();
    private readonly Dictionary<string, TEnum> _members = new(StringComparer.Ordinal);

    internal EnumTokens(params (TEnum Member, string Token)[] pairs)
    {
        foreach (var (member, token) in pairs)
        {
            if (!_tokens.TryAdd(member, token))
                throw new ArgumentException($"{typeof(TEnum).Name}.{member} has two tokens", nameof(pairs));
            if (!_members.TryAdd(token, member))
                throw new ArgumentException($"\"{token}\" is the token of two {typeof(TEnum).Name} members", nameof(pairs));
        }
        Tokens = new string[pairs.Length];
        for (int i = 0; i < pairs.Length; i++)
            Tokens[i] = pairs[i].Token;
    }

    /// <summary>Every member that has a token, with its token.</summary>
    internal IReadOnlyDictionary<TEnum, string> Pairs => _tokens;

    /// <summary>Every token, for matching any of them (an element name group, say).</summary>
    internal string[] Tokens { get; }

    /// <summary>Whether <paramref name="member"/> has a token.</summary>
    internal bool Has(TEnum member) => _tokens.ContainsKey(member);

    /// <summary>The token of <paramref name="member"/>; the caller has checked that it has one.</summary>
    internal string Token(TEnum member) =>
        _tokens.TryGetValue(member, out var token)
            ? token
            : throw new ArgumentOutOfRangeException(nameof(member), member, $"{typeof(TEnum).Name}: the value has no XML token");

    /// <summary>
    /// The token to store for <paramref name="value"/>: null for <paramref name="notDefined"/> (the
    /// attribute is removed); any other value without a token is refused in the name of <paramref name="member"/>.
    /// </summary>
    internal string? TokenOrNull(TEnum value, TEnum notDefined, string member) =>
        value.Equals(notDefined) ? null
        : _tokens.TryGetValue(value, out var token) ? token
        : throw new ArgumentOutOfRangeException(nameof(value), value, $"{member}: unknown value");

    /// <summary>The member written as <paramref name="token"/>, or null for a missing or unknown token.</summary>
    internal TEnum? Member(string? token) => token != null && _members.TryGetValue(token, out var member) ? member : null;

    /// <summary>The member written as <paramref name="token"/>, or <paramref name="fallback"/> for a missing or unknown token.</summary>
    internal TEnum Member(string? token, TEnum fallback) => Member(token) ?? fallback;
}
