"""orvane: create, edit and render presentations from Python.

The native modules start the .NET runtime in this process. They find the
runtime folder and the managed assemblies through two environment variables;
an installed package points them at its own folders, while a variable that is
already set always wins.
"""
import os as _os

_here = _os.path.dirname(_os.path.abspath(__file__))
_os.environ.setdefault("NETCORE_WRAPPER_NETCORE_DIR_orvane", _os.path.join(_here, "runtime"))
_os.environ.setdefault("NETCORE_WRAPPER_ASSEMBLY_DIR_orvane", _os.path.join(_here, "assemblies"))
del _here
