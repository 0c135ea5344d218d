"""Start-up in fresh processes: tracing, missing pieces and broken proxy assemblies."""
import os
import re
import unittest

from support import BUILD_DIR, StageCopy, clean_env, run_python

IMPORT = "import orvane.folaro as f; f.Presentation()"


class TraceTest(unittest.TestCase):
    def run_traced(self, value):
        proc = run_python(IMPORT, env=clean_env(COREHOST_TRACE=value))
        self.assertEqual(proc.returncode, 0, proc.stderr.decode())
        self.assertEqual(proc.stderr, b"")
        return proc.stdout

    def test_zero_and_text_do_not_trace(self):
        self.assertEqual(self.run_traced("0"), b"")
        self.assertEqual(self.run_traced("abc"), b"")

    def test_one_and_two_trace_every_level_on_stdout(self):
        for value in ("1", "2"):
            out = self.run_traced(value)
            lines = out.split(b"\r\n")
            self.assertEqual(lines[0], b"CLR host tracing enabled")
            self.assertIn(b"Initializing .NET Core host...", lines)
            self.assertIn(b".NET Core host ready.", lines)
            self.assertIn(b"Default AppDomain ready.", lines)
            self.assertTrue(any(l.startswith(b"NETCORE_DIR: '") for l in lines))
            self.assertTrue(out.endswith(b"\r\n"))


class MissingPiecesTest(unittest.TestCase):
    def setUp(self):
        self.stage = StageCopy()
        self.addCleanup(self.stage.close)

    def test_missing_wrapper_library_ends_the_process(self):
        self.stage.remove("runtime")
        proc = run_python(IMPORT, env=self.stage.env())
        self.assertNotEqual(proc.returncode, 0)
        self.assertIn(b"DynamicLibrary::load", proc.stderr)

    def test_missing_pymarel_chains_three_errors(self):
        for name in os.listdir(self.stage.pkg):
            if name.startswith("pymarel"):
                self.stage.remove(name)
        code = ("import traceback\n"
                "try:\n    import orvane.folaro\n"
                "except ImportError as e:\n"
                "    chain = []\n"
                "    while e is not None:\n"
                "        chain.append(f'{type(e).__name__}: {e}'); e = e.__cause__\n"
                "    print('\\n'.join(chain))\n")
        proc = run_python(code, env=self.stage.env())
        self.assertEqual(proc.returncode, 0, proc.stderr.decode())
        chain = proc.stdout.decode().splitlines()
        self.assertEqual(chain[0], "ImportError: One or more errors occurred while loading the module 'orvane.folaro' (-1)")
        self.assertEqual(chain[1], "ImportError: One or more errors occurred while loading the module 'orvane.pymarel' (-2)")
        self.assertTrue(chain[2].startswith("ModuleNotFoundError: "), chain)


class BrokenProxyTest(unittest.TestCase):
    """Proxy assemblies built as fixtures: one lacks FreeInstance, one the exchange class."""

    def check_broken(self, fixture, pattern):
        stage = StageCopy()
        self.addCleanup(stage.close)
        broken = os.path.join(BUILD_DIR, "fixtures", fixture)
        stage.remove(os.path.join("assemblies", "folaro", "WrpInterop.Orvane.Folaro.dll"))
        os.symlink(os.path.join(broken, "WrpInterop.Orvane.Folaro.dll"),
                   os.path.join(stage.pkg, "assemblies", "folaro", "WrpInterop.Orvane.Folaro.dll"))
        code = ("try:\n    import orvane.folaro\n"
                "except ImportError as e:\n    print(e); print(type(e.__cause__).__name__); print(e.__cause__)\n")
        proc = run_python(code, env=stage.env())
        self.assertEqual(proc.returncode, 0, proc.stderr.decode())
        top, cause_type, cause = proc.stdout.decode().splitlines()
        self.assertEqual(top, "One or more errors occurred while loading the module 'orvane.folaro' (-1)")
        self.assertEqual(cause_type, "TypeError")
        self.assertRegex(cause, pattern)

    def test_missing_free_instance(self):
        self.check_broken("ProxyWithoutFreeInstance", re.escape(
            "While initializing the host for the 'Orvane.WrpGen.Interop.ExchangeHost "
            "(Assembly=WrpInterop.Orvane.Folaro)' type, an error occurred - Method 'FreeInstance' not found (error=")
            + r"-?\d+\)$")

    def test_missing_exchange_class(self):
        self.check_broken("ProxyWithoutExchange", re.escape(
            "While initializing the host for the 'Orvane.WrpGen.Interop.ExchangeHost "
            "(Assembly=WrpInterop.Orvane.Folaro)' type, an error occurred - Method 'GetTypeName' not found (error=")
            + r"-?\d+\)$")


if __name__ == "__main__":
    unittest.main()


FAKE_PYMAREL = '''
"""A stand-in for orvane.pymarel that exports every capsule but the printing one."""
import ctypes, types

_new = ctypes.pythonapi.PyCapsule_New
_new.restype = ctypes.py_object
_new.argtypes = (ctypes.c_void_p, ctypes.c_void_p, ctypes.c_void_p)
_keep = []

def _capsule(name):
    table = (ctypes.c_void_p * 2)()
    label = ctypes.create_string_buffer(name.encode())
    _keep.extend((table, label))
    return _new(ctypes.addressof(table), ctypes.addressof(label), None)

for _t in ("SizeF", "Image", "Bitmap", "Color", "PointF", "Size", "RectangleF", "Graphics"):
    globals()["_C_APIT_" + _t] = _capsule("orvane.pymarel._C_APIT_" + _t)
imaging = types.SimpleNamespace(_C_APIT_ImageFormat=_capsule("orvane.pymarel.imaging._C_APIT_ImageFormat"))
drawing2d = types.SimpleNamespace(_C_APIT_GraphicsPath=_capsule("orvane.pymarel.drawing2d._C_APIT_GraphicsPath"))
printing = types.SimpleNamespace()
'''


class MissingCapsuleTest(unittest.TestCase):
    def test_missing_capsule_is_named(self):
        stage = StageCopy()
        self.addCleanup(stage.close)
        for name in os.listdir(stage.pkg):
            if name.startswith("pymarel"):
                stage.remove(name)
        with open(os.path.join(stage.pkg, "pymarel.py"), "w") as fake:
            fake.write(FAKE_PYMAREL)
        code = ("try:\n    import orvane.folaro\n"
                "except ImportError as e:\n    print(e); print(e.__cause__)\n")
        proc = run_python(code, env=stage.env())
        self.assertEqual(proc.returncode, 0, proc.stderr.decode())
        top, cause = proc.stdout.decode().splitlines()[:2]
        self.assertEqual(top, "One or more errors occurred while loading the module 'orvane.folaro' (-1)")
        self.assertEqual(cause, "can't import capsule 'orvane.pymarel.printing._C_APIT_PrinterSettings'")


class SkippedMembersReportTest(unittest.TestCase):
    """The generator lists what it cannot bind; none of it may be a kind the binding handles."""

    HANDLED = {"scalar", "enum", "string", "bytes", "class", "interface", "datetime",
               "datetimeoffset", "timespan", "decimal", "guid", "nullable", "byref", "array",
               "collection", "stream", "variant"}

    def test_reports_name_no_handled_kind(self):
        for module in ("folaro", "pymarel"):
            path = os.path.join(BUILD_DIR, "gen", module, "skipped-members.txt")
            with open(path) as report:
                lines = [l.rstrip("\n") for l in report if l.strip()]
            for line in lines:
                member, _, kind = line.rpartition("\t")
                self.assertNotIn(kind, self.HANDLED, f"{module}: {line}")
