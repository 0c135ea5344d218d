"""The demo: a deck made from Python and saved as PPTX.

    PYTHONPATH=build/stage python3.9 examples/make_deck.py out/demo.pptx

It grows with the library: every feature that lands gets a line here.
"""
import sys

import orvane.folaro as f
import orvane.pymarel as drawing


def gradient_bitmap(width=160, height=120):
    """A picture drawn in Python, pixel by pixel."""
    bitmap = drawing.Bitmap(width, height)
    for y in range(0, height):
        for x in range(0, width):
            bitmap.set_pixel(x, y, drawing.Color.from_argb(255, 40 + x, 80 + y, 200 - x // 2))
    return bitmap


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

    # The body slide: bullets, a table with a merged header, a picture drawn here and a link.
    body = pres.slides[1]
    body.shapes[0].text_frame.text = "What the library does"
    bullets = body.shapes[1]
    bullets.width = 420
    bullets.text_frame.text = "Slides, shapes and text\nTables and pictures\nThemes, effects and links"
    table = body.shapes.add_table(520, 150, [110.0, 110.0, 110.0], [30.0, 30.0, 30.0])
    # table[column, row] and table.rows[row][column] are the same cell.
    table.merge_cells(table[0, 0], table[2, 0], False)
    table[0, 0].text_frame.text = "Features"
    for r, row in enumerate(table.rows[1:], start=1):
        for c, cell in enumerate(row):
            cell.text_frame.text = f"{r}.{c + 1}"
    picture = body.shapes.add_picture_frame(f.ShapeType.ELLIPSE, 600, 300, 160, 120,
                                            pres.images.add_image(gradient_bitmap()))
    picture.effect_format.enable_outer_shadow_effect()
    picture.hyperlink_click = f.Hyperlink("https://example.com/orvane")
    picture.hyperlink_click.tooltip = "More about orvane"

    # Two shapes joined by a connector, which follows when one of them moves.
    second = pres.slides[2]
    left = second.shapes.add_auto_shape(f.ShapeType.RECT, 80, 200, 200, 100)
    right = second.shapes.add_auto_shape(f.ShapeType.ELLIPSE, 600, 320, 200, 100)
    left.text_frame.text = "Python"
    right.text_frame.text = ".NET"
    arrow = second.shapes.add_connector(f.ShapeType.BENT_CONNECTOR3, 0, 0, 10, 10)
    arrow.start_shape_connected_to = left
    arrow.start_shape_connection_site_index = 3
    arrow.end_shape_connected_to = right
    arrow.end_shape_connection_site_index = 2
    arrow.line_format.end_arrowhead_style = f.LineArrowheadStyle.TRIANGLE
    right.y = 200

    # A theme colour of our own: every shape filled with it follows.
    pres.masters[0].theme.color_scheme.accent1 = drawing.Color.from_argb(255, 46, 110, 160)

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
        kinds = [type(s).__name__ for s in slide.shapes]
        texts = [s.text_frame.text for s in slide.shapes
                 if getattr(s, "text_frame", None) is not None and s.text_frame.text]
        print(f"  slide {slide.slide_number}: {kinds}, text {texts}")


if __name__ == "__main__":
    out = sys.argv[1] if len(sys.argv) > 1 else "demo.pptx"
    build(out)
    describe(out)
