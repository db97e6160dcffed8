#!/usr/bin/env python3
"""Runs the examples and what the guides show: examples.py FOLDER MAKE_INVOICE"""
import os
import subprocess
import sys
import tempfile
import unittest

FOLDER, MAKE_INVOICE = sys.argv[1:3]


def run(name, *operands):
    done = subprocess.run([os.path.join(FOLDER, name), *operands], capture_output=True, text=True, timeout=60)
    return done.returncode, done.stdout + done.stderr


class Guides(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        os.chdir(cls.folder.name)
        subprocess.run([MAKE_INVOICE, "form.pdf", "letterhead.pdf"], check=True, capture_output=True)
        with open("form.pdf", "rb") as whole, open("damaged.pdf", "wb") as damaged, open("lossy.pdf", "wb") as lossy:
            form = whole.read()
            damaged.write(form.replace(b"1 0 obj", b"1 0 obx", 1))
            lossy.write(form.replace(b"/Length 1", b"/Length 0", 1))
        with open("rootless.pdf", "wb") as rootless:
            rootless.write(form.replace(b"<< /Root", b"<< /Toor", 1))
        with open("kidless.pdf", "wb") as kidless:
            kidless.write(form.replace(b"/Kids", b"/Dogs"))

    @classmethod
    def tearDownClass(cls):
        os.chdir("/")
        cls.folder.cleanup()

    def test_text_in_any_script_needs_its_library_and_fonts(self):
        status, out = run("scripts", "form.pdf", "scripts.pdf")
        self.assertTrue(status == 0 or "refused: no font has the characters" in out, out)

    def test_each_program_does_what_its_guide_says(self):
        cases = [  # name, operands, status, a part of what it prints
            ("typical-job", ["form.pdf", "letterhead.pdf", "both.pdf"], 0, "25 of 25 values found"),
            ("getting-started", ["form.pdf"], 0, "/Annots [ 84 0 R 86 0 R"),
            ("getting-started", ["kidless.pdf"], 0, "problem: the root of the page tree has no kids"),
            ("getting-started", ["rootless.pdf"], 1, "the object of Root is missing"),
            ("getting-started", ["missing.pdf"], 1, "No such file"),
            ("object-model", ["form.pdf"], 0, "marked: 1, changed: 1"),
            ("forms", ["form.pdf", "filled.pdf"], 0, "number: text"),
            ("flattened", ["filled.pdf", "out.pdf"], 0, "fields are on"),
            ("import", ["form.pdf", "out.pdf"], 0, ""),
            ("import", ["missing.pdf"], 1, "No such file"),
            ("letterhead", ["form.pdf", "letterhead.pdf", "both.pdf"], 0, ""),
            ("stream-data", ["form.pdf", "drawn.pdf"], 0, "bytes of content"),
            ("saving", ["filled.pdf"], 0, "bytes"),
            ("saving", ["lossy.pdf"], 1, "lossy.pdf is as it was: saving loses"),
            ("errors", ["damaged.pdf"], 1, "log 4: Failed to read object at 9h (9)\n0x507: an object"),
            ("memory-stripe", ["form.pdf"], 0, "2 pages"),
            ("memory-stripe", ["damaged.pdf"], 1, "refused: 0x507"),
            ("progress-stripe", ["form.pdf"], 0, "2 pages, "),
            ("threads", ["form.pdf", "missing.pdf", "letterhead.pdf"], 0, "3 pages, 1 refused"),
            ("losses", ["form.pdf"], 0, "nothing is lost"),
            ("losses", ["lossy.pdf"], 1, "data of a stream (1)"),
            ("memory", ["form.pdf"], 0, "for 93 objects"),
        ]
        for name, operands, status, printed in cases:
            with self.subTest(name=name, operands=operands):
                got, text = run(name, *operands)
                self.assertEqual(got, status, text)
                self.assertIn(printed, text)
        for name, written in ("filled.pdf", b"(2024-0118)"), ("both.pdf", b"/LetterText"):
            with open(name, "rb") as file:
                self.assertIn(written, file.read())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
