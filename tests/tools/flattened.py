#!/usr/bin/env python3
"""Flattens forms and looks at the pixels: flattened.py FOLDER MAKE_INVOICE

Pages look as before, whatever their turns and those of their fields, and so does the demo's form once it is filled.
FOLDER has the programs. Needs pdftoppm; without it nothing is tried."""
import itertools
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

FOLDER, MAKE_INVOICE = map(os.path.abspath, sys.argv[1:3])
RED, BLUE = b"1 0 0 rg", b"0 0 1 rg"

# Entries of widgets on a page of 200 by 200, and those of a look that is red to the left and blue above that.
WIDGETS = [
    (b"/Rect [ 10 10 50 30 ]", b"/BBox [ 0 0 40 20 ]"),
    (b"/Rect [ 10.3 50.7 70.1 80.2 ]", b"/BBox [ 3 4 23 44 ]"),
    (b"/Rect [ 90 10 110 70 ]", b"/BBox [ 0 0 60 20 ] /Matrix [ 0 1 -1 0 20 0 ]"),
    (b"/Rect [ 190 70 120 10 ]", b"/BBox [ 0 0 30 30 ] /Matrix [ .8 .3 -.3 .8 7 -9 ]"),
    (b"/Rect [ 10 100 60 150 ] /F 16", b"/BBox [ 0 0 50 50 ]"),
    (b"/Rect [ 40 120 80 160 ] /F 2", b"/BBox [ 0 0 40 40 ]"),
    (b"/Rect [ 80 150 110 195 ]", b"/BBox [ 0 0 20 20 ] /Group << /S /Transparency /I true >>"),
    (b"/Rect [ 100 100 140 140 ]", b"/BBox [ 10 10 30 30 ]"),
    (b"/Rect [ 150 100 150 140 ]", b"/BBox [ 0 0 10 10 ]"),
    (b"/Rect [ 150 150 190 190 ]", b"/BBox [ 0 0 0 10 ]"),
]
LOOK = RED + b" 0 0 40 15 re f " + BLUE + b" 5 15 20 20 re f"


def stream(entries, data):
    return b"<< %s /Length %d >>\nstream\n%s\nendstream" % (entries, len(data), data)


def pdf(objects):
    text, offsets = b"%PDF-1.7\n", []
    for number, value in enumerate(objects, 1):
        offsets.append(len(text))
        text += b"%d 0 obj\n%s\nendobj\n" % (number, value)
    table = b"".join(b"%010d 00000 n \n" % offset for offset in offsets)
    return text + (b"xref\n0 %d\n0000000000 65535 f \n%strailer\n<< /Root 1 0 R /Size %d >>\nstartxref\n%d\n%%%%EOF\n"
                   % (len(offsets) + 1, table, len(offsets) + 1, len(text)))


def form(turn, content):
    """A page with all widgets, turned so, after content that they are drawn over."""
    ids = range(5, 5 + 2 * len(WIDGETS), 2)
    fields = b" ".join(b"%d 0 R" % number for number in ids)
    objects = [
        b"<< /Type /Catalog /Pages 2 0 R /AcroForm << /Fields [ %s ] >> >>" % fields,
        b"<< /Type /Pages /Kids [ 3 0 R ] /Count 1 /Rotate %d >>" % turn,
        b"<< /Type /Page /Parent 2 0 R /MediaBox [ 0 0 200 200 ] /Contents 4 0 R /Annots [ %s ] >>" % fields,
        stream(b"", content),
    ]
    for number, (widget, look) in zip(ids, WIDGETS):
        objects.append(b"<< /Type /Annot /Subtype /Widget /FT /Tx /T (%d) /AP << /N %d 0 R >> %s >>"
                       % (number, number + 1, widget))
        objects.append(stream(b"/Type /XObject /Subtype /Form " + look, LOOK))
    return pdf(objects)


def rows(path):
    """The pixels of the first page, row by row."""
    done = subprocess.run(["pdftoppm", "-r", "72", "-singlefile", path], check=True, capture_output=True)
    _, size, _, pixels = done.stdout.split(b"\n", 3)
    width, height = map(int, size.split())
    pixels = [tuple(pixels[i:i + 3]) for i in range(0, 3 * width * height, 3)]
    return [pixels[y * width:(y + 1) * width] for y in range(height)]


def differences(before, after):
    """The places of pixels that aren't, within a little, between those around them in the other picture: edges may
    move by a part of a pixel."""
    little, found = 16, []
    for y, (one, other) in enumerate(zip(before, after)):
        if one == other:
            continue
        for x, (pixel, same) in enumerate(zip(one, other)):
            if pixel == same:
                continue
            around = [after[j][i] for j in range(max(y - 1, 0), min(y + 2, len(after)))
                      for i in range(max(x - 1, 0), min(x + 2, len(other)))]
            if any(not min(colors) - little <= color <= max(colors) + little
                   for color, colors in zip(pixel, zip(*around))):
                found.append((x, y))
    return found


class Flattened(unittest.TestCase):
    def setUp(self):
        if not shutil.which("pdftoppm"):
            self.skipTest("pdftoppm is not there")
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, "/")
        os.chdir(folder.name)

    def looks_as_before(self, name, *options):
        subprocess.run([os.path.join(FOLDER, "flatten"), *options, name, "out.pdf"], check=True)
        with open("out.pdf", "rb") as file:
            self.assertNotIn(b"/AcroForm", file.read())
        before, after = rows(name), rows("out.pdf")
        self.assertGreater(len({pixel for row in before for pixel in row}), 2, "there is something to be seen")
        self.assertEqual(differences(before, after), [], name)

    def test_widgets_are_seen_where_they_were(self):
        for turn, content in itertools.product((0, 90, 180, 270), (b"", b"0 1 0 rg 0 0 100 60 re f .5 0 0 .5 9 9 cm")):
            with open("form.pdf", "wb") as file:
                file.write(form(turn, content))
            self.looks_as_before("form.pdf")

    def test_a_filled_form_is_seen_as_it_was(self):
        subprocess.run([MAKE_INVOICE, "form.pdf", "letterhead.pdf"], check=True)
        values = ["number=A 7", "order=12", "remarks=several lines\nof text"]
        subprocess.run([os.path.join(FOLDER, "fill"), "form.pdf", "filled.pdf", *values], check=True)
        self.looks_as_before("filled.pdf")
        with open("out.pdf", "rb") as file:
            self.assertIn(b"(A 7) Tj", file.read())


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
