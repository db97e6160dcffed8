#!/usr/bin/env python3
"""Looks at how libraries and programs were built: hardening.py FILE..."""
import subprocess
import sys


def read(option, file):
    return subprocess.run(["readelf", "-W", option, file], capture_output=True, check=True, text=True).stdout


failures = []
for file in sys.argv[1:]:
    dynamic = read("-d", file)
    paths = [line.split("[")[1].rstrip("]\n") for line in dynamic.splitlines() if "RUNPATH" in line or "RPATH" in line]
    for name, holds in {
        "all functions are bound when it is loaded": "BIND_NOW" in dynamic or " NOW" in dynamic,
        "its tables are read-only after that": "GNU_RELRO" in read("-l", file),
        "no folder that it looks for libraries in is empty": all(part for path in paths for part in path.split(":")),
        "its stack is guarded": "__stack_chk_fail" in read("-s", file),
    }.items():
        if not holds:
            failures.append(f"{file}: not so: {name}")
print("\n".join(failures) or "all as it should be")
sys.exit(bool(failures))
