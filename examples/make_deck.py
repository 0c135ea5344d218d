"""The demo: a deck made from Python and saved as PPTX.

    PYTHONPATH=build/stage python3.9 examples/make_deck.py out/demo.pptx

It grows with the library: every feature that lands gets a line here.
"""
import sys

import orvane.folaro as f


def build(path):
    pres = f.Presentation()

    props = pres.document_properties
    props.title = "orvane demo"
    props.author = "orvane"
    props.set_custom_property_value("generated_by", "examples/make_deck.py")

    layouts = pres.layout_slides
    title = pres.slides.add_empty_slide(layouts.get_by_type(f.SlideLayoutType.TITLE))
    pres.slides.add_empty_slide(layouts.get_by_type(f.SlideLayoutType.TITLE_AND_OBJECT))
    pres.slides.add_empty_slide(layouts.get_by_type(f.SlideLayoutType.TWO_OBJECTS))
    closing = pres.slides.add_empty_slide(layouts.get_by_type(f.SlideLayoutType.TITLE_ONLY))
    closing.name = "Questions"

    pres.sections.add_section("Opening", title)
    pres.sections.add_section("Closing", closing)

    footers = pres.header_footer_manager
    footers.set_all_footers_text("orvane demo")
    footers.set_all_footers_visibility(True)
    footers.set_all_slide_numbers_visibility(True)

    pres.save(path, f.SaveFormat.PPTX)


def describe(path):
    pres = f.Presentation(path)
    print(f"{path}: {pres.slides.count} slides, {pres.layout_slides.count} layouts, "
          f"{pres.masters.count} master, {pres.sections.count} sections, "
          f"title {pres.document_properties.title!r}")


if __name__ == "__main__":
    out = sys.argv[1] if len(sys.argv) > 1 else "demo.pptx"
    build(out)
    describe(out)
