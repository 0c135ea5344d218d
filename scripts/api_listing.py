"""Prints every module, type and member the extension modules expose, one per line,
sorted, so that two builds can be compared with diff (a refactoring must leave it
unchanged).

    PYTHONPATH=build/stage python3.9 scripts/api_listing.py > api.txt
"""
import importlib
import sys
import types

ROOTS = ("orvane.folaro", "orvane.pymarel")


def modules_of(root):
    seen = {}
    pending = [importlib.import_module(root)]
    while pending:
        module = pending.pop()
        if module.__name__ in seen:
            continue
        seen[module.__name__] = module
        for value in vars(module).values():
            if isinstance(value, types.ModuleType) and value.__name__.startswith(root):
                pending.append(value)
    return seen


def describe(value):
    if isinstance(value, type):
        return "type"
    kind = type(value).__name__
    if kind in ("int", "float", "str", "bool", "NoneType"):
        return kind
    return kind


def main():
    lines = []
    for root in ROOTS:
        for name, module in sorted(modules_of(root).items()):
            lines.append(f"module {name}")
            for attr in sorted(vars(module)):
                if attr.startswith("__") or isinstance(getattr(module, attr), types.ModuleType):
                    continue
                value = getattr(module, attr)
                lines.append(f"{name}.{attr} {describe(value)}")
                if isinstance(value, type):
                    bases = ",".join(b.__name__ for b in value.__bases__)
                    lines.append(f"{name}.{attr} bases {bases}")
                    for member in sorted(vars(value)):
                        lines.append(f"{name}.{attr}.{member} {describe(vars(value)[member])}")
    sys.stdout.write("\n".join(lines) + "\n")


if __name__ == "__main__":
    main()
