using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using System.Reflection;
using Orvane.Folaro.Vba;
using Xunit;

namespace Orvane.Folaro.Tests;

// The members whose behaviour is later work throw NotSupportedException. This sweep calls
// every public member of the objects below and compares the ones that throw it with the list:
// the list may only shrink as the work is done.
public class NotSupportedMembersTests
{
    private static readonly string[] Expected =
    {
        "Presentation.GetDefaultTextStyle()",
        "Presentation.GetDigitalSignatures()",
        "Presentation.GetFontsManager()",
        "Presentation.GetMasterHandoutSlideManager()",
        "Presentation.GetMasterNotesSlideManager()",
        "Presentation.GetThumbnails(INotesCommentsLayoutingOptions)",
        "Presentation.GetThumbnails(INotesCommentsLayoutingOptions, Int32[])",
        "Presentation.GetThumbnails(INotesCommentsLayoutingOptions, Int32[], Single, Single)",
        "Presentation.GetThumbnails(INotesCommentsLayoutingOptions, Int32[], Size)",
        "Presentation.GetThumbnails(INotesCommentsLayoutingOptions, Single, Single)",
        "Presentation.GetThumbnails(INotesCommentsLayoutingOptions, Size)",
        "Presentation.GetThumbnails(IRenderingOptions)",
        "Presentation.GetThumbnails(IRenderingOptions, Int32[])",
        "Presentation.GetThumbnails(IRenderingOptions, Int32[], Single, Single)",
        "Presentation.GetThumbnails(IRenderingOptions, Int32[], Size)",
        "Presentation.GetThumbnails(IRenderingOptions, Single, Single)",
        "Presentation.GetThumbnails(IRenderingOptions, Size)",
        "Presentation.Print()",
        "Presentation.Print(PrinterSettings)",
        "Presentation.Print(PrinterSettings, String)",
        "Presentation.Print(String)",
        "Presentation.Save(IXamlOptions)",
        "VbaProject(created).ToBinary()",
        "VbaProject(read).GetName()",
    };

    [Fact]
    public void ExactlyTheListedMembersAreNotSupportedYet()
    {
        var dir = TestFiles.NewTempDir();
        try
        {
            var found = new SortedSet<string>(StringComparer.Ordinal);
            Sweep("Presentation", () => new Presentation(), dir, found);
            Sweep("ProtectionManager", () => ((IPresentation)new Presentation()).ProtectionManager, dir, found);
            Sweep("VbaProject(created)", () => VbaProjectFactory.Instance.CreateVbaProject(), dir, found);
            Sweep("VbaProject(read)", () => VbaProjectFactory.Instance.ReadVbaProject(NewPresentationTests.FakeVbaBinary()), dir, found);
            Assert.Equal(Expected.OrderBy(e => e, StringComparer.Ordinal), found);
        }
        finally
        {
            Directory.Delete(dir, true);
        }
    }

    [Fact]
    public void MessagesNameTheMemberAndWhatIsMissing()
    {
        using IPresentation pres = new Presentation();
        var ex = Assert.Throws<NotSupportedException>(() => pres.Print());
        Assert.Equal("Presentation.Print: printing is not supported yet", ex.Message);
        ex = Assert.Throws<NotSupportedException>(() => pres.FontsManager);
        Assert.StartsWith("Presentation.FontsManager: ", ex.Message);
    }

    private static void Sweep(string label, Func<object> make, string dir, ISet<string> found)
    {
        var type = make().GetType();
        var methods = type.GetMethods(BindingFlags.Public | BindingFlags.Instance)
            .Where(m => m.DeclaringType != typeof(object) && !m.IsSpecialName || m.Name.StartsWith("get_", StringComparison.Ordinal));
        foreach (var method in methods)
        {
            var target = make();
            var args = method.GetParameters().Select(p => Argument(p.ParameterType, dir)).ToArray();
            try
            {
                method.Invoke(target, args);
            }
            catch (TargetInvocationException ex) when (ex.InnerException is NotSupportedException)
            {
                var name = method.Name.StartsWith("get_", StringComparison.Ordinal) ? "Get" + method.Name[4..] : method.Name;
                found.Add($"{label}.{name}({string.Join(", ", method.GetParameters().Select(p => p.ParameterType.Name))})");
            }
            catch (TargetInvocationException)
            {
                // Other failures (null arguments and the like) are not this test's concern.
            }
            finally
            {
                (target as IDisposable)?.Dispose();
            }
        }
    }

    private static object? Argument(Type type, string dir)
    {
        if (type == typeof(string))
            return Path.Combine(dir, "out.pptx");
        if (type == typeof(Stream))
            return new MemoryStream();
        if (type.IsArray)
            return Array.CreateInstance(type.GetElementType()!, 0);
        if (type == typeof(float))
            return 1f;
        return type.IsValueType ? Activator.CreateInstance(type) : null;
    }
}
