"""Managed exceptions met while Python assigns a property or while the module reads
static members at import, checked through the test-only probe module."""
import json
import os
import subprocess
import sys
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


# Imports the probe module in a fresh interpreter and records the unraisable
# warnings printed while its static members are read.
IMPORT_SCRIPT = r"""
import json, sys
seen = []
def hook(u):
    seen.append([str(u.object), type(u.exc_value).__name__, str(u.exc_value), str(u.exc_value.__cause__)])
sys.unraisablehook = hook
import orvane_probe as p
sys.unraisablehook = sys.__unraisablehook__
names = ("first", "second", "third", "fourth", "only", "after", "answer", "name")
present = {c: {n: getattr(getattr(p, c), n) for n in names if hasattr(getattr(p, c), n)}
           for c in ("BrokenStatics", "LaterBrokenStatics", "ReadyStatics")}
print(json.dumps({"warnings": seen, "present": present}))
"""


def field_warning(cls, field, managed_message):
    return ["FieldInitializationWarning", "ImportError",
            f"the static field '{field}' of type 'orvane_probe.{cls}' is not initialized",
            f"Proxy error(System.InvalidOperationException): {managed_message}"]


class StaticMemberImportTests(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        out = subprocess.run([sys.executable, "-c", IMPORT_SCRIPT], env=os.environ, capture_output=True,
                             text=True, timeout=300)
        if out.returncode != 0:
            raise AssertionError(out.stderr)
        cls.result = json.loads(out.stdout.splitlines()[-1])

    def test_a_failing_member_ends_its_class_with_one_warning(self):
        self.assertEqual(self.result["warnings"], [
            field_warning("BrokenStatics", "first", "BrokenStatics.First is unavailable"),
            field_warning("LaterBrokenStatics", "only", "LaterBrokenStatics.Only is unavailable"),
        ])

    def test_members_after_the_failure_stay_absent(self):
        self.assertEqual(self.result["present"]["BrokenStatics"], {})
        self.assertEqual(self.result["present"]["LaterBrokenStatics"], {})
        with self.assertRaises(AttributeError):
            probe.BrokenStatics.fourth
        with self.assertRaises(AttributeError):
            probe.LaterBrokenStatics.after

    def test_classes_after_a_failing_class_are_initialised(self):
        self.assertEqual(self.result["present"]["ReadyStatics"], {"answer": 42, "name": "ready"})
        self.assertEqual((probe.ReadyStatics.answer, probe.ReadyStatics.name), (42, "ready"))


if __name__ == "__main__":
    unittest.main()
