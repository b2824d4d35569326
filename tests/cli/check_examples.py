#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Runs the examples of documents and compares what they print. An example is a block marked
# `console`: each line "$ ..." is run by bash, and the lines behind it are its output, errors first.
# All examples of a document run in one fresh folder, with the samples and the folder `old` in it,
# and the files that the document shows: blocks marked with a language and the name of the file.
# Usage: check_examples.py PROGRAM DOCUMENT... [--update]; with --update the outputs are written.
import difflib
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[2]


def run(program, folder, command):
    """Runs a command as a reader of the document would, in English."""
    surroundings = {**os.environ, "LC_ALL": "C.UTF-8",
                    "PATH": f"{program.parent}:{os.environ['PATH']}"}
    return subprocess.run(["bash", "-c", command], cwd=folder, capture_output=True, text=True,
                          env=surroundings)


def prepare(folder, text):
    """Puts into the folder what the examples of a document need."""
    shutil.copytree(SOURCES / "samples", f"{folder}/samples")
    shutil.copytree(SOURCES / "docs/old", f"{folder}/old")
    for name, content in re.findall(r"```\w+ ([\w-]+\.\w+)\n(.*?)```", text, re.DOTALL):
        Path(folder, name).write_text(content, encoding="utf-8")


def printed(program, folder, block):
    """The block as the program prints it now."""
    lines = []
    for command in [line for line in block.splitlines() if line.startswith("$ ")]:
        done = run(program, folder, command[2:])
        lines += [command, *(done.stderr + done.stdout).splitlines()]
    return "\n".join(lines) + "\n"


def examples_again(program, text):
    """The document with the outputs of now, and how many examples it has."""
    with tempfile.TemporaryDirectory() as folder:
        prepare(folder, text)
        return re.subn(r"(?<=```console\n)(.*?)(?=```)",
                       lambda match: printed(program, folder, match.group()), text,
                       flags=re.DOTALL)


def main():
    update = "--update" in sys.argv
    program, *documents = [word for word in sys.argv[1:] if word != "--update"]
    program = Path(program).resolve()
    wrong = 0
    for name in documents:
        path = SOURCES / name
        before = path.read_text(encoding="utf-8")
        after, count = examples_again(program, before)
        if not count:
            sys.exit(f"{name}: no examples")
        if update:
            path.write_text(after, encoding="utf-8")
        elif after != before:
            wrong += 1
            sys.stdout.writelines(difflib.unified_diff(
                before.splitlines(True), after.splitlines(True), name, "what is printed"))
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
