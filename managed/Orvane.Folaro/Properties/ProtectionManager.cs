using System;
using System.Buffers.Binary;
using System.Security.Cryptography;
using System.Text;
using P = DocumentFormat.OpenXml.Presentation;

namespace Orvane.Folaro;

/// <summary>
/// Write protection: a password verifier (salted, iterated SHA-512) kept in presentation.xml.
/// It asks for a password before editing; it does not encrypt anything.
/// </summary>
public sealed class ProtectionManager : IProtectionManager
{
    private const int SpinCount = 100_000;
    private readonly Presentation _owner;

    internal ProtectionManager(Presentation owner)
    {
        _owner = owner;
    }

    /// <summary>Always false: an encrypted package cannot be loaded yet, so no loaded one is.</summary>
    public bool IsEncrypted => false;

    public bool IsWriteProtected => _owner.Root.ModificationVerifier != null;

    public bool ReadOnlyRecommended
    {
        get => throw NoRecommendation();
        set => throw NoRecommendation();
    }

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
        var verifier = _owner.Root.ModificationVerifier;
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

    private static NotSupportedException NoRecommendation() =>
        new("ProtectionManager.ReadOnlyRecommended: the read-only recommendation is not supported yet");
}
