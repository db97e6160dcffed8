#!/usr/bin/env python3
"""Tries how the example programs meet bad input: programs.py FOLDER"""
import os
import subprocess
import sys
import tempfile
import unittest

FOLDER = sys.argv[1]
PROGRAMS = {  # and operands that each is content with
    "inspect": ["form.pdf"],
    "fields": ["form.pdf"],
    "rewrite": ["form.pdf", "out.pdf"],
    "save-in-place": ["form.pdf"],
    "recompress": ["--flate", "form.pdf", "out.pdf"],
    "replace-stream": ["form.pdf", "out.pdf", "93", "text"],
    "fill": ["form.pdf", "out.pdf", "number=7"],
    "background": ["form.pdf", "letterhead.pdf", "out.pdf"],
    "typical-job": ["form.pdf", "letterhead.pdf", "out.pdf"],
}


def run(name, *operands):
    done = subprocess.run([os.path.join(FOLDER, name), *operands], capture_output=True, timeout=60)
    return done.returncode, done.stdout, done.stderr


class Programs(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, "/")
        os.chdir(folder.name)
        self.assertEqual(run("make-invoice", "form.pdf", "letterhead.pdf")[0], 0)
        os.mkdir("folder")
        for name, contents in ("text", b"q Q"), ("bad.json", b"{"), ("bytes.json", b'{"number": "\xe9"}'):
            with open(name, "wb") as file:
                file.write(contents)

    def refuses(self, name, *operands):
        """With status 2 and one line, and nothing is written."""
        status, out, err = run(name, *operands)
        self.assertEqual((status, out, err.count(b"\n")), (2, b"", 1), (name, operands, err))
        self.assertFalse(os.path.exists("out.pdf"))

    def test_the_operands_of_the_table_work(self):
        for name, operands in PROGRAMS.items():
            self.assertEqual(run(name, *operands)[0], 0, name)

    def test_help_is_one_screen(self):
        for name in [*PROGRAMS, "batch", "make-invoice"]:
            status, out, err = run(name, "--help")
            lines = out.decode().splitlines()
            self.assertEqual((status, err), (0, b""))
            self.assertTrue(lines[0].startswith("Usage: " + name), lines[0])
            self.assertLessEqual(len(lines), 24, name)
            self.assertLessEqual(max(map(len, lines)), 80, name)

    def test_wrong_use_is_refused(self):
        for name, operands in PROGRAMS.items():
            self.refuses(name, "--bogus", *operands)
            self.refuses(name)
            for bad in "missing.pdf", "folder":
                self.refuses(name, *[bad if operand == "form.pdf" else operand for operand in operands])

    def test_values_that_are_no_values_are_refused(self):
        for values in "missing.json", "folder", "bad.json", "bytes.json", "text":
            self.refuses("fill", "--values", values, "form.pdf", "out.pdf")
        self.refuses("fill", "form.pdf", "out.pdf", "number")
        self.refuses("fill", "form.pdf", "out.pdf", b"number=\xe9")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
