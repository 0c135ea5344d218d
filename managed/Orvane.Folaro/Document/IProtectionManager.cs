namespace Orvane.Folaro;

/// <summary>Write protection and the read-only recommendation.</summary>
public interface IProtectionManager
{
    bool IsEncrypted { get; }
    bool IsWriteProtected { get; }
    bool ReadOnlyRecommended { get; set; }
    void SetWriteProtection(string password);
    void RemoveWriteProtection();
    bool CheckWriteProtection(string password);
}
