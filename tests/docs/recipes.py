#!/usr/bin/env python3
"""Runs the commands of docs/recipes.md: recipes.py DOCUMENT FOLDER MAKE_INVOICE

A block of commands is indented. A line after "$ " is one; the lines after it are parts of what it prints, in their
order."""
import os
import pathlib
import re
import subprocess
import sys
import tempfile

DOCUMENT, FOLDER, MAKE_INVOICE = sys.argv[1:]


def recipes():
    """Heading, and commands with what they are to print."""
    for part in pathlib.Path(DOCUMENT).read_text().split("\n## ")[1:]:
        commands = []
        for line in re.findall(r"^    (.*)$", part, re.M):
            if line.startswith("$ "):
                commands.append((line[2:], []))
            else:
                commands[-1][1].append(line)
        yield part.splitlines()[0], commands


def complaint(commands):
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([MAKE_INVOICE, "form.pdf", "letterhead.pdf"], cwd=folder, check=True)
        for command, expected in commands:
            done = subprocess.run(["bash", "-o", "pipefail", "-c", command], cwd=folder, text=True, timeout=60,
                                  stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                                  env={**os.environ, "PATH": FOLDER + ":" + os.environ["PATH"]})
            in_order = ".*?".join(map(re.escape, expected))
            # A reader that has enough ends what writes.
            if done.returncode not in (0, 141) or not re.search(in_order, done.stdout, re.S):
                return f"{command}: status {done.returncode}, prints:\n{done.stdout}"
    return None


all_recipes = list(recipes())
complaints = [f"{heading}: {words}" for heading, commands in all_recipes
              if (words := complaint(commands) if commands else "no command")]
print("\n".join(complaints) or f"{len(all_recipes)} recipes work")
sys.exit(1 if complaints or len(all_recipes) < 10 else 0)
