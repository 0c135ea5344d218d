"""Managed exceptions met while Python assigns a property, checked through the
test-only probe module."""
import unittest

import orvane_probe as probe

LEVEL_ERROR = ("Proxy error(System.ArgumentOutOfRangeException): Gauge.Level must be in [0, 100] "
               "(Parameter 'value')\nActual value was -5.")


class SetterExceptionTests(unittest.TestCase):
    def setUp(self):
        self.gauge = probe.Gauge()
        self.gauge.level = 5

    def assert_nothing_pending(self):
        # A call that returns normally would turn a leftover error into a SystemError.
        self.assertEqual(probe.Calls.string_length("abc"), 3)
        self.assertEqual(self.gauge.level, 5)

    def test_assignment_raises_at_the_statement(self):
        caught = None
        try:
            self.gauge.level = -5
        except RuntimeError as e:
            caught = e
        self.assertIs(type(caught), RuntimeError)
        self.assertEqual(str(caught), LEVEL_ERROR)
        self.assert_nothing_pending()

    def test_setattr_raises_the_managed_error(self):
        with self.assertRaises(RuntimeError) as cm:
            setattr(self.gauge, "level", -5)
        self.assertIs(type(cm.exception), RuntimeError)
        self.assertEqual(str(cm.exception), LEVEL_ERROR)
        self.assert_nothing_pending()

    def test_a_failed_assignment_leaves_the_next_one_working(self):
        for bad in (-5, 101):
            with self.assertRaises(RuntimeError):
                self.gauge.level = bad
        self.gauge.level = 100
        self.assertEqual(self.gauge.level, 100)

    def test_conversion_failure_never_reaches_managed_code(self):
        with self.assertRaises(TypeError):
            self.gauge.level = "x"
        self.assert_nothing_pending()


if __name__ == "__main__":
    unittest.main()
