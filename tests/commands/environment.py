#!/usr/bin/env python3
"""Tries what the commands at the root share: environment.py ENVIRONMENT"""
import os
import subprocess
import sys
import tempfile
import unittest

ENVIRONMENT = sys.argv[1]


def run(script):
    """The status and the lines of a script that goes on from there."""
    outside = {name: value for name, value in os.environ.items() if name != "IN_STEP"}  # where check runs this
    with tempfile.TemporaryDirectory() as folder:
        done = subprocess.run(["bash", "-euo", "pipefail", "-c", f". '{ENVIRONMENT}'\n{script}"], cwd=folder, env=outside,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, timeout=60)
        return done.returncode, done.stdout.splitlines()


class Environment(unittest.TestCase):
    def test_a_step_is_a_line_with_its_time(self):
        status, lines = run("inner() { step deeper echo unseen; }\nstep 'doing much' echo unseen\nstep more inner")
        self.assertEqual((status, len(lines)), (0, 2))
        self.assertRegex(lines[0], r"^doing much \.\.\. \d+ s$")

    def test_a_step_that_fails_shows_why_and_is_the_end(self):
        status, lines = run("step first sh -c 'echo because; exit 7'\necho never")
        self.assertEqual((status, lines[1:]), (7, ["because", "Failed: first"]))
        self.assertRegex(lines[0], r"^first \.\.\. failed after \d+ s:$")

    def test_tests_are_counted_by_what_became_of_them(self):
        log = """ 1/12 Test  #3: a ...............   Passed    0.02 sec
12/12 Test #12: b ...............***Skipped   0.11 sec
 2/12 Test #11: c ...............***Failed    0.11 sec
100% tests passed, 0 tests failed out of 12
The following tests did not run:
\t 12 - b (Skipped)"""
        status, lines = run(f"cat > log <<'END'\n{log}\nEND\ncount_tests log\ncount_tests log\necho $ran $skipped")
        self.assertEqual((status, lines), (0, ["2 2"]))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
