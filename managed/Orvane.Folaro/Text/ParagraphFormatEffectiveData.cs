using Orvane.Marel;

namespace Orvane.Folaro;

/// <summary>
/// The formatting a paragraph actually has, after inheritance and defaults. Lengths are in
/// points; of each spacing pair the form in use has a value and the other is NaN.
/// </summary>
public interface IParagraphFormatEffectiveData
{
    TextAlignment Alignment { get; }
    short Depth { get; }
    float Indent { get; }
    float MarginLeft { get; }
    float MarginRight { get; }
    float SpaceBefore { get; }
    float SpaceBeforeLines { get; }
    float SpaceAfter { get; }
    float SpaceAfterLines { get; }
    float SpaceWithin { get; }
    float SpaceWithinLines { get; }
    bool RightToLeft { get; }
    IBulletFormatEffectiveData Bullet { get; }
}

/// <summary>The bullet a paragraph actually shows: its kind, symbol, font, colour (the text's when it follows the text), size and numbering.</summary>
public interface IBulletFormatEffectiveData
{
    BulletType Type { get; }
    char Char { get; }
    string Font { get; }
    Color Color { get; }
    /// <summary>The size relative to the text (1.0 when it follows the text).</summary>
    float Height { get; }
    NumberedBulletStyle NumberedBulletStyle { get; }
    short NumberedBulletStartWith { get; }
}

public sealed class ParagraphFormatEffectiveData : IParagraphFormatEffectiveData
{
    internal ParagraphFormatEffectiveData()
    {
    }

    public TextAlignment Alignment { get; internal init; }
    public short Depth { get; internal init; }
    public float Indent { get; internal init; }
    public float MarginLeft { get; internal init; }
    public float MarginRight { get; internal init; }
    public float SpaceBefore { get; internal init; }
    public float SpaceBeforeLines { get; internal init; }
    public float SpaceAfter { get; internal init; }
    public float SpaceAfterLines { get; internal init; }
    public float SpaceWithin { get; internal init; }
    public float SpaceWithinLines { get; internal init; }
    public bool RightToLeft { get; internal init; }
    public IBulletFormatEffectiveData Bullet { get; internal init; } = null!;

    public override string ToString() => $"ParagraphFormatEffectiveData [{Alignment}, depth {Depth}, bullet {Bullet.Type}]";
}

public sealed class BulletFormatEffectiveData : IBulletFormatEffectiveData
{
    internal BulletFormatEffectiveData()
    {
    }

    public BulletType Type { get; internal init; }
    public char Char { get; internal init; }
    public string Font { get; internal init; } = string.Empty;
    public Color Color { get; internal init; }
    public float Height { get; internal init; }
    public NumberedBulletStyle NumberedBulletStyle { get; internal init; }
    public short NumberedBulletStartWith { get; internal init; }

    public override string ToString() => $"BulletFormatEffectiveData [{Type}]";
}
