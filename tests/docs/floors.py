"""Tries docs/floors on small trees, a sound one and one with each thing that it has to find."""
import pathlib
import subprocess
import sys
import tempfile

TABLE = "| 1 | `low/` | a | b |\n| 2 | `high/one/` | a | b |\n| 2 | `high/two/` | a | b |\n"
ROW = "| `low/Z.cpp` includes from `high/one/` | c |\n"
SOUND = {"low/A.h": "", "low/A.cpp": "low/A.h", "high/one/B.h": "low/A.h", "high/two/deep/C.cpp": "low/A.h vector"}
CIRCLE = {"low/D.h": "low/E.h", "low/E.h": "low/D.h"}

CASES = [  # what is it, the tables, the files that are added, a part of the complaint or nothing
    ("a sound tree", TABLE, {}, ""),
    ("an arrow that goes up", TABLE, {"low/Z.cpp": "high/one/B.h"}, "low/Z.cpp: includes high/one/B.h"),
    ("an arrow on one floor", TABLE, {"high/two/C.h": "high/one/B.h"}, "high/two/C.h: includes high/one/B.h"),
    ("an arrow up that is an exception", TABLE + ROW, {"low/Z.cpp": "high/one/B.h"}, ""),
    ("an exception that nothing needs", TABLE + ROW, {}, "low/Z.cpp: an exception"),
    ("a folder without a row", TABLE, {"high/three/C.h": ""}, "high/three/C.h: its folder"),
    ("headers in a circle", TABLE, CIRCLE, "low/D.h, low/E.h: include each other"),
    ("units in a circle", TABLE, {"low/A.cpp": "low/D.h", "low/D.h": "low/A.h"}, "low/A, low/D: include each other"),
    ("no table", "", {}, "its folder"),
]


def complaints(program, tables, files):
    with tempfile.TemporaryDirectory() as name:
        tree = pathlib.Path(name)
        for path, includes in files.items():
            (tree / path).parent.mkdir(parents=True, exist_ok=True)
            (tree / path).write_text("".join(f"#include <{include}>\n" for include in includes.split()))
        (tree / "docs").mkdir()
        (tree / "docs/design.md").write_text(tables)
        run = subprocess.run([sys.executable, program, tree], capture_output=True, text=True)
        assert not run.stderr, run.stderr
        return run.stdout if run.returncode else ""


def main():
    for title, tables, added, expected in CASES:
        found = complaints(sys.argv[1], tables, SOUND | added)
        assert expected in found and bool(expected) == bool(found), f"{title}: {found}"


main()
