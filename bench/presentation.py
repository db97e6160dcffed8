"""Writes tables and draws plots."""

import csv
import os
import re
import shutil
import subprocess
from pathlib import Path

from measuring import PROGRAMS, Measurement, curves

MEGABYTE = 1e6
BEGIN, END = "<!-- results -->\n", "<!-- end of results -->\n"  # of the table in a document
COLOURS = {"ours": "#0060ad", "M": "#dd181f", "Q": "#55aa33"}


def markdown_row(cells):
    return "| " + " | ".join(map(str, cells)) + " |"


def markdown(header, rows):
    return "\n".join(map(markdown_row, [header, ["---"] * len(header), *rows])) + "\n"


def write_csv(path, header, rows):
    with open(path, "w", newline="") as out:
        csv.writer(out).writerows([header, *rows])


def circumstances(rounds, share_of_others):
    """Where and how the figures came about, for whoever compares them with others."""
    model = re.search(r"model name\s*: (.*)", Path("/proc/cpuinfo").read_text())
    words = [f"{model[1] if model else os.uname().machine}, {os.cpu_count()} processors, of which other programs took "
             f"{share_of_others:.0f} % of the time", f"{rounds} rounds"]
    if shutil.which("dpkg-query"):
        done = subprocess.run(["dpkg-query", "-W", "-f", "${Package} ${Version}\n", "libmupdf-dev", "libqpdf-dev",
                               "zlib1g-dev"], capture_output=True, text=True)
        words += done.stdout.split("\n")[:-1]
    return "; ".join(words) + "." + ("" if share_of_others < 5 else " The machine was not idle.")


def plot(path, title, settings, curves):
    """`curves` are the data as gnuplot reads it, and how it draws them."""
    data = "".join(f"$d{i} << EOD\n{rows}\nEOD\n" for i, (rows, _) in enumerate(curves))
    drawn = ", ".join(f"$d{i} {style}" for i, (_, style) in enumerate(curves))
    script = (f"set terminal svg size 800,450 font 'sans,12' background '#ffffff'\nset output '{path}'\n"
              f"set title '{title}'\nset grid\nset key top left\n{settings}\n{data}plot {drawn}\n")
    subprocess.run(["gnuplot"], input=script, text=True, check=True)


def line_plot(path, title, settings, points):
    """`points` are pairs by letter."""
    plot(path, title, settings, [
        ("\n".join(f"{x} {y}" for x, y in found), f"with linespoints lc rgb '{COLOURS[letter]}' pt 7 "
         f"title '{PROGRAMS[letter]}'") for letter, found in points.items()])


def plot_growth(folder, workload, operation, series):
    """`series` are sizes with their measurements."""
    things = workload.split("-")[0]
    for what, unit, of in (("time", "s", Measurement.seconds),
                           ("memory", "MB", lambda found, letter: found.peak(letter) / MEGABYTE)):
        line_plot(folder / f"growth-{things}-{what}.svg", f"{operation}: {what} by the number of {things}",
                  f"set logscale xy\nset xlabel '{things}'\nset ylabel '{unit}'", curves(series, of))


def plot_depth(folder, operation, series):
    line_plot(folder / f"depth-{operation}.svg", f"{operation}: time by the depth of the values, same bytes",
              "set yrange [0:*]\nset xlabel 'depth'\nset ylabel 's'", curves(series, Measurement.seconds))


def plot_ratios(folder, ratios):
    """`ratios` are titles with median, least and greatest by letter: a row each, with a bar from least to greatest."""
    bars = []
    for letter in ("M", "Q"):
        rows = [f"{row} {' '.join(map(str, found[letter]))} \"{title}\"" for row, (title, found) in enumerate(ratios)
                if letter in found]
        if rows:
            bars.append(("\n".join(rows), f"using 2:1:3:4:ytic(5) with xerrorbars pt 7 lc rgb '{COLOURS[letter]}' "
                         f"title 'ours / {PROGRAMS[letter]}'"))
    if bars:
        plot(folder / "ratios.svg", "time of ours over that of the others, with least and greatest",
             f"set logscale x 2\nset yrange [{len(ratios) - 0.5}:-0.5]\nset lmargin 45\nset key below\n"
             "set arrow from 1, graph 0 to 1, graph 1 nohead lw 2", bars)


def has_marks(document):
    text = document.read_text() if document.is_file() else ""
    return BEGIN in text and END in text[text.index(BEGIN):]


def publish(document, body, plots):
    """Puts the results between the marks of the document, and the plots beside it."""
    text = document.read_text()
    begin = text.index(BEGIN) + len(BEGIN)
    document.write_text(text[:begin] + body + text[text.index(END, begin):])
    folder = document.with_suffix("")
    folder.mkdir(exist_ok=True)
    for path in plots:
        shutil.copy(path, folder)
