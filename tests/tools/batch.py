#!/usr/bin/env python3
"""Tries the program `batch`: batch.py BATCH MAKE_INVOICE [import]"""
import json
import os
import subprocess
import sys
import tempfile
import unittest

BATCH, MAKE_INVOICE = sys.argv[1:3]
FILL = os.path.join(os.path.dirname(BATCH), "files-pdf-fill")
HAS_IMPORT = "import" in sys.argv[3:]


def run(lines, *options):
    """Exit status and results of jobs, each an object or the bytes of a line."""
    raw = b"".join((l if isinstance(l, bytes) else json.dumps(l).encode()) + b"\n" for l in lines)
    done = subprocess.run([BATCH, *options], input=raw, capture_output=True, timeout=60)
    return done.returncode, [json.loads(l) for l in done.stdout.splitlines()]


def big_file(path, count):
    objects = ["<< /Type /Catalog /Pages 2 0 R >>", "<< /Type /Pages /Kids [ ] /Count 0 >>"] + ["[ 1 2 3 ]"] * count
    text, table = "%PDF-1.4\n", f"xref\n0 {len(objects) + 1}\n0000000000 65535 f \n"
    parts = [text]
    at = len(text)
    for number, value in enumerate(objects, 1):
        table += f"{at:010} 00000 n \n"
        parts.append(f"{number} 0 obj\n{value}\nendobj\n")
        at += len(parts[-1])
    end = f"trailer\n<< /Root 1 0 R /Size {len(objects) + 1} >>\nstartxref\n{at}\n%%EOF\n"
    with open(path, "w") as file:
        file.write("".join(parts) + table + end)


class Batch(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        os.chdir(cls.folder.name)
        subprocess.run([MAKE_INVOICE, "form.pdf", "letterhead.pdf"], check=True, capture_output=True)
        big_file("big.pdf", 50000)
        with open("broken.pdf", "w") as file:
            file.write("no PDF\n")
        os.mkdir("folder")

    @classmethod
    def tearDownClass(cls):
        os.chdir("/")
        cls.folder.cleanup()

    def test_results_come_in_the_order_of_the_jobs(self):
        # The first job takes longest; more quick ones than may wait for it stand behind.
        jobs = [{"id": 0, "in": "big.pdf"}] + [{"id": i, "in": "missing.pdf"} for i in range(1, 500)]
        for threads in "1", "2", "8":
            status, results = run(jobs, "--jobs", threads)
            self.assertEqual([r["id"] for r in results], list(range(500)))
            self.assertEqual([r["line"] for r in results], list(range(1, 501)))
            self.assertEqual(status, 1)

    def test_results_tell_of_imports(self):
        with open("form.pdf", "rb") as form, open("line.pdf", "wb") as line:
            line.write(form.read().replace(b"trailer\n", b"trailer "))
        job = {"in": "line.pdf", "fill": {"number": "17"}, "background": "letterhead.pdf", "out": "out.pdf"}
        _, (result, plain) = run([job, {"in": "form.pdf"}], "--compact")
        self.assertNotIn("import", plain)
        if not HAS_IMPORT:
            self.assertIn("one line; needs libfiles-pdf-import", result["error"])
            return
        self.assertEqual((result["ok"], result["import"]["why"]), (True, "trailer and its dictionary on one line"))
        self.assertLess(os.path.getsize("out.pdf"), os.path.getsize("form.pdf") + os.path.getsize("letterhead.pdf"))

    def test_every_step_is_done_and_the_saved_file_has_it(self):
        job = {"in": "form.pdf", "fill": {"number": "17"}, "out": "steps.pdf", "recompress": "none",
               "background": {"file": "letterhead.pdf", "mode": "all", "at": "top", "above": True}}
        status, [result] = run([job], "--jobs", "2")
        self.assertTrue(result["ok"], result)
        self.assertEqual((status, result["pages"], result["size"]), (0, 2, os.path.getsize("steps.pdf")))
        with open("steps.pdf", "rb") as file:
            saved = file.read()
        self.assertIn(b"/V (17)", saved)
        self.assertNotIn(b"/FlateDecode", saved)
        self.assertIn(b"/LetterText", saved)

    def test_fields_are_flattened_after_they_are_filled(self):
        def left(name):
            with open(name, "rb") as file:
                saved = file.read()
            return b"(A 7) Tj" in saved, b"/AcroForm" in saved

        jobs = [{"in": "form.pdf", "fill": {"order": "A 7"}, "flatten": flatten, "out": name}
                for name, flatten in (("all.pdf", True), ("one.pdf", ["order"]), ("none.pdf", False))]
        for options, expected in ((), [False, True, True]), (("--flatten",), [False, True, False]):
            self.assertEqual(run(jobs, *options)[0], 0)
            self.assertEqual([left(job["out"]) for job in jobs], [(True, has) for has in expected])
        os.remove("none.pdf")

    def test_a_job_that_fails_says_at_which_step_and_the_others_go_on(self):
        cases = [  # step, job
            ("open", {"in": "missing.pdf"}),
            ("open", {"in": "folder"}),
            ("open", {"in": "broken.pdf"}),
            ("fill", {"in": "form.pdf", "fill": {"number": "1", "nobody": "x"}, "out": "none1.pdf"}),
            ("fill", {"in": "big.pdf", "fill": {"number": "1"}, "out": "none2.pdf"}),
            ("flatten", {"in": "form.pdf", "flatten": ["number", "nobody"], "out": "none3.pdf"}),
            ("background", {"in": "form.pdf", "background": "missing.pdf", "out": "none4.pdf"}),
            ("background", {"in": "form.pdf", "background": "broken.pdf", "out": "none5.pdf"}),
            ("save", {"in": "form.pdf", "out": "missing/none.pdf"}),
            ("save", {"in": "form.pdf", "out": "folder"}),
        ]
        for threads in "1", "2":
            jobs = [job for i, (_, bad) in enumerate(cases)
                    for job in (bad, {"in": "form.pdf", "out": f"good{i}.pdf"})]
            status, results = run(jobs, "--jobs", threads)
            self.assertEqual([r.get("step") for r in results], [s for step, _ in cases for s in (step, None)])
            self.assertTrue(all(r["ok"] != ("error" in r) for r in results), results)
            self.assertEqual(results[4]["code"], "0x501")
            self.assertEqual(status, 1)
            self.assertEqual([name for name in os.listdir() if name.startswith("none")], [])

    def test_a_line_that_is_no_job_has_a_result_too(self):
        bad = [b"{", b"[]", b"17", b"\xff\xfe", b'{"in": "form.pdf", "id": "\xe9"}', b'{"in": "form.pdf"} x',
               b"[" * 200000, b'{"in": "form.pdf", "id": ' + b"[" * 200000 + b"]" * 200000 + b"}",
               {}, {"in": ""}, {"in": 3}, {"in": "form.pdf\0"}, {"in": "form.pdf", "Fill": {}},
               {"in": "form.pdf", "out": ""}, {"in": "form.pdf", "fill": {"number": {}}},
               b'{"in": "form.pdf", "in": "form.pdf"}',
               {"in": "form.pdf", "fill": []},
               {"in": "form.pdf", "flatten": "number"}, {"in": "form.pdf", "flatten": ["number", 3]},
               {"in": "form.pdf", "recompress": "zip"}, {"in": "form.pdf", "background": {"mode": "all"}},
               {"in": "form.pdf", "background": {"file": "letterhead.pdf", "mode": "some"}},
               {"in": "form.pdf", "background": {"file": "letterhead.pdf", "above": "yes"}},
               {"in": "form.pdf", "background": {"file": "letterhead.pdf", "under": True}}]
        status, results = run(bad + [{"in": "form.pdf"}], "--jobs", "2")
        self.assertEqual([r.get("step") for r in results], ["job"] * len(bad) + [None])
        self.assertEqual(status, 1)

    def test_what_was_done_is_left_out(self):
        jobs = [{"in": "form.pdf", "id": i, "out": f"resumed{i}.pdf"} for i in range(4)] + [{"in": "missing.pdf"}]
        lines = b"".join(json.dumps(job).encode() + b"\n" for job in jobs)
        whole = subprocess.run([BATCH], input=lines, capture_output=True).stdout.splitlines(keepends=True)
        os.remove("resumed1.pdf")
        with open("results", "wb") as file:  # killed in the third result
            file.write(whole[0] + whole[1] + whole[2][:20])
        with open("results", "ab") as file:
            done = subprocess.run([BATCH, "--resume", "results"], input=lines, stdout=file)
        with open("results", "rb") as file:
            after = file.read().splitlines(keepends=True)
        self.assertEqual(after, [*whole[:2], whole[2][:20] + b"\n", *whole[1:]])
        self.assertEqual(done.returncode, 1)
        self.assertTrue(all(os.path.exists(job["out"]) for job in jobs[:4]))
        self.assertEqual(run([], "--resume", "gone"), (2, []))

    def test_of_two_jobs_with_one_out_one_is_refused(self):
        jobs = [{"in": "form.pdf", "out": out} for out in ("one.pdf", "two.pdf", "./folder/../one.pdf")]
        status, results = run(jobs)
        self.assertEqual((status, [r["ok"] for r in results], results[2]["step"]), (1, [True, True, False], "job"))
        self.assertIn("the same out", results[2]["error"])

    def test_empty_lines_are_passed_over_and_the_last_needs_no_end(self):
        done = subprocess.run([BATCH], input=b'\n \r\n{"in": "form.pdf"}\n\n{"in": "form.pdf"}', capture_output=True)
        self.assertEqual([json.loads(l)["line"] for l in done.stdout.splitlines()], [3, 5])
        self.assertEqual((done.returncode, done.stderr), (0, b""))

    def test_a_result_comes_before_the_next_job_is_there(self):
        # So that a worker may ask and wait; the pipe stays open meanwhile.
        with subprocess.Popen([BATCH, "--jobs", "2"], stdin=subprocess.PIPE, stdout=subprocess.PIPE) as worker:
            for number in range(3):
                worker.stdin.write(json.dumps({"id": number, "in": "form.pdf"}).encode() + b"\n")
                worker.stdin.flush()
                self.assertEqual(json.loads(worker.stdout.readline())["id"], number)

    def test_log_lines_stand_with_the_job_that_left_them(self):
        with open("form.pdf", "rb") as whole, open("damaged.pdf", "wb") as damaged:
            damaged.write(whole.read().replace(b"1 0 obj", b"1 0 obx", 1))
        _, results = run([{"in": f} for f in ("form.pdf", "damaged.pdf") * 20], "-v", "--jobs", "4")
        self.assertEqual([len(r.get("log", [])) for r in results], [0, 1] * 20)

    def csv(self, rows, out, *options):
        with open("rows.csv", "wb") as file:
            file.write(rows)
        return run([], "--csv", "rows.csv", "--in", "form.pdf", "--out", out, *options)

    def test_each_row_makes_the_file_that_fill_makes_of_it(self):
        names = b"order,remarks,delivery,paid,number"
        rows = [b'"A ""7""","two\r\nlines",Post,Yes,1', b",,,,", "Łódź,東京,Off,,2".encode(),
                b'"C:\\dir",,Courier,off,']
        for threads in "1", "3":
            status, results = self.csv(b"\xef\xbb\xbf" + names + b"\n" + b"\r\n".join(rows), "row-{{{number}}}.pdf",
                                       "--jobs", threads, "--any-text")
            self.assertEqual([(r["line"], r["id"], r["ok"]) for r in results],
                             [(2, 1, True), (4, 2, False), (5, 3, True), (6, 4, False)])
        # {number} is a field here, too, and its cells come first.
        self.assertEqual([r.get("out") for r in results], ["row-{1}.pdf", None, "row-{2}.pdf", None])
        for row, out in (rows[0], "row-{1}.pdf"), (rows[2], "row-{2}.pdf"):
            with open("row.csv", "wb") as file:
                file.write(names + b"\n" + row)
            subprocess.run([FILL, "--any-text", "--values", "row.csv", "form.pdf", "alone.pdf"], check=True,
                           capture_output=True)
            with open("alone.pdf", "rb") as alone, open(out, "rb") as made:
                self.assertTrue(alone.read() == made.read(), row)

    def test_empty_cells_leave_the_values_of_the_form(self):
        subprocess.run([FILL, "form.pdf", "filled.pdf", "order=before", "date=then"], check=True)
        with open("all.json", "w") as file:
            file.write('{"number": 1.10, "date": "for all", "net": null}')
        with open("rows.csv", "w") as file:
            file.write("order;date\n;\n;own\n")
        status, results = run([], "--csv", "rows.csv", "--in", "filled.pdf", "--out", "{number}.pdf", "--separator",
                              "semicolon", "--values", "all.json")
        self.assertEqual(status, 0, results)
        for name, date in ("1.pdf", b"(for all)"), ("2.pdf", b"(own)"):
            with open(name, "rb") as file:
                made = file.read()
            for text in b"/V (before)", b"/V (1.10)", b"/V " + date:
                self.assertIn(text, made)

    def test_names_from_cells_stay_in_their_folder(self):
        bad = ["..", ".x", "a/b", "/tmp/x", "", '"a\nb"', "\x7f", "x" * 201, "good"]
        rows = "\n".join(["number,order", "good,"] + [cell + ",1" for cell in bad])
        status, results = self.csv(rows.encode(), "{number}.pdf")
        self.assertEqual([r.get("step") for r in results], [None] + ["job"] * len(bad))
        self.assertIn("earlier row", results[-1]["error"])
        self.assertEqual(status, 1)

    def test_rows_that_are_none_and_unknown_names_are_told(self):
        status, results = self.csv(b'number,x=y\n1\n2,"\n"z\n3,7\n', "out-{number}.pdf")
        self.assertEqual([r["error"].split(";")[0] for r in results], [
            "line 2: 1 cells for 2 names", "line 4, column 2: text after the closing quote of a cell",
            "x=y: there is no such field (--skip-unknown passes over it)"])
        status, results = self.csv(b"number,x=y\n3,7\n", "out-{number}.pdf", "--skip-unknown")
        self.assertEqual(status, 0)
        self.assertEqual(results[0]["warnings"], ["x=y: there is no such field, and the value is passed over"])

    def test_rows_are_read_as_they_come(self):
        with subprocess.Popen([BATCH, "--csv", "/dev/stdin", "--in", "form.pdf", "--out", "{number}.pdf"],
                              stdin=subprocess.PIPE, stdout=subprocess.PIPE) as worker:
            worker.stdin.write(b"order\n")
            for number in range(1, 4):
                worker.stdin.write(b"7\n")
                worker.stdin.flush()
                self.assertEqual(json.loads(worker.stdout.readline())["id"], number)

    def test_what_makes_the_whole_run_useless_is_status_2(self):
        for rows, out in (b"", "{number}.pdf"), (b"a,\n", "x"), *((b"a\n", out) for out in ("{b}", "{a", "a}")):
            self.assertEqual(self.csv(rows, out), (1, []))
        for options in "--csv rows.csv", "--csv none.csv --in form.pdf --out x", "--values none":
            self.assertEqual(run([], *options.split()), (2, []))
        for options in ["--jobs", "0"], ["--jobs", "x"], ["--jobs"], ["--bogus"], ["operand"]:
            self.assertEqual(run([], *options), (2, []))
        with open("/dev/full", "w") as full:
            job = b'{"in": "form.pdf"}\n' * 3000
            done = subprocess.run([BATCH, "--jobs", "2"], input=job, stdout=full, stderr=subprocess.PIPE, timeout=60)
        self.assertEqual((done.returncode, done.stderr.count(b"\n")), (2, 1))
        folder = os.open(".", os.O_RDONLY)
        self.assertEqual(subprocess.run([BATCH], stdin=folder, capture_output=True).returncode, 2)
        os.close(folder)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
