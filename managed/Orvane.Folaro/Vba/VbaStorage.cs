using System;
using System.IO;
using DocumentFormat.OpenXml.Packaging;
using Orvane.Folaro.Vba;

namespace Orvane.Folaro.Vba;

// The presentation's VBA project part (vbaProject.bin) as a VbaProject.
internal static class VbaStorage
{
    internal static IVbaProject? Read(Presentation owner)
    {
        if (owner.PresentationPart.VbaProjectPart is not { } part)
            return null;
        using var stream = part.GetStream(FileMode.Open, FileAccess.Read);
        using var copy = new MemoryStream();
        stream.CopyTo(copy);
        return new VbaProject(copy.ToArray());
    }

    internal static void Write(Presentation owner, IVbaProject? project)
    {
        var pres = owner.PresentationPart;
        if (project == null)
        {
            if (pres.VbaProjectPart is { } old)
                pres.DeletePart(old);
            return;
        }
        if (project is not VbaProject own || !own.HasBinary)
            throw new NotSupportedException("Presentation.VbaProject: storing a new VBA project is not supported yet; only a project read from a package can be stored");
        var bytes = own.ToBinary();
        var part = pres.VbaProjectPart ?? pres.AddNewPart<VbaProjectPart>();
        using var stream = new MemoryStream(bytes, writable: false);
        part.FeedData(stream);
    }
}
