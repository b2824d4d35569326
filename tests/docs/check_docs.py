#!/usr/bin/env python3
# SPDX-FileCopyrightText: Aerolith developers
# Checks that the documents say what the files hold. Usage: check_docs.py SOURCE-FOLDER
import re
import subprocess
import sys
from pathlib import Path

sources = Path(sys.argv[1])
spline = (sources / "samples/symmetric.spl").read_bytes()
document = (sources / "docs/file-formats.md").read_text(encoding="utf-8")
problems = []

blocks = re.findall(r"```hex *(\d*)\n(.*?)```", document, re.DOTALL)
if len(blocks) != 2:
    problems.append(f"{len(blocks)} hex blocks, not 2")
for offset, text in blocks:
    pairs = [re.match(r"(?:[0-9a-f]{2} ?)+", line).group() for line in text.splitlines()]
    shown = bytes.fromhex("".join(pairs))
    begin = int(offset or 0)
    if spline[begin : begin + len(shown)] != shown:
        problems.append(f"the hex block at {begin} is not what the sample holds")

reader = [sys.executable, str(sources / "docs/read_spline.py")]
printed = subprocess.run(
    reader + [str(sources / "samples/symmetric.spl")], capture_output=True, text=True, check=True
).stdout.splitlines()
expected = [
    "name    'symmetric.spl'",
    "degree  2 (order 3)",
    "knots   0 0.0833333 0.166667 0.25 0.333333 0.416667 0.5 0.583333 0.666667 0.75 0.833333 "
    "0.916667 1",
    "point    0    921.000    383.000",
    "point    1    675.300    403.475",
    "point    2    347.700    440.330",
    "point    3    142.950    448.520",
    "point    4    102.000    391.190",
    "point    5    102.000    374.810",
    "point    6    142.950    317.480",
    "point    7    347.700    325.670",
    "point    8    675.300    362.525",
    "point    9    921.000    383.000",
    "opening 0 % to 0 %",
]
if printed != expected:
    problems.append("read_spline.py prints\n" + "\n".join(printed))

# Links of the documents lead to files.
for page in [*sources.glob("*.md"), *(sources / "docs").glob("*.md")]:
    for target in re.findall(r"\]\(([^)#]+)[^)]*\)", page.read_text(encoding="utf-8")):
        if "://" not in target and not (page.parent / target).exists():
            problems.append(f"{page.name}: no file {target}")

print("\n".join(problems) or "The documents are right.")
sys.exit(1 if problems else 0)
