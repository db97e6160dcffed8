#!/usr/bin/env python3
"""Tries how the programs meet bad input: programs.py FOLDER MAKE_INVOICE [import] [xfdf]"""
import fcntl
import json
import os
import pathlib
import pty
import re
import resource
import shutil
import signal
import struct
import subprocess
import sys
import tempfile
import termios
import time
import unittest

FOLDER, MAKE_INVOICE = sys.argv[1:3]
HAS_IMPORT = "import" in sys.argv[3:]
HAS_XFDF = "xfdf" in sys.argv[3:]
TREE = pathlib.Path(__file__).resolve().parents[2]
PROGRAMS = {  # and operands that each is content with
    "inspect": ["form.pdf"],
    "fields": ["form.pdf"],
    "rewrite": ["form.pdf", "out.pdf"],
    "save-in-place": ["form.pdf"],
    "recompress": ["--flate", "form.pdf", "out.pdf"],
    "replace-stream": ["form.pdf", "out.pdf", "93", "text"],
    "fill": ["form.pdf", "out.pdf", "number=7"],
    "flatten": ["form.pdf", "out.pdf"],
    "background": ["form.pdf", "letterhead.pdf", "out.pdf"],
}


def run(name, *operands, **how):
    how = {"stdout": subprocess.PIPE, "stderr": subprocess.PIPE, "timeout": 60, **how}
    done = subprocess.run([os.path.join(FOLDER, name), *operands], **how)
    return done.returncode, done.stdout or b"", done.stderr


def terminal(columns):
    """Both ends of a new one."""
    try:
        screen, slave = pty.openpty()
    except OSError as reason:
        raise unittest.SkipTest(f"there are no terminals here: {reason}")
    fcntl.ioctl(slave, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
    return screen, slave


def on_terminal(name, *operands):
    """The lines that it prints on a terminal of 80 columns."""
    screen, slave = terminal(80)
    out = b""
    with subprocess.Popen([os.path.join(FOLDER, name), *operands], stdout=slave):
        os.close(slave)
        try:
            while part := os.read(screen, 4096):
                out += part
        except OSError:  # how a terminal that nobody has any more ends
            os.close(screen)
    return out.decode().splitlines()


class Programs(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.addCleanup(os.chdir, "/")
        os.chdir(folder.name)
        subprocess.run([MAKE_INVOICE, "form.pdf", "letterhead.pdf"], check=True)
        os.mkdir("folder")
        for name, contents in ("text", b"q Q"), ("bad.json", b"{"), ("bytes.json", b'{"number": "\xe9"}'):
            with open(name, "wb") as file:
                file.write(contents)

    def refuses(self, name, *operands, **how):
        """With status 2 and one line, and nothing is written."""
        status, out, err = run(name, *operands, **how)
        self.assertEqual((status, out, err.count(b"\n")), (2, b"", 1), (name, operands, err))
        self.assertFalse(os.path.exists("out.pdf"))

    def test_the_operands_of_the_table_work(self):
        for name, operands in PROGRAMS.items():
            self.assertEqual(run(name, *operands)[0], 0, name)

    def test_limits_can_be_raised(self):
        length, text, table = 1 << 20, b"%PDF-1.4\n1 0 obj\n<< /Type /Catalog >>\nendobj\n", b"0000000009 00000 n \n"
        for number in range(2, 42):  # streams that all reach to the end
            table += b"%010d 00000 n \n" % len(text)
            text += b"%d 0 obj\n<< /Length %d >>\nstream\n\nendstream\nendobj\n" % (number, length)
        text += b" " * length + b"\n"
        with open("overlapping.pdf", "wb") as file:
            file.write(text + b"xref\n0 42\n0000000000 65535 f \n" + table
                       + b"trailer\n<< /Root 1 0 R /Size 42 >>\nstartxref\n%d\n%%%%EOF\n" % len(text))
        operands = ["--import", "never", "--lossy", "--unverified", "overlapping.pdf", "out.pdf"]
        status, _, err = run("rewrite", *operands)
        self.assertEqual(status, 1)
        self.assertIn(b"limitFactor raises it", err)
        self.assertEqual(run("rewrite", "--limit-factor", "2", *operands)[0], 0)
        self.assertGreater(os.path.getsize("out.pdf"), 40 * length)
        os.remove("out.pdf")
        for bad in "0", "-1", "many":
            self.refuses("rewrite", "--limit-factor", bad, "form.pdf", "out.pdf")

    def test_help_is_one_screen(self):
        for name in [*PROGRAMS, "batch"]:
            status, out, err = run(name, "--help")
            lines = out.decode().splitlines()
            self.assertEqual((status, err), (0, b""))
            self.assertTrue(lines[0].startswith("Usage: " + name), lines[0])
            self.assertLessEqual(len(lines), 23, name)
            self.assertLessEqual(max(map(len, lines)), 80, name)
            self.assertEqual(run(name, "-h")[1], out)
            self.assertGreaterEqual(len(run(name, "--help-all")[1]), len(out))

    def test_a_reader_that_goes_away_ends_a_program_quietly(self):
        """While it prints more than fits into a pipe, and before it prints anything."""
        run("fill", "--keep-looks", "form.pdf", "long.pdf", "remarks=" + "x" * 100000)
        with subprocess.Popen([os.path.join(FOLDER, "inspect"), "long.pdf"], stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE) as program:
            program.stdout.readline()
            program.stdout.close()
            self.assertEqual((program.stderr.read(), program.wait(60)), (b"", -signal.SIGPIPE))
        job = b'{"in": "form.pdf", "out": "done.pdf"}\n'
        for name, operands, jobs in [(name, ["--help-all"], b"") for name in PROGRAMS] + [("batch", [], job)]:
            reader, writer = os.pipe()
            os.close(reader)
            done = subprocess.run([os.path.join(FOLDER, name), *operands], input=jobs, stdout=writer,
                                  stderr=subprocess.PIPE, timeout=60)
            os.close(writer)
            self.assertEqual((done.stderr, done.returncode), (b"", -signal.SIGPIPE), name)
        self.assertEqual(run("inspect", "done.pdf")[0], 0)  # a job under way was done to its end

    def test_bash_completes_options_and_what_they_may_be(self):
        cases = [  # what is typed, and what may follow
            ("--imp", "--import"), ("--import n", "never"), ("--import = al", "always"),
            ("--import =", "auto never always"), ("--vers", "--version"),
            ("-- f", ""), ("--password-file f", ""), ("--encrypt-as", "--encrypt-as-before")]
        for name in "files-pdf-rewrite", "files-pdf-stamp":
            script = run(name, "--completion", "bash")[1].decode()
            for typed, expected in cases:
                words = " ".join(f"'{word}'" for word in [name, *typed.split()])
                function = "_" + name.replace("-", "_")
                last = len(typed.split())
                ask = f"COMP_WORDS=({words}); COMP_CWORD={last}; {function}; echo ${{COMPREPLY[*]}}"
                done = subprocess.run(["bash", "-c", script + ask], capture_output=True, text=True)
                self.assertEqual((done.stdout.strip(), done.stderr), (expected, ""), (name, typed))
            zsh = run(name, "--completion=zsh")[1].decode()
            self.assertTrue(zsh.startswith(f"#compdef {name}\n"))
            self.assertIn(": :(auto never always)'", zsh)
            if shutil.which("zsh"):
                subprocess.run(["zsh", "-n"], input=zsh, text=True, check=True)

    def test_every_program_says_its_version(self):
        version = re.search(r"project\(FilesPDF VERSION (\S+)", (TREE / "CMakeLists.txt").read_text())[1]
        for name in [*PROGRAMS, "batch"]:
            self.assertEqual(run(name, "--version"), (0, f"{name} (FilesPDF) {version}\n".encode(), b""))

    def test_a_dash_is_standard_input_and_output(self):
        with open("form.pdf", "rb") as file:
            form = file.read()
        os.mkdir("temporary")
        own = {**os.environ, "TMPDIR": os.path.abspath("temporary")}
        for name, operands in PROGRAMS.items():
            dashes = ["-" if operand in ("form.pdf", "out.pdf") else operand for operand in operands]
            with open("form.pdf", "rb") as file:
                status, out, err = run(name, *dashes, stdin=file, env=own)
            expected = run(name, *operands)
            self.assertEqual((status, err), (0, b""), name)
            if "out.pdf" not in operands and name != "save-in-place":
                self.assertEqual(out, expected[1])
                continue
            with open("saved.pdf", "wb") as file:
                file.write(out)
            with open("form.pdf" if name == "save-in-place" else "out.pdf", "rb") as file:
                self.assertEqual(len(out), len(file.read()))
            self.assertEqual(run("inspect", "saved.pdf")[0], 0)
            with open("/dev/full", "w") as full:
                self.assertEqual(run(name, *dashes, input=form, stdout=full, env=own)[0], 2)
            refused = run(name, *dashes, input=form[:-9], env=own)
            self.assertEqual(refused[:2], (1, b""))
            self.assertEqual(os.listdir("temporary"), [])

    def test_an_installed_program_names_the_installed_guide(self):
        os.makedirs("bin")
        os.makedirs("share/doc/files-pdf")
        shutil.copy(os.path.join(FOLDER, "inspect"), "bin/inspect")
        libraries = {**os.environ, "LD_LIBRARY_PATH": os.path.dirname(FOLDER)}
        ask = lambda: subprocess.run(["bin/inspect", "--import=never", "text"], env=libraries,
                                     capture_output=True).stderr
        self.assertIn(b"; docs/errors.md has the usual causes", ask())
        shutil.copy(TREE / "docs/errors.md", "share/doc/files-pdf")
        self.assertIn(os.path.realpath("share/doc/files-pdf/errors.md").encode(), ask())

    def test_a_value_that_fails_is_told_with_its_object(self):
        with open("form.pdf", "rb") as file:
            form = file.read()
        with open("broken.pdf", "wb") as file:
            file.write(form.replace(b"2 0 obj", b"2 0 obx", 1))
        place = f"({form.index(b'2 0 obj')})"
        for name in "inspect", "fields":
            self.assertIn(place, run(name, "--import=never", "broken.pdf")[2].decode())
        done = run("batch", "--import=never", input=b'{"in": "broken.pdf"}\n{"in": "form.pdf"}')[1].splitlines()
        self.assertIn(place, json.loads(done[0])["error"])

    def test_a_bar_is_a_line_of_its_terminal(self):
        screen, slave = terminal(30)
        with subprocess.Popen([os.path.join(FOLDER, "batch")], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                              stderr=slave) as batch:
            os.close(slave)
            os.set_blocking(screen, False)
            shown = b""
            while not shown.count(b"\r") > 1:  # it comes after a second
                batch.stdin.write(b'{"in": "form.pdf"}\n')
                batch.stdin.flush()
                try:
                    shown += os.read(screen, 4096)
                except BlockingIOError:
                    time.sleep(0.01)
            batch.stdin.close()
        os.close(screen)
        self.assertIn(b"jobs, 0 failed", shown)
        self.assertEqual({len(line) for line in shown.split(b"\r")[1:-1]}, {29})

    def test_wrong_use_is_refused(self):
        for name, operands in PROGRAMS.items():
            self.refuses(name, "--bogus", *operands)
            self.refuses(name)
            for bad in "missing.pdf", "folder":
                self.refuses(name, *[bad if operand == "form.pdf" else operand for operand in operands])

    def test_what_the_system_refuses_is_status_2(self):
        """A folder that isn't there, a disk that is full after the first 20 KB, and one that is full already."""
        small = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (20000, 20000))
        for name, operands in PROGRAMS.items():
            if "out.pdf" in operands or name == "save-in-place":
                self.refuses(name, *["gone/out.pdf" if operand == "out.pdf" else operand for operand in operands],
                             *(["gone/form.pdf"] if name == "save-in-place" else []))
                self.refuses(name, *operands, preexec_fn=small)
            for options in operands, ["--help-all"]:
                if "out.pdf" not in options and name != "save-in-place":
                    with open("/dev/full", "w") as full:
                        self.refuses(name, *options, stdout=full)

    def test_a_refusal_says_what_to_do(self):
        with open("form.pdf", "rb") as file:
            form = file.read()
        for name, old, new in [("broken.pdf", b"1 0 obj", b"1 0 obx"), ("part.pdf", b"<< /Root", b"<< /Prev 5 /Root"),
                               ("lossy.pdf", b"/Length 1", b"/Length 0")]:
            with open(name, "wb") as file:
                file.write(form.replace(old, new, 1))
        cases = [  # status, what it says, operands
            (2, "unknown option --bogus;", "inspect --bogus=3 form.pdf"),
            (2, "--object needs an argument;", "inspect form.pdf --object"),
            (2, "--json takes no argument;", "inspect --json=yes form.pdf"),
            (2, "--object and --losses don't go together;", "inspect --losses --object=3 form.pdf"),
            (2, "--stored goes only with --stream;", "inspect --stored form.pdf"),
            (2, "gone.json: can't be opened: No such file", "fill --values=gone.json form.pdf out.pdf"),
            (2, "folder: can't be read: Is a directory", "fill --values folder form.pdf out.pdf"),
            (2, "can't be saved as folder: is a folder", "rewrite form.pdf folder"),
            (2, "unknown fit wide: there are none, shrink, scale", "background --fit wide form.pdf form.pdf out.pdf"),
            (2, "an offset is two numbers", "background --offset 3 form.pdf form.pdf out.pdf"),
            (2, "--merged and --above don't go together", "background --merged --above form.pdf form.pdf out.pdf"),
            (1, 'there is no page "9" among', "background --pages 9 form.pdf form.pdf out.pdf"),
            (0, "", "background --mode pairs --pages odd,even --from r1 --above --box crop,art --fit scale --at top"
                " --offset -3,4.5 --rotate 90 form.pdf letterhead.pdf out.pdf"),
            (0, "", "background --merged --mode first form.pdf letterhead.pdf out.pdf"),
            (1, "files-pdf-fields prints", "fill form.pdf out.pdf nobody=7"),
            (1, "nobody: the document has no form", "fill letterhead.pdf out.pdf nobody=7"),
            (0, "form.pdf: warning: no value is given", "fill form.pdf out.pdf"),
            (2, "can't have both OUT and the JSON", "flatten --json form.pdf -"),
            (1, "nobody: there is no such field; files-pdf-fields prints", "flatten --field nobody form.pdf out.pdf"),
            (0, "", "flatten --printed form.pdf out.pdf"),
            (1, "see docs/errors.md (0x507)", "fields broken.pdf"),
            (1, "; --partial saves", "rewrite --import never part.pdf out.pdf"),
            (1, "files-pdf-inspect --losses FILE", "rewrite --strict lossy.pdf out.pdf"),
            (1, "; --lossy saves", "rewrite lossy.pdf out.pdf"),
            (1, "lossy.pdf: was read otherwise", "background form.pdf lossy.pdf out.pdf"),
            (0, "", "rewrite --lossy lossy.pdf out.pdf"),
            (0, "", "rewrite --plain --keep-id form.pdf out.pdf"),
        ]
        for status, words, line in cases:
            got, _, err = run(*line.split())
            self.assertEqual(got, status, line)
            self.assertIn(words, err.decode(), line)

    def test_what_is_filled_in_is_drawn(self):
        def fill(*operands):
            status, _, err = run("fill", "form.pdf", "drawn.pdf", *operands)
            with open("drawn.pdf", "rb") as file:
                return status, file.read(), err.decode()

        status, drawn, _ = fill("order=A 7")
        self.assertEqual((status, drawn.count(b"(A 7) Tj"), drawn.count(b"/NeedAppearances")), (0, 1, 0))
        self.assertIn(b"/NeedAppearances true", fill("--viewer-looks", "order=A 7")[1])
        self.assertNotIn(b"(A 7) Tj", fill("--keep-looks", "order=A 7")[1])
        self.assertEqual(run("fill", "--keep-looks", "--viewer-looks", "form.pdf", "out.pdf")[0], 2)
        # A character that no font has, and a font that can't be had.
        status, _, err = run("fill", "form.pdf", "out.pdf", "order=\U0010FFFD")
        self.assertEqual(status, 1)
        self.assertIn("(U+10FFFD)", err.decode())
        status, drawn, err = fill("--any-text", "order=x\U0010FFFD")
        self.assertEqual(status, 0)
        self.assertIn("(U+10FFFD)", err)
        os.remove("drawn.pdf")

    def test_fields_are_flattened(self):
        def names(file):
            return [field["path"] for field in json.loads(run("fields", "--json", file)[1])["fields"]]

        every = names("form.pdf")
        status, out, err = run("flatten", "--json", "--field=number", "--field", "order", "form.pdf", "some.pdf")
        self.assertEqual((status, err), (0, b""))
        self.assertEqual({key: json.loads(out)[key] for key in ("fields", "widgets")}, {"fields": 2, "widgets": 2})
        self.assertEqual(names("some.pdf"), [name for name in every if name not in ("number", "order")])
        self.assertEqual(run("fill", "--flatten", "form.pdf", "flat.pdf", "order=A 7")[0], 0)
        self.assertEqual(names("flat.pdf"), [])
        with open("flat.pdf", "rb") as file:
            self.assertIn(b"(A 7) Tj", file.read())

    def test_json_is_as_its_document_says(self):
        document = (TREE / "docs/json.md").read_text()
        run("recompress", "--flate", "form.pdf", "odd.pdf")
        with open("odd.pdf", "rb") as file:
            odd = file.read().replace(b"\nendobj", b"\n(xyz) ", 1)
        with open("odd.pdf", "wb") as file:
            file.write(odd.replace(b"/Filter /FlateDecode", b"/Filter /OtherFilter", 1))
        whole, losses, fields, flat = (json.loads(run(*line.split())[1]) for line in (
            "inspect --json odd.pdf", "inspect --losses --json odd.pdf", "fields --json odd.pdf",
            "flatten --json form.pdf flat.pdf"))
        keys = [  # of an object, or of all objects of a list together
            (whole, "version lineEnding trailer objects pages pagesCode pageProblems import"),
            (whole["objects"], "id generation text stored decoded error code"),
            (whole["pages"], "id generation"),
            (losses, "losses counts size table import"),
            (losses["losses"], "id generation kind words offset inFile written"),
            (fields, "fields passedOver import"),
            (flat, "fields widgets drawn pages warnings import"),
            (fields["fields"], "path kind flags flagBits value default signed options states maxLength tooltip "
                               "appearance alignment widgets places"),
            ([place for field in fields["fields"] for place in field["places"]], "page id generation rectangle states"),
        ]
        for value, names in keys:
            found = {key for each in (value if isinstance(value, list) else [value]) for key in each}
            self.assertEqual(found, set(names.split()))
        identifiers = re.findall(r'return "(\w+)"', (TREE / "tools/Identifiers.cpp").read_text())
        self.assertGreater(len(identifiers), 20)
        for name in [*identifiers, *(name for _, names in keys for name in names.split())]:
            self.assertIn(f"`{name}`", document)
        self.assertEqual({o["code"] for o in whole["objects"] if "code" in o}, {"0x519"})
        self.assertEqual((losses["losses"][0]["kind"], losses["counts"]), ("otherValue", {"otherValue": 1}))
        self.assertLessEqual({f["kind"] for f in fields["fields"]}, set(identifiers))

    @unittest.skipUnless(shutil.which("qpdf"), "makes its files by qpdf")
    def test_files_are_imported(self):
        encrypt = ["--encrypt", "secret", "owner", "256", "--print=none", "--"]
        for name, options in ("line.pdf", []), ("packed.pdf", ["--object-streams=generate"]), ("locked.pdf", encrypt):
            subprocess.run(["qpdf", "--preserve-unreferenced", "form.pdf", *options, name], check=True)
        for name, password in ("right", b"secret\nmore"), ("wrong", b"guess"), ("long", b"x" * 2000):
            with open(name, "wb") as file:
                file.write(password)
        cases = [  # status, what it says, operands; those before a program that imports are of any
            (1, "not opened as it is stored: cross-reference streams, object streams", "fields --import never packed.pdf"),
            (2, "--import takes auto|never|always;", "fields --import sometimes form.pdf"),
            (2, "the password file gone can't be read", "fields --password-file gone form.pdf"),
            (2, "too long for a password", "fields --password-file long form.pdf"),
        ]
        cases += [
            (0, "packed.pdf: cross-reference streams, object streams; imported", "fields packed.pdf"),
            (0, "form.pdf: imported", "inspect --import always form.pdf"),
            (1, "needs a password; --password-file FILE", "inspect locked.pdf"),
            (1, "the password is wrong", "inspect --password-file wrong locked.pdf"),
            (1, "is encrypted; --decrypt saves it", "rewrite --password-file right locked.pdf out.pdf"),
            (0, "imported", "fill --password-file right --decrypt locked.pdf open.pdf number=7"),
            (0, "", "inspect --import never open.pdf"),
            (0, "imported", "fill --password-file right --encrypt-as-before --compact locked.pdf again.pdf number=7"),
            (0, "imported", "save-in-place --password-file right --encrypt-as-before locked.pdf"),
            (1, "needs a password", "fields locked.pdf"),
            (1, "needs a password", "fields again.pdf"),
            (0, "imported", "background --import always --compact line.pdf letterhead.pdf small.pdf"),
        ] if HAS_IMPORT else [
            (1, "object streams; needs libfiles-pdf-import, which isn't installed", "fields packed.pdf"),
            (1, "needs libfiles-pdf-import", "rewrite --compact form.pdf out.pdf"),
        ]
        for status, words, line in cases:
            got, _, err = run(*line.split())
            self.assertEqual(got, status, (line, err))
            self.assertIn(words, err.decode(), line)
        self.assertFalse(os.path.exists("out.pdf"))
        if HAS_IMPORT:
            values = [run("fields", "--json", *line.split())[1]
                      for line in ("open.pdf", "--password-file right again.pdf", "packed.pdf")]
            fields, again, packed = (json.loads(value) for value in values)
            for place in (place for each in (fields, again) for field in each["fields"] for place in field["places"]):
                del place["id"]  # which the import changes
            self.assertEqual(fields["fields"], again["fields"])
            self.assertEqual((fields["import"], again["import"]["decrypted"]), (None, True))
            self.assertEqual((packed["import"]["permissions"], packed["import"]["objectStreams"] > 0), (None, True))
            self.assertFalse(again["import"]["permissions"]["print"])

    def test_tables_are_aligned_and_fit_a_terminal(self):
        long = "a text that goes on for longer than a line of the terminal does, " * 5
        self.assertEqual(run("fill", "form.pdf", "long.pdf", "remarks=" + long, "billTo=" + long)[0], 0)
        shown = on_terminal("fields", "long.pdf")
        whole = run("fields", "long.pdf")[1].decode().splitlines()
        self.assertLessEqual(max(map(len, shown)), 80)
        self.assertIn("...", "".join(shown))
        self.assertEqual("\n".join(whole).count(long.strip()), 2)
        for lines in shown, [line for line in whole if long.strip() not in line]:
            starts = [match.start() for match in re.finditer(r"\w+", lines[0])][1:]
            for line in lines:
                self.assertTrue(all(line[start - 2:start].strip() == "" for start in starts), line)

    def test_columns_are_counted_as_a_terminal_shows_them(self):
        self.assertEqual(run("fill", "--any-text", "form.pdf", "wide.pdf", "remarks=漢字e\u0301")[0], 0)
        lines = run("fields", "wide.pdf")[1].decode().splitlines()
        before = next(line for line in lines if "漢字" in line).split("multiline")[0]
        width = sum(2 if c in "漢字" else 0 if c == "\u0301" else 1 for c in before)
        self.assertEqual(width, lines[0].index("FLAGS"))

    def test_what_a_terminal_obeys_is_spelled(self):
        odd = "a\u202Eb\u2066c\u200Bd\u2028e\u0085f"
        self.assertEqual(run("fill", "form.pdf", "odd.pdf", "remarks=" + odd)[0], 0)
        self.assertIn(r"a\u{202E}b\u{2066}c\u{200B}d\u{2028}e\205f", run("fields", "odd.pdf")[1].decode())
        out = run("fields", "--json", "odd.pdf")[1].decode()
        self.assertIn(r"a\u202eb\u2066c\u200bd\u2028e\u0085f", out)
        self.assertIn(odd, [field["value"] for field in json.loads(out)["fields"]])

    def test_values_that_are_no_values_are_refused(self):
        for values in "missing.json", "folder", "bad.json", "bytes.json", "text":
            self.refuses("fill", "--values", values, "form.pdf", "out.pdf")
        self.refuses("fill", "form.pdf", "out.pdf", "number")
        self.refuses("fill", "form.pdf", "out.pdf", b"number=\xe9")
        self.refuses("fill", "form.pdf", "out.pdf", "--field", "number")
        self.refuses("fields", "--json", "--format", "csv", "form.pdf")
        with open("several.csv", "w") as file:
            file.write("number\n1\n2\n")
        for message, options in (
                (b"line 1, column 1: syntax error", ["--values", "bad.json"]),
                (b"is neither JSON nor FDF nor XFDF", ["--values", "text"]),
                (b"several rows of values; files-pdf-batch --csv", ["--values", "several.csv"]),
                (b"line 1, column 3: syntax error", ["--values", "several.csv", "--values-format", "json"]),
                (b"a=b: there is no such field (--skip-unknown", ["--field", "a=b", "c"])):
            status, _, err = run("fill", *options, "form.pdf", "out.pdf")
            self.assertIn(message, err)
            self.assertNotEqual(status, 0)
        status, _, err = run("fill", "--skip-unknown", "--field", "a=b", "c", "form.pdf", "out.pdf", "number=7")
        self.assertEqual((status, b"a=b: there is no such field, and the value is passed over" in err), (0, True))

    def test_values_go_out_and_in(self):
        def values(file):
            return [(f["path"], f["value"]) for f in json.loads(run("fields", "--json", file)[1])["fields"]]
        texts = ["billTo=C:\\dir\\ (x", "number=\U0001F600 \"<&,;", "date=\t\r\n-\n", "order= ", "net=1.10",
                 "remarks=\u0142\u05d0\uffff", "terms=in advance", "delivery=Post", "paid=on"]
        plain = [text.replace("\uffff", "") for text in texts]
        for form in "json", "fdf", "csv", "xfdf":
            if form == "xfdf":
                status, out, err = run("fields", "--format", form, "filled.pdf")
                self.assertEqual((status, out), (1, b""))
                self.assertIn(b"remarks: XML doesn't take the character U+FFFF", err)
            filled = run("fill", "--keep-looks", "form.pdf", "filled.pdf", *(plain if form == "xfdf" else texts))
            self.assertEqual(filled[0], 0, filled)
            status, out, _ = run("fields", "--format", form, "filled.pdf")
            self.assertEqual(status, 0)
            for name, options in ("values." + form, []), ("values", ["--values-format", form]), ("values", []):
                with open(name, "wb") as file:
                    file.write(out)
                done = run("fill", "--keep-looks", "--values", name, *options, "form.pdf", "again.pdf")
                if form == "xfdf" and not HAS_XFDF:
                    self.assertIn(b"built without pugixml", done[2])
                elif form == "csv" and name == "values" and not options:
                    self.assertEqual(done[0], 2)
                else:
                    self.assertEqual(done[0], 0, done)
                    self.assertEqual(values("again.pdf"), values("filled.pdf"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
