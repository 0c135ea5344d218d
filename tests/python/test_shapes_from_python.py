"""Tables, pictures, connectors, groups, freeforms, effects, theme and hyperlinks used from
Python: the arguments a Python caller naturally passes (lists, bytes, drawing values, static
members) reach the library, and the deck written reads back with the same values."""
import io
import unittest

from support import png_bytes

import orvane.folaro as f
import orvane.pymarel as drawing


def reload(pres):
    out = io.BytesIO()
    pres.save(out, f.SaveFormat.PPTX)
    return f.Presentation(io.BytesIO(out.getvalue()))


class ShapesFromPythonTest(unittest.TestCase):
    def setUp(self):
        self.pres = f.Presentation()
        blank = self.pres.layout_slides.get_by_type(f.SlideLayoutType.BLANK)
        self.slide = self.pres.slides.add_empty_slide(blank)
        self.shapes = self.slide.shapes

    def test_table_from_lists_with_text_and_merged_cells(self):
        table = self.shapes.add_table(40, 40, [80, 90.5, 100], [20, 25])
        self.assertEqual((len(table.columns), len(table.rows)), (3, 2))
        for r, row in enumerate(table.rows):
            for c, cell in enumerate(row):
                cell.text_frame.text = f"{r}:{c}"
        table.merge_cells(table.rows[0][0], table.rows[0][1], False)
        back = reload(self.pres).slides[0].shapes[0]
        self.assertEqual(type(back).__name__, "Table")
        self.assertEqual([col.width for col in back.columns], [80, 90.5, 100])
        first = back.rows[0][0]
        self.assertEqual((first.col_span, first.row_span, first.is_merged_cell), (2, 1, True))
        self.assertEqual(back.rows[1][2].text_frame.text, "1:2")
        # table[column, row] is the same cell as rows[row][column].
        self.assertEqual((back[2, 1].text_frame.text, back[2, 1]), ("1:2", back.rows[1][2]))
        with self.assertRaises(RuntimeError):
            back[3, 0]
        self.assertEqual(first.text_frame.text.split(), ["0:0", "0:1"])

    def test_a_rejected_column_width_raises_at_the_assignment(self):
        column = self.shapes.add_table(40, 40, [80, 90], [20]).columns[0]
        expected = ("Proxy error(System.ArgumentOutOfRangeException): Column.Width: value must be above 0 "
                    "and at most 100,000 points (Parameter 'value')\nActual value was -5.")
        caught = None
        try:
            column.width = -5
        except RuntimeError as e:
            caught = e
        self.assertEqual((type(caught), str(caught)), (RuntimeError, expected))
        with self.assertRaises(RuntimeError) as cm:
            setattr(column, "width", -5)
        self.assertEqual((type(cm.exception), str(cm.exception)), (RuntimeError, expected))
        # Nothing is left pending: the next statements run normally.
        self.assertEqual(column.width, 80)
        column.width = 120
        self.assertEqual(column.width, 120)

    def test_pictures_are_stored_once_and_read_back_with_their_crop(self):
        data = png_bytes(seed=1)
        image = self.pres.images.add_image(data)
        again = self.pres.images.add_image(bytes(bytearray(data)))
        self.assertEqual(len(self.pres.images), 1)
        self.assertEqual((image.width, image.height), (8, 6))
        for x in (10, 200):
            frame = self.shapes.add_picture_frame(f.ShapeType.RECT, x, 20, 80, 60, again)
            frame.picture_format.crop_left = 0.25
        with self.assertRaises(Exception) as caught:
            self.pres.images.add_image(b"not an image")
        self.assertIn("PNG", str(caught.exception))
        back = reload(self.pres)
        self.assertEqual(len(back.images), 1)
        frames = list(back.slides[0].shapes)
        self.assertEqual([type(s).__name__ for s in frames], ["PictureFrame", "PictureFrame"])
        self.assertAlmostEqual(frames[1].picture_format.crop_left, 0.25)
        self.assertEqual(bytes(frames[0].picture_format.picture.image.binary_data), data)

    def test_connector_follows_the_shapes_it_joins(self):
        a = self.shapes.add_auto_shape(f.ShapeType.RECT, 50, 50, 100, 80)
        b = self.shapes.add_auto_shape(f.ShapeType.ELLIPSE, 400, 300, 100, 80)
        line = self.shapes.add_connector(f.ShapeType.BENT_CONNECTOR3, 0, 0, 10, 10)
        line.start_shape_connected_to = a
        line.end_shape_connected_to = b
        line.start_shape_connection_site_index = 3
        line.end_shape_connection_site_index = 2
        # Sites run anticlockwise from the top: 3 is a rectangle's right side, 2 an ellipse's left.
        self.assertEqual((line.x, line.y), (150, 90))
        self.assertAlmostEqual(line.x + line.width, 400)
        self.assertAlmostEqual(line.y + line.height, 340)
        b.x = 300
        self.assertAlmostEqual(line.x + line.width, 300)
        back = reload(self.pres).slides[0].shapes
        self.assertEqual(back[2].start_shape_connected_to, back[0])
        self.assertEqual(back[2].end_shape_connection_site_index, 2)

    def test_group_from_a_list_and_ungroup_keep_positions(self):
        a = self.shapes.add_auto_shape(f.ShapeType.RECT, 10, 20, 30, 40)
        b = self.shapes.add_auto_shape(f.ShapeType.RECT, 100, 120, 50, 60)
        group = self.shapes.group([a, b])
        self.assertEqual(type(group).__name__, "GroupShape")
        self.assertEqual((group.x, group.y, group.width, group.height), (10, 20, 140, 160))
        self.assertEqual(len(self.shapes), 1)
        self.shapes.ungroup(group)
        self.assertEqual([(s.x, s.y) for s in self.shapes], [(10, 20), (100, 120)])
        with self.assertRaises(Exception):
            self.shapes.group([])

    def test_freeform_path_from_drawing_points(self):
        path = f.GeometryPath()
        path.move_to(drawing.PointF(0, 0))
        path.line_to(100, 0)
        path.cubic_bezier_to(drawing.PointF(120, 20), drawing.PointF(120, 60), drawing.PointF(100, 80))
        path.close_figure()
        shape = self.shapes.add_auto_shape(f.ShapeType.RECT, 20, 20, 120, 80)
        shape.set_geometry_path(path)
        back = reload(self.pres).slides[0].shapes[0]
        self.assertEqual(back.shape_type, f.ShapeType.CUSTOM)
        segments = back.get_geometry_paths()[0].path_data
        self.assertEqual([s.path_command for s in segments],
                         [f.PathCommand.MOVE_TO, f.PathCommand.LINE_TO, f.PathCommand.CUBIC_BEZIER_TO,
                          f.PathCommand.CLOSE])
        self.assertEqual(list(segments[2].path_points), [120, 20, 120, 60, 100, 80])

    def test_effects_and_hyperlinks_round_trip(self):
        shape = self.shapes.add_auto_shape(f.ShapeType.RECT, 10, 10, 100, 50)
        effects = shape.effect_format
        self.assertTrue(effects.is_no_effects)
        effects.enable_outer_shadow_effect()
        effects.outer_shadow_effect.blur_radius = 4
        effects.enable_soft_edge_effect()
        effects.soft_edge_effect.radius = 2.5
        shape.hyperlink_click = f.Hyperlink("https://example.com/a")
        shape.hyperlink_click.tooltip = "go"
        other = self.shapes.add_auto_shape(f.ShapeType.RECT, 10, 100, 100, 50)
        other.hyperlink_click = f.Hyperlink.next_slide
        back = reload(self.pres)
        first, second = back.slides[0].shapes
        self.assertFalse(first.effect_format.is_no_effects)
        self.assertEqual(first.effect_format.outer_shadow_effect.blur_radius, 4)
        self.assertEqual(first.effect_format.soft_edge_effect.radius, 2.5)
        self.assertEqual((first.hyperlink_click.external_url, first.hyperlink_click.tooltip),
                         ("https://example.com/a", "go"))
        self.assertEqual(second.hyperlink_click.action_type, f.HyperlinkActionType.JUMP_NEXT_SLIDE)
        self.assertEqual(len(back.hyperlink_queries.get_any_hyperlinks()), 2)
        back.hyperlink_queries.remove_all_hyperlinks()
        self.assertEqual(len(back.hyperlink_queries.get_any_hyperlinks()), 0)

    def test_theme_colour_change_reaches_scheme_filled_shapes(self):
        shape = self.shapes.add_auto_shape(f.ShapeType.RECT, 10, 10, 100, 50)
        shape.fill_format.fill_type = f.FillType.SOLID
        shape.fill_format.solid_fill_color.scheme_color = f.SchemeColor.ACCENT2
        scheme = self.pres.masters[0].theme.color_scheme
        scheme.accent2 = drawing.Color.from_argb(255, 10, 20, 30)
        resolved = shape.fill_format.get_effective().solid_fill_color
        self.assertEqual((resolved.r, resolved.g, resolved.b), (10, 20, 30))
        back = reload(self.pres)
        self.assertEqual(back.masters[0].theme.color_scheme.accent2.to_argb(), scheme.accent2.to_argb())


if __name__ == "__main__":
    unittest.main()
