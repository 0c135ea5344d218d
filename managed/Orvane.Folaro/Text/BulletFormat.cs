using System;
using DocumentFormat.OpenXml;
using Orvane.Folaro.Theme;
using A = DocumentFormat.OpenXml.Drawing;

namespace Orvane.Folaro;

public enum BulletType
{
    NotDefined = -1,
    None, Symbol, Numbered, Picture,
}

/// <summary>The bullet of a paragraph: none, a symbol in a font and colour, a number, or a picture.</summary>
public interface IBulletFormat
{
    /// <summary>The kind of bullet. Setting Symbol or Numbered makes a default one of that kind; a picture bullet is made with <see cref="SetPicture"/>.</summary>
    BulletType Type { get; set; }

    /// <summary>The symbol of a symbol bullet ('\0' when the bullet is not one). Setting makes the bullet a symbol bullet.</summary>
    char Char { get; set; }

    /// <summary>The bullet's font name; empty when it follows the text's. Setting empty makes it follow the text.</summary>
    string Font { get; set; }

    /// <summary>The bullet's own colour; NotDefined when it follows the text's.</summary>
    IColorFormat Color { get; }

    /// <summary>Makes the bullet take the text's colour again.</summary>
    void ResetColor();

    /// <summary>The bullet's size relative to the text (1.0 = the same); NaN when it follows the text.</summary>
    float Height { get; set; }

    NumberedBulletStyle NumberedBulletStyle { get; set; }

    /// <summary>The number of the first numbered paragraph (1 to 32767); -1 when the bullet is not numbered.</summary>
    short NumberedBulletStartWith { get; set; }

    /// <summary>The picture of a picture bullet; empty when the bullet is not one.</summary>
    byte[] PictureData { get; }

    /// <summary>Makes a picture bullet from image bytes (PNG, JPEG, GIF, BMP, TIFF or SVG).</summary>
    void SetPicture(byte[] imageData);

    /// <summary>Makes a picture bullet of an image of the presentation (one of another is copied in).</summary>
    void SetPicture(IPPImage image);
}

public sealed class BulletFormat : IBulletFormat
{
    private const string R = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    private static readonly string[] Kinds = { "buNone", "buChar", "buAutoNum", "buBlip" };

    private readonly ElementSlot _pPr;
    private readonly FormatContext _context;

    internal BulletFormat(ElementSlot pPr, FormatContext context)
    {
        _pPr = pPr;
        _context = context;
    }

    private OpenXmlElement? Kind => _pPr(false) is { } p ? SchemaOrder.FirstOf(p, Kinds) : null;

    public BulletType Type
    {
        get => Kind switch
        {
            A.NoBullet => BulletType.None,
            A.CharacterBullet => BulletType.Symbol,
            A.AutoNumberedBullet => BulletType.Numbered,
            A.PictureBullet => BulletType.Picture,
            _ => BulletType.NotDefined,
        };
        set
        {
            if (!Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "BulletFormat.Type: unknown bullet type");
            if (value == Type)
                return;
            switch (value)
            {
                case BulletType.NotDefined:
                    if (_pPr(false) is { } p)
                        SchemaOrder.Replace(p, Kinds, null, SchemaOrder.ParagraphProperties);
                    break;
                case BulletType.None:
                    Store(new A.NoBullet());
                    break;
                case BulletType.Symbol:
                    Store(new A.CharacterBullet { Char = "\u2022" });
                    break;
                case BulletType.Numbered:
                    Store(new A.AutoNumberedBullet { Type = A.TextAutoNumberSchemeValues.ArabicPeriod });
                    break;
                default:
                    throw new ArgumentException("BulletFormat.Type: a picture bullet is made with SetPicture", nameof(value));
            }
        }
    }

    public char Char
    {
        get => Kind is A.CharacterBullet k && AttributeAccess.Attr(k, "char") is { Length: > 0 } c ? c[0] : '\0';
        set
        {
            if (value == '\0' || char.IsSurrogate(value) || value < 0x20)
                throw new ArgumentOutOfRangeException(nameof(value), (int)value, "BulletFormat.Char must be a printable character");
            Store(new A.CharacterBullet { Char = value.ToString() });
        }
    }

    public string Font
    {
        get => _pPr(false)?.GetFirstChild<A.BulletFont>() is { } f ? AttributeAccess.Attr(f, "typeface") ?? string.Empty : string.Empty;
        set
        {
            ArgumentNullException.ThrowIfNull(value);
            if (value.Length == 0)
            {
                if (_pPr(false) is { } p)
                    SchemaOrder.Replace(p, new[] { "buFont", "buFontTx" }, null, SchemaOrder.ParagraphProperties);
                return;
            }
            SchemaOrder.Replace(Properties(), new[] { "buFont", "buFontTx" }, new A.BulletFont { Typeface = value }, SchemaOrder.ParagraphProperties);
        }
    }

    public IColorFormat Color => new ColorFormat(create =>
    {
        if (!create)
            return _pPr(false)?.GetFirstChild<A.BulletColor>();
        var props = Properties();
        if (props.GetFirstChild<A.BulletColor>() is { } existing)
            return existing;
        var made = new A.BulletColor();
        SchemaOrder.Replace(props, new[] { "buClr", "buClrTx" }, made, SchemaOrder.ParagraphProperties);
        return made;
    }, _context);

    public void ResetColor()
    {
        if (_pPr(false) is { } p)
            SchemaOrder.Replace(p, new[] { "buClr", "buClrTx" }, null, SchemaOrder.ParagraphProperties);
    }

    public float Height
    {
        get => AttributeAccess.Long(_pPr(false)?.GetFirstChild<A.BulletSizePercentage>(), "val") is long v ? v / 100000f : float.NaN;
        set
        {
            var sizes = new[] { "buSzTx", "buSzPct", "buSzPts" };
            if (float.IsNaN(value))
            {
                if (_pPr(false) is { } p)
                    SchemaOrder.Replace(p, sizes, null, SchemaOrder.ParagraphProperties);
                return;
            }
            if (!(value >= 0.25f && value <= 4f))
                throw new ArgumentOutOfRangeException(nameof(value), value, "BulletFormat.Height must be between 0.25 and 4 (NaN to follow the text)");
            SchemaOrder.Replace(Properties(), sizes, new A.BulletSizePercentage { Val = (int)Math.Round(value * 100000) }, SchemaOrder.ParagraphProperties);
        }
    }

    public NumberedBulletStyle NumberedBulletStyle
    {
        get => Kind is A.AutoNumberedBullet k ? FormatTokens.NumberedBulletStyles.Member(AttributeAccess.Attr(k, "type"), NumberedBulletStyle.NotDefined) : NumberedBulletStyle.NotDefined;
        set
        {
            if (value < 0 || !Enum.IsDefined(value))
                throw new ArgumentOutOfRangeException(nameof(value), value, "BulletFormat.NumberedBulletStyle must be a numbering scheme");
            var k = Numbered();
            AttributeAccess.SetAttr(k, "type", FormatTokens.NumberedBulletStyles.Token(value));
        }
    }

    public short NumberedBulletStartWith
    {
        get => Kind is A.AutoNumberedBullet k ? (short)(AttributeAccess.Long(k, "startAt") ?? 1) : (short)-1;
        set
        {
            if (value < 1)
                throw new ArgumentOutOfRangeException(nameof(value), value, "BulletFormat.NumberedBulletStartWith must be between 1 and 32767");
            AttributeAccess.SetAttr(Numbered(), "startAt", value == 1 ? null : AttributeAccess.Text(value));
        }
    }

    public byte[] PictureData =>
        Kind is A.PictureBullet k && k.GetFirstChild<A.Blip>() is { } blip ? ImageParts.Read(_context.Part, ImageParts.EmbedOf(blip)) : Array.Empty<byte>();

    public void SetPicture(byte[] imageData)
    {
        ArgumentNullException.ThrowIfNull(imageData);
        var part = _context.Part ?? throw new PptxEditException($"{_context.Where}: there is no part to hold a bullet picture");
        SetPicture(DocumentState.Of(part).Media.AddImage(imageData, "BulletFormat.SetPicture"));
    }

    public void SetPicture(IPPImage image)
    {
        ArgumentNullException.ThrowIfNull(image);
        var part = _context.Part ?? throw new PptxEditException($"{_context.Where}: there is no part to hold a bullet picture");
        var blip = new A.Blip();
        DocumentState.Of(part).Media.SetBlip(blip, part, image, "BulletFormat.SetPicture");
        Store(new A.PictureBullet(blip));
    }

    public override string ToString() => $"BulletFormat [{Type}]";

    internal static BulletFormatEffectiveData Effective(System.Collections.Generic.List<OpenXmlElement> chain, TextInheritance? inheritance,
        FormatContext context, Func<IPortionFormatEffectiveData> text)
    {
        // Each bullet property inherits on its own: the symbol may come from the master, the colour from the layout.
        var kind = Inherited.Child(chain, Kinds);
        var type = kind switch
        {
            A.CharacterBullet => BulletType.Symbol,
            A.AutoNumberedBullet => BulletType.Numbered,
            A.PictureBullet => BulletType.Picture,
            _ => BulletType.None,
        };
        IPortionFormatEffectiveData? textFormat = null;
        IPortionFormatEffectiveData Text() => textFormat ??= text();
        var font = Inherited.Child(chain, new[] { "buFont", "buFontTx" });
        var face = font is A.BulletFont ? AttributeAccess.Attr(font, "typeface") : null;
        var color = Inherited.Child(chain, new[] { "buClr", "buClrTx" });
        var colorElement = color is A.BulletColor ? SchemaOrder.FirstOf(color, ColorMath.ColorElements) : null;
        var size = Inherited.Child(chain, new[] { "buSzTx", "buSzPct", "buSzPts" });
        float height = size switch
        {
            A.BulletSizePercentage => (AttributeAccess.Long(size, "val") ?? 100000) / 100000f,
            A.BulletSizePoints => (AttributeAccess.Long(size, "val") ?? 0) / 100f / Text().FontHeight,
            _ => 1f,
        };
        return new BulletFormatEffectiveData
        {
            Type = type,
            Char = type == BulletType.Symbol && AttributeAccess.Attr(kind!, "char") is { Length: > 0 } c ? c[0] : '\0',
            Font = face != null ? inheritance?.Font(face) ?? face : type == BulletType.None ? string.Empty : Text().LatinFont,
            Color = colorElement != null ? ColorMath.Resolve(colorElement, inheritance?.Colors ?? context.Theme)
                : type == BulletType.None ? default : Text().SolidFillColor,
            Height = height,
            NumberedBulletStyle = type == BulletType.Numbered
                ? FormatTokens.NumberedBulletStyles.Member(AttributeAccess.Attr(kind!, "type"), NumberedBulletStyle.ArabicPeriod)
                : NumberedBulletStyle.NotDefined,
            NumberedBulletStartWith = type == BulletType.Numbered ? (short)(AttributeAccess.Long(kind, "startAt") ?? 1) : (short)-1,
        };
    }

    private OpenXmlElement Properties() => _pPr(true) ?? throw new PptxEditException($"{_context.Where}: there is no paragraph to format");

    private OpenXmlElement Numbered() =>
        Kind is A.AutoNumberedBullet k ? k : Store(new A.AutoNumberedBullet { Type = A.TextAutoNumberSchemeValues.ArabicPeriod });

    private OpenXmlElement Store(OpenXmlElement made)
    {
        SchemaOrder.Replace(Properties(), Kinds, made, SchemaOrder.ParagraphProperties);
        return made;
    }
}
