"""Runs the programs on generated files, in turns, and says whether what they did is right."""

import math
import os
import shutil
import statistics
import subprocess
import sys
import tempfile
from dataclasses import dataclass
from pathlib import Path

from verification import syntax_fault, written_faults

PROGRAMS = {"ours": "ours", "M": "mupdf", "Q": "qpdf"}  # by the letters of the table; Z is `limits`
NEEDED = ["generate", "limits", "ours"]  # the programs that there must be
SAVES = {"rewrite", "uncompress", "compress", "recompress", "background", "place", "form", "form-drawn"}
# libmupdf reads values up to a depth of some 250 only.
REFUSED = {("M", "depth-400")}


@dataclass
class Run:
    """One process: seconds of user and system time, bytes at the peak, and what it printed."""

    seconds: float
    peak: float
    printed: dict


@dataclass
class Measurement:
    """Runs by letter, each list in the order of the rounds: so runs of one round can be compared."""

    runs: dict
    is_right: bool

    def seconds(self, letter):
        return statistics.median(run.seconds for run in self.runs[letter])

    def peak(self, letter):
        return statistics.median(run.peak for run in self.runs[letter])

    def ratios(self, of=lambda run: run.seconds):
        """By letter: median, least and greatest ratio of ours to that program; with both M and Q B is the best."""
        found = {}
        for letter, runs in self.runs.items():
            if letter != "ours":
                values = [of(a) / max(of(b), 1e-6) for a, b in zip(self.runs["ours"], runs)]
                found[letter] = (statistics.median(values), min(values), max(values))
        if {"M", "Q"} <= set(found):
            found["B"] = max(found["M"], found["Q"])
        return found


class Measurer:
    def __init__(self, folder, tools, files, scratch, rounds):
        self.folder = folder    # of the programs
        self.tools = tools      # the folder of those that are installed
        self.files = files      # the folder for what is generated
        self.scratch = scratch  # the folder for what is written
        self.rounds = rounds
        self.programs = {letter: name for letter, name in PROGRAMS.items() if (folder / name).exists()}
        self.measured = {}
        self.faults = []
        self.raw = []
        self.start = processor_seconds()

    def file_of(self, workload, count):
        path = self.files / f"{workload}-{count}.pdf"
        if not path.exists():
            made = path.with_suffix(".new")  # so that a run that is interrupted leaves no half file
            done = subprocess.run([self.folder / "generate", workload, str(count), made])
            fault = syntax_fault(made) if done.returncode == 0 else f"{path.name} can't be generated"
            if fault:
                made.unlink(missing_ok=True)
                sys.exit(f"compare: {fault}")
            made.rename(path)
        return path

    def run(self, program, *arguments):
        """The run, or None when the program refused; its words become a fault."""
        with tempfile.TemporaryFile() as errors:
            process = subprocess.Popen([self.folder / program, *arguments], stdout=subprocess.PIPE, stderr=errors,
                                       text=True)
            printed = process.stdout.read()
            _, status, usage = os.wait4(process.pid, 0)
            process.returncode = os.waitstatus_to_exitcode(status)
            process.stdout.close()
            errors.seek(0)
            words = errors.read().decode(errors="replace").strip()[:400]
        if process.returncode != 0:
            self.add_faults([f"{program} {' '.join(map(str, arguments))}: status {process.returncode} {words}"])
            return None
        values = {name: float(value) for name, value in (line.split() for line in printed.splitlines())}
        return Run(usage.ru_utime + usage.ru_stime, values["peak_bytes"], values)

    def run_needed(self, program, *arguments):
        """The run, without which there is nothing to go on with."""
        found = self.run(program, *arguments)
        return found or sys.exit(f"compare: {program} failed")

    def add_faults(self, faults):
        for fault in faults:
            print(f"FAULT: {fault}", file=sys.stderr)
        self.faults += faults
        return not faults

    def measure(self, operation, workload, count, foreign=None, limit=""):
        """The measurement of one operation on one file. `foreign` is a file, `limit` the same work in `limits`."""
        key = (operation, workload, count, foreign, limit)
        if key not in self.measured:
            self.measured[key] = self.measure_anew(operation, workload, count, foreign, limit)
        return self.measured[key]

    def measure_anew(self, operation, workload, count, foreign, limit):
        source = self.file_of(workload, count)
        print(f"{operation} {source.stem}", file=sys.stderr, flush=True)
        jobs = {letter: (name, operation) for letter, name in self.programs.items()
                if (letter, workload) not in REFUSED}
        if limit:
            jobs["Z"] = ("limits", limit)
        runs = {letter: [] for letter in jobs}
        for number in range(self.rounds):
            shift = number % len(jobs)
            for letter in [*jobs, *jobs][shift:shift + len(jobs)]:
                name, job = jobs[letter]
                out = [self.written_by(name)] if operation in SAVES and letter != "Z" else []
                run = self.run(name, job, source, *out, *([foreign] if out and foreign else []))
                if run:
                    runs[letter].append(run)
                    self.raw.append([operation, source.stem, name, number, run.seconds, run.peak])
        complete = {letter: found for letter, found in runs.items() if len(found) == self.rounds}
        if "ours" not in complete:
            sys.exit("compare: our own program failed")
        faults = self.faults_of(operation, source, foreign, {letter: jobs[letter] for letter in complete}, complete)
        return Measurement(complete, self.add_faults(faults) and len(complete) == len(runs))

    def measure_saving(self, programs, workload, count):
        """The same of whole programs, whose commands come by letter; one that isn't installed is left out."""
        source = self.file_of(workload, count)
        print(f"saving {source.stem}", file=sys.stderr, flush=True)
        places = {"tools": self.tools, "source": source}
        commands = {letter: [[word.format(**places, out=self.written_by(letter)) for word in words] for words in found]
                    for letter, found in programs.items()}
        letters = [letter for letter, found in commands.items() if all(shutil.which(words[0]) for words in found)]
        if "ours" not in letters:
            sys.exit(f"compare: there is no files-pdf-rewrite in {self.tools}")
        runs = {letter: [] for letter in letters}
        for number in range(self.rounds):
            shift = number % len(letters)
            for letter in letters[shift:] + letters[:shift]:
                run = run_commands(commands[letter])
                runs[letter].append(run)
                self.raw.append(["saving", source.stem, letter, number, run.seconds, run.peak])
        faults = written_faults("rewrite", source, None, [self.written_by("ours")])
        for letter in letters:
            self.written_by(letter).unlink()
        return Measurement(runs, self.add_faults(faults))

    def written_by(self, program):
        return self.scratch / f"out-{program}.pdf"

    def faults_of(self, operation, source, foreign, jobs, runs):
        if operation in SAVES:
            return self.faults_of_written(operation, source, foreign, jobs, runs)
        if operation == "decode":
            checked = [self.run(name, "--check", job, source) for name, job in jobs.values()]
            return disagreements(checked, ["decoded_bytes", "checksum"], operation, source)
        return disagreements([run for found in runs.values() for run in found],
                             ["values", "text_length", "fractions", "integer_sum", "booleans", "id_sum"],
                             operation, source)

    def faults_of_written(self, operation, source, foreign, jobs, runs):
        paths = {letter: self.written_by(name) for letter, (name, _) in jobs.items() if letter != "Z"}
        for letter, path in paths.items():
            runs[letter][0].printed["written_bytes"] = path.stat().st_size
        faults = written_faults(operation, source, foreign, paths.values())
        if "Z" in runs:
            share = runs["Z"][0].printed["stored_bytes"] / min(path.stat().st_size for path in paths.values())
            if not 0.98 < share < 1.02:
                faults.append(f"{operation} {source.name}: the raw loop makes {share:.2f} of the bytes of the others")
        for path in paths.values():
            path.unlink()
        return faults

    def share_of_others(self):
        """How much of the machine's processor time since the start went to what isn't ours, in percent."""
        (busy, whole, own), start = processor_seconds(), self.start
        return max(0.0, 100 * (busy - start[0] - (own - start[2])) / max(whole - start[1], 1e-6))


def run_commands(commands):
    """One command after the other, as one run."""
    seconds, peak = 0, 0
    for words in commands:
        process = subprocess.Popen(words, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode != 0:
            sys.exit(f"compare: {' '.join(words)}: status {process.returncode}")
        seconds += usage.ru_utime + usage.ru_stime
        peak = max(peak, 1024 * usage.ru_maxrss)
    return Run(seconds, peak, {})


def disagreements(runs, names, operation, source):
    found = {name: {run.printed.get(name) if run else None for run in runs} for name in names}
    return [f"{operation} {source.name}: the programs disagree about {name}: {values}"
            for name, values in found.items() if len(values) > 1 or None in values]


def processor_seconds():
    """Of the whole machine busy and in all, and of this process with the ones that it ran."""
    user, nice, system, idle, wait, *rest = map(int, Path("/proc/stat").read_text().split("\n")[0].split()[1:])
    whole = user + nice + system + idle + wait + sum(rest[:3])
    ticks = os.sysconf("SC_CLK_TCK")
    return (whole - idle - wait) / ticks, whole / ticks, sum(os.times()[:4])


def curves(series, of):
    """Points by letter, of pairs of a size and a measurement; where a program has no figure there is no point."""
    return {letter: [(size, of(found, letter)) for size, found in series if letter in found.runs]
            for letter in series[0][1].runs}


def exponent(points):
    """The slope of the line through the logarithms that fits best."""
    return statistics.linear_regression([math.log(size) for size, _ in points],
                                        [math.log(max(value, 1e-6)) for _, value in points]).slope
