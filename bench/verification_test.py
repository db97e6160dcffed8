"""That the checks of what the programs write find a fault: each row damages a file that is right."""

import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

sys.dont_write_bytecode = True
from verification import equality

PROGRAMS = Path(sys.argv.pop(1))

# Operation, workload, foreign workload, and what is put in place of what.
DAMAGE = [
    ("rewrite", "objects", None, b"(element)", b"(elemenT)"),
    ("rewrite", "objects", None, b"true ", b"null "),
    ("rewrite", "objects", None, b"small stream, number", b"small stream, numbeR"),
    ("rewrite", "nested", None, b"(text) 100", b"(text) 101"),
    ("rewrite", "streams-fast", None, b"stream\nx", b"stream\ny"),
    ("form", "form", None, b"Value of field 1-9", b"Value of field 1-8"),
    ("form", "form", None, b"/F 4", b"/F 5"),
    ("background", "pages", "letterhead", b"595", b"596"),
    ("background", "pages", "letterhead", b"/LetterFont1", b"/LetterFont3"),
    ("background", "pages", "letterhead", b"/Catalog", b"/CataloG"),
    ("background", "pages", "letterhead", b"/Parent 1 0 R", b"/Parent 2 0 R"),
    ("background", "pages-own", "letterhead-own", b"/Courier ", b"/Couries "),
    ("place", "pages", "letterhead", b"/Parent 1 0 R", b"/Parent 2 0 R"),
    ("place", "pages-own", "letterhead-own", b"/Courier ", b"/Couries "),
    ("place", "pages-own", "letterhead-own", b"/Times-Roman", b"/Times-Bold"),
    ("place", "pages-own", "letterhead-own", b"/Fx1 Do", b"/Fx2 Do"),
]
COUNTS = {"objects": 100, "nested": 20, "form": 200, "letterhead": 2000, "streams-fast": 1000}


class VerificationTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def file_of(self, workload):
        path = self.folder / f"{workload}.pdf"
        subprocess.run([PROGRAMS / "generate", workload, str(COUNTS.get(workload, 20)), path], check=True)
        return path

    def written(self, operation, source, *foreign):
        path = self.folder / "out.pdf"
        subprocess.run([PROGRAMS / "ours", operation, source, path, *foreign], check=True, stdout=subprocess.DEVNULL)
        return path

    def test_a_changed_value_is_found(self):
        for operation, workload, foreign, good, bad in DAMAGE:
            with self.subTest(operation=operation, workload=workload, bad=bad):
                source = self.file_of(workload)
                letter = self.file_of(foreign) if foreign else None
                path = self.written(operation, source, *([letter] if letter else []))
                is_right = equality(operation, source, letter)
                self.assertTrue(is_right(path))
                text = path.read_bytes()
                self.assertIn(good, text)
                path.write_bytes(bad.join(text.rsplit(good, 1)))
                self.assertFalse(is_right(path))

    def test_a_job_that_was_not_done_is_found(self):
        source = self.file_of("pages")
        for operation in ("background", "place"):
            is_right = equality(operation, source, self.file_of("letterhead"))
            self.assertFalse(is_right(self.written("rewrite", source)), operation)
        source = self.file_of("streams-fast")
        for operation, done in (("uncompress", "rewrite"), ("recompress", "uncompress"), ("recompress", "rewrite")):
            with self.subTest(operation=operation, done=done):
                self.assertFalse(equality(operation, source, None)(self.written(done, source)))


if __name__ == "__main__":
    unittest.main()
