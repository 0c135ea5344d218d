using System.Collections.Generic;

namespace Orvane.Folaro;

/// <summary>A named run of consecutive slides.</summary>
public interface ISection
{
    string Name { get; set; }

    /// <summary>The first slide of the section; null for an empty section.</summary>
    ISlide? StartedFromSlide { get; }
}

/// <summary>The sections of a presentation, in order.</summary>
public interface ISectionCollection : IEnumerable<ISection>
{
    int Count { get; }
    ISection this[int index] { get; }
    ISection AddSection(string name, ISlide startedFromSlide);
    ISection AppendEmptySection(string name);
    void RemoveSection(ISection section);
    void RemoveSectionWithSlides(ISection section);
    void ReorderSectionWithSlides(ISection section, int index);
    int IndexOf(ISection section);

    IEnumerable<ISection> AsIEnumerable { get; }
}
