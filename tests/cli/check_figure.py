#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Makes the figure of docs/scripts.md with the command and the scripts in the document. Compares it
# with the one in docs/images, number by number.
# Usage: check_figure.py PROGRAM [--update]; the exit code is 77 if matplotlib is missing, unless
# AEROLITH_READERS is set.
import importlib.util
import os
import re
import sys
import tempfile
from pathlib import Path

import check_examples

FIGURE = check_examples.SOURCES / "docs/images/thickness.svg"
NUMBER = r"-?\d+(?:\.\d+)?"


def same(one, other):
    """Whether two figures have the same texts and, within 0.1 points, the same lines."""
    if re.sub(NUMBER, "#", one) != re.sub(NUMBER, "#", other):
        return False
    pairs = zip(re.findall(NUMBER, one), re.findall(NUMBER, other))
    return all(abs(float(a) - float(b)) < 0.1 for a, b in pairs)


def main():
    if not importlib.util.find_spec("matplotlib") and "AEROLITH_READERS" not in os.environ:
        sys.exit(77)
    text = (check_examples.SOURCES / "docs/scripts.md").read_text(encoding="utf-8")
    (command,) = re.findall(r"^python3 figure\.py .*", text, re.MULTILINE)
    with tempfile.TemporaryDirectory() as folder:
        check_examples.prepare(folder, text)
        done = check_examples.run(Path(sys.argv[1]).resolve(), folder,
                                  command.replace("python3", sys.executable, 1))
        if done.returncode != 0:
            sys.exit(done.stderr)
        figure = Path(folder, FIGURE.name).read_text(encoding="utf-8")
    figure = re.sub(r" +$", "", figure, flags=re.MULTILINE)
    if "--update" in sys.argv:
        FIGURE.write_text(figure, encoding="utf-8")
    elif not same(figure, FIGURE.read_text(encoding="utf-8")):
        sys.exit(f"{FIGURE.name} is out of date: {' '.join(sys.argv)} --update")


main()
