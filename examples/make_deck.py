"""The demo: a deck made from Python and saved as PPTX.

    PYTHONPATH=build/stage python3.9 examples/make_deck.py out/demo.pptx

It grows with the library: every feature that lands gets a line here.
"""
import sys

import orvane.folaro as f
import orvane.pymarel as drawing


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

    # Text in a placeholder, and a shape of our own with text, fill and outline.
    for shape in title.shapes:
        if shape.placeholder is not None and shape.text_frame is not None:
            shape.text_frame.text = "orvane"
            break
    box = closing.shapes.add_auto_shape(f.ShapeType.ROUND_RECT, 120, 200, 720, 160)
    box.text_frame.text = "Made from Python\nthrough the .NET runtime"
    box.fill_format.fill_type = f.FillType.SOLID
    box.fill_format.solid_fill_color.color = drawing.Color.from_argb(255, 46, 110, 160)
    box.line_format.width = 2.5

    pres.sections.add_section("Opening", title)
    pres.sections.add_section("Closing", closing)

    footers = pres.header_footer_manager
    footers.set_all_footers_text("orvane demo")
    footers.set_all_footers_visibility(True)
    footers.set_all_slide_numbers_visibility(True)

    pres.save(path, f.SaveFormat.PPTX)


def describe(path):
    pres = f.Presentation(path)
    print(f"{path}: {len(pres.slides)} slides, {pres.layout_slides.count} layouts, "
          f"{pres.masters.count} master, {pres.sections.count} sections, "
          f"title {pres.document_properties.title!r}")
    for slide in pres.slides:
        texts = [s.text_frame.text for s in slide.shapes if s.text_frame is not None and s.text_frame.text]
        print(f"  slide {slide.slide_number}: {type(slide).__name__}, {len(slide.shapes)} shapes, text {texts}")


if __name__ == "__main__":
    out = sys.argv[1] if len(sys.argv) > 1 else "demo.pptx"
    build(out)
    describe(out)
