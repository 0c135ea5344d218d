using System;
using System.Collections;
using System.Collections.Generic;
using DocumentFormat.OpenXml;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro.Theme;

/// <summary>The effect styles of a theme, in reference order.</summary>
public interface IEffectStyleCollection : IEnumerable<IEffectStyle>
{
    int Count { get; }

    IEffectStyle this[int index] { get; }

    IEnumerable<IEffectStyle> AsIEnumerable { get; }
}

public sealed class EffectStyleCollection : IEffectStyleCollection
{
    private readonly ThemeStyleList<IEffectStyle> _styles;

    internal EffectStyleCollection(Func<OpenXmlElement?> list)
    {
        _styles = new(list, c => c is A.EffectStyle, (e, _) => new EffectStyle(e), nameof(EffectStyleCollection));
    }

    public int Count => _styles.Count;

    public IEffectStyle this[int index] => _styles.At(index);

    IEnumerable<IEffectStyle> IEffectStyleCollection.AsIEnumerable => this;

    public IEnumerator<IEffectStyle> GetEnumerator() => _styles.GetEnumerator();

    IEnumerator IEnumerable.GetEnumerator() => GetEnumerator();
}
