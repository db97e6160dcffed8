#!/usr/bin/env python3
"""Draws pages on pages by a program and looks at the pixels: pixels.py PROGRAM

What paints nothing shows the letterhead, and what paints covers it, for all turns of either page and for boxes off the
origin. PROGRAM is files-pdf-background. Needs pdftoppm; without it nothing is tried."""
import itertools
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

PROGRAM = os.path.abspath(sys.argv.pop(1))
TURNS = (0, 90, 180, 270)


def pdf(content, rotation=0, corner=(0, 0), size=(100, 160)):
    """A page whose lower left corner is at `corner`, with content that is drawn from there."""
    x, y = corner
    content = b"1 0 0 1 %d %d cm %s" % (x, y, content)
    objects = [
        b"<< /Type /Catalog /Pages 2 0 R >>",
        b"<< /Type /Pages /Kids [ 3 0 R ] /Count 1 /Rotate %d >>" % rotation,
        b"<< /Type /Page /Parent 2 0 R /MediaBox [ 0 0 900 900 ] /CropBox [ %d %d %d %d ] /Contents 4 0 R >>"
        % (x, y, x + size[0], y + size[1]),
        b"<< /Length %d >>\nstream\n%s\nendstream" % (len(content), content),
    ]
    text, offsets = b"%PDF-1.7\n", []
    for number, value in enumerate(objects, 1):
        offsets.append(len(text))
        text += b"%d 0 obj\n%s\nendobj\n" % (number, value)
    table = b"".join(b"%010d 00000 n \n" % offset for offset in offsets)
    return text + (b"xref\n0 5\n0000000000 65535 f \n%strailer\n<< /Root 1 0 R /Size 5 >>\nstartxref\n%d\n%%%%EOF\n"
                   % (table, len(text)))


def upright(rotation, corner=(0, 0), size=(100, 160), color=b"1 0 0"):
    """A page that shows, whatever its turn, a box in the upper left quarter and nothing else."""
    turned = rotation % 180 != 0
    width, height = reversed(size) if turned else size
    view = {0: b"1 0 0 1 0 0", 90: b"0 1 -1 0 %d 0" % size[0], 180: b"-1 0 0 -1 %d %d" % size,
            270: b"0 -1 1 0 0 %d" % size[1]}[rotation]
    box = b"%s cm %s rg 0 %d %d %d re f" % (view, color, height // 2, width // 2, height - height // 2)
    return pdf(box, rotation, corner, size)


class Pixels(unittest.TestCase):
    def setUp(self):
        if not shutil.which("pdftoppm"):
            self.skipTest("pdftoppm is not there")
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, "/")
        os.chdir(folder.name)

    def drawn(self, own, foreign, *options):
        """The colors in the middles of the four quarters of the page, the upper left one first."""
        for name, file in (("in.pdf", own), ("foreign.pdf", foreign)):
            with open(name, "wb") as out:
                out.write(file)
        subprocess.run([PROGRAM, *options, "in.pdf", "foreign.pdf", "out.pdf"], check=True)
        done = subprocess.run(["pdftoppm", "-cropbox", "-r", "72", "-singlefile", "out.pdf"], check=True,
                              capture_output=True)
        _, size, _, pixels = done.stdout.split(b"\n", 3)
        width, height = map(int, size.split())
        places = [(x * width // 4, y * height // 4) for y, x in itertools.product((1, 3), (1, 3))]
        names = {(255, 255, 255): "white", (255, 0, 0): "red", (0, 0, 255): "blue"}
        return [names.get(tuple(pixels[3 * (y * width + x):][:3])) for x, y in places]

    def test_the_letterhead_is_seen_upright_through_what_paints_nothing(self):
        for own, foreign in itertools.product(TURNS, TURNS):
            size = (160, 100) if (own - foreign) % 180 else (100, 160)
            got = self.drawn(pdf(b"", own, (30, 70)), upright(foreign, (200, 10), size))
            self.assertEqual(got, ["red", "white", "white", "white"], (own, foreign))

    def test_what_paints_covers_the_letterhead_and_is_covered_by_a_stamp(self):
        for own in TURNS:
            page = upright(own, (30, 70), color=b"0 0 1")
            stamp = upright(0, (5, 5), (160, 100) if own % 180 else (100, 160))
            self.assertEqual(self.drawn(page, stamp), ["blue", "white", "white", "white"], own)
            self.assertEqual(self.drawn(page, stamp, "--above"), ["red", "white", "white", "white"], own)

    def test_options_move_turn_and_scale_it(self):
        page = pdf(b"")
        cases = [
            ("--rotate 180", (100, 160), ["white", "white", "white", "red"]),
            ("--rotate 90 --fit scale", (160, 100), ["white", "red", "white", "white"]),
            ("--fit none --at lower-right", (50, 80), ["white", "white", "white", "white"]),
            ("--fit none --at lower-right --offset 12,-18", (50, 80), ["white", "white", "white", "red"]),
            ("--fit scale", (50, 80), ["red", "white", "white", "white"]),
            ("--fit none --at upper-left", (200, 320), ["red", "red", "red", "red"]),
        ]
        for options, size, expected in cases:
            self.assertEqual(self.drawn(page, upright(0, (7, 9), size), *options.split()), expected, options)

    def test_nothing_of_the_letterhead_gets_out(self):
        content = b"Q Q ET EMC 1 0 0 rg q q BT 5 0 0 5 0 0 cm"
        white = ["white", "white", "white", "white"]
        self.assertEqual(self.drawn(pdf(b""), pdf(content)), white)
        self.assertEqual(self.drawn(pdf(b"0 80 50 80 re f"), pdf(content))[1:], white[1:])
        self.assertEqual(self.drawn(pdf(b"Q 1 0 0 1 50 0 cm q"), upright(0), "--above"), ["red"] + white[1:])


if __name__ == "__main__":
    unittest.main()
