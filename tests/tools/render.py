#!/usr/bin/env python3
"""Whether saved files look as they did: render.py FOLDER MAKE_INVOICE, or render.py FOLDER - FILE...

Each file is saved by FOLDER/rewrite and rendered before and after by pdftoppm; no pixel may differ. Without files of one's
own, those of MAKE_INVOICE and files that a careless save would show are tried."""
import hashlib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

SKIPPED = 77  # the status for ctest
RESOLUTION = "40"
TIMEOUT = 300

# A page of numbers and strings that are easily lost: a font's matrix, small and negative offsets, and the colors of an
# image in a string with a backslash, octal digits and bytes above 127.
PAGE = [
    (1, b"<< /Type /Catalog /Pages 2 0 R >>"),
    (2, b"<< /Type /Pages /Kids [ 3 0 R ] /Count 1 >>"),
    (3, b"<< /Type /Page /Parent 2 0 R /MediaBox [ -0.5 -.05 200.075 100.005 ] /Contents 4 0 R "
        b"/Resources << /Font << /F 6 0 R >> /XObject << /X 9 0 R /I 10 0 R >> >> >>"),
    (4, b"BT /F 20 Tf 10 60 Td (aaa) Tj ET q /X Do Q q 80 0 0 80 100 10 cm /I Do Q"),
    (6, b"<< /Type /Font /Subtype /Type3 /FontBBox [ 0 0 100 100 ] /FontMatrix [ 0.01204 0 0 0.01204 -0.05 0 ] "
        b"/FirstChar 97 /LastChar 97 /Widths [ 80.05 ] /Encoding << /Type /Encoding /Differences [ 97 /a ] >> "
        b"/CharProcs << /a 8 0 R >> >>"),
    (8, b"80 0 d0 0 0 70 70 re f"),
    (9, b"0 0 50 20 re f"),
    (10, bytes(b & 3 for b in range(64))),
]
ENTRIES = {  # of those that are streams
    4: b"",
    8: b"",
    9: b"/Type /XObject /Subtype /Form /BBox [ 0 0 50 20 ] /Matrix [ 0.505 0.05 -0.05 0.505 10.005 -0.05 ]",
    10: b"/Type /XObject /Subtype /Image /Width 8 /Height 8 /BitsPerComponent 8 "
        b"/ColorSpace [ /Indexed /DeviceRGB 3 (\\\\\\200\x9f\x80\x8d\\((a\\)\\377)1) ]",
}


def file_of(ending):
    """The page as a file whose lines end so, with gaps between its ids."""
    text = b"%PDF-1.4" + ending
    rows = {0: b"0000000000 65535 f"}
    for number, value in PAGE:
        rows[number] = b"%010d 00000 n" % len(text)
        if number in ENTRIES:
            start = ending if ending != b"\r" else b"\r\n"  # CR alone may not come before data
            value = (b"<< /Length %d %s >>" % (len(value), ENTRIES[number]) + ending + b"stream" + start + value
                     + ending + b"endstream")
        text += b"%d 0 obj" % number + ending + value + ending + b"endobj" + ending
    last = PAGE[-1][0]
    table = b"".join(rows.get(number, b"0000000000 00001 f") + (b" " if len(ending) < 2 else b"") + ending
                     for number in range(last + 1))
    return (text + b"xref" + ending + b"0 %d" % (last + 1) + ending + table + b"trailer" + ending
            + b"<< /Root 1 0 R /Size %d >>" % (last + 1) + ending + b"startxref" + ending + b"%d" % len(text) + ending
            + b"%%EOF" + ending)


def pixels(path):
    """A hash of all pages, and how many bytes they have."""
    digest, size = hashlib.sha256(), 0
    with subprocess.Popen(["pdftoppm", "-r", RESOLUTION, path], stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL) as process:
        while part := process.stdout.read(1 << 20):
            digest.update(part)
            size += len(part)
    return digest.hexdigest(), size


def verdict(program, path, new):
    """What there is to say of one file: saved, refused or different."""
    done = subprocess.run([program, path, new], capture_output=True, timeout=TIMEOUT)
    if done.returncode != 0:
        return "refused: " + done.stderr.decode(errors="replace").strip().split("\n")[-1]
    before, after = pixels(path), pixels(new)
    os.remove(new)
    return "saved" if before == after and before[1] else "nothing to see" if before == after else "DIFFERENT"


def own_files(maker, folder):
    for name, ending in ("lf", b"\n"), ("cr", b"\r"), ("crlf", b"\r\n"):
        (folder / f"{name}.pdf").write_bytes(file_of(ending))
    subprocess.run([maker, folder / "form.pdf", folder / "letterhead.pdf"], check=True)
    return sorted(folder.glob("*.pdf"))


def main():
    programs, maker, *files = sys.argv[1:]
    if not shutil.which("pdftoppm"):
        print("pdftoppm is needed")
        sys.exit(SKIPPED)
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        verdicts = {path: verdict(os.path.join(programs, "rewrite"), path, folder / "new")
                    for path in files or own_files(maker, folder)}
    for path, words in verdicts.items():
        print(f"{path}: {words}")
    wrong = [words for words in verdicts.values() if words == "DIFFERENT" or (words != "saved" and not files)]
    print(f"{len(verdicts)} files, {list(verdicts.values()).count('saved')} look as before, {len(wrong)} don't")
    sys.exit(bool(wrong))


if __name__ == "__main__":
    main()
