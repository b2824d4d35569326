#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Measures how processor time and memory of the command line program grow with the number of files.
"""
usage: measure_scale.py PROGRAM [--files N,...] [--rows N] [--growth MiB] COMMAND...

Makes sections with varying parameters in five layouts, the same ones every time, in a temporary
folder, and runs each COMMAND over them. Of its words {cli} is the program, {in} the folder of
tables, {list} a file with their names, {out} an empty folder that is removed afterwards:

    measure_scale.py build/release/aerolith-cli '{cli} check {in}' '{cli} convert {in} -d {out}'

Prints the processor time (user and system, of all processes of the command) for 1,000 files, and
the most memory that one process held. With --growth it fails where the memory of the largest
number of files is more than that above the memory of the smallest.
"""

import argparse
import math
import os
import pathlib
import random
import resource
import shlex
import shutil
import subprocess
import sys
import tempfile

from make_samples import half_thickness, mean_line


def outline(upper, lower):
    return upper[::-1] + lower[1:]


def two_columns(points, blank=" "):
    return "".join(f"{x:.6f}{blank}{y:.6f}\n" for x, y in points)


def lednicer(upper, lower):
    counts = f"{len(upper)}. {len(lower)}.\n\n"
    return counts + two_columns(upper) + "\n" + two_columns(lower)


def three_columns(upper, lower):
    rows = "".join(f"{x:.6f} {y:.6f} {low:.6f}\n" for (x, y), (_, low) in zip(upper, lower))
    return "x  upper  lower\n" + rows


LAYOUTS = [
    lambda upper, lower: two_columns(outline(upper, lower)),
    lambda upper, lower: two_columns(outline(upper, lower)[::-1]),
    lambda upper, lower: two_columns(outline(upper, lower), ";\t").replace(".", ","),
    lednicer,
    three_columns,
]


def table(number, stations):
    """A 4-digit section, its thickness laid on upright so that both sides share the stations."""
    chosen = random.Random(number)
    camber, crest = chosen.uniform(0.0, 0.06), chosen.uniform(0.25, 0.55)
    thickness = chosen.uniform(0.06, 0.22)
    upper, lower = [], []
    for x in stations:
        half = half_thickness(x, thickness) if x < 1.0 else 0.0
        height = mean_line(x, camber, crest)[0]
        upper.append((x, height + half))
        lower.append((x, height - half))
    return f"Section {number:06}\n" + LAYOUTS[number % len(LAYOUTS)](upper, lower)


def make_tables(folder, first, last, rows):
    """Tables `first` to `last` - 1, a thousand in a folder."""
    half = rows // 2
    inner = [0.5 * (1.0 - math.cos(math.pi * i / half)) for i in range(1, half)]
    stations = [0.0, *inner, 1.0]
    with open(folder / "list", "a", encoding="ascii") as names:
        for number in range(first, last):
            path = folder / f"in/{number // 1000:03}/{number:06}.dat"
            if number == first or number % 1000 == 0:
                path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(table(number, stations), encoding="ascii")
            names.write(f"{path}\n")


def measure(command, folder, program):
    """Seconds of processor time and peak MiB of a command."""
    out = folder / "out"
    out.mkdir()
    names = {"cli": program, "in": folder / "in", "list": folder / "list", "out": out}
    words = [word.format(**names) for word in shlex.split(command)]
    with open(folder / "messages", "wb") as messages:
        process = subprocess.Popen(words, stdout=subprocess.DEVNULL, stderr=messages)
        _, status, used = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
    shutil.rmtree(out)
    if process.returncode != 0:
        told = (folder / "messages").read_text(encoding="utf-8", errors="replace")
        sys.exit(f"{command}: exit code {process.returncode}\n{told[-1000:]}")
    # A process starts with the peak of the one that it was made from.
    if used.ru_maxrss <= resource.getrusage(resource.RUSAGE_SELF).ru_maxrss:
        sys.exit(f"{command}: holds less than this script, whose memory would be measured")
    return used.ru_utime + used.ru_stime, used.ru_maxrss / 1024


def main():
    parser = argparse.ArgumentParser(usage=__doc__.strip().removeprefix("usage: "))
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("commands", nargs="+")
    parser.add_argument("--files", default="1000,10000")
    parser.add_argument("--rows", type=int, default=60)
    parser.add_argument("--growth", type=float)
    given = parser.parse_args()
    program = given.program.resolve()
    peaks = {command: [] for command in given.commands}
    print("| command | files | s for 1,000 files | peak MiB |\n|---|---:|---:|---:|")
    with tempfile.TemporaryDirectory(prefix="aerolith-scale-") as name:
        folder = pathlib.Path(name)
        made = 0
        for files in sorted(int(count) for count in given.files.split(",")):
            make_tables(folder, made, files, given.rows)
            made = files
            for command in given.commands:
                seconds, peak = measure(command, folder, program)
                peaks[command].append(peak)
                print(f"| `{command}` | {files:,} | {1000 * seconds / files:.2f} | {peak:.1f} |",
                      flush=True)
    grown = [f"{command}: memory grew by {found[-1] - found[0]:.1f} MiB, allowed are {given.growth}"
             for command, found in peaks.items()
             if given.growth is not None and found[-1] - found[0] > given.growth]
    sys.exit("\n".join(grown) or 0)


if __name__ == "__main__":
    main()
