#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Runs the examples of documents and compares what they print. An example is a block marked
# `console`: each line "$ aerolith-cli ..." is run, in a fresh folder that holds the samples, and
# the lines behind it are its output, errors first.
# Usage: check_examples.py PROGRAM DOCUMENT... [--update]; with --update the outputs are written.
import difflib
import os
import re
import shlex
import subprocess
import sys
import tempfile
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[2]


def printed(program, block):
    """The block as the program prints it now."""
    lines = []
    with tempfile.TemporaryDirectory() as folder:
        os.symlink(SOURCES / "samples", f"{folder}/samples")
        for command in [line for line in block.splitlines() if line.startswith("$ ")]:
            words = shlex.split(command[2:])
            if words[0] != "aerolith-cli":
                sys.exit(f"not an example of this program: {command}")
            run = subprocess.run([program, *words[1:]], cwd=folder, capture_output=True, text=True)
            lines += [command, *(run.stderr + run.stdout).splitlines()]
    return "\n".join(lines) + "\n"


def main():
    update = "--update" in sys.argv
    program, *documents = [word for word in sys.argv[1:] if word != "--update"]
    program = os.path.abspath(program)
    wrong = 0
    for name in documents:
        path = SOURCES / name
        before = path.read_text(encoding="utf-8")
        after, count = re.subn(r"(?<=```console\n)(.*?)(?=```)",
                               lambda match: printed(program, match.group()), before,
                               flags=re.DOTALL)
        if not count:
            sys.exit(f"{name}: no examples")
        if update:
            path.write_text(after, encoding="utf-8")
        elif after != before:
            wrong += 1
            sys.stdout.writelines(difflib.unified_diff(
                before.splitlines(True), after.splitlines(True), name, "what is printed"))
    sys.exit(1 if wrong else 0)


main()
