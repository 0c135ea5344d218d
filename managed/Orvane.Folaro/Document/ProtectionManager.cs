using System;
using System.Buffers.Binary;
using System.Linq;
using System.Security.Cryptography;
using System.Text;
using DocumentFormat.OpenXml;
using DocumentFormat.OpenXml.Packaging;
using P = DocumentFormat.OpenXml.Presentation;
using P1710 = DocumentFormat.OpenXml.Office2019.Presentation;

namespace Orvane.Folaro;

/// <summary>
/// Write protection: a password verifier (salted, iterated SHA-512) kept in presentation.xml.
/// It asks for a password before editing; it does not encrypt anything.
/// </summary>
public sealed class ProtectionManager : IProtectionManager
{
    private const int SpinCount = 100_000;
    private const string P1710Ns = "http://schemas.microsoft.com/office/powerpoint/2017/10/main";
    private const string ReadOnlyRecommendedUri = "{1BD7E111-0CB8-44D6-8891-C1BB2F81B7CC}";
    private readonly Presentation _owner;

    internal ProtectionManager(Presentation owner)
    {
        _owner = owner;
    }

    /// <summary>Always false: an encrypted package cannot be loaded yet, so no loaded one is.</summary>
    public bool IsEncrypted => false;

    public bool IsWriteProtected => Verifier() != null;

    // In p:presentation only the extension list may follow the verifier, so walking back from
    // the last child over extension lists and foreign elements finds it, or proves it absent,
    // in a step or two; a lookup from the front would pass every other child first.
    private P.ModificationVerifier? Verifier()
    {
        for (var element = _owner.Root.LastChild; element != null; element = element.PreviousSibling())
        {
            // Exact type compares: each is one load, where a class test walks the hierarchy.
            var type = element.GetType();
            if (type == typeof(P.ModificationVerifier))
                return (P.ModificationVerifier)element;
            if (type != typeof(P.PresentationExtensionList) && type != typeof(OpenXmlUnknownElement)
                && type != typeof(OpenXmlMiscNode) && type != typeof(AlternateContent))
                return null;
        }
        return null;
    }

    /// <summary>
    /// Whether readers suggest opening the deck read-only: a p1710:readonlyRecommended extension
    /// of the presentation properties (presProps.xml), made or removed as the value changes.
    /// </summary>
    public bool ReadOnlyRecommended
    {
        get
        {
            var props = _owner.PresentationPart.PresentationPropertiesPart?.PresentationProperties;
            var mark = props == null ? null : Marks(props).FirstOrDefault();
            var val = mark?.GetAttributes().FirstOrDefault(a => a.LocalName == "val").Value;
            return val is "1" or "true";
        }
        set
        {
            var pres = _owner.PresentationPart;
            var props = pres.PresentationPropertiesPart?.PresentationProperties;
            if (props == null)
            {
                if (!value)
                    return;
                var part = pres.PresentationPropertiesPart ?? pres.AddNewPart<PresentationPropertiesPart>();
                props = part.PresentationProperties = new P.PresentationProperties();
            }
            foreach (var mark in Marks(props).ToList())
            {
                var ext = mark.Parent;
                mark.Remove();
                if (ext is P.PresentationPropertiesExtension && !ext.HasChildren)
                    ext.Remove();
            }
            if (props.PresentationPropertiesExtensionList is { HasChildren: false } emptyList)
                emptyList.Remove();
            if (!value)
                return;
            props.PresentationPropertiesExtensionList ??= new P.PresentationPropertiesExtensionList();
            props.PresentationPropertiesExtensionList.AppendChild(
                new P.PresentationPropertiesExtension(new P1710.ReadonlyRecommended { Val = true }) { Uri = ReadOnlyRecommendedUri });
        }
    }

    // The SDK does not type this extension's content, so a loaded mark is an unknown element: match by name.
    private static System.Collections.Generic.IEnumerable<OpenXmlElement> Marks(P.PresentationProperties props) =>
        props.Descendants().Where(e => e.LocalName == "readonlyRecommended" && e.NamespaceUri == P1710Ns);

    public void SetWriteProtection(string password)
    {
        ArgumentException.ThrowIfNullOrEmpty(password);
        var salt = RandomNumberGenerator.GetBytes(16);
        // The attribute set the schema requires: SHA-512 is algorithm id 14.
        _owner.Root.ModificationVerifier = new P.ModificationVerifier
        {
            CryptographicProviderType = P.CryptProviderValues.RsaAES,
            CryptographicAlgorithmClass = P.CryptAlgorithmClassValues.Hash,
            CryptographicAlgorithmType = P.CryptAlgorithmValues.TypeAny,
            CryptographicAlgorithmSid = 14,
            SpinCount = SpinCount,
            SaltData = Convert.ToBase64String(salt),
            HashData = Convert.ToBase64String(Hash(HashAlgorithmName.SHA512, password, salt, SpinCount)),
        };
    }

    public void RemoveWriteProtection() => _owner.Root.ModificationVerifier = null;

    /// <summary>True when the password opens the write protection; false when it does not or there is none.</summary>
    public bool CheckWriteProtection(string password)
    {
        ArgumentNullException.ThrowIfNull(password);
        var verifier = Verifier();
        if (verifier == null)
            return false;
        // Either attribute set: the algorithm by name with hashValue/saltValue/spinValue, or by
        // id with hashData/saltData/spinCount.
        var algorithm = verifier.AlgorithmName?.Value is { } named ? ByName(named) : ById(verifier.CryptographicAlgorithmSid?.Value);
        var hash = verifier.HashValue?.Value ?? verifier.HashData?.Value;
        var salt = verifier.SaltValue?.Value ?? verifier.SaltData?.Value;
        var spin = verifier.SpinValue?.Value ?? verifier.SpinCount?.Value ?? 0;
        if (algorithm is not { } name || hash == null || salt == null)
            throw new NotSupportedException("ProtectionManager.CheckWriteProtection: this kind of password verifier is not supported yet");
        try
        {
            var expected = Convert.FromBase64String(hash);
            var actual = Hash(name, password, Convert.FromBase64String(salt), (int)Math.Min(spin, 10_000_000u));
            return CryptographicOperations.FixedTimeEquals(expected, actual);
        }
        catch (FormatException ex)
        {
            throw new PptxReadException($"{_owner.Origin}: the write-protection verifier is damaged ({ex.Message})", ex);
        }
    }

    private static HashAlgorithmName? ByName(string name) => name.ToUpperInvariant() switch
    {
        "SHA-1" => HashAlgorithmName.SHA1,
        "SHA-256" => HashAlgorithmName.SHA256,
        "SHA-384" => HashAlgorithmName.SHA384,
        "SHA-512" => HashAlgorithmName.SHA512,
        _ => null,
    };

    private static HashAlgorithmName? ById(uint? sid) => sid switch
    {
        4 => HashAlgorithmName.SHA1,
        12 => HashAlgorithmName.SHA256,
        13 => HashAlgorithmName.SHA384,
        14 => HashAlgorithmName.SHA512,
        _ => null,
    };

    // H0 = H(salt + password as UTF-16LE); Hn = H(Hn-1 + n as a 32-bit little-endian integer).
    private static byte[] Hash(HashAlgorithmName algorithm, string password, byte[] salt, int spinCount)
    {
        var passwordBytes = Encoding.Unicode.GetBytes(password);
        var buffer = new byte[salt.Length + passwordBytes.Length];
        salt.CopyTo(buffer, 0);
        passwordBytes.CopyTo(buffer, salt.Length);
        using var hasher = IncrementalHash.CreateHash(algorithm);
        hasher.AppendData(buffer);
        var hash = hasher.GetHashAndReset();
        var round = new byte[hash.Length + 4];
        for (int i = 0; i < spinCount; i++)
        {
            hash.CopyTo(round, 0);
            BinaryPrimitives.WriteInt32LittleEndian(round.AsSpan(hash.Length), i);
            hasher.AppendData(round);
            hash = hasher.GetHashAndReset();
        }
        return hash;
    }

}
