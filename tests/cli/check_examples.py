#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Runs the examples of documents and compares their output. An example is a block marked `console`.
# Bash runs each line "$ ..."; the lines behind it are what a terminal shows. All
# examples of a document run in one fresh folder. It holds the samples, the folder `old`, and the
# files that the document shows in blocks marked with a language and a file name.
# Usage: check_examples.py PROGRAM DOCUMENT... [--update]; --update writes the new output.
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
    """Runs a command as a reader of the document would, in the English locale."""
    surroundings = {**os.environ, "LC_ALL": "C.UTF-8",
                    "PATH": f"{program.parent}:{os.environ['PATH']}"}
    return subprocess.run(["bash", "-c", command], cwd=folder, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, env=surroundings)


def prepare(folder, text):
    """Puts the files that the examples of a document need into the folder."""
    shutil.copytree(SOURCES / "samples", f"{folder}/samples")
    shutil.copytree(SOURCES / "docs/old", f"{folder}/old")
    for name, content in re.findall(r"```\w+ ([\w-]+\.\w+)\n(.*?)```", text, re.DOTALL):
        Path(folder, name).write_text(content, encoding="utf-8")


def printed(program, folder, block):
    """The block with the current output."""
    lines = []
    for command in [line for line in block.splitlines() if line.startswith("$ ")]:
        done = run(program, folder, command[2:])
        lines += [command, *done.stdout.splitlines()]
    return "\n".join(lines) + "\n"


def examples_again(program, text):
    """The document with the current outputs, and the number of its examples."""
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
                before.splitlines(True), after.splitlines(True), name, "current output"))
    sys.exit(1 if wrong else 0)


if __name__ == "__main__":
    main()
